#include "platform/report/PreviewWindow.h"

#include "platform/forms/Layout.h"
#include "platform/report/PagesView.h"

namespace report {
namespace {

constexpr QSize NaturalSize(1000, 720);
constexpr int PageNumberWidth = 56;
constexpr int ZoomTextWidth = 48;

} // namespace

void PreviewWindow::BuildForm()
{
    using forms::Command;
    using forms::Dress;
    Dress(PrintButton, "print", "Imprimer", Command::Print);
    PrintButton.SetCaption("Imprimer");
    Dress(SaveButton, "save", "Enregistrer en PDF (Ctrl+S)");
    SaveButton.SetCaption("PDF");
    Dress(FirstButton, "first", "Première page (Début)");
    Dress(PreviousButton, "previous", "Page précédente", Command::PreviousPage);
    Dress(NextButton, "next", "Page suivante", Command::NextPage);
    Dress(LastButton, "last", "Dernière page (Fin)");
    Dress(ZoomOutButton, "zoom-out", "Réduire (Ctrl+moins)");
    Dress(ZoomInButton, "zoom-in", "Agrandir (Ctrl+plus)");
    Dress(FitWidthButton, "fit-width", "Toute la largeur (Ctrl+2)");
    Dress(FitPageButton, "fit-page", "Toute la page (Ctrl+3)");
    Dress(CloseButton, "quit", "Fermer", Command::Leave);
    CloseButton.setToolTip("Fermer (Échap ou Ctrl+W)");

    PageNumber.setFixedWidth(PageNumberWidth);
    PageNumber.setAlignment(Qt::AlignRight);
    PageNumber.setMaxLength(6);
    PageNumber.setAccessibleName("Page");
    PageNumber.setToolTip("Numéro de la page\u00A0; Entrée pour y aller");
    PageCount.setAccessibleName("Nombre de pages");
    PageCount.setToolTip("Nombre de pages");
    ZoomText.setFixedWidth(ZoomTextWidth);
    ZoomText.setAlignment(Qt::AlignCenter);
    ZoomText.setAccessibleName("Taille");
    ZoomText.setToolTip("Taille\u00A0; Ctrl+0 pour la taille réelle");
    view->setToolTip({});
    SavedPanel.setAccessibleName("PDF enregistré");
    SavedText.setAccessibleName("Fichier enregistré");
    OpenFolder.setToolTip("Ouvrir le dossier où se trouve le PDF");
    SavedPanel.hide();

    using forms::Item;
    SetContent(forms::Column{forms::Row{PrintButton, SaveButton, Item::Gap(2), FirstButton, PreviousButton, PageNumber,
                                        PageCount, NextButton, LastButton, Item::Gap(2), ZoomOutButton, ZoomText,
                                        ZoomInButton, FitWidthButton, FitPageButton, Item::Stretch(), CloseButton},
                             forms::Inside(SavedPanel, forms::Row{Item::Growing(SavedText), OpenFolder}),
                             Item::Growing(*view)});
    resize(NaturalSize);
}

} // namespace report

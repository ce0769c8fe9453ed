#include "guide/Guide.h"

#include "platform/basic/Version.h"
#include "platform/forms/Layout.h"
#include "platform/forms/Style.h"

using namespace forms;

namespace guide {

void Guide::BuildForm()
{
    constexpr QSize naturalSize(760, 700);
    constexpr int searchWidth = 200;
    Dress(Back, "back", "Page précédente", Command::Previous);
    Dress(Contents, "list", "Sommaire", Command::Help);
    Dress(SearchNext, "search", "Chercher la suite", Command::FindNext);
    Dress(Close, "quit", "Fermer", Command::Leave);
    Close.setToolTip("Fermer (Échap ou Ctrl+W)");
    SearchText.setAccessibleName("Texte à chercher");
    SearchText.setPlaceholderText("Chercher dans le guide");
    SearchText.setToolTip("Texte à chercher (Ctrl+F), puis Entrée");
    SearchText.setFixedWidth(static_cast<int>(searchWidth * FontScale()));
    Found.setAccessibleName("Résultat de la recherche");
    Version.setText("ZEP Lumo " + basic::Version());
    Version.setAccessibleName("Version");
    SetContent(Column{
        Row{Back, Contents, Item::Gap(), SearchText, SearchNext, Found, Item::Stretch(), Close},
        Item::Growing(Page),
        Row{Item::Stretch(), Version},
    });
    resize(naturalSize * FontScale());
}

} // namespace guide

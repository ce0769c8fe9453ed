#include "core/Guide.h"

#include "platform/forms/Layout.h"

using namespace forms;

namespace core {

void Guide::BuildForm()
{
    constexpr QSize naturalSize(760, 680);
    constexpr int searchWidth = 200;
    Dress(Back, "back", "Page précédente", Command::Previous);
    Dress(Contents, "list", "Sommaire");
    Dress(SearchNext, "search", "Chercher", Command::Search);
    Dress(Close, "quit", "Fermer (Échap)", Command::Leave);
    SearchText.setAccessibleName("Texte à chercher");
    SearchText.setPlaceholderText("Chercher dans le guide");
    SearchText.setFixedWidth(searchWidth);
    Page.setObjectName("Page");
    Page.setAccessibleName("Guide");
    Page.setOpenExternalLinks(false);
    SetContent(Column{
        Row{Back, Contents, Item::Gap(), SearchText, SearchNext, Found, Item::Stretch(), Close},
        Item::Growing(Page),
    });
    resize(naturalSize);
}

} // namespace core

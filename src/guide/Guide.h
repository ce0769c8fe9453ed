#pragma once

#include "guide/GuidePage.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"

namespace guide {

/// The guide: the pages of docs/guide with links, a search through all of them and the program's version. F1 opens it
/// over the current screen, Esc closes it.
///
/// Alt+Left goes back, F1 to the contents, Ctrl+F to the search field; Enter there and F3 find the next place.
class Guide : public forms::Form {
    Q_OBJECT
public:
    /// Opens on the page about a screen, by the screen's name; on the contents for an unknown one.
    explicit Guide(const QString& screen);

    forms::Picture Back{"Back"};
    forms::Picture Contents{"Contents"};
    forms::TextBox SearchText{"SearchText"};
    forms::Picture SearchNext{"SearchNext"};
    forms::Label Found{"Found"};
    forms::Picture Close{"Close"};
    GuidePage Page;
    forms::Label Version{"Version"};

    /// Finds the next occurrence of the typed text in all pages, wrapping around; shows "Introuvable" if there is none.
    void FindNext();

    /// The file name of the page about a screen.
    static QString PageOf(const QString& screen);
    /// The folder of the pages: next to the program, or ../share/zep-lumo/guide.
    static QString Folder();
    /// All pages in the order of the contents.
    static QStringList Pages();

protected:
    void Form_Load() override;
    void EscapePressed() override { Unload(); }

private:
    void BuildForm();
    void ShowTitle();

    QString firstPage;
};

/// Opens the guide on the page about a screen.
void ShowGuide(const QString& screen);

} // namespace guide

#pragma once

#include "core/GuidePage.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"

namespace core {

/// The guide, in front of the screen that it was called from by F1: the pages of docs/guide, links between them, a
/// search through all of them, the program's version. Esc closes it.
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

    /// Goes to the next place that holds the typed text, through all pages and back to the first; says when there is
    /// none.
    void FindNext();

    /// The file name of the page about a screen.
    static QString PageOf(const QString& screen);
    /// The folder of the pages: beside the program, or ../share/zep-lumo/guide of an installed one.
    static QString Folder();
    /// All pages in the order of the contents.
    static QStringList Pages();

protected:
    void Form_Load() override;
    void EscapePressed() override { Unload(); }

private:
    void BuildForm();
    void AddKeys();
    void ShowTitle();

    QString firstPage;
};

/// Shows the guide in front of the screen of this name.
void ShowGuide(const QString& screen);

} // namespace core

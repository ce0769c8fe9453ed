#pragma once

#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"

#include <QTextBrowser>

namespace core {

/// The guide, in front of the screen that it was called from by F1: the pages of docs/guide, links between them, a
/// search through all of them. Esc closes it.
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
    QTextBrowser Page;
    forms::Picture Close{"Close"};

    /// Goes to the next place that holds the typed text, through all pages and back to the first; says when there is
    /// none.
    void FindNext();

    /// The file name of the page about a screen.
    static QString PageOf(const QString& screen);
    /// All pages in the order of the contents.
    static QStringList Pages();

protected:
    void Form_Load() override;
    void EscapePressed() override { Unload(); }

private:
    void BuildForm();
    bool FindInPage(bool fromStart);

    QString firstPage;
};

/// Shows the guide in front of the screen of this name.
void ShowGuide(const QString& screen);

} // namespace core

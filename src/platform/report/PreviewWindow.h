#pragma once

#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"
#include "platform/forms/TextBox.h"

#include <functional>
#include <memory>

class QPrinter;

namespace pages {
class PageLayout;
}
namespace paper {
class PagePainter;
}

namespace report {

class PagesView;

/// The window "Preview": shows the pages of a report, prints them and saves them as PDF.
///
/// Keys: Page Up and Page Down, with or without Ctrl, move by a page, Home and End to the first and last; Ctrl+P
/// prints, Ctrl+S saves as PDF; Ctrl+plus, Ctrl+minus and Ctrl+0 zoom in, out and to the real size, Ctrl+2 fits the
/// width, Ctrl+3 the whole page; Esc and Ctrl+W close. Opens fitted as the last preview of the run was.
class PreviewWindow : public forms::Form {
    Q_OBJECT
public:
    /// `proposedName` is the PDF's file name without folder and extension, `title` the title of message boxes.
    PreviewWindow(std::unique_ptr<pages::PageLayout> report, const QString& proposedName, const QString& title);
    ~PreviewWindow() override;

    forms::Picture PrintButton{"PrintButton"};
    forms::Picture SaveButton{"SaveButton"};
    forms::Picture FirstButton{"FirstButton"};
    forms::Picture PreviousButton{"PreviousButton"};
    forms::TextBox PageNumber{"PageNumber"};
    forms::Label PageCount{"PageCount"};
    forms::Picture NextButton{"NextButton"};
    forms::Picture LastButton{"LastButton"};
    forms::Picture ZoomOutButton{"ZoomOutButton"};
    forms::Label ZoomText{"ZoomText"};
    forms::Picture ZoomInButton{"ZoomInButton"};
    forms::Picture FitWidthButton{"FitWidthButton"};
    forms::Picture FitPageButton{"FitPageButton"};
    forms::Picture CloseButton{"CloseButton"};
    forms::Panel SavedPanel{"SavedPanel"};
    forms::Label SavedText{"SavedText"};
    forms::Button OpenFolder{"OpenFolder", "Ouvrir le dossier"};

    const pages::PageLayout& Pages() const { return *layout; }
    const PagesView& View() const { return *view; }

    /// Writes the PDF and offers to open its folder; on failure shows a message and returns false.
    bool SavePdf(const QString& path);
    /// Prints the pages chosen in `printer`; on failure shows a message and returns false.
    bool Print(QPrinter& printer);

    /// Ask the user for the PDF's path (empty on cancel) and for the printer. System dialogs by default; replaced in
    /// tests.
    std::function<QString(PreviewWindow& preview, const QString& proposedPath)> AskPdfPath;
    std::function<bool(PreviewWindow& preview, QPrinter& printer)> AskPrinter;

protected:
    void Form_Load() override;
    void EscapePressed() override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void BuildForm();
    void ConnectHandlers();
    void AskAndSave();
    void AskAndPrint();
    void ShowState();
    void GoToTypedPage();
    void MoveBy(int count);
    void ZoomBy(int steps);
    void FitWidth();
    void FitPage();
    bool RunCommand(int key);
    bool MoveByKey(int key);

    bool MayReplace(const QString& path) const;

    std::unique_ptr<pages::PageLayout> layout;
    std::unique_ptr<paper::PagePainter> painter;
    std::unique_ptr<PagesView> view;
    QString pdfName;
    QString messageTitle;
    QString savedPath;
};

} // namespace report

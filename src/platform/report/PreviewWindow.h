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

/// The preview of a report, the window "Preview": its pages, and the ways out of it to printer and PDF.
///
/// Page Up and Page Down, with Ctrl or without, move by a page, Home and End to the first and last, Ctrl+P prints,
/// Ctrl+S saves as PDF, Ctrl+plus, Ctrl+minus and Ctrl+0 zoom in, out and to the real size, Ctrl+2 fits the width, Esc
/// and Ctrl+W close.
class PreviewWindow : public forms::Form {
    Q_OBJECT
public:
    /// `proposedName` is the PDF's file name without folder and ending, `title` is that of message boxes.
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
    forms::Picture CloseButton{"CloseButton"};
    forms::Panel SavedPanel{"SavedPanel"};
    forms::Label SavedText{"SavedText"};
    forms::Button OpenFolder{"OpenFolder", "Ouvrir le dossier"};

    const pages::PageLayout& Pages() const { return *layout; }
    const PagesView& View() const { return *view; }

    /// Writes the PDF and then offers to open its folder; false after a message when writing failed.
    bool SavePdf(const QString& path);
    /// Prints the pages chosen in `printer`; false after a message when it refuses.
    bool Print(QPrinter& printer);

    /// Ask the user for the PDF's path (empty when he cancels) and for the printer. The system's dialogs, replaced
    /// where no user is.
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

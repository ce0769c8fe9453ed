#pragma once

#include "platform/paper/PagePainter.h"

#include <QAbstractScrollArea>

namespace pages {
class PageLayout;
}

namespace report {

/// Shows the pages of a report one below the other. Only visible pages are laid out and painted, so the time doesn't
/// depend on the number of rows.
class PagesView : public QAbstractScrollArea {
    Q_OBJECT
public:
    explicit PagesView(const pages::PageLayout& shownPages);

    /// The page that fills most of the view, counted from 0.
    int CurrentPage() const;
    /// The text of the current page for screen readers, one line for each printed line.
    QString PageText() const;
    /// Scrolls the upper edge of a page to the top of the view; page numbers outside the report are clamped.
    void ShowPage(int page);

    /// 1 is the sheet's real size. Keeps the centre of the view; ends FitTo.
    void SetZoom(double factor);
    double Zoom() const { return zoom; }
    enum class Fit { None, Width, WholePage };
    /// Makes a sheet as wide as the view or shows a whole one, and keeps it so when the window is resized.
    void FitTo(Fit part);
    Fit Fitted() const { return fit; }

    static constexpr double SmallestZoom = 0.25;
    static constexpr double LargestZoom = 4;

Q_SIGNALS:
    /// The current page or the zoom has changed.
    void ViewChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* event) override;  ///< with Ctrl it zooms
    void keyPressEvent(QKeyEvent* event) override; ///< arrows scroll; other keys are left to the window

private:
    double DotsPerMillimetre() const;
    double SheetWidth() const;
    double SheetStep() const; ///< distance between the tops of two sheets
    void ApplyZoom(double factor);
    void UpdateRanges();
    void AnnouncePage(); ///< notifies assistive software when the current page changes
    void PaintSheet(QPainter& painter, int page, double left, double top);

    const pages::PageLayout& layout;
    paper::PagePainter pagePainter;
    double zoom = 1;
    Fit fit = Fit::Width;
    int announcedPage = -1;
};

} // namespace report

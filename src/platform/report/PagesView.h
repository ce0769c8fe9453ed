#pragma once

#include "platform/paper/PagePainter.h"

#include <QAbstractScrollArea>

namespace pages {
class PageLayout;
}

namespace report {

/// Shows the pages of a report one below the other. Only visible pages are made and painted, so that a report of
/// thousands of rows appears as fast as one of ten.
class PagesView : public QAbstractScrollArea {
    Q_OBJECT
public:
    explicit PagesView(const pages::PageLayout& shownPages);

    /// The page that fills most of the view, from 0.
    int CurrentPage() const;
    /// The text of the current page for screen readers, a line for each line on paper.
    QString PageText() const;
    /// Brings the upper edge of a page to the top of the view; a page outside the report means the nearest one.
    void ShowPage(int page);

    /// 1 is the sheet's real size. Keeps the point in the middle of the view; the width is no longer fitted.
    void SetZoom(double factor);
    double Zoom() const { return zoom; }
    /// Makes a sheet as wide as the view, also when the window is resized later.
    void FitWidth();
    bool FitsWidth() const { return fitsWidth; }

    static constexpr double SmallestZoom = 0.25;
    static constexpr double LargestZoom = 4;

Q_SIGNALS:
    /// Another page is current, or the zoom changed.
    void ViewChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* event) override;  ///< with Ctrl it zooms
    void keyPressEvent(QKeyEvent* event) override; ///< arrows scroll; all other keys are the window's

private:
    double DotsPerMillimetre() const;
    double SheetWidth() const;
    double SheetStep() const; ///< from the top of one sheet to that of the next
    void ApplyZoom(double factor);
    void UpdateRanges();
    void AnnouncePage(); ///< to assistive software, when another page has become current
    void PaintSheet(QPainter& painter, int page, double left, double top);

    const pages::PageLayout& layout;
    paper::PagePainter pagePainter;
    double zoom = 1;
    bool fitsWidth = true;
    int announcedPage = -1;
};

} // namespace report

#pragma once

#include "platform/report/PagePainter.h"

#include <QAbstractScrollArea>

namespace report {

class PageLayout;

/// Shows the pages of a report one under the other. Only those in sight are made and painted, so that a report of
/// thousands of rows shows as soon as one of ten.
class PagesView : public QAbstractScrollArea {
    Q_OBJECT
public:
    explicit PagesView(const PageLayout& pages);

    /// The page that fills most of the view, from 0.
    int CurrentPage() const;
    /// The text of the current page for screen readers, a line for each line on paper.
    QString PageText() const;
    /// Brings the upper edge of a page to the top of the view; a page outside the report means the nearest one.
    void ShowPage(int page);

    /// 1 shows a sheet in its real size. Keeps the place that is in the middle of the view; ends the fitting to the
    /// width.
    void SetZoom(double factor);
    double Zoom() const { return zoom; }
    /// Makes a sheet as wide as the view, and keeps it so when the window's size changes.
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
    void AnnouncePage(); ///< tells assistive software of another current page
    void PaintSheet(QPainter& painter, int page, double left, double top);

    const PageLayout& layout;
    PagePainter pagePainter;
    double zoom = 1;
    bool fitsWidth = true;
    int announcedPage = -1;
};

} // namespace report

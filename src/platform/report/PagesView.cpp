#include "platform/report/PagesView.h"

#include "platform/forms/Colours.h"
#include "platform/pages/PageLayout.h"
#include "platform/pages/PageMeasures.h"
#include "platform/report/PagesAccessibility.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace report {
namespace {

constexpr double Gap = 16; // around the sheets
constexpr double WheelZoom = 1.1;
constexpr int LineStep = 48;

} // namespace

PagesView::PagesView(const pages::PageLayout& shownPages) : layout(shownPages)
{
    MakePagesAccessible();
    setObjectName(QStringLiteral("Pages"));
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // toggling it would change the fitted width
    verticalScrollBar()->setObjectName(QStringLiteral("VerticalScroll"));
    horizontalScrollBar()->setObjectName(QStringLiteral("HorizontalScroll"));
}

double PagesView::DotsPerMillimetre() const
{
    return logicalDpiX() * zoom / pages::measures::PerInch;
}

double PagesView::SheetWidth() const
{
    return layout.Design().paper.width() * DotsPerMillimetre();
}

double PagesView::SheetStep() const
{
    return layout.Design().paper.height() * DotsPerMillimetre() + Gap;
}

int PagesView::CurrentPage() const
{
    const double middle = verticalScrollBar()->value() + viewport()->height() / 2.0;
    const bool atEnd = verticalScrollBar()->value() == verticalScrollBar()->maximum();
    const int page = static_cast<int>((atEnd ? middle + viewport()->height() / 2.0 - Gap * 2 : middle) / SheetStep());
    return std::clamp(page, 0, layout.PageCount() - 1);
}

void PagesView::ShowPage(int page)
{
    const int shown = std::clamp(page, 0, layout.PageCount() - 1);
    verticalScrollBar()->setValue(shown == 0 ? 0 : static_cast<int>(std::lround(shown * SheetStep() + Gap / 2)));
}

void PagesView::SetZoom(double factor)
{
    fit = Fit::None;
    ApplyZoom(std::clamp(factor, SmallestZoom, LargestZoom));
}

void PagesView::FitTo(Fit part)
{
    fit = part;
    const double dotsAtOne = DotsPerMillimetre() / zoom;
    const QSizeF& paper = layout.Design().paper;
    const double acrossView = (viewport()->width() - 2 * Gap) / (paper.width() * dotsAtOne);
    const double downView = (viewport()->height() - 2 * Gap) / (paper.height() * dotsAtOne);
    const int page = CurrentPage();
    ApplyZoom(
        std::clamp(part == Fit::WholePage ? std::min(acrossView, downView) : acrossView, SmallestZoom, LargestZoom));
    if (part == Fit::WholePage)
        ShowPage(page);
}

void PagesView::ApplyZoom(double factor)
{
    const double half = viewport()->height() / 2.0;
    const double middle = (verticalScrollBar()->value() + half) / SheetStep();
    const bool atTop = verticalScrollBar()->value() == 0;
    zoom = factor;
    UpdateRanges();
    verticalScrollBar()->setValue(atTop ? 0 : static_cast<int>(std::lround(middle * SheetStep() - half)));
    viewport()->update();
    AnnouncePage();
    Q_EMIT ViewChanged();
}

void PagesView::UpdateRanges()
{
    const QSize view = viewport()->size();
    verticalScrollBar()->setRange(
        0, std::max(0, static_cast<int>(std::ceil(layout.PageCount() * SheetStep() + Gap)) - view.height()));
    verticalScrollBar()->setPageStep(view.height());
    verticalScrollBar()->setSingleStep(LineStep);
    // Rounded: a fitted sheet may be wider than the view by a rounding error.
    horizontalScrollBar()->setRange(0,
                                    std::max(0, static_cast<int>(std::lround(SheetWidth() + 2 * Gap)) - view.width()));
    horizontalScrollBar()->setPageStep(view.width());
    horizontalScrollBar()->setSingleStep(LineStep);
}

QString PagesView::PageText() const
{
    QString text;
    double top = 0;
    for (const pages::Run& run : layout.MakePage(CurrentPage()).runs) {
        if (!text.isEmpty())
            text += run.box.top() == top ? QStringLiteral("  ") : QStringLiteral("\n");
        text += run.text;
        top = run.box.top();
    }
    return text;
}

void PagesView::AnnouncePage()
{
    const int page = CurrentPage();
    if (page == announcedPage)
        return;
    announcedPage = page;
    setAccessibleName(
        QStringLiteral("%1, page %2 sur %3").arg(layout.Design().title).arg(page + 1).arg(layout.PageCount()));
    if (QAccessible::isActive()) {
        QAccessibleTextUpdateEvent changed(this, 0, {}, PageText());
        QAccessible::updateAccessibility(&changed);
    }
}

void PagesView::PaintSheet(QPainter& painter, int page, double left, double top)
{
    const QSizeF size(SheetWidth(), SheetStep() - Gap);
    painter.fillRect(QRectF(QPointF(left, top), size), Qt::white);
    painter.setPen(forms::TheColours().border);
    painter.drawRect(QRectF(QPointF(left - 0.5, top - 0.5), size + QSizeF(1, 1)));
    painter.save();
    painter.translate(left, top);
    pagePainter.Paint(painter, layout.MakePage(page), DotsPerMillimetre());
    painter.restore();
}

void PagesView::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    painter.fillRect(event->rect(), forms::TheColours().header);
    const double scrolled = verticalScrollBar()->value();
    const double left = horizontalScrollBar()->maximum() > 0 ? Gap - horizontalScrollBar()->value()
                                                             : std::round((viewport()->width() - SheetWidth()) / 2);
    const int first = std::max(0, static_cast<int>((scrolled + event->rect().top() - Gap) / SheetStep()));
    const int last =
        std::min(layout.PageCount() - 1, static_cast<int>((scrolled + event->rect().bottom()) / SheetStep()));
    for (int page = first; page <= last; ++page)
        PaintSheet(painter, page, left, std::round(Gap + page * SheetStep() - scrolled));
}

void PagesView::resizeEvent(QResizeEvent*)
{
    if (fit != Fit::None)
        FitTo(fit);
    else
        UpdateRanges();
}

void PagesView::scrollContentsBy(int, int)
{
    viewport()->update();
    AnnouncePage();
    Q_EMIT ViewChanged();
}

void PagesView::wheelEvent(QWheelEvent* event)
{
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    SetZoom(event->angleDelta().y() > 0 ? zoom * WheelZoom : zoom / WheelZoom);
    event->accept();
}

void PagesView::keyPressEvent(QKeyEvent* event)
{
    const bool scrolls = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down || event->key() == Qt::Key_Left ||
                         event->key() == Qt::Key_Right;
    if (scrolls)
        QAbstractScrollArea::keyPressEvent(event);
    else
        event->ignore();
}

} // namespace report

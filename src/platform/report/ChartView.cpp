#include "platform/report/ChartView.h"

#include "platform/forms/Colours.h"
#include "platform/forms/Form.h"
#include "platform/forms/Style.h"
#include "platform/pages/Chart.h"
#include "platform/pages/PageMeasures.h"
#include "platform/paper/PagePainter.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

namespace report {
namespace {

constexpr QSize NaturalTwips(13200, 5100);
constexpr QSize SmallestTwips(7200, 2400);
constexpr double Margin = 2.5; // mm

paper::Inks ScreenInks()
{
    const forms::Colours& colours = forms::TheColours();
    return {.paper = colours.field,
            .text = colours.text,
            .faint = colours.quiet,
            .faintRule = colours.border,
            .shade = colours.header,
            .first = colours.accent,
            .second = colours.quiet,
            .third = colours.warning,
            .loss = colours.alarm};
}

QAccessibleInterface* MakeChartAccessible(const QString&, QObject* object)
{
    auto* view = qobject_cast<ChartView*>(object);
    return view != nullptr ? new QAccessibleWidget(view, QAccessible::Chart) : nullptr; // owned by the toolkit's cache
}

QSize Scaled(const QSize& twips)
{
    return {forms::ScaledPixelsOf(twips.width()), forms::ScaledPixelsOf(twips.height())};
}

} // namespace

struct ChartView::Drawing {
    pages::Chart chart;
    pages::Page page;
    std::vector<QRectF> areas; ///< of the labels, in millimetres
    paper::PagePainter painter;
    int colours = -1; ///< ColourGeneration of the painter
};

ChartView::ChartView(const QString& name, const QString& chartTitle)
    : title(chartTitle), drawing(std::make_unique<Drawing>())
{
    QAccessible::installFactory(MakeChartAccessible); // the factory is installed only once
    setObjectName(name);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    Describe();
}

ChartView::~ChartView() = default;

const pages::Chart& ChartView::Chart() const
{
    return drawing->chart;
}

int ChartView::LastLabel() const
{
    return static_cast<int>(drawing->chart.labels.size()) - 1;
}

void ChartView::SetTitle(const QString& chartTitle)
{
    title = chartTitle;
    Describe();
}

void ChartView::SetChart(const pages::Chart& chart, const QStringList& labelDescriptions)
{
    drawing->chart = chart;
    descriptions = labelDescriptions;
    hovered = -1;
    current = chart.labels.isEmpty() ? -1 : chart.across ? 0 : LastLabel();
    LayOut();
    Describe();
}

void ChartView::SetCurrent(int label)
{
    label = std::clamp(label, std::min(0, LastLabel()), LastLabel());
    if (label == current)
        return;
    current = label;
    hovered = -1;
    Describe();
}

QString ChartView::Description() const
{
    const int said = hovered >= 0 ? hovered : current;
    return said >= 0 ? descriptions.value(said) : QString();
}

void ChartView::Describe()
{
    const QString said = Chart().IsEmpty() ? Chart().emptyText : descriptions.value(current);
    setAccessibleName(said.isEmpty() ? title : title + "\u00A0: " + said);
    update();
    Q_EMIT DescriptionChanged();
}

double ChartView::DotsPerMillimetre() const
{
    return logicalDpiX() * forms::FontScale() / pages::measures::PerInch;
}

QRectF ChartView::AreaOf(int label) const
{
    if (drawing->areas.empty())
        return {};
    const QRectF& area = drawing->areas.at(static_cast<std::size_t>(label));
    return {area.topLeft() * DotsPerMillimetre(), area.size() * DotsPerMillimetre()};
}

QSize ChartView::sizeHint() const
{
    return Scaled(NaturalTwips);
}

QSize ChartView::minimumSizeHint() const
{
    return Scaled(SmallestTwips);
}

void ChartView::LayOut()
{
    pages::Page& page = drawing->page = {};
    page.paper = QSizeF(size()) / DotsPerMillimetre();
    drawing->areas = pages::AddChart(page, drawing->chart,
                                     QRectF(QPointF(0, 0), page.paper).adjusted(Margin, Margin, -Margin, -Margin));
    update();
}

void ChartView::paintEvent(QPaintEvent*)
{
    if (drawing->colours != forms::ColourGeneration()) {
        drawing->painter = paper::PagePainter(ScreenInks());
        drawing->colours = forms::ColourGeneration();
    }
    const forms::Colours& colours = forms::TheColours();
    QPainter onScreen(this);
    onScreen.fillRect(rect(), colours.field);
    const bool framed = hasFocus() && !drawing->areas.empty();
    if (hovered >= 0 && !drawing->areas.empty())
        onScreen.fillRect(AreaOf(hovered), colours.hover);
    if (framed)
        onScreen.fillRect(AreaOf(current), colours.selection);
    drawing->painter.Paint(onScreen, drawing->page, DotsPerMillimetre());
    onScreen.setPen(QPen(colours.border, 1));
    onScreen.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    if (framed) {
        onScreen.setPen(QPen(colours.accent, 2));
        onScreen.drawRect(AreaOf(current));
    }
}

void ChartView::resizeEvent(QResizeEvent*)
{
    LayOut();
}

void ChartView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        LayOut();
    QWidget::changeEvent(event);
}

void ChartView::keyPressEvent(QKeyEvent* event)
{
    const bool isPlain = event->modifiers() == Qt::NoModifier || event->modifiers() == Qt::KeypadModifier;
    if (!isPlain || current < 0)
        return event->ignore();
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        return Choose(current - 1);
    case Qt::Key_Right:
    case Qt::Key_Down:
        return Choose(current + 1);
    case Qt::Key_Home:
        return Choose(0);
    case Qt::Key_End:
        return Choose(LastLabel());
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        Q_EMIT Entered(current);
        return;
    default:
        event->ignore();
    }
}

void ChartView::Choose(int label)
{
    SetCurrent(label);
    Q_EMIT CurrentChanged(current);
}

int ChartView::LabelAt(const QPointF& place) const
{
    for (int label = 0; label < static_cast<int>(drawing->areas.size()); ++label)
        if (AreaOf(label).contains(place))
            return label;
    return -1;
}

void ChartView::Hover(int label)
{
    if (label == hovered)
        return;
    hovered = label;
    update();
    Q_EMIT DescriptionChanged();
}

void ChartView::mouseMoveEvent(QMouseEvent* event)
{
    Hover(LabelAt(event->position()));
}

void ChartView::leaveEvent(QEvent*)
{
    Hover(-1);
}

void ChartView::mousePressEvent(QMouseEvent* event)
{
    const int label = LabelAt(event->position());
    if (event->button() != Qt::LeftButton || label < 0)
        return event->ignore();
    Choose(label);
    Q_EMIT Clicked(label);
}

void ChartView::mouseDoubleClickEvent(QMouseEvent* event)
{
    const int label = LabelAt(event->position());
    if (event->button() == Qt::LeftButton && label >= 0)
        Q_EMIT Entered(label);
}

void ChartView::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    update();
}

void ChartView::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    update();
}

} // namespace report

#pragma once

#include <QStringList>
#include <QWidget>
#include <memory>

namespace pages {
struct Chart;
}

namespace report {

/// A chart on a screen, drawn as on paper, in the colours of the desktop. The label under the pointer is highlighted,
/// the current one framed while the chart has the focus: arrow keys, Home and End move it.
class ChartView : public QWidget {
    Q_OBJECT
public:
    /// `title` is what screen readers call the chart; the description of the current label follows.
    ChartView(const QString& name, const QString& title);
    ~ChartView() override;

    void SetTitle(const QString& title);
    /// Shows a chart with what is to be said about each label. The current label is the last one of an upright chart,
    /// the first one of a chart across.
    void SetChart(const pages::Chart& chart, const QStringList& labelDescriptions);
    const pages::Chart& Chart() const;

    int Current() const { return current; }
    /// Clamped to the labels.
    void SetCurrent(int label);
    /// What is to be said about the label under the pointer or, if there is none, the current one. Empty without
    /// labels.
    QString Description() const;
    /// The area of a label with its bars, in pixels; none for an empty chart.
    QRectF AreaOf(int label) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void DescriptionChanged();
    void CurrentChanged(int label); ///< by keys or a click
    void Clicked(int label);
    void Entered(int label); ///< Enter or a double click

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    struct Drawing;

    double DotsPerMillimetre() const;
    void LayOut();
    void Describe();
    void Hover(int label);
    void Choose(int label);
    int LabelAt(const QPointF& place) const;
    int LastLabel() const;

    QString title;
    std::unique_ptr<Drawing> drawing;
    QStringList descriptions;
    int current = -1;
    int hovered = -1;
};

} // namespace report

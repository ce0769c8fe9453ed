#include "guide/GuidePage.h"

#include "platform/forms/Colours.h"
#include "platform/forms/FrenchSpaces.h"
#include "platform/forms/Style.h"

#include <QApplication>
#include <QEvent>
#include <QImage>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextTable>
#include <cmath>

namespace guide {

namespace {

constexpr int LineWidth = 680; // device-independent pixels, at the usual font
constexpr int DocumentMargin = 12;

int ScaledLineWidth()
{
    return static_cast<int>(LineWidth * forms::FontScale());
}

void DressTable(QTextTable& table)
{
    constexpr double padding = 5;
    const forms::Colours& colours = forms::TheColours();
    QTextTableFormat format = table.format();
    format.setBorderBrush(colours.border);
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setBorder(1);
    format.setBorderCollapse(true);
    format.setCellPadding(padding);
    format.setTopMargin(2 * padding);
    format.setBottomMargin(2 * padding);
    table.setFormat(format);
    for (int column = 0; column < table.columns(); ++column) {
        QTextTableCell cell = table.cellAt(0, column);
        QTextCharFormat head = cell.format();
        head.setBackground(colours.header);
        cell.setFormat(head);
    }
}

void DressHeading(QTextCursor& block, int level)
{
    constexpr double largest = 1.7; // of the usual letters
    constexpr double step = 0.3;
    QTextCharFormat letters = block.charFormat();
    letters.clearProperty(QTextFormat::FontSizeAdjustment);
    letters.setFontPointSize(qMax(1.0, largest - step * (level - 1)) * QApplication::font().pointSizeF());
    letters.setForeground(forms::TheColours().accent);
    block.setCharFormat(letters);
}

/// The Markdown importer uses the application's link colour, which may be unreadable on our background.
void DressLinks(const QTextBlock& block)
{
    for (auto part = block.begin(); !part.atEnd(); ++part) {
        QTextCharFormat letters = part.fragment().charFormat();
        if (!letters.isAnchor())
            continue;
        letters.setForeground(forms::TheColours().accent);
        QTextCursor link(block);
        link.setPosition(part.fragment().position());
        link.setPosition(part.fragment().position() + part.fragment().length(), QTextCursor::KeepAnchor);
        link.setCharFormat(letters);
    }
}

void DressBlock(const QTextBlock& block)
{
    constexpr double lineHeight = 125; // percent
    QTextCursor cursor(block);
    QTextBlockFormat spacing;
    if (block.blockFormat().nonBreakableLines()) // a listing
        spacing.setBackground(forms::TheColours().header);
    else if (!block.text().contains(QChar::ObjectReplacementCharacter)) // pictures would get 25 % of their height below
        spacing.setLineHeight(lineHeight, QTextBlockFormat::ProportionalHeight);
    cursor.mergeBlockFormat(spacing);
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    if (const int level = block.blockFormat().headingLevel(); level > 0)
        DressHeading(cursor, level);
    DressLinks(block);
}

} // namespace

GuidePage::GuidePage()
{
    setObjectName("Page");
    setOpenExternalLinks(false);
    setMinimumWidth(ScaledLineWidth() / 2);
    document()->setDocumentMargin(DocumentMargin);
    connect(this, &QTextBrowser::sourceChanged, this, &GuidePage::DressText); // also of a page that is gone back to
    TakeColours();
}

QString GuidePage::Title() const
{
    return document()->firstBlock().text();
}

QVariant GuidePage::loadResource(int type, const QUrl& name)
{
    const QVariant read = QTextBrowser::loadResource(type, name);
    if (type == QTextDocument::MarkdownResource)
        return forms::WithFrenchSpaces(QString::fromUtf8(read.toByteArray()));
    QImage picture;
    if (type != QTextDocument::ImageResource || !picture.loadFromData(read.toByteArray()))
        return read;
    const double ratio = devicePixelRatioF();
    const int width = qMin(picture.width(), ScaledLineWidth());
    picture = picture.scaledToWidth(static_cast<int>(std::lround(width * ratio)), Qt::SmoothTransformation);
    picture.setDevicePixelRatio(ratio);
    return picture;
}

void GuidePage::changeEvent(QEvent* event)
{
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        TakeColours();
        reload();
    }
}

void GuidePage::TakeColours()
{
    const forms::Colours& colours = forms::TheColours();
    QPalette shown = palette();
    shown.setColor(QPalette::Base, colours.field);
    shown.setColor(QPalette::Text, colours.text);
    shown.setColor(QPalette::Link, colours.accent);
    shown.setColor(QPalette::LinkVisited, colours.accent);
    shown.setColor(QPalette::Highlight, colours.accentGround); // also while the search field has the focus
    shown.setColor(QPalette::HighlightedText, colours.onAccent);
    setPalette(shown);
}

void GuidePage::DressText()
{
    const QSignalBlocker quiet(this);
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
        DressBlock(block);
    for (QTextFrame* frame : document()->rootFrame()->childFrames())
        if (auto* table = qobject_cast<QTextTable*>(frame))
            DressTable(*table);
}

} // namespace guide

#include "core/FolderList.h"

#include "platform/forms/Icons.h"

#include <QDir>
#include <QKeyEvent>
#include <QPainter>

namespace core {

namespace {

constexpr int FolderRole = Qt::UserRole;
constexpr int IndentWidth = 3; // blanks per level

} // namespace

FolderList::FolderList(const QString& name)
{
    setObjectName(name);
    setAccessibleName("Dossier");
    connect(this, &QListWidget::itemDoubleClicked, this, &FolderList::ChooseLine);
}

void FolderList::SetPath(const QString& folder)
{
    const QDir wanted(folder);
    if (folder.isEmpty() || !wanted.exists())
        return;
    path = QDir::cleanPath(wanted.absolutePath());
    Fill();
    Q_EMIT Change();
}

void FolderList::Fill()
{
    clear();
    QStringList above;
    QDir walker(path);
    while (walker.cdUp())
        above.prepend(walker.absolutePath());

    int depth = 0;
    for (const QString& folder : above)
        AddLine(depth == 0 ? folder : QDir(folder).dirName(), folder, depth, false), ++depth;
    AddLine(depth == 0 ? path : QDir(path).dirName(), path, depth, true);
    const QDir chosen(path);
    for (const QString& name : chosen.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase))
        AddLine(name, chosen.filePath(name), depth + 1, false);
}

void FolderList::AddLine(const QString& caption, const QString& folder, int depth, bool chosen)
{
    auto* line = new QListWidgetItem(forms::NamedIcon("folder"), QString(depth * IndentWidth, ' ') + caption, this);
    line->setData(FolderRole, folder);
    line->setToolTip(QDir::toNativeSeparators(folder));
    if (!chosen)
        return;
    QFont bold = font();
    bold.setBold(true);
    line->setFont(bold);
    setCurrentItem(line);
    scrollToItem(line);
}

void FolderList::ChooseLine(const QListWidgetItem* line)
{
    if (line != nullptr)
        SetPath(line->data(FolderRole).toString());
}

void FolderList::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        ChooseLine(currentItem());
        break;
    case Qt::Key_Backspace:
        SetPath(QDir(path).filePath(".."));
        break;
    default:
        QListWidget::keyPressEvent(event);
    }
}

void FolderList::keyboardSearch(const QString& search)
{
    const auto row = typeAhead.Find(search, count(), currentRow(), [this](int line) { return item(line)->text(); });
    if (row)
        setCurrentRow(*row);
}

FileList::FileList(const QString& name, const QString& filePattern) : pattern(filePattern)
{
    setObjectName(name);
    setAccessibleName("Fichier");
    setFocusPolicy(Qt::NoFocus);
    setSelectionMode(QAbstractItemView::NoSelection);
}

void FileList::SetPath(const QString& folder)
{
    clear();
    addItems(QDir(folder).entryList({pattern}, QDir::Files | QDir::Hidden, QDir::Name));
}

PathLabel::PathLabel(const QString& name) : Label(name)
{
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void PathLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(text(), Qt::ElideMiddle, width()));
}

bool PathLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip)
        setToolTip(fontMetrics().horizontalAdvance(text()) > width() ? text() : QString());
    return Label::event(event);
}

} // namespace core

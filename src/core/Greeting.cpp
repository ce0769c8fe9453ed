#include "core/Greeting.h"

#include "platform/forms/Controls.h"

#include <QAction>
#include <QEvent>
#include <QGridLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace core {

namespace {

constexpr int Gap = 8;
constexpr int BetweenGroups = 16;
constexpr int LeastHeight = 46;

/// Takes over the words, the shortcut and the state of an action.
void Show(const QAction& action, const QAction& menu, forms::Picture& button)
{
    const QString words = action.text().remove('&'); // the mnemonics belong to the menus
    const QString keys = action.shortcut().toString(QKeySequence::NativeText);
    button.SetCaption(words);
    button.SetNote(keys);
    button.SetAction(words);
    button.setAccessibleDescription(keys);
    button.setToolTip({}); // says nothing that the button doesn't
    button.setEnabled(action.isEnabled());
    button.setVisible(action.isVisible() && menu.isVisible());
}

} // namespace

Greeting::Greeting() : page(new QWidget), places(new QGridLayout(page))
{
    setObjectName("Greeting");
    setAccessibleName("Accueil");
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    places->setContentsMargins(0, 0, 0, 0);
    places->setSpacing(BetweenGroups);
    setWidget(page);
    for (QWidget* ground : {viewport(), page})
        ground->setAutoFillBackground(false); // the window's background shows
}

void Greeting::AddGroup(QAction& menu, const QString& heading)
{
    constexpr int widest = 320; // pixels; wider buttons look empty
    auto* area = new QWidget;
    area->setMaximumWidth(widest);
    auto* tasks = new QVBoxLayout(area);
    tasks->setContentsMargins(0, 0, 0, 0);
    tasks->setSpacing(Gap);
    auto* title = new forms::Label("Tasks-" + menu.objectName(), heading);
    title->setProperty("role", "caption");
    tasks->addWidget(title);
    title->setVisible(menu.isVisible());
    connect(&menu, &QAction::changed, title, [title, &menu] { title->setVisible(menu.isVisible()); });
    tasks->addStretch();
    groups.push_back({area, tasks, &menu});
    across = 0;
}

void Greeting::AddTask(QAction& action, const QString& icon)
{
    const Group& group = groups.back();
    auto* button = new forms::Picture("Task-" + action.objectName());
    button->SetIcon(icon);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    button->setMinimumHeight(LeastHeight);
    group.tasks->insertWidget(group.tasks->count() - 1, button);
    const auto show = [button, &action, menu = group.menu] { Show(action, *menu, *button); };
    for (const QAction* source : {static_cast<const QAction*>(&action), static_cast<const QAction*>(group.menu)})
        connect(source, &QAction::changed, button, show);
    connect(button, &forms::Picture::clicked, &action, &QAction::trigger);
    show();
}

void Greeting::Arrange()
{
    int widest = 0;
    for (const Group& group : groups)
        widest = std::max(widest, group.area->minimumSizeHint().width());
    const int room = (width() + BetweenGroups) / (widest + BetweenGroups);
    const int fitting = std::clamp(room, 1, static_cast<int>(groups.size()));
    if (std::exchange(across, fitting) == fitting)
        return;
    for (int column = 0; column < static_cast<int>(groups.size()); ++column)
        places->setColumnStretch(column, column < across ? 1 : 0);
    for (int index = 0; index < static_cast<int>(groups.size()); ++index)
        places->addWidget(groups[static_cast<std::size_t>(index)].area, index / across, index % across);
    updateGeometry();
}

QSize Greeting::sizeHint() const
{
    return page->sizeHint();
}

QSize Greeting::minimumSizeHint() const
{
    return {0, 0};
}

void Greeting::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    Arrange();
}

/// The scroll area watches the page.
bool Greeting::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == page && event->type() == QEvent::LayoutRequest) {
        Arrange();
        updateGeometry();
    }
    return QScrollArea::eventFilter(watched, event);
}

} // namespace core

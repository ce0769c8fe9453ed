#pragma once

#include <QScrollArea>
#include <vector>

class QAction;
class QGridLayout;
class QVBoxLayout;

namespace core {

/// The tasks of the menus as buttons, in the groups of the menus. A button has the words and the shortcut of its
/// action, shows while the action and its menu do, and triggers the action.
class Greeting : public QScrollArea {
public:
    Greeting();

    /// Starts a group of tasks from this menu; the heading is empty for all but the first group of a menu.
    void AddGroup(QAction& menu, const QString& heading);
    /// Adds a task to the last group. `icon` is a file of resources/icons without extension.
    void AddTask(QAction& action, const QString& icon);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Group {
        QWidget* area;
        QVBoxLayout* tasks;
        QAction* menu;
    };

    /// Places as many groups side by side as the width allows.
    void Arrange();

    QWidget* page; ///< owned by the scroll area
    QGridLayout* places;
    std::vector<Group> groups;
    int across = 0;
};

} // namespace core

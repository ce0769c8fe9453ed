#pragma once

#include "platform/forms/Controls.h"
#include "platform/forms/TypeAhead.h"

#include <QListWidget>

namespace core {

/// A folder list: the folders above the chosen one, the chosen one, and the folders in it. Double click or Enter on a
/// line chooses that folder, Backspace the one above; letters go to the next folder whose name begins with them.
class FolderList : public QListWidget {
    Q_OBJECT
    Q_PROPERTY(QString path READ Path WRITE SetPath NOTIFY Change)
public:
    explicit FolderList(const QString& name);

    /// The chosen folder, absolute.
    QString Path() const { return path; }
    /// Chooses a folder; a path that is no folder changes nothing.
    void SetPath(const QString& folder);

Q_SIGNALS:
    void Change();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyboardSearch(const QString& search) override;

private:
    void Fill();
    void ChooseLine(const QListWidgetItem* line);
    void AddLine(const QString& caption, const QString& folder, int depth, bool chosen);

    QString path;
    forms::TypeAhead typeAhead;
};

/// A file list with a fixed pattern: the names in a folder that match it, case ignored.
class FileList : public QListWidget {
    Q_OBJECT
public:
    FileList(const QString& name, const QString& pattern);
    void SetPath(const QString& folder);

private:
    QString pattern;
};

/// Shows a path whole where there is room, and else shortened in its middle, with a tooltip that has all of it.
class PathLabel : public forms::Label {
    Q_OBJECT
public:
    explicit PathLabel(const QString& name);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
};

} // namespace core

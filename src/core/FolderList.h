#pragma once

#include "platform/forms/Controls.h"
#include "platform/forms/TypeAhead.h"

#include <QListWidget>

namespace core {

/// A folder list: the parents of the chosen folder, the folder itself, and its subfolders. Double click or Enter
/// chooses a line's folder, Backspace the parent; typed letters find the next folder whose name starts with them.
class FolderList : public QListWidget {
    Q_OBJECT
    Q_PROPERTY(QString path READ Path WRITE SetPath NOTIFY Change)
public:
    explicit FolderList(const QString& name);

    /// The chosen folder, absolute.
    QString Path() const { return path; }
    /// Chooses a folder; ignores a path that isn't one.
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

/// The names in a folder that match a fixed pattern, ignoring case.
class FileList : public QListWidget {
    Q_OBJECT
public:
    FileList(const QString& name, const QString& pattern);
    void SetPath(const QString& folder);

private:
    QString pattern;
};

/// Shows a path, elided in the middle where there isn't enough room; the tooltip has all of it.
class PathLabel : public forms::Label {
    Q_OBJECT
public:
    explicit PathLabel(const QString& name);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
};

} // namespace core

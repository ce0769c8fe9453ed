#pragma once

#include <QListWidget>

namespace core {

/// A folder list: the folders above the chosen one, the chosen one, and the folders in it. Double click or Enter on a
/// line chooses that folder, Backspace the one above.
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

private:
    void Fill();
    void ChooseLine(const QListWidgetItem* line);
    void AddLine(const QString& caption, const QString& folder, int depth, bool chosen);

    QString path;
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

} // namespace core

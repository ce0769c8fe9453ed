#pragma once

#include <QElapsedTimer>
#include <QString>
#include <functional>
#include <optional>

namespace forms {

/// Type-ahead search in a list: finds the next row whose name starts with the typed letters, ignoring leading blanks,
/// case and accents. Repeating a letter moves to the next row; a pause starts a new search.
class TypeAhead {
public:
    /// `typed` is the text of one key; `nameOf` returns the name of a row, 0 to `rows` - 1. None if no row matches.
    std::optional<int> Find(const QString& typed, int rows, int currentRow,
                            const std::function<QString(int row)>& nameOf);

private:
    QString letters;
    QElapsedTimer sinceLastKey;
};

} // namespace forms

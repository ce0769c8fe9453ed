#pragma once

#include <QElapsedTimer>
#include <QString>
#include <functional>
#include <optional>

namespace forms {

/// Finds a row of a list by letters typed one after the other: the next row whose name begins with them. Leading
/// blanks, case and accents are ignored. The same letter typed again goes on to the next row; after a pause typing
/// starts anew.
class TypeAhead {
public:
    /// `typed` is the text of one key; `nameOf` gives the name of a row, 0 to `rows` - 1. None when no row begins so.
    std::optional<int> Find(const QString& typed, int rows, int currentRow,
                            const std::function<QString(int row)>& nameOf);

private:
    QString letters;
    QElapsedTimer sinceLastKey;
};

} // namespace forms

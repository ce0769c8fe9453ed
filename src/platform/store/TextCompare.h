#pragma once

#include <QStringView>

struct sqlite3;

namespace store {

/// The collation under which SQLite compares the text of the screens.
inline constexpr const char* TextCollation = "PRACTICE_TEXT";

/// Compares two texts: negative, 0 or positive. Ignores case, also in accented letters; texts that differ only in
/// accents are different but adjacent ("eve", "Ève", "evelyne").
int CompareTexts(QStringView left, QStringView right);

/// Defines the collation and the `like` of the screens: * any text, ? any character, # any digit, [a-z] and [!a-z]
/// character classes; an unclosed bracket is literal. Ignores case, also in accented letters.
void DefineTextComparison(sqlite3* database);

} // namespace store

#pragma once

#include <QStringView>

struct sqlite3;

namespace dao {

/// The collation under which SQLite compares the text of the screens.
inline constexpr const char* TextCollation = "PRACTICE_TEXT";

/// Compares two texts: negative, 0 or positive. Case counts for nothing, in accented letters neither; texts that
/// differ by accents alone are different and come side by side ("eve", "Ève", "evelyne").
int CompareTexts(QStringView left, QStringView right);

/// Gives a connection the collation and the `like` of the screens: * any run, ? any one character, # any one digit,
/// [a-z] and [!a-z] one of a list; a bracket that isn't closed is itself. Case counts for nothing, in accented
/// letters neither.
void DefineTextComparison(sqlite3* database);

} // namespace dao

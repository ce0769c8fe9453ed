#pragma once

#include <string_view>

struct sqlite3;

namespace dao {

/// The collation under which the store compares the text of the screens.
inline constexpr const char* textCollation = "PRACTICE_TEXT";

/// Compares two UTF-8 texts: negative, 0 or positive. Case counts for nothing, in accented letters neither; texts that
/// differ by accents alone are different and stand side by side ("eve", "Ève", "evelyne").
int CompareTexts(std::string_view left, std::string_view right);

/// Whether the text meets the pattern: * any run, ? any one character, # any one digit, [a-z] and [!a-z] one of a list.
/// Case counts for nothing, in accented letters neither. A bracket that isn't closed stands for itself.
bool IsLike(std::string_view text, std::string_view pattern);

/// Teaches a connection the collation and the `like` of the screens.
void TeachTextComparison(sqlite3* database);

} // namespace dao

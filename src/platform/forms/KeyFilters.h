#pragma once

#include <QString>

namespace forms {

inline constexpr int KeyBackspace = 8;
inline constexpr int KeyEnter = 13;

/// Key filters of the entry fields. Each replaces the code of a typed character by the accepted one, or by 0 to swallow
/// the key, and returns it. The first two let codes of 32 or less pass.
int KeyFilterDigits(int& keyCode);
/// A comma becomes a point; only one point. A minus sign is accepted anywhere. Never beeps.
int KeyFilterDecimal(const QString& fieldText, int& keyCode);
/// Keys allowed at the date's current length; others beep. At length 2 and from 10 on every key passes.
int KeyFilterDate(const QString& fieldText, int& keyCode);

/// Appends "/" to the text when its trimmed length is 2 or 5; changes `text` and returns it.
QString DateAutoSlash(QString& text);

/// 1 when the text isn't a valid date, 0 when it is. Beeps once for each failed test. Every fourth year is a leap year:
/// no century rule. The separators aren't checked.
int DateIsInvalid(const QString& text);

} // namespace forms

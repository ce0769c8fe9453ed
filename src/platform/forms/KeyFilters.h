#pragma once

#include <QString>

namespace forms {

inline constexpr int KeyBackspace = 8;
inline constexpr int KeyEnter = 13;

/// The filters of the entry fields. Each takes the code of a typed character and sets it to 0 to swallow the key; each
/// also returns the resulting code. Codes of 32 or less pass the first two.
int KeyFilterDigits(int& keyCode);
/// A comma becomes a point; one point only. The minus sign is accepted anywhere. Makes no sound.
int KeyFilterDecimal(const QString& fieldText, int& keyCode);
/// What a date takes at its present length; a refused key beeps. At length 2 and from 10 on every key passes.
int KeyFilterDate(const QString& fieldText, int& keyCode);

/// Appends "/" to the text when its trimmed length is 2 or 5; changes `text` and returns it.
QString DateAutoSlash(QString& text);

/// 1 when the text is no date, 0 when it is. Every failing test sounds its own beep. Every fourth year has a 29
/// February, without the century rule; the separators aren't looked at.
int DateIsInvalid(const QString& text);

} // namespace forms

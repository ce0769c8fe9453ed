#pragma once

#include "platform/basic/Int16.h"

#include <QByteArray>
#include <QString>

namespace core {

/// Reads the practice's configuration file in DataFolder: LanguageMode, the stored access value and the letterhead. The
/// file is only read. A file that is too short or holds nonsense isn't an error: what can't be read is 0 or empty.
void LoadConfiguration();

/// The same from the file's content.
void TakeConfiguration(const QByteArray& content);

/// The stored access value, unchanged; the access code is the decimal text of its double.
basic::Int16 StoredAccessValue();

/// Letterhead field 1 to 16, blank-filled to its width. Fields 1 to 8 are the French set, 9 to 16 the alternative one.
QString LetterheadField(int field);

/// Trims a letterhead field, stores it back blank-filled and returns the trimmed text.
QString TrimLetterheadField(int field);

/// Brings the letterhead in `textes` (ch1, ch2, ch3, ch30) up to date; run before every report. Needs TextesTable with
/// its row (3021 otherwise).
void WriteTextesFromConfig();

} // namespace core

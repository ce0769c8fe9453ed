#pragma once

#include "platform/basic/Int16.h"

#include <QByteArray>
#include <QString>

namespace core {

/// Reads the practice's configuration file in DataFolder: LanguageMode, the stored access value and the letterhead. A
/// short or corrupt file isn't an error: unreadable values are 0 or empty.
void LoadConfiguration();

/// The same from the file's content.
void TakeConfiguration(const QByteArray& content);

/// The stored access value. The access code is twice this value, as decimal text.
basic::Int16 StoredAccessValue();

/// Letterhead field 1 to 16, blank-filled to its width. Fields 1 to 8 are the French set, 9 to 16 the alternative one.
QString LetterheadField(int field);

/// Trims a letterhead field, stores it back blank-filled and returns the trimmed text.
QString TrimLetterheadField(int field);

/// Updates the letterhead in `textes` (ch1, ch2, ch3, ch30) before a report. Raises 3021 if TextesTable has no row.
void WriteTextesFromConfig();

} // namespace core

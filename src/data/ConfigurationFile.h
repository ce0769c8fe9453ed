#pragma once

#include <QByteArray>
#include <QString>
#include <array>

/// The configuration file of a practice: records of 84 bytes numbered from 1, each of 42 signed 16-bit little-endian
/// words numbered from 1. Characters are stored as their code times 7.
namespace data {

inline constexpr int ConfigRecordBytes = 84;
inline constexpr int ConfigRecordWords = 42;
inline constexpr int ConfigRecordCount = 52;
inline constexpr int ConfigCodeFactor = 7;

/// The header record and its words.
inline constexpr int ConfigHeaderRecord = 4;
inline constexpr int ConfigLanguageWord = 5;
inline constexpr int ConfigAccessWord = 12; ///< half of the access code

/// The letterhead: 16 fields, one record each, of which the block in use is the third; word 42 is the length.
inline constexpr int LetterheadFields = 16;
inline constexpr int ConfigLengthWord = 42;
inline constexpr int LongestConfigText = 41;
inline constexpr std::array<int, LetterheadFields> LetterheadWidths{40, 30, 20, 20, 30, 38, 38, 38,
                                                                    40, 30, 20, 20, 30, 38, 38, 38};

/// The record number of a letterhead field, 1 to 16, in the block in use: 37 to 52.
constexpr int LetterheadRecord(int field)
{
    constexpr int blockInUse = 3;
    return (blockInUse - 1) * LetterheadFields + ConfigHeaderRecord + field;
}

/// Word `number` (from 1) of a record; bytes that are missing count as 0.
qint16 ConfigWord(const QByteArray& record, int number);

/// The character of a code: below 256 Windows-1252, from there on Unicode. Raises 5 for a code below 0.
QChar ConfigCharacter(int code);

/// The text of a letterhead record. A length below 0 gives an empty text; at 42 the length word itself is read as a
/// character. Raises 9 when the length is above 42, 5 when a character's code is below 0.
QString DecodeConfigRecord(const QByteArray& record);

/// The record that holds the text. Raises 5, with a description for the user, when the text is longer than 41
/// characters or holds one whose code times 7 doesn't fit a word.
QByteArray EncodeConfigRecord(const QString& text);

/// What the configuration file of a practice holds.
struct Configuration {
    qint16 language = -1;   ///< -1 for French tooltips, 1 for Arabic ones
    qint16 accessValue = 0; ///< half of the access code
    std::array<QString, LetterheadFields> letterhead;
};

/// The whole file, 52 records. Raises 5 as EncodeConfigRecord does.
QByteArray EncodeConfiguration(const Configuration& configuration);

} // namespace data

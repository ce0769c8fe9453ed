#pragma once

#include <QByteArray>
#include <QIODevice>

namespace practice {

/// The most bytes that a row of a CSV file may have.
inline constexpr qsizetype LongestCsvRow = qsizetype{1} << 20;

/// The lines of a file whatever ends them: LF, CR LF or a lone CR. Holds a block of it at a time.
class CsvLines {
public:
    explicit CsvLines(QIODevice& source) : file(source) {}

    /// Goes to the next line; false at the end. Raises 5 for a line that is longer than a row may be.
    bool Next();
    /// The line with what ends it, valid until the next call.
    QByteArrayView Line() const { return line; }
    qint64 Number() const { return number; } ///< from 1

private:
    qsizetype FindEnd();
    bool ReadOn();

    QIODevice& file;
    QByteArray buffer;
    qsizetype start = 0; ///< of what the buffer holds of the lines to come
    bool isAtEnd = false;
    QByteArrayView line;
    qint64 number = 0;
};

enum class CsvEncoding : quint8 { Utf8, Windows1252 };

/// Reads the whole file and goes back to its beginning: Windows-1252 when more of it can't be UTF-8 than is. A file in
/// UTF-8 of which a few bytes are spoilt stays one.
CsvEncoding EncodingOf(QIODevice& file);

} // namespace practice

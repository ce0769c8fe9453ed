#pragma once

#include <QByteArray>
#include <QIODevice>

namespace practice {

/// The maximum size of a row in bytes.
inline constexpr qsizetype LongestCsvRow = qsizetype{1} << 20;

/// Splits a file into lines at LF, CR LF or a lone CR. Keeps one block of it in memory.
class CsvLines {
public:
    explicit CsvLines(QIODevice& source) : file(source) {}

    /// Moves to the next line; false at the end. Raises 5 for a line longer than `LongestCsvRow`.
    bool Next();
    /// The line including its line end, valid until the next call.
    QByteArrayView Line() const { return line; }
    qint64 Number() const { return number; } ///< from 1

private:
    qsizetype FindEnd();
    bool ReadOn();

    QIODevice& file;
    QByteArray buffer;
    qsizetype start = 0; ///< of the next line in the buffer
    bool isAtEnd = false;
    QByteArrayView line;
    qint64 number = 0;
};

enum class CsvEncoding : quint8 { Utf8, Windows1252 };

/// The number of lines in a file, whatever ends them; returns to its beginning.
qint64 CountLines(QIODevice& file);

/// Windows-1252 if more non-ASCII bytes are invalid UTF-8 than valid. Reads the whole file and returns to its
/// beginning.
CsvEncoding EncodingOf(QIODevice& file);

} // namespace practice

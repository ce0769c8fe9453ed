#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace practice {

/// The problems of a file, by line. Counts all but keeps only the first thousand, since a wrong column is a problem in
/// every line.
class Problems {
public:
    /// `line` is 0 for the file as a whole; the reason is then a whole sentence. A key names the row instead of its
    /// line.
    void Add(qint64 line, const QString& reason, qint64 key = 0);
    int Count() const { return count; }
    bool IsEmpty() const { return count == 0; }
    bool IsFull() const { return kept.size() >= MostKept; }

    /// One sentence each, in the order of the lines, after the name of the file or table if one is given.
    QStringList Texts(const QString& name = {}) const;

private:
    static constexpr std::size_t MostKept = 1000;

    struct Problem {
        qint64 line = 0;
        QString reason;
        qint64 key = 0;
    };
    std::vector<Problem> kept;
    int count = 0;
};

} // namespace practice

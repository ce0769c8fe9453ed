#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace practice {

/// What is wrong with a file, by its lines. Counts all and keeps the first thousand: nobody reads more, and a wrong
/// column spoils every line of a large file.
class Problems {
public:
    /// `line` 0 for the file as a whole; the reason is a sentence with its full stop then.
    void Add(qint64 line, const QString& reason);
    int Count() const { return count; }
    bool IsEmpty() const { return count == 0; }
    bool IsFull() const { return kept.size() >= MostKept; }

    /// Each as a sentence, in the order of the lines; with the name of a file before it unless that is empty.
    QStringList Texts(const QString& file = {}) const;

private:
    static constexpr std::size_t MostKept = 1000;

    struct Problem {
        qint64 line = 0;
        QString reason;
    };
    std::vector<Problem> kept;
    int count = 0;
};

} // namespace practice

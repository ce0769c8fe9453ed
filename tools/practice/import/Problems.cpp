#include "practice/import/Problems.h"

#include <algorithm>

namespace practice {

void Problems::Add(qint64 line, const QString& reason)
{
    ++count;
    if (!IsFull())
        kept.push_back({line, reason});
}

std::vector<Problem> Problems::Sorted() const
{
    std::vector<Problem> sorted = kept;
    std::ranges::stable_sort(sorted, {}, &Problem::line);
    return sorted;
}

QStringList Problems::Texts(const QString& file) const
{
    QStringList texts;
    for (const Problem& problem : Sorted()) {
        const QString place = file.isEmpty() ? QString() : file + (problem.line > 0 ? ", " : " : ");
        if (problem.line > 0)
            texts << place + QString(file.isEmpty() ? "Ligne %1 : " : "ligne %1 : ").arg(problem.line) +
                         problem.reason + ".";
        else
            texts << place + problem.reason;
    }
    return texts;
}

} // namespace practice

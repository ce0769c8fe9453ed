#include "practice/import/Problems.h"

#include <algorithm>

namespace practice {

void Problems::Add(qint64 line, const QString& reason, qint64 key)
{
    ++count;
    if (!IsFull())
        kept.push_back({line, reason, key});
}

QStringList Problems::Texts(const QString& name) const
{
    std::vector<Problem> sorted = kept;
    std::ranges::stable_sort(sorted, {}, &Problem::line);
    QStringList texts;
    for (const Problem& problem : sorted) {
        const bool namesRow = problem.line > 0 || problem.key > 0;
        const QString place = name.isEmpty() ? QString() : name + (namesRow ? ", " : " : ");
        if (problem.key > 0)
            texts << place + QString("num %1 : ").arg(problem.key) + problem.reason + ".";
        else if (problem.line > 0)
            texts << place + QString(name.isEmpty() ? "Ligne %1 : " : "ligne %1 : ").arg(problem.line) +
                         problem.reason + ".";
        else
            texts << place + problem.reason;
    }
    return texts;
}

} // namespace practice

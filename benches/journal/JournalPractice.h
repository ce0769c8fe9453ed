#pragma once

#include <QDate>
#include <QString>
#include <QTemporaryDir>

namespace bench {

struct Period {
    QDate first;
    QDate last;
    QString First() const { return first.toString("dd/MM/yyyy"); }
    QString Last() const { return last.toString("dd/MM/yyyy"); }
};

/// A copy of a large practice with additional years: a month of 5,000 acts, a month of 16,352, and a year with more
/// than 16,352 of each service. Codes, payment states and patients are spread evenly.
class JournalPractice {
public:
    static constexpr int MostListed = 16352; ///< acts that the list can hold
    static const Period Month;
    static const Period Most;
    static const Period TooMany;

    explicit JournalPractice(const QString& large);
    QString Folder() const { return folder.path(); }
    QString Database() const;

private:
    QTemporaryDir folder;
};

} // namespace bench

#pragma once

#include <QString>

namespace bench {

/// A practice, opened as by the program until the end of the scope.
class OpenPractice {
public:
    explicit OpenPractice(const QString& folder);
    ~OpenPractice();
    OpenPractice(const OpenPractice&) = delete;
    OpenPractice& operator=(const OpenPractice&) = delete;

    /// The last day with an act, as dd/mm/yyyy.
    static QString LastDay();
};

} // namespace bench

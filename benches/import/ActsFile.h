#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

#include <vector>

namespace bench {

/// An act of a file that is brought in; its other fields follow from its key.
struct Act {
    int key = 0;
    QDate day;
    int patient = 0;
    int service = 0;
    double amount = 0;
};

int SlotOf(const Act& act);
QString TimeOf(const Act& act);
QString CodeOf(const Act& act);
int PaymentOf(const Act& act);

/// By key and day, as a practice fills its book.
std::vector<Act> ActsInOrder(int count);

void WriteCsv(const QString& path, const std::vector<Act>& acts);

/// Adds them by one prepared statement in one transaction.
void InsertPlainly(const QString& folder, const std::vector<Act>& acts);

} // namespace bench

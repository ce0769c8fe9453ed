#pragma once

#include "platform/store/Hardened.h"

#include <QList>
#include <QString>

namespace store {

/// A table whose rows the program adds, and where else the keys of its rows are held.
struct KeyedTable {
    struct Column {
        QString table;
        QString name;
    };
    QString table;
    QList<Column> references;
};

/// An index with a day and an amount, from which sums are read.
struct SummedIndex {
    QString table;
    QString index;
    QString date;
    QString amount;
};

/// What an opening for work needs to know of the tables in the file, and how it is done.
struct OpeningRules {
    /// Tables that must never give a key twice. A database of an older version is changed so: the next key is above
    /// every key that the table or a reference to it holds.
    QList<KeyedTable> keyedTables = {};
    /// SQL that creates tables which a database of an older version lacks.
    QString addedTables = {};
    /// Checked at the opening of a large database, whose other indexes aren't.
    QList<SummedIndex> summedIndexes = {};
    /// The caller has just checked the content of the file.
    bool isCheckedAlready = false;
    /// As on a network share, also elsewhere: one program at a time holds the file.
    bool isHeldAlone = false;
    int patience = UsualPatience; ///< milliseconds to wait for the lock of another process
};

} // namespace store

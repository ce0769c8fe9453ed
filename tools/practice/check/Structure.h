#pragma once

#include "platform/store/Sqlite.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <string_view>

namespace practice {

/// Prepares a select on a database.
using Select = std::function<store::Statement(std::string_view)>;

/// The tables and indexes of a database. Look-ups by name ignore case.
struct Structure {
    struct Field {
        QString name;
        QString type; ///< as declared
        bool isKey = false;
    };
    struct Table {
        QString name;
        QList<Field> fields;

        const Field* Find(const QString& field) const;
    };
    struct Index {
        QString name;
        QString table;
        QString columns;    ///< "Actes (Date, montant)", with order, collation, uniqueness if unusual
        QStringList fields; ///< its columns without expressions
        QString statement;  ///< its CREATE INDEX
    };
    QList<Table> tables;
    QList<Index> indexes;

    const Table* FindTable(const QString& name) const;
    const Index* FindIndex(const QString& name) const;
};

/// The program's tables of commits and of the feed are left out.
Structure StructureOf(const Select& select);
/// What the feed keeps for itself, see data::FeedTables.
QList<Structure::Table> FeedTables(const Select& select);

/// The structure of an empty practice.
Structure ExpectedStructure();

/// Tables, fields and indexes of `expected` that are missing or different in `found`, in French, one line each.
QStringList StructureFaults(const Structure& found, const Structure& expected);

/// Indexes that `expected` doesn't have, in French, one line each.
QStringList ForeignIndexes(const Structure& found, const Structure& expected);

/// Indexes of `expected` that are missing or different in `found`, which has the fields for them.
QList<Structure::Index> IndexesToMake(const Structure& found, const Structure& expected);

} // namespace practice

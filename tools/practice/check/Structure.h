#pragma once

#include "platform/dao/Sqlite.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <string_view>

namespace practice {

/// Prepares a select over one database.
using Select = std::function<dao::Statement(std::string_view)>;

/// The tables and indexes that a database has. Names are looked up without regard to case.
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
        QString columns;    ///< "Actes (Date, montant)", with what else makes it another index
        QStringList fields; ///< those of its columns that are fields
        QString statement;  ///< that makes it
    };
    QList<Table> tables;
    QList<Index> indexes;

    const Table* FindTable(const QString& name) const;
    const Index* FindIndex(const QString& name) const;
};

Structure StructureOf(const Select& select);

/// What an empty practice has.
Structure ExpectedStructure();

/// The tables, fields and indexes of `expected` that `found` doesn't have, or has otherwise; in French, a line each.
QStringList StructureFaults(const Structure& found, const Structure& expected);

/// The indexes of `expected` that can be made in `found` and are missing there or made otherwise.
QList<Structure::Index> IndexesToMake(const Structure& found, const Structure& expected);

} // namespace practice

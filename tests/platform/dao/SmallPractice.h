#pragma once

#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/dao/Engine.h"
#include "platform/dao/Workgroup.h"
#include "platform/store/Creation.h"
#include "support/Files.h"
#include "support/OtherProgram.h"
#include "support/Printing.h"

#include <QTemporaryDir>

namespace dao::test {

using Other = tests::OtherProgram;
using tests::BytesOf;
using tests::WriteFile;

/// A practice with a few rows in its own folder, opened as by the program.
class SmallPractice : public ::testing::Test {
protected:
    SmallPractice()
    {
        WriteWorkgroup(folder.filePath("system.mdw"), "ADMIN", "secret");
        store::CreateDatabase(path, data::Schema() + QString::fromUtf8(Rows));
        Engine engine;
        engine.SystemDB = folder.filePath("system.mdw");
        workspace = engine.CreateWorkspace("Special", "ADMIN", "secret");
        database = workspace.OpenDatabase(path);
    }

    Recordset Open(const QString& statement) const { return database.OpenRecordset(statement); }

    /// The keys of a statement's rows in order, as "1 2 3".
    QString Keys(const QString& statement) const { return Walk(Open(statement)); }

    static QString Walk(Recordset rows)
    {
        QStringList keys;
        for (; !rows.IsEOF(); rows.MoveNext())
            keys << rows["num"].Text();
        return keys.join(' ');
    }
    /// The keys of `count` rows, from the current one or the next one on.
    static QString Walk(Recordset rows, int count, bool fromNext = false)
    {
        QStringList keys;
        for (int row = 0; row < count; ++row) {
            if (row > 0 || fromNext)
                rows.MoveNext();
            keys << rows["num"].Text();
        }
        return keys.join(' ');
    }

    static constexpr const char* Rows = R"(
        insert into Patients (num, nom, Prenom, N_carte, tel) values
            (1, 'Évrard', 'Zoé', '0012', '0550'), (2, 'evrard', 'Ali', '12', null), (3, 'D''Artagnan', 'Luc', 'A1', null),
            (4, 'ÉVRARD', 'Max', '0', ''), (5, 'Zidane', 'Éric', null, '0661');
        insert into Actes (num, Date, num_presta, montant, Type, flag_R, Flag_H) values
            (1, '2008-03-01', 7, 100.5, 'C', 2, null), (2, '2008-03-02', 7, 50, null, 0, null),
            (3, '2008-03-02', 8, 25, 'K5', 1, null), (4, '2008-03-02', 7, 10, 'C', 3, null),
            (5, '2008-03-03', 9, 0, 'C', 0, null), (6, null, 9, null, null, null, null);
        insert into Presta (num, denom, Ordre) values (10, 'Radio', 2), (11, 'Écho', 0), (12, 'Soins', 1);
    )";

    QTemporaryDir folder;
    const QString path = folder.filePath("ZEP_ONE.MDB");
    Workspace workspace;
    Database database;
};

} // namespace dao::test

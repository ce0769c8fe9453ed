#include "practice/check/Rebuild.h"

#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/FileWork.h"
#include "platform/store/Creation.h"
#include "platform/store/FileState.h"
#include "platform/store/Opening.h"
#include "platform/store/Repair.h"
#include "practice/check/InPlaceRepair.h"
#include "practice/check/SafetyCopy.h"
#include "practice/check/TableCopy.h"
#include "practice/fields/FieldRules.h"
#include "practice/fields/QuotedName.h"

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <algorithm>
#include <optional>

namespace practice {
namespace {

using basic::Error;
using basic::RuntimeError;

/// Copies the content of a damaged database into an empty one.
class ContentCopy {
public:
    ContentCopy(const store::RepairTransaction& damaged, const store::RepairTransaction& made)
        : target(made), from([&damaged](std::string_view sql) { return damaged.Prepare(sql); }),
          to([&made](std::string_view sql) { return made.Prepare(sql); })
    {
    }

    /// Fills in the rows that are lost, or why nothing is to be done.
    void Run(RepairReport& report)
    {
        const Structure expected = StructureOf(to);
        for (const Structure::Table& table : StructureOf(from).tables)
            Copy(table, expected.FindTable(table.name), report);
        const Structure kept{FeedTables(to), {}};
        for (const Structure::Table& table : FeedTables(from))
            Copy(table, kept.FindTable(table.name), report);
        KeepNextKeys();
    }

private:
    void Copy(const Structure::Table& found, const Structure::Table* own, RepairReport& report)
    {
        to("savepoint the_table").Run();
        bool isTaken = false;
        try {
            isTaken = own != nullptr ? CopyOwn(found, *own, report) : CopyForeign(found, report);
        } catch (const RuntimeError& error) {
            if (own != nullptr)
                throw;
            report.lost << QString("La table %1 n'est pas du programme et n'a pas été reprise (%2).")
                               .arg(found.name, error.Description());
        }
        if (!isTaken)
            to("rollback to the_table").Run();
        to("release the_table").Run();
    }

    /// False if nothing was to be had: the table stays as it is in an empty practice.
    bool CopyOwn(const Structure::Table& found, const Structure::Table& own, RepairReport& report)
    {
        const CopiedTable table = MapFields(found, own);
        to(("delete from " + QuotedName(own.name)).toStdString()).Run();
        const TableCopy copy(from, to, table);
        if (copy.IsWhole())
            return true;
        // Without what it keeps, the feed compares each settlement as on the first day.
        const bool isScratch =
            ScratchTables().contains(own.name, Qt::CaseInsensitive) || FindTable(own.name) == nullptr;
        if (copy.Copied() == 0 && !isScratch)
            report.refusal = QString("la table %1 est illisible. Reprenez la dernière copie saine.").arg(own.name);
        if (!isScratch)
            report.lost << copy.Lost();
        return copy.Copied() > 0;
    }

    bool CopyForeign(const Structure::Table& found, RepairReport& report)
    {
        store::Statement definition = from("select sql from sqlite_schema where type = 'table' and name = ?");
        definition.Bind(1, store::Value(found.name));
        definition.Step();
        to(definition.TextAt(0)).Run();
        const TableCopy copy(from, to, MapFields(found, found));
        if (!copy.IsWhole())
            report.lost << copy.Lost();
        return true;
    }

    /// Adds the fields that the new table lacks.
    CopiedTable MapFields(const Structure::Table& found, const Structure::Table& own) const
    {
        const TableRule* const rule = FindTable(own.name);
        const bool isByPosition = rule != nullptr && rule->isByPosition;
        CopiedTable table{found.name, own.name, {}, {}, true};
        for (int position = 0; position < found.fields.size(); ++position) {
            const QString& name = found.fields[position].name;
            const Structure::Field* const field = !isByPosition                  ? own.Find(name)
                                                  : position < own.fields.size() ? &own.fields[position]
                                                                                 : nullptr;
            if (field == nullptr)
                AddField(found.name, name);
            table.fromFields << name;
            table.toFields << (field != nullptr ? field->name : name);
            table.keepsRowId = table.keepsRowId && (field == nullptr || !field->isKey);
        }
        return table;
    }

    void AddField(const QString& table, const QString& name) const
    {
        store::Statement field = from("select type, dflt_value from pragma_table_info(?) where name = ?");
        field.Bind({store::Value(table), store::Value(name)});
        field.Step();
        const std::string initial = field.TextAt(1).empty() ? "" : " default " + field.TextAt(1);
        to("alter table " + QuotedName(table).toStdString() + " add column " + QuotedName(name).toStdString() + " " +
           field.TextAt(0) + initial)
            .Run();
    }

    void KeepNextKeys() const
    {
        try {
            store::Statement sequences = from("select name, seq from sqlite_sequence");
            while (sequences.Step())
                target.RaiseNextKey(QString::fromStdString(sequences.TextAt(0)), sequences.WholeAt(1));
        } catch (const RuntimeError& error) {
            if (error.Code() != Error::DamagedDatabase && error.Code() != Error::UnknownTable)
                throw; // of an older version, or unreadable: what the rows refer to has to do
        }
        for (const store::KeyedTable& keyed : data::PracticeRules().keyedTables)
            target.KeepAboveReferences(keyed);
    }

    const store::RepairTransaction& target;
    Select from;
    Select to;
};

/// Makes the new file and mends it; fills in the report.
void MakeNew(const store::RepairTransaction& damaged, const QString& path, RepairReport& report)
{
    host::RemoveDatabase(path);
    store::CreateDatabase(path, data::Schema());
    {
        store::RepairTransaction made(path);
        ContentCopy(damaged, made).Run(report);
        if (!report.refusal.isEmpty())
            return;
        made.Commit();
    }
    report.changes << "Base de données : refaite avec les lignes de ses tables et de nouveaux index.";
    const Mending mended = MendInPlace(path, [](bool) {});
    report.changes << mended.changes;
    host::Sync(path);
}

} // namespace

RepairReport Rebuild(const QString& database, const QString& archives, const QDateTime& moment)
{
    if (store::HasLog(database))
        store::MoveLogIntoFile(database); // so that no log is left beside the new file
    const host::FileIdentity present = host::IdentityOf(database);
    std::optional<store::RepairTransaction> damaged(std::in_place, database);

    RepairReport report;
    report.copy = KeepCopy(database, true, archives, moment);
    auto removeCopy = qScopeGuard([&report] { QFile::remove(report.copy); });
    const QString part = database + ".part";
    const host::FolderLock alone(archives);
    const auto removePart = qScopeGuard([&part] { host::RemoveDatabase(part); });
    MakeNew(*damaged, part, report);
    if (!report.refusal.isEmpty())
        return {.copy = {}, .changes = {}, .doubts = {}, .lost = {}, .refusal = report.refusal};

    damaged.reset();
    host::DatabaseHold hold(database);
    if (host::IdentityOf(database) != present || store::HasLog(database))
        throw RuntimeError(Error::Locked);
    hold.ReplaceBy(part);
    removeCopy.dismiss();
    return report;
}

} // namespace practice

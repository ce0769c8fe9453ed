#include "practice/check/Repair.h"

#include "data/Practice.h"
#include "platform/basic/Dates.h"
#include "platform/basic/OwnerOnly.h"
#include "platform/basic/RuntimeError.h"
#include "platform/dao/ArchiveCopy.h"
#include "platform/dao/FileState.h"
#include "platform/dao/Repair.h"
#include "platform/host/Files.h"
#include "practice/check/Damage.h"
#include "practice/check/Findings.h"
#include "practice/check/StoredRules.h"
#include "practice/fields/FieldRules.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

namespace practice {
namespace {

using basic::Error;
using basic::RuntimeError;

/// Dates of one field that are to be stored in another form, by the number of their row.
struct DateMend {
    DateField date;
    struct Row {
        qint64 row;
        QString text;
    };
    QList<Row> rows;
    Findings findings;
};

/// Parts of the date that are another date's.
struct PartMend {
    PartOfDate part;
    Findings findings;
};

class Repair {
public:
    explicit Repair(const QString& database) : path(database), work(database) {}

    RepairReport Run(const QString& archives, const QDateTime& moment)
    {
        Plan();
        RepairReport report;
        if (made.isEmpty() && rebuilt.isEmpty() && dates.isEmpty() && !HasWrongParts())
            return report;
        report.copy = MakeCopy(archives, moment);
        try {
            report.changes = Change();
            work.Commit();
            report.doubts = doubts;
        } catch (const RuntimeError& error) {
            if (error.Code() != Error::DamagedDatabase)
                throw;
            report.changes.clear();
            QFile::remove(report.copy);
            report.copy.clear();
            report.refusal =
                "la base de données est endommagée au-delà de ses index. Reprenez la dernière copie saine.";
        }
        return report;
    }

private:
    void Plan()
    {
        const Structure expected = ExpectedStructure();
        found = StructureOf(select);
        made = IndexesToMake(found, expected);
        PlanRebuilding();
        for (const DateField& date : DateFields(expected, found))
            PlanDates(date);
    }

    /// An index is rebuilt when it doesn't agree with its table, and every index of a table with damaged pages: they
    /// may be an index's.
    void PlanRebuilding()
    {
        const Damage damage = DamageOf(select, found);
        isDamaged = !damage.IsEmpty();
        doubts = damage.contradictions;
        for (const Structure::Index& index : found.indexes) {
            const bool isMade = std::ranges::any_of(made, [&](const Structure::Index& other) {
                return other.name.compare(index.name, Qt::CaseInsensitive) == 0;
            });
            if (!isMade && (damage.indexes.contains(index.name) || damage.tables.contains(index.table)))
                rebuilt << index.name;
        }
    }

    void PlanDates(const DateField& date)
    {
        DateMend mend{date, {}, {}};
        dao::Statement rows = select(QString("select rowid, %1, typeof(%1) from %2 not indexed where %3")
                                         .arg(QuotedName(date.field), QuotedName(date.table), date.fault)
                                         .toStdString());
        while (rows.Step()) {
            const QDate day = DayOf(QString::fromStdString(rows.TextAt(1)).trimmed());
            if (!day.isValid() || rows.TextAt(2) != "text")
                continue;
            mend.rows << DateMend::Row{rows.WholeAt(0),
                                       date.isDayFirst ? basic::DateText(day) : day.toString(Qt::ISODate)};
            Note(mend.findings, date.table, rows.WholeAt(0), ShownValue(rows.At(1), rows.TextAt(2)));
        }
        if (!mend.rows.isEmpty())
            dates << mend;
    }

    void Note(Findings& findings, const QString& table, qint64 row, const QString& value) const
    {
        if (found.FindTable(table)->Find("num") != nullptr)
            findings.Note(row, value);
        else
            findings.NoteValue(value);
    }

    /// The parts that are wrong now; their dates are the stored ones.
    QList<PartMend> WrongParts() const
    {
        QList<PartMend> wrong;
        for (const PartOfDate& part : PartsOfDate()) {
            const Structure::Table* const table = found.FindTable(part.table);
            if (table == nullptr || table->Find(part.field) == nullptr || table->Find("Date") == nullptr)
                continue;
            PartMend mend{part, {}};
            dao::Statement rows = select(QString("select rowid, %1, typeof(%1) from %2 not indexed where %3")
                                             .arg(QuotedName(part.field), QuotedName(part.table), part.Fault())
                                             .toStdString());
            while (rows.Step())
                Note(mend.findings, part.table, rows.WholeAt(0), ShownValue(rows.At(1), rows.TextAt(2)));
            if (mend.findings.Count() > 0)
                wrong << mend;
        }
        return wrong;
    }

    bool HasWrongParts() const { return !WrongParts().isEmpty(); }

    /// The path of a copy of the database as it is now.
    QString MakeCopy(const QString& archives, const QDateTime& moment) const
    {
        const auto ownerOnly = basic::ForOwnerOnly();
        QDir().mkpath(archives);
        const QString target = FreeName(archives, moment);
        try {
            if (isDamaged)
                dao::CopyDamagedDatabase(path, target);
            else
                dao::CopyDatabase(path, target);
        } catch (const RuntimeError& error) {
            throw RuntimeError::Described(
                error.Code(),
                QString("La copie de sécurité ne peut pas être faite dans « %1 » (%2). Rien n'a été modifié.")
                    .arg(archives, error.Description()));
        }
        return target;
    }

    /// A name that no file has, be it a link that leads nowhere.
    static QString FreeName(const QString& archives, const QDateTime& moment)
    {
        const QString name = archives + "/ZEP_ONE avant réparation " + moment.toString("yyyy-MM-dd HH-mm-ss");
        QString target = name + ".MDB";
        for (int other = 2; QFileInfo::exists(target) || QFileInfo(target).isSymLink(); ++other)
            target = QString("%1 (%2).MDB").arg(name).arg(other);
        return target;
    }

    QStringList Change()
    {
        QStringList changes;
        for (const QString& index : rebuilt) {
            Run("reindex " + QuotedName(index));
            changes << QString("Index %1 : reconstruit.").arg(index);
        }
        for (const Structure::Index& index : made)
            changes << MakeIndex(index);
        for (const DateMend& mend : dates)
            changes << ChangeDates(mend);
        for (const PartMend& mend : WrongParts())
            changes << ChangePart(mend);
        return changes;
    }

    QString MakeIndex(const Structure::Index& index)
    {
        const Structure::Index* const other = found.FindIndex(index.name);
        if (other != nullptr)
            Run("drop index " + QuotedName(other->name));
        Run(index.statement);
        return QString(other != nullptr ? "Index %1 : refait sur %2." : "Index %1 : créé sur %2.")
            .arg(index.name, index.columns);
    }

    QString ChangeDates(const DateMend& mend)
    {
        dao::Statement change = select(QString("update %1 set %2 = ?2 where rowid = ?1")
                                           .arg(QuotedName(mend.date.table), QuotedName(mend.date.field))
                                           .toStdString());
        for (const DateMend::Row& row : mend.rows) {
            change.Bind(1, row.row);
            change.Bind(2, dao::Value(row.text));
            change.Run();
        }
        return QString("%1 : %2 mis sous la forme %3 %4")
            .arg(mend.date.table, mend.date.field, mend.date.isDayFirst ? "jj/mm/aaaa" : "aaaa-mm-jj",
                 mend.findings.Text());
    }

    QString ChangePart(const PartMend& mend)
    {
        Run(QString("update %1 set %2 = %3 where %4")
                .arg(QuotedName(mend.part.table), QuotedName(mend.part.field), QLatin1String(mend.part.right),
                     mend.part.Fault()));
        return QString("%1 : %2 repris de Date %3").arg(mend.part.table, mend.part.field, mend.findings.Text());
    }

    void Run(const QString& statement) { select(statement.toStdString()).Run(); }

    QString path;
    dao::RepairTransaction work;
    Select select = [this](std::string_view sql) { return work.Prepare(sql); };
    Structure found;
    bool isDamaged = false;
    QStringList rebuilt;
    QStringList doubts;
    QList<Structure::Index> made;
    QList<DateMend> dates;
};

} // namespace

RepairReport RepairPractice(const QString& folder, const QDateTime& moment)
{
    const QString database = host::PathIn(folder, data::DatabaseFile);
    if (!QFileInfo(database).isFile())
        throw RuntimeError::Described(
            Error::DatabaseNotFound,
            QString("« %1 » n'est pas le dossier d'un cabinet : %2 manque.").arg(folder, data::DatabaseFile));
    if (dao::IsInUse(dao::BehindLinks(database)))
        throw RuntimeError::Described(
            Error::Locked,
            "Le cabinet est ouvert dans un programme : quittez-le, puis recommencez. Rien n'a été modifié.");
    return Repair(database).Run(host::PathIn(folder, data::ArchiveFolder), moment);
}

} // namespace practice

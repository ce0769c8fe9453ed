#include "practice/feed/Feed.h"

#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "practice/feed/FeedSource.h"
#include "practice/import/TableReader.h"
#include "practice/output/Progress.h"

#include <algorithm>

namespace practice {
namespace {

using basic::RuntimeError;

constexpr const char* GoneAppointments = "temp.\"gone appointments\"";

bool HasFeedTables(const dao::DirectStatements& direct)
{
    return direct.WholeNumber("select count(*) from main.sqlite_schema where name in ('" +
                              data::KeptSettlements.toStdString() + "','" + data::OpenDeletions.toStdString() + "')") ==
           2;
}

/// The highest key of a line that was ever in Actes_suppr.
qint64 HighestLineEver(const dao::DirectStatements& direct)
{
    return direct.WholeNumber("select max(coalesce((select seq from sqlite_sequence where name='Actes_suppr'),0),"
                              "coalesce((select max(num) from main.Actes_suppr),0))");
}

} // namespace

Feed::Feed(const QString& folder, const FeedOptions& feedOptions)
    : practice(folder), direct(practice.Database()), options(feedOptions)
{
    direct.Run("pragma temp.cache_size=-65536"); // in KiB: the rows of a large source
    if (!HasFeedTables(direct))
        throw RuntimeError::Described(basic::Error::Locked,
                                      "Le cabinet est d'une version plus ancienne et n'a pas pu être mis à jour "
                                      "maintenant : un autre programme l'occupe. Recommencez.");
}

Feed::~Feed() = default;

Feed::Table* Feed::Find(const char* name)
{
    const auto found = std::ranges::find_if(
        tables, [name](const Table& table) { return qstrcmp(table.rows->Rule().name, name) == 0; });
    return found != tables.end() ? &*found : nullptr;
}

StagedTable* Feed::Staged(const char* name)
{
    Table* const table = Find(name);
    return table != nullptr ? table->rows.get() : nullptr;
}

FeedReport Feed::Run(const QString& path)
{
    const FeedSource source(path);
    report.passedOver = source.PassedOver();
    for (const TableRule* const rule : source.Tables())
        Read(source, *rule);
    if (!HasProblems()) {
        if (StagedTable* const acts = Staged("Actes"); acts != nullptr && acts->HasSettlements())
            settlements = std::make_unique<SettlementMerge>(practice.Database(), *acts);
        goneActs = std::make_unique<GoneActs>(practice.Database());
        WriteOnce();
    }
    for (const Table& table : tables) {
        report.problems << table.problems.Texts(table.rows->Rule().name);
        report.problemCount += table.problems.Count();
    }
    return std::move(report);
}

void Feed::Read(const FeedSource& source, const TableRule& rule)
{
    tables.push_back({std::make_unique<StagedTable>(practice.Database(), rule), {}});
    Table& table = tables.back();
    TableReader reader(rule, *table.rows, table.problems, BadRows::Refuse, TableReader::Rows::Partial);
    try {
        if (source.Read(rule, [&](const CsvRow& row) {
                NoteLostDates(row, rule);
                reader.Take(row);
            }) == CsvEncoding::Windows1252)
            report.inWindows1252 << rule.name;
        reader.End();
    } catch (const RuntimeError& error) {
        if (error.Code() != basic::Error::BadArgument)
            throw;
        table.problems.Add(0, error.Description());
    }
    if (reader.HasFields())
        table.rows->End();
}

void Feed::NoteLostDates(const CsvRow& row, const TableRule& rule)
{
    for (const QString& field : row.lostDates)
        report.lostDates << QString("%1, ligne %2 : %3").arg(rule.name).arg(row.line).arg(field);
}

bool Feed::HasProblems() const
{
    return std::ranges::any_of(tables, [](const Table& table) { return !table.problems.IsEmpty(); });
}

// -- comparing

void Feed::Compare()
{
    qint64 rows = 0;
    for (const Table& table : tables)
        rows += table.rows->Count();
    Progress progress("Comparaison", rows);
    for (Table& table : tables) {
        const bool areLines = qstrcmp(table.rows->Rule().name, "Actes_suppr") == 0;
        table.rows->Compare(areLines ? HighestLineEver(direct) : 0, table.problems);
        progress.Advance(table.rows->Count());
    }
    CompareActs();
    CompareAppointments();
}

void Feed::CompareUnlocked()
{
    direct.Run("begin"); // all comparisons see one moment
    try {
        Compare();
        Fill();
        compared = direct.CommitsOfOthers();
        direct.Run("commit");
    } catch (...) {
        direct.RollBackIfOpen();
        throw;
    }
}

void Feed::CompareActs()
{
    StagedTable* const acts = Staged("Actes");
    if (acts != nullptr && !options.isPart)
        RequireMostActs(goneActs->Find(*acts));
    goneActs->Decide(Staged("Actes_suppr"));
    if (acts == nullptr)
        return;
    acts->Counts().gone = goneActs->Removed();
    if (settlements != nullptr)
        settlements->Decide(acts->Counts());
}

void Feed::RequireMostActs(qint64 gone) const
{
    constexpr int tenths = 10;
    const qint64 here = direct.WholeNumber("select count(*) from main.Actes");
    if (options.takesLosses || gone * tenths <= here)
        return;
    throw RuntimeError::Described(
        basic::Error::BadArgument,
        QString("La source n'a que %1 des %2 actes du cabinet : rien n'a été modifié. --yes la prend quand même, "
                "--part reprend un extrait.")
            .arg(here - gone)
            .arg(here));
}

void Feed::CompareAppointments()
{
    StagedTable* const appointments = Staged("Plani");
    if (appointments == nullptr)
        return;
    const std::string& fed = appointments->Rows();
    const std::string firstDay = appointments->Has("date")
                                     ? "(select min(date) from " + fed + ")"
                                     : "(select min(date) from main.Plani where num in (select num from " + fed + "))";
    direct.Run(std::string("drop table if exists ") + GoneAppointments);
    direct.Run(std::string("create table ") + GoneAppointments + " as select num from main.Plani t where " +
               (options.isPart ? "0" : "date>=" + firstDay) + " and not exists (select 1 from " + fed +
               " s where s.num=t.num)");
    appointments->Counts().gone = direct.WholeNumber(std::string("select count(*) from ") + GoneAppointments);
}

/// Completes the report with what was compared.
void Feed::Fill()
{
    report.tables.clear();
    for (const Table& table : tables)
        report.tables.push_back({table.rows->Rule().name, table.rows->Counts()});
    StagedTable* const patients = Staged("Patients");
    const std::string names =
        patients != nullptr && patients->Has("nom") && patients->Has("Prenom") ? patients->Rows() : std::string();
    report.disputes = settlements != nullptr ? settlements->NewDisputes(names) : QList<Dispute>();
    report.goneActs = goneActs->NewlyGone(names);
    report.isUnchanged = !HasChanges();
}

// -- writing

bool Feed::HasChanges() const
{
    return (settlements != nullptr && settlements->HasChanges()) || goneActs->HasChanges() ||
           std::ranges::any_of(
               tables, [](const Table& table) { return table.rows->HasChanges() || table.rows->Counts().gone > 0; });
}

void Feed::WriteOnce()
{
    constexpr int unlockedTries = 3;
    for (int attempt = 0; attempt < unlockedTries; ++attempt) {
        CompareUnlocked();
        if (HasProblems() || report.isUnchanged || options.isTrial)
            return;
        dao::Transaction transaction(practice.Database());
        if (direct.CommitsOfOthers() == compared) {
            Write();
            transaction.Commit();
            return;
        }
    }
    dao::Transaction transaction(practice.Database());
    Compare();
    Fill();
    if (HasProblems() || report.isUnchanged)
        return;
    Write();
    transaction.Commit();
}

void Feed::Write() const
{
    const Progress progress("Écriture");
    if (settlements != nullptr)
        settlements->Write();
    for (const Table& table : tables)
        table.rows->Write();
    goneActs->Write();
    if (std::ranges::any_of(tables, [](const Table& table) { return qstrcmp(table.rows->Rule().name, "Plani") == 0; }))
        direct.Change(std::string("delete from main.Plani where num in (select num from ") + GoneAppointments + ")");
    practice.Database().KeepKeysAboveReferences();
}

} // namespace practice

#include "practice/feed/GoneActs.h"

#include "data/PaymentCode.h"
#include "platform/basic/RuntimeError.h"

namespace practice {
namespace {

/// n, d, h, p, s, t, f: key, Date, Heure, num_patient, num_presta, Type and flag_R of an act or a line.
const std::string Gone = "temp.\"gone acts\"";
const std::string Lines = "temp.\"open lines\"";
const std::string Present = "temp.\"present acts\""; ///< acts of the source that a line names, by the line's key

/// Whether an act that stays is to be named: for the first time, or because lines name it now that don't remove it.
const std::string IsNews = "(reason>0 and (named is null or (reason>1 and reason is not named)))";

constexpr const char* NamingFields[] = {"Date", "Heure", "num_patient", "num_presta", "Type"};
constexpr const char* Short = "dhpst";

/// The naming fields of a table under their short names; texts without blanks around, blank ones as Null.
std::string NamingColumns(const std::function<std::string(const char* field)>& column)
{
    std::string columns;
    for (int i = 0; i < 5; ++i) {
        const std::string value = column(NamingFields[i]);
        const bool isText = Short[i] == 'h' || Short[i] == 't';
        columns += (isText ? ",nullif(trim(" + value + "),'') as " : "," + value + " as ") + Short[i];
    }
    return columns;
}

/// Whether rows `a` and `b` have the same in the naming fields.
constexpr const char* IsSimilar = "a.d is b.d and a.p is b.p and a.s is b.s and a.h is b.h and a.t is b.t";

std::string CountSimilarTo(const char* row, const std::string& table, const std::string& condition = "1")
{
    QString similar = IsSimilar;
    similar.replace("a.", QString(row) + ".");
    return "(select count(*) from " + table + " b where " + similar.toStdString() + " and " + condition + ")";
}

} // namespace

GoneActs::GoneActs(const dao::Database& database) : direct(database) {}

GoneActs::~GoneActs()
{
    try {
        for (const std::string& table : {Gone, Lines, Present})
            direct.Run("drop table if exists " + table);
    } catch (const basic::RuntimeError&) {
        // The temporary file goes with the connection.
    }
}

qint64 GoneActs::Find(const StagedTable& fedActs)
{
    source = &fedActs;
    const bool hasAll = direct.WholeNumber("select count(*) from main.Actes") == fedActs.Known();
    direct.Run("drop table if exists " + Gone);
    direct.Run("create table " + Gone + " as select t.num as n" +
               NamingColumns([](const char* field) { return "t." + store::Quoted(field); }) +
               ",t.flag_R as f,t.montant as m,k.flag_R as kf,k.montant as km,k.gone as named,0 as reason from "
               "main.Actes t left join " +
               KeptSettlementsTable() + " k on k.num=t.num where " + (hasAll ? "0" : "1") +
               " and not exists (select 1 from " + fedActs.Rows() + " s where s.num=t.num)");
    direct.Run(R"(create index temp."gone acts named" on "gone acts" (d, p))");
    hasReturned = direct.WholeNumber("select count(*) from " + KeptSettlementsTable() + " k" + IsBack()) > 0;
    return direct.WholeNumber("select count(*) from " + Gone);
}

/// The condition for what is kept of an act that was gone and is back.
std::string GoneActs::IsBack() const
{
    return " where gone is not null and num in (select num from " + source->Rows() + ")";
}

/// The open lines, those of the source as it has them now.
void GoneActs::FindLines(const StagedTable* fedLines)
{
    direct.Run("drop table if exists " + Lines);
    const std::string open = OpenDeletionsTable();
    direct.Run("create table " + Lines + " as select num as n" +
               NamingColumns([](const char* field) { return store::Quoted(field); }) +
               ",flag_R as f,1 as known,0 as isUsed from " + open +
               (fedLines != nullptr ? " where num not in (select num from " + fedLines->Rows() + ")" : std::string()));
    if (fedLines != nullptr) {
        const auto given = [fedLines](const char* field) {
            return (fedLines->Has(field) ? "s." : "o.") + store::Quoted(field);
        };
        direct.Run("insert into " + Lines + " select s.num" + NamingColumns(given) + "," + given("flag_R") +
                   ",o.num is not null,0 from " + fedLines->Rows() + " s left join " + open +
                   " o on o.num=s.num where o.num is not null or s.num in (select num from " + fedLines->NewRows() +
                   ")");
    }
    direct.Run(R"(create index temp."open lines named" on "open lines" (d, p))");
}

void GoneActs::Decide(const StagedTable* fedLines)
{
    removed = 0;
    FindLines(fedLines);
    if (source != nullptr) {
        const std::string paid = std::to_string(data::PaymentCode::P);
        const std::string isUnsure = "b.kf is null and not (coalesce(b.f,0)<" + paid + " and coalesce(b.m,0)=0)";
        const std::string lines = CountSimilarTo("a", Lines);
        const std::string acts = CountSimilarTo("a", Gone);
        direct.Run("update " + Gone + " as a set reason=case when " + lines + "=0 then 1 when " + lines + "<" + acts +
                   " then 2 when kf is not null then case when f is kf and m is km then 0 else 3 end "
                   "when coalesce(f,0)<" +
                   paid + " and coalesce(m,0)=0 then 0 when " + CountSimilarTo("a", Lines, "b.f is a.f") +
                   ">=" + CountSimilarTo("a", Gone, isUnsure + " and b.f is a.f") + " then 0 else 3 end");
        CountSimilar(*source);
    }
    removed = source == nullptr ? 0 : direct.WholeNumber("select count(*) from " + Gone + " where reason=0");
    hasChanges =
        hasReturned || direct.WholeNumber("select count(*) from " + Lines + " where known=isUsed") > 0 ||
        (source != nullptr && direct.WholeNumber("select count(*) from " + Gone + " where reason=0 or " + IsNews) > 0);
}

/// Finds the lines that are used up: as many as acts are gone, and all once no similar act is left in the source.
void GoneActs::CountSimilar(const StagedTable& acts)
{
    const auto column = [&acts](const char* field) { return (acts.Has(field) ? "s." : "t.") + store::Quoted(field); };
    direct.Run("drop table if exists " + Present);
    if (direct.WholeNumber("select count(*) from " + Lines) == 0)
        return;
    direct.Run("create table " + Present + " as select distinct b.n as n from (select 1" + NamingColumns(column) +
               " from " + acts.Rows() + " s left join main.Actes t on t.num=s.num) a cross join " + Lines + " b on " +
               IsSimilar);
    direct.Run("update " + Lines + " as a set isUsed=case when " + CountSimilarTo("a", Lines) + "<" +
               CountSimilarTo("a", Gone) + " then 0 when n not in (select n from " + Present + ") then 1 else " +
               CountSimilarTo("a", Lines, "b.n<a.n") + "<" + CountSimilarTo("a", Gone) + " end");
}

QList<GoneAct> GoneActs::NewlyGone(const std::string& fedPatients) const
{
    QList<GoneAct> acts;
    if (source == nullptr)
        return acts;
    NameActs(direct, "select n,d,p,reason from " + Gone + " where " + IsNews, fedPatients,
             [&acts](const NamedAct& act, const store::Statement& row) {
                 acts.push_back({act, static_cast<GoneAct::Reason>(row.WholeAt(FirstFurtherColumn))});
             });
    return acts;
}

void GoneActs::Write() const
{
    const std::string open = OpenDeletionsTable();
    direct.Change("delete from " + open + " where num in (select n from " + Lines + " where isUsed)");
    direct.Change("insert into " + open +
                  " (num,Date,Heure,num_patient,num_presta,Type,flag_R) select n,d,h,p,s,t,f from " + Lines +
                  " where not known and not isUsed");
    if (source == nullptr)
        return;
    const std::string kept = KeptSettlementsTable();
    direct.Change("update " + kept + " set gone=null" + IsBack());
    const std::string those = " where num in (select n from " + Gone + " where reason=0)";
    direct.Change("delete from main.Actes" + those);
    direct.Change("delete from " + kept + those);
    direct.Change("insert into " + kept + " (num, gone) select n, reason from " + Gone + " where " + IsNews +
                  " on conflict (num) do update set gone=excluded.gone");
}

} // namespace practice

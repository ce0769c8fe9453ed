#include "practice/feed/SettlementMerge.h"

#include "data/PaymentCode.h"
#include "platform/basic/RuntimeError.h"

namespace practice {
namespace {

/// n, d, p: key, day and patient; o, s, k: the settlement here, of the source, and kept; w: the dispute named before.
constexpr const char* Settlements = "temp.\"settlements\"";

constexpr const char* IsSameNow = "of is sf and om is sm";
constexpr const char* IsNamed = "wf is sf and wm is sm and wof is of and wom is om";

std::string Verdict()
{
    const std::string paid = std::to_string(data::PaymentCode::P);
    return "case when t.flag_R is s.flag_R and t.montant is s.montant then 'same' "
           "when k.flag_R is null then case "
           "when coalesce(t.flag_R,0)<" +
           paid +
           " and coalesce(t.montant,0)=0 then 'take' "
           "when s.flag_R<" +
           paid +
           " then 'keep' else 'dispute' end "
           "when t.flag_R is k.flag_R and t.montant is k.montant then 'take' "
           "when s.flag_R is k.flag_R and s.montant is k.montant then 'keep' "
           "else 'dispute' end";
}

} // namespace

SettlementMerge::SettlementMerge(const dao::Database& database, const StagedTable& fedActs)
    : direct(database), acts(fedActs)
{
}

SettlementMerge::~SettlementMerge()
{
    try {
        direct.Run(std::string("drop table if exists ") + Settlements);
    } catch (const basic::RuntimeError&) {
        // The temporary file goes with the connection.
    }
}

void SettlementMerge::Decide(FeedCounts& counts)
{
    direct.Run(std::string("drop table if exists ") + Settlements);
    direct.Run(
        std::string("create table ") + Settlements +
        " as select s.num as n, t.Date as d, t.num_patient as p, s.flag_R as sf, s.montant as sm, t.flag_R as of, "
        "t.montant as om, k.flag_R as kf, k.montant as km, k.source_flag_R as wf, k.source_montant as wm, "
        "k.our_flag_R as wof, k.our_montant as wom, " +
        Verdict() + " as verdict from " + acts.Rows() + " s cross join main.Actes t on t.num=s.num left join " +
        KeptSettlementsTable() +
        " k on k.num=s.num where not (t.flag_R is s.flag_R and t.montant is s.montant and k.flag_R is s.flag_R "
        "and k.montant is s.montant and k.source_flag_R is null)");
    hasChanges = direct.WholeNumber(std::string("select count(*) from ") + Settlements +
                                    " where case verdict when 'take' then 1 when 'dispute' then not (" + IsNamed +
                                    ") else not (kf is sf and km is sm and wf is null) end") > 0;
    Count(counts);
}

void SettlementMerge::Count(FeedCounts& counts) const
{
    const std::string others = std::string("select count(*) from ") + Settlements +
                               " where n not in (select num from " + acts.ChangedRows() + ") and verdict ";
    const qint64 taken = direct.WholeNumber(others + "='take'");
    const qint64 kept = direct.WholeNumber(others + "in ('keep','dispute')");
    counts.changed += taken;
    counts.kept += kept;
    counts.unchanged -= taken + kept;
}

QList<Dispute> SettlementMerge::NewDisputes(const std::string& fedPatients) const
{
    QList<Dispute> disputes;
    NameActs(direct,
             std::string("select n,d,p,coalesce(of,-1),om,sf,sm from ") + Settlements +
                 " where verdict='dispute' and not (" + IsNamed + ")",
             fedPatients, [&disputes](const NamedAct& act, const store::Statement& row) {
                 const auto settlementAt = [&row](int column) {
                     return Settlement{static_cast<int>(row.WholeAt(column)),
                                       QString::fromStdString(row.TextAt(column + 1)).toDouble()};
                 };
                 disputes.push_back({act, settlementAt(FirstFurtherColumn), settlementAt(FirstFurtherColumn + 2)});
             });
    return disputes;
}

void SettlementMerge::Write() const
{
    const std::string settlements = Settlements;
    const std::string kept = KeptSettlementsTable();
    direct.Change("update main.Actes as t set flag_R=m.sf, montant=m.sm from " + settlements +
                  " m where t.num=m.n and m.verdict='take'");
    direct.Change(
        "insert into " + kept + " (num, flag_R, montant) select n, sf, sm from " + settlements +
        " where verdict<>'dispute' and not (kf is sf and km is sm and wf is null) on conflict (num) do update "
        "set flag_R=excluded.flag_R, montant=excluded.montant, our_flag_R=null, our_montant=null, "
        "source_flag_R=null, source_montant=null");
    direct.Change("insert into " + kept +
                  " (num, our_flag_R, our_montant, source_flag_R, source_montant) select n, of, om, sf, sm from " +
                  settlements + " where verdict='dispute' and not (" + IsNamed +
                  ") on conflict (num) do update set our_flag_R=excluded.our_flag_R, our_montant=excluded.our_montant, "
                  "source_flag_R=excluded.source_flag_R, source_montant=excluded.source_montant");
    // The rest of what is kept of an act that was deleted elsewhere and comes back is of no use.
    direct.Change("insert or replace into " + kept + " (num, flag_R, montant) select num, flag_R, montant from " +
                  acts.NewRows());
}

} // namespace practice

#include "practice/feed/FeedNotes.h"

#include "data/Practice.h"

namespace practice {

void NameActs(const dao::DirectStatements& direct, const std::string& select, const std::string& fedPatients,
              const std::function<void(const NamedAct& act, const store::Statement& row)>& take)
{
    const auto nameIn = [](const std::string& table) {
        return "(select trim(coalesce(nom,'')||' '||coalesce(Prenom,'')) from " + table + " where num=p)";
    };
    const std::string here = nameIn("main.Patients");
    const std::string name = fedPatients.empty() ? here : "coalesce(" + nameIn(fedPatients) + "," + here + ")";
    dao::Rows acts = direct.Select("select a.n,a.d," + name + ",a.* from (" + select + ") a order by a.n");
    while (acts.Step()) {
        const store::Statement& row = acts.Row();
        take({row.WholeAt(0), QDate::fromString(QString::fromStdString(row.TextAt(1)), Qt::ISODate),
              QString::fromStdString(row.TextAt(2))},
             row);
    }
}

std::string KeptSettlementsTable()
{
    return "main." + store::Quoted(data::KeptSettlements.toStdString());
}

std::string OpenDeletionsTable()
{
    return "main." + store::Quoted(data::OpenDeletions.toStdString());
}

} // namespace practice

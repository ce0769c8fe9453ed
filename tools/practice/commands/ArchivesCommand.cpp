#include "practice/commands/Command.h"
#include "practice/copies/CashDays.h"
#include "practice/copies/CopyChoice.h"
#include "practice/copies/RowTexts.h"

#include "platform/basic/RuntimeError.h"

#include <QFileInfo>
#include <QLocale>

namespace practice {
namespace {

constexpr const char* ArchivesNames[] = {"DOSSIER"};

QString RowsText(const store::DatabaseReader& reader)
{
    QStringList counts;
    for (const char* const table :
         {"Patients", "Actes", "Actes_suppr", "Plani", "Presta", "Tarif", "Recettes", "Permn"}) {
        store::Statement count = reader.Select(std::string("select count(*) from ") + table);
        count.Step();
        counts << QString("%1 %2").arg(table).arg(count.WholeAt(0));
    }
    return counts.join(", ");
}

QString BalanceText(const store::DatabaseReader& reader)
{
    const CashDays cash(reader, {});
    const QDate day = cash.LastDay();
    return day.isValid() ? QString("%1 au soir du %2").arg(AmountText(cash.Balance(day)), DayText(day))
                         : QString("aucun mouvement");
}

QString ConditionText(const archives::CopyCondition& condition)
{
    switch (condition.kind) {
    case archives::CopyCondition::Kind::Whole:
        return "entière";
    case archives::CopyCondition::Kind::Changed:
        return "MODIFIÉE DEPUIS SA CLÔTURE";
    case archives::CopyCondition::Kind::Unusable:
        break;
    }
    return "INUTILISABLE : " + condition.reason;
}

void Describe(const archives::ArchivedCopy& copy, const archives::CopyCondition& condition, QTextStream& output)
{
    const QString size =
        QLocale(QLocale::French).formattedDataSize(QFileInfo(copy.path).size(), 1, QLocale::DataSizeSIFormat);
    output << copy.Name() << "\n  " << archives::MomentOf(copy) << ", " << size << ", " << ConditionText(condition)
           << "\n";
    if (condition.kind == archives::CopyCondition::Kind::Unusable)
        return;
    const store::DatabaseReader reader(copy.path);
    output << "  " << RowsText(reader) << "\n  Dernier acte : " << LastActText(reader)
           << "\n  Solde : " << BalanceText(reader) << "\n";
}

int RunArchives(const Arguments& arguments, const Streams& streams)
{
    const QString folder = arguments.Name(0);
    RequirePractice(folder);
    const QList<archives::ArchivedCopy> copies = archives::ArchivedCopies(folder);
    if (copies.isEmpty())
        streams.output << "Il n'y a aucune copie dans « " << archives::CopiesFolder(folder) << " ».\n";
    bool isEachWhole = true;
    for (const archives::ArchivedCopy& copy : copies) {
        const archives::CopyCondition condition = archives::ConditionOf(copy.path);
        isEachWhole = isEachWhole && condition.kind == archives::CopyCondition::Kind::Whole;
        Describe(copy, condition, streams.output);
        streams.output.flush();
    }
    return isEachWhole ? Done : Refused;
}

} // namespace

const Command ArchivesCommand{
    "archives",
    "DOSSIER",
    "      Donne les copies du cabinet dans ARCHIVES : date et heure, taille, lignes de chaque table,\n"
    "      dernier acte, solde du dernier soir, et si la copie est entière. Ne modifie rien.\n",
    ArchivesNames,
    0,
    {},
    RunArchives,
};

} // namespace practice

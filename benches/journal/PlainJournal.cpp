#include "PlainJournal.h"

#include "platform/basic/Numbers.h"

namespace bench {

PlainJournal::PlainJournal(PlainDatabase& practice)
    : database(practice), services(practice, "select num, denom from Presta order by Ordre"),
      totals(practice,
             "select count(num), sum(montant) from Actes where date >= ?1 and date <= ?2 and num_presta = ?3"),
      list(practice,
           "select num, strftime('%d/%m/%Y', Date), Heure, num_patient, strftime('%d/%m/%Y', date_Presta), HH, "
           "Type, flag_R, montant from Actes where date >= ?1 and date <= ?2 and num_presta = ?3 "
           "order by Date, num"),
      patient(practice, "select nom, Prenom from Patients where num = ?"),
      act(practice, "select Type, flag_R, montant from Actes where num = ?")
{
    PlainStatement tariff(practice, "select * from Tarif");
    tariff.Step();
    for (int code = 0; code < 32; ++code)
        rates[static_cast<std::size_t>(code)] = tariff.Real(code);
}

void PlainJournal::Read(const Period& period)
{
    rows.clear();
    keys.clear();
    acts = 0;
    theoretical = 0;
    for (PlainStatement* statement : {&totals, &list})
        statement->Bind(1, period.first.toString(Qt::ISODate)).Bind(2, period.last.toString(Qt::ISODate));
    for (; services.Step(); totals.Reset()) {
        totals.Bind(3, services.Number(0)).Step();
        acts += static_cast<int>(totals.Number(0));
        if (ListedActs() + totals.Number(0) <= JournalPractice::MostListed)
            ListService(services.Number(0), services.Text(1));
    }
    services.Reset();
}

void PlainJournal::ListService(qint64 service, const QString& name)
{
    static const QString codes[] = {"NP", "R-", "P ", "R+", "Gr", "AB"};
    list.Bind(3, service);
    for (; list.Step(); patient.Reset()) {
        Row& row = rows.emplace_back();
        row[0] = " " + name;
        row[1] = list.Text(1);
        row[2] = list.Text(2);
        if (patient.Bind(1, list.Number(3)).Step())
            row[3] = patient.Text(0).trimmed() + " " + patient.Text(1).trimmed();
        row[4] = list.Text(4);
        row[5] = QString(" %1-%2").arg(list.Number(5) + 8).arg(list.Number(5) + 9);
        row[6] = list.Text(6);
        row[7] = codes[list.Number(7)];
        row[8] = basic::Format(list.Real(8), "### ###") + " ";
        const double value = ValueOf(row[6], list.Number(7), list.Real(8));
        if (value != 0)
            row[9] = basic::Format(value, "### ###") + " ";
        theoretical += value;
        keys.push_back(static_cast<int>(list.Number(0)));
    }
    list.Reset();
}

double PlainJournal::ValueOf(const QString& code, qint64 state, double amount) const
{
    const std::size_t position = code.size() == 1 ? 0 : code.mid(1).toUInt() + 1;
    switch (state) {
    case 1:
        return rates[position] - amount;
    case 2:
        return rates[position];
    case 3:
        return amount;
    default:
        return 0;
    }
}

QString PlainJournal::TheoreticalTotal() const
{
    return theoretical > 0 ? basic::Format(theoretical, "### ### ###") + " " : QString();
}

void PlainJournal::FillProv()
{
    database.Run("begin immediate");
    database.Run("delete from Prov");
    PlainStatement row(database, "insert into Prov (num, Mt) values (?, ?)");
    for (const int key : keys) {
        act.Bind(1, key).Step();
        row.Bind(1, key).Bind(2, ValueOf(act.Text(0), act.Number(1), act.Real(2))).Run();
        act.Reset();
    }
    database.Run("commit");
    database.Run("pragma wal_checkpoint(passive)"); // both variants include moving the rows from the log into the file
}

} // namespace bench

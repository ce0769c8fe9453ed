#include "support/Practice.h"
#include "support/Globals.h"
#include "support/OtherProgram.h"

#include "core/configuration.h"
#include "core/globals.h"
#include "core/opening.h"
#include "data/Practice.h"
#include "platform/host/Files.h"
#include "platform/host/Host.h"

namespace tests {

Practice::Practice()
{
    host::FixToday(QDate(2008, 6, 17));
    tests::ResetGlobals();
    core::FillCalendarNames();
    data::PracticeSetup setup;
    setup.accessCode = 6;
    setup.letterhead = {"Cabinet d'Été", "Médecine générale", "Alger", "021 00 00 00"};
    data::CreatePractice(folder.path(), setup);
    Service("Consultation", 0);
    Service("ECG", 1);
    Patient("Benali", "Zoé");
}

Practice::~Practice()
{
    tests::ResetGlobals();
    ownDatabase.Close();
    host::FixToday(QDate());
}

QString Practice::Folder() const
{
    return folder.path();
}

QString Practice::File(const QString& name) const
{
    return host::PathIn(folder.path(), name);
}

void Practice::Open()
{
    ownDatabase.Close();
    core::DataFolder = folder.path();
    core::LoadConfiguration();
    core::CreateTheWorkspace();
    core::OpenDataFiles();
}

dao::Database Practice::Database()
{
    if (!ownDatabase.IsOpen()) {
        dao::DBEngine.SystemDB = File("system.mdw");
        ownWorkspace = dao::DBEngine.CreateWorkspace("Tests", "ADMIN", data::BuildWorkspacePassword());
        ownDatabase = ownWorkspace.OpenDatabase(File("ZEP_ONE.MDB"));
    }
    return ownDatabase;
}

dao::Key Practice::Add(const QString& table, const Row& row)
{
    dao::Recordset rows = Database().OpenRecordset(table);
    rows.AddNew();
    for (const auto& [field, value] : row)
        rows.Collect(field) = value;
    rows.Update();
    return rows.LastKey();
}

dao::Key Practice::Act(const ActRow& act)
{
    return Add("Actes", {{"Date", act.day},
                         {"date_Presta", act.day},
                         {"MM", act.day.mid(3, 2).toInt()},
                         {"AA", act.day.right(4).toInt()},
                         {"montant", act.montant},
                         {"flag_R", act.flag_R},
                         {"num_patient", act.num_patient},
                         {"num_presta", act.num_presta},
                         {"HH", act.HH},
                         {"Heure", "08:30"},
                         {"Type", act.Type},
                         {"Flag_H", act.Flag_H}});
}

dao::Key Practice::Expense(const ExpenseRow& expense)
{
    return Add("Recettes", {{"Date", expense.day},
                            {"MM", expense.day.mid(3, 2).toInt()},
                            {"objet", expense.objet},
                            {"montant", expense.montant}});
}

dao::Key Practice::Patient(const dao::Value& nom, const dao::Value& Prenom)
{
    return Add("Patients", {{"nom", nom}, {"Prenom", Prenom}});
}

dao::Key Practice::Service(const QString& denom, int ordre)
{
    return Add("Presta", {{"denom", denom}, {"Ordre", ordre}});
}

dao::Key Practice::Appointment(const QString& day)
{
    return Add("Plani", {{"date", day}, {"Num_Presta", 1}, {"HH", 2}, {"num_patient", 1}});
}

void Practice::Write(const QString& statement)
{
    const QByteArray sql = statement.toUtf8();
    EXPECT_EQ(OtherProgram(File("ZEP_ONE.MDB")).Run(sql.constData()), SQLITE_OK) << sql.constData();
}

void Practice::Remove(const QString& table, dao::Key key)
{
    Write("delete from " + table + " where num = " + QString::number(key));
}

dao::Value Practice::Stored(const QString& table, dao::Key key, const char* field)
{
    dao::Recordset rows = Database().OpenRecordset(table);
    rows.FindFirst(key);
    return rows.Collect(field).Get();
}

dao::Value Practice::Ask(const QString& statement)
{
    return Rows(statement).Fields(0).Get();
}

dao::Recordset Practice::Rows(const QString& statement)
{
    return Database().OpenRecordset(statement);
}

} // namespace tests

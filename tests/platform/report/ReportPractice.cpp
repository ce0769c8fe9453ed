#include "platform/report/ReportPractice.h"
#include "platform/dao/Workgroup.h"
#include "platform/store/Creation.h"

#include "data/Practice.h"
#include "data/ReportTemplates.h"
#include "support/Files.h"

namespace tests {

ReportPractice::ReportPractice()
{
    store::CreateDatabase(Path(), data::Schema() + "\nALTER TABLE Prov ADD COLUMN Mt2 REAL DEFAULT 0;");
    dao::WriteWorkgroup(folder.filePath("system.mdw"), "ADMIN", "secret");
    engine.SystemDB = folder.filePath("system.mdw");
    workspace = engine.CreateWorkspace("", "ADMIN", "secret");
    database = workspace.OpenDatabase(Path());

    dao::Transaction all(database);
    Add("Patients", {{"nom", "BENALI"}, {"Prenom", "Amina"}});
    Add("Patients", {{"nom", "O'BRIEN-MARTIN"}, {"Prenom", "Jean-Frédéric"}});
    Add("Patients", {{"nom", "بن علي"}, {"Prenom", "أمينة"}});
    Add("Presta", {{"denom", "Consultation"}, {"Ordre", 0}});
    Add("Presta", {{"denom", "Radiologie"}, {"Ordre", 1}});
    Add("Presta", {{"denom", "Échographie abdominale"}, {"Ordre", 2}});
    SetTexts({{"ch1", "Cabinet du Docteur Mourad SAÏDI"},
              {"ch2", "Médecine générale"},
              {"ch3", "12, rue des Oliviers"},
              {"ch30", "(Alger)"},
              {"ch4", "Mouvements de fonds du  Mar 17/06/2008"}});
    all.Commit();
}

pages::Source ReportPractice::Source(const QString& selectionFormula) const
{
    return {Path(), data::ReportTextSelect, data::ReportTextNames, selectionFormula};
}

QString ReportPractice::Template(const QString& name)
{
    return QStringLiteral(ZEP_REPORTS "/") + name;
}

QString ReportPractice::WriteTemplate(const QByteArray& text, const QString& name)
{
    WriteFile(folder.filePath(name), text);
    return folder.filePath(name);
}

QByteArray ReportPractice::Read(const QString& name) const
{
    return BytesOf(folder.filePath(name));
}

dao::Key ReportPractice::Add(const QString& table, Cells cells)
{
    dao::Recordset rows = database.OpenRecordset(table);
    rows.AddNew();
    for (const auto& [field, value] : cells)
        rows[field] = value;
    rows.Update();
    return table == "Prov" || table == "RCP2" ? 0 : rows.LastKey();
}

void ReportPractice::SetTexts(Cells cells)
{
    dao::Recordset texts = database.OpenRecordset("textes");
    texts.Edit();
    for (const auto& [field, value] : cells)
        texts[field] = value;
    texts.Update();
}

void ReportPractice::AddActs(int count, bool withReference)
{
    dao::Transaction all(database);
    dao::Recordset acts = database.OpenRecordset("Actes");
    dao::Recordset lines = database.OpenRecordset("Prov");
    for (int act = 0; act < count; ++act) {
        acts.AddNew();
        acts["Date"] = "17/06/2008";
        acts["date_Presta"] = act % 7 == 0 ? "16/06/2008" : "17/06/2008";
        acts["Heure"] = "08:30";
        acts["HH"] = act % 10;
        acts["num_patient"] = act % 3 + 1;
        acts["num_presta"] = act % 3 + 1;
        acts["montant"] = act % 6 == 0 ? 0.0 : 150 * (act % 40) + 0.5;
        acts["Type"] = act % 2 == 0 ? "C" : "K10";
        acts["flag_R"] = act % 6;
        acts.Update();
        lines.AddNew();
        lines["num"] = acts.LastKey();
        if (withReference)
            lines["Mt"] = 1200.0;
        lines.Update();
    }
    all.Commit();
}

void ReportPractice::AddExpenses(int count)
{
    dao::Transaction all(database);
    for (int expense = 0; expense < count; ++expense) {
        const dao::Key key = Add("Recettes", {{"Date", "17/06/2008"},
                                              {"objet", expense % 2 == 0 ? "Coton" : "Réparation du fauteuil"},
                                              {"montant", 100.25 + expense}});
        Add("Prov", {{"num", key}});
    }
    all.Commit();
}

pages::PageLayout ReportPractice::LayOut(const QString& templatePath, const QString& selectionFormula)
{
    const pages::ParsedTemplate read = pages::ReadTemplateFile(templatePath, data::ReportTextNames);
    for (const pages::Fault& fault : read.faults)
        ADD_FAILURE() << fault.line << ": " << qPrintable(fault.reason);
    pages::ReadContentResult printed = pages::ReadContent(read.design, Source(selectionFormula));
    for (const pages::Fault& fault : printed.faults)
        ADD_FAILURE() << fault.line << ": " << qPrintable(fault.reason);
    printed.content.printDate = "17/06/2008";
    return {read.design, std::move(printed.content)};
}

} // namespace tests

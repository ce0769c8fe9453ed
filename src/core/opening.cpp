#include "core/opening.h"

#include "archives/Archives.h"
#include "core/globals.h"
#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Form.h"
#include "platform/host/Files.h"

using basic::Error;
using basic::RuntimeError;
using forms::Icon;
using forms::MsgBox;

namespace core {

QString ErrorText(const RuntimeError& error)
{
    return QStringLiteral("Erreur N° %1\n%2").arg(error.Number()).arg(error.Description());
}

void CreateTheWorkspace()
{
    WorkspacePassword = data::BuildWorkspacePassword();

    dao::DBEngine.IniPath = host::PathIn(DataFolder, "KOFA.INI");
    dao::DBEngine.DefaultUser = data::WorkspaceUser;
    dao::DBEngine.DefaultPassword = WorkspacePassword;
    dao::DBEngine.SystemDB = host::PathIn(DataFolder, data::WorkgroupFile);

    TheWorkspace = dao::DBEngine.CreateWorkspace("Special", data::WorkspaceUser, WorkspacePassword);
}

void UpgradeProvTable()
{
    constexpr int fieldsWithSecondAmount = 6;
    dao::Database database;
    try {
        database = TheWorkspace.OpenDatabase(DatabasePath, data::PracticeRules());
        dao::TableDef Prov = database.TableDef("Prov");
        if (Prov.FieldCount() < fieldsWithSecondAmount)
            Prov.AppendField("Mt2", 0);
    } catch (const RuntimeError& error) {
        if (error.Code() != Error::ReadOnly) // OpenDataFiles reports it
            MsgBox(ErrorText(error), Icon::Exclamation, "Lumo ZEP");
    }
    database.Close();
}

namespace {

/// Opens the database and its four tables. On failure shows the error and returns it.
std::optional<Error> TryOpening()
{
    try {
        TheDatabase = TheWorkspace.OpenDatabase(DatabasePath, data::PracticeRules());
        PatientsTable = TheDatabase.OpenRecordset("Patients");
        PrestaTable = TheDatabase.OpenRecordset("Presta");
        TextesTable = TheDatabase.OpenRecordset("textes");
        PermnTable = TheDatabase.OpenRecordset("Permn");
        return std::nullopt;
    } catch (const RuntimeError& error) {
        MsgBox(ErrorText(error), Icon::Exclamation, "ZEP Lumo");
        return error.Code();
    }
}

/// Offers to restore the newest intact copy of a damaged database. True if it was restored.
bool OfferCopy()
{
    TheDatabase.Close();
    std::optional<archives::ArchivedCopy> copy;
    bool isChanged = false;
    {
        const forms::Hourglass pointer;
        copy = archives::NewestWholeCopy(DataFolder);
        isChanged = !copy;
        if (isChanged)
            copy = archives::NewestWholeCopy(DataFolder, {}, archives::CopyCondition::Kind::Changed);
    }
    const auto agrees = [](const QString& question) {
        return MsgBox(question, Icon::Question, "ZEP Lumo", forms::Buttons::NoYes) == forms::Answer::Yes;
    };
    if (!copy ||
        !agrees("Remettre la copie du " + archives::MomentOf(*copy) + " ? Les actes saisis depuis n'y sont pas."))
        return false;
    if (isChanged && !agrees("Cette copie a été modifiée depuis sa clôture. La remettre quand même ?"))
        return false;
    try {
        archives::Restore(copy->path, DataFolder, archives::Accepts::ChangedCopies);
        return true;
    } catch (const RuntimeError& error) {
        MsgBox(ErrorText(error), Icon::Exclamation, "ZEP Lumo");
        return false;
    }
}

} // namespace

void OpenDataFiles()
{
    DatabasePath = host::PathIn(DataFolder, data::DatabaseFile);
    archives::RemoveLeftovers(DataFolder);
    UpgradeProvTable();
    auto error = TryOpening();
    if (error == Error::DamagedDatabase && OfferCopy()) {
        UpgradeProvTable();
        error = TryOpening();
    }
    if (!error)
        return;
    CloseDataFiles();
    forms::TheDesk().EndProgram(0);
}

void CloseDataFiles()
{
    PatientsTable.Close();
    PrestaTable.Close();
    TextesTable.Close();
    PermnTable.Close();
    TheDatabase.Close();
    TheWorkspace.Close();
}

} // namespace core

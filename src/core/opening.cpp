#include "core/opening.h"

#include "core/globals.h"
#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/forms/Desk.h"
#include "platform/host/Files.h"

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
    dao::DBEngine.DefaultUser = data::workspaceUser;
    dao::DBEngine.DefaultPassword = WorkspacePassword;
    dao::DBEngine.SystemDB = host::PathIn(DataFolder, data::workgroupFile);
    dao::DBEngine.KeyedTables = data::KeyedTables();

    TheWorkspace = dao::DBEngine.CreateWorkspace("Special", data::workspaceUser, WorkspacePassword);
}

void UpgradeProvTable()
{
    constexpr int fieldsWithSecondAmount = 6;
    dao::Database database;
    try {
        database = TheWorkspace.OpenDatabase(DatabasePath);
        dao::TableDef Prov = database.TableDef("Prov");
        if (Prov.FieldCount() < fieldsWithSecondAmount)
            Prov.AppendField("Mt2", dao::FieldType::Double, 0);
    } catch (const RuntimeError& error) {
        MsgBox(ErrorText(error), Icon::Exclamation, "Lumo ZEP");
    }
    database.Close();
}

void OpenDataFiles()
{
    DatabasePath = host::PathIn(DataFolder, data::databaseFile);
    UpgradeProvTable();
    try {
        TheDatabase = TheWorkspace.OpenDatabase(DatabasePath);
        PatientsTable = TheDatabase.OpenRecordset("Patients");
        PrestaTable = TheDatabase.OpenRecordset("Presta");
        TextesTable = TheDatabase.OpenRecordset("textes");
        PermnTable = TheDatabase.OpenRecordset("Permn");
    } catch (const RuntimeError& error) {
        MsgBox(ErrorText(error), Icon::Exclamation, "ZEP Lumo");
        CloseDataFiles();
        forms::TheDesk().EndProgram(0);
    }
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

void CopyToArchives(const dao::CopyProgress& progress)
{
    constexpr int plain = 0;
    constexpr int archiveBit = 32;
    const QString target = host::PathIn(DataFolder, data::archiveFolder + "/" + data::databaseFile);
    if (host::FileExists(target, plain)) {
        const int attributes = host::FileAttributes(target);
        if (attributes != plain && attributes != archiveBit)
            host::SetFileAttributes(target, plain);
    }
    dao::CopyDatabase(DatabasePath, target, progress);
}

} // namespace core

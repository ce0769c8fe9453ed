#include "core/Auteur.h"

#include "core/configuration.h"
#include "core/globals.h"
#include "core/windows.h"
#include "data/OldDatabase.h"
#include "data/Practice.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Guard.h"
#include "platform/host/Console.h"
#include "platform/host/Files.h"

#include <QDir>

using namespace forms;

namespace core {

Auteur::Auteur() : Form("Auteur", "     Explorer .....")
{
    BuildForm();

    On(Text2, &TextBox::Entered, *this, [this] {
        if (!Text2.text().trimmed().isEmpty())
            Image1_Click();
    });
    On(Image1, &Picture::clicked, *this, &Auteur::Image1_Click);
    On(Dir1, &FolderList::Change, *this, &Auteur::Dir1_Change);
    On(Text1, &TextBox::Entered, *this, [this] {
        if (!Text1.text().trimmed().isEmpty())
            Image2_Click(Accept);
    });
    OnEach(Image2, &Picture::clicked, *this, &Auteur::Image2_Click);
}

void Auteur::Form_Load()
{
    DialogResult = 0;
    CenterForm(*this);
    Dir1.setFocus();
    Dir1.SetPath(QDir::currentPath());
}

void Auteur::EscapePressed()
{
    Image2_Click(Cancel);
}

void Auteur::Image1_Click()
{
    QString typed = Text2.text().trimmed();
    if (typed.isEmpty()) {
        MsgBox("Indiquez un lecteur ou le chemin d'un dossier.", Icon::Critical, "ATTENTION");
        Text2.setFocus();
        return;
    }
    typed = QDir::fromNativeSeparators(typed);
    const bool isPath = typed.contains('/');
    if (!isPath && typed.size() == 1)
        typed += ":";
    const QString folder = isPath ? typed : host::DriveFolder(typed);
    if (!folder.isEmpty() && QDir(folder).exists())
        return Dir1.SetPath(QDir(folder).absolutePath());
    MsgBox((isPath ? "Dossier '" : "Lecteur '") + typed + "' introuvable", Icon::Critical, "ATTENTION");
    Text2.setFocus();
    Text2.selectAll();
}

void Auteur::Dir1_Change()
{
    File1.SetPath(Dir1.Path());
    Label1.setText(QDir::toNativeSeparators(Dir1.Path()));

    const bool holdsDatabase = File1.count() > 0;
    Image2[Accept].setVisible(holdsDatabase);
    Text1.setVisible(holdsDatabase);
    hint.setVisible(!holdsDatabase);
    if (holdsDatabase)
        Text1.setFocus();
}

void Auteur::Image2_Click(int index)
{
    if (index == Cancel) {
        DialogResult = 0;
        Unload();
        return;
    }
    if (!CheckFolderFiles())
        return;
    LoadConfiguration();
    if (!CheckAccessCode()) {
        // No message for a wrong code, so that a stranger learns nothing.
        Text1.setFocus();
        Text1.selectAll();
        return;
    }
    if (!CheckDatabaseFormat())
        return;
    DialogResult = ResultAccepted;
    Unload();
}

bool Auteur::CheckFolderFiles()
{
    const QString folder = QDir::fromNativeSeparators(Label1.text().trimmed());
    for (const QString& name : {QStringLiteral("ZEP_CFIG.cfg"), data::WorkgroupFile}) {
        if (!host::FileExists(host::PathIn(folder, name), 0)) {
            MsgBox("Fichier '" + name + "' absent", Icon::Critical, "ATTENTION");
            return false;
        }
    }
    DataFolder = folder;
    DatabasePath = host::PathIn(DataFolder, data::DatabaseFile);
    return true;
}

bool Auteur::CheckAccessCode() const
{
    const basic::Int16 code = basic::Product(StoredAccessValue(), 2);
    return Text1.text().trimmed() == QString::number(code);
}

bool Auteur::CheckDatabaseFormat() const
{
    if (!data::IsOldDatabase(DatabasePath))
        return true;
    MsgBox("Cette base est d'un format plus ancien.\nPour en faire un cabinet de ce programme, tapez dans un "
           "terminal :\n\npractice adopt " +
               host::QuotedArgument(DataFolder) + " " + host::QuotedArgument(DataFolder + "-nouveau") +
               "\n\nL'ancien dossier ne change pas. Ouvrez ensuite le nouveau.",
           Icon::Exclamation, "ATTENTION");
    return false;
}

} // namespace core

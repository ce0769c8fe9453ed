#pragma once

#include "support/FolderInMemory.h"
#include "support/OtherProgram.h"
#include "tools/PracticeCommand.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QRegularExpression>
#include <map>

/// A practice with a row or two of each kind, to be spoilt from outside and made sound again.
class SmallOffice : public testing::Test {
protected:
    SmallOffice()
    {
        Run(R"(
            insert into Patients (num, nom, Naiss) values (1, 'Haddad', '1950-01-31'), (2, 'Slimani', null);
            insert into Presta (num, denom, prix, Ordre) values (1, 'Consultation', 800, 0), (2, 'ECG', 1200, 1);
            insert into Tarif (C, K0) values (500, 100);
            insert into Actes (num, Date, MM, AA, date_Presta, HH, Heure, num_patient, num_presta, montant, Type, flag_R)
                values (1, '2008-06-16', 6, 2008, '2008-06-16', 0, '08:30', 1, 1, 800, 'C', 2),
                       (2, '2008-06-17', 6, 2008, '2008-06-17', 9, '17:30', 2, 2, 0, 'K30', 0),
                       (3, '2008-07-01', 7, 2008, null, 1, null, 2, 1, 50.5, null, 5);
            insert into Plani (num, date, Num_Presta, HH, num_patient) values (1, '2008-06-18', 1, 3, 1);
            insert into Actes_suppr (num, Date, num_patient, num_presta, Type, flag_R, Date_Suppr, H_Suppr)
                values (9, '2008-06-16', 1, 1, 'K5', 0, '2008-06-16', '09:00');
            insert into Recettes (num, Date, MM, objet, montant) values (1, '2008-06-16', 6, 'Coton', 120.5);
        )");
        sound = BytesOf(File());
    }

    QString Folder() const { return practice.Folder(); }
    QString File() const { return Folder() + "/ZEP_ONE.MDB"; }

    static void Write(const QString& path, const QByteArray& bytes) { tests::WriteFile(path, bytes); }

    /// Runs statements of another program; the log is in the file afterwards.
    void Run(const char* sql) const
    {
        tests::OtherProgram other(File());
        EXPECT_EQ(other.Run(sql), SQLITE_OK) << sql;
    }
    /// Makes a change that is in the log alone, as after a power cut.
    void ChangeInLog(const char* sql) const
    {
        QByteArray file;
        QByteArray log;
        {
            tests::OtherProgram other(File());
            ASSERT_EQ(other.Run("pragma journal_mode = wal"), SQLITE_OK);
            ASSERT_EQ(other.Run(sql), SQLITE_OK);
            file = BytesOf(File());
            log = BytesOf(File() + "-wal");
        }
        Write(File(), file);
        Write(File() + "-wal", log);
    }
    QString Answer(const char* sql) const { return tests::OtherProgram(File()).Answer(sql); }

    void MakeSound() const { Write(File(), sound); }
    /// The sound practice, changed by these statements.
    void Spoil(const char* sql) const
    {
        MakeSound();
        Run(sql);
    }

    /// Makes a change of which one index doesn't know.
    void SpoilIndex(const std::string& index, const std::string& change) const
    {
        Spoil(("pragma writable_schema = on; create table kept as select * from sqlite_schema where name = '" + index +
               "'; delete from sqlite_schema where name = '" + index + "'")
                  .c_str());
        Run((change + "; pragma writable_schema = on; insert into sqlite_schema select * from kept").c_str());
        Run("drop table kept");
    }

    /// Damages the head of a table's first page: past reading, or so that only a check of the pages shows it.
    void SpoilTable(const QString& table, bool isReadable) const
    {
        MakeSound();
        QByteArray bytes = sound;
        constexpr int pageSize = 4096;
        const QString root = "select rootpage from sqlite_schema where name = '" + table + "'";
        const int page = (Answer(qPrintable(root)).toInt() - 1) * pageSize;
        constexpr int fragmentedBytes = 7;
        if (isReadable)
            bytes[page + fragmentedBytes] = 5;
        else
            bytes.replace(page, fragmentedBytes, QByteArray(fragmentedBytes, '\x7f'));
        Write(File(), bytes);
    }

    /// What the command says of remarks and faults.
    static QStringList Findings(const CommandRun& run)
    {
        return run.output.split('\n').filter(QRegularExpression("^  (ERREUR|Remarque) : "));
    }
    QStringList Check() const { return Findings(CommandRun({"check", Folder()})); }

    /// Every file below the folder by its name, with its bytes and the time of its last change.
    std::map<QString, std::pair<QByteArray, QDateTime>> Content() const
    {
        std::map<QString, std::pair<QByteArray, QDateTime>> content;
        QDirIterator files(Folder(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QFileInfo file(files.next());
            content[file.filePath()] = {file.isFile() ? BytesOf(file.filePath()) : QByteArray(), file.lastModified()};
        }
        return content;
    }

    const tests::FolderInMemory memory;
    static constexpr const char* AddAct =
        "insert into Actes (num, Date, MM, AA, HH, num_patient, num_presta, montant, flag_R) "
        "values (4, '2008-07-02', 7, 2008, 0, 1, 2, 10, 2)";
    NewPractice practice;
    QByteArray sound;
};

#pragma once

#include "practice/commands/CommandLine.h"
#include "practice/opening/PracticeData.h"
#include "support/Files.h"
#include "support/Printing.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

using tests::BytesOf;

/// Runs the command and captures its output.
struct CommandRun {
    QString output;
    QString errors;
    int code;

    explicit CommandRun(const QStringList& arguments, QString typed = {})
    {
        QTextStream out(&output);
        QTextStream err(&errors);
        QTextStream in(&typed);
        code = practice::RunCommand(arguments, {in, out, err});
    }
};

/// Runs the built command, which looks up other programs relative to itself.
struct BuiltCommand {
    explicit BuiltCommand(const QStringList& arguments)
    {
        QProcess command;
        command.start(PRACTICE_COMMAND, arguments);
        EXPECT_TRUE(command.waitForFinished());
        code = command.exitCode();
        output = QString::fromUtf8(command.readAllStandardOutput());
        errors = QString::fromUtf8(command.readAllStandardError());
    }

    QString output;
    QString errors;
    int code;
};

/// A new practice in a temporary folder.
class NewPractice {
public:
    NewPractice()
    {
        const CommandRun made({"new", Folder(), "--code", "2468", "--letterhead", "Dr D'Angelo", "Médecine générale",
                               "Alger", "Sur rendez-vous"});
        EXPECT_EQ(made.code, 0) << made.errors.toStdString();
    }

    QString Folder() const { return place.filePath("cabinet"); }

    QString File(const QString& name) const { return place.filePath(name); }

    /// Makes a file beside the practice; returns its path.
    QString Write(const QString& name, const QByteArray& text) const
    {
        EXPECT_TRUE(QDir().mkpath(QFileInfo(File(name)).path()));
        tests::WriteFile(File(name), text);
        return File(name);
    }

    CommandRun Import(const QString& table, const QByteArray& text, const QStringList& options = {}) const
    {
        return CommandRun(QStringList{"import", Folder(), table, Write("lignes.csv", text)} + options);
    }

    /// The first field of the first row that a statement gives.
    dao::Value Ask(const QString& statement) const
    {
        const practice::PracticeData data(Folder());
        return data.Database().OpenRecordset(statement).Fields(0).Get();
    }

    int Count(const QString& condition) const
    {
        const practice::PracticeData data(Folder());
        return data.Database().OpenRecordset("select count(num) as S1 from " + condition)["S1"].Long();
    }

private:
    QTemporaryDir place;
};

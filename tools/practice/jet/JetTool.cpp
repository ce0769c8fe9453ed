#include "practice/jet/JetTool.h"

#include "platform/basic/RuntimeError.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>

namespace practice {
namespace {

constexpr int PatienceMs = 30'000; ///< for the next output, or the end
constexpr qsizetype MostMessageBytes = qsizetype{64} << 10;

/// The user's settings must change neither the encoding nor the decimal point of the output.
QProcessEnvironment PlainEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL", "C.UTF-8");
    for (const char* setting : {"MDBICONV", "MDBOPTS", "MDBPATH"})
        environment.remove(setting);
    return environment;
}

/// Reads all output. False if the process had to be stopped.
bool ReadOutput(QProcess& process, qint64 mostBytes, QByteArray& output)
{
    while (output.size() <= mostBytes && process.waitForReadyRead(PatienceMs))
        output += process.readAllStandardOutput();
    if (output.size() <= mostBytes && (process.state() == QProcess::NotRunning || process.waitForFinished(PatienceMs)))
        return true;
    process.kill();
    process.waitForFinished();
    return false;
}

} // namespace

JetToolRun RunJetTool(const QString& program, const QStringList& arguments, qint64 mostBytes)
{
    QProcess process;
    process.setProcessEnvironment(PlainEnvironment());
    process.setWorkingDirectory(QDir::rootPath());
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments);
    if (!process.waitForStarted())
        throw basic::RuntimeError::Described(basic::Error::FileNotFound,
                                             QString("La commande %1 manque : une ancienne base se lit avec le paquet "
                                                     "mdbtools, sous Linux (sudo apt install mdbtools).")
                                                 .arg(program));
    QByteArray messages;
    QObject::connect(&process, &QProcess::readyReadStandardError, &process, [&] {
        messages += process.readAllStandardError();
        if (messages.size() > MostMessageBytes)
            process.kill();
    });
    JetToolRun run;
    const bool hasEnded = ReadOutput(process, mostBytes, run.output);

    // Some failures are only messages: the rows of a page that is missing are left out, and the program ends as usual.
    static const QRegularExpression failure("error|warning|unable|beyond EOF",
                                            QRegularExpression::CaseInsensitiveOption);
    constexpr int shownCharacters = 200;
    const QString text = QString::fromUtf8(messages).simplified();
    if (!hasEnded)
        run.trouble = program + " a dû être arrêté";
    else if (process.exitStatus() == QProcess::CrashExit)
        run.trouble = program + " s'est arrêté brutalement";
    else if (process.exitCode() != 0 || failure.match(text).hasMatch())
        run.trouble = program + " s'en plaint : « " + text.left(shownCharacters) + " »";
    return run;
}

} // namespace practice

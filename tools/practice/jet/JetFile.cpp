#include "practice/jet/JetFile.h"

#include "data/OldDatabase.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/FileWork.h"
#include "platform/host/SystemErrors.h"
#include "platform/store/Sqlite.h"
#include "practice/jet/JetTool.h"
#include "practice/output/Progress.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QThread>
#include <QtEndian>
#include <algorithm>
#include <optional>

namespace practice {
namespace {

using basic::Error;
using basic::RuntimeError;

constexpr qsizetype CopyBlock = qsizetype{1} << 20;

/// `import` takes dates with midnight, and times with the day that stands for none.
const QStringList ExportOptions{"-D", "%Y-%m-%d %H:%M:%S", "-T", "%Y-%m-%d %H:%M:%S", "-b", "strip"};

/// What mdb-export 1.0.0 writes for a date before 1900.
constexpr QLatin1String LostDate("1900-01-00 00:00:00");

/// The number of the last page that a file has in use, from 1, by the map in its second page: a type, the number of the
/// first page, and a bit for each, set if it is free. 0 for a large file, whose map is in other pages.
qint64 PagesInUse(const QByteArray& page)
{
    constexpr qsizetype mapPlace = 14;
    constexpr int placeBits = 0x1FFF;
    constexpr qsizetype headBytes = 5;
    constexpr qint64 bitsOfByte = 8;
    if (page.size() < mapPlace + 2)
        return 0;
    const qsizetype map = qFromLittleEndian<quint16>(page.constData() + mapPlace) & placeBits;
    if (map + headBytes > page.size() || page[map] != 0)
        return 0;
    const QByteArray free = page.sliced(map + headBytes);
    qint64 last = free.size() * bitsOfByte;
    while (last > 0 &&
           (static_cast<unsigned char>(free[(last - 1) / bitsOfByte]) >> ((last - 1) % bitsOfByte) & 1U) != 0)
        --last;
    return qFromLittleEndian<quint32>(page.constData() + map + 1) + last;
}

/// Empties the cells of lost dates and lists their fields.
void NoteLostDates(CsvRow& row, const QStringList& fields)
{
    for (qsizetype column = 0; column < std::min(row.cells.size(), fields.size()); ++column) {
        if (row.cells[column] != LostDate)
            continue;
        row.cells[column].clear();
        row.lostDates << fields[column];
    }
}

} // namespace

JetFile::JetFile(const QString& path) : name(QFileInfo(path).fileName()), copy(QDir::tempPath() + "/practice-XXXXXX")
{
    const QFileInfo file(path);
    if (!file.exists())
        throw RuntimeError::Described(Error::FileNotFound, QString("Le fichier « %1 » est introuvable.").arg(path));
    if (!file.isFile())
        throw RuntimeError::Described(Error::PathAccess, QString("« %1 » n'est pas un fichier ordinaire.").arg(path));
    if (!copy.open())
        throw RuntimeError::Described(Error::PathAccess,
                                      QString("« %1 » ne peut pas être copié : %2").arg(path, copy.errorString()));
    TakeCopy(path);
    RequireWholePages();
    tables = QString::fromUtf8(Run("mdb-tables", {"-1"}, {})).split('\n', Qt::SkipEmptyParts);
}

void JetFile::TakeCopy(const QString& path)
{
    constexpr int mostCopies = 10;
    for (int copies = 1; !CopyOnce(path); ++copies) {
        if (copies == mostCopies)
            RaiseChanging(path);
    }
}

/// False if the file has changed meanwhile.
bool JetFile::CopyOnce(const QString& path)
{
    const host::FileIdentity before = host::IdentityOf(path);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw RuntimeError::Described(Error::PathAccess,
                                      QString("« %1 » ne peut pas être lu : %2").arg(path, file.errorString()));
    bool isWritten = copy.resize(0) && copy.seek(0);
    while (isWritten && !file.atEnd()) {
        const QByteArray block = file.read(CopyBlock);
        if (block.isEmpty())
            break;
        isWritten = copy.write(block) == block.size();
    }
    if (!isWritten || !copy.flush())
        host::RaiseDiskFull(QDir::tempPath());
    if (file.error() != QFileDevice::NoError)
        throw RuntimeError::Described(Error::PathAccess,
                                      QString("« %1 » ne peut pas être lu : %2").arg(path, file.errorString()));
    // A copy may fit between two writes of another program.
    constexpr qint64 nanosecondsPerMs = 1'000'000;
    constexpr qint64 recentMs = 1000;
    constexpr unsigned long pauseMs = 300;
    if (QDateTime::currentMSecsSinceEpoch() - before.modified / nanosecondsPerMs < recentMs)
        QThread::msleep(pauseMs);
    return before == host::IdentityOf(path);
}

void JetFile::RequireWholePages()
{
    constexpr qsizetype versionPlace = 20;
    constexpr qint64 firstVersionPage = 2048;
    constexpr qint64 page = 4096;
    const QByteArray head = copy.seek(0) ? copy.read(data::OldDatabaseHead) : QByteArray();
    if (!data::IsOldDatabase(head))
        throw RuntimeError::Described(Error::UnrecognizedFormat,
                                      QString("« %1 » n'est pas une base de l'ancien format.").arg(name));
    if (copy.size() % (head[versionPlace] == 0 ? firstVersionPage : page) != 0)
        RaiseDamaged("sa dernière page est incomplète");
    if (head[versionPlace] != 0 && copy.size() < page * PagesInUse(copy.seek(page) ? copy.read(page) : QByteArray()))
        RaiseDamaged("il lui manque des pages");
}

QString JetFile::NameOf(const QString& table) const
{
    for (const QString& each : tables) {
        if (each.compare(table, Qt::CaseInsensitive) == 0)
            return each;
    }
    throw RuntimeError::Described(Error::UnknownTable, QString("La table %1 manque dans « %2 ».").arg(table, name));
}

void JetFile::Read(const QString& table, const CsvReceiver& take) const
{
    const QString itsName = NameOf(table);
    std::optional<Progress> progress(std::in_place, QString("Lecture de %1").arg(itsName));
    QByteArray text = Run("mdb-export", ExportOptions, {itsName});
    const qint64 counted = Run("mdb-count", {}, {itsName}).trimmed().toLongLong();
    progress.reset();

    QBuffer buffer(&text);
    buffer.open(QIODevice::ReadOnly);
    QStringList fields;
    qint64 rows = -1; // the first names the fields
    const auto takeRow = [&](CsvRow& row) {
        row.line = ++rows;
        if (rows == 0)
            fields = row.cells;
        else
            NoteLostDates(row, fields);
        take(row);
    };
    try {
        if (ReadCsv(buffer, takeRow) != CsvEncoding::Utf8)
            RaiseDamaged(QString("des textes de %1 sont illisibles").arg(itsName));
    } catch (const RuntimeError& error) {
        if (error.Code() != Error::BadArgument)
            throw;
        RaiseDamaged(QString("%1 ne se lit pas en entier (%2)").arg(itsName, error.Description()));
    }
    if (rows < counted)
        RaiseDamaged(
            QString("%1 doit avoir %2 lignes, %3 se lisent").arg(itsName).arg(counted).arg(std::max(rows, 0LL)));
}

QByteArray JetFile::Run(const QString& program, const QStringList& options, const QStringList& names) const
{
    // Text grows by its quotes, and a date of 8 bytes has 19 characters.
    const qint64 mostBytes = 16 * copy.size() + CopyBlock;
    const QString path = QString("/proc/%1/fd/%2").arg(QCoreApplication::applicationPid()).arg(copy.handle());
    const JetToolRun run = RunJetTool(program, options + QStringList(path) + names, mostBytes);
    if (!run.trouble.isEmpty())
        RaiseDamaged(run.trouble);
    return run.output;
}

void JetFile::RaiseDamaged(const QString& reason) const
{
    throw RuntimeError::Described(Error::DamagedDatabase, QString("« %1 » est abîmé : %2.").arg(name, reason));
}

} // namespace practice

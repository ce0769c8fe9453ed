#include "practice/output/ReplaceableFile.h"

#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>

namespace practice {
namespace {

/// What decides of a file's kind, by its first bytes.
QByteArray HeadOf(const QString& path)
{
    constexpr qint64 headBytes = 4096;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(headBytes) : QByteArray();
}

/// A text whose first line has several cells. The first line of a template is a comment, a title or a key.
bool IsCsv(const QByteArray& head)
{
    const bool isText = std::ranges::none_of(head, [](char byte) {
        return static_cast<unsigned char>(byte) < ' ' && !QByteArrayView("\t\r\n").contains(byte);
    });
    static const QRegularExpression ofTemplate(R"(^(#|\[|(?!sep=.$)[\w."-]+\s*=))",
                                               QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression delimiter("[,;\t]");
    QString text = QString::fromUtf8(head);
    if (text.startsWith(QChar::ByteOrderMark))
        text.remove(0, 1);
    const QString line = text.trimmed().section('\n', 0, 0).trimmed();
    return isText && delimiter.match(line).hasMatch() && !ofTemplate.match(line).hasMatch();
}

bool IsOfKind(const QString& path, OutputKind kind)
{
    const QString ending = kind == OutputKind::Pdf ? ".pdf" : ".csv";
    if (!path.endsWith(ending, Qt::CaseInsensitive))
        return false;
    const QByteArray head = HeadOf(path);
    return kind == OutputKind::Pdf ? head.startsWith("%PDF-") : IsCsv(head);
}

[[noreturn]] void Refuse(const QString& reason)
{
    throw basic::RuntimeError::Described(basic::Error::FileExists, reason);
}

} // namespace

QString WhyNotReplaceable(const QString& path, OutputKind kind)
{
    const QFileInfo file(path);
    if (file.isSymLink())
        return QString("« %1 » est un lien : il n'est pas remplacé.").arg(path);
    if (file.isDir())
        return QString("« %1 » est un dossier.").arg(path);
    if (!file.isFile() || !IsOfKind(path, kind))
        return QString("« %1 » existe déjà et n'est pas un fichier %2 : il n'est pas remplacé.")
            .arg(path, kind == OutputKind::Pdf ? "PDF" : "CSV");
    return {};
}

void RequireReplaceable(const QString& path, OutputKind kind)
{
    if (const QString reason = WhyNotReplaceable(path, kind); !reason.isEmpty())
        Refuse(reason);
}

void RequireFreeName(const QString& path)
{
    // Also ZEP_ONE.MDB-wal and ZEP_ONE.MDB.part.
    static const QRegularExpression database(R"(\.mdb($|[-.]))", QRegularExpression::CaseInsensitiveOption);
    const QString name = QFileInfo(path).fileName();
    const auto is = [&name](const QString& other) { return name.compare(other, Qt::CaseInsensitive) == 0; };
    if (database.match(name).hasMatch() || is(data::ConfigurationFile) || is(data::WorkgroupFile) ||
        name.endsWith(".RPT", Qt::CaseInsensitive))
        Refuse(QString("« %1 » est le nom d'un fichier de cabinet : rien n'y est écrit.").arg(path));
}

} // namespace practice

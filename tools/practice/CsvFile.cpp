#include "practice/CsvFile.h"

#include "platform/basic/RuntimeError.h"

#include <QFile>
#include <QStringDecoder>
#include <csv.h>

namespace practice {
namespace {

using basic::RuntimeError;

/// libcsv's parser, with the line count that it lacks.
class RowReader {
public:
    RowReader(const std::function<void(const CsvRow&)>& receiver, char delimiter) : take(receiver)
    {
        csv_init(&parser, CSV_STRICT | CSV_STRICT_FINI | CSV_APPEND_NULL);
        csv_set_delim(&parser, static_cast<unsigned char>(delimiter));
    }
    ~RowReader() { csv_free(&parser); }
    RowReader(const RowReader&) = delete;
    RowReader& operator=(const RowReader&) = delete;

    void Line(const QByteArray& bytes)
    {
        ++line;
        if (!insideRow)
            row.line = line;
        rowTaken = false;
        const auto length = static_cast<std::size_t>(bytes.size());
        const std::size_t read = csv_parse(&parser, bytes.constData(), length, TakeCell, TakeRow, this);
        Deliver();
        if (read != length)
            throw basic::RuntimeError::Described(
                basic::Error::BadArgument,
                QString("Ligne %1 : guillemets mal placés ; la suite du fichier n'a pas été lue.").arg(line));
        insideRow = !rowTaken && (insideRow || !bytes.trimmed().isEmpty());
    }

    void End()
    {
        if (csv_fini(&parser, TakeCell, TakeRow, this) != 0)
            throw basic::RuntimeError::Described(basic::Error::BadArgument,
                                                 QString("Ligne %1 : guillemets jamais refermés.").arg(row.line));
        Deliver();
    }

private:
    /// Hands on the rows that are complete. Done outside the parser, which is C and mustn't see an exception pass.
    void Deliver()
    {
        if (badText)
            throw basic::RuntimeError::Described(basic::Error::BadArgument,
                                                 QString("Ligne %1 : le texte n'est pas en UTF-8.").arg(row.line));
        for (const CsvRow& complete : finished)
            take(complete);
        finished.clear();
    }

    static void TakeCell(void* cell, std::size_t length, void* reader)
    {
        auto* const self = static_cast<RowReader*>(reader);
        QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        self->row.cells << utf8(QByteArrayView(static_cast<const char*>(cell), static_cast<qsizetype>(length)));
        self->badText = self->badText || utf8.hasError();
    }

    static void TakeRow(int /*lineEnd*/, void* reader)
    {
        auto* const self = static_cast<RowReader*>(reader);
        self->rowTaken = true;
        self->finished << self->row;
        self->row.cells.clear();
    }

    csv_parser parser{};
    const std::function<void(const CsvRow&)>& take;
    CsvRow row;
    QList<CsvRow> finished;
    qint64 line = 0;
    bool insideRow = false;
    bool rowTaken = false;
    bool badText = false;
};

} // namespace

void ReadCsv(const QString& path, const std::function<void(const CsvRow&)>& take)
{
    QFile file(path);
    if (!file.exists())
        throw basic::RuntimeError::Described(basic::Error::FileNotFound,
                                             QString("Le fichier « %1 » est introuvable.").arg(path));
    if (!file.open(QIODevice::ReadOnly))
        throw basic::RuntimeError::Described(
            basic::Error::PathAccess,
            QString("Le fichier « %1 » ne peut pas être lu : %2").arg(path, file.errorString()));

    QByteArray header = file.readLine();
    if (header.startsWith("\xEF\xBB\xBF"))
        header.remove(0, 3);
    RowReader reader(take, header.count(';') > header.count(',') ? ';' : ',');
    for (QByteArray line = header; !line.isEmpty(); line = file.readLine())
        reader.Line(line);
    reader.End();
}

} // namespace practice

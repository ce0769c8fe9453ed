#include "practice/import/CsvFile.h"

#include "data/ConfigurationFile.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/FileWork.h"
#include "practice/output/Progress.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <algorithm>
#include <csv.h>
#include <vector>

namespace practice {
namespace {

using basic::RuntimeError;

[[noreturn]] void RaiseAtLine(qint64 line, const char* reason)
{
    throw RuntimeError::Described(basic::Error::BadArgument, QString("Ligne %1 : %2").arg(line).arg(reason));
}

/// Decodes cells. `isGood` turns false at bytes that are invalid in the encoding.
class CellDecoder {
public:
    explicit CellDecoder(CsvEncoding fileEncoding) : encoding(fileEncoding) {}

    QString Decode(QByteArrayView bytes)
    {
        if (encoding == CsvEncoding::Windows1252)
            return DecodeWindows1252(bytes);
        const QString text = decoder(bytes);
        isGood = isGood && !decoder.hasError();
        return text;
    }

    const char* WhyBad() const
    {
        return encoding == CsvEncoding::Utf8 ? "le texte n'est pas en UTF-8."
                                             : "le texte n'est ni en UTF-8 ni en Windows-1252.";
    }

    bool isGood = true;

private:
    QString DecodeWindows1252(QByteArrayView bytes)
    {
        constexpr auto undefined = "\x81\x8D\x8F\x90\x9D";
        isGood = isGood && std::ranges::find_first_of(bytes, QByteArrayView(undefined)) == bytes.end();
        QString text;
        for (const char byte : bytes)
            text += data::ConfigCharacter(static_cast<unsigned char>(byte));
        return text;
    }

    CsvEncoding encoding;
    QStringDecoder decoder{QStringDecoder::Utf8, QStringDecoder::Flag::Stateless};
};

/// libcsv's parser, with line numbers.
class RowReader {
public:
    RowReader(const CsvReceiver& receiver, char delimiter, CsvEncoding encoding) : decoder(encoding), take(receiver)
    {
        csv_init(&parser, CSV_STRICT | CSV_STRICT_FINI | CSV_APPEND_NULL);
        csv_set_delim(&parser, static_cast<unsigned char>(delimiter));
    }
    ~RowReader() { csv_free(&parser); }
    RowReader(const RowReader&) = delete;
    RowReader& operator=(const RowReader&) = delete;

    void Line(QByteArrayView bytes, qint64 line)
    {
        if (!insideRow) {
            row.line = line;
            rowBytes = 0;
        }
        rowBytes += bytes.size();
        if (rowBytes > LongestCsvRow)
            RaiseAtLine(row.line, "plus d'un mégaoctet jusqu'au prochain guillemet.");
        rowTaken = false;
        const auto length = static_cast<std::size_t>(bytes.size());
        const std::size_t read = csv_parse(&parser, bytes.data(), length, TakeCell, TakeRow, this);
        Deliver();
        if (read != length)
            RaiseAtLine(line, "guillemets mal placés ; la suite du fichier n'a pas été lue.");
        insideRow = !rowTaken && (insideRow || !bytes.trimmed().isEmpty());
    }

    void End()
    {
        if (csv_fini(&parser, TakeCell, TakeRow, this) != 0)
            RaiseAtLine(row.line, "guillemets jamais refermés.");
        Deliver();
    }

private:
    /// Passes on complete rows. Called outside the parser: an exception must not pass through C code.
    void Deliver()
    {
        if (!decoder.isGood)
            RaiseAtLine(row.line, decoder.WhyBad());
        for (CsvRow& complete : finished)
            take(complete);
        finished.clear();
    }

    static void TakeCell(void* cell, std::size_t length, void* reader)
    {
        auto* const self = static_cast<RowReader*>(reader);
        self->row.cells << self->decoder.Decode(
            QByteArrayView(static_cast<const char*>(cell), static_cast<qsizetype>(length)));
    }

    static void TakeRow(int /*lineEnd*/, void* reader)
    {
        auto* const self = static_cast<RowReader*>(reader);
        self->rowTaken = true;
        self->finished.push_back(std::move(self->row));
        self->row = {.line = self->finished.back().line, .cells = {}, .lostDates = {}};
        self->row.cells.reserve(self->finished.back().cells.size());
    }

    csv_parser parser{};
    CellDecoder decoder;
    const CsvReceiver& take;
    CsvRow row;
    std::vector<CsvRow> finished;
    qsizetype rowBytes = 0;
    bool insideRow = false;
    bool rowTaken = false;
};

QByteArrayView WithoutMark(QByteArrayView firstLine)
{
    constexpr QByteArrayView mark = "\xEF\xBB\xBF";
    if (firstLine.startsWith("\xFF\xFE") || firstLine.startsWith("\xFE\xFF"))
        RaiseAtLine(1, "le fichier est en UTF-16 ; enregistrez-le en CSV UTF-8.");
    return firstLine.startsWith(mark) ? firstLine.sliced(mark.size()) : firstLine;
}

/// The delimiter named by a line "sep=;"; 0 for any other line.
char NamedDelimiter(QByteArrayView line)
{
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    constexpr QByteArrayView lead = "sep=";
    const bool names =
        line.size() == lead.size() + 1 && line.first(lead.size()).compare(lead, Qt::CaseInsensitive) == 0;
    return names ? line.back() : '\0';
}

char UsualDelimiter(QByteArrayView header)
{
    constexpr char delimiters[] = {',', ';', '\t'};
    return *std::ranges::max_element(delimiters, {}, [header](char each) { return std::ranges::count(header, each); });
}

} // namespace

CsvEncoding ReadCsv(QIODevice& file, const CsvReceiver& take)
{
    Progress progress("Lecture", Progress::IsShown() ? CountLines(file) : 0);
    const CsvEncoding encoding = EncodingOf(file);
    CsvLines lines(file);
    if (!lines.Next())
        return encoding;
    QByteArrayView line = WithoutMark(lines.Line());
    char delimiter = NamedDelimiter(line);
    if (delimiter == '\0')
        delimiter = UsualDelimiter(line);
    else if (QByteArrayView(",;\t|").indexOf(delimiter) < 0)
        RaiseAtLine(1, "le séparateur doit être « , », « ; », « | » ou la tabulation.");
    else
        line = lines.Next() ? lines.Line() : QByteArrayView();

    RowReader reader(take, delimiter, encoding);
    while (!line.isEmpty()) {
        progress.Advance();
        reader.Line(line, lines.Number());
        line = lines.Next() ? lines.Line() : QByteArrayView();
    }
    reader.End();
    return encoding;
}

CsvEncoding ReadCsv(const QString& path, const CsvReceiver& take)
{
    const host::FileIdentity before = host::IdentityOf(path);
    QFile file(path);
    if (!file.exists())
        throw RuntimeError::Described(basic::Error::FileNotFound,
                                      QString("Le fichier « %1 » est introuvable.").arg(path));
    if (!QFileInfo(path).isFile())
        throw RuntimeError::Described(basic::Error::PathAccess,
                                      QString("« %1 » n'est pas un fichier ordinaire.").arg(path));
    if (!file.open(QIODevice::ReadOnly))
        throw RuntimeError::Described(
            basic::Error::PathAccess,
            QString("Le fichier « %1 » ne peut pas être lu : %2").arg(path, file.errorString()));
    const auto requireUnchanged = [&] {
        if (host::IdentityOf(path) != before)
            RaiseChanging(path);
    };
    CsvEncoding encoding{};
    try {
        encoding = ReadCsv(file, take);
    } catch (const RuntimeError&) {
        requireUnchanged(); // a row that was cut off by a change isn't the file's fault
        throw;
    }
    if (file.error() != QFileDevice::NoError)
        throw RuntimeError::Described(
            basic::Error::PathAccess,
            QString("Le fichier « %1 » ne peut pas être lu : %2").arg(path, file.errorString()));
    requireUnchanged();
    return encoding;
}

void RaiseChanging(const QString& path)
{
    throw RuntimeError::Described(
        basic::Error::PermissionDenied,
        QString("« %1 » change pendant sa lecture : recommencez quand l'autre programme a fini.").arg(path));
}

} // namespace practice

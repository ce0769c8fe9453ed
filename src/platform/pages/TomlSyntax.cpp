#include "platform/pages/TomlSyntax.h"

#include <QRegularExpression>
#include <QStringDecoder>
#include <string_view>

namespace pages {
namespace {

/// Scans a text for unclosed quotes and brackets. Lines count from 1; 0 means none.
class DelimiterScanner {
public:
    explicit DelimiterScanner(const QByteArray& text) : rest(text.constData(), static_cast<std::size_t>(text.size()))
    {
        while (!rest.empty())
            Step();
        if (depth > 0 && bracket == 0)
            bracket = bracketOpened;
    }

    int TooDeep() const { return tooDeep; }
    int Quote() const { return quote; }             ///< of an unclosed single-line text
    int TripleQuote() const { return tripleQuote; } ///< of an unclosed multi-line text
    int Bracket() const { return bracket; }         ///< of an unclosed list followed by a heading

private:
    void Step()
    {
        switch (rest.front()) {
        case '\n':
            ++line;
            dots = 0;
            Advance(1);
            if (depth > 0 && bracket == 0 && StartsWithHeading())
                bracket = bracketOpened;
            return;
        case '#':
            return Advance(std::min(rest.find('\n'), rest.size()));
        case '"':
        case '\'':
            return rest.starts_with(R"(""")") || rest.starts_with("'''") ? SkipTripleQuoted() : SkipQuoted();
        case '[':
        case '{':
            if (++depth == 1)
                bracketOpened = line;
            break;
        case ']':
        case '}':
            depth = std::max(depth - 1, 0);
            break;
        case '.':
            ++dots;
            break;
        default:
            break;
        }
        if (tooDeep == 0 && (depth > DeepestNesting || dots >= DeepestNesting))
            tooDeep = line;
        if (std::string_view("=,[{").find(rest.front()) != std::string_view::npos)
            dots = 0;
        Advance(1);
    }

    /// The position after the closing `delimiter` of a text, or npos.
    std::size_t EndOfQuoted(std::string_view delimiter) const
    {
        const bool hasEscapes = delimiter.front() == '"';
        for (std::size_t at = delimiter.size(); at < rest.size(); ++at) {
            if (hasEscapes && rest[at] == '\\')
                ++at;
            else if (rest.substr(at).starts_with(delimiter))
                return at + delimiter.size();
            else if (delimiter.size() == 1 && rest[at] == '\n')
                break;
        }
        return std::string_view::npos;
    }

    void SkipQuoted()
    {
        const std::size_t end = EndOfQuoted(rest.substr(0, 1));
        if (end == std::string_view::npos && quote == 0)
            quote = line;
        Advance(end == std::string_view::npos ? 1 : end); // brackets after an unclosed quote count
    }

    void SkipTripleQuoted()
    {
        const char delimiter = rest.front();
        std::size_t end = EndOfQuoted(rest.substr(0, 3));
        if (end == std::string_view::npos) {
            tripleQuote = line;
            return Advance(3);
        }
        for (int more = 0; more < 2 && end < rest.size() && rest[end] == delimiter; ++more)
            ++end; // the text may end with one or two quotes of its own
        line += static_cast<int>(std::ranges::count(rest.substr(0, end), '\n'));
        Advance(end);
    }

    bool StartsWithHeading() const
    {
        static const QRegularExpression heading(R"(^\s*\[\[?\w+\]\]?\s*(#|$))");
        const std::string_view next = rest.substr(0, rest.find('\n'));
        return heading.match(QString::fromUtf8(next.data(), static_cast<qsizetype>(next.size()))).hasMatch();
    }

    void Advance(std::size_t count) { rest.remove_prefix(count); }

    std::string_view rest;
    int line = 1;
    int depth = 0;
    int dots = 0; ///< in the current name
    int tooDeep = 0;
    int quote = 0;
    int tripleQuote = 0;
    int bracket = 0;
    int bracketOpened = 0;
};

/// The first line that isn't UTF-8, from 1; 0 when all are.
int LineOfForeignEncoding(const QByteArray& text)
{
    int number = 0;
    for (const QByteArray& line : text.split('\n')) {
        ++number;
        QStringDecoder utf8(QStringDecoder::Utf8);
        const QString decoded = utf8.decode(line);
        if (utf8.hasError() || decoded.contains(QChar::ReplacementCharacter))
            return number;
    }
    return 0;
}

/// Whether the key repeats an earlier one of the same table, or the heading an earlier heading.
bool IsRepeated(const QStringList& lines, int index, const QRegularExpression& same, bool withinTable)
{
    for (int earlier = index - 1; earlier >= 0; --earlier) {
        if (withinTable && lines[earlier].trimmed().startsWith('['))
            return false;
        if (same.match(lines[earlier]).hasMatch())
            return true;
    }
    return false;
}

QString ExplainHeading(const QStringList& lines, int index)
{
    const QString line = lines[index].trimmed();
    static const QRegularExpression heading(R"(^(\[\w+\]|\[\[\w+\]\])\s*(#.*)?$)");
    const auto match = heading.match(line);
    if (!match.hasMatch())
        return QStringLiteral("titre mal écrit « %1 » : il s'écrit [rows] ou [[column]]").arg(line.left(40));
    const QString name = match.captured(1).remove('[').remove(']');
    const QRegularExpression same(R"(^\s*\[\[?)" + name + R"(\]\]?\s*(#.*)?$)");
    if (IsRepeated(lines, index, same, false))
        return QStringLiteral("« %1 » est déjà plus haut").arg(match.captured(1));
    return {};
}

QString ExplainValue(const QString& value)
{
    static const QRegularExpression decimalComma(R"(^[-+]?\d+,\d+\s*(#.*)?$)");
    static const QRegularExpression word(R"(^[^\s"'\[{#\d+-])");
    static const QRegularExpression yesNo(R"(^(vrai|oui|faux|non|yes|no)\b)",
                                          QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression textAndMore(R"re(^("([^"\\]|\\.)*"|'[^']*')\s*[^\s#])re");
    static const QRegularExpression badEscape(R"re(^"[^"]*\\(?![btnfr"\\uU]))re");
    if (value.isEmpty() || value.startsWith('#'))
        return QStringLiteral("la valeur manque après « = »");
    if (decimalComma.match(value).hasMatch())
        return QStringLiteral("un nombre s'écrit avec un point : %1").arg(QString(value).replace(',', '.').left(20));
    if (QStringLiteral("«“”„‘’").contains(value.front()))
        return QStringLiteral("un texte se met entre guillemets droits \"…\"");
    if (yesNo.match(value).hasMatch())
        return QStringLiteral("oui s'écrit true, non s'écrit false");
    if (word.match(value).hasMatch())
        return QStringLiteral("un texte se met entre guillemets : \"%1\"").arg(value.left(40));
    if (badEscape.match(value).hasMatch())
        return QStringLiteral("« \\ » s'écrit « \\\\ » dans un texte");
    if (textAndMore.match(value).hasMatch())
        return QStringLiteral("il y a quelque chose de trop après le texte");
    if (value.startsWith('['))
        return QStringLiteral("liste mal écrite : [\"un\", \"deux\"]");
    return {};
}

QString ExplainKey(const QStringList& lines, int index)
{
    static const QRegularExpression plainKey(R"(^\s*[A-Za-z0-9_-]+\s*$)");
    const qsizetype equals = lines[index].indexOf('=');
    if (lines[index].trimmed().isEmpty())
        return {};
    if (equals < 0)
        return QStringLiteral("« = » manque : une ligne s'écrit clé = valeur");
    const QString key = lines[index].left(equals);
    if (!plainKey.match(key).hasMatch())
        return QStringLiteral("clé mal écrite « %1 »").arg(key.trimmed().left(40));
    const QRegularExpression same("^\\s*" + key.trimmed() + "\\s*=");
    if (IsRepeated(lines, index, same, true))
        return QStringLiteral("« %1 » est déjà plus haut").arg(key.trimmed());
    return ExplainValue(lines[index].sliced(equals + 1).trimmed());
}

} // namespace

std::optional<Fault> FindUnreadableText(const QByteArray& text)
{
    if (text.startsWith("\xff\xfe") || text.startsWith("\xfe\xff"))
        return Fault{1, QStringLiteral("le fichier est en UTF-16 : l'enregistrer en UTF-8")};
    if (const int line = LineOfForeignEncoding(text); line > 0)
        return Fault{line, QStringLiteral("cette ligne n'est pas en UTF-8 : enregistrer le fichier en UTF-8")};
    if (const int line = DelimiterScanner(text).TooDeep(); line > 0)
        return Fault{line, QStringLiteral("plus de %1 niveaux l'un dans l'autre").arg(DeepestNesting)};
    return {};
}

Fault ExplainSyntaxError(const QByteArray& text, int line)
{
    const DelimiterScanner ends(text);
    if (ends.TripleQuote() > 0)
        return {ends.TripleQuote(), QStringLiteral("les trois guillemets ouverts ici ne sont fermés nulle part")};
    if (ends.Quote() > 0 && ends.Quote() <= line)
        return {ends.Quote(), QStringLiteral("un guillemet ouvert n'est pas fermé sur cette ligne")};

    const QStringList lines = QString::fromUtf8(text).split('\n');
    const auto startsWithBracket = [&](int number) { return lines.value(number - 1).trimmed().startsWith('['); };
    if (ends.Bracket() > 0 && ends.Bracket() <= line && !startsWithBracket(ends.Bracket()))
        return {ends.Bracket(), QStringLiteral("un crochet ouvert ici n'est fermé nulle part")};
    const int index = std::clamp(line, 1, static_cast<int>(lines.size())) - 1;
    const QString reason = startsWithBracket(index + 1) ? ExplainHeading(lines, index) : ExplainKey(lines, index);
    return {line, reason.isEmpty() ? QStringLiteral("cette ligne n'est pas écrite comme il faut") : reason};
}

} // namespace pages

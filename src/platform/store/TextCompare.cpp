#include "platform/store/TextCompare.h"

#include "platform/store/Sqlite.h"

#include <QChar>
#include <QRegularExpression>
#include <QStringList>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string_view>

namespace store {
namespace {

/// Sort keys of a letter: first the base letter, then the accented letter.
struct Letter {
    char16_t base = 0;
    char16_t folded = 0;
};

Letter MakeLetter(char16_t character)
{
    const QChar folded = QChar(character).toCaseFolded();
    QChar base = folded;
    while (base.decompositionTag() == QChar::Canonical)
        base = base.decomposition().front();
    return {base.unicode(), folded.unicode()};
}

Letter LetterOf(QChar character)
{
    // Covers Latin with accents, Greek, Cyrillic, Hebrew and Arabic.
    static const std::array<Letter, 0x700> known = [] {
        std::array<Letter, 0x700> letters;
        for (std::size_t each = 0; each < letters.size(); ++each)
            letters[each] = MakeLetter(static_cast<char16_t>(each));
        return letters;
    }();
    const char16_t unicode = character.unicode();
    return unicode < known.size() ? known[unicode] : MakeLetter(unicode);
}

/// Translates one pattern element at `at` into a regular expression; advances `at`.
QString ExpressionAt(const QString& pattern, qsizetype& at)
{
    const QChar first = pattern[at++];
    if (first == u'?')
        return ".";
    if (first == u'#')
        return "[0-9]";
    const qsizetype end = first == u'[' ? pattern.indexOf(u']', at) : -1;
    if (end < 0)
        return QRegularExpression::escape(QStringView(&first, 1));
    QString list = pattern.sliced(at, end - at);
    at = end + 1;
    const bool excludes = list.size() > 1 && list.startsWith(u'!');
    if (excludes)
        list.remove(0, 1);
    if (list.isEmpty()) // matches nothing
        return {};
    list.replace(QRegularExpression(R"(([\\^\[]))"), R"(\\1)");
    return (excludes ? "[^" : "[") + list + "]";
}

QRegularExpression ExpressionOf(const QString& pattern)
{
    // Each "*" and the text up to the next one match at the first possible position, without backtracking: no other
    // position could do better, and patterns with many "*" stay fast. Only the last part must reach the end.
    QStringList runs{QString()};
    for (qsizetype at = 0; at < pattern.size();) {
        if (pattern[at] == u'*') {
            runs << QString();
            ++at;
        } else {
            runs.last() += ExpressionAt(pattern, at);
        }
    }
    QString expression = "\\A" + runs.takeFirst();
    while (runs.size() > 1)
        expression += "(?>.*?" + runs.takeFirst() + ")";
    if (!runs.isEmpty())
        expression += ".*" + runs.first();
    return QRegularExpression(expression + "\\z", QRegularExpression::CaseInsensitiveOption |
                                                      QRegularExpression::UseUnicodePropertiesOption |
                                                      QRegularExpression::DotMatchesEverythingOption);
}

QString TextArgument(sqlite3_value* value)
{
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_value_text(value)), sqlite3_value_bytes(value));
}

bool IsAscii(char byte)
{
    return static_cast<signed char>(byte) >= 0;
}

char LowerCase(char ascii)
{
    return ascii >= 'A' && ascii <= 'Z' ? char(ascii - 'A' + 'a') : ascii;
}

/// Compares texts that differ before their first accented letter, as most do, without decoding them.
std::optional<int> CompareAscii(std::string_view left, std::string_view right)
{
    for (std::size_t i = 0; i < std::min(left.size(), right.size()); ++i) {
        if (!IsAscii(left[i]) || !IsAscii(right[i]))
            return std::nullopt;
        if (LowerCase(left[i]) != LowerCase(right[i]))
            return LowerCase(left[i]) < LowerCase(right[i]) ? -1 : 1;
    }
    return static_cast<int>(left.size() > right.size()) - static_cast<int>(left.size() < right.size());
}

int Collate(void*, int leftLength, const void* left, int rightLength, const void* right)
{
    const std::string_view leftText(static_cast<const char*>(left), static_cast<std::size_t>(leftLength));
    const std::string_view rightText(static_cast<const char*>(right), static_cast<std::size_t>(rightLength));
    if (const auto order = CompareAscii(leftText, rightText))
        return *order;
    return CompareTexts(QString::fromUtf8(leftText), QString::fromUtf8(rightText));
}

/// A compiled "like" pattern.
class Pattern {
public:
    explicit Pattern(const QString& pattern) : expression(ExpressionOf(pattern))
    {
        static const QRegularExpression plainStart(R"(\A[\w ']*)");
        start = plainStart.match(pattern).captured().toUtf8();
        if (const auto firstOther = std::ranges::find_if_not(start, IsAscii); firstOther != start.cend())
            start.truncate(firstOther - start.cbegin());
        isStartAlone = pattern.size() == start.size() + 1 && pattern.endsWith(u'*');
    }

    bool Matches(sqlite3_value* text) const
    {
        const Beginning beginning = BeginningOf(text);
        if (beginning != Beginning::Unclear && (isStartAlone || beginning == Beginning::Other))
            return beginning == Beginning::Same;
        return expression.isValid() && expression.match(TextArgument(text)).hasMatch();
    }

private:
    enum class Beginning : quint8 { Same, Other, Unclear };

    /// Quick test: most rows differ in their first letters, which are plain.
    Beginning BeginningOf(sqlite3_value* text) const
    {
        const auto* const bytes = reinterpret_cast<const char*>(sqlite3_value_text(text));
        for (qsizetype at = 0; at < start.size(); ++at) {
            if (!IsAscii(bytes[at]))
                return Beginning::Unclear;
            if (LowerCase(bytes[at]) != LowerCase(start[at]))
                return Beginning::Other;
        }
        return Beginning::Same;
    }

    QRegularExpression expression;
    QByteArray start;          ///< plain ASCII prefix of the pattern
    bool isStartAlone = false; ///< the pattern is that prefix and "*"
};

/// like(pattern, text), as SQLite calls it for "text like pattern".
void Like(sqlite3_context* context, int, sqlite3_value** arguments)
{
    if (sqlite3_value_type(arguments[0]) == SQLITE_NULL || sqlite3_value_type(arguments[1]) == SQLITE_NULL)
        return;
    auto* pattern = static_cast<Pattern*>(sqlite3_get_auxdata(context, 0));
    std::unique_ptr<Pattern> made;
    if (pattern == nullptr) {
        made = std::make_unique<Pattern>(TextArgument(arguments[0]));
        pattern = made.get();
    }
    sqlite3_result_int(context, pattern->Matches(arguments[1]) ? 1 : 0);
    // Cached for the statement's next rows while the pattern is constant.
    if (made)
        sqlite3_set_auxdata(context, 0, made.release(), [](void* kept) { delete static_cast<Pattern*>(kept); });
}

} // namespace

int CompareTexts(QStringView left, QStringView right)
{
    int accents = 0;
    for (qsizetype i = 0; i < std::min(left.size(), right.size()); ++i) {
        const Letter leftLetter = LetterOf(left[i]);
        const Letter rightLetter = LetterOf(right[i]);
        if (leftLetter.base != rightLetter.base)
            return leftLetter.base < rightLetter.base ? -1 : 1;
        if (accents == 0 && leftLetter.folded != rightLetter.folded)
            accents = leftLetter.folded < rightLetter.folded ? -1 : 1;
    }
    if (left.size() != right.size())
        return left.size() < right.size() ? -1 : 1;
    return accents;
}

void DefineTextComparison(sqlite3* database)
{
    Check(database, sqlite3_create_collation_v2(database, TextCollation, SQLITE_UTF8, nullptr, Collate, nullptr));
    constexpr int traits = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    Check(database, sqlite3_create_function(database, "like", 2, traits, nullptr, Like, nullptr, nullptr));
}

} // namespace store

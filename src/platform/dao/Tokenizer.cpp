#include "platform/dao/Tokenizer.h"

#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"

#include <array>
#include <cmath>

namespace dao {
namespace {

constexpr qsizetype shownOfAnError = 60;

enum class Class : quint8 { Other, Blank, Letter, Digit };

constexpr std::array<Class, 128> MakeClasses()
{
    std::array<Class, 128> classes{};
    for (const char16_t blank : {u' ', u'\t', u'\n', u'\r'})
        classes[blank] = Class::Blank;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        classes[digit] = Class::Digit;
    for (char16_t letter = u'a'; letter <= u'z'; ++letter)
        classes[letter] = Class::Letter;
    for (char16_t letter = u'A'; letter <= u'Z'; ++letter)
        classes[letter] = Class::Letter;
    classes['_'] = Class::Letter;
    return classes;
}

constexpr std::array<Class, 128> classes = MakeClasses();

Class ClassOf(char16_t character)
{
    return character < classes.size() ? classes[character] : Class::Other;
}

bool IsPlain(QStringView text)
{
    for (const QChar character : text) {
        if (character.unicode() >= classes.size() || ClassOf(character.unicode()) == Class::Letter)
            return false;
    }
    return true;
}

std::string TextValue(QStringView text)
{
    QByteArray bytes = text.toUtf8();
    // The token carries its quotes doubled; which quote it was tells the character before it.
    const char quote = char((text.data() - 1)->unicode());
    if (bytes.contains(quote))
        bytes.replace(QByteArray(2, quote), QByteArray(1, quote));
    return bytes.toStdString();
}

Datum NumberValue(QStringView text)
{
    constexpr qsizetype surelyWhole = 18;
    qint64 whole = 0;
    bool isWhole = text.size() <= surelyWhole;
    for (qsizetype i = 0; i < text.size() && isWhole; ++i) {
        isWhole = basic::IsDigit(text[i].unicode());
        whole = whole * 10 + (text[i].unicode() - u'0');
    }
    if (isWhole)
        return Datum::Of(whole);
    const double real = text.toDouble();
    if (std::isinf(real))
        RaiseSyntaxError(text);
    return Datum::Of(real);
}

Datum DateValue(QStringView text)
{
    struct Group {
        qsizetype start = 0;
        qsizetype length = 0;
    };
    std::array<Group, 3> groups;
    std::size_t count = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!basic::IsDigit(text[i].unicode()))
            continue;
        if (i == 0 || !basic::IsDigit(text[i - 1].unicode())) {
            if (count == groups.size())
                return {};
            groups[count++].start = i;
        }
        ++groups[count - 1].length;
    }
    if (count != groups.size())
        return {};

    const bool yearFirst = groups[0].length == 4;
    const Group year = groups[yearFirst ? 0 : 2];
    const Group month = groups[yearFirst ? 1 : 0];
    const Group day = groups[yearFirst ? 2 : 1];
    if (year.length != 4 || month.length > 2 || day.length > 2)
        return {};

    std::string iso = "0000-00-00";
    const auto write = [&](const Group& group, std::size_t end) {
        for (qsizetype i = 1; i <= group.length; ++i)
            iso[end - std::size_t(i)] = char(text[group.start + group.length - i].unicode());
    };
    write(year, 4);
    write(month, 7);
    write(day, 10);
    return Datum::Of(std::move(iso));
}

constexpr char16_t MarkOf(Token::Sort sort)
{
    return char16_t(1 + int(sort)); // a control character, which no statement holds outside its literals
}

} // namespace

bool Token::IsSymbol(char16_t symbol) const
{
    return sort == Sort::Symbol && text.size() == 1 && text[0] == QChar(symbol);
}

bool Token::Is(const char* word) const
{
    return sort == Sort::Word && text.compare(QLatin1StringView(word), Qt::CaseInsensitive) == 0;
}

void RaiseSyntaxError(QStringView from)
{
    throw basic::RuntimeError(basic::Error::SyntaxError, from.left(shownOfAnError).toString());
}

Token Tokenizer::Taken(Token::Sort sort, qsizetype start, qsizetype end, qsizetype next)
{
    place = next;
    return {sort, statement.sliced(start, end - start)};
}

Token Tokenizer::Next()
{
    while (place < statement.size() && ClassOf(statement[place].unicode()) == Class::Blank)
        ++place;
    if (place == statement.size())
        return {};

    const char16_t first = statement[place].unicode();
    if (ClassOf(first) == Class::Letter) {
        qsizetype end = place + 1;
        while (end < statement.size() && ClassOf(statement[end].unicode()) >= Class::Letter)
            ++end;
        return Taken(Token::Sort::Word, place, end, end);
    }
    const bool startsFraction =
        first == u'.' && place + 1 < statement.size() && basic::IsDigit(statement[place + 1].unicode());
    if (basic::IsDigit(first) || startsFraction)
        return NumberToken();
    if (first == u'\'' || first == u'"')
        return TextUpTo(first);
    if (first == u'#' || first == u'[') {
        const qsizetype end = statement.indexOf(QChar(first == u'#' ? u'#' : u']'), place + 1);
        if (end < 0 || (first == u'[' && end == place + 1))
            RaiseSyntaxError(statement.sliced(place));
        return Taken(first == u'#' ? Token::Sort::Date : Token::Sort::Name, place + 1, end, end + 1);
    }
    return SymbolToken();
}

Token Tokenizer::TextUpTo(char16_t quote)
{
    qsizetype end = place + 1;
    while (true) {
        end = statement.indexOf(QChar(quote), end);
        if (end < 0)
            RaiseSyntaxError(statement.sliced(place));
        const bool doubled = end + 1 < statement.size() && statement[end + 1] == QChar(quote);
        if (!doubled)
            break;
        end += 2;
    }
    const bool plain = IsPlain(statement.sliced(place + 1, end - place - 1));
    return Taken(plain ? Token::Sort::PlainText : Token::Sort::Text, place + 1, end, end + 1);
}

Token Tokenizer::NumberToken()
{
    const auto at = [&](qsizetype i) { return i < statement.size() ? statement[i].unicode() : u'\0'; };
    qsizetype end = place;
    while (basic::IsDigit(at(end)))
        ++end;
    if (at(end) == u'.') {
        ++end;
        while (basic::IsDigit(at(end)))
            ++end;
    }
    if (at(end) == u'e' || at(end) == u'E') {
        ++end;
        if (at(end) == u'+' || at(end) == u'-')
            ++end;
        if (!basic::IsDigit(at(end)))
            RaiseSyntaxError(statement.sliced(place));
        while (basic::IsDigit(at(end)))
            ++end;
    }
    if (ClassOf(at(end)) == Class::Letter || at(end) == u'.')
        RaiseSyntaxError(statement.sliced(place));
    return Taken(Token::Sort::Number, place, end, end);
}

Token Tokenizer::SymbolToken()
{
    const char16_t first = statement[place].unicode();
    const char16_t second = place + 1 < statement.size() ? statement[place + 1].unicode() : u'\0';
    const bool compares = (first == u'<' && (second == u'=' || second == u'>')) || (first == u'>' && second == u'=');
    if (compares)
        return Taken(Token::Sort::Symbol, place, place + 2, place + 2);
    if (!QStringView(u"=<>()*,.;+-/&").contains(QChar(first)))
        RaiseSyntaxError(statement.sliced(place));
    return Taken(Token::Sort::Symbol, place, place + 1, place + 1);
}

Datum LiteralValue(const Token& token)
{
    switch (token.sort) {
    case Token::Sort::Number:
        return NumberValue(token.text);
    case Token::Sort::Date:
        return DateValue(token.text);
    default:
        return Datum::Of(TextValue(token.text));
    }
}

namespace {

/// Goes through the tokens of one statement; a semicolon may only end it.
template <class Visit>
void ForEachToken(QStringView statement, Visit visit)
{
    Tokenizer tokenizer(statement);
    for (Token token = tokenizer.Next(); token.sort != Token::Sort::End; token = tokenizer.Next()) {
        if (token.IsSymbol(u';')) {
            if (const Token behind = tokenizer.Next(); behind.sort != Token::Sort::End)
                RaiseSyntaxError(statement.sliced(behind.text.data() - statement.data()));
            return;
        }
        visit(token);
    }
}

} // namespace

Phrase TakeApart(QStringView statement)
{
    Phrase phrase;
    constexpr std::size_t usualLiterals = 4;
    phrase.shape.reserve(std::size_t(statement.size()) + 16);
    phrase.literals.reserve(usualLiterals);
    ForEachToken(statement, [&](const Token& token) {
        if (token.IsLiteral()) {
            phrase.shape += MarkOf(token.sort);
            phrase.literals.push_back(LiteralValue(token));
            return;
        }
        const bool bracketed = token.sort == Token::Sort::Name;
        if (bracketed)
            phrase.shape += u'[';
        phrase.shape.append(token.text.utf16(), std::size_t(token.text.size()));
        phrase.shape += bracketed ? u']' : u' '; // so that a name with a blank in it isn't taken for two
    });
    return phrase;
}

std::vector<Token> Tokens(QStringView statement)
{
    std::vector<Token> tokens;
    ForEachToken(statement, [&](const Token& token) { tokens.push_back(token); });
    return tokens;
}

} // namespace dao

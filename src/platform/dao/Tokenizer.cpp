#include "platform/dao/Tokenizer.h"

#include "platform/basic/Numbers.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace dao {
namespace {

using basic::IsDigit;

constexpr qsizetype ShownOfAnError = 60; // characters

constexpr bool IsLetter(char16_t character)
{
    return (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z') || character == u'_';
}

constexpr bool IsBlank(char16_t character)
{
    return character == u' ' || character == u'\t' || character == u'\n' || character == u'\r';
}

bool IsPlain(QStringView text)
{
    return std::ranges::none_of(text, [](QChar each) { return each > u'\x7f' || IsLetter(each.unicode()); });
}

Value NumberValue(QStringView text)
{
    constexpr qsizetype surelyWhole = 18;
    if (text.size() <= surelyWhole && std::ranges::all_of(text, [](QChar each) { return IsDigit(each); })) {
        qint64 whole = 0;
        for (const QChar digit : text)
            whole = whole * 10 + (digit.unicode() - u'0');
        return whole;
    }
    const double real = text.toDouble();
    if (std::isinf(real))
        RaiseSyntaxError(text);
    return real;
}

Value DateValue(QStringView text)
{
    const qsizetype first = text.indexOf(u'/');
    const qsizetype second = text.indexOf(u'/', first + 1);
    if (first < 1 || first > 2 || second < first + 2 || second > first + 3 || text.size() != second + 5)
        return {};
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (i != first && i != second && !IsDigit(text[i]))
            return {};
    }
    QString iso = QStringLiteral("0000-00-00");
    const auto write = [&](qsizetype from, qsizetype size, qsizetype end) {
        iso.replace(end - size, size, text.data() + from, size);
    };
    write(second + 1, 4, 4);
    write(0, first, 7);
    write(first + 1, second - first - 1, 10);
    return iso;
}

constexpr char16_t MarkOf(Token::Kind kind)
{
    return static_cast<char16_t>(1 +
                                 static_cast<int>(kind)); // a control character, which never occurs outside literals
}

} // namespace

bool Token::Is(const char* word) const
{
    return kind == Kind::Word && text.compare(QLatin1StringView(word), Qt::CaseInsensitive) == 0;
}

void RaiseSyntaxError(QStringView from)
{
    throw RuntimeError(Error::SyntaxError, from.left(ShownOfAnError).toString());
}

void Tokenizer::Refuse() const
{
    RaiseSyntaxError(statement.sliced(position));
}

Token Tokenizer::Next()
{
    const Token token = NextToken();
    if (!token.IsSymbol(u";"))
        return token;
    const qsizetype behind = position;
    if (NextToken().kind != Token::Kind::End)
        RaiseSyntaxError(statement.sliced(behind).trimmed());
    return {};
}

Token Tokenizer::NextToken()
{
    while (IsBlank(CharacterAt(position)))
        ++position;
    if (position == statement.size())
        return {};

    const char16_t first = CharacterAt(position);
    if (IsLetter(first)) {
        qsizetype end = position + 1;
        while (IsLetter(CharacterAt(end)) || IsDigit(CharacterAt(end)))
            ++end;
        return Take(Token::Kind::Word, position, end, end);
    }
    if (IsDigit(first) || (first == u'.' && IsDigit(CharacterAt(position + 1))))
        return TakeNumber();
    if (first == u'\'')
        return TakeText();
    if (first != u'#')
        return TakeSymbol();
    const qsizetype end = statement.indexOf(u'#', position + 1);
    if (end < 0)
        Refuse();
    return Take(Token::Kind::Date, position + 1, end, end + 1);
}

Token Tokenizer::Take(Token::Kind kind, qsizetype start, qsizetype end, qsizetype next)
{
    position = next;
    return {kind, statement.sliced(start, end - start)};
}

/// Quotes within the text are doubled.
Token Tokenizer::TakeText()
{
    const qsizetype start = position + 1;
    qsizetype end = statement.indexOf(u'\'', start);
    while (end >= 0 && statement.sliced(end + 1).startsWith(u'\''))
        end = statement.indexOf(u'\'', end + 2);
    if (end < 0)
        Refuse();
    const bool plain = IsPlain(statement.sliced(start, end - start));
    return Take(plain ? Token::Kind::PlainText : Token::Kind::Text, start, end, end + 1);
}

Token Tokenizer::TakeNumber()
{
    qsizetype end = position;
    while (IsDigit(CharacterAt(end)))
        ++end;
    if (CharacterAt(end) == u'.')
        ++end;
    while (IsDigit(CharacterAt(end)))
        ++end;
    if (IsLetter(CharacterAt(end)) || CharacterAt(end) == u'.')
        Refuse();
    return Take(Token::Kind::Number, position, end, end);
}

Token Tokenizer::TakeSymbol()
{
    const char16_t first = CharacterAt(position);
    const char16_t second = CharacterAt(position + 1);
    const bool isPair = (first == u'<' && (second == u'=' || second == u'>')) || (first == u'>' && second == u'=');
    if (!QStringView(u"=<>()*,;-").contains(QChar(first)))
        Refuse();
    const qsizetype end = position + (isPair ? 2 : 1);
    return Take(Token::Kind::Symbol, position, end, end);
}

Value LiteralValue(const Token& token)
{
    switch (token.kind) {
    case Token::Kind::Number:
        return NumberValue(token.text);
    case Token::Kind::Date:
        return DateValue(token.text);
    default:
        break;
    }
    QString text = token.text.toString();
    return text.contains(u'\'') ? text.replace("''", "'") : text;
}

StatementShape ShapeOf(QStringView statement)
{
    StatementShape split;
    split.shape.reserve(static_cast<std::size_t>(statement.size()) + 16);
    constexpr std::size_t usually = 4;
    split.literals.reserve(usually);
    Tokenizer tokenizer(statement);
    for (Token token = tokenizer.Next(); token.kind != Token::Kind::End; token = tokenizer.Next()) {
        if (token.IsLiteral()) {
            split.shape += MarkOf(token.kind);
            split.literals.push_back(LiteralValue(token));
        } else {
            split.shape.append(token.text.utf16(), static_cast<std::size_t>(token.text.size())) += u' ';
        }
    }
    return split;
}

std::vector<Token> Tokens(QStringView statement)
{
    std::vector<Token> tokens;
    Tokenizer tokenizer(statement);
    for (Token token = tokenizer.Next(); token.kind != Token::Kind::End; token = tokenizer.Next())
        tokens.push_back(token);
    return tokens;
}

} // namespace dao

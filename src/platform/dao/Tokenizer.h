#pragma once

#include "platform/dao/Value.h"

#include <QStringView>
#include <string>
#include <vector>

namespace dao {

/// One piece of a statement. `PlainText` is a text without letters, which no rule of case concerns.
struct Token {
    enum class Kind : quint8 { Word, Number, Date, Text, PlainText, Symbol, End };
    Kind kind = Kind::End;
    QStringView text; ///< of a literal without its quotes

    bool IsLiteral() const { return kind >= Kind::Number && kind <= Kind::PlainText; }
    bool IsSymbol(QStringView symbol) const { return kind == Kind::Symbol && text == symbol; }
    /// Whether it is this word, written in small letters here, in any case there.
    bool Is(const char* word) const;
};

/// Cuts one statement of the screens into tokens. A semicolon may end it; anything after it raises 3075, as does what
/// is no token.
class Tokenizer {
public:
    explicit Tokenizer(QStringView text) : statement(text) {}
    Token Next();

private:
    Token NextToken();
    Token Take(Token::Kind kind, qsizetype start, qsizetype end, qsizetype next);
    Token TakeText();
    Token TakeNumber();
    Token TakeSymbol();
    [[noreturn]] void Refuse() const;
    char16_t CharacterAt(qsizetype place) const
    {
        return place < statement.size() ? statement[place].unicode() : u'\0';
    }

    QStringView statement;
    qsizetype position = 0;
};

/// Raises 3075 for the statement from this piece on.
[[noreturn]] void RaiseSyntaxError(QStringView from);

/// The value of a literal. A number too large for any raises 3075. A date (mm/dd/yyyy) becomes its ISO text, cut
/// and not validated; one without such groups of digits becomes Null, which equals nothing.
Value LiteralValue(const Token& token);

/// A statement's text with a mark in the place of each literal, and the literals' values. Statements of one shape are
/// one statement with other values.
struct StatementShape {
    std::u16string shape;
    std::vector<Value> literals;
};

/// Raises 3075 when the statement can't be read.
StatementShape ShapeOf(QStringView statement);

/// The tokens of one statement, up to its end.
std::vector<Token> Tokens(QStringView statement);

} // namespace dao

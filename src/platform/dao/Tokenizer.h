#pragma once

#include "platform/dao/Store.h"

#include <QStringView>
#include <string>
#include <vector>

namespace dao {

/// A token of a statement. `PlainText` is a text literal without letters, for which case doesn't matter.
struct Token {
    enum class Kind : quint8 { Word, Number, Date, Text, PlainText, Symbol, End };
    Kind kind = Kind::End;
    QStringView text; ///< literals without quotes

    bool IsLiteral() const { return kind >= Kind::Number && kind <= Kind::PlainText; }
    bool IsSymbol(QStringView symbol) const { return kind == Kind::Symbol && text == symbol; }
    /// Case-insensitive; `word` must be lower case.
    bool Is(const char* word) const;
};

/// Splits one statement of the screens into tokens. A final semicolon is allowed; anything after it, or an invalid
/// token, raises 3075.
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

/// Raises 3075, quoting the statement from this token on.
[[noreturn]] void RaiseSyntaxError(QStringView from);

/// The value of a literal. A number out of range raises 3075. A date (mm/dd/yyyy) becomes ISO text without validation;
/// without three digit groups it becomes Null, which equals nothing.
Value LiteralValue(const Token& token);

/// A statement's text with placeholders for the literals, and the literals' values. Statements with the same shape
/// differ only in values.
struct StatementShape {
    std::u16string shape;
    std::vector<Value> literals;
};

/// Raises 3075 for a syntax error.
StatementShape ShapeOf(QStringView statement);

/// The tokens of one statement, up to its end.
std::vector<Token> Tokens(QStringView statement);

} // namespace dao

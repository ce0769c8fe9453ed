#pragma once

#include "platform/dao/Datum.h"

#include <QStringView>
#include <vector>

namespace dao {

/// One piece of a statement. `Name` is a bracketed name; `PlainText` a text without letters, for which case is no
/// question.
struct Token {
    enum class Sort : quint8 { Word, Name, Number, Date, Text, PlainText, Symbol, End };
    Sort sort = Sort::End;
    QStringView text; ///< a name without its brackets, a literal without its quotes

    bool IsLiteral() const { return sort >= Sort::Number && sort <= Sort::PlainText; }
    bool IsName() const { return sort == Sort::Word || sort == Sort::Name; }
    bool IsSymbol(char16_t symbol) const;
    /// Whether it is this word, written in small letters here, in any case there.
    bool Is(const char* word) const;
};

/// Cuts a statement of the screens into tokens, one after the other. Raises 3075 with the rest of the statement from
/// the place that can't be read.
class Tokenizer {
public:
    explicit Tokenizer(QStringView whole) : statement(whole) {}
    Token Next();

private:
    Token Taken(Token::Sort sort, qsizetype start, qsizetype end, qsizetype next);
    Token TextUpTo(char16_t quote);
    Token NumberToken();
    Token SymbolToken();

    QStringView statement;
    qsizetype place = 0;
};

/// Raises 3075 for the statement from this piece on.
[[noreturn]] void RaiseSyntaxError(QStringView from);

/// The value of a literal. A number too large for any raises 3075. A date becomes the ISO text of its groups, cut and not validated; one without three groups
/// of digits becomes Null, which equals nothing.
Datum LiteralValue(const Token& token);

/// A statement taken apart: its text with a mark in the place of each literal, and the literals. Statements of one
/// shape are one statement with other values.
struct Phrase {
    std::u16string shape;
    std::vector<Datum> literals;
};

/// Takes one statement apart; raises 3075 when it can't be read or something stands behind its end.
Phrase TakeApart(QStringView statement);

/// The tokens of one statement, up to its end.
std::vector<Token> Tokens(QStringView statement);

} // namespace dao

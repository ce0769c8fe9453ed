#include "platform/dao/Dialect.h"

#include "platform/basic/RuntimeError.h"
#include "platform/dao/TextCompare.h"
#include "platform/dao/Tokenizer.h"

#include <algorithm>
#include <array>

namespace dao {
namespace {

constexpr std::array keywords = {"select", "distinct", "all",    "from",    "where",  "and",    "or",   "not",
                                 "is",     "null",     "in",     "between", "like",   "order",  "by",   "asc",
                                 "desc",   "group",    "having", "as",      "join",   "inner",  "left", "outer",
                                 "on",     "union",    "insert", "into",    "values", "update", "set",  "delete",
                                 "exists", "case",     "when",   "then",    "else",   "end"};
constexpr std::array functions = {"count", "sum", "avg", "min", "max", "abs", "round", "length"};

bool IsKeyword(const Token& token)
{
    return std::ranges::any_of(keywords, [&](const char* word) { return token.Is(word); });
}

/// Writes the tokens of a statement in the store's language, one blank between any two: so nothing that isn't a token
/// here can come together to one there, a comment for instance.
class Writer {
public:
    Writer(QStringView whole, const TableFinder& tableFinder)
        : statement(whole), tokens(Tokens(whole)), find(tableFinder)
    {
    }

    std::size_t Count() const { return tokens.size(); }
    /// The token at a place; an empty one behind the end.
    Token At(std::size_t place) const { return place < tokens.size() ? tokens[place] : Token{}; }

    Table& TableAt(std::size_t place);
    /// Reads which tables the statement names, so that text columns are known wherever they stand.
    void NoteTables();
    void NoteTable(Table& table) { tables.push_back(&table); }

    /// Raises 3070 for a name that isn't a column of the table.
    void RequireColumns(const Table& table) const;

    std::string Write(std::size_t from, std::size_t to);
    [[noreturn]] void Refuse(std::size_t place) const;

private:
    enum class Clause : quint8 { Names, Tables, Conditions, Order };

    void FollowClause(std::size_t place);
    void Enter(const Token& token);
    bool ExpectsTable(std::size_t place) const;
    bool StandsForTable(std::size_t place) const;
    void WriteToken(std::size_t place);
    void WriteName(std::size_t place);
    void WriteColumn(std::size_t place);
    bool IsTextColumn(const std::string& name) const;
    void Put(std::string_view piece);

    QStringView statement;
    std::vector<Token> tokens;
    const TableFinder& find;
    std::vector<Table*> tables;
    std::string written;
    Clause clause = Clause::Names;
    std::vector<Clause> outerClauses; // of the parentheses that are open
};

void Writer::Refuse(std::size_t place) const
{
    if (place >= tokens.size())
        RaiseSyntaxError(statement);
    RaiseSyntaxError(statement.sliced(tokens[place].text.data() - statement.data()));
}

Table& Writer::TableAt(std::size_t place)
{
    const Token token = At(place);
    if (!token.IsName() || IsKeyword(token))
        Refuse(place);
    Table* const table = find(token.text.toUtf8().toStdString());
    if (table == nullptr)
        throw basic::RuntimeError(basic::Error::UnknownTable, token.text.toString());
    return *table;
}

/// Goes on to this token: a word may open a clause, and parentheses end with the clause they began in.
void Writer::FollowClause(std::size_t place)
{
    const Token& token = tokens[place];
    if (token.IsSymbol(u'(')) {
        outerClauses.push_back(clause);
        if (clause == Clause::Tables && !ExpectsTable(place))
            clause = Clause::Names; // the columns of an insert are no tables
    } else if (token.IsSymbol(u')')) {
        if (outerClauses.empty())
            Refuse(place);
        clause = outerClauses.back();
        outerClauses.pop_back();
    } else {
        Enter(token);
    }
}

void Writer::Enter(const Token& token)
{
    if (token.Is("from") || token.Is("join") || token.Is("into") || token.Is("update"))
        clause = Clause::Tables;
    else if (token.Is("where") || token.Is("on") || token.Is("having"))
        clause = Clause::Conditions;
    else if (token.Is("order") || token.Is("group"))
        clause = Clause::Order;
    else if (token.Is("select") || token.Is("set") || token.Is("values"))
        clause = Clause::Names;
}

/// In the clause of tables: right behind the word that opens it, or behind a comma, in parentheses or not. What else
/// stands there is an alias.
bool Writer::ExpectsTable(std::size_t place) const
{
    while (place > 0 && At(place - 1).IsSymbol(u'('))
        --place;
    if (clause != Clause::Tables || place == 0)
        return false;
    const Token before = At(place - 1);
    return before.IsSymbol(u',') || before.Is("from") || before.Is("join") || before.Is("into") || before.Is("update");
}

/// A table stands in the clause of tables, or behind "in" for the values of its one column.
bool Writer::StandsForTable(std::size_t place) const
{
    const bool name = At(place).IsName() && !IsKeyword(At(place));
    return name && (ExpectsTable(place) || (place > 0 && At(place - 1).Is("in")));
}

void Writer::NoteTables()
{
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        FollowClause(i);
        if (StandsForTable(i))
            NoteTable(TableAt(i));
    }
    clause = Clause::Names;
    outerClauses.clear();
}

void Writer::RequireColumns(const Table& table) const
{
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const bool column =
            tokens[i].IsName() && !IsKeyword(tokens[i]) && !At(i + 1).IsSymbol(u'(') && !At(i + 1).IsSymbol(u'.');
        if (column && table.columns.PositionOf(tokens[i].text.toUtf8().toStdString()) < 0)
            throw basic::RuntimeError(basic::Error::UnknownExpression, tokens[i].text.toString());
    }
}

void Writer::Put(std::string_view piece)
{
    if (!written.empty())
        written += ' ';
    written += piece;
}

bool Writer::IsTextColumn(const std::string& name) const
{
    return std::ranges::any_of(tables, [&](const Table* table) {
        const int position = table->columns.PositionOf(name);
        return position >= 0 && table->columns[position].type == ColumnType::Text;
    });
}

void Writer::WriteColumn(std::size_t place)
{
    const std::string name = tokens[place].text.toUtf8().toStdString();
    Put(Quoted(name));
    const bool compares = clause == Clause::Conditions || clause == Clause::Order;
    if (!compares || At(place + 1).IsSymbol(u'.') || !IsTextColumn(name))
        return;
    // A text without letters is equal to itself alone, so an index of the column may serve.
    const bool plainEquality = At(place + 1).IsSymbol(u'=') && At(place + 2).sort == Token::Sort::PlainText;
    if (!plainEquality)
        Put(std::string("collate ") + textCollation);
}

void Writer::WriteName(std::size_t place)
{
    const Token& token = tokens[place];
    if (StandsForTable(place)) {
        Put(Quoted(TableAt(place).name));
        return;
    }
    if (token.sort == Token::Sort::Word && At(place + 1).IsSymbol(u'(')) {
        const bool known = std::ranges::any_of(functions, [&](const char* name) { return token.Is(name); });
        if (!known)
            throw basic::RuntimeError(basic::Error::UnknownFunction, token.text.toString());
        Put(token.text.toUtf8().toStdString());
        return;
    }
    WriteColumn(place);
}

void Writer::WriteToken(std::size_t place)
{
    const Token& token = tokens[place];
    FollowClause(place);
    if (token.IsLiteral()) {
        if (clause == Clause::Order || clause == Clause::Tables)
            Refuse(place);
        Put("?");
    } else if (token.sort == Token::Sort::Symbol) {
        Put(token.IsSymbol(u'&') ? "||" : token.text.toUtf8().toStdString());
    } else if (IsKeyword(token)) {
        Put(token.text.toUtf8().toStdString());
    } else {
        WriteName(place);
    }
}

std::string Writer::Write(std::size_t from, std::size_t to)
{
    written.clear();
    for (std::size_t i = from; i < to; ++i)
        WriteToken(i);
    if (!outerClauses.empty())
        Refuse(tokens.size());
    return std::move(written);
}

/// Whether the statement is `select * from TABLE [where ..] [order by ..]`, or a table's name alone.
bool ReadsOneTable(const Writer& writer)
{
    if (writer.Count() == 1)
        return writer.At(0).IsName();
    const bool starts =
        writer.At(0).Is("select") && writer.At(1).IsSymbol(u'*') && writer.At(2).Is("from") && writer.At(3).IsName();
    const Token next = writer.At(4);
    if (!starts || !(next.sort == Token::Sort::End || next.Is("where") || next.Is("order")))
        return false;
    for (std::size_t i = 4; i < writer.Count(); ++i) {
        const Token token = writer.At(i);
        if (token.Is("union") || token.Is("group") || token.Is("having"))
            return false;
    }
    return true;
}

/// The place of the statement's own "order", not of one in parentheses; Count() when it has none.
std::size_t PlaceOfOrder(const Writer& writer)
{
    int depth = 0;
    for (std::size_t i = 0; i < writer.Count(); ++i) {
        const Token token = writer.At(i);
        depth += token.IsSymbol(u'(') ? 1 : token.IsSymbol(u')') ? -1 : 0;
        if (depth == 0 && token.Is("order"))
            return i;
    }
    return writer.Count();
}

bool OrdersByKeyAlone(const Writer& writer, std::size_t order, const Table& table)
{
    const bool one = writer.At(order + 1).Is("by") && writer.At(order + 2).IsName() &&
                     (order + 3 == writer.Count() || (order + 4 == writer.Count() && writer.At(order + 3).Is("asc")));
    return one && table.keyColumn >= 0 &&
           table.columns.PositionOf(writer.At(order + 2).text.toUtf8().toStdString()) == table.keyColumn;
}

Plan RowsPlan(Writer& writer)
{
    Plan plan;
    plan.sort = Plan::Sort::Rows;
    const bool nameAlone = writer.Count() == 1;
    plan.table = &writer.TableAt(nameAlone ? 0 : 3);
    writer.NoteTables();

    const std::size_t order = PlaceOfOrder(writer);
    std::string tail = " from " + Quoted(plan.table->name);
    plan.isConditional = !nameAlone && order > 4;
    if (plan.isConditional)
        tail += " " + writer.Write(4, order);
    const bool ordered = order < writer.Count();
    if (ordered && (!writer.At(order + 1).Is("by") || order + 2 == writer.Count()))
        writer.Refuse(order);
    tail += ordered ? " " + writer.Write(order, writer.Count()) + "," : " order by ";
    tail += plan.table->key;
    plan.sql = "select " + plan.table->rowParts + tail;
    plan.keysSql = "select " + plan.table->key + tail;
    plan.whole = !plan.isConditional && (!ordered || OrdersByKeyAlone(writer, order, *plan.table));
    return plan;
}

} // namespace

void Plan::ReleaseStatements()
{
    statement = Statement();
    keysStatement = Statement();
}

Plan Translate(QStringView statement, const TableFinder& find, bool skipsFailures)
{
    Writer writer(statement, find);
    if (writer.Count() == 0)
        RaiseSyntaxError(statement);
    if (ReadsOneTable(writer))
        return RowsPlan(writer);

    const Token verb = writer.At(0);
    if (!(verb.Is("select") || verb.Is("delete") || verb.Is("update") || verb.Is("insert")))
        writer.Refuse(0);
    Plan plan;
    writer.NoteTables();
    if (verb.Is("select")) {
        plan.sql = writer.Write(0, writer.Count());
    } else if (verb.Is("delete")) {
        plan.sort = Plan::Sort::Removal;
        const std::size_t from = writer.At(1).IsSymbol(u'*') ? 2 : 1;
        if (!writer.At(from).Is("from"))
            writer.Refuse(from);
        plan.table = &writer.TableAt(from + 1);
        plan.sql = "delete " + writer.Write(from, writer.Count());
    } else if (verb.Is("update")) {
        plan.sort = Plan::Sort::Change;
        plan.table = &writer.TableAt(1);
        plan.sql = writer.Write(0, writer.Count());
    } else {
        plan.sort = Plan::Sort::Growth;
        if (!writer.At(1).Is("into"))
            writer.Refuse(1);
        plan.table = &writer.TableAt(2);
        plan.sql = writer.Write(0, writer.Count());
    }
    const bool mayPassOver = plan.sort == Plan::Sort::Change || plan.sort == Plan::Sort::Growth;
    if (skipsFailures && mayPassOver)
        plan.sql.insert(plan.sql.find(' '), " or ignore");
    return plan;
}

Criteria TranslateCriteria(QStringView condition, Table& table)
{
    const TableFinder onlyThis = [](std::string_view) -> Table* { return nullptr; };
    // The condition stands as it would behind "where", so that its columns are read as conditions are.
    const QString whole = "where " + condition.toString();
    Writer writer(whole, onlyThis);
    // The parentheses that are put around it would make a condition of a bare statement.
    if (writer.Count() < 2 || writer.At(1).Is("select") || writer.At(1).Is("values"))
        RaiseSyntaxError(condition);
    writer.NoteTable(table);
    writer.RequireColumns(table);
    const std::string text = writer.Write(0, writer.Count()).substr(std::string_view("where ").size());
    const std::string lead = " from " + Quoted(table.name) + " where (" + text + ") and ";
    return {"select 1" + lead + table.key + "=?",
            "select " + table.key + lead + table.key + ">? and " + table.key + "<=? order by " + table.key};
}

} // namespace dao

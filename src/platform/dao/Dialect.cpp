#include "platform/dao/Dialect.h"

#include "platform/dao/Tokenizer.h"
#include "platform/store/TextCompare.h"

#include <algorithm>

namespace dao {
namespace {

constexpr const char* Keywords[] = {"select", "from", "where", "and",    "like", "order", "by",
                                    "asc",    "desc", "as",    "update", "set",  "delete"};

/// Translates one statement into SQLite's SQL token by token, with blanks between: so no two tokens can combine into
/// something else, such as a comment.
class Parser {
public:
    explicit Parser(QStringView text) : statement(text), tokens(Tokens(text)) { tokens.emplace_back(); }

    Plan ReadStatement(const TableFinder& find, bool skipsFailures);

private:
    const Token& Next() const { return tokens[at]; }
    bool Accept(const char* word);
    bool Accept(QStringView symbol);
    void Require(bool isThere) const;

    std::string ReadName();
    void ReadTable(const TableFinder& find);
    void ReadSelect(Plan& plan, const TableFinder& find);
    std::string ReadItems();
    std::string ReadAssignments();
    std::string ReadWhere();
    /// Reads `order by` and appends the key; true if the order is by key alone.
    std::pair<std::string, bool> ReadOrder();
    std::string ReadTests();
    std::string ReadLiteral();
    int ReadColumn();
    std::string Compared(int position) const;

    QStringView statement;
    std::vector<Token> tokens;
    std::size_t at = 0;
    Table* table = nullptr;
};

/// Raises 3075, with the statement from the next token on, unless `isThere`.
void Parser::Require(bool isThere) const
{
    if (isThere)
        return;
    if (Next().kind == Token::Kind::End)
        RaiseSyntaxError(statement);
    RaiseSyntaxError(statement.sliced(Next().text.data() - statement.data()));
}

bool Parser::Accept(const char* word)
{
    const bool is = Next().Is(word);
    at += is ? 1 : 0;
    return is;
}

bool Parser::Accept(QStringView symbol)
{
    const bool is = Next().IsSymbol(symbol);
    at += is ? 1 : 0;
    return is;
}

std::string Parser::ReadName()
{
    const bool isKeyword = std::ranges::any_of(Keywords, [this](const char* word) { return Next().Is(word); });
    Require(Next().kind == Token::Kind::Word && !isKeyword);
    return tokens[at++].text.toUtf8().toStdString();
}

void Parser::ReadTable(const TableFinder& find)
{
    const std::string name = ReadName();
    table = find(name);
    if (table == nullptr)
        throw RuntimeError(Error::UnknownTable, QString::fromStdString(name));
}

int Parser::ReadColumn()
{
    const std::string name = ReadName();
    const int position = table->columns.PositionOf(name);
    if (position < 0)
        throw RuntimeError(Error::UnknownColumn, QString::fromStdString(name));
    return position;
}

/// A column that was just read, with the collation of the screens if it is text.
std::string Parser::Compared(int position) const
{
    const Column& column = table->columns[position];
    // A text without letters has no case variants, so a plain index on the column can be used.
    const bool plainEquality = Next().IsSymbol(u"=") && tokens[at + 1].kind == Token::Kind::PlainText;
    const bool collates = column.type == ColumnType::Text && !plainEquality;
    return " " + Quoted(column.name) + (collates ? std::string(" collate ") + store::TextCollation : "");
}

std::string Parser::ReadLiteral()
{
    const bool isNegative = Accept(u"-");
    Require(Next().IsLiteral());
    ++at;
    return isNegative ? " - ?" : " ?";
}

std::string Parser::ReadTests()
{
    std::string tests;
    do {
        tests += (tests.empty() ? "" : " and") + Compared(ReadColumn());
        constexpr QStringView comparisons[] = {u"=", u"<", u">", u"<=", u">=", u"<>"};
        const bool compares =
            std::ranges::any_of(comparisons, [this](QStringView each) { return Next().IsSymbol(each); });
        Require(compares || Next().Is("like"));
        tests += " " + tokens[at++].text.toUtf8().toStdString();
        tests += ReadLiteral();
    } while (Accept("and"));
    return tests;
}

std::string Parser::ReadWhere()
{
    return Accept("where") ? " where" + ReadTests() : std::string();
}

std::pair<std::string, bool> Parser::ReadOrder()
{
    std::string order;
    bool isByKey = true;
    if (Accept("order")) {
        Require(Accept("by"));
        do {
            const int column = ReadColumn();
            const bool isFirst = order.empty();
            order += Compared(column);
            const bool descends = Accept("desc");
            if (!descends)
                Accept("asc");
            order += descends ? " desc," : ",";
            isByKey = isFirst && column == table->keyColumn && !descends;
        } while (Accept(u","));
    }
    return {" order by" + order + " " + table->key, isByKey};
}

/// The items of a select that isn't `*`; SQLite resolves the fields.
std::string Parser::ReadItems()
{
    std::string items;
    do {
        items += items.empty() ? " " : ", ";
        const std::string name = ReadName();
        if (Accept(u"(")) {
            items += name + "(" + (Accept(u"*") ? "*" : Quoted(ReadName())) + ")";
            Require(Accept(u")"));
        } else {
            items += Quoted(name);
        }
        if (Accept("as"))
            items += " as " + Quoted(ReadName());
    } while (Accept(u","));
    return items;
}

std::string Parser::ReadAssignments()
{
    std::string assignments;
    do {
        assignments += (assignments.empty() ? " " : ", ") + Quoted(table->columns[ReadColumn()].name);
        Require(Accept(u"="));
        assignments += " =" + ReadLiteral();
    } while (Accept(u","));
    return assignments;
}

void Parser::ReadSelect(Plan& plan, const TableFinder& find)
{
    const bool isRows = Accept(u"*");
    const std::string items = isRows ? std::string() : ReadItems();
    Require(Accept("from"));
    ReadTable(find);
    const std::string where = ReadWhere();
    const bool isOrdered = isRows || Next().Is("order");
    const auto [order, isByKey] = ReadOrder();
    plan.kind = !isRows ? Plan::Kind::Snapshot : isByKey && where.empty() ? Plan::Kind::Table : Plan::Kind::Rows;
    if (plan.kind != Plan::Kind::Table)
        plan.sql = "select " + (isRows ? table->rowParts : items) + " from " + Quoted(table->name) + where +
                   (isOrdered ? order : std::string());
}

Plan Parser::ReadStatement(const TableFinder& find, bool skipsFailures)
{
    Plan plan;
    if (Accept("select")) {
        ReadSelect(plan, find);
    } else if (Accept("update")) {
        plan.kind = Plan::Kind::Change;
        ReadTable(find);
        Require(Accept("set"));
        plan.sql = (skipsFailures ? "update or ignore " : "update ") + Quoted(table->name) + " set" + ReadAssignments();
        plan.sql += ReadWhere();
    } else if (Accept("delete")) {
        plan.kind = Plan::Kind::Change;
        Accept(u"*");
        Require(Accept("from"));
        ReadTable(find);
        plan.sql = "delete from " + Quoted(table->name) + ReadWhere();
    } else {
        plan.kind = Plan::Kind::Table;
        Require(tokens.size() == 2); // a name and the end
        ReadTable(find);
    }
    Require(Next().kind == Token::Kind::End);
    plan.table = table;
    return plan;
}

} // namespace

Plan Translate(QStringView statement, const TableFinder& find, bool skipsFailures)
{
    return Parser(statement).ReadStatement(find, skipsFailures);
}

} // namespace dao

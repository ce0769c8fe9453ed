#include "platform/dao/AnswerSet.h"

#include "platform/basic/RuntimeError.h"
#include "platform/dao/TextCompare.h"

#include <algorithm>

namespace dao {
namespace {

bool Equals(const Seen& seen, const Datum& sought)
{
    if (seen.kind == Kind::Null || sought.kind == Kind::Null)
        return false;
    const bool texts = seen.kind == Kind::Text && sought.kind == Kind::Text;
    if (texts)
        return CompareTexts({seen.text, std::size_t(seen.length)}, sought.text) == 0;
    if (seen.kind == Kind::Text || sought.kind == Kind::Text)
        return false;
    return DoubleOf(seen) == DoubleOf(Seen(sought));
}

} // namespace

AnswerSet::AnswerSet(std::shared_ptr<Connection> opened, Plan& plan, const std::vector<Datum>& literals)
    : RecordsetState(std::move(opened), plan.answer)
{
    connection->Settle();
    const ResetAtEnd reset(plan.statement);
    for (std::size_t i = 0; i < literals.size(); ++i)
        plan.statement.Bind(int(i) + 1, literals[i]);
    while (plan.statement.Step())
        rows.Append(plan.statement.Raw(), 0, columns.Count());
    reached = std::min<std::size_t>(rows.Count(), 1);
}

void AnswerSet::GoTo(std::size_t row)
{
    if (rows.Count() == 0)
        throw basic::RuntimeError(basic::Error::NoCurrentRecord);
    place = row;
    reached = std::max(reached, std::min(row + 1, rows.Count()));
}

void AnswerSet::MoveFirst()
{
    GoTo(0);
}

void AnswerSet::MoveNext()
{
    if (IsEOF())
        throw basic::RuntimeError(basic::Error::NoCurrentRecord);
    GoTo(place + 1);
}

void AnswerSet::MoveLast()
{
    GoTo(rows.Count() - 1);
}

void AnswerSet::FindFirst(const QString& criteria)
{
    if (rows.Count() == 0)
        throw basic::RuntimeError(basic::Error::NoCurrentRecord);
    const std::vector<Token> tokens = Tokens(criteria);
    const bool readable = tokens.size() == 3 && tokens[0].IsName() && tokens[1].IsSymbol(u'=') && tokens[2].IsLiteral();
    if (!readable)
        RaiseSyntaxError(criteria);
    const int column = columns.PositionOf(tokens[0].text.toUtf8().toStdString());
    if (column < 0)
        throw basic::RuntimeError(basic::Error::UnknownExpression, tokens[0].text.toString());

    const Datum sought = LiteralValue(tokens[2]);
    noMatch = true;
    for (std::size_t row = 0; row < rows.Count() && noMatch; ++row) {
        if (!Equals(rows.At(row).At(column), sought))
            continue;
        noMatch = false;
        GoTo(row);
    }
}

Seen AnswerSet::ValueAt(int column)
{
    RequireOpen();
    if (IsEOF())
        throw basic::RuntimeError(basic::Error::NoCurrentRecord);
    return rows.At(place).At(column);
}

} // namespace dao

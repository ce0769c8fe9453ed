#include "platform/pages/SelectionFormula.h"

#include "platform/basic/RuntimeError.h"

#include <QRegularExpression>

namespace pages {
namespace {

store::Value ValueOf(const QRegularExpressionMatch& match)
{
    if (match.hasCaptured("year"))
        return QStringLiteral("%1-%2-%3")
            .arg(match.captured("year").toInt(), 4, 10, QLatin1Char('0'))
            .arg(match.captured("month").toInt(), 2, 10, QLatin1Char('0'))
            .arg(match.captured("day").toInt(), 2, 10, QLatin1Char('0'));
    if (match.hasCaptured("text"))
        return match.captured("text");
    return match.captured("number").toDouble();
}

} // namespace

Selection ReadSelection(const QString& formula)
{
    static const QRegularExpression comparison(
        R"(\s*\{(?<table>\w+)\.(?<field>\w+)\}\s*(?<operator><=|>=|<>|=|<|>)\s*)"
        R"((?:date\s*\(\s*(?<year>\d{1,4})\s*,\s*(?<month>\d{1,2})\s*,\s*(?<day>\d{1,2})\s*\))"
        R"(|(?<number>-?\d{1,15}(?:\.\d{1,15})?)|["'](?<text>[^"']*)["'])\s*)",
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression conjunction(R"(and\b)", QRegularExpression::CaseInsensitiveOption);

    Selection selection;
    qsizetype position = 0;
    for (;;) {
        const auto match = comparison.match(formula, position, QRegularExpression::NormalMatch,
                                            QRegularExpression::AnchorAtOffsetMatchOption);
        if (!match.hasMatch())
            throw basic::RuntimeError(basic::Error::SyntaxError, formula);
        selection.values.push_back(ValueOf(match));
        selection.condition += QStringLiteral("\"%1\".\"%2\" %3 ?%4")
                                   .arg(match.captured("table"), match.captured("field"), match.captured("operator"))
                                   .arg(selection.values.size());
        position = match.capturedEnd();
        if (position == formula.size())
            return selection;
        const auto next = conjunction.match(formula, position, QRegularExpression::NormalMatch,
                                            QRegularExpression::AnchorAtOffsetMatchOption);
        if (!next.hasMatch())
            throw basic::RuntimeError(basic::Error::SyntaxError, formula);
        selection.condition += QStringLiteral(" and ");
        position = next.capturedEnd();
    }
}

} // namespace pages

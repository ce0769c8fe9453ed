#include "platform/pages/ValueText.h"

#include "platform/basic/Numbers.h"

#include <QDate>
#include <QRegularExpression>
#include <cmath>

namespace pages {
namespace {

constexpr int LongestText = 400; // characters; more than fit on the widest sheet in the smallest font
const QString DateMask = QStringLiteral("dd/mm/yyyy");

bool IsNumber(const store::Value& value)
{
    return std::holds_alternative<qint64>(value.Raw()) || std::holds_alternative<double>(value.Raw());
}

/// A mask leaves blanks for empty digits after the minus sign: "-     12.50".
QString WithoutMaskBlanks(const QString& number)
{
    const QString text = number.trimmed();
    return text.startsWith('-') ? "-" + text.sliced(1).trimmed() : text;
}

/// Whether the text is an amount formatted with a mask.
bool IsAmount(const QString& text)
{
    static const QRegularExpression amount(R"(^\s*-?(?=.*\d)[\d ]*\.?\d*\s*$)");
    return amount.match(text).hasMatch();
}

} // namespace

QString NumberText(double number, const QString& mask)
{
    if (!std::isfinite(number))
        return QStringLiteral("?");
    if (mask.isEmpty() || mask == DateMask)
        return basic::PlainText(number);
    return WithoutMaskBlanks(basic::Format(number, mask));
}

QString AmountText(const QString& text, const QString& mask)
{
    if (!IsAmount(text))
        return text;
    return mask.isEmpty() ? WithoutMaskBlanks(text) : NumberText(basic::Val(text), mask);
}

QString SumOfAmounts(const QString& text, const QString& mask)
{
    const QStringList terms = text.split('+');
    if (terms.size() == 1)
        return AmountText(text, mask);
    double sum = 0;
    for (const QString& term : terms) {
        if (!term.trimmed().isEmpty() && !IsAmount(term))
            return text;
        sum += basic::Val(term);
    }
    return sum == 0 ? QString() : NumberText(sum, mask);
}

double NumberIn(const store::Value& value)
{
    return IsNumber(value) ? value.Double() : 0;
}

QString SingleLine(const QString& text)
{
    QString line = text.left(LongestText);
    for (QChar& character : line) {
        const auto category = character.category();
        if (category == QChar::Other_Control || category == QChar::Separator_Line ||
            category == QChar::Separator_Paragraph)
            character = QLatin1Char(' ');
    }
    return line.trimmed();
}

QString CellText(const Column& column, const store::Value& value)
{
    if (value.IsNull())
        return {};
    if (!IsNumber(value)) {
        const QString text = value.Text();
        const QDate date = column.mask == DateMask ? QDate::fromString(text, Qt::ISODate) : QDate();
        return date.isValid() ? date.toString("dd/MM/yyyy") : SingleLine(text);
    }
    const double number = value.Double();
    if (column.blankZero && number == 0)
        return {};
    const bool isChoice =
        number >= 0 && number < static_cast<double>(column.choices.size()) && number == std::floor(number);
    return isChoice ? SingleLine(column.choices[static_cast<int>(number)]) : NumberText(number, column.mask);
}

} // namespace pages

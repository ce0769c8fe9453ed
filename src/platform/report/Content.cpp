#include "platform/report/Content.h"

#include "platform/basic/Numbers.h"
#include "platform/report/SelectionFormula.h"

#include <QDate>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>

namespace report {
namespace {

constexpr int MostRows = 200'000;
constexpr int MostCharacters = 400; // more than the widest sheet holds in the smallest letters

bool IsNumber(const dao::Value& value)
{
    return std::holds_alternative<qint64>(value.Raw()) || std::holds_alternative<double>(value.Raw());
}

/// A mask writes the blanks of its empty places behind the minus sign: "-     12.50".
QString WithoutMaskBlanks(const QString& number)
{
    const QString text = number.trimmed();
    return text.startsWith('-') ? "-" + text.sliced(1).trimmed() : text;
}

QString WithoutSelection(const QString& select)
{
    return QString(select).replace(SelectionPlace, "(1)");
}

/// Runs `read` and turns what it raises into faults of the template's select.
template <class Reading>
void Noting(QList<Fault>& faults, int selectLine, Reading read)
{
    try {
        read();
    } catch (const dao::StatementError& error) {
        faults.append({selectLine + error.Line(), error.Description()});
    } catch (const basic::RuntimeError& error) {
        faults.append({0, error.Description()});
    }
}

void ReadTexts(const dao::ReadOnlyQuery& query, Content& content)
{
    const dao::RowTable row = query.Read("select * from textes limit 1", {}, 1);
    for (int field = 0; field < row.fields.size() && row.RowCount() == 1; ++field)
        content.texts.insert(row.fields[field].toLower(), AmountText(CellText({}, row.Cell(0, field))));
}

} // namespace

QString NumberText(double number, const QString& mask)
{
    if (!std::isfinite(number))
        return QStringLiteral("?");
    if (mask.isEmpty() || mask == "dd/mm/yyyy")
        return basic::PlainText(number);
    return WithoutMaskBlanks(basic::Format(number, mask));
}

QString AmountText(const QString& text, const QString& mask)
{
    static const QRegularExpression amount(R"(^\s*-?(?=.*\d)[\d ]*\.?\d*\s*$)");
    if (!amount.match(text).hasMatch())
        return text;
    return mask.isEmpty() ? WithoutMaskBlanks(text) : NumberText(basic::Val(text), mask);
}

double NumberIn(const dao::Value& value)
{
    return IsNumber(value) ? value.Double() : 0;
}

QString PlainLine(const QString& text)
{
    QString line = text.left(MostCharacters);
    for (QChar& character : line) {
        const auto category = character.category();
        if (category == QChar::Other_Control || category == QChar::Separator_Line ||
            category == QChar::Separator_Paragraph)
            character = QLatin1Char(' ');
    }
    return line.trimmed();
}

QString CellText(const Column& column, const dao::Value& value)
{
    if (value.IsNull())
        return {};
    if (!IsNumber(value)) {
        const QString text = value.Text();
        const QDate date = column.mask == "dd/mm/yyyy" ? QDate::fromString(text, Qt::ISODate) : QDate();
        return date.isValid() ? date.toString("dd/MM/yyyy") : PlainLine(text);
    }
    const double number = value.Double();
    if (column.blankZero && number == 0)
        return {};
    if (!column.choices.isEmpty() && number >= 0 && number < double(column.choices.size()) &&
        number == std::floor(number))
        return PlainLine(column.choices[int(number)]);
    return NumberText(number, column.mask);
}

QList<Fault> FindFields(const Template& report, Content& content)
{
    QList<Fault> faults;
    const auto place = [&](const QString& field, int line) {
        const int found = content.rows.FieldAt(field);
        if (found < 0)
            faults.append({line, QStringLiteral("champ inconnu « %1 » : « select » donne %2")
                                     .arg(field, content.rows.fields.join(", "))});
        return found;
    };
    content.fieldOf.clear();
    for (const Column& column : report.columns)
        content.fieldOf.push_back(place(column.field, column.line));
    if (report.group)
        content.groupField = place(report.group->field, report.group->line);
    return faults;
}

ReadContentResult ReadContent(const Template& report, const QString& path, const QString& selectionFormula)
{
    ReadContentResult result;
    Noting(result.faults, report.selectLine, [&] {
        const dao::ReadOnlyQuery query(path);
        Selection selection{"1", {}};
        if (!selectionFormula.trimmed().isEmpty()) {
            if (!report.select.contains(SelectionPlace)) {
                result.faults.append(
                    {report.selectLine, QStringLiteral("« select » n'a pas de place %1").arg(SelectionPlace)});
                return;
            }
            selection = ReadSelection(selectionFormula);
        }
        ReadTexts(query, result.content);
        const QString select = QString(report.select).replace(SelectionPlace, "(" + selection.condition + ")");
        result.content.rows = query.Read(select, selection.values, MostRows);
        result.faults = FindFields(report, result.content);
    });
    return result;
}

QList<Fault> CheckTemplate(const QString& file, const QString& path)
{
    TemplateText read = ReadTemplateFile(file);
    if (read.report.select.isEmpty())
        return read.faults;
    Noting(read.faults, read.report.selectLine, [&] {
        Content content;
        content.rows.fields = dao::ReadOnlyQuery(path).FieldsOf(WithoutSelection(read.report.select));
        read.faults += FindFields(read.report, content);
    });
    std::ranges::stable_sort(read.faults, {}, &Fault::line);
    return read.faults;
}

} // namespace report

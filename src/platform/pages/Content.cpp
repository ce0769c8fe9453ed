#include "platform/pages/Content.h"

#include "platform/pages/Placeholders.h"
#include "platform/pages/SelectionFormula.h"
#include "platform/pages/StatementFaults.h"
#include "platform/pages/ValueText.h"

namespace pages {
namespace {

constexpr int MostRows = 200'000;

void ReadTexts(const dao::ReadOnlyQuery& query, const QString& select, Content& content)
{
    const dao::RowTable row = query.Read(select, {}, {.rows = 1});
    for (int field = 0; field < row.fields.size() && row.RowCount() == 1; ++field)
        content.texts.insert(row.fields[field].toLower(), AmountText(CellText({}, row.Cell(0, field))));
}

void ReadRows(const dao::ReadOnlyQuery& query, const Template& design, const QString& formula,
              const std::function<bool()>& isGivenUp, Content& content)
{
    const Selection selection = formula.trimmed().isEmpty() ? Selection{"1", {}} : ReadSelection(formula);
    const QString select = QString(design.select).replace(SelectionPlaceholder, "(" + selection.condition + ")");
    content.rows = query.Read(select, selection.values, {.rows = MostRows, .isGivenUp = isGivenUp});
}

/// Finds fields by name and reports missing ones.
class FieldFinder {
public:
    explicit FieldFinder(const dao::RowTable& table) : rows(table) {}

    int Find(const QString& field, int line)
    {
        const int found = rows.FieldAt(field);
        if (found < 0)
            faults.append(
                {line,
                 QStringLiteral("champ inconnu « %1 » : « select » donne %2").arg(field, rows.fields.join(", "))});
        return found;
    }

    void FindPlaceholders(const QString& text, int line)
    {
        FillPlaceholders(text, [&](const QString& name) { return Find(name, line), QString(); });
    }

    QList<Fault> faults;

private:
    const dao::RowTable& rows;
};

} // namespace

QList<Fault> FindFields(const Template& design, Content& content)
{
    FieldFinder fields(content.rows);
    content.fieldOf.clear();
    for (const Column& column : design.columns)
        content.fieldOf.push_back(fields.Find(column.field, column.line));
    if (design.chart) {
        content.chartFields = {fields.Find(design.chart->labelField, design.chart->line)};
        for (const ChartDesign::Series& series : design.chart->series)
            content.chartFields.push_back(fields.Find(series.field, series.line));
    }
    if (design.group) {
        content.groupField = fields.Find(design.group->field, design.group->line);
        fields.FindPlaceholders(design.group->heading, design.group->line);
        fields.FindPlaceholders(design.group->subtotal, design.group->line);
    }
    return fields.faults;
}

ReadContentResult ReadContent(const Template& design, const Source& source, const std::function<bool()>& isGivenUp)
{
    ReadContentResult result;
    if (!source.selectionFormula.trimmed().isEmpty() && !design.select.contains(SelectionPlaceholder)) {
        result.faults.append(
            {design.selectLine, QStringLiteral("« select » n'a pas de repère %1").arg(SelectionPlaceholder)});
        return result;
    }
    const auto remember = [&] { return result.isGivenUp = result.isGivenUp || (isGivenUp && isGivenUp()); };
    CollectStatementFaults(result.faults, design.selectLine, [&] {
        const dao::ReadOnlyQuery query(source.database);
        ReadTexts(query, source.textSelect, result.content);
        ReadRows(query, design, source.selectionFormula, remember, result.content);
        result.faults = FindFields(design, result.content);
    });
    if (result.isGivenUp)
        result.faults.clear();
    return result;
}

} // namespace pages

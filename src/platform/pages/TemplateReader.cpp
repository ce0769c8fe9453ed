#include "platform/pages/Template.h"

#include "platform/pages/LogoFile.h"
#include "platform/pages/TomlTable.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

namespace pages {
namespace {

constexpr qint64 LargestFile = 64 * 1024;
constexpr double SmallestBody = 40; // mm, room for the rows of a page

struct PaperSize {
    const char* name;
    double width;
    double height;
};
constexpr PaperSize PaperSizes[] = {{"A4", 210, 297}, {"A5", 148, 210}, {"A3", 297, 420}, {"Letter", 215.9, 279.4}};

/// Reads a template from its root table.
class Reader {
public:
    Reader(TomlTable& root, const QStringList& textNames)
        : file(root), placeholders(textNames + QStringList{"date", "page", "pages", "rows"})
    {
    }

    Template Read();

private:
    void ReadPaper(TomlTable paper);
    void ReadLogo(TomlTable logo);
    HeadingLine ReadHeading(TomlTable line) const;
    Column ReadColumn(TomlTable column) const;
    void ReadColumns();
    void ReadRows(TomlTable rows);
    void ReadChart(TomlTable chart);
    static ChartDesign::Series ReadSeries(TomlTable series);
    void ReadGroup(TomlTable group);
    void ReadEnding(TomlTable line);
    void ReadFooter(TomlTable footer);
    void RefuseFullPages();

    TomlTable& file;
    QStringList placeholders;
    Template design;
};

void Reader::ReadPaper(TomlTable paper)
{
    const QString size = paper.Text("size", "A4");
    const auto* known = std::ranges::find_if(PaperSizes, [&](const PaperSize& each) {
        return size.compare(QLatin1String(each.name), Qt::CaseInsensitive) == 0;
    });
    if (known == std::end(PaperSizes)) {
        paper.Refuse("size", QStringLiteral("papier inconnu « %1 » (A3, A4, A5 ou Letter)").arg(size));
        known = PaperSizes;
    }
    design.paper = {known->width, known->height};
    const QString orientation = paper.Text("orientation", "portrait");
    if (orientation == "landscape")
        design.paper.transpose();
    else if (orientation != "portrait")
        paper.Refuse("orientation",
                     QStringLiteral("orientation inconnue « %1 » (portrait ou landscape)").arg(orientation));

    design.top = paper.Number("top_mm", design.top, 0, 100);
    design.right = paper.Number("right_mm", design.right, 0, 100);
    design.bottom = paper.Number("bottom_mm", design.bottom, 0, 100);
    design.left = paper.Number("left_mm", design.left, 0, 100);
    design.points = paper.Number("text_points", design.points, 5, 24);
    paper.RefuseOtherKeys();
}

void Reader::ReadLogo(TomlTable logo)
{
    Logo read;
    read.line = logo.Line();
    read.file = logo.RequiredText("file");
    read.height = logo.Number("height_mm", 18, 3, 100);
    read.alignment = logo.Alignment("align", Qt::AlignLeft);
    logo.RefuseOtherKeys();
    if (read.file.contains('/') || read.file.contains('\\'))
        return logo.Refuse("file", "le logo est à côté du modèle : un nom de fichier sans dossier");
    if (!read.file.trimmed().isEmpty())
        design.logo = read;
}

HeadingLine Reader::ReadHeading(TomlTable line) const
{
    HeadingLine read;
    read.text = line.TextWithPlaceholders("text", placeholders);
    read.right = line.TextWithPlaceholders("right", placeholders);
    read.alignment = line.Alignment("align", Qt::AlignLeft);
    read.points = line.Number("points", design.points, 5, 48);
    read.bold = line.Flag("bold");
    read.italic = line.Flag("italic");
    read.rule = line.Flag("rule");
    read.onEveryPage = line.Flag("every_page");
    read.spaceBefore = line.Number("space_mm", 0, 0, 100);
    line.RefuseOtherKeys();
    return read;
}

Column Reader::ReadColumn(TomlTable column) const
{
    Column read;
    read.line = column.Line();
    read.heading = column.Text("heading");
    read.above = column.Text("above");
    read.field = column.RequiredText("field");
    if (column.Has("width_mm"))
        read.width = column.Number("width_mm", 0, 3, 400);
    else
        column.Refuse("", QStringLiteral("colonne « %1 » sans largeur (width_mm)")
                              .arg(read.heading.isEmpty() ? read.field : read.heading));
    read.alignment = column.Alignment("align", Qt::AlignLeft);
    read.mask = column.Mask("mask");
    read.choices = column.Texts("choices");
    read.blankZero = column.Flag("blank_zero");
    read.total = column.Has("total");
    if (read.total && column.IsText("total"))
        read.totalText = column.TextWithPlaceholders("total", placeholders);
    else
        read.total = column.Flag("total");
    read.hideEmpty = column.Flag("hide_empty");
    column.RefuseOtherKeys();
    return read;
}

void Reader::ReadColumns()
{
    for (const TomlTable& column : file.Tables("column"))
        design.columns << ReadColumn(column);
    if (design.columns.isEmpty()) {
        file.Refuse("column", "aucune colonne ([[column]])");
        return;
    }
    double width = 0;
    for (const Column& column : std::as_const(design.columns))
        width += column.width;
    if (width > design.BodyWidth() + 0.01)
        file.Refuse("column", QStringLiteral("les colonnes ont ensemble %1 mm ; entre les marges il y en a %2")
                                  .arg(width)
                                  .arg(design.BodyWidth()));
}

void Reader::ReadRows(TomlTable rows)
{
    design.select = rows.RequiredText("select").trimmed();
    design.selectLine = rows.FirstLineOf("select");
    design.emptyText = rows.Text("empty", "Aucune ligne");
    rows.RefuseOtherKeys();
    if (design.select.count(SelectionPlaceholder) > 1)
        rows.Refuse("select", QStringLiteral("%1 ne peut y être qu'une fois").arg(SelectionPlaceholder));
}

ChartDesign::Series Reader::ReadSeries(TomlTable series)
{
    using Kind = ChartSeries::Kind;
    constexpr std::pair<const char*, Kind> kinds[] = {
        {"bar", Kind::Bar}, {"line", Kind::Line}, {"thin_line", Kind::ThinLine}};
    ChartDesign::Series read;
    read.line = series.Line();
    read.heading = series.Text("heading");
    read.field = series.RequiredText("field");
    const QString kind = series.Text("kind", "bar");
    const auto* known =
        std::ranges::find_if(kinds, [&](const auto& each) { return kind == QLatin1String(each.first); });
    if (known == std::end(kinds))
        series.Refuse("kind", QStringLiteral("genre inconnu « %1 » (bar, line ou thin_line)").arg(kind));
    else
        read.kind = known->second;
    series.RefuseOtherKeys();
    return read;
}

void Reader::ReadChart(TomlTable chart)
{
    ChartDesign read;
    read.line = chart.Line();
    read.height = chart.Number("height_mm", read.height, 30, 400);
    read.labelField = chart.RequiredText("label");
    read.unit = chart.Text("unit");
    read.note = chart.TextWithPlaceholders("note", placeholders);
    read.emptyText = chart.TextWithPlaceholders("empty", placeholders);
    read.across = chart.Flag("across");
    for (const TomlTable& series : chart.Tables("series"))
        read.series << ReadSeries(series);
    if (read.series.isEmpty())
        chart.Refuse("series", "graphique sans série ([[chart.series]])");
    chart.RefuseOtherKeys();
    design.chart = read;
}

void Reader::ReadGroup(TomlTable group)
{
    Group read;
    read.line = group.Line();
    read.field = group.RequiredText("field");
    read.heading = group.Text("heading", "{" + read.field + "}");
    read.subtotal = group.Text("subtotal");
    group.RefuseOtherKeys();
    design.group = read;
}

void Reader::ReadEnding(TomlTable line)
{
    EndingLine read;
    read.label = line.TextWithPlaceholders("label", placeholders);
    read.value = line.TextWithPlaceholders("value", placeholders);
    read.mask = line.Mask("mask");
    read.keepEmpty = line.Flag("keep_empty");
    read.bold = line.Flag("bold");
    read.rule = line.Flag("rule");
    line.RefuseOtherKeys();
    design.ending << read;
}

void Reader::ReadFooter(TomlTable footer)
{
    design.footer.left = footer.TextWithPlaceholders("left", placeholders);
    design.footer.centre = footer.TextWithPlaceholders("centre", placeholders);
    design.footer.right = footer.TextWithPlaceholders("right", placeholders);
    footer.RefuseOtherKeys();
}

/// Checks that heading and margins leave room for rows.
void Reader::RefuseFullPages()
{
    double room = design.paper.height() - design.top - design.bottom;
    for (const HeadingLine& line : design.heading)
        room -= line.spaceBefore + line.points * 0.6;
    if (design.chart)
        room -= design.chart->height;
    if (room < SmallestBody || design.BodyWidth() < SmallestBody)
        file.Refuse("paper", "les marges, l'en-tête et le graphique ne laissent pas de place aux lignes");
}

Template Reader::Read()
{
    design.title = file.Text("title", "État");
    ReadPaper(file.Table("paper"));
    if (file.Has("logo"))
        ReadLogo(file.Table("logo"));
    for (const TomlTable& line : file.Tables("heading"))
        design.heading << ReadHeading(line);
    if (file.Has("rows"))
        ReadRows(file.Table("rows"));
    else
        file.Refuse("", "aucune interrogation ([rows] avec select)");
    ReadColumns();
    if (file.Has("chart"))
        ReadChart(file.Table("chart"));
    if (file.Has("group"))
        ReadGroup(file.Table("group"));
    if (file.Has("totals")) {
        TomlTable totals = file.Table("totals");
        design.totalLabel = totals.RequiredText("label");
        totals.RefuseOtherKeys();
    }
    for (const TomlTable& line : file.Tables("ending"))
        ReadEnding(line);
    if (file.Has("footer"))
        ReadFooter(file.Table("footer"));
    file.RefuseOtherKeys();
    RefuseFullPages();
    return design;
}

} // namespace

ParsedTemplate ReadTemplate(const QByteArray& text, const QStringList& textNames)
{
    ParsedTemplate read;
    ReadToml(text, read.faults, [&](TomlTable& file) { read.design = Reader(file, textNames).Read(); });
    std::ranges::stable_sort(read.faults, {}, &Fault::line);
    return read;
}

ParsedTemplate ReadTemplateFile(const QString& path, const QStringList& textNames)
{
    const auto refused = [](const QString& reason) { return ParsedTemplate{{}, {{0, reason}}}; };
    const QFileInfo info(path);
    if (!info.exists())
        return refused(QStringLiteral("le fichier n'existe pas"));
    if (!info.isFile()) // a folder, or a pipe, where reading would block
        return refused(QStringLiteral("ce n'est pas un fichier"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return refused(QStringLiteral("le fichier ne peut pas être lu : l'accès est refusé"));
    const QByteArray text = file.read(LargestFile + 1);
    if (file.error() != QFileDevice::NoError)
        return refused(QStringLiteral("le fichier ne peut pas être lu : le disque répond par une erreur"));
    if (text.size() > LargestFile)
        return refused(
            QStringLiteral("le fichier est trop grand pour un modèle d'état (plus de %1 Ko)").arg(LargestFile / 1024));
    ParsedTemplate read = ReadTemplate(text, textNames);
    if (read.design.logo)
        ReadLogoFile(info.dir(), *read.design.logo, read.faults);
    return read;
}

} // namespace pages

#include "platform/report/Template.h"

#include "platform/report/TomlTable.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>

namespace report {
namespace {

constexpr qint64 LargestFile = 64 * 1024;
constexpr double SmallestBody = 40; // mm that must be left for the rows of a page

struct PaperSize {
    const char* name;
    double width;
    double height;
};
constexpr PaperSize paperSizes[] = {{"A4", 210, 297}, {"A5", 148, 210}, {"A3", 297, 420}, {"Letter", 215.9, 279.4}};

const QStringList textPlaces = {"ch1", "ch2",  "ch3",  "ch4",  "ch5",  "ch6",   "ch7", "ch8",
                                "ch9", "ch10", "ch30", "date", "page", "pages", "rows"};

void ReadPaper(TomlTable paper, Template& report)
{
    const QString size = paper.Text("size", "A4");
    const auto* known = std::ranges::find_if(paperSizes, [&](const PaperSize& each) {
        return size.compare(QLatin1String(each.name), Qt::CaseInsensitive) == 0;
    });
    if (known == std::end(paperSizes)) {
        paper.Refuse("size", QStringLiteral("papier inconnu « %1 » (A3, A4, A5 ou Letter)").arg(size));
        known = paperSizes;
    }
    report.paper = {known->width, known->height};
    const QString orientation = paper.Text("orientation", "portrait");
    if (orientation == "landscape")
        report.paper.transpose();
    else if (orientation != "portrait")
        paper.Refuse("orientation",
                     QStringLiteral("orientation inconnue « %1 » (portrait ou landscape)").arg(orientation));

    report.top = paper.Number("top_mm", report.top, 0, 100);
    report.right = paper.Number("right_mm", report.right, 0, 100);
    report.bottom = paper.Number("bottom_mm", report.bottom, 0, 100);
    report.left = paper.Number("left_mm", report.left, 0, 100);
    report.points = paper.Number("text_points", report.points, 5, 24);
    paper.RefuseOtherKeys();
}

HeadingLine ReadHeading(TomlTable line, double points)
{
    HeadingLine read;
    read.text = line.TextWithPlaces("text", textPlaces);
    read.right = line.TextWithPlaces("right", textPlaces);
    read.alignment = line.Alignment("align", Qt::AlignLeft);
    read.points = line.Number("points", points, 5, 48);
    read.bold = line.Flag("bold");
    read.italic = line.Flag("italic");
    read.rule = line.Flag("rule");
    read.onEveryPage = line.Flag("every_page");
    read.spaceBefore = line.Number("space_mm", 0, 0, 100);
    line.RefuseOtherKeys();
    return read;
}

Column ReadColumn(TomlTable column)
{
    Column read;
    read.line = column.Line();
    read.heading = column.Text("heading");
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
        read.totalText = column.TextWithPlaces("total", textPlaces);
    else
        read.total = column.Flag("total");
    read.hideEmpty = column.Flag("hide_empty");
    column.RefuseOtherKeys();
    return read;
}

void ReadColumns(TomlTable& file, Template& report)
{
    for (const TomlTable& column : file.Tables("column"))
        report.columns << ReadColumn(column);
    if (report.columns.isEmpty()) {
        file.Refuse("column", "aucune colonne ([[column]])");
        return;
    }
    double width = 0;
    for (const Column& column : std::as_const(report.columns))
        width += column.width;
    if (width > report.BodyWidth() + 0.01)
        file.Refuse("column", QStringLiteral("les colonnes ont ensemble %1 mm ; entre les marges il y en a %2")
                                  .arg(width)
                                  .arg(report.BodyWidth()));
}

void ReadRows(TomlTable rows, Template& report)
{
    report.select = rows.RequiredText("select").trimmed();
    report.selectLine = rows.FirstLineOf("select");
    report.emptyText = rows.Text("empty", "Aucune ligne");
    rows.RefuseOtherKeys();
    if (report.select.count(SelectionPlace) > 1)
        rows.Refuse("select", QStringLiteral("%1 ne peut y être qu'une fois").arg(SelectionPlace));
}

void ReadGroup(TomlTable group, Template& report)
{
    Group read;
    read.line = group.Line();
    read.field = group.RequiredText("field");
    read.heading = group.Text("heading", "{" + read.field + "}");
    read.subtotal = group.Text("subtotal");
    group.RefuseOtherKeys();
    report.group = read;
}

void ReadEnding(TomlTable line, Template& report)
{
    EndingLine read;
    read.label = line.TextWithPlaces("label", textPlaces);
    read.value = line.TextWithPlaces("value", textPlaces);
    read.mask = line.Mask("mask");
    read.keepEmpty = line.Flag("keep_empty");
    read.bold = line.Flag("bold");
    read.rule = line.Flag("rule");
    line.RefuseOtherKeys();
    report.ending << read;
}

void ReadFooter(TomlTable footer, Template& report)
{
    report.footer.left = footer.TextWithPlaces("left", textPlaces);
    report.footer.centre = footer.TextWithPlaces("centre", textPlaces);
    report.footer.right = footer.TextWithPlaces("right", textPlaces);
    footer.RefuseOtherKeys();
}

/// Rows need room between what stands above and below them.
void RefuseFullPages(TomlTable& file, const Template& report)
{
    double room = report.paper.height() - report.top - report.bottom;
    for (const HeadingLine& line : report.heading)
        room -= line.spaceBefore + line.points * 0.6;
    if (room < SmallestBody || report.BodyWidth() < SmallestBody)
        file.Refuse("paper", "les marges et l'en-tête ne laissent pas de place aux lignes");
}

Template ReadWhole(TomlTable& file)
{
    Template report;
    report.title = file.Text("title", "État");
    ReadPaper(file.Table("paper"), report);
    for (const TomlTable& line : file.Tables("heading"))
        report.heading << ReadHeading(line, report.points);
    if (file.Has("rows"))
        ReadRows(file.Table("rows"), report);
    else
        file.Refuse("", "aucune interrogation ([rows] avec select)");
    ReadColumns(file, report);
    if (file.Has("group"))
        ReadGroup(file.Table("group"), report);
    if (file.Has("totals")) {
        TomlTable totals = file.Table("totals");
        report.totalLabel = totals.RequiredText("label");
        totals.RefuseOtherKeys();
    }
    for (const TomlTable& line : file.Tables("ending"))
        ReadEnding(line, report);
    if (file.Has("footer"))
        ReadFooter(file.Table("footer"), report);
    file.RefuseOtherKeys();
    RefuseFullPages(file, report);
    return report;
}

} // namespace

TemplateText ReadTemplate(const QByteArray& text)
{
    TemplateText read;
    ReadToml(text, read.faults, [&read](TomlTable& file) { read.report = ReadWhole(file); });
    std::ranges::stable_sort(read.faults, {}, &Fault::line);
    return read;
}

TemplateText ReadTemplateFile(const QString& path)
{
    const auto refused = [](const QString& reason) { return TemplateText{{}, {{0, reason}}}; };
    const QFileInfo info(path);
    if (!info.exists())
        return refused(QStringLiteral("le fichier n'existe pas"));
    if (info.isDir())
        return refused(QStringLiteral("c'est un dossier et non un fichier"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return refused(QStringLiteral("le fichier ne peut pas être lu : l'accès est refusé"));
    const QByteArray text = file.read(LargestFile + 1);
    if (file.error() != QFileDevice::NoError)
        return refused(QStringLiteral("le fichier ne peut pas être lu : le disque répond par une erreur"));
    if (text.size() > LargestFile)
        return refused(
            QStringLiteral("le fichier est trop grand pour un modèle d'état (plus de %1 Ko)").arg(LargestFile / 1024));
    return ReadTemplate(text);
}

} // namespace report

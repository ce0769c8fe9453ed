#include "practice/templates/TemplateCheck.h"

#include "data/Practice.h"
#include "data/ReportTemplates.h"
#include "platform/basic/RuntimeError.h"
#include "platform/dao/Engine.h"
#include "platform/pages/Placeholders.h"
#include "platform/pages/TemplateCheck.h"
#include "platform/store/Creation.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace practice {
namespace {

/// All texts of a template that may contain placeholders for fields of textes.
QStringList TextsWithPlaces(const pages::Template& design)
{
    QStringList texts{design.footer.left, design.footer.centre, design.footer.right};
    for (const pages::HeadingLine& line : design.heading)
        texts << line.text << line.right;
    for (const pages::Column& column : design.columns)
        texts << column.totalText;
    for (const pages::EndingLine& line : design.ending)
        texts << line.label << line.value;
    return texts;
}

/// The first line with the placeholder, from 1; 0 if there is none.
int LineOf(const QString& file, const QString& place)
{
    QFile text(file);
    if (!text.open(QIODevice::ReadOnly))
        return 0;
    const QString whole = QString::fromUtf8(text.readAll());
    const qsizetype at = whole.indexOf("{" + place, 0, Qt::CaseInsensitive);
    return at < 0 ? 0 : static_cast<int>(whole.first(at).count('\n')) + 1;
}

/// Placeholders of texts that no screen writes for this report: they would print the texts of an earlier report.
QList<pages::Fault> FaultsOfUnwrittenTexts(const QString& file)
{
    const QStringList written = data::ReportTextsOf(QFileInfo(file).fileName());
    const QStringList always{"ch1", "ch2", "ch3", "ch30"};
    QList<pages::Fault> faults;
    const pages::ParsedTemplate read = pages::ReadTemplateFile(file, data::ReportTextNames);
    if (written.isEmpty() || !read.faults.isEmpty())
        return faults;
    QStringList told;
    for (const QString& text : TextsWithPlaces(read.design))
        pages::FillPlaceholders(text, [&](const QString& place) {
            const QString name = place.toLower();
            if (name.startsWith("ch") && !(written + always + told).contains(name)) {
                told << name;
                faults.append(
                    {LineOf(file, name),
                     QString("« {%1} » n'est pas rempli pour cet état, qui reçoit %2").arg(name, written.join(", "))});
            }
            return QString();
        });
    return faults;
}

} // namespace

QStringList CheckReportTemplate(const QString& file)
{
    const QTemporaryDir place;
    if (!place.isValid())
        throw basic::RuntimeError::Described(basic::Error::PathAccess, "Le dossier temporaire ne peut pas être créé.");
    const QString database = place.filePath(data::DatabaseFile);
    // The first opening adds the field Mt2.
    store::CreateDatabase(database, data::Schema() + "\nALTER TABLE Prov ADD COLUMN Mt2 REAL DEFAULT 0;");

    QStringList mistakes;
    for (const pages::Fault& fault :
         pages::CheckTemplate(file, {database, data::ReportTextSelect, data::ReportTextNames}) +
             FaultsOfUnwrittenTexts(file))
        mistakes << pages::FaultText(file, fault);
    return mistakes;
}

} // namespace practice

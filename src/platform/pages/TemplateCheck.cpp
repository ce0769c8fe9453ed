#include "platform/pages/TemplateCheck.h"

#include "platform/pages/StatementFaults.h"

#include <QFileInfo>
#include <algorithm>

namespace pages {

QList<Fault> CheckTemplate(const QString& file, const Source& source)
{
    ParsedTemplate read = ReadTemplateFile(file, source.textNames);
    if (read.design.select.isEmpty())
        return read.faults;
    CollectStatementFaults(read.faults, read.design.selectLine, [&] {
        Content content;
        const QString unselected = QString(read.design.select).replace(SelectionPlaceholder, "(1)");
        content.rows.fields = dao::ReadOnlyQuery(source.database).FieldsOf(unselected);
        read.faults += FindFields(read.design, content);
    });
    std::ranges::stable_sort(read.faults, {}, &Fault::line);
    return read.faults;
}

QString FaultText(const QString& file, const Fault& fault)
{
    const QString name = QFileInfo(file).fileName();
    return fault.line > 0 ? QStringLiteral("%1, ligne %2 : %3").arg(name).arg(fault.line).arg(fault.reason)
                          : QStringLiteral("%1 : %2").arg(name, fault.reason);
}

} // namespace pages

#include "platform/forms/FrenchSpaces.h"

#include <QRegularExpression>

namespace forms {

QString WithFrenchSpaces(const QString& text)
{
    static const QRegularExpression codeOrSpace(
        "(`[^`]*`|^practice .*$)|(?<=«) |(?<=[^\\s|!]) (?=[;:?!»](?![\\[\\-!]| !))",
        QRegularExpression::MultilineOption);
    QString spaced;
    qsizetype from = 0;
    for (const QRegularExpressionMatch& match : codeOrSpace.globalMatch(text)) {
        spaced += QStringView(text).sliced(from, match.capturedStart() - from);
        spaced += match.hasCaptured(1) ? match.captured() : QString(QChar(QChar::Nbsp));
        from = match.capturedEnd();
    }
    spaced += QStringView(text).sliced(from);
    return spaced;
}

} // namespace forms

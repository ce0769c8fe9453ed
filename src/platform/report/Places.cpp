#include "platform/report/Places.h"

namespace report {

FilledText FillPlaces(const QString& text, const std::function<QString(const QString& place)>& valueOf)
{
    FilledText filled;
    bool hasPlace = false;
    bool hasValue = false;
    qsizetype position = 0;
    for (;;) {
        const qsizetype open = text.indexOf('{', position);
        const qsizetype close = open < 0 ? -1 : text.indexOf('}', open);
        if (close < 0)
            break;
        const QString place = text.sliced(open + 1, close - open - 1);
        QString value = valueOf(place.section(u'|', 0, 0));
        if (value.isEmpty())
            value = place.section(u'|', 1);
        hasPlace = true;
        hasValue = hasValue || !value.isEmpty();
        filled.text += text.sliced(position, open - position) + value;
        position = close + 1;
    }
    filled.text += text.sliced(position);
    filled.printed = !filled.text.trimmed().isEmpty() && (hasValue || !hasPlace);
    return filled;
}

} // namespace report

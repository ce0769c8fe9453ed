#include "platform/pages/Placeholders.h"

namespace pages {

FilledText FillPlaceholders(const QString& text, const std::function<QString(const QString& name)>& valueOf)
{
    FilledText filled;
    bool hasPlaceholder = false;
    bool hasValue = false;
    qsizetype position = 0;
    for (;;) {
        const qsizetype open = text.indexOf('{', position);
        const qsizetype close = open < 0 ? -1 : text.indexOf('}', open);
        if (close < 0)
            break;
        const QString placeholder = text.sliced(open + 1, close - open - 1);
        QString value = valueOf(placeholder.section(u'|', 0, 0));
        if (value.isEmpty())
            value = placeholder.section(u'|', 1);
        hasPlaceholder = true;
        hasValue = hasValue || !value.isEmpty();
        filled.text += text.sliced(position, open - position) + value;
        position = close + 1;
    }
    filled.text += text.sliced(position);
    filled.printed = !filled.text.trimmed().isEmpty() && (hasValue || !hasPlaceholder);
    return filled;
}

} // namespace pages

#include "practice/check/Findings.h"

#include "platform/basic/Numbers.h"

#include <cmath>

namespace practice {
namespace {

constexpr int MostExamples = 5;

QString ShownNumber(double number)
{
    if (std::isinf(number))
        return number > 0 ? QStringLiteral("infini") : QStringLiteral("moins l'infini");
    return basic::PlainText(number);
}

QString ShownText(QString text)
{
    constexpr int longest = 40;
    for (QChar& character : text) {
        if (!character.isPrint() && !character.isSurrogate())
            character = u'·';
    }
    if (text.size() > longest)
        text = text.left(longest - 1) + u'…';
    return "« " + text + " »";
}

} // namespace

QString ShownValue(const store::StoredValue& value, std::string_view type)
{
    if (type == "blob")
        return QStringLiteral("données binaires");
    switch (value.kind) {
    case store::StoredValue::Kind::Null:
        break;
    case store::StoredValue::Kind::Whole:
        return QString::number(value.whole);
    case store::StoredValue::Kind::Real:
        return ShownNumber(value.real);
    case store::StoredValue::Kind::Text:
        return ShownText(QString::fromUtf8(value.text, value.length));
    }
    return QStringLiteral("vide");
}

QString CountedRows(qint64 count)
{
    return QString("%1 ligne%2").arg(count).arg(count > 1 ? "s" : "");
}

void Findings::Note(qint64 key, const QString& value)
{
    hasKeys = true;
    Add(QString::number(key) + (value.isEmpty() ? QString() : " : " + value));
}

void Findings::NoteValue(const QString& value)
{
    Add(value);
}

void Findings::Add(const QString& example)
{
    if (++count <= MostExamples && !example.isEmpty())
        examples << example;
}

QString Findings::Text() const
{
    QString text = "(" + CountedRows(count);
    if (!examples.isEmpty())
        text += (hasKeys ? ", num " : ", ") + examples.join(", ");
    return text + (count > MostExamples ? ", ...)" : ")");
}

} // namespace practice

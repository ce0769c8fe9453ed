#include "platform/pages/TomlTable.h"

#include "platform/pages/Placeholders.h"
#include "platform/pages/TomlSyntax.h"

#include <QRegularExpression>

namespace pages {
namespace {

int LineOf(const toml::node& node)
{
    return static_cast<int>(node.source().begin.line);
}

QString TextOf(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

const toml::table& NoTable()
{
    static const toml::table none;
    return none;
}

} // namespace

TomlTable::TomlTable(const toml::table& source, const QString& tableName, QList<Fault>& found)
    : table(&source), name(tableName), faults(&found)
{
}

int TomlTable::Line() const
{
    return LineOf(*table);
}

const toml::node* TomlTable::Find(const char* key)
{
    readKeys << QString::fromUtf8(key);
    return table->get(key);
}

void TomlTable::Refuse(const char* key, const QString& reason)
{
    const toml::node* node = table->get(key);
    faults->append({node != nullptr ? LineOf(*node) : Line(), reason});
}

void TomlTable::RefuseKind(const char* key, const char* kind)
{
    Refuse(key, QStringLiteral("« %1 » doit être %2").arg(QString::fromUtf8(key), QString::fromUtf8(kind)));
}

QString TomlTable::Text(const char* key, const QString& otherwise)
{
    const toml::node* node = Find(key);
    if (node == nullptr)
        return otherwise;
    if (const auto* text = node->as_string())
        return TextOf(text->get());
    RefuseKind(key, "un texte entre guillemets");
    return otherwise;
}

QString TomlTable::RequiredText(const char* key)
{
    const QString text = Text(key);
    if (!Has(key))
        Refuse(key, QStringLiteral("« %1 » manque dans %2").arg(QString::fromUtf8(key), name));
    else if (table->get(key)->is_string() && text.trimmed().isEmpty())
        Refuse(key, QStringLiteral("« %1 » est vide").arg(QString::fromUtf8(key)));
    return text;
}

QString TomlTable::TextWithPlaceholders(const char* key, const QStringList& known)
{
    const QString text = Text(key);
    FillPlaceholders(text, [&](const QString& placeholder) {
        if (!known.contains(placeholder))
            Refuse(key, QStringLiteral("repère inconnu « {%1} »").arg(placeholder));
        return QString();
    });
    return text;
}

QString TomlTable::Mask(const char* key)
{
    static const QRegularExpression mask(R"(^(dd/mm/yyyy|[#0 ]*[#0][#0 ]*(\.[#0 ]*)?)$)");
    const QString text = Text(key);
    if (text.isEmpty() || (text.size() <= 40 && mask.match(text).hasMatch()))
        return text;
    Refuse(key,
           QStringLiteral("masque inconnu « %1 » (par exemple \"# ### ##0.00\" ou \"dd/mm/yyyy\")").arg(text.left(40)));
    return {};
}

double TomlTable::Number(const char* key, double otherwise, double lowest, double highest)
{
    const toml::node* node = Find(key);
    if (node == nullptr)
        return otherwise;
    const auto number = node->is_number() ? node->value<double>() : std::nullopt;
    if (!number)
        RefuseKind(key, "un nombre");
    else if (!(*number >= lowest && *number <= highest))
        Refuse(key,
               QStringLiteral("« %1 » doit aller de %2 à %3").arg(QString::fromUtf8(key)).arg(lowest).arg(highest));
    else
        return *number;
    return otherwise;
}

bool TomlTable::Flag(const char* key)
{
    const toml::node* node = Find(key);
    if (node != nullptr && !node->is_boolean())
        RefuseKind(key, "true ou false");
    return node != nullptr && node->value_or(false);
}

Qt::Alignment TomlTable::Alignment(const char* key, Qt::Alignment otherwise)
{
    if (!Has(key))
        return otherwise;
    const QString text = Text(key);
    if (text == "left")
        return Qt::AlignLeft;
    if (text == "right")
        return Qt::AlignRight;
    if (text == "centre")
        return Qt::AlignHCenter;
    Refuse(key, QStringLiteral("alignement inconnu « %1 » (left, centre ou right)").arg(text));
    return otherwise;
}

QStringList TomlTable::Texts(const char* key)
{
    QStringList texts;
    const toml::node* node = Find(key);
    if (node == nullptr)
        return texts;
    const toml::array* list = node->as_array();
    if (list == nullptr || !list->is_homogeneous<std::string>()) {
        RefuseKind(key, "une liste de textes");
        return texts;
    }
    for (const toml::node& text : *list)
        texts << TextOf(text.value_or(std::string_view()));
    return texts;
}

TomlTable TomlTable::Table(const char* key)
{
    const toml::node* node = Find(key);
    const QString part = "[" + QString::fromUtf8(key) + "]";
    if (node != nullptr && !node->is_table())
        RefuseKind(key, "un tableau entre crochets");
    return {node != nullptr && node->is_table() ? *node->as_table() : NoTable(), part, *faults};
}

QList<TomlTable> TomlTable::Tables(const char* key)
{
    QList<TomlTable> tables;
    const toml::node* node = Find(key);
    if (node == nullptr)
        return tables;
    const toml::array* list = node->as_array();
    if (list == nullptr || !list->is_homogeneous<toml::table>()) {
        RefuseKind(key, "un tableau entre doubles crochets");
        return tables;
    }
    for (const toml::node& each : *list)
        tables.append(TomlTable(*each.as_table(), "[[" + QString::fromUtf8(key) + "]]", *faults));
    return tables;
}

int TomlTable::FirstLineOf(const char* key) const
{
    const toml::node* node = table->get(key);
    if (node == nullptr || !node->is_string())
        return Line();
    const std::string_view text = node->as_string()->get();
    const auto first = text.find_first_not_of(" \t\r\n");
    const auto newlines = [](std::string_view part) { return static_cast<int>(std::ranges::count(part, '\n')); };
    // The parser reports the line of the closing quotes: subtract the line breaks in the text.
    return static_cast<int>(node->source().end.line) - newlines(text) +
           newlines(text.substr(0, first == text.npos ? 0 : first));
}

void TomlTable::RefuseOtherKeys()
{
    for (const auto& [key, node] : *table)
        if (!readKeys.contains(TextOf(key.str())))
            faults->append({static_cast<int>(key.source().begin.line),
                            QStringLiteral("« %1 » est inconnu dans %2").arg(TextOf(key.str()), name)});
}

void ReadToml(const QByteArray& text, QList<Fault>& faults, const std::function<void(TomlTable&)>& read)
{
    if (const auto unreadable = FindUnreadableText(text)) {
        faults.append(*unreadable);
        return;
    }
    try {
        const toml::table root = toml::parse(std::string_view(text.constData(), static_cast<std::size_t>(text.size())));
        TomlTable file(root, "le modèle", faults);
        read(file);
    } catch (const toml::parse_error& error) {
        faults.append(ExplainSyntaxError(text, static_cast<int>(error.source().begin.line)));
    }
}

} // namespace pages

#include "practice/commands/DesktopEntry.h"

#include "platform/basic/RuntimeError.h"

#include <algorithm>

namespace practice {
namespace {

void RefuseControlCharacters(const QString& path)
{
    if (std::ranges::any_of(path, [](QChar letter) {
            return letter.category() == QChar::Other_Control && !QStringView(u"\n\r\t").contains(letter);
        }))
        throw basic::RuntimeError::Described(
            basic::Error::BadArgument,
            QString("Le chemin « %1 » contient un caractère de contrôle : une entrée de menu ne peut pas le nommer.")
                .arg(path));
}

/// Escapes a value: line breaks, backslashes and leading blanks.
QString Value(const QString& text)
{
    const qsizetype blanks = std::ranges::find_if(text, [](QChar letter) { return letter != ' '; }) - text.begin();
    QString escaped = QString("\\s").repeated(blanks);
    for (const QChar letter : text.mid(blanks)) {
        switch (letter.unicode()) {
        case '\\':
            escaped += "\\\\";
            break;
        case '\n':
            escaped += "\\n";
            break;
        case '\r':
            escaped += "\\r";
            break;
        case '\t':
            escaped += "\\t";
            break;
        default:
            escaped += letter;
        }
    }
    return escaped;
}

/// Quotes an argument of Exec and escapes its special characters and field codes.
QString Quoted(const QString& word)
{
    QString quoted = "\"";
    for (const QChar letter : word) {
        if (QStringView(u"\"`$\\").contains(letter))
            quoted += '\\';
        quoted += letter;
        if (letter == '%')
            quoted += '%';
    }
    return quoted + '"';
}

} // namespace

QByteArray DesktopEntryText(const MenuEntry& entry)
{
    RefuseControlCharacters(entry.program);
    RefuseControlCharacters(entry.folder);
    const std::pair<const char*, QString> lines[] = {
        {"Type", "Application"},         {"Name", entry.name},           {"Comment", entry.comment},
        {"Exec", Quoted(entry.program)}, {"Path", entry.folder},         {"Icon", "zep-lumo"},
        {"Terminal", "false"},           {"StartupWMClass", "ZEP Lumo"}, {"Categories", "Office;"},
    };
    QString text = "[Desktop Entry]\n";
    for (const auto& [key, value] : lines)
        text += QString(key) + "=" + Value(value) + "\n";
    return text.toUtf8();
}

} // namespace practice

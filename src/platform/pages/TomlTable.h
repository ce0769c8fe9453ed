#pragma once

#include "platform/pages/Template.h"

#include <QSet>
#include <functional>
#include <toml++/toml.h>

namespace pages {

/// One table of a template file. Its readers return the value of a key; for a value that isn't right they note a fault
/// with the key's line and return a default, so that one reading finds all mistakes.
class TomlTable {
public:
    /// `tableName` is the table's name in messages ("[[column]]"); `found` receives the faults and outlives the table.
    TomlTable(const toml::table& source, const QString& tableName, QList<Fault>& found);

    int Line() const;
    bool Has(const char* key) const { return table->contains(key); }
    bool IsText(const char* key) const { return Has(key) && table->get(key)->is_string(); }

    QString Text(const char* key, const QString& otherwise = {});
    QString RequiredText(const char* key);
    /// Refuses placeholders that are not among `known`.
    QString TextWithPlaceholders(const char* key, const QStringList& known);
    /// A display mask: "#", "0", point and blanks, or "dd/mm/yyyy".
    QString Mask(const char* key);
    double Number(const char* key, double otherwise, double lowest, double highest);
    bool Flag(const char* key);
    Qt::Alignment Alignment(const char* key, Qt::Alignment otherwise);
    QStringList Texts(const char* key);
    TomlTable Table(const char* key);
    QList<TomlTable> Tables(const char* key);

    /// The line of a text's first character that isn't blank: a text in three quotes may start on the next line.
    int FirstLineOf(const char* key) const;

    /// Notes a fault at the key, or at the table when it has no such key.
    void Refuse(const char* key, const QString& reason);
    /// Notes every key that nothing has read, such as a mistyped one.
    void RefuseOtherKeys();

private:
    const toml::node* Find(const char* key);
    void RefuseKind(const char* key, const char* kind);

    const toml::table* table;
    QString name;
    QList<Fault>* faults;
    QSet<QString> readKeys;
};

/// Parses `text` and calls `read` with its root table; text that can't be parsed is one fault and `read` isn't called.
void ReadToml(const QByteArray& text, QList<Fault>& faults, const std::function<void(TomlTable&)>& read);

} // namespace pages

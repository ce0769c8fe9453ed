#pragma once

#include "platform/pages/Template.h"

#include <QSet>
#include <functional>
#include <toml++/toml.h>

namespace pages {

/// One table of a template file. The readers return the value of a key; for an invalid value they add a fault with the
/// key's line and return a default, so that one pass finds all errors.
class TomlTable {
public:
    /// `tableName` is the table's name in messages ("[[column]]"); `found` receives the faults and outlives the table.
    TomlTable(const toml::table& source, const QString& tableName, QList<Fault>& found);

    int Line() const;
    bool Has(const char* key) const { return table->contains(key); }
    bool IsText(const char* key) const { return Has(key) && table->get(key)->is_string(); }

    QString Text(const char* key, const QString& otherwise = {});
    QString RequiredText(const char* key);
    /// A text whose placeholders must be among `known`.
    QString TextWithPlaceholders(const char* key, const QStringList& known);
    /// A display mask: "#", "0", point and blanks, or "dd/mm/yyyy".
    QString Mask(const char* key);
    double Number(const char* key, double otherwise, double lowest, double highest);
    bool Flag(const char* key);
    Qt::Alignment Alignment(const char* key, Qt::Alignment otherwise);
    QStringList Texts(const char* key);
    TomlTable Table(const char* key);
    QList<TomlTable> Tables(const char* key);

    /// The line of a text's first non-blank character: a multi-line text may start on the next line.
    int FirstLineOf(const char* key) const;

    /// Adds a fault at the key, or at the table if the key is missing.
    void Refuse(const char* key, const QString& reason);
    /// Adds a fault for every key that wasn't read, such as a mistyped one.
    void RefuseOtherKeys();

private:
    const toml::node* Find(const char* key);
    void RefuseKind(const char* key, const char* kind);

    const toml::table* table;
    QString name;
    QList<Fault>* faults;
    QSet<QString> readKeys;
};

/// Parses `text` and calls `read` with its root table; a syntax error is one fault and `read` isn't called.
void ReadToml(const QByteArray& text, QList<Fault>& faults, const std::function<void(TomlTable&)>& read);

} // namespace pages

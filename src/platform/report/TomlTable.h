#pragma once

#include "platform/report/Template.h"

#include <QSet>
#include <functional>
#include <toml++/toml.h>

namespace report {

/// One table of a template file. Readers give what stands under a key, or note a fault with the key's line and give
/// something harmless, so that one reading finds all mistakes.
class TomlTable {
public:
    /// `what` names the table in messages ("[[column]]"); `faults` outlives it.
    TomlTable(const toml::table& source, const QString& tableName, QList<Fault>& found);

    int Line() const;
    bool Has(const char* key) const { return table->contains(key); }
    bool IsText(const char* key) const { return Has(key) && table->get(key)->is_string(); }

    QString Text(const char* key, const QString& otherwise = {});
    QString RequiredText(const char* key);
    /// Refuses places in braces that are not among `places`.
    QString TextWithPlaces(const char* key, const QStringList& places);
    /// A display mask: "#", "0", point and blanks, or "dd/mm/yyyy".
    QString Mask(const char* key);
    double Number(const char* key, double otherwise, double lowest, double highest);
    bool Flag(const char* key);
    Qt::Alignment Alignment(const char* key, Qt::Alignment otherwise);
    QStringList Texts(const char* key);
    TomlTable Table(const char* key);
    QList<TomlTable> Tables(const char* key);

    /// The line of a text's first character that counts (a text in three quotes may start on the next line).
    int FirstLineOf(const char* key) const;

    /// Notes a fault at the key, or at the table when it has no such key.
    void Refuse(const char* key, const QString& reason);
    /// Notes every key that nothing has read: a mistyped one must not go unnoticed.
    void RefuseOtherKeys();

private:
    const toml::node* Find(const char* key);
    void RefuseKind(const char* key, const char* kind);

    const toml::table* table;
    QString name;
    QList<Fault>* faults;
    QSet<QString> known;
};

/// Parses `text` and hands its root to `read`; text that is no TOML is one fault and `read` isn't called.
void ReadToml(const QByteArray& text, QList<Fault>& faults, const std::function<void(TomlTable&)>& read);

} // namespace report

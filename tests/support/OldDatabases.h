#pragma once

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocale>
#include <QString>
#include <QStringList>
#include <map>
#include <vector>

#include <gtest/gtest.h>

namespace tests {

/// The old databases of the tests, usual.mdb, usual2003.mdb, odd.mdb and next-day.mdb, and the configuration that goes
/// with them (code 2468).
inline QString OldFile(const QString& name)
{
    return QString(OLD_DATABASES) + "/" + name;
}

struct OldTable {
    QStringList fields;
    std::vector<QStringList> rows; ///< dates yyyy-mm-dd, times hh:mm, Null empty
};

/// What an old database contains, by table, from the text that was written with it.
inline std::map<QString, OldTable> OldContentOf(const QString& name)
{
    QFile file(OldFile(name == "usual2003" ? "usual.txt" : name + ".txt"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
    std::map<QString, OldTable> tables;
    OldTable* table = nullptr;
    for (const QByteArray& line : file.readAll().split('\n')) {
        const QString text = QString::fromUtf8(line).trimmed();
        if (const QStringList words = text.split(' ');
            words.first().endsWith("]") && words.size() > 1 && text[1].isLetter()) {
            table = &tables[words.first().mid(1).chopped(1)];
            table->fields = words.mid(1);
            continue;
        }
        QStringList cells;
        for (const QJsonValue& cell : QJsonDocument::fromJson(line).array())
            cells << (cell.isDouble() ? QString::number(cell.toDouble(), 'g', QLocale::FloatingPointShortest)
                                      : cell.toString());
        if (!cells.isEmpty())
            table->rows.push_back(cells);
    }
    return tables;
}

} // namespace tests

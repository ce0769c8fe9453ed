#include "data/Practice.h"
#include "platform/dao/Engine.h"
#include "platform/store/Creation.h"
#include "platform/store/DamageCheck.h"
#include "platform/store/Opening.h"
#include "support/Files.h"
#include "support/OtherProgram.h"

#include <QTemporaryDir>
#include <QtEndian>

// A large practice is opened after a check of its pages alone, which doesn't see an amount that only an index holds
// wrongly; the balances are read from there.
TEST(Balances, AreCheckedAgainstTheirTables)
{
    constexpr qsizetype pageBytes = 4096;
    constexpr double amount = 12345.67;
    const QTemporaryDir folder;
    const QString path = folder.filePath("ZEP_ONE.MDB");
    const auto damage = [&path](store::Thoroughness thoroughness) {
        return store::FirstDamage(store::OpenForReading(path).get(), thoroughness, data::PracticeRules().summedIndexes);
    };
    for (const auto& [table, index] : {std::pair("Actes", "Actes_Date_Montant"), {"Recettes", "Recettes_Date"}}) {
        SCOPED_TRACE(index);
        QFile::remove(path);
        store::CreateDatabase(path, data::Schema());
        tests::OtherProgram program(path);
        program.Run(QString("insert into %1 (Date, montant) values ('2008-06-16', 40), ('2008-06-17', %2)")
                        .arg(table)
                        .arg(amount, 0, 'f', 2)
                        .toUtf8()
                        .constData());
        const qsizetype page =
            program
                .Answer(QString("select rootpage from sqlite_schema where name = '%1'").arg(index).toUtf8().constData())
                .toLongLong();
        program.Run("pragma journal_mode=delete");
        EXPECT_EQ(damage(store::Thoroughness::Sums), "");

        QByteArray bytes = tests::BytesOf(path);
        QByteArray stored(sizeof amount, '\0');
        qToBigEndian(amount, stored.data());
        const qsizetype at = bytes.indexOf(stored, (page - 1) * pageBytes);
        ASSERT_LT(at, page * pageBytes);
        tests::WriteFile(path, bytes.replace(at + 1, 1, "\xC9"));
        EXPECT_EQ(damage(store::Thoroughness::Pages), "");
        EXPECT_EQ(damage(store::Thoroughness::Sums), QString("index %1").arg(index));
        EXPECT_NE(damage(store::Thoroughness::Indexes), "");
    }
}

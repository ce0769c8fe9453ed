#include "archives/Generations.h"

#include "archives/Archives.h"
#include "data/Practice.h"
#include "platform/host/FileWork.h"
#include "platform/host/Host.h"
#include "support/Files.h"
#include "support/OtherProgram.h"
#include "support/Printing.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>

using tests::BytesOf;
using tests::DateFile;
using tests::WriteFile;

namespace {

QDate Day(const char* iso)
{
    return QDate::fromString(iso, Qt::ISODate);
}

/// Closed on Fridays, in August and over the feast of March.
bool IsWorked(const QDate& day)
{
    return day.dayOfWeek() != Qt::Friday && day.month() != 8 && (day < Day("2026-03-18") || day > Day("2026-03-24"));
}

/// The evenings of a practice: each writes an act and copies the database, as the program does at its end.
class Evenings : public testing::Test {
protected:
    Evenings() { data::CreatePractice(folder, {.accessCode = 6, .letterhead = {}}); }
    ~Evenings() override { host::FixToday(QDate()); }

    void End(const QDate& day)
    {
        host::FixToday(day);
        tests::OtherProgram(folder + "/ZEP_ONE.MDB").Run("insert into Actes (Type) values ('C')");
        archives::CopyToArchives(folder);
        DateFile(Copy(), day);
    }
    void End(const char* iso) { End(Day(iso)); }

    QString Copy(const QString& name = "ZEP_ONE.MDB") const { return folder + "/ARCHIVES/" + name; }
    /// Without their seals.
    QStringList Files() const
    {
        const QStringList names = QDir(folder + "/ARCHIVES").entryList(QDir::Files | QDir::Hidden, QDir::Name);
        return names.filter(QRegularExpression("(?<!sceau)$"));
    }
    static QString ActsIn(const QString& copy)
    {
        return tests::OtherProgram("file:" + copy + "?immutable=1").Answer("select count(*) from Actes");
    }

    QTemporaryDir place;
    const QString folder = place.filePath("cabinet");
};

} // namespace

TEST(Generations, LeaveTheNewestOfSevenDaysFiveWeeksAndTwelveMonths)
{
    QStringList names{"ZEP_ONE.MDB",
                      "notes.txt",
                      "ZEP_ONE 2026-02-30.MDB",
                      "ZEP_ONE 2026-11-01 bis.MDB",
                      "ZEP_ONE avant restauration 2024-01-01 10-00-00.MDB",
                      "ZEP_ONE 2031-01-01.MDB"};
    const qsizetype others = names.size();
    QDate evening;
    const QDate first = Day("2025-10-13");
    for (QDate day = first; day < first.addDays(400); day = day.addDays(1)) {
        if (!IsWorked(day))
            continue;
        if (evening.isValid())
            names << archives::GenerationName(evening);
        evening = day;
        for (const QString& surplus : archives::SurplusGenerations(names, day))
            names.removeAll(surplus);
        ASSERT_LE(names.size(), others + 7 + 5 + 12);
    }
    QStringList days;
    for (const QString& name : names.mid(others))
        days << archives::GenerationDay(name).toString(Qt::ISODate);
    EXPECT_EQ(days.join(' '), "2025-11-30 2025-12-31 2026-01-31 2026-02-28 2026-03-31 2026-04-30 2026-05-31 2026-06-30 "
                              "2026-07-30 2026-09-30 2026-10-18 2026-10-25 2026-10-31 2026-11-01 2026-11-08 "
                              "2026-11-09 2026-11-10 2026-11-11 2026-11-12 2026-11-14 2026-11-15");
}

TEST_F(Evenings, KeepTheCopyOfAnEarlierDay)
{
    End("2026-11-20");
    EXPECT_EQ(Files(), QStringList("ZEP_ONE.MDB"));
    End("2026-11-23");
    End("2026-11-23"); // twice a day: the copy of the evening is the last one
    EXPECT_EQ(Files(), QStringList({"ZEP_ONE 2026-11-20.MDB", "ZEP_ONE.MDB"}));
    End("2026-11-24");
    EXPECT_EQ(Files(), QStringList({"ZEP_ONE 2026-11-20.MDB", "ZEP_ONE 2026-11-23.MDB", "ZEP_ONE.MDB"}));
    EXPECT_EQ(ActsIn(Copy("ZEP_ONE 2026-11-20.MDB")), "1");
    EXPECT_EQ(ActsIn(Copy("ZEP_ONE 2026-11-23.MDB")), "3");
    EXPECT_EQ(ActsIn(Copy()), "4");

    End("2026-11-23"); // the clock was set back: the copy of "tomorrow" isn't kept, nothing else changes
    EXPECT_EQ(Files(), QStringList({"ZEP_ONE 2026-11-20.MDB", "ZEP_ONE 2026-11-23.MDB", "ZEP_ONE.MDB"}));
    EXPECT_EQ(ActsIn(Copy("ZEP_ONE 2026-11-23.MDB")), "3");
    End("2026-11-24");
    EXPECT_EQ(ActsIn(Copy("ZEP_ONE 2026-11-23.MDB")), "5") << "the newest copy of a day is kept";
}

TEST_F(Evenings, KeepNoCopyThatIsntWholeOrOurs)
{
    const std::pair<const char*, std::function<void(QByteArray&)>> faults[] = {
        {"a letter", [](QByteArray& bytes) { bytes[bytes.size() / 2] = char(bytes[bytes.size() / 2] ^ 1); }},
        {"cut", [](QByteArray& bytes) { bytes.chop(100); }},
        {"foreign", [](QByteArray& bytes) { bytes = "Cabinet;12,50\n"; }},
        {"newer", [](QByteArray& bytes) { bytes[63] = 9; }},
    };
    End("2026-11-19");
    for (const auto& [fault, spoil] : faults) {
        SCOPED_TRACE(fault);
        End("2026-11-20");
        QByteArray bytes = BytesOf(Copy());
        spoil(bytes);
        WriteFile(Copy(), bytes);
        DateFile(Copy(), Day("2026-11-20"));
        QFile::remove(Copy("ZEP_ONE 2026-11-19.MDB"));
        EXPECT_NE(archives::FaultOf(Copy()), "");
        host::FixToday(Day("2026-11-21"));
        archives::CopyToArchives(folder);
        EXPECT_EQ(Files(), QStringList("ZEP_ONE.MDB"));
    }

    End("2026-11-22");
    WriteFile(Copy() + "-wal", "x");
    EXPECT_NE(archives::FaultOf(Copy()), "") << "a log beside a sealed copy";
    QFile::remove(Copy() + "-wal");
    EXPECT_EQ(archives::FaultOf(Copy()), "");
    for (const auto& [sql, error] :
         {std::pair("create trigger t after insert on Actes begin select 1; end", Error::UnrecognizedFormat),
          std::pair("drop trigger t; pragma writable_schema = on; delete from sqlite_schema where name = 'Actes_Mois'",
                    Error::DamagedDatabase)}) {
        ASSERT_EQ(tests::OtherProgram(Copy()).Run(sql), SQLITE_OK);
        EXPECT_EQ(ErrorOf([&] { archives::RequireUsable(Copy()); }), error) << sql;
    }
}

TEST_F(Evenings, AreArchivedWhateverIsInTheWay)
{
    const QString folderInTheWay = Copy("ZEP_ONE 2026-11-18.MDB");
    for (const char* const name : {"ZEP_ONE 2026-11-18.MDB", "ZEP_ONE.MDB.part", "ZEP_ONE 2026-11-19.MDB.part"})
        ASSERT_TRUE(QDir().mkpath(Copy(QString(name) + "/content")));
    WriteFile(Copy("ZEP_ONE 2026-11-20.MDB"), "newer");
    End("2026-11-18");
    host::FixToday(Day("2026-11-19"));
    EXPECT_EQ(archives::CopyToArchives(folder).obstacle, folderInTheWay) << "named at that exit";
    EXPECT_TRUE(archives::CopyToArchives(folder).Text().isEmpty()) << "and at no other";
    DateFile(Copy(), Day("2026-11-19"));
    End("2026-11-20");
    End("2026-11-21");
    EXPECT_EQ(Files(), QStringList({"ZEP_ONE 2026-11-18 (2).MDB", "ZEP_ONE 2026-11-19.MDB",
                                    "ZEP_ONE 2026-11-20 (2).MDB", "ZEP_ONE 2026-11-20.MDB", "ZEP_ONE.MDB"}));
    EXPECT_EQ(ActsIn(Copy("ZEP_ONE 2026-11-18 (2).MDB")), "1");
    EXPECT_EQ(ActsIn(Copy("ZEP_ONE 2026-11-20 (2).MDB")), "2");
    EXPECT_TRUE(QDir(folderInTheWay + "/content").exists());
    EXPECT_EQ(archives::CopyAt(Copy("ZEP_ONE 2026-11-18 (2).MDB")).Day(), Day("2026-11-18"));
}

TEST_F(Evenings, KeepTheirMomentAlsoWhenItIsZero)
{
    End("2026-11-20");
    QFile file(Copy());
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime::fromSecsSinceEpoch(0), QFileDevice::FileModificationTime));
    file.close();
    End("2026-11-21");
    EXPECT_EQ(Files(), QStringList({"ZEP_ONE 1970-01-01.MDB", "ZEP_ONE.MDB"}));
    host::CopyFile(Copy(), Copy("autre"));
    EXPECT_EQ(QFileInfo(Copy("autre")).lastModified(), QFileInfo(Copy()).lastModified())
        << "where links aren't possible";
}

TEST_F(Evenings, AreListedNewestFirstAndOfferedWhenWhole)
{
    for (const char* day : {"2026-11-19", "2026-11-20", "2026-11-23"})
        End(day);
    QFile::copy(Copy("ZEP_ONE 2026-11-19.MDB"), Copy("ZEP_ONE avant restauration 2026-11-22 18-02-33.MDB"));
    DateFile(Copy("ZEP_ONE avant restauration 2026-11-22 18-02-33.MDB"), Day("2026-11-22"));
    QFile::copy(Copy(), Copy("zep_one 2026-12-24.mdb")); // dated later than today
    WriteFile(Copy("ZEP_ONE 2026-13-01.MDB"));
    QStringList names;
    for (const archives::ArchivedCopy& copy : archives::ArchivedCopies(folder))
        names << copy.Name();
    EXPECT_EQ(names, QStringList({"zep_one 2026-12-24.mdb", "ZEP_ONE.MDB", "ZEP_ONE 2026-11-20.MDB",
                                  "ZEP_ONE 2026-11-19.MDB", "ZEP_ONE avant restauration 2026-11-22 18-02-33.MDB"}));

    const auto newest = [this](const std::optional<QDate>& before = {}) {
        const auto copy = archives::NewestWholeCopy(folder, before);
        return copy ? copy->Name() : QString();
    };
    EXPECT_EQ(newest(), "ZEP_ONE.MDB");
    EXPECT_EQ(archives::MomentOf(archives::ArchivedCopies(folder)[1]), "23/11/2026 à 18:02");
    EXPECT_EQ(newest(Day("2026-11-23")), "ZEP_ONE 2026-11-20.MDB");
    QFile(Copy()).resize(5000);
    QFile(Copy("ZEP_ONE 2026-11-20.MDB")).resize(0);
    EXPECT_EQ(newest(), "ZEP_ONE 2026-11-19.MDB");
    QFile::remove(Copy("ZEP_ONE 2026-11-19.MDB"));
    EXPECT_EQ(newest(), "") << "what a restoration has replaced is never offered";
}

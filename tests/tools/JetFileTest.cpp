#include "practice/jet/JetFile.h"

#include "platform/basic/RuntimeError.h"
#include "support/OldDatabases.h"
#include "support/Unix.h"

#include <QDateTime>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <atomic>
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <thread>

using basic::Error;
using practice::CsvRow;
using practice::JetFile;
using tests::OldFile;

namespace {

/// A cell in the form of the expected content.
QString PlainCell(QString cell)
{
    static const QRegularExpression time("^1899-12-30 (..:..):00$");
    static const QRegularExpression midnight("^(....-..-..) 00:00:00$");
    return cell.replace(time, "\\1").replace(midnight, "\\1");
}

/// A damaged copy of an old database.
class OldCopy {
public:
    explicit OldCopy(const QByteArray& content)
    {
        QFile file(Path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush());
        // What was written just now may still be changing.
        file.setFileTime(QDateTime(QDate(2026, 1, 1), QTime()), QFileDevice::FileModificationTime);
    }
    QString Path() const { return place.filePath("ZEP_ONE.MDB"); }
    qint64 acts = 0; ///< read

    /// The error of reading the acts; none if they could be read.
    std::optional<Error> ReadActs()
    {
        try {
            JetFile(Path()).Read("Actes", [this](const CsvRow& row) { acts = row.line; });
            return std::nullopt;
        } catch (const basic::RuntimeError& error) {
            EXPECT_TRUE(error.Description().contains("ZEP_ONE.MDB")) << error.what();
            return error.Code();
        }
    }

private:
    QTemporaryDir place;
};

QByteArray UsualBytes()
{
    QFile file(OldFile("usual.mdb"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

class OldContent : public testing::TestWithParam<const char*> {};

} // namespace

TEST_P(OldContent, IsReadInEveryField)
{
    qputenv("MDBICONV", "ISO-8859-1"); // of the user
    const QString name = GetParam();
    const JetFile file(OldFile(name + ".mdb"));
    const auto expected = tests::OldContentOf(name);
    EXPECT_EQ(file.Tables().size(), static_cast<qsizetype>(expected.size()));
    for (const auto& [table, content] : expected) {
        std::vector<QStringList> rows;
        file.Read(table.toLower(), [&](const CsvRow& row) {
            EXPECT_EQ(row.line, static_cast<qint64>(rows.size()));
            rows.emplace_back();
            for (const QString& cell : row.cells)
                rows.back() << PlainCell(cell);
            if (!row.lostDates.isEmpty()) {
                EXPECT_EQ(row.lostDates, QStringList("Naiss"));
                EXPECT_EQ(rows.back()[3], "");
                rows.back()[3] = "1897-03-04";
            }
        });
        ASSERT_FALSE(rows.empty()) << table.toStdString();
        EXPECT_EQ(rows.front(), content.fields);
        rows.erase(rows.begin());
        EXPECT_EQ(rows, content.rows) << table.toStdString();
    }
}
INSTANTIATE_TEST_SUITE_P(JetFile, OldContent, testing::Values("usual", "usual2003", "odd", "next-day"));

TEST(JetFile, RefusesAFileThatIsCutOffAnywhere)
{
    const QByteArray whole = UsualBytes();
    EXPECT_EQ(OldCopy(whole).ReadActs(), std::nullopt);
    for (const int length : {0, 10})
        EXPECT_EQ(OldCopy(whole.first(length)).ReadActs(), Error::UnrecognizedFormat) << length;
    // Within a page, and at the end of one: before the tables, within the acts, after the last row.
    for (const int length : {24, 4096, 8192, 40960, 200000, 204800, 479232, 483327})
        EXPECT_EQ(OldCopy(whole.first(length)).ReadActs(), Error::DamagedDatabase) << length;
}

TEST(JetFile, RefusesATableThatCountsMoreRowsThanItHas)
{
    constexpr qsizetype definitionOfActs = 24 * 4096;
    QByteArray bytes = UsualBytes();
    ASSERT_EQ(bytes.mid(definitionOfActs + 16, 2), "\xD0\x07"); // 2000
    bytes[definitionOfActs + 16] = '\xD1';
    EXPECT_EQ(OldCopy(bytes).ReadActs(), Error::DamagedDatabase);
}

TEST(JetFile, SurvivesRandomBytes)
{
    const QByteArray whole = UsualBytes();
    std::minstd_rand dice(7);
    int refused = 0;
    for (int round = 0; round < 20; ++round) {
        QByteArray bytes = whole;
        for (int change = 0; change < 2000; ++change)
            bytes[static_cast<qsizetype>(4096 + dice() % (bytes.size() - 4096))] = static_cast<char>(dice());
        const auto error = OldCopy(bytes).ReadActs();
        EXPECT_TRUE(!error || error == Error::DamagedDatabase || error == Error::UnknownTable);
        refused += error ? 1 : 0;
    }
    EXPECT_GT(refused, 0);
}

TEST(JetFile, ReadsAgainAFileThatChangesMeanwhile)
{
    OldCopy copy(UsualBytes());
    QFile nextDay(OldFile("next-day.mdb"));
    ASSERT_TRUE(nextDay.open(QIODevice::ReadOnly));
    const QByteArray later = nextDay.readAll();
    std::atomic<bool> hasBegun = false;
    std::jthread writer([&] {
        QFile file(copy.Path());
        EXPECT_TRUE(file.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
        for (qsizetype place = 0; place < later.size(); place += 4096) {
            file.write(later.mid(place, 4096));
            hasBegun = true;
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    });
    while (!hasBegun)
        std::this_thread::yield();
    EXPECT_EQ(copy.ReadActs(), std::nullopt);
    EXPECT_EQ(copy.acts, 2037); // of the next day
}

TEST(JetFile, RefusesWhatIsNoFileAndNamesAMissingTool)
{
    NEEDS_UNIX("mkfifo");
    const QTemporaryDir place;
    const QString pipe = place.filePath("pipe.mdb");
    ASSERT_EQ(mkfifo(qPrintable(pipe), 0600), 0);
    for (const auto& [path, expected] : {std::pair(place.filePath("none.mdb"), Error::FileNotFound),
                                         {place.path(), Error::PathAccess},
                                         {pipe, Error::PathAccess},
                                         {OldFile("usual.txt"), Error::UnrecognizedFormat}}) {
        try {
            const JetFile file(path);
            FAIL() << path.toStdString();
        } catch (const basic::RuntimeError& error) {
            EXPECT_EQ(error.Code(), expected) << error.what();
        }
    }
    const QByteArray before = qgetenv("PATH");
    qputenv("PATH", place.path().toUtf8());
    try {
        const JetFile file(OldFile("usual.mdb"));
        FAIL();
    } catch (const basic::RuntimeError& error) {
        EXPECT_EQ(error.Code(), Error::FileNotFound);
        EXPECT_TRUE(error.Description().contains("paquet mdbtools"));
    }
    qputenv("PATH", before);
}

#include "data/Practice.h"
#include "practice/check/Check.h"
#include "support/ChildProcess.h"
#include "support/DeadlyWrites.h"
#include "support/FolderInMemory.h"
#include "support/Rounds.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

const data::PracticeSetup NewPractice{.accessCode = 12, .letterhead = {"Dr Haddad"}};

} // namespace

// A practice that is being created when the program is killed appears whole or not at all, and can then be created.
TEST(KilledNew, LeavesAWholePracticeOrNone)
{
    const tests::FolderInMemory memory;
    const QTemporaryDir place;
    const auto start = [&place](const QString& name, int deadlyWrite) {
        return tests::ChildProcess([folder = place.filePath(name), deadlyWrite](tests::Reports& reports) {
            tests::DieAtWrite(deadlyWrite);
            data::CreatePractice(folder, NewPractice);
            reports.Send(tests::WritesMade());
        });
    };
    tests::ChildProcess undisturbed = start("entier", 0);
    const int writes = undisturbed.Next<int>().value_or(0);
    undisturbed.Wait();
    ASSERT_GT(writes, 5);

    int whole = 0;
    const int rounds = tests::IsLongForm() ? 200 : writes;
    for (int round = 0; round < rounds && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        const QString name = QString("cabinet %1").arg(round);
        const QString folder = place.filePath(name);
        tests::ChildProcess program = start(name, round % writes + 1);
        EXPECT_EQ(program.Next<int>(), std::nullopt);
        EXPECT_TRUE(program.Kill());
        if (QFile::exists(folder))
            ++whole;
        else
            data::CreatePractice(folder, NewPractice);
        EXPECT_EQ(practice::CheckPractice(folder).failures, QStringList());
        QDir(folder).removeRecursively();
    }
    EXPECT_LT(whole, rounds);
}

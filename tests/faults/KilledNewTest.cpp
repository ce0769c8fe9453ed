#include "data/Practice.h"
#include "faults/FolderContent.h"
#include "practice/check/Check.h"
#include "support/KillAtEachStep.h"

#include <QFile>
#include <QTemporaryDir>

// A practice that is being created when the program is killed appears whole or not at all, and can then be created; in
// a new folder and in one that holds other files.
TEST(KilledNew, LeavesAWholePracticeOrNone)
{
    const tests::FolderInMemory memory;
    for (const bool isNew : {true, false}) {
        SCOPED_TRACE(isNew);
        const QTemporaryDir place;
        const QString folder = place.filePath("cabinet");
        if (!isNew)
            tests::WriteContent(folder, {{"notes.txt", "Appeler la CNAS"}});
        const auto isThere = [&] { return QFile::exists(folder + "/ZEP_ONE.MDB"); };
        tests::KillAtEachStep(
            {.folder = place.path(),
             .work =
                 [&](const tests::Play::Done&) {
                     if (!isThere())
                         data::CreatePractice(folder, {.accessCode = 12, .letterhead = {"Dr Haddad"}});
                 },
             .state =
                 [&] {
                     EXPECT_TRUE(isNew || tests::BytesOf(folder + "/notes.txt") == "Appeler la CNAS");
                     return isThere() ? "whole" + practice::CheckPractice(folder).failures.join('\n') : QString("none");
                 },
             .mayStay = ".part-"});
        ASSERT_FALSE(HasFailure());
    }
}

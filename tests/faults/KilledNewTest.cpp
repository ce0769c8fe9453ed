#include "data/Practice.h"
#include "faults/FolderContent.h"
#include "practice/adopt/Adoption.h"
#include "practice/check/Check.h"
#include "support/KillAtEachStep.h"
#include "support/OldDatabases.h"
#include "support/OtherProgram.h"

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

// So does one that is being made from an old practice, which stays as it is.
TEST(KilledNew, AdoptsAWholePracticeOrNone)
{
    const tests::FolderInMemory memory;
    const QTemporaryDir oldPlace;
    const QTemporaryDir place;
    const QString old = oldPlace.path();
    const tests::FolderContent before{{"ZEP_ONE.MDB", tests::BytesOf(tests::OldFile("usual.mdb"))},
                                      {"ZEP_CFIG.CFG", tests::BytesOf(tests::OldFile("ZEP_CFIG.CFG"))}};
    tests::WriteContent(old, before);
    const QString folder = place.filePath("nouveau");
    const QString database = folder + "/ZEP_ONE.MDB";
    tests::KillAtEachStep({.folder = place.path(),
                           .work =
                               [&](const tests::Play::Done&) {
                                   if (!QFile::exists(database))
                                       practice::Adopt(old, folder);
                               },
                           .state =
                               [&] {
                                   EXPECT_EQ(tests::ContentOf(old), before);
                                   if (!QFile::exists(folder))
                                       return QString("none");
                                   return "whole" + practice::CheckPractice(folder).failures.join('\n') +
                                          tests::OtherProgram(database).Answer(
                                              "select (select count(*) from Actes) || ' ' || (select count(*) from "
                                              "Permn where nbre = 2)");
                               },
                           .mayStay = ".part-"});
}

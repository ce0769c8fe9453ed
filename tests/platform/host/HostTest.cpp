#include "platform/host/Host.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/Files.h"
#include "support/Files.h"
#include "support/Unix.h"

#include <QDir>
#include <QTemporaryDir>

TEST(Files, AreFoundCaseInsensitively)
{
    const QTemporaryDir folder;
    QDir(folder.path()).mkdir("Archives");
    tests::WriteFile(folder.filePath("zep_cfig.CFG"));
    tests::WriteFile(folder.filePath("Archives/ZEP_one.mdb"));

    EXPECT_EQ(host::PathIn(folder.path(), "ZEP_CFIG.cfg"), folder.filePath("zep_cfig.CFG"));
    EXPECT_EQ(host::PathIn(folder.path(), "ARCHIVES/ZEP_ONE.MDB"), folder.filePath("Archives/ZEP_one.mdb"));
    EXPECT_EQ(host::PathIn(folder.path(), "ARCHIVES/new.txt"), folder.filePath("Archives/new.txt"));
    NEEDS_UNIX("names that differ in case alone");
    tests::WriteFile(folder.filePath("ZEP_CFIG.cfg")); // an exact match is preferred
    EXPECT_EQ(host::PathIn(folder.path(), "ZEP_CFIG.cfg"), folder.filePath("ZEP_CFIG.cfg"));
}

TEST(Files, OfTheProgramAreInItsFolderOrTheInstalledShare)
{
    const QTemporaryDir root;
    const QDir folder(root.path());
    ASSERT_TRUE(folder.mkpath("bin") && folder.mkpath("share/zep-lumo/guide"));
    const auto found = [&folder](const QString& name) {
        return QDir::cleanPath(host::FolderOfOwnFile(folder.filePath("bin"), name));
    };

    EXPECT_EQ(found("ZEP_Supp.RPT"), folder.filePath("bin")); // where it is reported missing
    tests::WriteFile(folder.filePath("share/zep-lumo/ZEP_Supp.RPT"));
    tests::WriteFile(folder.filePath("share/zep-lumo/guide/index.md"));
    EXPECT_EQ(found("ZEP_Supp.RPT"), folder.filePath("share/zep-lumo"));
    EXPECT_EQ(found("guide/index.md"), folder.filePath("share/zep-lumo"));
    tests::WriteFile(folder.filePath("bin/zep_supp.rpt")); // case-insensitive
    EXPECT_EQ(found("ZEP_Supp.RPT"), folder.filePath("bin"));
}

TEST(Files, SearchSupportsWildcardsAndAttributes)
{
    const QTemporaryDir folder;
    QDir(folder.path()).mkdir("ARCHIVES");
    tests::WriteFile(folder.filePath("a[1].RPT"));

    EXPECT_TRUE(host::FileExists(folder.filePath("A[1].rpt"), 0));
    EXPECT_TRUE(host::FileExists(folder.filePath("*.rpt"), 0));
    EXPECT_TRUE(host::FileExists(folder.filePath("a[?].RPT"), 0));
    EXPECT_FALSE(host::FileExists(folder.filePath("a1.RPT"), 0));
    EXPECT_FALSE(host::FileExists(folder.filePath("a[1]xRPT"), 0)); // the point is literal
    EXPECT_FALSE(host::FileExists(folder.filePath("ARCHIVES"), 0));
    EXPECT_TRUE(host::FileExists(folder.filePath("archives"), 16));
    EXPECT_FALSE(host::FileExists(folder.filePath("missing/x"), 0));
    EXPECT_FALSE(host::FileExists("", 16));
}

TEST(Files, AttributesComeFromTheModeBits)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("copy");
    EXPECT_THROW(host::FileAttributes(path), basic::RuntimeError);
    EXPECT_THROW(host::SetFileAttributes(path, 0), basic::RuntimeError);

    tests::WriteFile(path);
    EXPECT_EQ(host::FileAttributes(path), 0);
    host::SetFileAttributes(path, 1);
    EXPECT_EQ(host::FileAttributes(path), 1);
    host::SetFileAttributes(path, 0);
    EXPECT_EQ(host::FileAttributes(path), 0);
    tests::WriteFile(path); // it can be written again
}

TEST(Files, DriveTextsNameFolders)
{
    const QTemporaryDir folder;
    EXPECT_EQ(host::DriveFolder(folder.path()), folder.path());
    EXPECT_EQ(host::DriveFolder(folder.filePath("missing")), "");
    EXPECT_EQ(host::DriveFolder(""), "");
#ifndef Q_OS_WIN
    EXPECT_EQ(host::DriveFolder("/:"), "/");
    EXPECT_EQ(host::DriveFolder("Q:"), "");
#endif
}

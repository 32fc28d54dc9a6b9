#include "shell/model/FileSystem.h"

#include "shell/model/AppState.h"
#include "shell/model/Services.h"
#include "tests/support/ScriptedServices.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace quenby;
using quenby::testing::ScriptedServices;
using quenby::testing::writeBytes;

namespace {

// The number of descriptors the process holds, or -1 where the system does
// not list them.
int openDescriptorCount()
{
    const QDir fds("/proc/self/fd");
    if (!fds.exists())
        return -1;
    return static_cast<int>(fds.entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size());
}

class FileExistsApiTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(m_dir.isValid()); }
    QString path(const QString& name) const { return m_dir.path() + "/" + name; }

    QTemporaryDir m_dir;
};

class BrowseForFolderTest : public ::testing::Test
{
protected:
    void SetUp() override { m_savedInitial = appState().BrowseInitialFolder; }
    void TearDown() override { appState().BrowseInitialFolder = m_savedInitial; }

private:
    QString m_savedInitial;
};

} // namespace

// --- FileExistsApi -----------------------------------------------------------

TEST_F(FileExistsApiTest, IsTrueForAFile)
{
    writeBytes(path("kvx_report_converter.exe"), "MZ");

    EXPECT_EQ(FileExistsApi(path("kvx_report_converter.exe")), True16);
}

TEST_F(FileExistsApiTest, IsTrueForAnEmptyOrReadOnlyFile)
{
    writeBytes(path("empty.lng"), QByteArray());
    writeBytes(path("locked.lng"), "x");
    ASSERT_TRUE(QFile::setPermissions(path("locked.lng"), QFile::ReadOwner));

    EXPECT_EQ(FileExistsApi(path("empty.lng")), True16);
    EXPECT_EQ(FileExistsApi(path("locked.lng")), True16);
}

TEST_F(FileExistsApiTest, IsFalseForAMissingFile)
{
    EXPECT_EQ(FileExistsApi(path("oem-missing.lng")), False16);
    EXPECT_EQ(FileExistsApi(path("nofolder/oem-missing.lng")), False16);
    EXPECT_EQ(FileExistsApi(QString()), False16);
}

TEST_F(FileExistsApiTest, IsFalseForAFolder)
{
    ASSERT_TRUE(QDir(m_dir.path()).mkdir("folder.exe"));

    EXPECT_EQ(FileExistsApi(path("folder.exe")), False16);
    EXPECT_EQ(FileExistsApi(m_dir.path()), False16);
}

TEST_F(FileExistsApiTest, KeepsNoFileOpen)
{
    writeBytes(path("probe.txt"), "x");
    const int before = openDescriptorCount();
    if (before < 0)
        GTEST_SKIP() << "no descriptor listing on this system";

    for (int i = 0; i < 20; ++i)
        ASSERT_EQ(FileExistsApi(path("probe.txt")), True16);

    EXPECT_EQ(openDescriptorCount(), before);
}

// --- BrowseForFolder ---------------------------------------------------------

struct FlagCase
{
    Bool16 includeFiles;
    Bool16 newStyle;
    int flags;
};

class BrowseForFolderFlagTest : public BrowseForFolderTest,
                                public ::testing::WithParamInterface<FlagCase>
{
};

TEST_P(BrowseForFolderFlagTest, BuildsTheFlagWord)
{
    ScriptedServices s;
    s.folders.answers.push_back("/data/quenby");

    const QString chosen =
        BrowseForFolder(nullptr, QString(), "Please select a folder:", GetParam().includeFiles,
                        GetParam().newStyle);

    EXPECT_EQ(chosen, "/data/quenby");
    ASSERT_EQ(s.folders.requests.size(), 1u);
    EXPECT_EQ(s.folders.requests[0].flags, GetParam().flags);
    EXPECT_EQ(s.folders.requests[0].title, "Please select a folder:");
    EXPECT_EQ(s.folders.requests[0].startFolder, QString());
}

// Folders only (1) and not below the domain (4) always; files listed 16384;
// the resizable dialog 64.
INSTANTIATE_TEST_SUITE_P(Flags, BrowseForFolderFlagTest,
                         ::testing::Values(FlagCase{False16, False16, 5},
                                           FlagCase{True16, False16, 16389},
                                           FlagCase{False16, True16, 69},
                                           FlagCase{True16, True16, 16453}));

TEST_F(BrowseForFolderTest, ReturnsEmptyWhenTheOperatorCancels)
{
    ScriptedServices s; // no answer queued: the picker is cancelled

    EXPECT_EQ(BrowseForFolder(nullptr, QString(), "Please select a folder:", False16, False16),
              QString());
    EXPECT_EQ(s.folders.requests.size(), 1u);
}

TEST_F(BrowseForFolderTest, ReturnsEmptyWithoutAFolderService)
{
    FolderDialogService* saved = services().folders;
    services().folders = nullptr;

    const QString chosen =
        BrowseForFolder(nullptr, QString(), "Please select a folder:", False16, True16);

    services().folders = saved;
    EXPECT_EQ(chosen, QString());
}

TEST_F(BrowseForFolderTest, StoresTheStartFolderWithANulAtItsEnd)
{
    ScriptedServices s;
    s.folders.answers.push_back("/data/other");
    const QString start = "/data/quenby";

    const QString chosen = BrowseForFolder(nullptr, start, "Pick", False16, True16);

    EXPECT_EQ(chosen, "/data/other");
    const QString stored = appState().BrowseInitialFolder;
    ASSERT_EQ(stored.size(), start.size() + 1);
    EXPECT_EQ(stored.left(start.size()), start);
    EXPECT_EQ(stored.back(), QChar(u'\0'));
    ASSERT_EQ(s.folders.requests.size(), 1u);
    EXPECT_EQ(s.folders.requests[0].startFolder, start);
    EXPECT_EQ(s.folders.requests[0].flags, 69);
}

TEST_F(BrowseForFolderTest, StoresTheStartFolderEvenWhenCancelled)
{
    ScriptedServices s;

    EXPECT_EQ(BrowseForFolder(nullptr, "/start", "Pick", False16, False16), QString());
    EXPECT_EQ(appState().BrowseInitialFolder, QString("/start") + QChar(u'\0'));
}

TEST_F(BrowseForFolderTest, AnEmptyStartFolderLeavesTheStoredOneAlone)
{
    ScriptedServices s;
    appState().BrowseInitialFolder = QString("/earlier") + QChar(u'\0');

    BrowseForFolder(nullptr, QString(), "Pick", False16, False16);

    EXPECT_EQ(appState().BrowseInitialFolder, QString("/earlier") + QChar(u'\0'));
    ASSERT_EQ(s.folders.requests.size(), 1u);
    EXPECT_EQ(s.folders.requests[0].startFolder, QString());
}

TEST_F(BrowseForFolderTest, CutsTheAnswerAtItsFirstNul)
{
    ScriptedServices s;
    s.folders.answers.push_back(QString("/data/quenby") + QChar(u'\0') + "garbage");

    EXPECT_EQ(BrowseForFolder(nullptr, QString(), "Pick", False16, False16), "/data/quenby");
}

TEST_F(BrowseForFolderTest, TheOwnerDoesNotChangeTheRequest)
{
    ScriptedServices s;
    s.folders.answers.push_back("/a");
    s.folders.answers.push_back("/b");
    const int window = 0;

    EXPECT_EQ(BrowseForFolder(&window, QString(), "Pick", True16, False16), "/a");
    EXPECT_EQ(BrowseForFolder(nullptr, QString(), "Pick", True16, False16), "/b");
    ASSERT_EQ(s.folders.requests.size(), 2u);
    EXPECT_EQ(s.folders.requests[0].flags, s.folders.requests[1].flags);
    EXPECT_EQ(s.folders.requests[0].title, s.folders.requests[1].title);
}

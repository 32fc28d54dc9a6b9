// The data folders, the general settings model and the selection of test
// files and logo images, without a screen: the folder picker, the message
// boxes and the open dialog answer from scripts, the settings live in a
// temporary store and the folders in temporary directories.
#include "shell/model/DataFolders.h"
#include "shell/model/AppState.h"
#include "shell/model/CommonDialog.h"
#include "shell/model/Platform.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/SequentialFiles.h"
#include "shell/model/Session.h"
#include "shell/model/SettingsStore.h"
#include "tests/support/Failure.h"
#include "tests/support/ScriptedServices.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <ostream>
#include <vector>

using namespace quenby;
using namespace quenby::testing;

namespace {

constexpr auto Absent = "<absent>";

// A path in the platform's own separators.
QString native(const QString& path)
{
    return toPlatformPath(path);
}

bool isFolder(const QString& path)
{
    return QFileInfo(path).isDir();
}

class DataFoldersTest : public ::testing::Test
{
protected:
    QTemporaryDir dataDir;
    QTemporaryDir storeDir;
    QTemporaryDir programDir;
    std::optional<QtSettingsStore> store;
    ScriptedServices scripted;
    QString savedCurrentFolder;
    std::vector<QString> calls; // what the window and the logo work were asked, in order

    // The general settings window and the logo windows, recording.
    class RecordingViews final : public GeneralSettingView, public LogoSelectionView
    {
    public:
        explicit RecordingViews(std::vector<QString>& calls) : m_calls(calls) {}
        void FillTextsGeneralSetting() override { m_calls.push_back("fill"); }
        void bringUp() override { m_calls.push_back("bringUp"); }
        void hideWindow() override { m_calls.push_back("hide"); }
        void mirrorModel() override { m_calls.push_back("mirror"); }
        OwnerWindow folderPickerOwner() override { return nullptr; }
        void hideResizeLogo() override { m_calls.push_back("hideResizeLogo"); }
        bool loadLogoImage(const QString& path) override
        {
            m_calls.push_back("loadLogoImage " + path);
            return readable;
        }
        bool readable = true; // whether the picture loads

    private:
        std::vector<QString>& m_calls;
    };
    RecordingViews views{calls};
    Installed<GeneralSettingView> generalSettingWindow{views};
    Installed<LogoSelectionView> logoWindows{views};

    void SetUp() override
    {
        ASSERT_TRUE(dataDir.isValid());
        ASSERT_TRUE(storeDir.isValid());
        ASSERT_TRUE(programDir.isValid());
        // Making folders moves the current folder; it is put back afterwards.
        savedCurrentFolder = QDir::currentPath();
        store.emplace(storeDir.path());
        setSettingsStore(&*store);
        setAppPathOverride(programDir.path());
    }

    void TearDown() override
    {
        SequentialFiles::instance().closeAll();
        QDir::setCurrent(savedCurrentFolder);
    }

    // A root folder under the temporary data folder, in platform separators.
    QString root(const QString& name = QStringLiteral("data")) const
    {
        return native(dataDir.filePath(name));
    }

    QString makeRoot(const QString& name = QStringLiteral("data")) const
    {
        QDir().mkpath(dataDir.filePath(name));
        return root(name);
    }

    QString setting(const char* section, const char* key)
    {
        return store->GetSetting(SettingsAppData, section, key, Absent);
    }

    void save(const char* section, const char* key, const QString& value)
    {
        store->SaveSetting(SettingsAppData, section, key, value);
    }

    static QString sep() { return pathSep(); }

    QString writeTestFile(const QString& relative, const QStringList& lines)
    {
        QDir().mkpath(QFileInfo(dataDir.filePath(relative)).path());
        writeBytes(dataDir.filePath(relative), crlfLines(lines));
        return native(dataDir.filePath(relative));
    }

    static Int16 fileNo(const Dynamic& cell) { return static_cast<Int16>(cell.toNumber()); }
};

// --- Start-up: CheckIfDirectoryExist ------------------------------------------

TEST_F(DataFoldersTest, FirstRunAsksForARootMakesTheTreeAndStoresBothKeys)
{
    const QString r = makeRoot();
    scripted.folders.answers = {r};

    CheckIfDirectoryExist();

    ASSERT_EQ(scripted.messages.shown.size(), 1u);
    const ShownMessage& shown = scripted.messages.shown[0];
    EXPECT_EQ(shown.text, QString("Data directory not exist.  Select directory for data storage."));
    EXPECT_EQ(shown.buttons, MsgButtons::Ok);
    EXPECT_EQ(shown.icon, MsgIcon::Critical);
    EXPECT_EQ(shown.title, QString());

    ASSERT_EQ(scripted.folders.requests.size(), 1u);
    EXPECT_EQ(scripted.folders.requests[0].title, QString("Please select a folder:"));
    EXPECT_EQ(scripted.folders.requests[0].startFolder, QString());
    EXPECT_EQ(scripted.folders.requests[0].flags,
              browse::FileSystemFoldersOnly + browse::DontGoBelowDomain + browse::NewStyle);

    EXPECT_TRUE(isFolder(r + sep() + "KVX" + sep() + "Files"));
    EXPECT_TRUE(isFolder(r + sep() + "ZBL" + sep() + "Files"));
    EXPECT_EQ(setting("UserFileTransfert", "KVX"), r);
    EXPECT_EQ(setting("UserFileTransfert", "ZBL"), r);
    EXPECT_EQ(setting("FileTransfert", "KVX"), QString(Absent));

    const QString kvx = r + sep() + "KVX" + sep() + "Files";
    const QString zbl = r + sep() + "ZBL" + sep() + "Files";
    EXPECT_EQ(generalSetting().txtCurrentKVXFilesPath(), kvx);
    EXPECT_EQ(generalSetting().txtCurrentZBLFilesPath(), zbl);
    EXPECT_EQ(appState().KvxDataFolderText, kvx);
    EXPECT_EQ(appState().ZblDataFolderText, zbl);
}

TEST_F(DataFoldersTest, FirstRunKeepsAnExistingFamilyFolderWithoutItsFilesFolder)
{
    const QString r = makeRoot();
    QDir().mkpath(r + sep() + "KVX");
    scripted.folders.answers = {r};

    CheckIfDirectoryExist();

    EXPECT_TRUE(isFolder(r + sep() + "KVX"));
    EXPECT_FALSE(QFileInfo::exists(r + sep() + "KVX" + sep() + "Files"));
    EXPECT_TRUE(isFolder(r + sep() + "ZBL" + sep() + "Files"));
    EXPECT_EQ(generalSetting().txtCurrentKVXFilesPath(), r + sep() + "KVX" + sep() + "Files");
}

// Removes, on leaving, the family folders that a test made at the top of the
// file system, and only those.
class TopFolderCleanup
{
public:
    explicit TopFolderCleanup(QString top) : m_top(std::move(top))
    {
        for (const char* family : {"KVX", "ZBL"})
            if (!QFileInfo::exists(m_top + family))
                m_made.push_back(m_top + family);
    }
    ~TopFolderCleanup()
    {
        for (const QString& folder : m_made) {
            QDir().rmdir(folder + pathSep() + "Files");
            QDir().rmdir(folder);
        }
    }
    bool made(const QString& family) const
    {
        for (const QString& folder : m_made)
            if (folder == m_top + family)
                return true;
        return false;
    }

private:
    QString m_top;
    std::vector<QString> m_made;
};

TEST_F(DataFoldersTest, FirstRunCancelledMakesTheTreeAtTheTopStoresEmptyAndAsksAgain)
{
    const QString top = native(QDir::rootPath());
    TopFolderCleanup cleanup(top);
    const bool topWritable = QFileInfo(top).isWritable();

    if (!topWritable && (cleanup.made("KVX") || cleanup.made("ZBL"))) {
        // Where the top of the file system cannot be written, the folders
        // cannot be made and the failure is not caught.
        EXPECT_THROW(CheckIfDirectoryExist(), RuntimeError);
        EXPECT_EQ(setting("UserFileTransfert", "KVX"), QString(Absent));
        return;
    }

    CheckIfDirectoryExist(); // the picker answers "" (cancel)

    ASSERT_EQ(scripted.folders.requests.size(), 1u);
    for (const char* family : {"KVX", "ZBL"}) {
        if (cleanup.made(family)) {
            EXPECT_TRUE(isFolder(top + family + sep() + "Files")) << family;
        }
    }
    EXPECT_EQ(setting("UserFileTransfert", "KVX"), QString(""));
    EXPECT_EQ(setting("UserFileTransfert", "ZBL"), QString(""));
    EXPECT_EQ(generalSetting().txtCurrentKVXFilesPath(), sep() + "KVX" + sep() + "Files");
    EXPECT_EQ(generalSetting().txtCurrentZBLFilesPath(), sep() + "ZBL" + sep() + "Files");

    // The stored "" counts as no root: the next start asks again.
    CheckIfDirectoryExist();
    EXPECT_EQ(scripted.messages.shown.size(), 2u);
    EXPECT_EQ(scripted.folders.requests.size(), 2u);
}

TEST_F(DataFoldersTest, StoredEmptyRootAsksAgainOnTheNextStart)
{
    save("UserFileTransfert", "KVX", "");
    save("UserFileTransfert", "ZBL", "");
    const QString r = makeRoot();
    scripted.folders.answers = {r};

    CheckIfDirectoryExist();

    EXPECT_EQ(scripted.messages.shown.size(), 1u);
    EXPECT_EQ(scripted.folders.requests.size(), 1u);
    EXPECT_EQ(setting("UserFileTransfert", "KVX"), r);
}

TEST_F(DataFoldersTest, StoredRootsAreShownWithoutCheckingOrAsking)
{
    // Neither root exists: a root removed after a run gives no message.
    const QString kvxRoot = root("gone-kvx");
    const QString zblRoot = root("gone-zbl");
    save("UserFileTransfert", "KVX", kvxRoot);
    save("UserFileTransfert", "ZBL", zblRoot);

    CheckIfDirectoryExist();

    EXPECT_TRUE(scripted.messages.shown.empty());
    EXPECT_TRUE(scripted.folders.requests.empty());
    EXPECT_FALSE(QFileInfo::exists(kvxRoot));
    EXPECT_EQ(generalSetting().txtCurrentKVXFilesPath(), kvxRoot + sep() + "KVX" + sep() + "Files");
    EXPECT_EQ(generalSetting().txtCurrentZBLFilesPath(), zblRoot + sep() + "ZBL" + sep() + "Files");
    EXPECT_EQ(appState().KvxDataFolderText, kvxRoot + sep() + "KVX" + sep() + "Files");
    EXPECT_EQ(appState().ZblDataFolderText, zblRoot + sep() + "ZBL" + sep() + "Files");
}

TEST_F(DataFoldersTest, KvxRootWithoutZblValueBuildsTheZblFolderOnTheKvxRoot)
{
    const QString r = root();
    save("UserFileTransfert", "KVX", r);

    CheckIfDirectoryExist();

    EXPECT_EQ(generalSetting().txtCurrentZBLFilesPath(), r + sep() + "ZBL" + sep() + "Files");
    EXPECT_EQ(appState().ZblDataFolderText, r + sep() + "ZBL" + sep() + "Files");
    EXPECT_EQ(setting("UserFileTransfert", "ZBL"), QString(Absent)); // nothing written
}

TEST_F(DataFoldersTest, SecondStartWithOnlyTheLastFileFolderKeepsTheDoubledSeparator)
{
    const QString last = root() + sep() + "KVX" + sep() + "Files" + sep();
    save("FileTransfert", "KVX", last);

    CheckIfDirectoryExist();

    EXPECT_TRUE(scripted.messages.shown.empty());
    EXPECT_TRUE(scripted.folders.requests.empty());
    EXPECT_EQ(generalSetting().txtCurrentKVXFilesPath(),
              last + sep() + "KVX" + sep() + "Files"); // ".../Files//KVX/Files"
    EXPECT_TRUE(generalSetting().txtCurrentKVXFilesPath().contains(sep() + sep()));
    EXPECT_EQ(generalSetting().txtCurrentZBLFilesPath(), last + sep() + "ZBL" + sep() + "Files");
    EXPECT_EQ(appState().KvxDataFolderText, generalSetting().txtCurrentKVXFilesPath());
}

TEST_F(DataFoldersTest, SecondStartTakesTheLastZblFolderWhenThereIsOne)
{
    const QString lastKvx = root() + sep() + "KVX" + sep() + "Files" + sep();
    const QString lastZbl = root("other") + sep() + "ZBL" + sep() + "Files" + sep();
    save("FileTransfert", "KVX", lastKvx);
    save("FileTransfert", "ZBL", lastZbl);

    CheckIfDirectoryExist();

    EXPECT_EQ(generalSetting().txtCurrentZBLFilesPath(), lastZbl + sep() + "ZBL" + sep() + "Files");
}

TEST_F(DataFoldersTest, ChosenRootWinsOverTheLastFileFolder)
{
    const QString r = root();
    save("UserFileTransfert", "KVX", r);
    save("FileTransfert", "KVX", root("elsewhere") + sep());
    save("FileTransfert", "ZBL", root("elsewhere") + sep());

    CheckIfDirectoryExist();

    EXPECT_EQ(generalSetting().txtCurrentKVXFilesPath(), r + sep() + "KVX" + sep() + "Files");
    EXPECT_EQ(generalSetting().txtCurrentZBLFilesPath(), r + sep() + "ZBL" + sep() + "Files");
}

TEST_F(DataFoldersTest, FirstRunFolderThatCannotBeMadeIsNotCaught)
{
    // A root below a plain file can never be made, whoever runs the test.
    writeBytes(dataDir.filePath("plain"), "x");
    scripted.folders.answers = {root("plain") + sep() + "sub"};

    try {
        CheckIfDirectoryExist();
        FAIL() << "the failure was caught";
    } catch (const RuntimeError& e) {
        EXPECT_NE(e.number(), 0);
    }
    EXPECT_EQ(setting("UserFileTransfert", "KVX"), QString(Absent));
    EXPECT_EQ(setting("UserFileTransfert", "ZBL"), QString(Absent));
}

TEST_F(DataFoldersTest, StartUpLabelsReachTheWindow)
{
    save("UserFileTransfert", "KVX", root());
    calls.clear();
    CheckIfDirectoryExist();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), QString("mirror")), 2);
}

// --- The general settings window ---------------------------------------------

TEST_F(DataFoldersTest, MenuCommandFillsTextsShowsBothRootsWithTrailingSeparatorAndBringsUp)
{
    const QString kvxRoot = root("k");
    const QString zblRoot = root("z");
    save("UserFileTransfert", "KVX", kvxRoot);
    save("UserFileTransfert", "ZBL", zblRoot);

    mnDataFilesPath_Click();

    EXPECT_EQ(generalSetting().txtCurrentKVXFilesPath(),
              kvxRoot + sep() + "KVX" + sep() + "Files" + sep());
    EXPECT_EQ(generalSetting().txtCurrentZBLFilesPath(),
              zblRoot + sep() + "ZBL" + sep() + "Files" + sep());
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls.front(), QString("fill"));
    EXPECT_EQ(calls.back(), QString("bringUp"));
    EXPECT_TRUE(scripted.messages.shown.empty());
}

TEST_F(DataFoldersTest, MenuCommandGivesTheZblRootNoFallback)
{
    save("UserFileTransfert", "KVX", root());

    mnDataFilesPath_Click();

    EXPECT_EQ(generalSetting().txtCurrentZBLFilesPath(), sep() + "ZBL" + sep() + "Files" + sep());
}

TEST_F(DataFoldersTest, ChangeOfKvxRootAnsweredYesMakesTheFoldersAndStoresTheKey)
{
    const QString old = root("old");
    save("UserFileTransfert", "KVX", old);
    save("UserFileTransfert", "ZBL", old);
    CheckIfDirectoryExist();
    generalSetting().setMessageBox_AreYouSureToChange("Are you sure?");
    const QString r = makeRoot("new");
    scripted.folders.answers = {r};
    scripted.messages.answers = {MsgAnswer::Yes};
    calls.clear();

    generalSetting().btChangeKVXFilePath_Click();

    ASSERT_EQ(scripted.folders.requests.size(), 1u);
    EXPECT_EQ(scripted.folders.requests[0].title, QString("Please select a folder:"));
    EXPECT_EQ(scripted.folders.requests[0].flags,
              browse::FileSystemFoldersOnly + browse::DontGoBelowDomain + browse::NewStyle);
    ASSERT_EQ(scripted.messages.shown.size(), 1u);
    EXPECT_EQ(scripted.messages.shown[0].text, QString("Are you sure?"));
    EXPECT_EQ(scripted.messages.shown[0].buttons, MsgButtons::YesNo);
    EXPECT_EQ(scripted.messages.shown[0].title, QString());

    EXPECT_TRUE(isFolder(r + sep() + "KVX" + sep() + "Files"));
    EXPECT_FALSE(QFileInfo::exists(r + sep() + "ZBL"));
    EXPECT_EQ(setting("UserFileTransfert", "KVX"), r);
    EXPECT_EQ(setting("UserFileTransfert", "ZBL"), old);
    EXPECT_EQ(generalSetting().txtCurrentKVXFilesPath(),
              r + sep() + "KVX" + sep() + "Files" + sep());
    // The start-up copy is not refreshed by a change.
    EXPECT_EQ(appState().KvxDataFolderText, old + sep() + "KVX" + sep() + "Files");
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls.back(), QString("bringUp"));
}

TEST_F(DataFoldersTest, ChangeAnsweredNoLeavesStoreLabelAndFoldersAsTheyWere)
{
    const QString old = root("old");
    save("UserFileTransfert", "KVX", old);
    save("UserFileTransfert", "ZBL", old);
    CheckIfDirectoryExist();
    const QString r = makeRoot("new");
    scripted.folders.answers = {r, r};
    scripted.messages.answers = {MsgAnswer::No, MsgAnswer::No};
    calls.clear();

    generalSetting().btChangeKVXFilePath_Click();
    generalSetting().btChangeZBLFilePath_Click();

    EXPECT_EQ(scripted.messages.shown.size(), 2u);
    EXPECT_EQ(setting("UserFileTransfert", "KVX"), old);
    EXPECT_EQ(setting("UserFileTransfert", "ZBL"), old);
    EXPECT_EQ(generalSetting().txtCurrentKVXFilesPath(), old + sep() + "KVX" + sep() + "Files");
    EXPECT_EQ(generalSetting().txtCurrentZBLFilesPath(), old + sep() + "ZBL" + sep() + "Files");
    EXPECT_TRUE(QDir(r).isEmpty());
    EXPECT_EQ(std::count(calls.begin(), calls.end(), QString("bringUp")), 2);
}

TEST_F(DataFoldersTest, ChangeWithCancelledPickerAsksNothingAndBringsUp)
{
    save("UserFileTransfert", "KVX", root("old"));
    calls.clear();

    generalSetting().btChangeKVXFilePath_Click();

    EXPECT_TRUE(scripted.messages.shown.empty());
    EXPECT_EQ(setting("UserFileTransfert", "KVX"), root("old"));
    EXPECT_EQ(calls, std::vector<QString>{"bringUp"});
}

TEST_F(DataFoldersTest, ChangeToARootWithKvxButNoFilesFolderLeavesItWithout)
{
    const QString r = makeRoot("new");
    QDir().mkpath(r + sep() + "KVX");
    scripted.folders.answers = {r};

    generalSetting().btChangeKVXFilePath_Click(); // the unscripted box answers OK: not no

    EXPECT_EQ(setting("UserFileTransfert", "KVX"), r);
    EXPECT_TRUE(isFolder(r + sep() + "KVX"));
    EXPECT_FALSE(QFileInfo::exists(r + sep() + "KVX" + sep() + "Files"));
}

TEST_F(DataFoldersTest, ChangeOfZblRootAnsweredYesMakesItsFoldersOnly)
{
    save("UserFileTransfert", "KVX", root("old"));
    const QString r = makeRoot("new");
    scripted.folders.answers = {r};
    scripted.messages.answers = {MsgAnswer::Yes};

    generalSetting().btChangeZBLFilePath_Click();

    EXPECT_TRUE(isFolder(r + sep() + "ZBL" + sep() + "Files"));
    EXPECT_FALSE(QFileInfo::exists(r + sep() + "KVX"));
    EXPECT_EQ(setting("UserFileTransfert", "ZBL"), r);
    EXPECT_EQ(setting("UserFileTransfert", "KVX"), root("old"));
    EXPECT_EQ(generalSetting().txtCurrentZBLFilesPath(),
              r + sep() + "ZBL" + sep() + "Files" + sep());
}

TEST_F(DataFoldersTest, ChangeToARootWithZblButNoFilesFolderLeavesItWithout)
{
    const QString r = makeRoot("new");
    QDir().mkpath(r + sep() + "ZBL");
    scripted.folders.answers = {r};
    scripted.messages.answers = {MsgAnswer::Yes};

    generalSetting().btChangeZBLFilePath_Click();

    EXPECT_EQ(setting("UserFileTransfert", "ZBL"), r);
    EXPECT_FALSE(QFileInfo::exists(r + sep() + "ZBL" + sep() + "Files"));
}

TEST_F(DataFoldersTest, ChangeToARootThatCannotBeMadeIsNotCaught)
{
    save("UserFileTransfert", "KVX", root("old"));
    save("UserFileTransfert", "ZBL", root("old"));
    writeBytes(dataDir.filePath("plain"), "x");
    const QString bad = root("plain") + sep() + "sub";
    scripted.folders.answers = {bad, bad};
    scripted.messages.answers = {MsgAnswer::Yes, MsgAnswer::Yes};

    EXPECT_THROW(generalSetting().btChangeKVXFilePath_Click(), RuntimeError);
    EXPECT_THROW(generalSetting().btChangeZBLFilePath_Click(), RuntimeError);
    EXPECT_EQ(setting("UserFileTransfert", "KVX"), root("old"));
    EXPECT_EQ(setting("UserFileTransfert", "ZBL"), root("old"));
}

TEST_F(DataFoldersTest, OkOnlyHidesTheWindow)
{
    save("UserFileTransfert", "KVX", root());
    CheckIfDirectoryExist();
    const QString shown = generalSetting().txtCurrentKVXFilesPath();
    calls.clear();

    generalSetting().btOk_Click();

    EXPECT_EQ(calls, std::vector<QString>{"hide"});
    EXPECT_EQ(generalSetting().txtCurrentKVXFilesPath(), shown);
    EXPECT_EQ(setting("UserFileTransfert", "KVX"), root());
}

TEST_F(DataFoldersTest, ModelTextsStartAsTheirControlNames)
{
    const GeneralSettingModel fresh;
    EXPECT_EQ(fresh.txtCurrentKVXFilesPath(), QString("txtCurrentKVXFilesPath"));
    EXPECT_EQ(fresh.txtCurrentZBLFilesPath(), QString("txtCurrentZBLFilesPath"));
    EXPECT_EQ(fresh.MessageBox_AreYouSureToChange(), QString("MessageBox_AreYouSureToChange"));
}

// --- Selecting a KVX test file -----------------------------------------------

TEST_F(DataFoldersTest, KvxDialogStartsAtTheTopWhenTheLabelIsEmpty)
{
    generalSetting().setTxtCurrentKVXFilesPath("");
    EXPECT_EQ(SelectKvxTestFile(), True16); // cancelled
    ASSERT_EQ(scripted.files.requests.size(), 1u);
    EXPECT_EQ(scripted.files.requests[0].initDir, sep());
}

TEST_F(DataFoldersTest, KvxDialogStartsInTheLabelWhenItIsAFolder)
{
    const QString folder = makeRoot("data/KVX/Files");
    generalSetting().setTxtCurrentKVXFilesPath(folder);
    SelectKvxTestFile();
    ASSERT_EQ(scripted.files.requests.size(), 1u);
    EXPECT_EQ(scripted.files.requests[0].initDir, folder);
    EXPECT_EQ(scripted.files.requests[0].fileName, QString("*.txt"));
    EXPECT_EQ(scripted.files.requests[0].title, QString("Test"));
}

TEST_F(DataFoldersTest, KvxDialogTakesALabelThatIsNoFolderAsARoot)
{
    const QString label = root("data") + sep() + "KVX" + sep() + "Files";
    generalSetting().setTxtCurrentKVXFilesPath(label);
    SelectKvxTestFile();
    ASSERT_EQ(scripted.files.requests.size(), 1u);
    EXPECT_EQ(scripted.files.requests[0].initDir, label + sep() + "KVX" + sep() + "Files");
}

TEST_F(DataFoldersTest, RemovedRootMovesTheKvxDialogButNotTheZblDialog)
{
    const QString r = makeRoot();
    save("UserFileTransfert", "KVX", r);
    CheckIfDirectoryExist();
    QDir(r).removeRecursively();
    const QString earlier = makeRoot("earlier");
    CommonDialog1().InitDir = earlier;

    CheckIfDirectoryExist();
    EXPECT_TRUE(scripted.messages.shown.empty());

    SelectKvxTestFile();
    const QString kvxLabel = r + sep() + "KVX" + sep() + "Files";
    ASSERT_EQ(scripted.files.requests.size(), 1u);
    EXPECT_EQ(scripted.files.requests[0].initDir, kvxLabel + sep() + "KVX" + sep() + "Files");

    CommonDialog1().InitDir = earlier;
    SelectZblTestFile();
    ASSERT_EQ(scripted.files.requests.size(), 2u);
    EXPECT_EQ(scripted.files.requests[1].initDir, earlier);
}

TEST_F(DataFoldersTest, ChosenKvxFileIsOpenedReadableAndLeftOpen)
{
    const QString file = writeTestFile("data/KVX/Files/t1.txt", {"first line", "second"});
    generalSetting().setTxtCurrentKVXFilesPath(root("data") + sep() + "KVX" + sep() + "Files");
    scripted.files.answers = {file};

    EXPECT_EQ(SelectKvxTestFile(), False16);

    EXPECT_EQ(appState().KvxTestFilePath.toText(), file);
    const Int16 no = fileNo(appState().KvxTestFileNo);
    SequentialFiles& files = SequentialFiles::instance();
    ASSERT_TRUE(files.isOpen(no));
    EXPECT_EQ(files.mode(no), SequentialFiles::Mode::Input);
    EXPECT_EQ(files.lineInput(no), QString("first line"));
    EXPECT_EQ(files.lineInput(no), QString("second"));
    EXPECT_EQ(CommonDialog1().FileName, file);
    EXPECT_EQ(setting("FileTransfert", "KVX"),
              root("data") + sep() + "KVX" + sep() + "Files" + sep());
    EXPECT_TRUE(scripted.messages.shown.empty());
}

TEST_F(DataFoldersTest, KvxPatternAnswerOpensNothingAndStoresAnEmptyFolder)
{
    generalSetting().setTxtCurrentKVXFilesPath("");
    scripted.files.answers = {"*.txt"};

    EXPECT_EQ(SelectKvxTestFile(), True16);

    EXPECT_EQ(setting("FileTransfert", "KVX"), QString(""));
    EXPECT_TRUE(appState().KvxTestFilePath.isEmpty());
    EXPECT_EQ(SequentialFiles::instance().openCount(), 0);
}

TEST_F(DataFoldersTest, CancelledKvxDialogOpensAndStoresNothing)
{
    generalSetting().setTxtCurrentKVXFilesPath("");

    EXPECT_EQ(SelectKvxTestFile(), True16);

    EXPECT_EQ(setting("FileTransfert", "KVX"), QString(Absent));
    EXPECT_EQ(CommonDialog1().FileName, QString("*.txt"));
    EXPECT_TRUE(appState().KvxTestFilePath.isEmpty());
    EXPECT_EQ(SequentialFiles::instance().openCount(), 0);
    EXPECT_TRUE(scripted.messages.shown.empty());
}

TEST_F(DataFoldersTest, KvxFileThatCannotBeOpenedAnswersTrueWithoutMessage)
{
    generalSetting().setTxtCurrentKVXFilesPath("");
    const QString missing = root("data") + sep() + "missing.txt";
    scripted.files.answers = {missing};

    EXPECT_EQ(SelectKvxTestFile(), True16);

    EXPECT_TRUE(scripted.messages.shown.empty());
    EXPECT_EQ(SequentialFiles::instance().openCount(), 0);
    // The dialog ended with OK, so its folder is kept all the same.
    EXPECT_EQ(setting("FileTransfert", "KVX"), root("data") + sep());
}

TEST_F(DataFoldersTest, KvxStartFolderWithoutTheFolderTestObjectEndsTheProgram)
{
    setFolderTestObject(nullptr);
    generalSetting().setTxtCurrentKVXFilesPath(makeRoot());
    try {
        SelectKvxTestFile();
        FAIL() << "the failure was caught";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), CannotCreateObjectError);
    }
    EXPECT_TRUE(scripted.files.requests.empty());
}

TEST_F(DataFoldersTest, KvxStartFolderUsesTheFolderTestObject)
{
    std::vector<QString> asked;
    setFolderTestObject([&asked](const QString& path) {
        asked.push_back(path);
        return true;
    });
    generalSetting().setTxtCurrentKVXFilesPath(root("anything"));
    SelectKvxTestFile();
    EXPECT_EQ(asked, std::vector<QString>{root("anything")});
    ASSERT_EQ(scripted.files.requests.size(), 1u);
    EXPECT_EQ(scripted.files.requests[0].initDir, root("anything"));
}

// --- Selecting a ZBL test file -----------------------------------------------

TEST_F(DataFoldersTest, ZblDialogStartsBesideTheProgramWhenTheLabelIsEmpty)
{
    generalSetting().setTxtCurrentZBLFilesPath("");
    SelectZblTestFile();
    ASSERT_EQ(scripted.files.requests.size(), 1u);
    EXPECT_EQ(scripted.files.requests[0].initDir, AppPath() + sep() + "ZBL" + sep() + "Files");
    EXPECT_EQ(scripted.files.requests[0].fileName, QString("*.zbl"));
    EXPECT_EQ(scripted.files.requests[0].title, QString("Test"));
}

TEST_F(DataFoldersTest, ZblDialogStartsInTheLabelWhenItIsAFolder)
{
    const QString folder = makeRoot("data/ZBL/Files");
    generalSetting().setTxtCurrentZBLFilesPath(folder);
    SelectZblTestFile();
    ASSERT_EQ(scripted.files.requests.size(), 1u);
    EXPECT_EQ(scripted.files.requests[0].initDir, folder);
}

TEST_F(DataFoldersTest, ZblDialogKeepsItsFolderWhenTheLabelIsNoFolder)
{
    CommonDialog1().InitDir = "where it was";
    generalSetting().setTxtCurrentZBLFilesPath(root("missing"));
    SelectZblTestFile();
    ASSERT_EQ(scripted.files.requests.size(), 1u);
    EXPECT_EQ(scripted.files.requests[0].initDir, QString("where it was"));
}

TEST_F(DataFoldersTest, ChosenZblFileIsOpenedReadableAndLeftOpen)
{
    const QString file = writeTestFile("data/ZBL/Files/t1.zbl", {"zbl line"});
    generalSetting().setTxtCurrentZBLFilesPath("");
    scripted.files.answers = {file};

    EXPECT_EQ(SelectZblTestFile(), False16);

    EXPECT_EQ(appState().ZblTestFilePath.toText(), file);
    const Int16 no = fileNo(appState().ZblTestFileNo);
    ASSERT_TRUE(SequentialFiles::instance().isOpen(no));
    EXPECT_EQ(SequentialFiles::instance().lineInput(no), QString("zbl line"));
    EXPECT_EQ(setting("FileTransfert", "ZBL"),
              root("data") + sep() + "ZBL" + sep() + "Files" + sep());
    EXPECT_EQ(setting("FileTransfert", "KVX"), QString(Absent));
}

TEST_F(DataFoldersTest, ZblPatternAnswerAndCancelOpenNothing)
{
    generalSetting().setTxtCurrentZBLFilesPath("");
    scripted.files.answers = {"*.zbl"};
    EXPECT_EQ(SelectZblTestFile(), True16);
    EXPECT_EQ(setting("FileTransfert", "ZBL"), QString(""));

    save("FileTransfert", "ZBL", "kept");
    EXPECT_EQ(SelectZblTestFile(), True16); // cancelled
    EXPECT_EQ(setting("FileTransfert", "ZBL"), QString("kept"));
    EXPECT_EQ(SequentialFiles::instance().openCount(), 0);
    EXPECT_TRUE(appState().ZblTestFilePath.isEmpty());
}

TEST_F(DataFoldersTest, ZblFileThatCannotBeOpenedAnswersTrue)
{
    generalSetting().setTxtCurrentZBLFilesPath("");
    scripted.files.answers = {root("data") + sep() + "missing.zbl"};
    EXPECT_EQ(SelectZblTestFile(), True16);
    EXPECT_TRUE(scripted.messages.shown.empty());
    EXPECT_EQ(SequentialFiles::instance().openCount(), 0);
}

TEST_F(DataFoldersTest, SelectedFilesStayOpenUnderTheirOwnNumbers)
{
    const QString kvx = writeTestFile("a.txt", {"kvx"});
    const QString zbl = writeTestFile("b.zbl", {"zbl"});
    generalSetting().setTxtCurrentKVXFilesPath("");
    generalSetting().setTxtCurrentZBLFilesPath("");
    scripted.files.answers = {kvx, zbl};

    ASSERT_EQ(SelectKvxTestFile(), False16);
    ASSERT_EQ(SelectZblTestFile(), False16);

    const Int16 kvxNo = fileNo(appState().KvxTestFileNo);
    const Int16 zblNo = fileNo(appState().ZblTestFileNo);
    EXPECT_NE(kvxNo, zblNo);
    EXPECT_EQ(SequentialFiles::instance().openCount(), 2);
    EXPECT_EQ(SequentialFiles::instance().lineInput(zblNo), QString("zbl"));
    EXPECT_EQ(SequentialFiles::instance().lineInput(kvxNo), QString("kvx"));
}

// --- Reopening the KVX test file ---------------------------------------------

TEST_F(DataFoldersTest, ReopenOpensTheLastSelectedFileAgainUnderANewNumber)
{
    const QString file = writeTestFile("t.txt", {"again"});
    generalSetting().setTxtCurrentKVXFilesPath("");
    scripted.files.answers = {file};
    ASSERT_EQ(SelectKvxTestFile(), False16);
    const Int16 first = fileNo(appState().KvxTestFileNo);

    EXPECT_EQ(ReopenKvxTestFile(), False16);

    const Int16 second = fileNo(appState().KvxTestFileNo);
    EXPECT_NE(first, second);
    EXPECT_EQ(appState().KvxTestFilePath.toText(), file);
    EXPECT_EQ(SequentialFiles::instance().lineInput(second), QString("again"));
    EXPECT_EQ(scripted.files.requests.size(), 1u); // no dialog
}

TEST_F(DataFoldersTest, ReopenAnswersTrueWhileTheDialogHoldsThePattern)
{
    CommonDialog1().FileName = "*.txt";
    EXPECT_EQ(ReopenKvxTestFile(), True16);
    EXPECT_TRUE(appState().KvxTestFilePath.isEmpty());
    EXPECT_EQ(SequentialFiles::instance().openCount(), 0);
}

TEST_F(DataFoldersTest, ReopenAfterALanguageChangeReadsTheLanguageFile)
{
    const QString file = writeTestFile("t.txt", {"test"});
    generalSetting().setTxtCurrentKVXFilesPath("");
    scripted.files.answers = {file};
    ASSERT_EQ(SelectKvxTestFile(), False16);
    // The language loader leaves the language file's path in the same box.
    writeBytes(programDir.filePath("fr.lng"), crlfLines({"frmMain.Caption,Quenby FR"}));
    CommonDialog1().FileName = native(programDir.filePath("fr.lng"));

    EXPECT_EQ(ReopenKvxTestFile(), False16);

    EXPECT_EQ(appState().KvxTestFilePath.toText(), native(programDir.filePath("fr.lng")));
    EXPECT_EQ(SequentialFiles::instance().lineInput(fileNo(appState().KvxTestFileNo)),
              QString("frmMain.Caption,Quenby FR"));
}

TEST_F(DataFoldersTest, ReopenOfAMissingFileIsNotCaught)
{
    CommonDialog1().FileName = root("gone.txt");
    try {
        ReopenKvxTestFile();
        FAIL() << "the failure was caught";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::FileNotFound);
    }
}

// --- Selecting a logo image --------------------------------------------------

TEST_F(DataFoldersTest, ChosenLogoImageIsKeptAndHandedToTheLogoWork)
{
    const QString image = root("logo.bmp");
    scripted.files.answers = {image};
    CommonDialog1().FileName = "untouched";

    EXPECT_EQ(SelectLogoImage(), False16);

    ASSERT_EQ(scripted.files.requests.size(), 1u);
    EXPECT_EQ(scripted.files.requests[0].fileName, QString("*.jpg;*.bmp"));
    EXPECT_EQ(scripted.files.requests[0].title, QString("Image Files"));
    EXPECT_EQ(appState().LogoImagePath.toText(), image);
    EXPECT_EQ(cdOpenLogo().FileName, image);
    EXPECT_EQ(CommonDialog1().FileName, QString("untouched"));
    EXPECT_EQ(calls, (std::vector<QString>{"hideResizeLogo", "loadLogoImage " + image}));
}

TEST_F(DataFoldersTest, APictureThatCannotBeReadStopsTheCommandAtTheLoad)
{
    const QString image = root("not-a-picture.bmp");
    scripted.files.answers = {image};
    views.readable = false;

    // Nothing was made of it: the command goes no further, without a message.
    EXPECT_EQ(SelectLogoImage(), True16);
    EXPECT_EQ(appState().LogoImagePath.toText(), image);
    EXPECT_EQ(calls, (std::vector<QString>{"hideResizeLogo", "loadLogoImage " + image}));
    EXPECT_TRUE(scripted.messages.shown.empty());
}

TEST_F(DataFoldersTest, TheLogoLivesBesideTheProgramWhenThatFolderIsWritable)
{
    EXPECT_EQ(LogoFilePath(), programDir.path() + pathSep() + "logo.bmp");
    // An installed program's folder that the user cannot write: the user's
    // own application data folder instead, made if missing (the test's own
    // copy of it).
    QStandardPaths::setTestModeEnabled(true);
    setAppPathOverride(root("missing-folder"));
    const QString own = LogoFilePath();
    EXPECT_FALSE(own.startsWith(root("missing-folder")));
    EXPECT_TRUE(own.endsWith(pathSep() + QString("logo.bmp")));
    EXPECT_TRUE(QFileInfo(QFileInfo(own).path()).isDir());
    EXPECT_EQ(QFileInfo(own).path(),
              QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    QStandardPaths::setTestModeEnabled(false);
}

TEST_F(DataFoldersTest, CancelledLogoDialogIsNoError)
{
    EXPECT_EQ(SelectLogoImage(), True16);
    EXPECT_TRUE(appState().LogoImagePath.isEmpty());
    EXPECT_EQ(calls, std::vector<QString>{"hideResizeLogo"});
}

TEST_F(DataFoldersTest, LogoPatternAnswerChoosesNothing)
{
    scripted.files.answers = {"*.jpg;*.bmp"};
    EXPECT_EQ(SelectLogoImage(), True16);
    EXPECT_TRUE(appState().LogoImagePath.isEmpty());
}

// --- The open dialog ---------------------------------------------------------

TEST_F(DataFoldersTest, OpenDialogAsksTheServiceAndTakesTheAnswer)
{
    CommonDialogState dialog;
    dialog.FileName = "*.txt";
    dialog.DialogTitle = "Title";
    dialog.InitDir = "start";
    scripted.files.answers = {"chosen"};

    EXPECT_TRUE(dialog.ShowOpen());

    ASSERT_EQ(scripted.files.requests.size(), 1u);
    EXPECT_EQ(scripted.files.requests[0].fileName, QString("*.txt"));
    EXPECT_EQ(scripted.files.requests[0].title, QString("Title"));
    EXPECT_EQ(scripted.files.requests[0].initDir, QString("start"));
    EXPECT_EQ(dialog.FileName, QString("chosen"));
}

TEST_F(DataFoldersTest, CancelledOpenDialogKeepsItsNameAndRaisesOnlyWhenAsked)
{
    CommonDialogState dialog;
    dialog.FileName = "*.txt";
    EXPECT_FALSE(dialog.ShowOpen());
    EXPECT_EQ(dialog.FileName, QString("*.txt"));

    dialog.CancelError = true;
    try {
        dialog.ShowOpen();
        FAIL() << "no cancel error";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), CommonDialogCancelError);
    }
    EXPECT_EQ(dialog.FileName, QString("*.txt"));
}

TEST_F(DataFoldersTest, OpenDialogWithoutServiceIsACancel)
{
    FileDialogService* saved = services().files;
    services().files = nullptr;
    CommonDialogState dialog;
    dialog.FileName = "name";
    const bool chosen = dialog.ShowOpen();
    services().files = saved;
    EXPECT_FALSE(chosen);
    EXPECT_EQ(dialog.FileName, QString("name"));
}

// --- Helpers -----------------------------------------------------------------

TEST_F(DataFoldersTest, PathOfFileKeepsTheLastSeparator)
{
    EXPECT_EQ(PathOfFile(sep() + "a" + sep() + "b" + sep() + "c.txt"),
              sep() + "a" + sep() + "b" + sep());
    EXPECT_EQ(PathOfFile(sep() + "a" + sep()), sep() + "a" + sep());
    EXPECT_EQ(PathOfFile("c.txt"), QString(""));
    EXPECT_EQ(PathOfFile(""), QString(""));
}

TEST_F(DataFoldersTest, IsDirectoryAnswersOnlyForFolders)
{
    const QString folder = makeRoot();
    const QString file = writeTestFile("f.txt", {"x"});
    EXPECT_EQ(IsDirectory(folder), True16);
    EXPECT_EQ(IsDirectory(folder + sep()), True16);
    EXPECT_EQ(IsDirectory(file), False16);
    EXPECT_EQ(IsDirectory(root("missing")), False16);
    EXPECT_EQ(IsDirectory(""), False16);
}

TEST_F(DataFoldersTest, FolderExistsFsoAnswersOnlyForFolders)
{
    const QString folder = makeRoot();
    const QString file = writeTestFile("f.txt", {"x"});
    EXPECT_EQ(FolderExistsFso(folder), True16);
    EXPECT_EQ(FolderExistsFso(file), False16);
    EXPECT_EQ(FolderExistsFso(root("missing")), False16);
    EXPECT_EQ(FolderExistsFso(""), False16);
}

} // namespace

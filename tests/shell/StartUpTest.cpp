// The main window's load step, run on the model with scripted dialogs, a
// temporary settings store and a temporary program folder.
#include "app/model/StartUp.h"
#include "localisation/model/LanguageLookup.h"
#include "shell/model/AppState.h"
#include "shell/model/CommonDialog.h"
#include "shell/model/FatalError.h"
#include "shell/model/Platform.h"
#include "shell/model/SettingsStore.h"
#include "tests/support/ScriptedLanguageWindows.h"
#include "tests/support/ScriptedServices.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace quenby;
using namespace quenby::testing;

namespace {

class StartUpTest : public ::testing::Test
{
protected:
    ScriptedLanguageWindows windows;
    void SetUp() override
    {
        // Each test runs with fresh services and a fresh shell session.
        setAppPathOverride(programDir.path());
        setSettingsStore(&store);
    }

    void writeLang(const QString& name, const QStringList& lines)
    {
        writeBytes(programDir.filePath(name), crlfLines(lines));
    }
    QString inProgramDir(const QString& name) const { return programDir.path() + pathSep() + name; }

    QTemporaryDir programDir;
    QTemporaryDir storeDir;
    QtSettingsStore store{storeDir.path()};
    ScriptedServices scripted;
};

} // namespace

TEST_F(StartUpTest, NoLanguageInTheStoreStartsInEnglishAndWritesNothing)
{
    writeLang("en.lng", {"frmMain.Caption,Quenby"});
    writeLang("fr.lng", {"frmMain.Caption,Quenby (fr)"});
    frmMainLoad({});
    EXPECT_EQ(appState().LangFilePath, inProgramDir("en.lng"));
    EXPECT_EQ(GetLanguageText(QStringLiteral("frmMain.Caption")), "Quenby");
    EXPECT_FALSE(QFile::exists(store.location(SettingsAppLanguage)));
    EXPECT_TRUE(scripted.messages.shown.empty());
}

TEST_F(StartUpTest, StoredLanguageIsLoaded)
{
    store.SaveSetting("Quenbey", "Language", "Language", "FRANCAIS");
    writeLang("en.lng", {"frmMain.Caption,Quenby"});
    writeLang("fr.lng", {"frmMain.Caption,Quenby (fr)"});
    frmMainLoad({});
    EXPECT_EQ(appState().LangFilePath, inProgramDir("fr.lng"));
    EXPECT_EQ(GetLanguageText(QStringLiteral("frmMain.Caption")), "Quenby (fr)");
}

TEST_F(StartUpTest, FrenchWithoutEnglishFileStops)
{
    store.SaveSetting("Quenbey", "Language", "Language", "FRANCAIS");
    writeLang("fr.lng", {"frmMain.Caption,Quenby (fr)"});
    bool languageLoaded = false;
    windows.fillers[QStringLiteral("FillTextsMain")] = [&] { languageLoaded = true; };
    try {
        frmMainLoad({});
        FAIL() << "the program went on";
    } catch (const ProgramEnded& end) {
        EXPECT_NE(end.exitCode, 0);
    }
    ASSERT_EQ(scripted.messages.shown.size(), 1u);
    EXPECT_EQ(scripted.messages.shown[0].text, "Unable to find langage files");
    EXPECT_EQ(scripted.messages.shown[0].icon, MsgIcon::Critical);
    EXPECT_EQ(scripted.messages.shown[0].buttons, MsgButtons::Ok);
    EXPECT_FALSE(languageLoaded);
    EXPECT_EQ(appState().LangFilePath, "");
}

TEST_F(StartUpTest, MissingEnglishFileStopsBeforeTheFolderCheck)
{
    bool folderChecked = false;
    StartUpSteps steps;
    steps.CheckIfDirectoryExist = [&] { folderChecked = true; };
    EXPECT_THROW(frmMainLoad(steps), ProgramEnded);
    EXPECT_FALSE(folderChecked);
}

TEST_F(StartUpTest, MissingCurrentLanguageFileFailsAtTheFirstLookup)
{
    store.SaveSetting("Quenbey", "Language", "Language", "POLISH");
    writeLang("en.lng", {"frmMain.Caption,Quenby"});
    windows.fillers[QStringLiteral("FillTextsMain")] = [] {
        GetLanguageText(QStringLiteral("frmMain.Caption"));
    };
    try {
        frmMainLoad({});
        FAIL() << "no failure";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::FileNotFound);
        EXPECT_TRUE(e.where().endsWith(QStringLiteral("polish.lng")));
    }
}

TEST_F(StartUpTest, UnknownLanguageWordTakesTheDialogsFileName)
{
    store.SaveSetting("Quenbey", "Language", "Language", "KLINGON");
    writeLang("en.lng", {"frmMain.Caption,Quenby"});
    frmMainLoad({});
    // The dialog's file name is empty at start: no file is assigned.
    EXPECT_EQ(appState().LangFilePath, "");
    try {
        GetLanguageText(QStringLiteral("frmMain.Caption"));
        FAIL() << "the lookup found a file";
    } catch (const RuntimeError& e) {
        EXPECT_NE(e.number(), 0);
    }
}

TEST_F(StartUpTest, StepsRunInTheirOrder)
{
    writeLang("en.lng", {"frmMain.Caption,Quenby"});
    QStringList order;
    windows.fillers[QStringLiteral("FillTextsMain")] = [&] {
        order << "language";
        EXPECT_EQ(mainWindowState().chkKneeTypeVisible, (std::array<bool, 3>{false, false, false}));
    };
    appState().ProcessInProgress = True16;
    StartUpSteps steps;
    steps.CheckIfDirectoryExist = [&] {
        order << "folders";
        EXPECT_EQ(appState().ProcessInProgress, True16);
    };
    steps.TreatVisibleMenu = [&] {
        order << "menu";
        EXPECT_EQ(appState().ProcessInProgress, False16);
    };
    frmMainLoad(steps);
    EXPECT_EQ(order, (QStringList{"language", "folders", "menu"}));
}

TEST_F(StartUpTest, ConverterPathsLieBesideTheProgram)
{
    writeLang("en.lng", {"x,y"});
    frmMainLoad({});
    const QString exe = isWindowsPlatform() ? ".exe" : "";
    EXPECT_EQ(mainWindowState().KvxConverterPath, inProgramDir("kvx_report_converter" + exe));
    EXPECT_EQ(mainWindowState().ZblConverterPath, inProgramDir("zbl_report_converter" + exe));
}

TEST(FatalError, MessageNamesTheErrorTheFileAndTheCommand)
{
    RuntimeError e(err::InputPastEndOfFile, "/data/KVX/Files/T1.txt");
    EXPECT_EQ(fatalErrorMessage(e, "mnKVXFiles_Click"),
              "Run-time error '62':\n\nInput past end of file\n\n"
              "File: /data/KVX/Files/T1.txt\nCommand: mnKVXFiles_Click");
    RuntimeError bare(err::Overflow);
    EXPECT_EQ(fatalErrorMessage(bare, ""), "Run-time error '6':\n\nOverflow");
    RuntimeError value(err::TypeMismatch);
    value.setDetail("X1");
    EXPECT_EQ(fatalErrorMessage(value, ""),
              "Run-time error '13':\n\nType mismatch\n\nValue: \"X1\"");
}

TEST(FatalError, ShowsACriticalBoxAndEndsWithTheErrorNumber)
{
    ScriptedServices scripted;
    CommandScope command("ReadKvxTestFile");
    try {
        reportFatalError(RuntimeError(err::SubscriptOutOfRange, "t.txt"));
        FAIL() << "the program went on";
    } catch (const ProgramEnded& end) {
        EXPECT_EQ(end.exitCode, 9);
    }
    ASSERT_EQ(scripted.messages.shown.size(), 1u);
    EXPECT_EQ(scripted.messages.shown[0].icon, MsgIcon::Critical);
    EXPECT_TRUE(scripted.messages.shown[0].text.startsWith("Run-time error '9':"));
    EXPECT_TRUE(scripted.messages.shown[0].text.contains("Command: ReadKvxTestFile"));
}

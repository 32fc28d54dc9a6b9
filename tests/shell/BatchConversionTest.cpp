// The batch menu commands and the disk repair command without a screen: the
// environment, the process creation and the message table are scripted, so
// the block a converter starts with is compared character by character.
#include "shell/model/BatchConversion.h"
#include "shell/model/MainWindowState.h"
#include "shell/model/Platform.h"
#include "tests/support/Failure.h"
#include "tests/support/ScriptedProcessStart.h"
#include "tests/support/ScriptedServices.h"
#include "tests/support/TestFiles.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace quenby;
using namespace quenby::testing;

namespace {

// A block written with "|" for each NUL, so that expectations read easily.
QString block(const char* withBars)
{
    return QString::fromLatin1(withBars).replace(QLatin1Char('|'), QChar(u'\0'));
}

class BatchConversionTest : public ::testing::Test
{
protected:
    QTemporaryDir programDir;
    ScriptedServices scripted;
    ScriptedProcessStart processes;

    void SetUp() override
    {
        setAppPathOverride(programDir.path());
        mainWindowState().KvxConverterPath = programDir.filePath("kvx_report_converter");
        mainWindowState().ZblConverterPath = programDir.filePath("zbl_report_converter");
    }
    void TearDown() override { setAppPathOverride({}); }

    // The block of the one process started so far.
    QString startedBlock() const
    {
        EXPECT_EQ(processes.created.size(), 1u);
        return processes.created.empty() ? QString() : processes.created[0].environmentBlock;
    }
};

TEST(KeepsPathFolder, TheWordMustBeginWithinTheFirstFourCharacters)
{
    EXPECT_TRUE(keepsPathFolder("C:\\Windows\\system32"));
    EXPECT_TRUE(keepsPathFolder("WINDOWS"));
    EXPECT_TRUE(keepsPathFolder("abcWinDows"));   // begins at the fourth
    EXPECT_FALSE(keepsPathFolder("abcdwindows")); // begins at the fifth
    EXPECT_FALSE(keepsPathFolder("D:\\xwindows"));
    EXPECT_FALSE(keepsPathFolder("C:\\Program Files\\Windows Kits"));
    EXPECT_FALSE(keepsPathFolder("C:\\Windo"));
    EXPECT_FALSE(keepsPathFolder(""));
    EXPECT_FALSE(keepsPathFolder("/usr/bin"));
}

TEST_F(BatchConversionTest, PathKeepsOnlyTheSystemFolders)
{
    processes.environment = {"ALLUSERSPROFILE=C:\\ProgramData",
                             "Path=C:\\Tools;C:\\WINDOWS\\system32;D:\\xwindows", "TEMP=C:\\Temp"};
    EXPECT_EQ(RunProgram("C:\\Quenby\\kvx_report_converter.exe"), 1);
    EXPECT_EQ(startedBlock(),
              block("ALLUSERSPROFILE=C:\\ProgramData|PATH=C:\\WINDOWS\\system32|TEMP=C:\\Temp||"));
}

TEST_F(BatchConversionTest, APathWithoutSystemFoldersLeavesNoPathAtAll)
{
    processes.environment = {"HOME=/home/op", "PATH=/usr/local/bin:/usr/bin;/opt/xwindows",
                             "LANG=fr_FR.UTF-8"};
    RunProgram("/opt/quenby/kvx_report_converter");
    EXPECT_EQ(startedBlock(), block("HOME=/home/op|LANG=fr_FR.UTF-8||"));
    EXPECT_FALSE(startedBlock().contains("PATH", Qt::CaseInsensitive));
}

TEST_F(BatchConversionTest, SeveralKeptFoldersKeepTheirOrderAndEmptyOnesGo)
{
    processes.environment = {"path=;c:\\windows;C:\\Perl;;c:\\windows\\System32\\Wbem;"};
    RunProgram("conv.exe");
    EXPECT_EQ(startedBlock(), block("PATH=c:\\windows;c:\\windows\\System32\\Wbem||"));
}

TEST_F(BatchConversionTest, OnlyTheFirstFiveCharactersNameThePath)
{
    // PATHEXT is another variable, and a name that only contains PATH too.
    processes.environment = {"PATHEXT=.COM;.EXE", "MYPATH=C:\\Tools", "PATH=C:\\Windows"};
    RunProgram("conv.exe");
    EXPECT_EQ(startedBlock(), block("PATHEXT=.COM;.EXE|MYPATH=C:\\Tools|PATH=C:\\Windows||"));
}

TEST_F(BatchConversionTest, EveryPathEntryIsCutDown)
{
    processes.environment = {"PATH=C:\\Windows", "A=1", "Path=C:\\Tools"};
    RunProgram("conv.exe");
    EXPECT_EQ(startedBlock(), block("PATH=C:\\Windows|A=1||"));
}

TEST_F(BatchConversionTest, TheFirstEmptyEntryEndsTheEnvironment)
{
    processes.environment = {"A=1", "B=2", "", "C=3"};
    RunProgram("conv.exe");
    EXPECT_EQ(startedBlock(), block("A=1|B=2||"));
    EXPECT_EQ(processes.environmentReads, 3); // nothing is asked past the empty one
}

TEST_F(BatchConversionTest, AnEmptyEnvironmentIsOneNul)
{
    RunProgram("conv.exe");
    EXPECT_EQ(startedBlock(), QString(QChar(u'\0')));
}

TEST_F(BatchConversionTest, EntriesOtherThanThePathGoUnchanged)
{
    // Values with "=" and ";" in them, and the drive entries some systems keep.
    processes.environment = {"=C:=C:\\Quenby", "OPTS=a=b;windows", "Ünïcode=é"};
    RunProgram("conv.exe");
    EXPECT_EQ(startedBlock(), block("=C:=C:\\Quenby|OPTS=a=b;windows|") +
                                  QString::fromUtf8("Ünïcode=é") + QChar(u'\0') + QChar(u'\0'));
}

TEST_F(BatchConversionTest, TheProgramStartsAloneInTheProgramFolder)
{
    const QString path = programDir.filePath("kvx_report_converter");
    RunProgram(path);
    ASSERT_EQ(processes.created.size(), 1u);
    EXPECT_EQ(processes.created[0].applicationName, path);
    EXPECT_EQ(processes.created[0].commandLine, path); // no argument
    EXPECT_EQ(processes.created[0].workingFolder, AppPath());
    EXPECT_EQ(processes.created[0].workingFolder, toPlatformPath(programDir.path()));
}

TEST_F(BatchConversionTest, AFailedStartWorksOutTheTextAndTellsNobody)
{
    processes.createFailsWith = 2;
    processes.messageTable[2] = "The file cannot be found.\r\n";
    EXPECT_EQ(RunProgram("conv.exe"), 0);
    ASSERT_EQ(processes.messageRequests.size(), 1u);
    EXPECT_EQ(processes.messageRequests[0].code, 2);
    EXPECT_EQ(processes.messageRequests[0].bufferSize, 160);
    EXPECT_TRUE(scripted.messages.shown.empty());
}

TEST_F(BatchConversionTest, AStartedProgramAsksForNoText)
{
    EXPECT_NE(RunProgram("conv.exe"), 0);
    EXPECT_TRUE(processes.messageRequests.empty());
}

TEST_F(BatchConversionTest, SystemErrorTextDropsTheLineEnd)
{
    processes.messageTable[5] = "Access is denied.\r\n";
    processes.messageTable[6] = "The handle is invalid.";
    processes.messageTable[7] = "Two lines\r\nof text\n";
    EXPECT_EQ(SystemErrorText(5), QString("Access is denied."));
    EXPECT_EQ(SystemErrorText(6), QString("The handle is invalid."));
    EXPECT_EQ(SystemErrorText(7), QString("Two lines\r\nof text\n")); // only CR LF goes
}

TEST_F(BatchConversionTest, SystemErrorTextFallsBackOnBothCodes)
{
    processes.formatFailsWith = 317;
    EXPECT_EQ(SystemErrorText(12345),
              QString("Erreur FormatMessage: 317 pour obtenir message de l'erreur 12345"));
    processes.formatFailsWith = 122;
    EXPECT_EQ(SystemErrorText(-2),
              QString("Erreur FormatMessage: 122 pour obtenir message de l'erreur -2"));
}

TEST_F(BatchConversionTest, ConverterCommandsStartTheirOwnProgram)
{
    writeBytes(mainWindowState().KvxConverterPath, "x");
    writeBytes(mainWindowState().ZblConverterPath, "x");
    mnBatchConvertKvxPDF_Click();
    mnBatchConvertZblCsv_Click();
    ASSERT_EQ(processes.created.size(), 2u);
    EXPECT_EQ(processes.created[0].commandLine, mainWindowState().KvxConverterPath);
    EXPECT_EQ(processes.created[1].commandLine, mainWindowState().ZblConverterPath);
}

TEST_F(BatchConversionTest, AConverterThatWentAwayIsNotStarted)
{
    writeBytes(mainWindowState().ZblConverterPath, "x");
    mnBatchConvertKvxPDF_Click();
    EXPECT_TRUE(processes.created.empty());
    EXPECT_EQ(processes.environmentReads, 0);
    mnBatchConvertZblCsv_Click();
    EXPECT_EQ(processes.created.size(), 1u);
    EXPECT_TRUE(scripted.messages.shown.empty());
}

TEST_F(BatchConversionTest, RepairAsksForAFolderThenRunsTheDiskCheck)
{
    int warnings = 0;
    scripted.folders.answers = {"E:\\"};
    scripted.messages.answers = {MsgAnswer::Yes};
    mnRepair_Click(nullptr, [&warnings] {
        ++warnings;
        return QStringLiteral("Check the drive?");
    });
    EXPECT_EQ(warnings, 1);
    ASSERT_EQ(scripted.folders.requests.size(), 1u);
    EXPECT_EQ(scripted.folders.requests[0].title, QString("Please select a folder:"));
    EXPECT_EQ(scripted.folders.requests[0].startFolder, QString());
    // The old style, folders only.
    EXPECT_EQ(scripted.folders.requests[0].flags,
              browse::FileSystemFoldersOnly + browse::DontGoBelowDomain);
    ASSERT_EQ(scripted.messages.shown.size(), 1u);
    EXPECT_EQ(scripted.messages.shown[0].text, QString("Check the drive? E:\\"));
    EXPECT_EQ(scripted.messages.shown[0].buttons, MsgButtons::YesNo);
    EXPECT_EQ(scripted.messages.shown[0].title, QString());
    EXPECT_EQ(processes.shellCommands, QStringList{"chkdsk E:\\ /x"});
    EXPECT_TRUE(processes.created.empty());
}

TEST_F(BatchConversionTest, RepairStopsWhenNoFolderIsChosen)
{
    int warnings = 0;
    mnRepair_Click(nullptr, [&warnings] {
        ++warnings;
        return QStringLiteral("Check the drive?");
    });
    EXPECT_EQ(warnings, 1); // the text is looked up before the folder is asked for
    EXPECT_EQ(scripted.folders.requests.size(), 1u);
    EXPECT_TRUE(scripted.messages.shown.empty());
    EXPECT_TRUE(processes.shellCommands.isEmpty());
}

TEST_F(BatchConversionTest, RepairAnsweredNoRunsNothing)
{
    scripted.folders.answers = {"/media/key"};
    scripted.messages.answers = {MsgAnswer::No};
    mnRepair_Click(nullptr, [] { return QStringLiteral("W"); });
    EXPECT_EQ(scripted.messages.shown.size(), 1u);
    EXPECT_TRUE(processes.shellCommands.isEmpty());
}

TEST_F(BatchConversionTest, ADiskCheckThatCannotStartIsARunTimeFailure)
{
    scripted.folders.answers = {"/media/key"};
    scripted.messages.answers = {MsgAnswer::Yes};
    processes.shellStarts = false;
    EXPECT_EQ(failureOf([] { mnRepair_Click(nullptr, [] { return QStringLiteral("W"); }); }),
              err::FileNotFound);
    EXPECT_EQ(processes.shellCommands, QStringList{"chkdsk /media/key /x"});
}

} // namespace

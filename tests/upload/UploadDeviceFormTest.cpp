// The upload window as a model: its controls' state, its operations and its
// events, with the window's hooks recorded instead of a screen. The last test
// runs the whole road from the main menu's command to the closing message.
#include "upload/model/UploadDeviceForm.h"
#include "localisation/model/Vocabulary.h"
#include "tests/support/Failure.h"
#include "tests/upload/support/ScriptedSerialPort.h"
#include "tools/instrument-sim/InstrumentFrames.h"
#include "upload/model/UploadGlobals.h"
#include "upload/model/mdStateMachine.h"

#include <gtest/gtest.h>

#include <ostream>

using namespace quenby;
using namespace quenby::testing;

namespace {

QString T(const QString& key)
{
    return UploadRig::text(key);
}

// Everything the window shows of the model, as one text to compare.
QString describe(const UploadDeviceForm& f)
{
    const auto b = [](bool v) { return v ? QStringLiteral("1") : QStringLiteral("0"); };
    return QStringList{f.lbPrintMessage,
                       f.lbDeviceSerial,
                       f.lbFilestransfert,
                       f.lbTransfertPurcent,
                       f.lbSucces,
                       f.lbFail,
                       f.statusPanel1,
                       f.statusPanel2,
                       b(f.frDeviceVisible),
                       b(f.cmdGetFilesEnabled),
                       b(f.cmdStopEnabled),
                       b(f.lbTransfertPurcentVisible),
                       b(f.lbFilestransfertVisible),
                       b(f.pbTransfertFilesVisible),
                       b(f.lbSuccesVisible),
                       b(f.lbFailVisible),
                       QString::number(f.pbTransfertFilesMax),
                       QString::number(f.pbTransfertFilesValue),
                       f.cbComItems.join(u','),
                       QString::number(f.cbComListIndex),
                       b(f.timerEnabled),
                       QString::number(f.timerInterval),
                       b(f.loaded),
                       b(f.shown)}
        .join(u'|');
}

class UploadDeviceFormTest : public ::testing::Test
{
protected:
    UploadRig rig;
    sim::Instrument instrument;
    QStringList hooks;    // the hooks called, in order
    QString lastMirrored; // the model as the last mirror saw it

    void SetUp() override
    {
        instrument.kind = sim::DeviceKind::Kvx;
        instrument.kvxSerial = QStringLiteral("KVX0042");
        sim::KvxStoredFile file;
        file.serial = QStringLiteral("CT-1");
        sim::KvxTest test;
        test.points = {{1.0f, 0.001f}, {10.0f, 0.01f}};
        file.tests = {test};
        instrument.kvxFiles = {file};
        rig.portList.devices = {ScriptedPortList::com(3)};
        // The instrument sits on COM3; other ports stay silent.
        rig.ports.bench.responder = commandResponder([this](const QByteArray& command, int port) {
            return port == 3 ? sim::replyTo(instrument, command) : QByteArray();
        });

        ScriptedUploadView& v = rig.view;
        v.onFillTexts = [this] { hooks << "fillTexts"; };
        v.onHideWindow = [this] { hooks << "hideWindow"; };
        v.onBringUp = [this] { hooks << "bringUp"; };
        v.onMirror = [this] {
            hooks << "mirror";
            lastMirrored = describe(uploadDeviceForm());
        };
    }

    // The window's last word on the model is a mirror of its final state.
    void expectMirroredAtTheEnd()
    {
        ASSERT_FALSE(hooks.isEmpty());
        EXPECT_EQ(hooks.back(), "mirror");
        EXPECT_EQ(lastMirrored, describe(uploadDeviceForm()));
    }

    void connectDevice()
    {
        UploadDevice_Form_Load();
        ASSERT_NE(rig.ticksUntil(UpState::Idle, 200), -1);
    }
};

TEST_F(UploadDeviceFormTest, DesignStateOfTheWindow)
{
    uploadDeviceForm().lbPrintMessage = "changed";
    uploadDeviceForm().timerEnabled = true;
    uploadDeviceForm().cbComItems = QStringList{"COM1"};
    // A fresh session holds the window at its design state.
    OwnedSession<UploadSession> fresh;
    const UploadDeviceForm& f = uploadDeviceForm();

    EXPECT_EQ(f.lbPrintMessage, "No Device Found!");
    EXPECT_EQ(f.lbDeviceSerial, "?????");
    EXPECT_EQ(f.lbFilestransfert, "----/----");
    EXPECT_EQ(f.lbTransfertPurcent, "0%");
    EXPECT_EQ(f.lbSucces, "-------");
    EXPECT_EQ(f.lbFail, "-------");
    EXPECT_FALSE(f.timerEnabled); // disabled at design
    EXPECT_EQ(f.timerInterval, 100);
    EXPECT_TRUE(f.cbComItems.isEmpty());
    EXPECT_EQ(f.cbComListIndex, -1);
    EXPECT_FALSE(f.loaded);
    EXPECT_FALSE(f.shown);
}

TEST_F(UploadDeviceFormTest, StartProcessInItsNineSteps)
{
    UploadDeviceForm& f = uploadDeviceForm();
    UploadGlobals& g = uploadGlobals();
    f.frDeviceVisible = true;
    f.cmdGetFilesEnabled = true;
    f.cmdStopEnabled = true;
    f.lbSuccesVisible = true;
    f.lbFailVisible = true;
    f.shown = true;
    f.timerEnabled = false;
    g.DeviceSerialText = "KVX0001";
    g.UploadState = UpState::Idle;
    QString messageAtFill = "not filled";
    rig.view.onFillTexts = [&] {
        hooks << "fillTexts";
        messageAtFill = uploadDeviceForm().lbPrintMessage;
    };

    StartProcess();
    EXPECT_TRUE(f.timerEnabled);
    EXPECT_EQ(g.UploadState, UpState::TryPort);
    EXPECT_EQ(g.PrintMessageText, T(UploadKeys::TryToConnect));
    EXPECT_EQ(g.DeviceStatusText, T(UploadKeys::StatusNotConnected));
    EXPECT_EQ(g.UploadFolderStamp, "2014-03-09 14H05M07");
    EXPECT_FALSE(f.frDeviceVisible);
    EXPECT_FALSE(f.cmdGetFilesEnabled);
    EXPECT_FALSE(f.cmdStopEnabled);
    EXPECT_FALSE(f.lbTransfertPurcentVisible);
    EXPECT_FALSE(f.lbFilestransfertVisible);
    EXPECT_FALSE(f.pbTransfertFilesVisible);
    EXPECT_FALSE(f.shown);
    EXPECT_TRUE(g.DeviceSerialText.isEmpty());
    EXPECT_FALSE(f.lbSuccesVisible);
    EXPECT_FALSE(f.lbFailVisible);
    EXPECT_EQ(f.lbPrintMessage, T(UploadKeys::TryToConnect));
    EXPECT_EQ(messageAtFill, T(UploadKeys::TryToConnect));
    // Hidden before the texts are filled; filled once; mirrored last.
    EXPECT_LT(hooks.indexOf("hideWindow"), hooks.indexOf("fillTexts"));
    EXPECT_EQ(hooks.count("fillTexts"), 1);
    expectMirroredAtTheEnd();
}

TEST_F(UploadDeviceFormTest, EndProcessHidesTheWindow)
{
    uploadDeviceForm().shown = true;
    EndProcess();
    EXPECT_FALSE(uploadDeviceForm().shown);
    EXPECT_TRUE(hooks.contains("hideWindow"));
    expectMirroredAtTheEnd();
}

TEST_F(UploadDeviceFormTest, DisplayTransfertShowsOrHidesTheThreeProgressControls)
{
    UploadDeviceForm& f = uploadDeviceForm();
    f.lbSuccesVisible = false;
    DisplayTransfert(false);
    EXPECT_FALSE(f.lbTransfertPurcentVisible);
    EXPECT_FALSE(f.lbFilestransfertVisible);
    EXPECT_FALSE(f.pbTransfertFilesVisible);
    DisplayTransfert(true);
    EXPECT_TRUE(f.lbTransfertPurcentVisible);
    EXPECT_TRUE(f.lbFilestransfertVisible);
    EXPECT_TRUE(f.pbTransfertFilesVisible);
    EXPECT_FALSE(f.lbSuccesVisible); // not one of them
    expectMirroredAtTheEnd();
}

TEST_F(UploadDeviceFormTest, UpdateDisplayCopiesTheTexts)
{
    UploadGlobals& g = uploadGlobals();
    g.PrintMessageText = "message";
    g.DeviceStatusText = "device";
    g.PortStatusText = "Port: 4";
    g.DeviceSerialText = "KVX0042";
    g.FilesTransfertText = "2/5";
    g.NbFilesSucces = 3;
    g.NbFilesFail = 0;
    g.NbFilesOnDevice = 5;
    g.CurrentFile = 2;

    UpdateDisplay();
    const UploadDeviceForm& f = uploadDeviceForm();
    EXPECT_EQ(f.lbPrintMessage, "message");
    EXPECT_EQ(f.statusPanel1, "device");
    EXPECT_EQ(f.statusPanel2, "Port: 4");
    EXPECT_EQ(f.lbDeviceSerial, "KVX0042");
    EXPECT_EQ(f.lbFilestransfert, "2/5");
    EXPECT_EQ(f.lbSucces, "3 Files");
    EXPECT_EQ(f.lbFail, "0 Files");
    EXPECT_EQ(f.lbTransfertPurcent, "40%");
    EXPECT_EQ(f.pbTransfertFilesMax, 5);
    EXPECT_EQ(f.pbTransfertFilesValue, 2);
    expectMirroredAtTheEnd();
}

TEST_F(UploadDeviceFormTest, PercentOnlyWhenTheDeviceHoldsFiles)
{
    UploadDeviceForm& f = uploadDeviceForm();
    f.lbTransfertPurcent = "42%";
    f.pbTransfertFilesMax = 7;
    f.pbTransfertFilesValue = 3;
    uploadGlobals().NbFilesOnDevice = 0;
    uploadGlobals().CurrentFile = 1;

    UpdateDisplay();
    EXPECT_EQ(f.lbTransfertPurcent, "42%");
    EXPECT_EQ(f.pbTransfertFilesMax, 7);
    EXPECT_EQ(f.pbTransfertFilesValue, 3);
}

TEST_F(UploadDeviceFormTest, PercentIsWholeWithHalvesAwayFromZero)
{
    struct Case
    {
        Int16 current, files;
        const char* text;
    };
    const Case cases[] = {{0, 5, "0%"},  {1, 3, "33%"}, {2, 3, "67%"},
                          {1, 8, "13%"}, {3, 8, "38%"}, {5, 5, "100%"}};
    for (const Case& c : cases) {
        uploadGlobals().CurrentFile = c.current;
        uploadGlobals().NbFilesOnDevice = c.files;
        UpdateDisplay();
        EXPECT_EQ(uploadDeviceForm().lbTransfertPurcent, c.text) << c.current << "/" << c.files;
    }
}

TEST_F(UploadDeviceFormTest, GetFilesAsksForTheCount)
{
    UploadGlobals& g = uploadGlobals();
    g.UploadState = UpState::Idle;
    g.NbFilesSucces = 4;
    g.NbFilesFail = 2;
    g.CurrentFile = 3;
    uploadDeviceForm().cmdGetFilesEnabled = true;

    cmdGetFiles_Click();
    EXPECT_FALSE(uploadDeviceForm().cmdGetFilesEnabled);
    EXPECT_TRUE(uploadDeviceForm().cmdStopEnabled);
    EXPECT_EQ(g.PrintMessageText, T(UploadKeys::GetNumberOfFiles));
    EXPECT_EQ(g.UploadState, UpState::AskFileCount);
    EXPECT_EQ(g.NbFilesSucces, 0);
    EXPECT_EQ(g.NbFilesFail, 0);
    EXPECT_EQ(g.CurrentFile, 3); // state 8 resets it once the count arrives
    expectMirroredAtTheEnd();
}

TEST_F(UploadDeviceFormTest, StopAsksForTheStopAndFreesGetFilesAtOnce)
{
    uploadDeviceForm().cmdStopEnabled = true;
    uploadDeviceForm().cmdGetFilesEnabled = false;
    uploadGlobals().UploadState = UpState::WaitData;

    cmdStop_Click();
    EXPECT_TRUE(uploadDeviceForm().cmdGetFilesEnabled);
    EXPECT_FALSE(uploadDeviceForm().cmdStopEnabled);
    EXPECT_EQ(uploadGlobals().StopRequested, True16);
    EXPECT_EQ(uploadGlobals().UploadState, UpState::WaitData);
    expectMirroredAtTheEnd();
}

TEST_F(UploadDeviceFormTest, ScanStartsTheSearchAgain)
{
    connectDevice();
    UploadGlobals& g = uploadGlobals();
    UploadDeviceForm& f = uploadDeviceForm();
    ASSERT_TRUE(f.frDeviceVisible);
    ASSERT_EQ(g.DeviceConnected, True16);
    const Int16 portIndex = g.PortIndex;
    DisplayTransfert(true);
    f.cmdStopEnabled = true;
    rig.scripted.clock.times = {QDateTime(QDate(2016, 1, 2), QTime(3, 4, 5))};

    mnscan_Click();
    EXPECT_FALSE(f.frDeviceVisible);
    EXPECT_TRUE(g.DeviceSerialText.isEmpty());
    EXPECT_TRUE(f.lbDeviceSerial.isEmpty());
    EXPECT_TRUE(f.lbPrintMessage.isEmpty());
    // Emptied, then set again by the start of the search.
    EXPECT_EQ(g.PrintMessageText, T(UploadKeys::TryToConnect));
    EXPECT_EQ(g.DeviceStatusText, T(UploadKeys::StatusNotConnected));
    EXPECT_EQ(g.UploadState, UpState::TryPort);
    EXPECT_EQ(g.UploadFolderStamp, "2016-01-02 03H04M05");
    EXPECT_FALSE(f.lbTransfertPurcentVisible);
    EXPECT_EQ(g.DeviceConnected, False16);
    EXPECT_FALSE(f.cmdGetFilesEnabled);
    EXPECT_FALSE(f.cmdStopEnabled);
    EXPECT_EQ(g.PortIndex, portIndex);
    expectMirroredAtTheEnd();
}

TEST_F(UploadDeviceFormTest, TickHoldsTheTimerThenShowsTheState)
{
    UploadDevice_Form_Load();
    int intervalDuringStep = -1;
    rig.portList.failure = [&] { intervalDuringStep = uploadDeviceForm().timerInterval; };

    tmrStateMachine_Timer();
    EXPECT_EQ(intervalDuringStep, 0);
    const UploadDeviceForm& f = uploadDeviceForm();
    EXPECT_EQ(f.timerInterval, 100);
    EXPECT_EQ(uploadGlobals().UploadState, UpState::WaitPortReply);
    // UpdateDisplay ran as the tick's last step.
    EXPECT_EQ(f.lbPrintMessage, T(UploadKeys::TryToConnect));
    EXPECT_EQ(f.statusPanel1, T(UploadKeys::StatusNotConnected));
    EXPECT_EQ(f.statusPanel2, "Port: 3");
    EXPECT_EQ(f.cbComItems, QStringList{"COM3"});
    expectMirroredAtTheEnd();
}

TEST_F(UploadDeviceFormTest, TimerIsHeldWhileTheClosingMessageShows)
{
    instrument.kvxFiles.clear();
    connectDevice();
    int intervalAtClose = -1;
    bool enabledAtClose = true;
    rig.view.onHideWindow = [&] {
        intervalAtClose = uploadDeviceForm().timerInterval;
        enabledAtClose = uploadDeviceForm().timerEnabled;
    };
    cmdGetFiles_Click();
    ASSERT_NE(rig.ticksUntil(UpState::Idle, 100), -1);
    EXPECT_EQ(intervalAtClose, 0);
    EXPECT_FALSE(enabledAtClose);
    EXPECT_FALSE(uploadDeviceForm().timerEnabled);
    EXPECT_EQ(rig.scripted.messages.shown.size(), 1u);
}

TEST_F(UploadDeviceFormTest, LoadRunsTheStart)
{
    UploadDevice_Form_Load();
    EXPECT_TRUE(uploadDeviceForm().loaded);
    EXPECT_TRUE(uploadDeviceForm().timerEnabled);
    EXPECT_EQ(uploadGlobals().UploadState, UpState::TryPort);
    EXPECT_EQ(hooks.count("fillTexts"), 1);
    expectMirroredAtTheEnd();
}

TEST_F(UploadDeviceFormTest, ClosingStopsTheTimerAndThePortAndUnloads)
{
    connectDevice();
    ASSERT_EQ(rig.ports.bench.openPort, 3);

    UploadDevice_Form_QueryUnload();
    EXPECT_FALSE(uploadDeviceForm().timerEnabled);
    EXPECT_EQ(uploadGlobals().UploadState, UpState::TryPort);
    EXPECT_EQ(rig.ports.bench.openPort, 0);
    expectMirroredAtTheEnd();

    UploadDevice_Form_Unload();
    const UploadDeviceForm& f = uploadDeviceForm();
    EXPECT_FALSE(f.loaded);
    EXPECT_FALSE(f.shown);
    // The controls are gone with the window: a new load begins from the design.
    EXPECT_EQ(f.lbPrintMessage, "No Device Found!");
    EXPECT_EQ(f.lbDeviceSerial, "?????");
    EXPECT_TRUE(f.cbComItems.isEmpty());
    expectMirroredAtTheEnd();
    // The upload's variables stay.
    EXPECT_EQ(uploadGlobals().DeviceType, "KVX");
}

TEST_F(UploadDeviceFormTest, MenuCommandLoadsTheWindowAndStartsTwice)
{
    bool shownAtBringUp = false;
    rig.view.onBringUp = [&] {
        hooks << "bringUp";
        shownAtBringUp = uploadDeviceForm().shown;
    };

    mnUploadPcDevice_Click();
    EXPECT_TRUE(uploadDeviceForm().loaded);
    // The load's start and the command's own: two fills, eight clock reads.
    EXPECT_EQ(hooks.count("fillTexts"), 2);
    EXPECT_EQ(rig.scripted.clock.reads, 8);
    EXPECT_EQ(hooks.count("bringUp"), 1);
    EXPECT_EQ(hooks.back(), "bringUp");
    EXPECT_TRUE(shownAtBringUp);
    EXPECT_TRUE(uploadDeviceForm().shown);
    EXPECT_TRUE(uploadDeviceForm().timerEnabled);

    hooks.clear();
    mnUploadPcDevice_Click();
    EXPECT_EQ(hooks.count("fillTexts"), 1);
    EXPECT_EQ(rig.scripted.clock.reads, 12);
    EXPECT_EQ(hooks.count("bringUp"), 1);
}

TEST_F(UploadDeviceFormTest, EachOpeningStartsTheSearchAgainWhereItStopped)
{
    rig.portList.devices = {ScriptedPortList::com(5), ScriptedPortList::com(3)};
    mnUploadPcDevice_Click();
    ASSERT_NE(rig.ticksUntil(UpState::Idle, 200), -1);
    const Int16 portIndex = uploadGlobals().PortIndex;
    ASSERT_EQ(portIndex, 2);

    rig.scripted.clock.times = {QDateTime(QDate(2014, 3, 10), QTime(9, 0, 1))};
    mnUploadPcDevice_Click();
    EXPECT_EQ(uploadGlobals().UploadState, UpState::TryPort);
    EXPECT_EQ(uploadGlobals().UploadFolderStamp, "2014-03-10 09H00M01");
    EXPECT_EQ(uploadGlobals().PortIndex, portIndex);
    EXPECT_FALSE(uploadDeviceForm().frDeviceVisible);
}

TEST_F(UploadDeviceFormTest, SuccessAndFailCountsStayHidden)
{
    mnUploadPcDevice_Click();
    ASSERT_NE(rig.ticksUntil(UpState::Idle, 200), -1);
    cmdGetFiles_Click();
    ASSERT_NE(rig.ticksUntil(UpState::Idle, 500), -1);
    const UploadDeviceForm& f = uploadDeviceForm();
    EXPECT_FALSE(f.lbSuccesVisible);
    EXPECT_FALSE(f.lbFailVisible);
    EXPECT_EQ(f.lbSucces, "1 Files");
    EXPECT_EQ(f.lbFail, "0 Files");
    EXPECT_EQ(f.lbTransfertPurcent, "100%");
    EXPECT_EQ(f.pbTransfertFilesMax, 1);
    EXPECT_EQ(f.pbTransfertFilesValue, 1);
}

TEST_F(UploadDeviceFormTest, WholeRoadFromTheMenuToTheClosingMessage)
{
    // The window's modal show runs the timer until the window hides.
    int ticks = 0;
    rig.view.onBringUp = [&] {
        hooks << "bringUp";
        while (uploadDeviceForm().shown && ticks < 1000) {
            if (uploadDeviceForm().timerEnabled && uploadDeviceForm().timerInterval > 0) {
                rig.tick();
                ++ticks;
            }
            if (uploadGlobals().UploadState == UpState::Idle &&
                uploadDeviceForm().cmdGetFilesEnabled && !uploadDeviceForm().cmdStopEnabled &&
                rig.scripted.messages.shown.empty())
                cmdGetFiles_Click();
        }
    };

    mnUploadPcDevice_Click();
    ASSERT_LT(ticks, 1000);
    EXPECT_FALSE(uploadDeviceForm().shown);
    EXPECT_FALSE(uploadDeviceForm().timerEnabled);
    ASSERT_EQ(rig.scripted.messages.shown.size(), 1u);
    EXPECT_EQ(rig.scripted.messages.shown.front().text,
              T(UploadKeys::EndMessage1) + " 1 " + T(UploadKeys::EndMessage2) + " 1");
    const UploadDeviceForm& f = uploadDeviceForm();
    EXPECT_EQ(f.lbPrintMessage, T(UploadKeys::Ready) + " " + T(deviceTypeKey("KVX")));
    EXPECT_EQ(f.statusPanel1, T(UploadKeys::StatusReady));
    EXPECT_EQ(f.lbDeviceSerial, "KVX0042");
    EXPECT_TRUE(f.cmdGetFilesEnabled);
    EXPECT_FALSE(f.cmdStopEnabled);
    expectMirroredAtTheEnd();
}

} // namespace

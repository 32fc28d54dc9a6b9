// The upload loop tick by tick, without a screen: a scripted instrument
// answers on one of the scripted ports with the frames a real one sends, and
// a test may cut, spoil or hold back any of its replies. Expected tick counts
// come from the waits: WaitTicks(n) is true on its call n + 2.
#include "localisation/model/Vocabulary.h"
#include "shell/model/Platform.h"
#include "shell/model/RuntimeError.h"
#include "tests/support/Failure.h"
#include "tests/support/TestFiles.h"
#include "tests/upload/support/ScriptedSerialPort.h"
#include "tools/instrument-sim/InstrumentFrames.h"
#include "upload/model/CCommBuffCirculaire.h"
#include "upload/model/CSerialCom.h"
#include "upload/model/UploadDeviceForm.h"
#include "upload/model/UploadGlobals.h"
#include "upload/model/mdStateMachine.h"

#include <QFileInfo>

#include <gtest/gtest.h>

#include <map>
#include <ostream>
#include <vector>

using namespace quenby;
using namespace quenby::testing;

namespace {

constexpr int InstrumentPort = 3;
constexpr unsigned char IdentifyCode = 201;
constexpr unsigned char SerialCode = 204;
constexpr unsigned char CountCode = 210;
constexpr unsigned char HeaderCode = 211;
constexpr unsigned char DataCode = 212;

const QString DefaultStamp = QStringLiteral("2014-03-09 14H05M07"); // the scripted clock's time

QString T(const QString& key)
{
    return UploadRig::text(key);
}

QString typeText(const QString& type)
{
    return T(deviceTypeKey(type));
}

sim::KvxStoredFile kvxFile(int n)
{
    sim::KvxStoredFile f;
    f.fileNumber = n;
    f.serial = QStringLiteral("CT-%1").arg(n);
    f.company = QStringLiteral("Acme Power");
    f.station = QStringLiteral("North yard");
    f.day = 9;
    f.month = 3;
    f.year = 14;
    f.hour = 10;
    f.minute = 20;
    sim::KvxTest t;
    t.points = {{1.0f, 0.001f}, {10.0f, 0.01f}, {100.0f, 0.5f}};
    f.tests = {t};
    return f;
}

sim::ZblStoredFile zblFile(int n)
{
    sim::ZblStoredFile f;
    f.fileNumber = n;
    f.testNumber = 10 + n;
    f.serial = QStringLiteral("TR-%1").arg(n);
    f.company = QStringLiteral("Acme Power");
    f.day = 9;
    f.month = 3;
    f.year = 14;
    sim::ZblReading r;
    r.tapA = QStringLiteral("1");
    r.windingA1 = QStringLiteral("H1");
    r.windingA2 = QStringLiteral("H2");
    r.resistanceA = QStringLiteral("12.34mΩ");
    r.tapB = QStringLiteral("1");
    r.windingB1 = QStringLiteral("X1");
    r.windingB2 = QStringLiteral("X2");
    r.resistanceB = QStringLiteral("1.234mΩ");
    f.readings = {r};
    return f;
}

// A frame whose check byte is wrong.
QByteArray spoiled(QByteArray frame)
{
    frame[frame.size() - 1] = static_cast<char>(frame.at(frame.size() - 1) ^ 0x5A);
    return frame;
}

class StateMachineTest : public ::testing::Test
{
protected:
    UploadRig rig;
    sim::Instrument instrument;
    int instrumentPort = InstrumentPort;
    // Every whole command the instrument received, in order.
    std::vector<QByteArray> commands;
    // How many times each command code has been received.
    std::map<int, int> received;
    // Changes the instrument's reply: the command, how many times its code
    // was received before it, and the reply it would give.
    std::function<QByteArray(const QByteArray&, int, const QByteArray&)> tamper;

    void SetUp() override
    {
        instrument.kind = sim::DeviceKind::Kvx;
        instrument.kvxSerial = QStringLiteral("KVX0042");
        // Six bytes, so that the serial reply has the ten bytes the PC waits for.
        instrument.zblSerialBytes = {12, 0, 7, 3, 4, 5};
        rig.portList.devices = {ScriptedPortList::com(InstrumentPort)};
        rig.ports.bench.responder = commandResponder([this](const QByteArray& command, int port) {
            if (port != instrumentPort)
                return QByteArray();
            commands.push_back(command);
            const int code = static_cast<unsigned char>(command.at(2));
            const int before = received[code]++;
            const QByteArray reply = sim::replyTo(instrument, command);
            return tamper ? tamper(command, before, reply) : reply;
        });
    }

    void useKvx(int files)
    {
        instrument.kind = sim::DeviceKind::Kvx;
        instrument.kvxFiles.clear();
        for (int n = 1; n <= files; ++n)
            instrument.kvxFiles.push_back(kvxFile(n));
    }

    void useZbl(int files)
    {
        instrument.kind = sim::DeviceKind::Zbl;
        instrument.zblFiles.clear();
        for (int n = 1; n <= files; ++n)
            instrument.zblFiles.push_back(zblFile(n));
    }

    // The window opens: its load runs StartProcess.
    static void open() { UploadDevice_Form_Load(); }

    static UpState state() { return uploadGlobals().UploadState; }

    // Open, find the instrument and read its serial: the loop rests in Idle.
    void connectDevice()
    {
        open();
        ASSERT_NE(rig.ticksUntil(UpState::Idle, 200), -1);
    }

    // Connected, and the operator asked for the files.
    void startUpload()
    {
        connectDevice();
        cmdGetFiles_Click();
    }

    void runTo(UpState target, int limit = 5000)
    {
        ASSERT_NE(rig.ticksUntil(target, limit), -1)
            << "state " << static_cast<int>(target) << " not reached";
    }

    // Ticks while the loop stays in `s`; answers how many ticks that took,
    // the tick that left included.
    int ticksIn(UpState s, int limit = 5000)
    {
        for (int ticks = 1; ticks <= limit; ++ticks) {
            rig.tick();
            if (state() != s)
                return ticks;
        }
        return -1;
    }

    // The commands received as "201" or "211/0".
    QStringList commandLog() const
    {
        QStringList log;
        for (const QByteArray& c : commands) {
            QString item = QString::number(static_cast<unsigned char>(c.at(2)));
            if (c.size() == 5)
                item += QLatin1Char('/') + QString::number(static_cast<unsigned char>(c.at(3)));
            log << item;
        }
        return log;
    }

    QString endMessage(int stored, int dealt) const
    {
        return T(UploadKeys::EndMessage1) + QStringLiteral(" %1 ").arg(stored) +
               T(UploadKeys::EndMessage2) + QStringLiteral(" %1").arg(dealt);
    }

    QString corruptionMessage(int stored, int dealt) const
    {
        return endMessage(stored, dealt) + "\r\n" + T(UploadKeys::ErrorCorruption) + "\r\n" +
               T(UploadKeys::Advice);
    }

    QStringList shownTexts() const
    {
        QStringList texts;
        for (const ShownMessage& m : rig.scripted.messages.shown)
            texts << m.text;
        return texts;
    }

    QString kvxFilePath(const QString& name) const
    {
        return rig.kvxUploadFolder(DefaultStamp) + pathSep() + name;
    }

    QString zblFilePath(const QString& name) const
    {
        return rig.zblUploadFolder(DefaultStamp) + pathSep() + name;
    }
};

bool exists(const QString& path)
{
    return QFileInfo::exists(path);
}

// ------------------------------------------------------------------ WaitTicks

TEST_F(StateMachineTest, WaitOfOneIsTrueOnTheThirdCall)
{
    EXPECT_FALSE(WaitTicks(1));
    EXPECT_FALSE(WaitTicks(1));
    EXPECT_TRUE(WaitTicks(1));
    EXPECT_EQ(uploadGlobals().TickCount(), 0);
}

TEST_F(StateMachineTest, WaitIsTrueOnCallNPlusTwo)
{
    for (Int16 n : {Int16(0), Int16(3), Int16(20)}) {
        int calls = 1;
        while (!WaitTicks(n))
            ++calls;
        EXPECT_EQ(calls, n + 2) << "n = " << n;
    }
}

TEST_F(StateMachineTest, OneCounterServesAllWaits)
{
    EXPECT_FALSE(WaitTicks(5));
    EXPECT_FALSE(WaitTicks(5));
    EXPECT_FALSE(WaitTicks(5));
    // A shorter wait finds the counter already past its limit.
    EXPECT_TRUE(WaitTicks(1));
}

// ------------------------------------------------- flush, start and close

TEST_F(StateMachineTest, FlushEmptiesTheCountAndTheFlagButKeepsTheBytes)
{
    rig.portList.devices = {ScriptedPortList::com(InstrumentPort)};
    instrumentPort = 0;
    TryNextPort();
    rig.ports.deliver(QByteArray("GPxyz"));
    ASSERT_EQ(serialCom().IsDataReceived(), True16);

    FlushUpload();
    EXPECT_EQ(commBuffer().GetNumberOfNewByteInCircularBuffer().toNumber(), 0);
    EXPECT_EQ(serialCom().IsDataReceived(), False16);
    EXPECT_EQ(commBuffer().PeekDataBuffer(5), QByteArray("GPxyz"));
}

TEST_F(StateMachineTest, InitUploadStartsTheSearchWithANewStamp)
{
    uploadGlobals().UploadState = UpState::Idle;
    InitUpload();
    EXPECT_EQ(state(), UpState::TryPort);
    EXPECT_EQ(uploadGlobals().PrintMessageText, T(UploadKeys::TryToConnect));
    EXPECT_EQ(uploadGlobals().DeviceStatusText, T(UploadKeys::StatusNotConnected));
    EXPECT_EQ(uploadGlobals().UploadFolderStamp, DefaultStamp);
}

TEST_F(StateMachineTest, StampReadsTheClockFourTimes)
{
    // Each part comes from its own read: a clock that moves between them
    // gives a stamp of mixed parts.
    rig.scripted.clock.times = {QDateTime(QDate(2014, 12, 31), QTime(23, 59, 59)),
                                QDateTime(QDate(2015, 1, 1), QTime(0, 0, 0)),
                                QDateTime(QDate(2015, 1, 1), QTime(7, 8, 9)),
                                QDateTime(QDate(2015, 1, 1), QTime(10, 11, 12))};
    InitUpload();
    EXPECT_EQ(rig.scripted.clock.reads, 4);
    EXPECT_EQ(uploadGlobals().UploadFolderStamp, "2014-12-31 00H08M12");
}

TEST_F(StateMachineTest, CloseUploadGoesBackToTheSearchAndClosesThePort)
{
    TryNextPort();
    ASSERT_EQ(rig.ports.bench.openPort, InstrumentPort);
    uploadGlobals().UploadState = UpState::Idle;

    CloseUpload();
    EXPECT_EQ(state(), UpState::TryPort);
    EXPECT_EQ(rig.ports.bench.openPort, 0);
}

TEST_F(StateMachineTest, StateOneScansAndGoesOnToTheSearch)
{
    uploadGlobals().UploadState = UpState::ScanPorts;
    StateMachineProcess();
    EXPECT_EQ(rig.portList.listings, 1);
    EXPECT_EQ(uploadDeviceForm().cbComItems, QStringList{"COM3"});
    EXPECT_EQ(state(), UpState::TryPort);
    EXPECT_TRUE(rig.ports.bench.writes.empty());
}

TEST_F(StateMachineTest, StatesNotListedDoNothing)
{
    for (const int number : {0, 16, 50, 97, 101}) {
        const auto s = static_cast<UpState>(number);
        uploadGlobals().UploadState = s;
        StateMachineProcess();
        EXPECT_EQ(state(), s);
    }
    EXPECT_EQ(rig.portList.listings, 0);
    EXPECT_TRUE(rig.ports.bench.writes.empty());
    EXPECT_EQ(uploadGlobals().TickCount(), 0);
}

TEST_F(StateMachineTest, IdleWaitsForTheOperator)
{
    connectDevice();
    const std::size_t writes = rig.ports.bench.writes.size();
    for (int i = 0; i < 50; ++i)
        rig.tick();
    EXPECT_EQ(state(), UpState::Idle);
    EXPECT_EQ(rig.ports.bench.writes.size(), writes);
}

// ----------------------------------------------------------- the port search

TEST_F(StateMachineTest, AnAttemptTakesSevenTicks)
{
    useKvx(0);
    open();
    rig.tick();
    EXPECT_EQ(state(), UpState::WaitPortReply);
    for (int i = 0; i < 4; ++i) {
        rig.tick();
        EXPECT_EQ(state(), UpState::WaitPortReply);
    }
    rig.tick();
    EXPECT_EQ(state(), UpState::CheckPortReply);
    rig.tick();
    EXPECT_EQ(state(), UpState::AskSerial);
}

TEST_F(StateMachineTest, ThreeSilentPortsAreTriedEverySevenTicksWithAWrap)
{
    instrumentPort = 0; // nobody answers
    rig.portList.devices = {ScriptedPortList::com(4), ScriptedPortList::com(9),
                            ScriptedPortList::com(2)};
    open();

    std::vector<std::pair<int, int>> tries; // tick, port of the identify
    for (int tick = 1; tick <= 37; ++tick) {
        const std::size_t writes = rig.ports.bench.writes.size();
        rig.tick();
        if (rig.ports.bench.writes.size() > writes)
            tries.emplace_back(tick, rig.ports.current()->CommPort());
    }
    const std::vector<std::pair<int, int>> expected{{1, 4}, {8, 9}, {15, 2}, {29, 4}, {36, 9}};
    EXPECT_EQ(tries, expected);
    EXPECT_EQ(uploadGlobals().DeviceConnected, False16);
}

TEST_F(StateMachineTest, NoReplyClosesThePortAndTriesAgain)
{
    instrumentPort = 0;
    open();
    EXPECT_EQ(rig.ticksUntil(UpState::CheckPortReply), 6);
    EXPECT_EQ(rig.ports.bench.openPort, InstrumentPort);
    rig.tick();
    EXPECT_EQ(state(), UpState::TryPort);
    EXPECT_EQ(rig.ports.bench.openPort, 0);
}

TEST_F(StateMachineTest, KvxAnswerConnects)
{
    useKvx(1);
    open();
    EXPECT_EQ(rig.ticksUntil(UpState::AskSerial), 7);
    UploadGlobals& g = uploadGlobals();
    EXPECT_EQ(g.DeviceType, "KVX");
    EXPECT_EQ(g.DeviceConnected, True16);
    EXPECT_EQ(g.DeviceStatusText, T(UploadKeys::StatusConnected));
    EXPECT_EQ(g.PrintMessageText, T(UploadKeys::DeviceFound));
    EXPECT_EQ(g.PortStatusText, "Port: 3");
    EXPECT_TRUE(uploadDeviceForm().frDeviceVisible);
    EXPECT_EQ(serialCom().IsDataReceived(), False16);
}

TEST_F(StateMachineTest, ZblAnswerConnects)
{
    useZbl(1);
    open();
    EXPECT_EQ(rig.ticksUntil(UpState::AskSerial), 7);
    EXPECT_EQ(uploadGlobals().DeviceType, "ZBL");
}

TEST_F(StateMachineTest, PortRefusingToOpenStillTakesItsSevenTicks)
{
    useKvx(0);
    rig.portList.devices = {ScriptedPortList::com(5), ScriptedPortList::com(InstrumentPort)};
    rig.ports.bench.refusedPorts = {5};
    open();
    EXPECT_EQ(rig.ticksUntil(UpState::AskSerial), 14);
    EXPECT_EQ(commandLog(), QStringList{"201"});
}

TEST_F(StateMachineTest, ReplyOfAnotherTalkerIsFlushedAndTheSearchGoesOn)
{
    useKvx(0);
    tamper = [](const QByteArray& command, int before, const QByteArray& reply) {
        return command.at(2) == char(IdentifyCode) && before == 0 ? QByteArray("XYZW") : reply;
    };
    open();
    EXPECT_EQ(rig.ticksUntil(UpState::CheckPortReply), 6);
    rig.tick();
    EXPECT_EQ(state(), UpState::CheckPortReply); // flushed, and stays
    EXPECT_EQ(commBuffer().GetNumberOfNewByteInCircularBuffer().toNumber(), 0);
    EXPECT_EQ(serialCom().IsDataReceived(), False16);
    EXPECT_EQ(uploadGlobals().DeviceConnected, False16);
    rig.tick();
    EXPECT_EQ(state(), UpState::TryPort);
    // The port of this attempt closes, and the next attempt finds the device.
    EXPECT_EQ(rig.ports.bench.openPort, 0);
    // The index moved past the only port: the wrap takes an attempt, and the
    // one after finds the device.
    EXPECT_EQ(rig.ticksUntil(UpState::AskSerial), 14);
    EXPECT_EQ(uploadGlobals().DeviceType, "KVX");
}

TEST_F(StateMachineTest, TwoByteReplyIsNotEnough)
{
    useKvx(0);
    tamper = [](const QByteArray& command, int before, const QByteArray& reply) {
        return command.at(2) == char(IdentifyCode) && before == 0 ? QByteArray("GP") : reply;
    };
    open();
    EXPECT_EQ(rig.ticksUntil(UpState::CheckPortReply), 6);
    rig.tick();
    EXPECT_EQ(state(), UpState::CheckPortReply);
    EXPECT_EQ(serialCom().IsDataReceived(), False16);
    rig.tick();
    EXPECT_EQ(state(), UpState::TryPort);
    EXPECT_EQ(uploadGlobals().DeviceConnected, False16);
}

TEST_F(StateMachineTest, LoneByteReplyIsFilteredOut)
{
    useKvx(0);
    tamper = [](const QByteArray& command, int, const QByteArray& reply) {
        return command.at(2) == char(IdentifyCode) ? QByteArray("G") : reply;
    };
    open();
    EXPECT_EQ(rig.ticksUntil(UpState::TryPort), 7);
    EXPECT_EQ(uploadGlobals().DeviceConnected, False16);
}

TEST_F(StateMachineTest, UnknownReplyCodeConnectsWithoutNamingTheDevice)
{
    useKvx(0);
    tamper = [](const QByteArray& command, int, const QByteArray& reply) {
        return command.at(2) == char(IdentifyCode) ? QByteArray("GPz!") : reply;
    };
    uploadGlobals().DeviceType = QStringLiteral("ZBL"); // from an earlier device
    open();
    EXPECT_EQ(rig.ticksUntil(UpState::AskSerial), 7);
    EXPECT_EQ(uploadGlobals().DeviceType, "ZBL");
    EXPECT_EQ(uploadGlobals().DeviceConnected, True16);
}

TEST_F(StateMachineTest, NoiseWaitingInThePortIsDrainedAndFiltered)
{
    useKvx(0);
    rig.ports.bench.pending = QByteArray("\xFF\x00\x13\x11", 4);
    open();
    EXPECT_EQ(rig.ticksUntil(UpState::AskSerial), 7);
    EXPECT_GE(rig.yields, 1);
    EXPECT_EQ(uploadGlobals().DeviceType, "KVX");
}

TEST_F(StateMachineTest, NoiseStoredBeforeTheReplySpoilsThatAttempt)
{
    useKvx(0);
    // Two bytes that don't start with 0xFF pass the probe's filter and stand
    // before the reply, so the reply is not recognised.
    rig.ports.bench.pending = QByteArray("AB");
    open();
    EXPECT_EQ(rig.ticksUntil(UpState::CheckPortReply), 6);
    rig.tick();
    EXPECT_EQ(state(), UpState::CheckPortReply);
    rig.tick();
    EXPECT_EQ(state(), UpState::TryPort);
    EXPECT_EQ(rig.ticksUntil(UpState::AskSerial), 14); // the wrap, then the port again
}

// ---------------------------------------------------------- serial number

TEST_F(StateMachineTest, KvxSerialSetsTheWaitsAndEnablesGetFiles)
{
    useKvx(1);
    open();
    runTo(UpState::AskSerial);
    UploadGlobals& g = uploadGlobals();
    g.HeaderMinSize = 1;
    g.WaitDataTimeKvx = 9;
    g.WaitHeaderTimeKvx = 4;

    rig.tick();
    EXPECT_EQ(state(), UpState::WaitSerial);
    EXPECT_EQ(g.PrintMessageText, T(UploadKeys::DeviceSerialNumber));
    EXPECT_EQ(commandLog().back(), "204");

    rig.tick();
    rig.tick();
    EXPECT_EQ(state(), UpState::WaitSerial);
    rig.tick();
    EXPECT_EQ(state(), UpState::Idle);
    EXPECT_EQ(g.DeviceSerial, "KVX0042");
    EXPECT_EQ(g.DeviceSerialText, "KVX0042");
    EXPECT_EQ(g.HeaderMinSize, 960);
    EXPECT_EQ(g.WaitDataTimeKvx, 15);
    EXPECT_EQ(g.WaitHeaderTimeKvx, 2);
    EXPECT_EQ(g.PrintMessageText, T(UploadKeys::Connect) + " " + typeText("KVX"));
    EXPECT_TRUE(uploadDeviceForm().cmdGetFilesEnabled);
    EXPECT_EQ(commBuffer().GetNumberOfNewByteInCircularBuffer().toNumber(), 0);
}

TEST_F(StateMachineTest, ZblSerialSetsTheWaits)
{
    useZbl(1);
    open();
    runTo(UpState::AskSerial);
    UploadGlobals& g = uploadGlobals();
    g.WaitDataTimeZbl = 9;
    g.WaitHeaderTimeZbl = 4;
    runTo(UpState::Idle);
    EXPECT_EQ(g.DeviceSerial, "#1207345");
    EXPECT_EQ(g.HeaderMinSize, 50);
    EXPECT_EQ(g.WaitDataTimeZbl, 5);
    EXPECT_EQ(g.WaitHeaderTimeZbl, 2);
    EXPECT_EQ(g.PrintMessageText, T(UploadKeys::Connect) + " " + typeText("ZBL"));
}

TEST_F(StateMachineTest, ShortSerialReplySkipsToTheEndWithTheCorruptionText)
{
    // Before any file was asked for, state 99 counts one file dealt with; no
    // file count is known, so the upload ends at once.
    useKvx(2);
    tamper = [](const QByteArray& command, int, const QByteArray& reply) {
        return command.at(2) == char(SerialCode) ? reply.left(9) : reply;
    };
    open();
    runTo(UpState::WaitSerial);
    EXPECT_EQ(ticksIn(UpState::WaitSerial), 3);
    EXPECT_EQ(state(), UpState::SkipFile);
    EXPECT_EQ(ticksIn(UpState::SkipFile), 6);
    EXPECT_EQ(uploadGlobals().CurrentFile, 1);
    EXPECT_EQ(state(), UpState::NextFile);
    rig.tick();
    EXPECT_EQ(state(), UpState::EndUpload);
    runTo(UpState::Idle);
    EXPECT_EQ(shownTexts(), QStringList{corruptionMessage(0, 1)});
    EXPECT_FALSE(uploadDeviceForm().timerEnabled);
}

TEST_F(StateMachineTest, SerialReplyWithAnotherHeadWaitsAgainThenSkips)
{
    useKvx(0);
    tamper = [](const QByteArray& command, int, const QByteArray& reply) {
        return command.at(2) == char(SerialCode) ? QByteArray("GPq-0123456789") : reply;
    };
    open();
    runTo(UpState::WaitSerial);
    EXPECT_EQ(ticksIn(UpState::WaitSerial), 6); // two reads: the second finds nothing
    EXPECT_EQ(state(), UpState::SkipFile);
    EXPECT_TRUE(uploadGlobals().DeviceSerial.isEmpty());
}

// -------------------------------------------------------------- file count

TEST_F(StateMachineTest, FileCountStartsTheFileLoop)
{
    useKvx(3);
    startUpload();
    EXPECT_EQ(state(), UpState::AskFileCount);
    EXPECT_EQ(uploadGlobals().PrintMessageText, T(UploadKeys::GetNumberOfFiles));
    rig.tick();
    EXPECT_EQ(state(), UpState::WaitFileCount);
    EXPECT_EQ(commandLog().back(), "210");
    EXPECT_EQ(ticksIn(UpState::WaitFileCount), 3);
    UploadGlobals& g = uploadGlobals();
    EXPECT_EQ(state(), UpState::NextFile);
    EXPECT_EQ(g.NbFilesOnDevice, 3);
    EXPECT_EQ(g.CurrentFile, 0);
    EXPECT_EQ(g.PrintMessageText, "3 " + T(UploadKeys::FileOnDevice));
}

TEST_F(StateMachineTest, NoFilesEndsAtOnceWithoutTheCorruptionText)
{
    useKvx(0);
    int hidden = 0;
    rig.view.onHideWindow = [&] { ++hidden; };
    startUpload();
    hidden = 0;
    // 7, three ticks of 8, 9, then twenty-two ticks of 15.
    EXPECT_EQ(rig.ticksUntil(UpState::Idle), 1 + 3 + 1 + 22);
    EXPECT_EQ(shownTexts(), QStringList{endMessage(0, 0)});
    EXPECT_EQ(hidden, 1);
    EXPECT_FALSE(uploadDeviceForm().shown);
    EXPECT_FALSE(uploadDeviceForm().timerEnabled);
    EXPECT_EQ(rig.ports.bench.openPort, 0);
}

TEST_F(StateMachineTest, FileCountWithABadCheckCountsNoFiles)
{
    useKvx(2);
    tamper = [](const QByteArray& command, int, const QByteArray& reply) {
        return command.at(2) == char(CountCode) ? spoiled(reply) : reply;
    };
    startUpload();
    runTo(UpState::NextFile);
    EXPECT_EQ(uploadGlobals().NbFilesOnDevice, 0);
    runTo(UpState::Idle);
    EXPECT_EQ(shownTexts(), QStringList{endMessage(0, 0)});
}

TEST_F(StateMachineTest, FileCountWithAnotherHeadWaitsAgainThenSkips)
{
    useKvx(2);
    tamper = [](const QByteArray& command, int, const QByteArray& reply) {
        return command.at(2) == char(CountCode) ? QByteArray("GPx\x02\x62") : reply;
    };
    startUpload();
    rig.tick();
    EXPECT_EQ(ticksIn(UpState::WaitFileCount), 6);
    EXPECT_EQ(state(), UpState::SkipFile);
}

TEST_F(StateMachineTest, ShortFileCountReplyCarriesOnFromAnEarlierCount)
{
    // An earlier upload of three files was stopped after the first: the
    // count of 3 stays, so the skip of state 99 asks for the third file.
    useKvx(3);
    startUpload();
    runTo(UpState::WaitData);
    cmdStop_Click();
    runTo(UpState::StopByUser);
    runTo(UpState::Idle);
    ASSERT_EQ(uploadGlobals().CurrentFile, 1);

    tamper = [](const QByteArray& command, int, const QByteArray& reply) {
        return command.at(2) == char(CountCode) ? QByteArray("GP") : reply;
    };
    cmdGetFiles_Click();
    runTo(UpState::SkipFile);
    runTo(UpState::NextFile);
    EXPECT_EQ(uploadGlobals().CurrentFile, 2);
    runTo(UpState::WaitHeader);
    EXPECT_EQ(commandLog().back(), "211/2");
}

// ------------------------------------------------------------- main paths

TEST_F(StateMachineTest, KvxMainPathWritesEveryFile)
{
    useKvx(2);
    int hidden = 0;
    rig.view.onHideWindow = [&] { ++hidden; };
    startUpload();
    hidden = 0;
    runTo(UpState::Idle);

    EXPECT_EQ(commandLog(), (QStringList{"201", "204", "210", "211/0", "212/0", "211/1", "212/1"}));
    UploadGlobals& g = uploadGlobals();
    EXPECT_EQ(g.NbFilesSucces, 2);
    EXPECT_EQ(g.NbFilesFail, 0);
    EXPECT_EQ(g.CurrentFile, 2);
    EXPECT_EQ(g.UploadFolderStamp, DefaultStamp);

    for (int n = 1; n <= 2; ++n) {
        const QString path = kvxFilePath(QStringLiteral("%1-CT-%1.txt").arg(n));
        ASSERT_TRUE(exists(path)) << path.toStdString();
        const QByteArray content = readBytes(path);
        EXPECT_TRUE(content.contains(QStringLiteral("CT-%1").arg(n).toLatin1()));
        EXPECT_TRUE(content.contains("Acme Power"));
        EXPECT_TRUE(content.contains("KVX0042"));
    }

    ASSERT_EQ(rig.scripted.messages.shown.size(), 1u);
    const ShownMessage& box = rig.scripted.messages.shown.front();
    EXPECT_EQ(box.text, endMessage(2, 2));
    EXPECT_EQ(box.buttons, MsgButtons::Ok);
    EXPECT_TRUE(box.title.isEmpty());

    const UploadDeviceForm& form = uploadDeviceForm();
    EXPECT_EQ(g.PrintMessageText, T(UploadKeys::Ready) + " " + typeText("KVX"));
    EXPECT_EQ(g.DeviceStatusText, T(UploadKeys::StatusReady));
    EXPECT_TRUE(form.cmdGetFilesEnabled);
    EXPECT_FALSE(form.cmdStopEnabled);
    EXPECT_FALSE(form.timerEnabled);
    EXPECT_FALSE(form.lbTransfertPurcentVisible);
    EXPECT_FALSE(form.pbTransfertFilesVisible);
    EXPECT_EQ(form.lbTransfertPurcent, "100%");
    EXPECT_EQ(form.lbFilestransfert, "1/2");
    EXPECT_EQ(hidden, 1);
    EXPECT_EQ(rig.ports.bench.openPort, 0);
}

TEST_F(StateMachineTest, AShortDataPayloadKeepsTheSlotBytesOfTheFrameBefore)
{
    // The slot table lives from one data frame to the next: a payload that
    // stops short leaves the rest of its slot as the frame before left it.
    useKvx(2);
    instrument.kvxFiles[0].tests[0].tap = QStringLiteral("X1-X3");
    instrument.kvxFiles[1].tests[0].tap = QStringLiteral("X2-X4");
    tamper = [](const QByteArray& command, int, const QByteArray& reply) {
        const bool secondData = command.at(2) == char(DataCode) && command.at(3) == 1;
        return secondData ? sim::framedReply(0x6C, reply.mid(5, 100)) : reply;
    };
    startUpload();
    runTo(UpState::Idle);
    ASSERT_EQ(uploadGlobals().NbFilesSucces, 2);
    const QByteArray second = readBytes(kvxFilePath(QStringLiteral("2-CT-2.txt")));
    EXPECT_TRUE(second.contains("X1-X3"));
    EXPECT_FALSE(second.contains("X2-X4"));
    EXPECT_EQ(uploadSession().kvxHeader.Serial, "CT-2");
}

TEST_F(StateMachineTest, ZblMainPathWritesEveryFile)
{
    useZbl(2);
    startUpload();
    runTo(UpState::Idle);

    EXPECT_EQ(commandLog(), (QStringList{"201", "204", "210", "211/0", "212/0", "211/1", "212/1"}));
    for (int n = 1; n <= 2; ++n) {
        const QString path = zblFilePath(QStringLiteral("%1-%2.zbl").arg(n).arg(10 + n));
        ASSERT_TRUE(exists(path)) << path.toStdString();
        const QByteArray content = readBytes(path);
        EXPECT_TRUE(content.contains(QStringLiteral("TR-%1").arg(n).toLatin1()));
        EXPECT_TRUE(content.contains("Acme Power"));
    }
    EXPECT_EQ(shownTexts(), QStringList{endMessage(2, 2)});
    EXPECT_EQ(uploadGlobals().PrintMessageText, T(UploadKeys::Ready) + " " + typeText("ZBL"));
}

TEST_F(StateMachineTest, KvxFileTakesItsTicksStateByState)
{
    useKvx(1);
    startUpload();
    runTo(UpState::NextFile);
    UploadGlobals& g = uploadGlobals();

    rig.tick();
    EXPECT_EQ(state(), UpState::AskHeader);
    EXPECT_EQ(g.FilesTransfertText, "0/1");
    EXPECT_TRUE(uploadDeviceForm().lbFilestransfertVisible);
    EXPECT_EQ(g.WaitHeaderTime, 2);
    EXPECT_EQ(g.WaitDataTime, 15);

    rig.tick();
    EXPECT_EQ(state(), UpState::WaitHeader);
    EXPECT_EQ(g.PrintMessageText, T(UploadKeys::UploadInProgress) + " " + typeText("KVX"));
    EXPECT_EQ(g.DeviceStatusText, T(UploadKeys::UploadInProgress));

    EXPECT_EQ(ticksIn(UpState::WaitHeader), 2 + 2);
    EXPECT_EQ(state(), UpState::AskData);
    EXPECT_EQ(g.ByteArrayHeaderRx.size(), 960);
    EXPECT_EQ(ticksIn(UpState::AskData), 1);
    EXPECT_EQ(state(), UpState::WaitData);
    EXPECT_EQ(ticksIn(UpState::WaitData), 15 + 2);
    EXPECT_EQ(state(), UpState::SaveFile);
    EXPECT_EQ(g.NbFilesSucces, 1);
    EXPECT_EQ(g.CurrentFile, 1);
    EXPECT_EQ(ticksIn(UpState::SaveFile), 1);
    EXPECT_EQ(state(), UpState::NextFile);
    rig.tick();
    EXPECT_EQ(state(), UpState::EndUpload);
}

TEST_F(StateMachineTest, EndOfUploadShowsItsTextForTwentyTwoTicks)
{
    useKvx(0);
    startUpload();
    runTo(UpState::EndUpload);
    const QString busy = T(UploadKeys::FilesUploadSucces) + " " + typeText("KVX");
    for (int i = 1; i <= 21; ++i) {
        rig.tick();
        ASSERT_EQ(state(), UpState::EndUpload) << "tick " << i;
        EXPECT_EQ(uploadGlobals().PrintMessageText, busy);
        EXPECT_TRUE(rig.scripted.messages.shown.empty());
    }
    rig.tick();
    EXPECT_EQ(state(), UpState::Idle);
    EXPECT_EQ(rig.scripted.messages.shown.size(), 1u);
}

TEST_F(StateMachineTest, AdviceKeyMissingFromTheLanguageShowsTheKey)
{
    useKvx(1);
    rig.writeLanguage(false);
    tamper = [](const QByteArray& command, int, const QByteArray& reply) {
        return command.at(2) == char(HeaderCode) ? QByteArray() : reply;
    };
    startUpload();
    runTo(UpState::Idle, 20000);
    ASSERT_EQ(rig.scripted.messages.shown.size(), 1u);
    EXPECT_EQ(rig.scripted.messages.shown.front().text, endMessage(0, 1) + "\r\n" +
                                                            T(UploadKeys::ErrorCorruption) +
                                                            "\r\nfrmUploadDevice.msgBox.");
}

// --------------------------------------------------------- header failures

TEST_F(StateMachineTest, HeaderNeverArrivingIsWaitedForFortyTimesThenSkipped)
{
    // An instrument unplugged after the count: every file is skipped in turn.
    useKvx(2);
    tamper = [](const QByteArray& command, int, const QByteArray& reply) {
        return command.at(2) == char(HeaderCode) ? QByteArray() : reply;
    };
    startUpload();
    runTo(UpState::WaitHeader);
    UploadGlobals& g = uploadGlobals();

    for (int retry = 1; retry <= 40; ++retry) {
        for (int i = 0; i < 4; ++i)
            rig.tick();
        ASSERT_EQ(state(), UpState::WaitHeader);
        ASSERT_EQ(g.HeaderRetry(), retry);
    }
    for (int i = 0; i < 3; ++i)
        rig.tick();
    EXPECT_EQ(state(), UpState::WaitHeader);
    rig.tick();
    EXPECT_EQ(state(), UpState::SkipFile);
    EXPECT_EQ(g.HeaderRetry(), 0);

    EXPECT_EQ(ticksIn(UpState::SkipFile), 4 + 2);
    EXPECT_EQ(g.CurrentFile, 1);
    runTo(UpState::WaitHeader);
    EXPECT_EQ(commandLog().back(), "211/1");
    EXPECT_EQ(ticksIn(UpState::WaitHeader), 41 * 4);

    runTo(UpState::Idle);
    EXPECT_FALSE(commandLog().contains("212/0"));
    EXPECT_EQ(g.NbFilesSucces, 0);
    EXPECT_EQ(g.CurrentFile, 2);
    EXPECT_EQ(shownTexts(), QStringList{corruptionMessage(0, 2)});
}

TEST_F(StateMachineTest, HeaderWithAnotherHeadIsDroppedAndWaitedForAgain)
{
    useZbl(1);
    tamper = [](const QByteArray& command, int before, const QByteArray& reply) {
        if (command.at(2) != char(HeaderCode) || before > 0)
            return reply;
        QByteArray other = reply;
        other[2] = 0x6C;
        return other;
    };
    startUpload();
    runTo(UpState::WaitHeader);
    EXPECT_EQ(ticksIn(UpState::WaitHeader, 4), -1);
    EXPECT_EQ(state(), UpState::WaitHeader);
    EXPECT_EQ(uploadGlobals().HeaderRetry(), 0);
    // The bytes are gone.
    EXPECT_EQ(commBuffer().GetNumberOfNewByteInCircularBuffer().toNumber(), 0);
    // Nothing more comes: the next checks count retries.
    for (int i = 0; i < 4; ++i)
        rig.tick();
    EXPECT_EQ(uploadGlobals().HeaderRetry(), 1);
}

TEST_F(StateMachineTest, ZblHeaderWithBadChecksGrowsItsWaitToFive)
{
    useZbl(1);
    tamper = [](const QByteArray& command, int before, const QByteArray& reply) {
        return command.at(2) == char(HeaderCode) && before < 5 ? spoiled(reply) : reply;
    };
    startUpload();
    UploadGlobals& g = uploadGlobals();
    const std::vector<Int16> waits{3, 4, 5, 5, 5};
    for (Int16 expected : waits) {
        runTo(UpState::WaitHeader);
        const int wait = g.WaitHeaderTime;
        ASSERT_EQ(ticksIn(UpState::WaitHeader), wait + 2);
        ASSERT_EQ(state(), UpState::NextFile);
        EXPECT_EQ(g.WaitHeaderTimeZbl, expected);
    }
    runTo(UpState::Idle);
    EXPECT_EQ(g.WaitHeaderTimeZbl, 5);
    EXPECT_EQ(g.NbFilesFail, 0); // only data frames count as failures
    EXPECT_EQ(shownTexts(), QStringList{endMessage(1, 1)});
    EXPECT_TRUE(exists(zblFilePath("1-11.zbl")));
}

TEST_F(StateMachineTest, KvxHeaderWithBadChecksGrowsItsWaitToFive)
{
    useKvx(1);
    tamper = [](const QByteArray& command, int before, const QByteArray& reply) {
        return command.at(2) == char(HeaderCode) && before < 4 ? reply + QByteArray(1, '\0')
                                                               : reply;
    };
    startUpload();
    runTo(UpState::Idle);
    EXPECT_EQ(uploadGlobals().WaitHeaderTimeKvx, 5);
    EXPECT_EQ(received[HeaderCode], 5);
    EXPECT_EQ(shownTexts(), QStringList{endMessage(1, 1)});
}

// ----------------------------------------------------------- data failures

TEST_F(StateMachineTest, DataFrameCutShortIsWaitedForThirtyTimesThenSkipped)
{
    useKvx(1);
    tamper = [](const QByteArray& command, int, const QByteArray& reply) {
        return command.at(2) == char(DataCode) ? reply.left(reply.size() / 2) : reply;
    };
    startUpload();
    runTo(UpState::WaitData);
    UploadGlobals& g = uploadGlobals();

    EXPECT_EQ(ticksIn(UpState::WaitData, 17), -1);
    EXPECT_EQ(g.DataRetry(), 1);
    EXPECT_EQ(g.WaitDataTime, 1);
    for (int retry = 2; retry <= 30; ++retry) {
        for (int i = 0; i < 3; ++i)
            rig.tick();
        ASSERT_EQ(state(), UpState::WaitData);
        ASSERT_EQ(g.DataRetry(), retry);
    }
    EXPECT_EQ(ticksIn(UpState::WaitData), 3);
    EXPECT_EQ(state(), UpState::SkipFile);
    EXPECT_EQ(g.DataRetry(), 0);
    EXPECT_EQ(g.WaitDataTime, 1); // until state 9 sets it again

    runTo(UpState::Idle);
    EXPECT_EQ(g.NbFilesSucces, 0);
    EXPECT_EQ(g.NbFilesFail, 0);
    EXPECT_EQ(shownTexts(), QStringList{corruptionMessage(0, 1)});
    EXPECT_FALSE(exists(kvxFilePath("1-CT-1.txt")));
}

TEST_F(StateMachineTest, ShortWaitOfACutFrameLastsUntilTheNextFile)
{
    useKvx(2);
    tamper = [](const QByteArray& command, int before, const QByteArray& reply) {
        return command.at(2) == char(DataCode) && before == 0 ? reply.left(20) : reply;
    };
    startUpload();
    runTo(UpState::SkipFile);
    EXPECT_EQ(uploadGlobals().WaitDataTime, 1);
    runTo(UpState::AskHeader);
    EXPECT_EQ(uploadGlobals().WaitDataTime, 15);
    runTo(UpState::WaitData);
    EXPECT_EQ(ticksIn(UpState::WaitData), 15 + 2);
    runTo(UpState::Idle);
    EXPECT_EQ(shownTexts(), QStringList{corruptionMessage(1, 2)});
    EXPECT_FALSE(exists(kvxFilePath("1-CT-1.txt")));
    EXPECT_TRUE(exists(kvxFilePath("2-CT-2.txt")));
}

TEST_F(StateMachineTest, CutFrameCompletedDuringTheRetriesIsTaken)
{
    useKvx(1);
    QByteArray rest;
    tamper = [&rest](const QByteArray& command, int, const QByteArray& reply) {
        if (command.at(2) != char(DataCode))
            return reply;
        rest = reply.mid(100);
        return reply.left(100);
    };
    startUpload();
    runTo(UpState::WaitData);
    EXPECT_EQ(ticksIn(UpState::WaitData, 17), -1);
    ASSERT_EQ(uploadGlobals().DataRetry(), 1);
    rig.ports.deliver(rest);
    EXPECT_EQ(ticksIn(UpState::WaitData), 3);
    EXPECT_EQ(state(), UpState::SaveFile);
    EXPECT_EQ(uploadGlobals().DataRetry(), 0);
}

TEST_F(StateMachineTest, KvxDataWithBadChecksShortensTheWaitToTen)
{
    // The limit of 10 is below the start value of 15: the first failure
    // brings the wait down.
    useKvx(1);
    tamper = [](const QByteArray& command, int before, const QByteArray& reply) {
        return command.at(2) == char(DataCode) && before < 3 ? spoiled(reply) : reply;
    };
    startUpload();
    UploadGlobals& g = uploadGlobals();
    const std::vector<int> firstChecks{15 + 2, 10 + 2, 10 + 2, 10 + 2};
    for (std::size_t attempt = 0; attempt < firstChecks.size(); ++attempt) {
        runTo(UpState::WaitData);
        EXPECT_EQ(ticksIn(UpState::WaitData), firstChecks[attempt]) << "attempt " << attempt;
        if (attempt < 3) {
            EXPECT_EQ(state(), UpState::NextFile);
            EXPECT_EQ(g.WaitDataTimeKvx, 10);
            EXPECT_EQ(g.NbFilesFail, static_cast<Int16>(attempt + 1));
            EXPECT_EQ(g.CurrentFile, 0);
        }
    }
    runTo(UpState::Idle);
    EXPECT_EQ(commandLog().mid(3), (QStringList{"211/0", "212/0", "211/0", "212/0", "211/0",
                                                "212/0", "211/0", "212/0"}));
    EXPECT_EQ(g.NbFilesSucces, 1);
    EXPECT_EQ(g.NbFilesFail, 3);
    EXPECT_EQ(uploadDeviceForm().lbFail, "3 Files");
    // A bad frame fetched again until it passes is no corruption.
    EXPECT_EQ(shownTexts(), QStringList{endMessage(1, 1)});
    EXPECT_TRUE(exists(kvxFilePath("1-CT-1.txt")));
}

TEST_F(StateMachineTest, ZblDataWithBadChecksGrowsTheWaitToTwentyFive)
{
    useZbl(1);
    const int failures = 23;
    tamper = [](const QByteArray& command, int before, const QByteArray& reply) {
        return command.at(2) == char(DataCode) && before < failures ? spoiled(reply) : reply;
    };
    startUpload();
    UploadGlobals& g = uploadGlobals();
    for (int k = 1; k <= failures; ++k) {
        runTo(UpState::WaitData);
        const int wait = g.WaitDataTime;
        ASSERT_EQ(ticksIn(UpState::WaitData), wait + 2);
        ASSERT_EQ(state(), UpState::NextFile);
        EXPECT_EQ(g.WaitDataTimeZbl, std::min(5 + k, 25)) << "failure " << k;
    }
    runTo(UpState::Idle);
    EXPECT_EQ(g.WaitDataTimeZbl, 25);
    EXPECT_EQ(g.NbFilesFail, failures);
    EXPECT_EQ(shownTexts(), QStringList{endMessage(1, 1)});
}

TEST_F(StateMachineTest, DataFrameWithTrailingBytesFailsItsCheck)
{
    useZbl(1);
    tamper = [](const QByteArray& command, int before, const QByteArray& reply) {
        return command.at(2) == char(DataCode) && before == 0 ? reply + "x" : reply;
    };
    startUpload();
    runTo(UpState::Idle);
    EXPECT_EQ(uploadGlobals().NbFilesFail, 1);
    EXPECT_EQ(uploadGlobals().NbFilesSucces, 1);
}

TEST_F(StateMachineTest, DataReplyThatNeverStartsHoldsTheLoopAndStopChangesNothing)
{
    useKvx(1);
    tamper = [](const QByteArray& command, int, const QByteArray& reply) {
        return command.at(2) == char(DataCode) ? QByteArray() : reply;
    };
    startUpload();
    runTo(UpState::WaitData);
    // The store is empty and its array still begins with the header frame.
    EXPECT_EQ(commBuffer().PeekDataBuffer(3), QByteArray("GP\x6B"));
    EXPECT_EQ(ticksIn(UpState::WaitData, 400), -1);
    cmdStop_Click();
    EXPECT_EQ(ticksIn(UpState::WaitData, 400), -1);
    EXPECT_EQ(uploadGlobals().StopRequested, True16);
    EXPECT_TRUE(rig.scripted.messages.shown.empty());
}

TEST_F(StateMachineTest, DataLengthBeyondSixteenBitsOverflows)
{
    useKvx(1);
    tamper = [](const QByteArray& command, int, const QByteArray& reply) {
        if (command.at(2) != char(DataCode))
            return reply;
        QByteArray frame = reply;
        frame[3] = static_cast<char>(0x80); // a length of 32768 and more
        return frame;
    };
    startUpload();
    runTo(UpState::WaitData);
    try {
        for (int i = 0; i < 17; ++i)
            rig.tick();
        FAIL() << "no failure";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::Overflow);
    }
}

// ------------------------------------------------------------------- stops

TEST_F(StateMachineTest, StopKeepsTheConnectionAndReturnsToIdle)
{
    useKvx(2);
    startUpload();
    runTo(UpState::WaitHeader);
    cmdStop_Click();
    EXPECT_EQ(ticksIn(UpState::WaitHeader), 4);
    EXPECT_EQ(state(), UpState::StopByUser);

    const QString stopping = T(UploadKeys::StopByUser) + " " + typeText("KVX");
    for (int i = 1; i <= 21; ++i) {
        rig.tick();
        ASSERT_EQ(state(), UpState::StopByUser) << "tick " << i;
        EXPECT_EQ(uploadGlobals().PrintMessageText, stopping);
    }
    rig.tick();
    UploadGlobals& g = uploadGlobals();
    const UploadDeviceForm& form = uploadDeviceForm();
    EXPECT_EQ(state(), UpState::Idle);
    EXPECT_EQ(g.StopRequested, False16);
    EXPECT_EQ(g.PrintMessageText, T(UploadKeys::Ready) + " " + typeText("KVX"));
    EXPECT_EQ(g.DeviceStatusText, T(UploadKeys::StatusReady));
    EXPECT_FALSE(form.lbTransfertPurcentVisible);
    EXPECT_TRUE(form.cmdGetFilesEnabled);
    EXPECT_FALSE(form.cmdStopEnabled);
    EXPECT_TRUE(form.timerEnabled);
    EXPECT_EQ(g.DeviceConnected, True16);
    EXPECT_EQ(rig.ports.bench.openPort, InstrumentPort);
    EXPECT_TRUE(rig.scripted.messages.shown.empty());

    // The operator asks again and the counters start from 0.
    cmdGetFiles_Click();
    runTo(UpState::Idle);
    EXPECT_EQ(shownTexts(), QStringList{endMessage(2, 2)});
}

TEST_F(StateMachineTest, StopDuringTheSearchIsNotLookedAt)
{
    useKvx(1);
    open();
    rig.tick();
    cmdStop_Click();
    runTo(UpState::Idle);
    EXPECT_EQ(uploadGlobals().StopRequested, True16);
    EXPECT_EQ(uploadGlobals().DeviceConnected, True16);
    EXPECT_EQ(commandLog(), (QStringList{"201", "204"}));
}

TEST_F(StateMachineTest, StopAskedInIdleTakesEffectAtTheHeaderRequest)
{
    useKvx(1);
    connectDevice();
    cmdStop_Click();
    for (int i = 0; i < 10; ++i)
        rig.tick();
    EXPECT_EQ(state(), UpState::Idle);
    cmdGetFiles_Click();
    std::vector<UpState> states;
    while (states.size() < 8 && state() != UpState::StopByUser) {
        rig.tick();
        if (states.empty() || states.back() != state())
            states.push_back(state());
    }
    EXPECT_EQ(states, (std::vector<UpState>{UpState::WaitFileCount, UpState::NextFile,
                                            UpState::AskHeader, UpState::StopByUser}));
}

TEST_F(StateMachineTest, StopWhileTheCountIsAwaitedIsSeenAtTheHeaderRequest)
{
    useKvx(1);
    startUpload();
    rig.tick();
    ASSERT_EQ(state(), UpState::WaitFileCount);
    cmdStop_Click();
    runTo(UpState::NextFile);
    rig.tick();
    EXPECT_EQ(state(), UpState::AskHeader);
    rig.tick();
    EXPECT_EQ(state(), UpState::StopByUser);
}

TEST_F(StateMachineTest, GetFilesDuringTheStopComesBackToTheStop)
{
    // The header asked for at the stop never comes, so no reply is in flight.
    useKvx(1);
    tamper = [](const QByteArray& command, int, const QByteArray& reply) {
        return command.at(2) == char(HeaderCode) ? QByteArray() : reply;
    };
    startUpload();
    runTo(UpState::AskHeader);
    cmdStop_Click();
    EXPECT_TRUE(uploadDeviceForm().cmdGetFilesEnabled); // at once
    rig.tick();
    ASSERT_EQ(state(), UpState::StopByUser);
    rig.tick();
    cmdGetFiles_Click();
    EXPECT_EQ(state(), UpState::AskFileCount);
    // The stop is still asked for, so the loop comes back to 98 at state 10.
    runTo(UpState::AskHeader);
    EXPECT_EQ(uploadGlobals().NbFilesOnDevice, 1);
    rig.tick();
    EXPECT_EQ(state(), UpState::StopByUser);
}

TEST_F(StateMachineTest, ReplyInFlightAtAStopMeetsTheNextFileCount)
{
    // The header asked for as the stop came arrives during state 98. Nothing
    // flushes before the next file count, so state 8 reads it with the count,
    // sees the head of a header, waits again and skips: the next upload
    // carries on from the file after.
    useKvx(2);
    startUpload();
    runTo(UpState::AskHeader);
    cmdStop_Click();
    rig.tick();
    ASSERT_EQ(state(), UpState::StopByUser);
    runTo(UpState::Idle);
    EXPECT_EQ(commBuffer().GetNumberOfNewByteInCircularBuffer().toNumber(), 960);

    cmdGetFiles_Click();
    rig.tick();
    EXPECT_EQ(ticksIn(UpState::WaitFileCount), 6);
    EXPECT_EQ(state(), UpState::SkipFile);
    runTo(UpState::Idle);
    EXPECT_EQ(commandLog().mid(3), (QStringList{"211/0", "210", "211/1", "212/1"}));
    EXPECT_EQ(shownTexts(), QStringList{corruptionMessage(1, 2)});
    EXPECT_FALSE(exists(kvxFilePath("1-CT-1.txt")));
    EXPECT_TRUE(exists(kvxFilePath("2-CT-2.txt")));
}

TEST_F(StateMachineTest, StopWhileTheHeaderIsAwaitedEndsAtTheCheck)
{
    useKvx(1);
    startUpload();
    runTo(UpState::WaitHeader);
    cmdStop_Click();
    EXPECT_EQ(ticksIn(UpState::WaitHeader), 4);
    EXPECT_EQ(state(), UpState::StopByUser);
    EXPECT_EQ(uploadGlobals().HeaderRetry(), 0);
}

TEST_F(StateMachineTest, StopWhileAMissingHeaderIsAwaitedStillCountsARetry)
{
    useKvx(1);
    tamper = [](const QByteArray& command, int, const QByteArray& reply) {
        return command.at(2) == char(HeaderCode) ? QByteArray() : reply;
    };
    startUpload();
    runTo(UpState::WaitHeader);
    for (int i = 0; i < 8; ++i)
        rig.tick();
    ASSERT_EQ(uploadGlobals().HeaderRetry(), 2);
    cmdStop_Click();
    EXPECT_EQ(ticksIn(UpState::WaitHeader), 4);
    EXPECT_EQ(state(), UpState::StopByUser);
    // Set to 0 by the stop, then counted once more on the way out: kept.
    EXPECT_EQ(uploadGlobals().HeaderRetry(), 1);
}

TEST_F(StateMachineTest, StopBeforeTheDataRequestSendsItAndStops)
{
    useKvx(1);
    startUpload();
    runTo(UpState::AskData);
    cmdStop_Click();
    rig.tick();
    EXPECT_EQ(state(), UpState::StopByUser);
    EXPECT_EQ(commandLog().back(), "212/0");
    // Flushed after the request: the store holds the data frame alone.
    EXPECT_EQ(commBuffer().GetNumberOfNewByteInCircularBuffer().toNumber(),
              sim::kvxDataFrame(instrument.kvxFiles[0]).size());
}

TEST_F(StateMachineTest, StopWhileTheDataIsAwaitedCountsTheFileButDoesNotSaveIt)
{
    useKvx(2);
    startUpload();
    runTo(UpState::WaitData);
    cmdStop_Click();
    EXPECT_EQ(ticksIn(UpState::WaitData), 17);
    UploadGlobals& g = uploadGlobals();
    EXPECT_EQ(state(), UpState::StopByUser);
    EXPECT_EQ(g.NbFilesSucces, 1);
    EXPECT_EQ(g.CurrentFile, 1);
    runTo(UpState::Idle);
    EXPECT_FALSE(exists(kvxFilePath("1-CT-1.txt")));
    EXPECT_TRUE(rig.scripted.messages.shown.empty());
}

TEST_F(StateMachineTest, StopWhileACutFrameIsAwaitedStillCountsARetry)
{
    useKvx(1);
    tamper = [](const QByteArray& command, int, const QByteArray& reply) {
        return command.at(2) == char(DataCode) ? reply.left(50) : reply;
    };
    startUpload();
    runTo(UpState::WaitData);
    EXPECT_EQ(ticksIn(UpState::WaitData, 20), -1);
    cmdStop_Click();
    EXPECT_EQ(ticksIn(UpState::WaitData), 3);
    EXPECT_EQ(state(), UpState::StopByUser);
    EXPECT_EQ(uploadGlobals().DataRetry(), 1);
    EXPECT_EQ(uploadGlobals().WaitDataTime, 1);
}

TEST_F(StateMachineTest, StopBeforeTheSaveStillSavesTheFile)
{
    useKvx(2);
    startUpload();
    runTo(UpState::SaveFile);
    cmdStop_Click();
    rig.tick();
    EXPECT_EQ(state(), UpState::StopByUser);
    EXPECT_TRUE(exists(kvxFilePath("1-CT-1.txt")));
    EXPECT_FALSE(exists(kvxFilePath("2-CT-2.txt")));
}

TEST_F(StateMachineTest, StopDuringASkipTakesEffectAfterIt)
{
    useKvx(2);
    tamper = [](const QByteArray& command, int, const QByteArray& reply) {
        return command.at(2) == char(HeaderCode) ? QByteArray() : reply;
    };
    startUpload();
    runTo(UpState::SkipFile, 20000);
    cmdStop_Click();
    EXPECT_EQ(ticksIn(UpState::SkipFile), 6);
    EXPECT_EQ(state(), UpState::StopByUser);
    EXPECT_EQ(uploadGlobals().CurrentFile, 1);
}

TEST_F(StateMachineTest, StopBeforeTheNextFileIsSeenAtTheHeaderRequest)
{
    useKvx(2);
    startUpload();
    runTo(UpState::SaveFile);
    rig.tick();
    ASSERT_EQ(state(), UpState::NextFile);
    cmdStop_Click();
    rig.tick();
    EXPECT_EQ(state(), UpState::AskHeader);
    rig.tick();
    EXPECT_EQ(state(), UpState::StopByUser);
    EXPECT_EQ(commandLog().back(), "211/1");
}

TEST_F(StateMachineTest, StopAtTheEndOfTheUploadIsLeftForLater)
{
    useKvx(1);
    startUpload();
    runTo(UpState::EndUpload);
    cmdStop_Click();
    runTo(UpState::Idle);
    EXPECT_EQ(shownTexts(), QStringList{endMessage(1, 1)});
    EXPECT_FALSE(uploadDeviceForm().timerEnabled);
    EXPECT_EQ(uploadGlobals().StopRequested, True16);
    EXPECT_TRUE(uploadDeviceForm().cmdGetFilesEnabled);
    EXPECT_FALSE(uploadDeviceForm().cmdStopEnabled);
}

// ------------------------------------------------------------------ rescan

TEST_F(StateMachineTest, RescanSearchesAgainAndFindsTheDevice)
{
    useKvx(1);
    connectDevice();
    rig.scripted.clock.times = {QDateTime(QDate(2015, 6, 1), QTime(8, 30, 0))};

    mnscan_Click();
    UploadGlobals& g = uploadGlobals();
    EXPECT_EQ(state(), UpState::TryPort);
    EXPECT_EQ(g.DeviceConnected, False16);
    EXPECT_EQ(g.UploadFolderStamp, "2015-06-01 08H30M00");
    EXPECT_FALSE(uploadDeviceForm().frDeviceVisible);

    // The index moved past the only port: the first attempt is the wrap, the
    // second finds the device again.
    EXPECT_EQ(rig.ticksUntil(UpState::AskSerial), 14);
    EXPECT_EQ(commandLog(), (QStringList{"201", "204", "201"}));
    EXPECT_EQ(g.DeviceConnected, True16);
    EXPECT_TRUE(uploadDeviceForm().frDeviceVisible);
    runTo(UpState::Idle);
    cmdGetFiles_Click();
    runTo(UpState::Idle);
    EXPECT_TRUE(exists(rig.kvxUploadFolder("2015-06-01 08H30M00") + pathSep() + "1-CT-1.txt"));
}

TEST_F(StateMachineTest, RescanDuringAWaitKeepsTheCounter)
{
    // The shared counter is not reset by a rescan: the next wait of state 3
    // ends sooner.
    instrumentPort = 0;
    open();
    for (int i = 0; i < 3; ++i)
        rig.tick();
    ASSERT_EQ(uploadGlobals().TickCount(), 2);
    mnscan_Click();
    rig.tick(); // the next attempt
    EXPECT_EQ(ticksIn(UpState::WaitPortReply), 3);
    EXPECT_EQ(state(), UpState::CheckPortReply);
}

} // namespace

// The port search without a screen: the port list answers from a script, the
// ports are scripted and refuse or open by number, and waiting bytes reach the
// link through the yield hook while it drains a freshly opened port.
#include "upload/model/PortDiscovery.h"
#include "shell/model/RuntimeError.h"
#include "tests/support/Failure.h"
#include "tests/upload/support/ScriptedSerialPort.h"
#include "upload/model/CCommBuffCirculaire.h"
#include "upload/model/CSerialCom.h"
#include "upload/model/UploadDeviceForm.h"
#include "upload/model/UploadGlobals.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

using namespace quenby;
using namespace quenby::testing;

namespace {

const QByteArray Identify("\x48\x50\xC9\xC9", 4);

PnpEntity device(const QString& caption, Int32 errorCode = 0, const QString& location = {})
{
    PnpEntity e;
    e.caption = caption;
    e.configManagerErrorCode = errorCode;
    e.location = location;
    return e;
}

// What one attempt of the search did, read from the calls the ports saw.
struct Attempt
{
    int tried = 0;         // the port number put before an open, 0 if none
    bool opened = false;   // that port is open afterwards
    bool identify = false; // the identify command was written
};

class PortDiscoveryTest : public ::testing::Test
{
protected:
    UploadRig rig;

    Attempt attempt()
    {
        ScriptedPortBench& bench = rig.ports.bench;
        const qsizetype calls = bench.calls.size();
        const std::size_t writes = bench.writes.size();
        TryNextPort();
        Attempt a;
        int number = 0;
        for (qsizetype i = calls; i < bench.calls.size(); ++i) {
            const QString& call = bench.calls.at(i);
            if (call.startsWith(QStringLiteral("CommPort=")))
                number = call.mid(9).toInt();
            if (call == QStringLiteral("PortOpen=true"))
                a.tried = number;
        }
        a.opened = a.tried != 0 && bench.openPort == a.tried;
        for (std::size_t i = writes; i < bench.writes.size(); ++i)
            if (bench.writes[i] == Identify)
                a.identify = true;
        return a;
    }

    static std::vector<Int16> portList(int count)
    {
        const auto& list = uploadGlobals().PortList;
        return {list.begin(), list.begin() + count};
    }
};

// ---------------------------------------------------------------- ScanComPorts

TEST_F(PortDiscoveryTest, CaptionsGiveNumberAndListText)
{
    rig.portList.devices = {device("Communications Port (COM1)"), device("Bluetooth Link (com12)")};

    EXPECT_EQ(ScanComPorts(), 2);
    EXPECT_EQ(portList(3), (std::vector<Int16>{1, 12, 0}));
    EXPECT_EQ(uploadDeviceForm().cbComItems, (QStringList{"COM1", "com12"}));
    EXPECT_EQ(uploadDeviceForm().cbComListIndex, 0);
    EXPECT_EQ(uploadGlobals().PortLocations[0], "COM1");
    EXPECT_EQ(uploadGlobals().PortLocations[1], "COM12");
}

TEST_F(PortDiscoveryTest, DevicesInTheOrderOfTheList)
{
    rig.portList.devices = {device("B (COM9)"), device("A (COM2)"), device("C (COM5)")};

    EXPECT_EQ(ScanComPorts(), 3);
    EXPECT_EQ(portList(3), (std::vector<Int16>{9, 2, 5}));
    EXPECT_EQ(uploadDeviceForm().cbComItems, (QStringList{"COM9", "COM2", "COM5"}));
}

TEST_F(PortDiscoveryTest, DeviceWithAnErrorCodeIsLeftOut)
{
    rig.portList.devices = {device("USB Serial Port (COM3)", 22), device("USB Serial Port (COM4)")};

    EXPECT_EQ(ScanComPorts(), 1);
    EXPECT_EQ(portList(2), (std::vector<Int16>{4, 0}));
    EXPECT_EQ(uploadDeviceForm().cbComItems, QStringList{"COM4"});
}

TEST_F(PortDiscoveryTest, EmptyAndNullCaptionsAndOtherDevicesAreLeftOut)
{
    PnpEntity null = device("Null Port (COM6)");
    null.captionNull = true;
    rig.portList.devices = {device(""), null, device("USB Mouse"), device("Com port COM7"),
                            device("Modem (COM8)")};

    EXPECT_EQ(ScanComPorts(), 1);
    EXPECT_EQ(portList(2), (std::vector<Int16>{8, 0}));
}

TEST_F(PortDiscoveryTest, Com17AndUpNeverEnterTheList)
{
    rig.portList.devices = {device("Port (COM17)"), device("Port (COM16)"),
                            device("Port (COM200)")};

    EXPECT_EQ(ScanComPorts(), 1);
    EXPECT_EQ(portList(2), (std::vector<Int16>{16, 0}));
    EXPECT_EQ(uploadDeviceForm().cbComItems, QStringList{"COM16"});
}

TEST_F(PortDiscoveryTest, NumberReadUpToTheFirstCharacterThatIsNoDigit)
{
    // The cut from p + 4 is as long as "COM" and what follows up to ")", so it
    // runs past the number; the parse stops at the first non-digit and skips
    // blanks; the list text runs from "C" to just before ")".
    rig.portList.devices = {device("Port (COM7a)"), device("Port (COM 5)"),
                            device("Odd (COM4 (x))"), device("Port (COM)")};

    EXPECT_EQ(ScanComPorts(), 4);
    EXPECT_EQ(portList(4), (std::vector<Int16>{7, 5, 4, 0}));
    EXPECT_EQ(uploadDeviceForm().cbComItems, (QStringList{"COM7a", "COM 5", "COM4 (x", "COM"}));
}

TEST_F(PortDiscoveryTest, FractionalNumberRoundsHalfToEven)
{
    rig.portList.devices = {device("Port (COM2.5)"), device("Port (COM3.5)")};

    EXPECT_EQ(ScanComPorts(), 2);
    EXPECT_EQ(portList(2), (std::vector<Int16>{2, 4}));
}

TEST_F(PortDiscoveryTest, NumberBeyondSixteenBitsOverflows)
{
    rig.portList.devices = {device("Port (COM70000)")};

    try {
        ScanComPorts();
        FAIL() << "no failure";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::Overflow);
    }
}

TEST_F(PortDiscoveryTest, CaptionWithoutClosingBracketFailsTheTextCut)
{
    rig.portList.devices = {device("Port (COM1)"), device("Broken (COM5")};

    try {
        ScanComPorts();
        FAIL() << "no failure";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::InvalidProcedureCall);
    }
}

TEST_F(PortDiscoveryTest, SeventeenPortsFitAndAnEighteenthFails)
{
    for (int i = 0; i < 17; ++i)
        rig.portList.devices.push_back(ScriptedPortList::com(i % 16 + 1));

    EXPECT_EQ(ScanComPorts(), 17);
    EXPECT_EQ(uploadGlobals().PortList[16], 1); // the seventeenth: COM1 again
    EXPECT_EQ(uploadDeviceForm().cbComItems.size(), 17);

    rig.portList.devices.push_back(ScriptedPortList::com(2));
    try {
        ScanComPorts();
        FAIL() << "no failure";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::SubscriptOutOfRange);
    }
    // The list text goes in before the number meets the bound.
    EXPECT_EQ(uploadDeviceForm().cbComItems.size(), 18);
}

TEST_F(PortDiscoveryTest, EachScanStartsFromAnEmptyList)
{
    rig.portList.devices = {device("A (COM1)"), device("B (COM2)"), device("C (COM3)")};
    ASSERT_EQ(ScanComPorts(), 3);

    rig.portList.devices = {device("B (COM2)")};
    EXPECT_EQ(ScanComPorts(), 1);
    EXPECT_EQ(portList(3), (std::vector<Int16>{2, 0, 0}));
    EXPECT_EQ(uploadDeviceForm().cbComItems, QStringList{"COM2"});
    EXPECT_EQ(uploadGlobals().PortLocations[1], "");
}

TEST_F(PortDiscoveryTest, NoPortsLeaveTheListEmptyAndNothingSelected)
{
    rig.portList.devices = {device("A (COM1)")};
    ASSERT_EQ(ScanComPorts(), 1);

    rig.portList.devices.clear();
    EXPECT_EQ(ScanComPorts(), 0);
    EXPECT_TRUE(uploadDeviceForm().cbComItems.isEmpty());
    EXPECT_EQ(uploadDeviceForm().cbComListIndex, -1);
    EXPECT_EQ(uploadGlobals().PortList[0], 0);
}

TEST_F(PortDiscoveryTest, WithoutAListServiceThereAreNoPorts)
{
    rig.portList.devices = {device("A (COM1)")};
    setPortListService(nullptr);

    EXPECT_EQ(portListService(), nullptr);
    EXPECT_EQ(ScanComPorts(), 0);
    EXPECT_TRUE(uploadDeviceForm().cbComItems.isEmpty());
    EXPECT_EQ(rig.portList.listings, 0);
    setPortListService(&rig.portList);
    EXPECT_EQ(portListService(), &rig.portList);
}

TEST_F(PortDiscoveryTest, ListingFailureEndsTheScan)
{
    rig.portList.failure = [] { raiseRuntimeError(err::InternalError, "listing"); };

    try {
        ScanComPorts();
        FAIL() << "no failure";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::InternalError);
    }
}

TEST_F(PortDiscoveryTest, ScanLetsTheWindowFollow)
{
    int mirrored = 0;
    QStringList seen;
    rig.view.onMirror = [&] {
        ++mirrored;
        seen = uploadDeviceForm().cbComItems;
    };
    rig.portList.devices = {device("A (COM1)")};

    ScanComPorts();
    EXPECT_GE(mirrored, 1);
    EXPECT_EQ(seen, QStringList{"COM1"});
}

TEST_F(PortDiscoveryTest, DeviceNamesAreNumberedByTheirPlace)
{
    rig.portList.portNaming = PortNaming::DeviceName;
    rig.portList.devices = {device("ttyUSB0", 0, "/dev/ttyUSB0"), device("ttyS0", 10, "/dev/ttyS0"),
                            device("", 0, "/dev/nameless"), device("ttyACM0", 0, "/dev/ttyACM0")};

    EXPECT_EQ(ScanComPorts(), 2);
    EXPECT_EQ(portList(3), (std::vector<Int16>{1, 2, 0}));
    EXPECT_EQ(uploadDeviceForm().cbComItems, (QStringList{"ttyUSB0", "ttyACM0"}));
    EXPECT_EQ(uploadDeviceForm().cbComListIndex, 0);
    EXPECT_EQ(portLocationForNumber(1), "/dev/ttyUSB0");
    EXPECT_EQ(portLocationForNumber(2), "/dev/ttyACM0");
    EXPECT_EQ(portLocationForNumber(3), "");
    EXPECT_EQ(portLocationForNumber(0), "");
    EXPECT_EQ(portLocationForNumber(18), "");
}

TEST_F(PortDiscoveryTest, DeviceNamesStopQuietlyAfterSeventeen)
{
    rig.portList.portNaming = PortNaming::DeviceName;
    for (int i = 0; i < 20; ++i)
        rig.portList.devices.push_back(
            device(QStringLiteral("tty%1").arg(i), 0, QStringLiteral("/dev/tty%1").arg(i)));

    EXPECT_EQ(ScanComPorts(), 17);
    EXPECT_EQ(uploadGlobals().PortList[16], 17);
    EXPECT_EQ(uploadDeviceForm().cbComItems.size(), 17);
    EXPECT_EQ(portLocationForNumber(17), "/dev/tty16");
}

TEST_F(PortDiscoveryTest, ComNumbersLocateTheirPortByName)
{
    rig.portList.devices = {device("A (COM7)")};
    ScanComPorts();
    EXPECT_EQ(portLocationForNumber(7), "COM7");
    EXPECT_EQ(portLocationForNumber(12), "COM12");
    setPortListService(nullptr);
    EXPECT_EQ(portLocationForNumber(3), "COM3");
    setPortListService(&rig.portList);
}

// ----------------------------------------------------------------- TryNextPort

TEST_F(PortDiscoveryTest, AttemptOpensTheNextPortAndSendsIdentify)
{
    rig.portList.devices = {ScriptedPortList::com(3)};
    uploadGlobals().PortProbeActive = False16;

    const Attempt a = attempt();
    EXPECT_EQ(a.tried, 3);
    EXPECT_TRUE(a.opened);
    EXPECT_TRUE(a.identify);
    EXPECT_EQ(uploadGlobals().PortProbeActive, True16);
    EXPECT_EQ(uploadGlobals().PortStatusText, "Port: 3");
    EXPECT_EQ(uploadGlobals().PortIndex, 1);
    EXPECT_EQ(rig.portList.listings, 1);
}

TEST_F(PortDiscoveryTest, EachAttemptBeginsWithAFreshPortObject)
{
    rig.portList.devices = {ScriptedPortList::com(3), ScriptedPortList::com(5)};
    attempt();
    const int made = rig.ports.bench.portsMade;
    const Attempt b = attempt();
    EXPECT_EQ(b.tried, 5);
    EXPECT_EQ(rig.ports.bench.portsMade, made + 1);
    // The port of the first attempt was closed on the way.
    EXPECT_TRUE(rig.ports.bench.calls.contains("PortOpen=false"));
}

TEST_F(PortDiscoveryTest, StatusNamesThePortWithoutALeadingBlank)
{
    rig.portList.devices = {ScriptedPortList::com(12)};
    attempt();
    EXPECT_EQ(uploadGlobals().PortStatusText, "Port: 12");
}

TEST_F(PortDiscoveryTest, ThreeSilentPortsAreTriedInTurnWithAWrap)
{
    rig.portList.devices = {ScriptedPortList::com(4), ScriptedPortList::com(9),
                            ScriptedPortList::com(2)};

    const std::vector<int> expectedPorts{4, 9, 2, 0, 4, 9, 2, 0, 4};
    const std::vector<Int16> expectedIndex{1, 2, 3, 0, 1, 2, 3, 0, 1};
    for (std::size_t i = 0; i < expectedPorts.size(); ++i) {
        const Attempt a = attempt();
        EXPECT_EQ(a.tried, expectedPorts[i]) << "attempt " << i + 1;
        EXPECT_EQ(a.identify, expectedPorts[i] != 0) << "attempt " << i + 1;
        EXPECT_EQ(uploadGlobals().PortIndex, expectedIndex[i]) << "attempt " << i + 1;
    }
}

TEST_F(PortDiscoveryTest, TheWrapOpensAndClosesNothing)
{
    rig.portList.devices = {ScriptedPortList::com(4)};
    attempt();
    const int made = rig.ports.bench.portsMade;
    const qsizetype calls = rig.ports.bench.calls.size();

    const Attempt wrap = attempt();
    EXPECT_EQ(wrap.tried, 0);
    EXPECT_FALSE(wrap.identify);
    EXPECT_EQ(rig.ports.bench.portsMade, made);
    EXPECT_EQ(rig.ports.bench.calls.size(), calls);
    EXPECT_EQ(rig.ports.bench.openPort, 4); // the last port stays open
    EXPECT_EQ(uploadGlobals().PortIndex, 0);
}

TEST_F(PortDiscoveryTest, WithoutPortsEachAttemptOnlyResetsTheIndex)
{
    for (int i = 0; i < 3; ++i) {
        const Attempt a = attempt();
        EXPECT_EQ(a.tried, 0);
        EXPECT_FALSE(a.identify);
        EXPECT_EQ(uploadGlobals().PortIndex, 0);
    }
    EXPECT_TRUE(rig.ports.bench.writes.empty());
    EXPECT_TRUE(uploadDeviceForm().cbComItems.isEmpty());
}

TEST_F(PortDiscoveryTest, PortRefusingToOpenCostsItsAttempt)
{
    rig.portList.devices = {ScriptedPortList::com(3), ScriptedPortList::com(5)};
    rig.ports.bench.refusedPorts = {5};
    attempt();
    ASSERT_EQ(uploadGlobals().PortStatusText, "Port: 3");

    const Attempt refused = attempt();
    EXPECT_EQ(refused.tried, 5);
    EXPECT_FALSE(refused.opened);
    EXPECT_FALSE(refused.identify);
    EXPECT_EQ(uploadGlobals().PortIndex, 2);
    EXPECT_EQ(uploadGlobals().PortProbeActive, False16);
    EXPECT_EQ(uploadGlobals().PortStatusText, "Port: 3"); // not touched

    EXPECT_EQ(attempt().tried, 0); // the wrap
    EXPECT_EQ(attempt().tried, 3);
}

TEST_F(PortDiscoveryTest, KeyPluggedInLaterIsSeenAtTheNextAttempt)
{
    EXPECT_EQ(attempt().tried, 0);
    rig.portList.devices = {ScriptedPortList::com(6)};
    const Attempt a = attempt();
    EXPECT_EQ(a.tried, 6);
    EXPECT_TRUE(a.identify);
}

TEST_F(PortDiscoveryTest, PortTakenAwaySkipsTheNextOneOnce)
{
    rig.portList.devices = {ScriptedPortList::com(3), ScriptedPortList::com(5),
                            ScriptedPortList::com(8)};
    EXPECT_EQ(attempt().tried, 3);

    // COM3 goes away: the list shifts under the kept index, and COM5 is
    // passed over this round.
    rig.portList.devices = {ScriptedPortList::com(5), ScriptedPortList::com(8)};
    EXPECT_EQ(attempt().tried, 8);
    EXPECT_EQ(attempt().tried, 0);
    EXPECT_EQ(attempt().tried, 5);
}

TEST_F(PortDiscoveryTest, PortIsDrainedBeforeIdentifyAndNoiseIsFiltered)
{
    rig.portList.devices = {ScriptedPortList::com(3)};
    // Noise waiting in the port: it begins with 0xFF, so the filter of the
    // probe drops it.
    rig.ports.bench.pending = QByteArray("\xFF\x10\x20", 3);
    std::size_t writesAtYield = 99;
    rig.onYield = [&] { writesAtYield = rig.ports.bench.writes.size(); };

    const Attempt a = attempt();
    EXPECT_GE(rig.yields, 1);
    EXPECT_EQ(writesAtYield, 0u); // drained before the identify went out
    EXPECT_TRUE(a.identify);
    EXPECT_TRUE(rig.ports.bench.pending.isEmpty());
    EXPECT_EQ(commBuffer().GetNumberOfNewByteInCircularBuffer().toNumber(), 0);
    EXPECT_EQ(serialCom().IsDataReceived(), False16);
}

TEST_F(PortDiscoveryTest, LoneByteDuringTheProbeIsDropped)
{
    rig.portList.devices = {ScriptedPortList::com(3)};
    rig.ports.bench.pending = QByteArray("\x47", 1);

    attempt();
    EXPECT_EQ(commBuffer().GetNumberOfNewByteInCircularBuffer().toNumber(), 0);
    EXPECT_EQ(serialCom().IsDataReceived(), False16);
}

TEST_F(PortDiscoveryTest, TwoBytesOfNoiseDuringTheProbeAreStored)
{
    rig.portList.devices = {ScriptedPortList::com(3)};
    rig.ports.bench.pending = QByteArray("AB");

    attempt();
    EXPECT_EQ(commBuffer().GetNumberOfNewByteInCircularBuffer().toNumber(), 2);
    EXPECT_EQ(serialCom().IsDataReceived(), True16);
}

TEST_F(PortDiscoveryTest, QuietPortIsNotWaitedOn)
{
    rig.portList.devices = {ScriptedPortList::com(3)};
    attempt();
    EXPECT_EQ(rig.yields, 0);
}

TEST_F(PortDiscoveryTest, IndexIsKeptAcrossScans)
{
    rig.portList.devices = {ScriptedPortList::com(3), ScriptedPortList::com(5)};
    attempt();
    ScanComPorts();
    ScanComPorts();
    EXPECT_EQ(uploadGlobals().PortIndex, 1);
    EXPECT_EQ(attempt().tried, 5);
}

} // namespace

// The serial link: the open sequence with its trace lines and property
// order, the receive filter and its two gates, the writes that answer true
// on failure, the renewal of the port object, and the trace text helpers.
#include "shell/model/RuntimeError.h"
#include "tests/upload/support/ScriptedSerialPort.h"
#include "upload/model/CCommBuffCirculaire.h"
#include "upload/model/CSerialCom.h"
#include "upload/model/UploadGlobals.h"
#include "upload/model/UploadSession.h"

#include <QLoggingCategory>
#include <QtGlobal>

#include <gtest/gtest.h>

using namespace quenby;
using namespace quenby::testing;

namespace {

QByteArray bytesOf(std::initializer_list<int> values)
{
    QByteArray bytes;
    for (int v : values)
        bytes.append(static_cast<char>(static_cast<unsigned char>(v)));
    return bytes;
}

const QStringList SetupCalls3 = {
    QStringLiteral("CommPort=3"),    QStringLiteral("Settings=115200,n,8,1"),
    QStringLiteral("InputMode=1"),   QStringLiteral("InputLen=0"),
    QStringLiteral("RThreshold=1"),  QStringLiteral("RTSEnable=true"),
    QStringLiteral("PortOpen=true"),
};

class serialLink : public ::testing::Test
{
protected:
    void SetUp() override
    {
        setDebugTraceSink([this](const QString& line) { traces << line; });
    }

    CSerialCom& link() { return quenby::serialCom(); }
    int stored() const
    {
        return static_cast<int>(commBuffer().GetNumberOfNewByteInCircularBuffer().toNumber());
    }
    // Opens port 3 and forgets what that logged.
    void openPort3()
    {
        ASSERT_EQ(link().OpenPort(3, 115200, False16), True16);
        ports.bench.calls.clear();
        traces.clear();
    }

    OwnedSession<UploadSession> session; // before the ports, which it outlives
    ScriptedPorts ports;
    QStringList traces;
};

} // namespace

TEST_F(serialLink, CreationMakesOnePortObjectAndSetsNothing)
{
    link();
    EXPECT_EQ(ports.bench.portsMade, 1);
    EXPECT_TRUE(ports.bench.calls.isEmpty());
    EXPECT_EQ(&link().SerialConnection(), ports.current());
    EXPECT_EQ(link().IsDataReceived(), False16);
}

TEST_F(serialLink, OpenPortPutsThePropertiesInOrderAndTracesEachStep)
{
    EXPECT_EQ(link().OpenPort(3, 115200, False16), True16);
    EXPECT_EQ(ports.bench.calls, SetupCalls3);
    const QStringList expected = {
        QStringLiteral("About to setup port  3\r\n"),
        QStringLiteral("About to open port  3\r\n"),
        QStringLiteral("Port status: False\r\n"),
        QStringLiteral("Port  3 ouvert\r\n"),
    };
    EXPECT_EQ(traces, expected);
    EXPECT_TRUE(link().SerialConnection().PortOpen());
    EXPECT_EQ(ports.bench.openPort, 3);
}

TEST_F(serialLink, OpenPortOnAnOpenPortClosesSetsUpAndReopens)
{
    openPort3();
    uploadGlobals().DeviceConnected = True16;
    ports.current()->receive(bytesOf({0x47}));
    ASSERT_EQ(link().IsDataReceived(), True16);

    EXPECT_EQ(link().OpenPort(3, 115200, False16), True16);
    QStringList calls = SetupCalls3;
    calls.prepend(QStringLiteral("PortOpen=false"));
    EXPECT_EQ(ports.bench.calls, calls);
    const QStringList expected = {
        QStringLiteral("Port  3 d\u00e9j\u00e0 ouvert\r\n"),
        QStringLiteral("About to setup port  3\r\n"),
        QStringLiteral("About to open port  3\r\n"),
        QStringLiteral("Port status: False\r\n"),
        QStringLiteral("Port  3 ouvert\r\n"),
    };
    EXPECT_EQ(traces, expected);
    // The received flag is cleared at the start of every open.
    EXPECT_EQ(link().IsDataReceived(), False16);
    EXPECT_EQ(ports.bench.portsMade, 1);
}

TEST_F(serialLink, BaudRateAndHandshakeArgumentsChangeNothing)
{
    ASSERT_EQ(link().OpenPort(3, 115200, False16), True16);
    const QStringList callsA = ports.bench.calls;
    const QStringList tracesA = traces;
    link().Disconnect();
    ports.bench.calls.clear();
    traces.clear();

    ASSERT_EQ(link().OpenPort(3, 9600, True16), True16);
    EXPECT_EQ(ports.bench.calls, callsA);
    EXPECT_EQ(traces, tracesA);
}

TEST_F(serialLink, APortThatCannotOpenAnswersFalseWithItsTraceLine)
{
    ports.bench.refusedPorts = {5};
    EXPECT_EQ(link().OpenPort(5, 115200, False16), False16);
    const QStringList expected = {
        QStringLiteral("About to setup port  5\r\n"),
        QStringLiteral("About to open port  5\r\n"),
        QStringLiteral("Port status: False\r\n"),
        QStringLiteral("Cannot open port  5\r\n"),
    };
    EXPECT_EQ(traces, expected);
    EXPECT_FALSE(link().SerialConnection().PortOpen());
    EXPECT_EQ(ports.bench.calls.back(), QStringLiteral("PortOpen=true"));
}

TEST_F(serialLink, TwoDigitPortNumbersKeepTheSignBlank)
{
    EXPECT_EQ(link().OpenPort(12, 115200, False16), True16);
    EXPECT_EQ(traces.front(), QStringLiteral("About to setup port  12\r\n"));
    EXPECT_EQ(traces.back(), QStringLiteral("Port  12 ouvert\r\n"));
}

TEST_F(serialLink, TheLinkWorksWhenNobodyListensToTheTraces)
{
    setDebugTraceSink({});
    EXPECT_EQ(link().OpenPort(4, 115200, False16), True16);
    EXPECT_EQ(ports.bench.openPort, 4);
}

#ifndef Q_OS_WIN
namespace {
QStringList loggedSerialLines;
void catchSerialLog(QtMsgType, const QMessageLogContext& context, const QString& message)
{
    if (QString::fromLatin1(context.category) == QLatin1String("quenby.serial"))
        loggedSerialLines << message;
}
} // namespace

TEST_F(serialLink, WithoutASinkTraceLinesGoToTheDebugLog)
{
    setDebugTraceSink({});
    QLoggingCategory::setFilterRules(QStringLiteral("quenby.serial.debug=true"));
    loggedSerialLines.clear();
    const QtMessageHandler previous = qInstallMessageHandler(catchSerialLog);
    traceDebugLine(QStringLiteral("Port  3 ouvert\r\n"));
    qInstallMessageHandler(previous);
    QLoggingCategory::setFilterRules(QString());
    EXPECT_EQ(loggedSerialLines, QStringList{QStringLiteral("Port  3 ouvert")});
}

TEST_F(serialLink, TheTraceIsQuietUnlessAskedFor)
{
    setDebugTraceSink({});
    QLoggingCategory::setFilterRules(QString());
    loggedSerialLines.clear();
    const QtMessageHandler previous = qInstallMessageHandler(catchSerialLog);
    traceDebugLine(QStringLiteral("Port  3 ouvert\r\n"));
    qInstallMessageHandler(previous);
    EXPECT_TRUE(loggedSerialLines.isEmpty()) << loggedSerialLines.join(u'|').toStdString();
}
#endif

TEST_F(serialLink, TheDefaultPortObjectNeverOpensAndItsWritesFail)
{
    setSerialPortFactory({});
    CSerialCom absent;
    EXPECT_EQ(absent.OpenPort(1, 115200, False16), False16);
    EXPECT_EQ(traces.back(), QStringLiteral("Cannot open port  1\r\n"));
    EXPECT_EQ(absent.SendCommandKVX(201), True16);
    EXPECT_EQ(absent.SendCommandByte(0x48), True16);
    EXPECT_EQ(absent.OutputByte(0x48), True16);
    EXPECT_EQ(absent.IshComBufferRxEmpty().toNumber(), static_cast<double>(True16));
    absent.Disconnect();
    EXPECT_FALSE(absent.SerialConnection().PortOpen());
    EXPECT_EQ(ports.bench.portsMade, 0);
}

// Writes.

TEST_F(serialLink, SendCommandKvxWritesTheFourByteCommandInOneWrite)
{
    openPort3();
    EXPECT_EQ(link().SendCommandKVX(201), False16);
    ASSERT_EQ(ports.bench.writes.size(), 1u);
    EXPECT_EQ(ports.bench.writes[0], bytesOf({0x48, 0x50, 0xC9, 0xC9}));
    EXPECT_EQ(ports.bench.calls, QStringList{QStringLiteral("Output=48 50 c9 c9")});
}

TEST_F(serialLink, SendCommandByteAndOutputByteWriteOneByte)
{
    openPort3();
    EXPECT_EQ(link().SendCommandByte(0xD3), False16);
    EXPECT_EQ(link().OutputByte(0x41), False16);
    ASSERT_EQ(ports.bench.writes.size(), 2u);
    EXPECT_EQ(ports.bench.writes[0], bytesOf({0xD3}));
    EXPECT_EQ(ports.bench.writes[1], bytesOf({0x41}));
}

TEST_F(serialLink, FailedWritesAnswerTrueAndRaiseNothing)
{
    openPort3();
    ports.bench.writesFail = true;
    EXPECT_EQ(link().SendCommandKVX(204), True16);
    EXPECT_EQ(link().SendCommandByte(0x50), True16);
    EXPECT_EQ(link().OutputByte(0x50), True16);
    EXPECT_TRUE(ports.bench.writes.empty());
    EXPECT_EQ(ports.bench.calls.size(), 3);
}

TEST_F(serialLink, WritesToAClosedPortAnswerTrue)
{
    EXPECT_EQ(link().SendCommandKVX(201), True16);
    EXPECT_EQ(link().SendCommandByte(0x48), True16);
    EXPECT_TRUE(ports.bench.writes.empty());
}

// The receive filter.

TEST_F(serialLink, WhileProbingALoneByteIsDroppedAndTheFlagStaysFalse)
{
    openPort3();
    uploadGlobals().PortProbeActive = True16;
    ports.current()->receive(bytesOf({0x47}));
    EXPECT_EQ(link().IsDataReceived(), False16);
    EXPECT_EQ(stored(), 0);
}

TEST_F(serialLink, WhileProbingTwoBytesStartingWith0xFEAreStored)
{
    openPort3();
    uploadGlobals().PortProbeActive = True16;
    ports.current()->receive(bytesOf({0xFE, 0x01}));
    EXPECT_EQ(link().IsDataReceived(), True16);
    EXPECT_EQ(stored(), 2);
    EXPECT_EQ(commBuffer().PeekDataBuffer(2), bytesOf({0xFE, 0x01}));
}

TEST_F(serialLink, WhileProbingBytesStartingWith0xFFAreDropped)
{
    openPort3();
    uploadGlobals().PortProbeActive = True16;
    ports.current()->receive(bytesOf({0xFF, 0x47, 0x50}));
    EXPECT_EQ(link().IsDataReceived(), False16);
    EXPECT_EQ(stored(), 0);
}

TEST_F(serialLink, WithADeviceConnectedALoneByteIsStored)
{
    openPort3();
    uploadGlobals().DeviceConnected = True16;
    ports.current()->receive(bytesOf({0xFF}));
    EXPECT_EQ(link().IsDataReceived(), True16);
    EXPECT_EQ(stored(), 1);
    EXPECT_EQ(commBuffer().PeekDataBuffer(1), bytesOf({0xFF}));
}

TEST_F(serialLink, WithNeitherGateBytesAreDroppedAndAnEarlierFlagStays)
{
    openPort3();
    uploadGlobals().DeviceConnected = True16;
    ports.current()->receive(bytesOf({0x01}));
    uploadGlobals().DeviceConnected = False16;
    ports.current()->receive(bytesOf({0x47, 0x50, 0x63}));
    EXPECT_EQ(link().IsDataReceived(), True16);
    EXPECT_EQ(stored(), 1);
}

TEST_F(serialLink, ArrivalsAppendOneAfterAnother)
{
    openPort3();
    uploadGlobals().DeviceConnected = True16;
    ports.current()->receive(bytesOf({0x47, 0x50}));
    ports.current()->receive(bytesOf({0x6A}));
    ports.current()->receive(bytesOf({0x02, 0x6C}));
    EXPECT_EQ(commBuffer().GetDataOnBuffer(5), bytesOf({0x47, 0x50, 0x6A, 0x02, 0x6C}));
}

TEST_F(serialLink, EventsOfAnotherKindAreIgnored)
{
    openPort3();
    uploadGlobals().DeviceConnected = True16;
    ports.current()->receive(bytesOf({0x47, 0x50}), 1001); // a break
    EXPECT_EQ(link().IsDataReceived(), False16);
    EXPECT_EQ(stored(), 0);
    // The bytes were not read: they wait in the port for the next event.
    ports.current()->receive(bytesOf({0x63}));
    EXPECT_EQ(commBuffer().GetDataOnBuffer(3), bytesOf({0x47, 0x50, 0x63}));
}

TEST_F(serialLink, FlushFlagDataReceivedClearsTheFlag)
{
    openPort3();
    uploadGlobals().DeviceConnected = True16;
    ports.current()->receive(bytesOf({0x01, 0x02}));
    ASSERT_EQ(link().IsDataReceived(), True16);
    link().FlushFlagDataReceived();
    EXPECT_EQ(link().IsDataReceived(), False16);
    EXPECT_EQ(stored(), 2);
}

TEST_F(serialLink, BufferEmptyAsksThePortsOwnCount)
{
    link();
    EXPECT_EQ(link().IshComBufferRxEmpty().toNumber(), static_cast<double>(True16));
    ports.bench.pending = bytesOf({0x01});
    EXPECT_EQ(link().IshComBufferRxEmpty().toNumber(), static_cast<double>(False16));
}

TEST_F(serialLink, DataBufferRxReadsTheStoreAsTraceText)
{
    commBuffer().PutDataOnBuffer(bytesOf({0x47, 0x50, 0x0D, 0x0A, 0x7F}));
    EXPECT_EQ(link().DataBufferRx(5), QStringLiteral("GP\\x0D\\x0A\\x7F"));
    EXPECT_EQ(commBuffer().getIndex(), 5);
}

// The port object's lifetime.

TEST_F(serialLink, DisconnectClosesAnOpenPortAndMakesAFreshObject)
{
    openPort3();
    ScriptedSerialPort* first = ports.current();
    link().Disconnect();
    EXPECT_EQ(ports.bench.calls, QStringList{QStringLiteral("PortOpen=false")});
    EXPECT_EQ(ports.bench.openPort, 0);
    EXPECT_EQ(ports.bench.portsMade, 2);
    EXPECT_NE(ports.current(), first);
    EXPECT_EQ(&link().SerialConnection(), ports.current());
}

TEST_F(serialLink, DisconnectFromClosedOnlyRenewsTheObject)
{
    link();
    link().Disconnect();
    EXPECT_TRUE(ports.bench.calls.isEmpty());
    EXPECT_EQ(ports.bench.portsMade, 2);
}

TEST_F(serialLink, TheFreshObjectDeliversToTheReceiveFilter)
{
    openPort3();
    link().Disconnect();
    ASSERT_EQ(link().OpenPort(4, 115200, False16), True16);
    uploadGlobals().PortProbeActive = True16;
    ports.current()->receive(bytesOf({0x47, 0x50, 0x64}));
    EXPECT_EQ(link().IsDataReceived(), True16);
    EXPECT_EQ(stored(), 3);
}

TEST_F(serialLink, TerminateClosesAnOpenPort)
{
    {
        CSerialCom own;
        ASSERT_EQ(own.OpenPort(7, 115200, False16), True16);
        ports.bench.calls.clear();
    }
    EXPECT_EQ(ports.bench.calls, QStringList{QStringLiteral("PortOpen=false")});
    EXPECT_EQ(ports.bench.openPort, 0);
}

TEST_F(serialLink, TerminateLeavesAClosedPortAlone)
{
    {
        CSerialCom own;
    }
    EXPECT_TRUE(ports.bench.calls.isEmpty());
}

// Trace text helpers.

TEST_F(serialLink, IsPrintableAtTheEdgesOfTheVisibleRange)
{
    const auto printable = [](int byte) {
        return CSerialCom::isPrintable(CSerialCom::bytearraytostring(bytesOf({byte})));
    };
    EXPECT_EQ(printable(0x7F), False16);
    EXPECT_EQ(printable(0x80), True16);
    EXPECT_EQ(printable(0x20), True16);
    EXPECT_EQ(printable(0x7E), True16);
    EXPECT_EQ(printable(0x1F), False16);
    EXPECT_EQ(printable(0x00), False16);
    EXPECT_EQ(printable(0xFF), True16);
    // Only the first character counts.
    EXPECT_EQ(CSerialCom::isPrintable(QStringLiteral("A\x01")), True16);
    EXPECT_EQ(CSerialCom::isPrintable(QStringLiteral("\x01"
                                                     "A")),
              False16);
}

TEST_F(serialLink, FormatHexPadsToTwoCharacters)
{
    EXPECT_EQ(CSerialCom::formatHex(QStringLiteral("A")), QStringLiteral("0A"));
    EXPECT_EQ(CSerialCom::formatHex(QString()), QStringLiteral("00"));
    EXPECT_EQ(CSerialCom::formatHex(QStringLiteral("7F")), QStringLiteral("7F"));
    EXPECT_EQ(CSerialCom::formatHex(QStringLiteral("ABC")), QStringLiteral("ABC"));
}

TEST_F(serialLink, ToPrintableEscapesControlCharactersByTheirCode)
{
    EXPECT_EQ(CSerialCom::toPrintable(QStringLiteral("A\x01~\x7F")),
              QStringLiteral("A\\x01~\\x7F"));
    EXPECT_EQ(CSerialCom::toPrintable(QString()), QString());
    EXPECT_EQ(CSerialCom::toPrintableB(bytesOf({0x48, 0x50, 0x0D, 0x0A, 0xE9})),
              QStringLiteral("HP\\x0D\\x0A\u00e9"));
}

TEST_F(serialLink, ByteArrayToStringUsesTheAnsiCodePage)
{
    EXPECT_EQ(CSerialCom::bytearraytostring(bytesOf({0x47, 0x80, 0xE9, 0x00})),
              QString(QStringLiteral("G\u20ac\u00e9")) + QChar(0));
    EXPECT_EQ(CSerialCom::bytearraytostring(QByteArray()), QString());
}

// A scripted serial port for tests: it records what the link sets and
// writes, opens or refuses by port number, and delivers the bytes a test
// hands it through the receive event, as a real port does between ticks.
#pragma once

#include "shell/model/Session.h"
#include "shell/model/SettingsStore.h"
#include "tests/support/ScriptedServices.h"
#include "upload/model/PortDiscovery.h"
#include "upload/model/SerialPortDevice.h"
#include "upload/model/UploadDeviceForm.h"
#include "upload/model/UploadGlobals.h"
#include "upload/model/UploadSession.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <deque>
#include <functional>
#include <memory>
#include <ostream>
#include <set>
#include <vector>

namespace quenby {

// Test failures show a state by its number.
inline void PrintTo(UpState state, std::ostream* os)
{
    *os << "state " << static_cast<int>(state);
}

} // namespace quenby

namespace quenby::testing {

// What every scripted port shares: the ports that refuse to open, the log of
// all calls, the writes, and the port objects made so far.
struct ScriptedPortBench
{
    std::set<int> refusedPorts; // setPortOpen(true) raises for these numbers
    bool writesFail = false;    // Output raises
    QStringList
        calls; // "CommPort=3", "Settings=115200,n,8,1", "PortOpen=true", "Output=48 50 c9 c9"...
    std::vector<QByteArray> writes; // each Output call, in order
    int portsMade = 0;
    // Answers the instrument gives to a write: called with each write and
    // the port number; what it returns is delivered at the next deliver().
    std::function<QByteArray(const QByteArray&, int)> responder;
    // Bytes waiting in the port's own buffer before the receive event reads
    // them; InBufferCount reports their count.
    QByteArray pending;
    int openPort = 0; // the number open now, 0 if none
};

class ScriptedSerialPort final : public SerialPortDevice
{
public:
    explicit ScriptedSerialPort(ScriptedPortBench& bench) : m_bench(bench) {}

    Int16 CommPort() const override { return m_number; }
    void setCommPort(Int16 number) override;
    void setSettings(const QString& settings) override;
    void setInputMode(Int16 mode) override;
    void setInputLen(Int16 length) override;
    void setRThreshold(Int16 threshold) override;
    void setRTSEnable(bool enable) override;
    bool PortOpen() const override { return m_open; }
    void setPortOpen(bool open) override;
    Int16 InBufferCount() const override;
    QByteArray Input() override;
    void Output(const QByteArray& bytes) override;
    Int16 CommEvent() const override { return m_event; }

    // Delivers `bytes` through the receive event (event kind `event`).
    void receive(const QByteArray& bytes, Int16 event = comEvReceive);

private:
    ScriptedPortBench& m_bench;
    Int16 m_number = 1;
    bool m_open = false;
    Int16 m_event = 0;
    QByteArray m_input;
};

// Installs a factory that makes scripted ports on `bench` in the upload
// session in force, and keeps the latest port reachable. When it goes, the
// session's link goes with it (its port belongs to this bench) and the
// default factory is back.
class ScriptedPorts
{
public:
    ScriptedPorts();
    ~ScriptedPorts();
    ScriptedPorts(const ScriptedPorts&) = delete;
    ScriptedPorts& operator=(const ScriptedPorts&) = delete;

    ScriptedPortBench bench;
    // The port object made last (the link's current one), or nullptr. Valid
    // only while the link keeps it.
    ScriptedSerialPort* current() const { return m_current; }
    // Delivers to the current port what the responder answered to the writes
    // since the last delivery, plus `extra`; answers the bytes delivered.
    QByteArray deliver(const QByteArray& extra = {});
    // Hands bench.pending to the current port's receive event, as the message
    // queue does while the link drains the port; answers the bytes handed
    // over. Nothing moves while no port is open.
    QByteArray deliverPending();

private:
    UploadSession& m_session;
    ScriptedSerialPort* m_current = nullptr;
    std::size_t m_answered = 0;
};

// A port list that tells the entities it is given, in use in the upload
// session in force while it lives.
class ScriptedPortList final : public PortListService
{
public:
    ScriptedPortList();
    ~ScriptedPortList() override;
    std::vector<PnpEntity> entities() override
    {
        ++listings;
        if (failure)
            failure();
        return devices;
    }
    PortNaming naming() const override { return portNaming; }

    std::vector<PnpEntity> devices;
    PortNaming portNaming = PortNaming::ComCaption;
    std::function<void()> failure; // raise here to make the listing fail
    int listings = 0;

    // "USB Serial Port (COM<n>)", error code 0.
    static PnpEntity com(int number,
                         const QString& description = QStringLiteral("USB Serial Port"));

private:
    UploadSession& m_session;
};

// The upload window as the model sees it, scripted: each call runs the
// test's callback when it set one, and is otherwise taken without effect.
class ScriptedUploadView final : public UploadDeviceView
{
public:
    void fillTexts() override { run(onFillTexts); }
    void mirror() override { run(onMirror); }
    void hideWindow() override { run(onHideWindow); }
    void bringUp() override { run(onBringUp); }

    std::function<void()> onFillTexts;
    std::function<void()> onMirror;
    std::function<void()> onHideWindow;
    std::function<void()> onBringUp;

private:
    static void run(const std::function<void()>& f)
    {
        if (f)
            f();
    }
};

// A responder for bench.responder that gathers the writes into commands and
// answers each whole one: "H", "P", code, code, or five bytes for the file
// requests (codes 211 and 212), which the link writes one byte at a time.
using CommandAnswer = std::function<QByteArray(const QByteArray& command, int port)>;
std::function<QByteArray(const QByteArray&, int)> commandResponder(CommandAnswer answer);

// Everything around the upload model for a test: a fresh upload session,
// scripted services, ports, port list and upload window, a language file
// with a text of its own for every upload message, data roots in a temporary
// folder named by a temporary settings store, and a yield hook that hands
// waiting bytes to the port. Leaving puts it all back.
class UploadRig
{
public:
    UploadRig();
    ~UploadRig();
    UploadRig(const UploadRig&) = delete;
    UploadRig& operator=(const UploadRig&) = delete;

    OwnedSession<UploadSession> session; // first in, last out
    ScriptedServices scripted;
    ScriptedPorts ports;
    ScriptedPortList portList;
    ScriptedUploadView view;

    // The text the rig's language file gives `key` (the key itself if none).
    static QString text(const QString& key);
    // Rewrites the language file; without `withAdvice` the key
    // "frmUploadDevice.msgBox." is left out.
    void writeLanguage(bool withAdvice);

    // The root that the settings store names for both instruments, and the
    // folder of an upload with the stamp `stamp`.
    QString dataRoot() const;
    QString kvxUploadFolder(const QString& stamp) const;
    QString zblUploadFolder(const QString& stamp) const;

    // One tick of the window's timer, then what the instrument answered to
    // the writes of the tick.
    void tick();
    // Ticks until UploadState is `state`: the ticks taken, or -1 when `limit`
    // ticks pass first.
    int ticksUntil(UpState state, int limit = 5000);

    // Passes of the yield hook so far; a runaway loop fails after yieldLimit.
    int yields = 0;
    int yieldLimit = 100000;
    // Runs on each pass of the yield hook, after the waiting bytes moved.
    std::function<void()> onYield;

private:
    Installed<UploadDeviceView> m_view{view};
    QTemporaryDir m_programDir;
    QTemporaryDir m_dataDir;
    QTemporaryDir m_storeDir;
    std::unique_ptr<QtSettingsStore> m_store;
};

} // namespace quenby::testing

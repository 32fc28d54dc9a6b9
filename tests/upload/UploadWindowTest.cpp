// The upload window, offscreen: one instance that only hides, every control
// under its name with the texts of the window's design, a timer that waits
// for the upload to start, the texts of the language, and the window as a
// mirror of its model: the controls follow the model, the events go to it,
// and its own timer drives the upload loop.
#include "app/QuenbyApplication.h"
#include "app/Sessions.h"
#include "app/Wiring.h"
#include "app/frmMain.h"
#include "localisation/model/WindowTextKeys.h"
#include "localisation/ui/WindowTexts.h"
#include "shell/model/AppState.h"
#include "shell/model/Platform.h"
#include "tests/support/TestFiles.h"
#include "tests/support/WindowChecks.h"
#include "tests/upload/support/ScriptedSerialPort.h"
#include "tools/instrument-sim/InstrumentFrames.h"
#include "upload/model/UploadDeviceForm.h"
#include "upload/model/UploadGlobals.h"
#include "upload/model/UploadSession.h"
#include "upload/model/mdStateMachine.h"
#include "upload/ui/frmUploadDevice.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QMenuBar>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

using namespace quenby;
using namespace quenby::testing;

namespace {

constexpr auto Routine = "FillTextsUploadDevice";

} // namespace

class UploadWindowTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir programDir;

    void useLanguage(const QStringList& lines)
    {
        const QString file = programDir.filePath(QStringLiteral("test.lng"));
        writeBytes(file, crlfLines(lines));
        setAppPathOverride(programDir.path());
        appState().LangFilePath = file;
    }

private Q_SLOTS:
    // The window is the view its model asks for, as the program's load puts it.
    void initTestCase() { installUploadViews(frmMain::instance()); }

    void cleanup()
    {
        appState().LangFilePath.clear();
        setAppPathOverride({});
    }

    // Runs first: later tests fill the window and overwrite some of these.
    void designTextsBeforeAnyFill()
    {
        const frmUploadDevice& w = frmUploadDevice::instance();
        QCOMPARE(w.windowTitle(), QString("Upload KVX-ZBL"));
        const QList<QPair<QString, QString>> texts = {
            {"frDevice", "Device Connected"},
            {"lbDeviceSerial", "?????"},
            {"cmdGetFiles", "Get Files"},
            {"cmdStop", "Stop"},
            {"Frame1", "Communication Port Found"},
            {"lbFilestransfert", "----/----"},
            {"lbTransfertPurcent", "0%"},
            {"lbtxtsucces", "Succes:"},
            {"lbSucces", "-------"},
            {"lbtxtfail", "Retry:"},
            {"lbFail", "-------"},
            {"lbPrintMessage", "No Device Found!"},
            {"mnscan", "Scan Device"},
        };
        for (const auto& [name, text] : texts)
            QCOMPARE(controlText(w, name), text);
        // A drop-down list shows its design text only while nothing is picked.
        auto* ports = w.findChild<QComboBox*>("cbCom");
        QCOMPARE(ports->placeholderText(), QString("Combo1"));
        QCOMPARE(ports->currentIndex(), -1);
    }

    void oneInstanceMadeHiddenThatClosingOnlyHides()
    {
        frmUploadDevice& w = frmUploadDevice::instance();
        QCOMPARE(&w, &frmUploadDevice::instance());
        QVERIFY(!w.isVisible());
        QVERIFY(!w.testAttribute(Qt::WA_DeleteOnClose));
        QPointer<QWidget> alive(&w);
        w.show();
        QVERIFY(w.close());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!alive.isNull());
        QVERIFY(w.isHidden());
    }

    void everyControlUnderItsName()
    {
        const frmUploadDevice& w = frmUploadDevice::instance();
        requireControls<QGroupBox>(w, {"frDevice", "Frame1"});
        requireControls<QPushButton>(w, {"cmdGetFiles", "cmdStop"});
        requireControls<QComboBox>(w, {"cbCom"});
        requireControls<QLabel>(w, {"lbDeviceSerial", "lbFilestransfert", "lbTransfertPurcent",
                                    "lbtxtsucces", "lbSucces", "lbtxtfail", "lbFail",
                                    "lbPrintMessage", "lbDeviceStatus"});
        requireControls<QProgressBar>(w, {"pbTransfertFiles"});
        requireControls<QStatusBar>(w, {"sbStatusDevice"});
        requireControls<QTimer>(w, {"tmrStateMachine"});
        requireControls<QAction>(w, {"mnscan"});

        if (QTest::currentTestFailed())
            return; // what follows needs those controls

        QVERIFY(!w.findChild<QComboBox*>("cbCom")->isEditable());
        QVERIFY(w.menuBar()->actions().contains(w.findChild<QAction*>("mnscan")));
        // Port list in its frame, device fields in theirs.
        auto* portFrame = w.findChild<QWidget*>("Frame1");
        QVERIFY(portFrame->isAncestorOf(w.findChild<QWidget*>("cbCom")));
        auto* device = w.findChild<QWidget*>("frDevice");
        for (const char* name : {"lbDeviceSerial", "cmdGetFiles", "cmdStop", "pbTransfertFiles"})
            QVERIFY2(device->isAncestorOf(w.findChild<QWidget*>(name)), name);

        // The status bar's two panels.
        auto* bar = w.findChild<QStatusBar*>("sbStatusDevice");
        QCOMPARE(w.statusBar(), bar);
        for (int panel : {1, 2}) {
            QLabel* label = w.statusPanel(panel);
            QVERIFY(label);
            QCOMPARE(label->objectName(), QStringLiteral("sbStatusDevice.Panels(%1)").arg(panel));
            QVERIFY(bar->isAncestorOf(label));
        }
        QVERIFY(!w.statusPanel(3));
    }

    void timerTicksEveryTenthOfASecondOnceStarted()
    {
        const frmUploadDevice& w = frmUploadDevice::instance();
        QTimer* timer = w.findChild<QTimer*>("tmrStateMachine");
        QCOMPARE(w.tmrStateMachine(), timer);
        QCOMPARE(timer->interval(), 100);
        QVERIFY(!timer->isSingleShot());
        QVERIFY(!timer->isActive());
    }

    void tableNamesOnlyControlsTheWindowHas()
    {
        const WindowTextTable* table = windowTextTable(Routine);
        QVERIFY(table);
        const frmUploadDevice& w = frmUploadDevice::instance();
        QCOMPARE(w.objectName(), table->window);
        for (const WindowTextEntry& e : table->entries) {
            const QString control = QString::fromLatin1(e.control);
            if (control.isEmpty())
                continue;
            QVERIFY2(w.findChild<QObject*>(control), qPrintable(control));
        }
    }

    void fillPutsEachTextInItsControl()
    {
        const WindowTextTable* table = windowTextTable(Routine);
        QVERIFY(table);
        QStringList lines;
        for (const WindowTextEntry& e : table->entries)
            lines << QStringLiteral("%1,T:%1").arg(QLatin1String(e.key));
        useLanguage(lines);

        frmUploadDevice& w = frmUploadDevice::instance();
        w.FillTextsUploadDevice();
        QVERIFY(!w.isVisible());
        QVERIFY(!w.windowIcon().isNull());
        // The title comes from the main window's menu entry that opens this one.
        QCOMPARE(w.windowTitle(), QString("T:frmMain.mnUploadPcDevice.Caption"));
        QCOMPARE(controlText(w, "cmdGetFiles"), QString("T:frmUploadDevice.cmdGetData.GetFiles"));
        QCOMPARE(controlText(w, "lbPrintMessage"),
                 QString("T:frmUploadDevice.lbPrintMessage.TryToConnect"));
        for (const WindowTextEntry& e : table->entries) {
            QCOMPARE(controlText(w, QString::fromLatin1(e.control)),
                     QStringLiteral("T:") + QLatin1String(e.key));
        }
        // The timer is the upload's business, not the fill's.
        QVERIFY(!w.tmrStateMachine()->isActive());
    }

    void controlsFollowTheModel()
    {
        frmUploadDevice& w = frmUploadDevice::instance();
        OwnedSession<UploadSession> session;
        UploadDeviceForm& f = uploadDeviceForm();
        f.lbPrintMessage = "message";
        f.lbDeviceSerial = "KVX0042";
        f.lbFilestransfert = "1/3";
        f.lbTransfertPurcent = "33%";
        f.statusPanel1 = "device";
        f.statusPanel2 = "Port: 4";
        f.frDeviceVisible = true;
        f.cmdGetFilesEnabled = false;
        f.cmdStopEnabled = true;
        f.lbSuccesVisible = false;
        f.pbTransfertFilesMax = 3;
        f.pbTransfertFilesValue = 1;
        f.cbComItems = QStringList{"COM3", "COM7"};
        f.cbComListIndex = 0;
        w.mirrorModel();
        QCOMPARE(controlText(w, "lbPrintMessage"), QString("message"));
        QCOMPARE(controlText(w, "lbDeviceSerial"), QString("KVX0042"));
        QCOMPARE(controlText(w, "lbFilestransfert"), QString("1/3"));
        QCOMPARE(controlText(w, "lbTransfertPurcent"), QString("33%"));
        QCOMPARE(w.statusPanel(1)->text(), QString("device"));
        QCOMPARE(w.statusPanel(2)->text(), QString("Port: 4"));
        QVERIFY(!w.findChild<QPushButton*>("cmdGetFiles")->isEnabled());
        QVERIFY(w.findChild<QPushButton*>("cmdStop")->isEnabled());
        QVERIFY(w.findChild<QLabel*>("lbSucces")->isHidden());
        QVERIFY(!w.findChild<QGroupBox*>("frDevice")->isHidden());
        auto* bar = w.findChild<QProgressBar*>("pbTransfertFiles");
        QCOMPARE(bar->maximum(), 3);
        QCOMPARE(bar->value(), 1);
        auto* ports = w.findChild<QComboBox*>("cbCom");
        QCOMPARE(ports->count(), 2);
        QCOMPARE(ports->currentText(), QString("COM3"));
        // The design timer stays still until the model enables it.
        QVERIFY(!w.tmrStateMachine()->isActive());
        // The window shows the design state again.
        session->reset();
        w.mirrorModel();
        QCOMPARE(controlText(w, "lbPrintMessage"), QString("No Device Found!"));
    }

    void theWindowIsTheViewItsModelAsks()
    {
        OwnedSession<UploadSession> session;
        frmUploadDevice& w = frmUploadDevice::instance();
        QCOMPARE(&uploadDeviceView(), static_cast<UploadDeviceView*>(&w));
        w.show();
        QVERIFY(uploadDeviceForm().shown);

        uploadDeviceForm().lbDeviceSerial = "KVX0007";
        uploadDeviceView().mirror();
        QCOMPARE(controlText(w, "lbDeviceSerial"), QString("KVX0007"));

        // The model's end of an upload hides the window through its view.
        EndProcess();
        QVERIFY(w.isHidden());
        QVERIFY(!uploadDeviceForm().shown);
        session->reset();
        w.mirrorModel();
    }

    void buttonsAndScanGoToTheModel()
    {
        UploadRig rig;
        frmUploadDevice& w = frmUploadDevice::instance();
        UploadDevice_Form_Load();
        // The loop runs from the load; the test ticks by hand.
        w.tmrStateMachine()->stop();
        uploadDeviceForm().timerEnabled = false;
        uploadDeviceForm().cmdGetFilesEnabled = true;
        w.mirrorModel();

        w.findChild<QPushButton*>("cmdGetFiles")->click();
        QCOMPARE(uploadGlobals().UploadState, UpState::AskFileCount);
        QVERIFY(!w.findChild<QPushButton*>("cmdGetFiles")->isEnabled());
        QVERIFY(w.findChild<QPushButton*>("cmdStop")->isEnabled());

        w.findChild<QPushButton*>("cmdStop")->click();
        QVERIFY(uploadGlobals().StopRequested != False16);
        QVERIFY(w.findChild<QPushButton*>("cmdGetFiles")->isEnabled());
        QVERIFY(!w.findChild<QPushButton*>("cmdStop")->isEnabled());

        uploadGlobals().DeviceConnected = True16;
        w.findChild<QAction*>("mnscan")->trigger();
        QVERIFY(uploadGlobals().DeviceConnected == False16);
        QCOMPARE(uploadGlobals().UploadState, UpState::TryPort);
        QVERIFY(w.findChild<QGroupBox*>("frDevice")->isHidden());
        QVERIFY(!w.findChild<QPushButton*>("cmdGetFiles")->isEnabled());
        QCOMPARE(controlText(w, "lbPrintMessage"), QString());
        UploadDevice_Form_QueryUnload();
        UploadDevice_Form_Unload();
    }

    void theWindowsTimerDrivesTheLoopAndClosingUnloads()
    {
        UploadRig rig;
        // A ZBL on COM3 that answers at once.
        sim::Instrument zbl;
        zbl.kind = sim::DeviceKind::Zbl;
        zbl.zblSerialBytes = {4, 0, 1, 2, 3, 4, 5};
        rig.portList.devices = {ScriptedPortList::com(3)};
        rig.ports.bench.responder = [&zbl](const QByteArray& command, int) {
            return sim::replyTo(zbl, command);
        };
        // What the instrument answered is delivered between ticks, as the
        // port's receive event would.
        QTimer line;
        connect(&line, &QTimer::timeout, this, [&rig] { rig.ports.deliver(); });
        line.start(10);

        frmUploadDevice& w = frmUploadDevice::instance();
        w.Form_Load();
        QVERIFY(w.tmrStateMachine()->isActive());
        QCOMPARE(w.tmrStateMachine()->interval(), 100);
        QVERIFY(!w.isVisible()); // loading does not show it

        // Found, serial read, waiting for Get Files: the device frame shows.
        QTRY_COMPARE_WITH_TIMEOUT(uploadGlobals().UploadState, UpState::Idle, 20000);
        QCOMPARE(uploadGlobals().DeviceType, QString("ZBL"));
        QVERIFY(!w.findChild<QGroupBox*>("frDevice")->isHidden());
        QVERIFY(w.findChild<QPushButton*>("cmdGetFiles")->isEnabled());
        QCOMPARE(w.statusPanel(2)->text(), QString("Port: 3"));
        QCOMPARE(w.findChild<QComboBox*>("cbCom")->currentText(), QString("COM3"));
        QCOMPARE(controlText(w, "lbDeviceSerial"), uploadGlobals().DeviceSerialText);
        QVERIFY(w.tmrStateMachine()->isActive());

        // Closing unloads: the timer stops, the port closes, and the next
        // load starts from the design state.
        w.show();
        QVERIFY(w.close());
        QVERIFY(!w.tmrStateMachine()->isActive());
        QVERIFY(!uploadDeviceForm().loaded);
        QCOMPARE(rig.ports.bench.openPort, 0);
        QCOMPARE(controlText(w, "lbDeviceSerial"), QString("?????"));
        line.stop();
    }

    void emptyLanguageShowsTheKeys()
    {
        const WindowTextTable* table = windowTextTable(Routine);
        QVERIFY(table);
        useLanguage({});
        frmUploadDevice& w = frmUploadDevice::instance();
        w.FillTextsUploadDevice();
        QVERIFY(!w.isVisible());
        QCOMPARE(w.windowTitle(), QString("frmMain.mnUploadPcDevice.Caption"));
        for (const WindowTextEntry& e : table->entries) {
            QCOMPARE(controlText(w, QString::fromLatin1(e.control)), QString::fromLatin1(e.key));
        }
    }
};

int main(int argc, char** argv)
{
    QuenbyApplication application(argc, argv);
    // The run's state, as the program's main makes it, before any window.
    quenby::Sessions sessions;
    UploadWindowTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "UploadWindowTest.moc"

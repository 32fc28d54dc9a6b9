// The upload end to end: the instrument simulator on a pseudo-terminal, found
// through QUENBY_EXTRA_PORTS by the real port list, driven by the upload
// window's own timer through the real serial port, from the main menu's
// command to the closing message. The files that arrive are compared byte for
// byte with what the file makers make of the simulator's own frames, and read
// back through the KVX and ZBL roads into the reports' models. The operator
// is a timer that presses Get Files once the instrument is found.
#include "app/QuenbyApplication.h"
#include "app/Sessions.h"
#include "app/frmMain.h"
#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxTestRoad.h"
#include "localisation/model/LanguageLookup.h"
#include "localisation/model/Vocabulary.h"
#include "shell/model/AppState.h"
#include "shell/model/Platform.h"
#include "shell/model/SettingsStore.h"
#include "tests/support/ScriptedServices.h"
#include "tests/support/ScriptedViews.h"
#include "tests/support/TestFiles.h"
#include "tools/instrument-sim/InstrumentFrames.h"
#include "tools/instrument-sim/ScenarioReader.h"
#include "upload/model/UploadDeviceForm.h"
#include "upload/model/UploadGlobals.h"
#include "upload/model/UploadSession.h"
#include "upload/model/mdKVXFilesMaker.h"
#include "upload/model/mdKvxZblCom.h"
#include "upload/model/mdStateMachine.h"
#include "upload/model/mdZBLFilesMaker.h"
#include "upload/platform/QtSerialPortDevice.h"
#include "upload/ui/frmUploadDevice.h"
#include "zbl/model/ZblBasicReportModel.h"
#include "zbl/model/ZblBasicReportView.h"

#include <QAction>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <functional>
#include <optional>

using namespace quenby;
using namespace quenby::testing;

namespace {

// The stamp of the scripted clock's time, 2014-03-09 14:05:07.
const QString Stamp = QStringLiteral("2014-03-09 14H05M07");

QString lang(const char* key)
{
    return GetLanguageText(QString::fromLatin1(key));
}

// The closing message for `stored` files of `dealt` dealt with.
QString closingMessage(int stored, int dealt)
{
    QString a = lang(UploadKeys::EndMessage1) + QLatin1Char(' ') + QString::number(stored) +
                QLatin1Char(' ') + lang(UploadKeys::EndMessage2) + QLatin1Char(' ') +
                QString::number(dealt);
    if (stored != dealt)
        a += QStringLiteral("\r\n") + lang(UploadKeys::ErrorCorruption) + QStringLiteral("\r\n") +
             lang(UploadKeys::Advice);
    return a;
}

struct Run
{
    bool pressGetFiles = true;
    // Closes the window (as the operator would) once this holds.
    std::function<bool()> closeWhen;
    // A guard against a hang: the window is closed after this long.
    int guardMilliseconds = 150000;
};

} // namespace

class UploadEndToEndTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir programDir;
    QTemporaryDir storeDir;
    std::optional<QTemporaryDir> dataDir;
    std::optional<QtSettingsStore> store;
    std::optional<ScriptedServices> scripted;
    std::optional<OwnedSession<UploadSession>> upload;
    QProcess sim;
    QString simPort;
    bool timedOut = false;

    QString kvxFolder() const
    {
        return QDir(dataDir->path()).filePath(QStringLiteral("KVX/Files/") + Stamp);
    }
    QString zblFolder() const
    {
        return QDir(dataDir->path()).filePath(QStringLiteral("ZBL/Files/") + Stamp);
    }

    // Starts the simulator with `args` and points the port list at it.
    bool startSimulator(const QStringList& args)
    {
        sim.setProcessChannelMode(QProcess::SeparateChannels);
        sim.setReadChannel(QProcess::StandardOutput);
        sim.start(QStringLiteral(QUENBY_INSTRUMENT_SIM), args);
        if (!sim.waitForStarted(10000))
            return false;
        while (!sim.canReadLine()) {
            if (!sim.waitForReadyRead(10000))
                return false;
        }
        simPort = QString::fromLocal8Bit(sim.readLine()).trimmed();
        qputenv("QUENBY_EXTRA_PORTS", simPort.toLocal8Bit());
        return simPort.startsWith(QLatin1Char('/'));
    }

    static QString sample(const char* name) { return samplePath(QString::fromLatin1(name)); }

    // The upload window's command of the main menu, with the operator's timer.
    void runFromMenu(const Run& run)
    {
        timedOut = false;
        bool pressed = false;
        QTimer operatorHand;
        operatorHand.setInterval(20);
        QElapsedTimer clock;
        clock.start();
        int lastState = -1;
        const bool trace = qEnvironmentVariableIsSet("QUENBY_E2E_TRACE");
        connect(&operatorHand, &QTimer::timeout, this, [&] {
            frmUploadDevice& w = frmUploadDevice::instance();
            if (trace && static_cast<int>(uploadGlobals().UploadState) != lastState) {
                lastState = static_cast<int>(uploadGlobals().UploadState);
                qInfo("%6lld ms  state %d  file %d", static_cast<long long>(clock.elapsed()),
                      lastState, uploadGlobals().CurrentFile);
            }
            if (!w.isVisible())
                return;
            if (run.pressGetFiles && !pressed && uploadGlobals().UploadState == UpState::Idle &&
                uploadDeviceForm().cmdGetFilesEnabled) {
                pressed = true;
                w.findChild<QPushButton*>(QStringLiteral("cmdGetFiles"))->click();
            }
            if (run.closeWhen && run.closeWhen())
                w.close();
        });
        QTimer guard;
        guard.setSingleShot(true);
        connect(&guard, &QTimer::timeout, this, [this] {
            timedOut = true;
            frmUploadDevice::instance().close();
        });
        operatorHand.start();
        guard.start(run.guardMilliseconds);
        frmMain::instance().menuEntry(QStringLiteral("mnUploadPcDevice"))->trigger();
        operatorHand.stop();
        guard.stop();
    }

    // What the file makers write for stored file `index` (from 0) of a KVX,
    // from the simulator's own frames: the bytes the upload must reproduce.
    QByteArray expectedKvxFile(const sim::Instrument& instrument, int index)
    {
        const sim::KvxStoredFile& file = instrument.kvxFiles[static_cast<std::size_t>(index)];
        QTemporaryDir other;
        store->SaveSetting("Quenby", "UserFileTransfert", "KVX", other.path());
        {
            OwnedSession<UploadSession> maker; // the maker's own upload variables
            UploadGlobals& g = uploadGlobals();
            KvxHeaderRecord header;
            ParseKvxHeader(sim::kvxHeaderFrame(file), header);
            g.CurrentFile = static_cast<Int16>(index + 1);
            g.DeviceSerial =
                DecodeSerialNumber(sim::serialNumberReply(instrument), QStringLiteral("KVX"));
            g.UploadFolderStamp = QStringLiteral("expected");
            WriteKvxTestFile(header, ParseKvxRecords(SpreadKvxData(sim::kvxDataFrame(file)),
                                                     header.numberOfTests));
        }
        store->SaveSetting("Quenby", "UserFileTransfert", "KVX", dataDir->path());
        return readBytes(QDir(other.path())
                             .filePath(QStringLiteral("KVX/Files/expected/%1-%2.txt")
                                           .arg(index + 1)
                                           .arg(CleanFileName(file.serial))));
    }

    QByteArray expectedZblFile(const sim::Instrument& instrument, int index)
    {
        const sim::ZblStoredFile& file = instrument.zblFiles[static_cast<std::size_t>(index)];
        QTemporaryDir other;
        store->SaveSetting("Quenby", "UserFileTransfert", "ZBL", other.path());
        {
            OwnedSession<UploadSession> maker; // the maker's own upload variables
            UploadGlobals& g = uploadGlobals();
            ZblHeaderRecord header;
            ParseZblHeader(sim::zblHeaderFrame(file), header);
            g.CurrentFile = static_cast<Int16>(index + 1);
            g.UploadFolderStamp = QStringLiteral("expected");
            WriteZblTestFile(header,
                             ParseZblRecords(sim::zblDataFrame(file), header.numberOfReadings));
        }
        store->SaveSetting("Quenby", "UserFileTransfert", "ZBL", dataDir->path());
        return readBytes(QDir(other.path())
                             .filePath(QStringLiteral("ZBL/Files/expected/%1-%2.zbl")
                                           .arg(index + 1)
                                           .arg(file.testNumber)));
    }

    // Opens `path` with the main window's KVX road, the knee box IEEE 45
    // clicked when the road asks, the report left hidden.
    void openKvxLikeTheMenu(const QString& path)
    {
        ScriptedWindows windows;
        windows.main.onWait = [] { chkKneeType_Click(1); };
        scripted->files.answers.push_back(path);
        mnKVXFiles_Click();
    }

    void openZblLikeTheMenu(const QString& path)
    {
        ScriptedWindows windows;
        scripted->files.answers.push_back(path);
        mnZBLFiles_Click();
    }

    const ShownMessage* closingBox() const
    {
        return scripted->messages.shown.empty() ? nullptr : &scripted->messages.shown.back();
    }

private Q_SLOTS:
    void initTestCase()
    {
        QFile::copy(langSourcePath(QStringLiteral("en.lng")), programDir.filePath("en.lng"));
        setAppPathOverride(programDir.path());
    }

    void init()
    {
        dataDir.emplace();
        store.emplace(storeDir.path());
        setSettingsStore(&*store);
        store->SaveSetting("Quenby", "UserFileTransfert", "KVX", dataDir->path());
        store->SaveSetting("Quenby", "UserFileTransfert", "ZBL", dataDir->path());
        scripted.emplace();
        // Each case has a fresh upload session with the system's serial
        // ports in it; the upload window loads again on the menu command.
        upload.emplace();
        installSerialServices();
        static bool loaded = false;
        if (!loaded) {
            // The start of the program: the language loads every window, the
            // upload window's load among them.
            frmMain::instance().Form_Load();
            loaded = true;
        }
    }

    void cleanup()
    {
        if (sim.state() != QProcess::NotRunning) {
            sim.terminate();
            if (!sim.waitForFinished(5000))
                sim.kill();
            sim.waitForFinished(5000);
        }
        qunsetenv("QUENBY_EXTRA_PORTS");
        upload.reset();
        scripted.reset();
        setSettingsStore(nullptr);
    }

    void kvxTwoFilesFromTheMenu()
    {
        const QString scenario = sample("kvx-instrument.sim");
        const sim::Instrument instrument = sim::readScenarioFile(scenario);
        QCOMPARE(instrument.kvxFiles.size(), std::size_t(2));
        QVERIFY(startSimulator({scenario}));

        runFromMenu({});
        QVERIFY2(!timedOut, "the upload did not end");
        QVERIFY(!frmUploadDevice::instance().isVisible());

        const ShownMessage* box = closingBox();
        QVERIFY(box);
        QCOMPARE(box->text, closingMessage(2, 2));
        QCOMPARE(box->buttons, MsgButtons::Ok);
        QCOMPARE(uploadGlobals().DeviceType, QString("KVX"));
        QCOMPARE(uploadDeviceForm().lbTransfertPurcent, QString("100%"));
        QVERIFY(!uploadDeviceForm().timerEnabled);

        for (int i = 0; i < 2; ++i) {
            const sim::KvxStoredFile& file = instrument.kvxFiles[static_cast<std::size_t>(i)];
            const QString path =
                QDir(kvxFolder())
                    .filePath(
                        QStringLiteral("%1-%2.txt").arg(i + 1).arg(CleanFileName(file.serial)));
            QVERIFY2(QFile::exists(path), qPrintable(path));
            QCOMPARE(readBytes(path), expectedKvxFile(instrument, i));

            openKvxLikeTheMenu(path);
            const KvxCondensedReportModel& report = kvxCondensedReport();
            QCOMPARE(report.txtCTSerialNumber.trimmed(), file.serial);
            QCOMPARE(report.txtCompany.trimmed(), file.company);
            // Every tap pair the instrument tested shows in the table (a
            // retest of a pair lands in that pair's row).
            for (const sim::KvxTest& test : file.tests) {
                bool shown = false;
                for (int n = 1; n <= KvxCondensedReportModel::RowCount; ++n)
                    shown = shown || report.cell(KvxReportColumn::Tap, n).trimmed() == test.tap;
                QVERIFY2(shown, qPrintable(test.tap));
            }
        }
    }

    void zblTwoFilesFromTheMenu()
    {
        const QString scenario = sample("zbl-instrument.sim");
        const sim::Instrument instrument = sim::readScenarioFile(scenario);
        QCOMPARE(instrument.zblFiles.size(), std::size_t(2));
        QVERIFY(startSimulator({scenario}));

        runFromMenu({});
        QVERIFY2(!timedOut, "the upload did not end");
        const ShownMessage* box = closingBox();
        QVERIFY(box);
        QCOMPARE(box->text, closingMessage(2, 2));
        QCOMPARE(uploadGlobals().DeviceType, QString("ZBL"));

        for (int i = 0; i < 2; ++i) {
            const sim::ZblStoredFile& file = instrument.zblFiles[static_cast<std::size_t>(i)];
            const QString path =
                QDir(zblFolder())
                    .filePath(QStringLiteral("%1-%2.zbl").arg(i + 1).arg(file.testNumber));
            QVERIFY2(QFile::exists(path), qPrintable(path));
            QCOMPARE(readBytes(path), expectedZblFile(instrument, i));

            openZblLikeTheMenu(path);
            const ZblBasicReportModel& report = zblBasicReport();
            QCOMPARE(report.txtXFRSerialNumber.trimmed(), file.serial);
            QCOMPARE(report.txtOperator.trimmed(), file.operatorName);
            // The first and the last reading's taps reach the report's cells.
            const auto tapText = [](const QString& t) { return QString(t).replace(' ', '_'); };
            const auto shown = [&report](const QString& tap) {
                for (int i = 0; i < ZblBasicReportModel::RowCount; ++i) {
                    if (report.cell(ZblReportColumn::TapA, i).trimmed() == tap)
                        return true;
                }
                return false;
            };
            QVERIFY(shown(tapText(file.readings.front().tapA)));
            QVERIFY(shown(tapText(file.readings.back().tapA)));
        }
    }

    void badHeaderCheckIsAskedAgain()
    {
        const QString scenario = sample("kvx-small.sim");
        const sim::Instrument instrument = sim::readScenarioFile(scenario);
        QVERIFY(
            startSimulator({QStringLiteral("--bad-header-check"), QStringLiteral("1"), scenario}));
        runFromMenu({});
        QVERIFY(!timedOut);
        QCOMPARE(closingBox()->text, closingMessage(1, 1));
        // The bad header was asked for again with a longer wait.
        QCOMPARE(uploadGlobals().WaitHeaderTimeKvx, Int16(3));
        QCOMPARE(uploadGlobals().NbFilesFail, Int16(0));
        const QString path =
            QDir(kvxFolder())
                .filePath(
                    QStringLiteral("1-%1.txt").arg(CleanFileName(instrument.kvxFiles[0].serial)));
        QCOMPARE(readBytes(path), expectedKvxFile(instrument, 0));
    }

    void badDataCheckIsFetchedAgain()
    {
        const QString scenario = sample("kvx-small.sim");
        const sim::Instrument instrument = sim::readScenarioFile(scenario);
        QVERIFY(
            startSimulator({QStringLiteral("--bad-data-check"), QStringLiteral("1"), scenario}));
        runFromMenu({});
        QVERIFY(!timedOut);
        // The failed frame counts as a retry, not as a lost file.
        QCOMPARE(closingBox()->text, closingMessage(1, 1));
        QCOMPARE(uploadGlobals().NbFilesFail, Int16(1));
        // Kept: the limit of the KVX data wait is below its start value.
        QCOMPARE(uploadGlobals().WaitDataTimeKvx, Int16(10));
        const QString path =
            QDir(kvxFolder())
                .filePath(
                    QStringLiteral("1-%1.txt").arg(CleanFileName(instrument.kvxFiles[0].serial)));
        QCOMPARE(readBytes(path), expectedKvxFile(instrument, 0));
    }

    void dataFrameCutShortIsSkipped()
    {
        QVERIFY(startSimulator(
            {QStringLiteral("--cut-data"), QStringLiteral("1"), sample("zbl-small.sim")}));
        runFromMenu({});
        QVERIFY(!timedOut);
        QCOMPARE(closingBox()->text, closingMessage(0, 1));
        QCOMPARE(uploadGlobals().NbFilesSucces, Int16(0));
        QVERIFY(QDir(zblFolder()).entryList(QDir::Files).isEmpty());
    }

    void headerCutShortIsSkipped()
    {
        // A KVX header needs 960 bytes before it is read: half of one never
        // gets there, and the file is skipped after its retries.
        QVERIFY(startSimulator(
            {QStringLiteral("--cut-header"), QStringLiteral("1"), sample("kvx-small.sim")}));
        runFromMenu({});
        QVERIFY(!timedOut);
        QCOMPARE(closingBox()->text, closingMessage(0, 1));
        QVERIFY(QDir(kvxFolder()).entryList(QDir::Files).isEmpty());
    }

    void zblHeaderCutShortIsAskedAgain()
    {
        QVERIFY(startSimulator(
            {QStringLiteral("--cut-header"), QStringLiteral("1"), sample("zbl-small.sim")}));
        runFromMenu({});
        QVERIFY(!timedOut);
        // A ZBL header needs only 50 bytes: cut to half it still passes the
        // size test and fails its check, so it is asked for again, and the
        // second one comes whole.
        QCOMPARE(closingBox()->text, closingMessage(1, 1));
        QCOMPARE(uploadGlobals().WaitHeaderTimeZbl, Int16(3));
    }

    void silentInstrumentIsNeverFound()
    {
        QVERIFY(startSimulator({QStringLiteral("--silent"), sample("kvx-small.sim")}));
        int attemptsOnSimulator = 0;
        QString lastStatus;
        UploadDeviceForm seen; // the window as it stood when the operator gave up
        Run run;
        run.pressGetFiles = false;
        run.closeWhen = [&] {
            const QString status = uploadGlobals().PortStatusText;
            const int n = static_cast<int>(uploadDeviceForm().cbComItems.indexOf(simPort)) + 1;
            if (n > 0 && status == QStringLiteral("Port: %1").arg(n) && status != lastStatus)
                ++attemptsOnSimulator;
            lastStatus = status;
            seen = uploadDeviceForm();
            // Two rounds of the search over the simulator's port.
            return attemptsOnSimulator >= 2 && uploadGlobals().UploadState == UpState::TryPort;
        };
        runFromMenu(run);
        QVERIFY(!timedOut);
        QVERIFY(uploadGlobals().DeviceConnected == False16);
        QVERIFY(!seen.frDeviceVisible);
        QVERIFY(!seen.cmdGetFilesEnabled);
        QVERIFY(seen.cbComItems.contains(simPort));
        QCOMPARE(seen.lbPrintMessage, lang(UploadKeys::TryToConnect));
        QVERIFY(scripted->messages.shown.empty());
        // Closing unloads the window: the loop stops and the port is closed.
        QVERIFY(!uploadDeviceForm().timerEnabled);
        QVERIFY(!uploadDeviceForm().loaded);
        QCOMPARE(uploadGlobals().UploadState, UpState::TryPort);
    }

    void noiseBeforeIdentifyIsFiltered()
    {
        const QString scenario = sample("kvx-small.sim");
        const sim::Instrument instrument = sim::readScenarioFile(scenario);
        QVERIFY(startSimulator({QStringLiteral("--noise"), scenario}));
        runFromMenu({});
        QVERIFY(!timedOut);
        QCOMPARE(closingBox()->text, closingMessage(1, 1));
        const QString path =
            QDir(kvxFolder())
                .filePath(
                    QStringLiteral("1-%1.txt").arg(CleanFileName(instrument.kvxFiles[0].serial)));
        QCOMPARE(readBytes(path), expectedKvxFile(instrument, 0));
    }

    void otherIdentifyCodeKeepsTheType()
    {
        QVERIFY(startSimulator(
            {QStringLiteral("--identify-code"), QStringLiteral("0x65"), sample("kvx-small.sim")}));
        UploadDeviceForm seen;
        Run run;
        run.pressGetFiles = false;
        run.closeWhen = [&seen] {
            seen = uploadDeviceForm();
            return uploadGlobals().UploadState == UpState::Idle;
        };
        runFromMenu(run);
        QVERIFY(!timedOut);
        // Any reply code passes as an instrument; the type stays what it was.
        QVERIFY(uploadGlobals().DeviceConnected != False16);
        QVERIFY(uploadGlobals().DeviceType.isEmpty());
        QVERIFY(seen.frDeviceVisible);
        QVERIFY(seen.cmdGetFilesEnabled);
        QCOMPARE(uploadGlobals().PrintMessageText,
                 lang(UploadKeys::Connect) + QLatin1Char(' ') + GetLanguageText(deviceTypeKey({})));
    }

    void unpluggedDuringUploadSkipsTheRest()
    {
        const QString scenario = sample("kvx-instrument.sim");
        const sim::Instrument instrument = sim::readScenarioFile(scenario);
        // The line goes dead in the middle of the second file's header.
        const qint64 before =
            sim::identifyReply(reply::Kvx).size() + sim::serialNumberReply(instrument).size() +
            sim::fileCountReply(2).size() + sim::kvxHeaderFrame(instrument.kvxFiles[0]).size() +
            sim::kvxDataFrame(instrument.kvxFiles[0]).size();
        QVERIFY(startSimulator(
            {QStringLiteral("--unplug-after"), QString::number(before + 100), scenario}));
        runFromMenu({});
        QVERIFY(!timedOut);
        QCOMPARE(closingBox()->text, closingMessage(1, 2));
        const QString first =
            QDir(kvxFolder())
                .filePath(
                    QStringLiteral("1-%1.txt").arg(CleanFileName(instrument.kvxFiles[0].serial)));
        QCOMPARE(readBytes(first), expectedKvxFile(instrument, 0));
        QCOMPARE(QDir(kvxFolder()).entryList(QDir::Files).size(), 1);
    }
};

int main(int argc, char** argv)
{
    QuenbyApplication app(argc, argv);
    // The run's state, as the program's main makes it, before any window.
    quenby::Sessions sessions;
    UploadEndToEndTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "UploadEndToEndTest.moc"

// The report windows as an operator meets them right after start-up, before
// the program has had an idle moment: their pages are not made yet, and the
// first open command makes them on the way to the screen, in the language in
// force, with what the test file holds.
#include "app/QuenbyApplication.h"
#include "app/Sessions.h"
#include "app/Wiring.h"
#include "app/frmMain.h"
#include "kvx/ui/frmKVXCondensedReport.h"
#include "localisation/model/LanguageLookup.h"
#include "shell/model/CommonDialog.h"
#include "shell/model/Platform.h"
#include "shell/model/SettingsStore.h"
#include "tests/support/ScriptedServices.h"
#include "tests/support/TestFiles.h"
#include "zbl/ui/frmZBLBasicReport.h"
#include "zbl/ui/frmZBLVGraph.h"

#include <QAction>
#include <QChart>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTimer>
#include <QValueAxis>
#include <QtTest>

#include <optional>

using namespace quenby;
using namespace quenby::testing;

class ReportPagesLaterTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir programDir;
    QTemporaryDir storeDir;
    QTemporaryDir dataDir;
    std::optional<QtSettingsStore> store;
    std::optional<ScriptedServices> scripted;

    QString french(const char* key)
    {
        return FindKeyInLanguageFile(key, programDir.filePath(QStringLiteral("fr.lng")));
    }

    // Runs `step` every few milliseconds while `command` waits in its modal
    // loops, until `step` says it is done.
    void whileWaiting(const std::function<bool()>& step, const std::function<void()>& command)
    {
        QTimer tick;
        tick.setInterval(10);
        connect(&tick, &QTimer::timeout, this, [&] {
            if (step())
                tick.stop();
        });
        tick.start();
        command();
        tick.stop();
    }

private Q_SLOTS:
    void initTestCase()
    {
        setAppPathOverride(programDir.path());
        store.emplace(storeDir.path());
        setSettingsStore(&*store);
        scripted.emplace();
        for (const char* name : {"en.lng", "fr.lng", "polish.lng"})
            QVERIFY(QFile::copy(langSourcePath(name), programDir.filePath(name)));
        CommonDialog1() = CommonDialogState{};
        store->SaveSetting("Quenby", "UserFileTransfert", "KVX", dataDir.path());
        store->SaveSetting("Quenbey", "Language", "Language", "FRANCAIS");
        frmMain::instance().Form_Load();
    }

    void cleanupTestCase()
    {
        scripted.reset();
        setSettingsStore(nullptr);
        setAppPathOverride({});
    }

    void kvxReportOpenedFirstMakesItsPageInTheLanguageInForce()
    {
        frmMain& main = frmMain::instance();
        frmKVXCondensedReport& report = frmKVXCondensedReport::instance();
        QVERIFY(!report.controlsMade());
        scripted->files.answers.push_back(samplePath("kvx-ten-taps.txt"));

        QStringList seen;
        whileWaiting(
            [&] {
                if (!main.chkKneeType(0)->isHidden()) {
                    main.chkKneeType(0)->click();
                } else if (report.isVisible()) {
                    seen << report.findChild<QLabel*>("lbKneeType")->text()
                         << report.findChild<QLabel*>("lbTapTest(1)")->text()
                         << report.findChild<QLabel*>("lbTexteCompensedFactor")->text();
                    seen << QString::number(report.findChild<QLabel*>("lbTapTest(1)")->isVisible());
                    report.findChild<QAction*>("mnOk")->trigger();
                    return true;
                }
                return false;
            },
            [&] { main.menuEntry("mnKVXFiles")->trigger(); });

        QVERIFY(report.controlsMade());
        QCOMPARE(seen, (QStringList{"IEEE 30", "X1-X2",
                                    french("frmKVXCondensedReport.lbTexteCompensedFactor.Caption"),
                                    "1"}));
        QVERIFY(!report.isVisible());
    }

    void zblReportAndItsGraphOpenedFirstMakeTheirPages()
    {
        frmMain& main = frmMain::instance();
        frmZBLBasicReport& report = frmZBLBasicReport::instance();
        frmZBLVGraph& graph = frmZBLVGraph::instance();
        QVERIFY(!report.controlsMade());
        QVERIFY(!graph.controlsMade());
        scripted->files.answers.push_back(samplePath("zbl-manual-19-rows.zbl"));

        QStringList onReport;
        QStringList onGraph;
        bool graphAsked = false;
        whileWaiting(
            [&] {
                if (graph.isVisible()) {
                    onGraph << graph.findChild<QLabel*>("lbCHAN")->text()
                            << graph.CWGraph1().axisX->titleText();
                    graph.hide();
                    return false;
                }
                if (!report.isVisible())
                    return false;
                if (!graphAsked) {
                    graphAsked = true;
                    onReport << report.findChild<QLineEdit*>("txtTapA(18)")->text()
                             << QString::number(
                                    report.findChild<QLineEdit*>("txtTapA(19)")->isVisible())
                             << report.findChild<QLineEdit*>("lbTexteCHANA")->text();
                    QTimer::singleShot(0, report.findChild<QAction*>("mnuVGraphA"),
                                       &QAction::trigger);
                    return false;
                }
                if (onGraph.isEmpty())
                    return false;
                report.findChild<QAction*>("mnuOk")->trigger();
                return true;
            },
            [&] { main.menuEntry("mnZBLFiles")->trigger(); });

        QVERIFY(report.controlsMade());
        QVERIFY(graph.controlsMade());
        QCOMPARE(onReport,
                 (QStringList{"19", "0", french("frmZBLBasicReport.lbTexteCHANA.Caption")}));
        QCOMPARE(onGraph.size(), 2);
        QVERIFY(onGraph[0].contains(QLatin1String("A")));
        QCOMPARE(onGraph[1], french("frmZBLVGraph.CWGraph1.Axes.x"));
        QVERIFY(!report.isVisible());
    }
};

int main(int argc, char** argv)
{
    QuenbyApplication application(argc, argv);
    quenby::Sessions sessions;
    quenby::installWindows(quenby::frmMain::instance());
    ReportPagesLaterTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ReportPagesLaterTest.moc"

// Every window of the program in English, French and Polish, offscreen at the
// default font: the program starts, the language command puts the texts of
// the language in, the reports are filled from sample files, and no label,
// table cell, button, check box, group box or combo box entry may be cut.
#include "tests/support/TextFit.h"
#include "app/QuenbyApplication.h"
#include "app/Sessions.h"
#include "app/Wiring.h"
#include "app/frmMain.h"
#include "kvx/model/KneeGraph.h"
#include "kvx/model/KvxTestRoad.h"
#include "kvx/ui/frmKVXCondensedReport.h"
#include "report/ui/frmCompensedResistanceSetting.h"
#include "shell/model/AppState.h"
#include "shell/model/CommonDialog.h"
#include "shell/model/Platform.h"
#include "shell/model/SettingsStore.h"
#include "shell/ui/frmAbout.h"
#include "shell/ui/frmGeneralSetting.h"
#include "shell/ui/frmProcessProgress.h"
#include "tests/support/PdfReadBack.h"
#include "tests/support/ScriptedServices.h"
#include "tests/support/ScriptedViews.h"
#include "tests/support/TestFiles.h"
#include "upload/ui/frmUploadDevice.h"
#include "zbl/model/ZblBasicReportView.h"
#include "zbl/ui/frmPrintZBLBasicReport.h"
#include "zbl/ui/frmZBLBasicReport.h"
#include "zbl/ui/frmZBLVGraph.h"

#include <QAction>
#include <QDir>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <optional>

using namespace quenby;
using namespace quenby::testing;

class TextFitTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir programDir;
    QTemporaryDir storeDir;
    QTemporaryDir dataDir;
    std::optional<QtSettingsStore> store;
    std::optional<ScriptedServices> scripted;

    // The program started on a machine that has its data folder, in the
    // language of the row.
    void startIn(const QString& command)
    {
        for (const char* name : {"en.lng", "fr.lng", "polish.lng"}) {
            QFile::remove(programDir.filePath(name));
            QVERIFY(QFile::copy(langSourcePath(name), programDir.filePath(name)));
        }
        store->SaveSetting("Quenby", "UserFileTransfert", "KVX", dataDir.path());
        frmMain& main = frmMain::instance();
        main.Form_Load();
        main.menuEntry(qPrintable(command))->trigger();
    }

    static void openKvxSample(const char* standard)
    {
        OpenKvxTestForReport(samplePath(QStringLiteral("kvx-ten-taps.txt")),
                             QString::fromLatin1(standard));
        frmKVXCondensedReport::instance().mirrorModel();
    }

    // The ZBL open command on a sample, its report shown by the test.
    void openZblSample(const QString& sample)
    {
        scripted->files.answers.push_back(samplePath(sample));
        ScriptedZblReport report;
        frmZBLBasicReport& real = frmZBLBasicReport::instance();
        report.onFillTexts = [&real] { real.fillReportTexts(); };
        report.onMirror = [&real] { real.mirrorModel(); };
        const Installed<ZblReportWindow> installed(report);
        mnZBLFiles_Click();
    }

    static void showLaidOut(QWidget& window)
    {
        window.setWindowModality(Qt::NonModal);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        // Word-wrapped labels and chart axes settle once events have run.
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }

    // With QUENBY_PICTURES_DIR set, each window checked is also saved there
    // as a picture, named by the window and the language.
    static void savePicture(QWidget& window)
    {
        const QString folder = qEnvironmentVariable("QUENBY_PICTURES_DIR");
        if (folder.isEmpty())
            return;
        const QString name =
            QStringLiteral("%1-%2.png")
                .arg(window.objectName(), QString::fromLatin1(QTest::currentDataTag()).toLower());
        QVERIFY(window.grab().save(QDir(folder).filePath(name)));
    }

    static void requireEverythingFits(QWidget& window)
    {
        showLaidOut(window);
        const QStringList cut = cutTexts(window);
        savePicture(window);
        window.hide();
        QVERIFY2(cut.isEmpty(), qPrintable(u'\n' + cut.join(u'\n')));
    }

    // Prints through `command` of `window` into a PDF file, one copy, and
    // returns the file; with QUENBY_PICTURES_DIR set, its pages are saved
    // there as pictures too.
    QString printToPdf(QWidget& window, const char* command, const QString& name)
    {
        const QString pdf = programDir.filePath(name + QStringLiteral(".pdf"));
        QFile::remove(pdf);
        scripted->printer.pdfFile = pdf;
        scripted->printer.accept();
        window.findChild<QAction*>(QString::fromLatin1(command))->trigger();
        const QString folder = qEnvironmentVariable("QUENBY_PICTURES_DIR");
        if (!folder.isEmpty() && QFile::exists(pdf)) {
            const QString prefix = QDir(folder).filePath(QStringLiteral("%1-%2").arg(
                name, QString::fromLatin1(QTest::currentDataTag()).toLower()));
            const ToolRun run =
                runTool(QStringLiteral("pdftoppm"), {QStringLiteral("-r"), QStringLiteral("80"),
                                                     QStringLiteral("-png"), pdf, prefix});
            if (run.exitCode != 0)
                qWarning("pdftoppm: %s", qPrintable(run.output));
        }
        return pdf;
    }

    static void addLanguageRows()
    {
        QTest::addColumn<QString>("command");
        QTest::newRow("English") << QStringLiteral("mnuAnglais");
        QTest::newRow("French") << QStringLiteral("mnuFrancais");
        QTest::newRow("Polish") << QStringLiteral("mnuPolish");
    }

private Q_SLOTS:
    void init()
    {
        setAppPathOverride(programDir.path());
        QDir(storeDir.path()).removeRecursively();
        QDir().mkpath(storeDir.path());
        store.emplace(storeDir.path());
        setSettingsStore(&*store);
        scripted.emplace();
        CommonDialog1() = CommonDialogState{};
    }

    void cleanup()
    {
        scripted.reset();
        setSettingsStore(nullptr);
        setAppPathOverride({});
    }

    void mainWindow_data() { addLanguageRows(); }
    void mainWindow()
    {
        QFETCH(QString, command);
        startIn(command);
        requireEverythingFits(frmMain::instance());
    }

    void smallWindows_data() { addLanguageRows(); }
    void smallWindows()
    {
        QFETCH(QString, command);
        startIn(command);
        requireEverythingFits(frmGeneralSetting::instance());
        requireEverythingFits(frmAbout::instance());
        requireEverythingFits(frmProcessProgress::instance());
        requireEverythingFits(frmUploadDevice::instance());
    }

    void kvxReport_data() { addLanguageRows(); }
    void kvxReport()
    {
        QFETCH(QString, command);
        startIn(command);
        for (const char* standard : {KneeStandardIeee30, KneeStandardIeee45, KneeStandardIec1050}) {
            openKvxSample(standard);
            requireEverythingFits(frmKVXCondensedReport::instance());
        }
    }

    void compensationDialog_data() { addLanguageRows(); }
    void compensationDialog()
    {
        QFETCH(QString, command);
        startIn(command);
        requireEverythingFits(frmCompensedResistanceSetting::instance());
    }

    void zblReport_data() { addLanguageRows(); }
    void zblReport()
    {
        QFETCH(QString, command);
        startIn(command);
        openZblSample(QStringLiteral("zbl-autotc-122-rows.zbl"));
        requireEverythingFits(frmZBLBasicReport::instance());
    }

    // The print-outs: the paper twin of the ZBL report as its last page left
    // it, with every head and cell of the language whole, and the text of
    // every page in the PDF.
    void zblPrintOut_data() { addLanguageRows(); }
    void zblPrintOut()
    {
        QFETCH(QString, command);
        startIn(command);
        openZblSample(QStringLiteral("zbl-autotc-122-rows.zbl"));
        frmZBLBasicReport& report = frmZBLBasicReport::instance();
        report.mirrorModel();
        const QString pdf = printToPdf(report, "mnuBasicReport", QStringLiteral("zbl-print"));
        QCOMPARE(pdfPages(pdf), 4);
        frmPrintZBLBasicReport& paper = frmPrintZBLBasicReport::instance();
        const QStringList cut = cutTexts(paper);
        QVERIFY2(cut.isEmpty(), qPrintable(u'\n' + cut.join(u'\n')));
        const QString firstPage = pdfText(pdf, 1);
        for (const char* head : {"lbTexteCHANA", "lbTexteTAPA", "lbTexteCompensedResistanceA"}) {
            const QString text =
                report.findChild<QLineEdit*>(QString::fromLatin1(head))->text().simplified();
            QVERIFY2(firstPage.simplified().contains(text), qPrintable(text + u'\n' + firstPage));
        }
    }

    void kvxPrintOut_data() { addLanguageRows(); }
    void kvxPrintOut()
    {
        QFETCH(QString, command);
        startIn(command);
        openKvxSample(KneeStandardIeee30);
        frmKVXCondensedReport& report = frmKVXCondensedReport::instance();
        const QString pdf = printToPdf(report, "mnPrint", QStringLiteral("kvx-print"));
        QCOMPARE(pdfPages(pdf), 1);
        QVERIFY(pdfText(pdf, 1).contains(QStringLiteral("100:5")));
    }

    void vGraph_data() { addLanguageRows(); }
    void vGraph()
    {
        QFETCH(QString, command);
        startIn(command);
        openZblSample(QStringLiteral("zbl-autotc-122-rows.zbl"));
        frmZBLBasicReport& report = frmZBLBasicReport::instance();
        frmZBLVGraph& graph = frmZBLVGraph::instance();
        // The graph comes up modally; the test closes it at once and shows
        // it again on its own.
        QTimer::singleShot(0, &graph, [&graph] { graph.close(); });
        report.findChild<QAction*>(QStringLiteral("mnuVGraphA"))->trigger();
        requireEverythingFits(graph);
        const QString pdf = printToPdf(graph, "mnuPrint", QStringLiteral("vgraph-print"));
        QCOMPARE(pdfPages(pdf), 1);
    }
};

int main(int argc, char** argv)
{
    QuenbyApplication app(argc, argv);
    quenby::Sessions sessions;
    quenby::installWindows(quenby::frmMain::instance());
    TextFitTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "TextFitTest.moc"

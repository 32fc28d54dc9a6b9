// The spreadsheet export from the menus, offscreen: the main window's Excel
// entry asks for a test file, fills the template beside the program and
// saves it where the save dialog says; the report window's Excel entry does
// the same with the file of the report it shows. The dialogs are scripted.
#include "app/QuenbyApplication.h"
#include "app/Sessions.h"
#include "app/Wiring.h"
#include "app/frmMain.h"
#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxExcelExport.h"
#include "kvx/model/KvxTestRecord.h"
#include "kvx/model/KvxTestRoad.h"
#include "kvx/model/XlsxWorkbook.h"
#include "kvx/ui/frmKVXCondensedReport.h"
#include "localisation/model/LanguageLookup.h"
#include "localisation/model/Vocabulary.h"
#include "shell/model/AppState.h"
#include "shell/model/CommonDialog.h"
#include "shell/model/Platform.h"
#include "shell/model/SequentialFiles.h"
#include "tests/support/ScriptedServices.h"
#include "tests/support/TestFiles.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QTemporaryDir>
#include <QtTest>

using namespace quenby;
using namespace quenby::testing;

class KvxExcelWindowTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir programDir;

    static QAction* entry(QWidget& window, const char* name)
    {
        return window.findChild<QAction*>(QString::fromLatin1(name));
    }

private Q_SLOTS:
    // The program's folder: the English language file and the templates.
    void init()
    {
        QVERIFY(programDir.isValid());
        setAppPathOverride(programDir.path());
        for (const char* name : {"TMP2.xlsx", "TMP2-en.xlsx"}) {
            const QString target = programDir.filePath(QString::fromLatin1(name));
            QFile::remove(target);
            QVERIFY(QFile::copy(
                QDir(QStringLiteral(QUENBY_TEMPLATES_DIR)).filePath(QString::fromLatin1(name)),
                target));
        }
        const QString lang = programDir.filePath(QStringLiteral("en.lng"));
        QFile::remove(lang);
        QVERIFY(QFile::copy(langSourcePath(QStringLiteral("en.lng")), lang));
        appState().LangFilePath = lang;
        kvxTestRecord() = KvxTestRecord{};
        kvxCondensedReport() = KvxCondensedReportModel{};
    }

    void cleanup() { SequentialFiles::instance().closeAll(); }

    void mainWindowEntryWritesTheChosenTestIntoTheTemplate()
    {
        ScriptedServices scripted;
        const QString saved = programDir.filePath(QStringLiteral("from-main.xlsx"));
        scripted.files.answers.push_back(samplePath(QStringLiteral("kvx-ten-taps.txt")));
        scripted.messages.answers.push_back(MsgAnswer::Yes);
        scripted.files.saveAnswers.push_back(saved);

        frmMain& main = frmMain::instance();
        QAction* excel = entry(main, "mnExcel");
        QVERIFY(excel);
        QVERIFY(excel->isEnabled());
        excel->trigger();

        QCOMPARE(scripted.files.requests.size(), std::size_t{1});
        QCOMPARE(scripted.messages.shown.size(), std::size_t{1});
        QCOMPARE(scripted.messages.shown.front().title, QStringLiteral("Saving Repport"));
        QVERIFY(QFileInfo::exists(saved));
        const XlsxWorkbook book(saved);
        QCOMPARE(book.cellValue(3, 4), QStringLiteral("kvx-ten-taps.txt"));
        QCOMPARE(book.cellValue(4, 4), kvxTestRecord().company);
        QVERIFY(!kvxTestRecord().company.isEmpty());
        QCOMPARE(book.cellValue(5, 16 + 40).toDouble(), kvxTestRecord().curves[0].volts[40]);
        // The status bar ends on the road's last text.
        auto* panel = main.findChild<QLabel*>(QStringLiteral("stBar1.Panels(1)"));
        QVERIFY(panel);
        QCOMPARE(panel->text(), GetLanguageText(QString::fromLatin1(MainStatusKeys::Ready)));
    }

    void reportEntryWritesTheReportShown()
    {
        ScriptedServices scripted;
        const QString sample = samplePath(QStringLiteral("kvx-ten-taps.txt"));
        frmKVXCondensedReport& report = frmKVXCondensedReport::instance();
        report.FillTextsKvxCondensedReport();
        OpenKvxTestForReport(sample, QStringLiteral("IEEE 45"));
        report.mirrorModel();
        CommonDialog1().FileName = sample;

        const QString saved = programDir.filePath(QStringLiteral("from-report.xlsx"));
        scripted.messages.answers.push_back(MsgAnswer::Yes);
        scripted.files.saveAnswers.push_back(saved);
        QAction* excel = entry(report, "mnExcel");
        QVERIFY(excel);
        excel->trigger();

        // No open dialog: the report's file is opened again.
        QVERIFY(scripted.files.requests.empty());
        QCOMPARE(scripted.files.saveRequests.size(), std::size_t{1});
        const XlsxWorkbook book(saved);
        const KvxCondensedReportModel& cells = kvxCondensedReport();
        for (int n = 1; n <= 10; ++n) {
            QCOMPARE(book.cellValue(15 + n, 3), cells.cell(KvxReportColumn::Tap, n));
            QCOMPARE(book.cellValue(15 + n, 7), cells.cell(KvxReportColumn::NpRatio, n));
        }
        QCOMPARE(book.cellValue(16, 3), QStringLiteral("X1-X2"));
        QCOMPARE(book.cellValue(10, 11), QStringLiteral("IEEE 45"));
        QCOMPARE(book.cellValue(14, 13), cells.lbInsulationResistanceTest(0));
    }
};

int main(int argc, char** argv)
{
    QuenbyApplication application(argc, argv);
    quenby::Sessions sessions;
    quenby::installWindows(quenby::frmMain::instance());
    KvxExcelWindowTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "KvxExcelWindowTest.moc"

// The program's windows together, offscreen: the start on a new machine, the
// windows made by the language load, and the language commands.
#include "app/QuenbyApplication.h"
#include "app/Sessions.h"
#include "app/Wiring.h"
#include "app/frmMain.h"
#include "kvx/ui/frmKVXCondensedReport.h"
#include "localisation/model/LanguageLookup.h"
#include "localisation/model/WindowTextKeys.h"
#include "localisation/ui/WindowTexts.h"
#include "report/ui/frmCompensedResistanceSetting.h"
#include "shell/model/AppState.h"
#include "shell/model/CommonDialog.h"
#include "shell/model/DataFolders.h"
#include "shell/model/Platform.h"
#include "shell/model/SettingsStore.h"
#include "shell/ui/frmAbout.h"
#include "shell/ui/frmGeneralSetting.h"
#include "shell/ui/frmProcessProgress.h"
#include "tests/support/ScriptedServices.h"
#include "tests/support/TestFiles.h"
#include "upload/ui/frmUploadDevice.h"
#include "zbl/ui/frmZBLBasicReport.h"
#include "zbl/ui/frmZBLVGraph.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <optional>

using namespace quenby;
using namespace quenby::testing;

namespace {

struct TitledWindow
{
    QWidget* window;
    const char* titleKey;
};

// Every window whose title comes from the language, with the key of its title.
std::vector<TitledWindow> titledWindows()
{
    return {
        {&frmMain::instance(), "frmMain.Caption"},
        {&frmGeneralSetting::instance(), "frmGeneralSetting.Caption"},
        {&frmKVXCondensedReport::instance(), "frmKVXCondensedReport.Caption"},
        {&frmCompensedResistanceSetting::instance(), "frmCompensedResistanceSetting.Caption"},
        {&frmZBLBasicReport::instance(), "frmZBLBasicReport.Caption"},
        {&frmZBLVGraph::instance(), "frmZBLVGraph.Caption"},
        {&frmUploadDevice::instance(), "frmMain.mnUploadPcDevice.Caption"},
        {&frmAbout::instance(), "frmAbout.Caption"},
    };
}

} // namespace

class ApplicationWindowsTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir programDir;
    QTemporaryDir storeDir;
    QTemporaryDir dataDir;
    std::optional<QtSettingsStore> store;
    std::optional<ScriptedServices> scripted;

    // The shipped language files, beside the program.
    void installLanguageFiles()
    {
        for (const char* name : {"en.lng", "fr.lng", "polish.lng"}) {
            QFile::remove(programDir.filePath(name));
            QVERIFY(QFile::copy(langSourcePath(name), programDir.filePath(name)));
        }
    }
    QString textIn(const char* file, const char* key)
    {
        return FindKeyInLanguageFile(key, programDir.path() + pathSep() + file);
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
        installLanguageFiles();
        CommonDialog1() = CommonDialogState{};
    }

    void cleanup()
    {
        scripted.reset();
        setSettingsStore(nullptr);
        setAppPathOverride({});
    }

    // First of all, while no test has made the report pages yet.
    void startLeavesTheReportPagesToBeMadeWithTheLanguagesTexts()
    {
        store->SaveSetting("Quenby", "UserFileTransfert", "KVX", dataDir.path());
        frmMain& main = frmMain::instance();
        main.Form_Load();
        frmKVXCondensedReport& kvx = frmKVXCondensedReport::instance();
        frmZBLBasicReport& zbl = frmZBLBasicReport::instance();
        QVERIFY(!kvx.controlsMade());
        QVERIFY(!zbl.controlsMade());
        QVERIFY(!kvx.findChild<QLabel*>("lbKneeType"));
        QVERIFY(!zbl.findChild<QLineEdit*>("txtTapA(0)"));
        // Their titles and menus are there; the model has the heads already.
        QCOMPARE(kvx.windowTitle(), textIn("en.lng", "frmKVXCondensedReport.Caption"));
        QCOMPARE(controlText(kvx, "lbKneeType"),
                 textIn("en.lng", "frmKVXCondensedReport.lbKneeType.Caption"));

        // A language change meanwhile: the pages get the last language's texts.
        main.menuEntry("mnuPolish")->trigger();
        const std::vector<std::pair<QWidget*, const char*>> reports = {
            {&kvx, "FillTextsKvxCondensedReport"}, {&zbl, "FillTextsZblBasicReport"}};
        // Before its page is made, a window answers with the language's texts.
        for (const auto& [window, routine] : reports) {
            const WindowTextTable* table = windowTextTable(routine);
            QVERIFY(table);
            for (const WindowTextEntry& entry : table->entries) {
                if (entry.target != TextTarget::Text && entry.target != TextTarget::WindowTitle)
                    continue;
                QCOMPARE(controlText(*window, QString::fromLatin1(entry.control)),
                         textIn("polish.lng", entry.key));
            }
        }
        QVERIFY(!kvx.controlsMade());
        QVERIFY(!zbl.controlsMade());

        // Once the main window is on screen, both pages are made while idle.
        makeReportPagesWhenIdle(main);
        main.show();
        QTRY_VERIFY(kvx.controlsMade() && zbl.controlsMade());
        QVERIFY(!kvx.isVisible());
        QVERIFY(!zbl.isVisible());
        main.hide();

        // The made page has every control the texts were meant for, and a
        // fill run again on it changes nothing.
        for (const auto& [window, routine] : reports) {
            const WindowTextTable* table = windowTextTable(routine);
            QStringList made;
            for (const WindowTextEntry& entry : table->entries) {
                const QString control = QString::fromLatin1(entry.control);
                made << controlText(*window, control);
                if (entry.target == TextTarget::Text && !control.isEmpty())
                    QVERIFY2(window->findChild<QObject*>(control), entry.control);
            }
            if (window == &kvx)
                kvx.FillTextsKvxCondensedReport();
            else
                zbl.FillTextsZblBasicReport();
            QStringList again;
            for (const WindowTextEntry& entry : table->entries)
                again << controlText(*window, QString::fromLatin1(entry.control));
            QCOMPARE(again, made);
        }
        QCOMPARE(kvx.findChild<QLabel*>("lbKneeType")->text(),
                 textIn("polish.lng", "frmKVXCondensedReport.lbKneeType.Caption"));
        QCOMPARE(zbl.findChild<QLabel*>("lbTotalTime")->text(),
                 textIn("polish.lng", "frmZBLBasicReport.lbTotalTime"));
        QCOMPARE(zbl.cell(ZblColumn::TapA, 121)->objectName(), QString("txtTapA(121)"));
        main.menuEntry("mnuAnglais")->trigger();
        QCOMPARE(kvx.findChild<QLabel*>("lbKneeType")->text(),
                 textIn("en.lng", "frmKVXCondensedReport.lbKneeType.Caption"));
    }

    void firstRunAsksForTheDataFolderAndMakesTheTree()
    {
        scripted->folders.answers.push_back(dataDir.path());
        frmMain::instance().Form_Load();

        QCOMPARE(scripted->messages.shown.size(), std::size_t(1));
        QCOMPARE(scripted->messages.shown[0].text,
                 QString("Data directory not exist.  Select directory for data storage."));
        QCOMPARE(scripted->messages.shown[0].icon, MsgIcon::Critical);
        QCOMPARE(scripted->folders.requests.size(), std::size_t(1));
        QCOMPARE(scripted->folders.requests[0].title, QString("Please select a folder:"));
        const QString sep = pathSep();
        QVERIFY(QDir(dataDir.path() + sep + "KVX" + sep + "Files").exists());
        QVERIFY(QDir(dataDir.path() + sep + "ZBL" + sep + "Files").exists());
        QCOMPARE(store->GetSetting("Quenby", "UserFileTransfert", "KVX"), dataDir.path());
        QCOMPARE(store->GetSetting("Quenby", "UserFileTransfert", "ZBL"), dataDir.path());
        QCOMPARE(generalSetting().txtCurrentKVXFilesPath(),
                 dataDir.path() + sep + "KVX" + sep + "Files");

        // The next start asks nothing.
        scripted->messages.shown.clear();
        frmMain::instance().Form_Load();
        QVERIFY(scripted->messages.shown.empty());
        QCOMPARE(scripted->folders.requests.size(), std::size_t(1));
    }

    void startMakesEveryWindowHiddenWithItsTexts()
    {
        store->SaveSetting("Quenby", "UserFileTransfert", "KVX", dataDir.path());
        frmMain::instance().Form_Load();
        for (const TitledWindow& w : titledWindows()) {
            QCOMPARE(w.window->windowTitle(), textIn("en.lng", w.titleKey));
            QVERIFY2(!w.window->isVisible(), w.titleKey);
        }
        QCOMPARE(frmProcessProgress::instance().findChild<QLabel*>("lbTexteStatus")->text(),
                 textIn("en.lng", "frmProcessProgress.lbTexteStatus.Caption"));
    }

    void languageChangeRefreshesEveryWindowWithoutShowingIt()
    {
        store->SaveSetting("Quenby", "UserFileTransfert", "KVX", dataDir.path());
        frmMain& main = frmMain::instance();
        main.Form_Load();
        for (const auto& [command, file, word] : {std::tuple{"mnuFrancais", "fr.lng", "FRANCAIS"},
                                                  std::tuple{"mnuPolish", "polish.lng", "POLISH"},
                                                  std::tuple{"mnuAnglais", "en.lng", "ENGLISH"}}) {
            main.menuEntry(command)->trigger();
            QCOMPARE(store->GetSetting("Quenbey", "Language", "Language"), QString(word));
            QCOMPARE(appState().LangFilePath, programDir.path() + pathSep() + file);
            for (const TitledWindow& w : titledWindows()) {
                QCOMPARE(w.window->windowTitle(), textIn(file, w.titleKey));
                QVERIFY2(!w.window->isVisible(), w.titleKey);
            }
            QVERIFY(main.mnLangue()->menuAction()->isEnabled());
        }
        QVERIFY(scripted->messages.shown.empty());
    }

    void missingLanguageFileAtACommandEndsTheProgram()
    {
        store->SaveSetting("Quenby", "UserFileTransfert", "KVX", dataDir.path());
        frmMain& main = frmMain::instance();
        main.Form_Load();
        QFile::remove(programDir.filePath("fr.lng"));
        bool ended = false;
        try {
            main.menuEntry("mnuFrancais")->trigger();
        } catch (const ProgramEnded& end) {
            ended = true;
            QVERIFY(end.exitCode != 0);
        }
        QVERIFY(ended);
        QCOMPARE(scripted->messages.shown.back().text, QString("Unable to find langage files"));
        // Nothing was kept: the store still has no language.
        QCOMPARE(store->GetSetting("Quenbey", "Language", "Language"), QString());
    }

    void kvxRoadFromTheMenuToTheReport()
    {
        store->SaveSetting("Quenby", "UserFileTransfert", "KVX", dataDir.path());
        frmMain& main = frmMain::instance();
        main.Form_Load();
        frmKVXCondensedReport& report = frmKVXCondensedReport::instance();
        scripted->files.answers.push_back(samplePath("kvx-ten-taps.txt"));

        // The operator clicks the IEEE 45 box while the road waits for it,
        // then reads the report and closes it with OK.
        QString statusWhileWaiting;
        bool boxesShown = false;
        QString kneeOnReport;
        QString firstTap;
        bool reportWasModal = false;
        QTimer click;
        click.setInterval(10);
        connect(&click, &QTimer::timeout, this, [&] {
            if (!main.chkKneeType(1)->isHidden()) {
                boxesShown = !main.chkKneeType(0)->isHidden() && !main.chkKneeType(2)->isHidden();
                statusWhileWaiting = main.stBar1Panel1()->text();
                main.chkKneeType(1)->click();
            } else if (report.isVisible()) {
                click.stop();
                reportWasModal = report.isModal();
                kneeOnReport = report.findChild<QLabel*>("lbKneeType")->text();
                firstTap = report.findChild<QLabel*>("lbTapTest(1)")->text();
                report.findChild<QAction*>("mnOk")->trigger();
            }
        });
        click.start();
        main.menuEntry("mnKVXFiles")->trigger();
        click.stop();

        QVERIFY(boxesShown);
        QCOMPARE(statusWhileWaiting,
                 textIn("en.lng", "frmMain.stBar1.Panels.Text.ProcessProgress"));
        QVERIFY(reportWasModal);
        QCOMPARE(kneeOnReport, QString("IEEE 45"));
        QCOMPARE(firstTap, QString("X1-X2"));
        QVERIFY(!report.isVisible());
        QVERIFY(main.chkKneeType(1)->isHidden());
        QCOMPARE(main.stBar1Panel1()->text(), textIn("en.lng", "frmMain.stBar1.Panels.Text.Ready"));
        QVERIFY(!frmProcessProgress::instance().isVisible());
    }

    void zblRoadFromTheMenuToTheReport()
    {
        store->SaveSetting("Quenby", "UserFileTransfert", "KVX", dataDir.path());
        frmMain& main = frmMain::instance();
        main.Form_Load();
        frmZBLBasicReport& report = frmZBLBasicReport::instance();
        scripted->files.answers.push_back(samplePath("zbl-manual-19-rows.zbl"));

        // The report comes up modally; the operator reads it and presses Ok.
        bool reportWasModal = false;
        QString firstTap;
        QString lastTap;
        bool rowAfterLastHidden = false;
        QTimer close;
        close.setInterval(10);
        connect(&close, &QTimer::timeout, this, [&] {
            if (!report.isVisible())
                return;
            close.stop();
            reportWasModal = report.isModal();
            firstTap = report.findChild<QLineEdit*>("txtTapA(0)")->text();
            lastTap = report.findChild<QLineEdit*>("txtTapA(18)")->text();
            rowAfterLastHidden = report.findChild<QLineEdit*>("txtTapA(19)")->isHidden();
            report.findChild<QAction*>("mnuOk")->trigger();
        });
        close.start();
        main.menuEntry("mnZBLFiles")->trigger();
        close.stop();

        QVERIFY(reportWasModal);
        QCOMPARE(firstTap, QString("1"));
        QCOMPARE(lastTap, QString("19"));
        QVERIFY(rowAfterLastHidden);
        QVERIFY(!report.isVisible());
        QVERIFY(!frmProcessProgress::instance().isVisible());
        QVERIFY(scripted->messages.shown.empty());
    }

    void cancelledKvxDialogShowsNothing()
    {
        store->SaveSetting("Quenby", "UserFileTransfert", "KVX", dataDir.path());
        frmMain& main = frmMain::instance();
        main.Form_Load();
        const QString before = main.stBar1Panel1()->text();
        scripted->files.answers.push_back(QString());
        main.menuEntry("mnKVXFiles")->trigger();
        QVERIFY(!frmKVXCondensedReport::instance().isVisible());
        QVERIFY(main.chkKneeType(0)->isHidden());
        QCOMPARE(main.stBar1Panel1()->text(), before);
        QVERIFY(scripted->messages.shown.empty());
    }

    void emptyLanguageFileShowsKeysEverywhere()
    {
        store->SaveSetting("Quenby", "UserFileTransfert", "KVX", dataDir.path());
        writeBytes(programDir.filePath("en.lng"), crlfLines({"A file with no texts"}));
        frmMain::instance().Form_Load();
        for (const TitledWindow& w : titledWindows())
            QCOMPARE(w.window->windowTitle(), QString(w.titleKey));
    }
};

int main(int argc, char** argv)
{
    QuenbyApplication application(argc, argv);
    // The run's state, as the program's main makes it, before any window.
    quenby::Sessions sessions;
    quenby::installWindows(quenby::frmMain::instance());
    ApplicationWindowsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ApplicationWindowsTest.moc"

// The batch menu and the disk repair entry of the main window, offscreen: the
// entries run their commands through the process start in force, scripted
// here, after the window's load has put the Qt one in.
#include "app/QuenbyApplication.h"
#include "app/Sessions.h"
#include "app/Wiring.h"
#include "app/frmMain.h"
#include "shell/model/MainWindowState.h"
#include "shell/model/Platform.h"
#include "shell/model/SettingsStore.h"
#include "shell/ui/QtProcessStart.h"
#include "tests/support/ScriptedProcessStart.h"
#include "tests/support/ScriptedServices.h"
#include "tests/support/TestFiles.h"

#include <QAction>
#include <QTemporaryDir>
#include <QtTest>

#include <optional>

using namespace quenby;
using namespace quenby::testing;

class BatchMenuWindowTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir scratch; // the program's folder, the settings and the data below it
    std::optional<QtSettingsStore> store;
    std::optional<ScriptedServices> scripted;

    QString inProgramFolder(const QString& name) const
    {
        return scratch.filePath(QStringLiteral("program/") + name);
    }
    QString converter(const char* name) const
    {
        return inProgramFolder(executableFileName(QString::fromLatin1(name)));
    }

private Q_SLOTS:
    void init()
    {
        QDir folders(scratch.path());
        QVERIFY(folders.mkpath("program") && folders.mkpath("data"));
        setAppPathOverride(scratch.filePath("program"));
        // A machine that has run before: the start asks for no data folder.
        store.emplace(scratch.filePath("settings"));
        setSettingsStore(&*store);
        store->SaveSetting("Quenby", "UserFileTransfert", "KVX", scratch.filePath("data"));
        scripted.emplace();
        writeBytes(inProgramFolder("en.lng"),
                   crlfLines({"frmMain.Caption,Quenby",
                              "frmMain.mnTools.Avertissement.Caption,Check this drive?"}));
        QFile::remove(converter("kvx_report_converter"));
        QFile::remove(converter("zbl_report_converter"));
    }

    void cleanup()
    {
        scripted.reset();
        setSettingsStore(nullptr);
        setAppPathOverride({});
    }

    void theLoadPutsTheQtProcessStartIn()
    {
        frmMain::instance().Form_Load();
        QVERIFY(dynamic_cast<QtProcessStart*>(&processStart()) != nullptr);
    }

    void theKvxEntryStartsItsConverter()
    {
        writeBytes(converter("kvx_report_converter"), "x");
        frmMain& w = frmMain::instance();
        w.Form_Load();
        ScriptedProcessStart processes;
        processes.environment = {"HOME=/home/op", "PATH=/usr/bin"};
        w.menuEntry("mnBatchConvertKvxPDF")->trigger();
        // The other entry is greyed: its trigger does nothing.
        w.menuEntry("mnBatchConvertZblCsv")->trigger();
        QCOMPARE(processes.created.size(), std::size_t(1));
        const ProcessCreation& started = processes.created[0];
        QCOMPARE(started.applicationName, converter("kvx_report_converter"));
        QCOMPARE(started.applicationName, mainWindowState().KvxConverterPath);
        QCOMPARE(started.commandLine, started.applicationName);
        QCOMPARE(started.workingFolder, AppPath());
        QCOMPARE(started.environmentBlock, QString("HOME=/home/op") + QChar(u'\0') + QChar(u'\0'));
        QVERIFY(scripted->messages.shown.empty());
    }

    void theZblEntryStartsItsConverter()
    {
        writeBytes(converter("zbl_report_converter"), "x");
        frmMain& w = frmMain::instance();
        w.Form_Load();
        QVERIFY(w.menuEntry("mnBatchConvert")->isVisible());
        ScriptedProcessStart processes;
        w.menuEntry("mnBatchConvertZblCsv")->trigger();
        QCOMPARE(processes.created.size(), std::size_t(1));
        QCOMPARE(processes.created[0].commandLine, converter("zbl_report_converter"));
        // Taken away after the start: the entry stays but starts nothing.
        QVERIFY(QFile::remove(converter("zbl_report_converter")));
        w.menuEntry("mnBatchConvertZblCsv")->trigger();
        QCOMPARE(processes.created.size(), std::size_t(1));
    }

    void theRepairEntryAsksThenRunsTheDiskCheck()
    {
        frmMain& w = frmMain::instance();
        w.Form_Load();
        QVERIFY(!w.menuEntry("mnTool")->isVisible());
        ScriptedProcessStart processes;
        scripted->folders.answers = {"/media/key"};
        scripted->messages.answers = {MsgAnswer::Yes};
        w.menuEntry("mnRepair")->trigger();
        QCOMPARE(scripted->messages.shown.size(), std::size_t(1));
        QCOMPARE(scripted->messages.shown[0].text, QString("Check this drive? /media/key"));
        QCOMPARE(processes.shellCommands, QStringList{"chkdsk /media/key /x"});
    }
};

int main(int argc, char** argv)
{
    QuenbyApplication application(argc, argv);
    quenby::Sessions sessions;
    quenby::installWindows(quenby::frmMain::instance());
    BatchMenuWindowTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "BatchMenuWindowTest.moc"

// The main window and the top-level failure handler, offscreen.
#include "app/QuenbyApplication.h"
#include "app/Sessions.h"
#include "app/Wiring.h"
#include "app/frmMain.h"
#include "app/model/StartUp.h"
#include "shell/model/AppState.h"
#include "shell/model/CommonDialog.h"
#include "shell/model/FatalError.h"
#include "shell/model/Platform.h"
#include "shell/model/SettingsStore.h"
#include "tests/support/ScriptedServices.h"
#include "tests/support/TestFiles.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QEventLoop>
#include <QLabel>
#include <QMenu>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <optional>

using namespace quenby;
using namespace quenby::testing;

namespace {

// An object whose every event fails, as a command that meets a bad file does.
class FailingObject : public QObject
{
public:
    bool event(QEvent*) override { raiseRuntimeError(err::InputPastEndOfFile, "bad.txt"); }
};

QuenbyApplication& app()
{
    return *static_cast<QuenbyApplication*>(QCoreApplication::instance());
}

} // namespace

class MainWindowTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir programDir;
    QTemporaryDir storeDir;
    QTemporaryDir dataDir;
    std::optional<QtSettingsStore> store;
    std::optional<ScriptedServices> scripted;
    std::optional<RuntimeError> caught;
    int endedWith = -1;

    void writeLang(const QString& name, const QStringList& lines)
    {
        writeBytes(programDir.filePath(name), crlfLines(lines));
    }

private Q_SLOTS:
    void init()
    {
        setAppPathOverride(programDir.path());
        store.emplace(storeDir.path());
        setSettingsStore(&*store);
        // A machine that has run before: the data folders are known.
        store->SaveSetting("Quenby", "UserFileTransfert", "KVX", dataDir.path());
        scripted.emplace();
        caught.reset();
        endedWith = -1;
        // Record the failure, then let the real handler show it and end the
        // program through the scripted program control.
        app().setFatalHandler([this](const RuntimeError& e) {
            caught = e;
            try {
                reportFatalError(e);
            } catch (const ProgramEnded& end) {
                endedWith = end.exitCode;
            }
        });
        QFile::remove(programDir.filePath("en.lng"));
        writeLang("en.lng", {"frmMain.Caption,Quenby", "frmMain.mnLangue.Caption,Language",
                             "frmMain.stBar1.Panels.Text.Welcome,Welcome to Quenby "});
        CommonDialog1() = CommonDialogState{};
        appState().LangFilePath.clear();
    }

    void cleanup()
    {
        app().setFatalHandler({});
        scripted.reset();
        setSettingsStore(nullptr);
        setAppPathOverride({});
    }

    void failureInAnEventReachesTheHandler()
    {
        FailingObject failing;
        {
            CommandScope command("mnKVXFiles_Click");
            QCoreApplication::postEvent(&failing, new QEvent(QEvent::User));
            QCoreApplication::sendPostedEvents(&failing);
        }
        QVERIFY(caught.has_value());
        QCOMPARE(caught->number(), err::InputPastEndOfFile);
        QCOMPARE(scripted->messages.shown.size(), std::size_t(1));
        const ShownMessage& shown = scripted->messages.shown[0];
        QCOMPARE(shown.icon, MsgIcon::Critical);
        QVERIFY(shown.text.contains("Run-time error '62'"));
        QVERIFY(shown.text.contains("Input past end of file"));
        QVERIFY(shown.text.contains("File: bad.txt"));
        QVERIFY(shown.text.contains("Command: mnKVXFiles_Click"));
        QCOMPARE(endedWith, 62);
    }

    void failureInANestedLoopReachesTheHandler()
    {
        QEventLoop loop;
        QTimer::singleShot(0, [] { raiseRuntimeError(err::Overflow); });
        QTimer::singleShot(20, &loop, &QEventLoop::quit);
        loop.exec();
        QVERIFY(caught.has_value());
        QCOMPARE(caught->number(), err::Overflow);
        QCOMPARE(endedWith, 6);
    }

    void otherExceptionsAreInternalErrors()
    {
        QTimer::singleShot(0, [] { throw std::logic_error("broken invariant"); });
        QTRY_VERIFY(caught.has_value());
        QCOMPARE(caught->number(), err::InternalError);
        QCOMPARE(caught->detail(), QString("broken invariant"));
    }

    void loadShowsTheWindowReady()
    {
        frmMain& w = frmMain::instance();
        w.Form_Load();
        QCOMPARE(w.windowTitle(), QString("Quenby"));
        QCOMPARE(w.stBar1Panel1()->text(), QString("Welcome to Quenby3.13.1"));
        QCOMPARE(w.mnLangue()->title(), QString("Language"));
        QVERIFY(w.mnLangue()->menuAction()->isEnabled());
        for (int i = 0; i < 3; ++i) {
            auto* box = w.findChild<QCheckBox*>(QStringLiteral("chkKneeType(%1)").arg(i));
            QVERIFY(box);
            QVERIFY(box->isHidden());
        }
        QCOMPARE(w.chkKneeType(2)->text(), QString("ANSI/IEC10/50"));
        QVERIFY(w.findChild<QStatusBar*>("stBar1"));
        QVERIFY(scripted->messages.shown.empty());
    }

    void menuTreeHasItsStatesAfterLoad()
    {
        writeLang("en.lng", {"frmMain.mnKVXFiles.Caption,Open a KVX test"});
        frmMain& w = frmMain::instance();
        w.Form_Load();
        QAction* kvx = w.menuEntry("mnKVXFiles");
        QVERIFY(kvx);
        QCOMPARE(kvx->text(), QString("Open a KVX test"));
        QVERIFY(kvx->isEnabled());
        QVERIFY(!w.menuEntry("mnZBLRefFile")->isEnabled());
        QVERIFY(!w.menuEntry("mnKVXCR")->isVisible());
        QVERIFY(!w.menuEntry("mnBatchConvert")->isVisible());
        QVERIFY(w.menuEntry("mnuPolish")->isVisible());
        QCOMPARE(w.menuEntry("mnuAbout")->text(), QString("frmMain.mnuAbout.Caption"));
        // The language menu carries no check marks.
        for (const char* name : {"mnuAnglais", "mnuFrancais", "mnuPolish"})
            QVERIFY(!w.menuEntry(name)->isCheckable());
        // A converter beside the program shows the batch menu on the next start.
        writeBytes(programDir.filePath(isWindowsPlatform() ? "kvx_report_converter.exe"
                                                           : "kvx_report_converter"),
                   "x");
        w.Form_Load();
        QVERIFY(w.menuEntry("mnBatchConvert")->isVisible());
        QVERIFY(w.menuEntry("mnBatchConvertKvxPDF")->isEnabled());
        QVERIFY(!w.menuEntry("mnBatchConvertZblCsv")->isEnabled());
        QFile::remove(programDir.filePath(isWindowsPlatform() ? "kvx_report_converter.exe"
                                                              : "kvx_report_converter"));
    }

    void languageWithoutTextsShowsKeys()
    {
        writeLang("en.lng", {"nothing,here"});
        frmMain& w = frmMain::instance();
        w.Form_Load();
        QCOMPARE(w.windowTitle(), QString("frmMain.Caption"));
        QCOMPARE(w.stBar1Panel1()->text(), QString("frmMain.stBar1.Panels.Text.Welcome3.13.1"));
        QCOMPARE(w.menuEntry("mnKVXFiles")->text(), QString("frmMain.mnKVXFiles.Caption"));
        QCOMPARE(w.menuEntry("mnSRFKVX")->text(), QString("frmMain.mnOpen.Caption"));
        QCOMPARE(w.menuEntry("mnuPolish")->text(), QString("Polski")); // it has no key
    }

    void missingEnglishFileEndsTheProgram()
    {
        QFile::remove(programDir.filePath("en.lng"));
        bool ended = false;
        try {
            frmMain::instance().Form_Load();
        } catch (const ProgramEnded& end) {
            ended = true;
            QVERIFY(end.exitCode != 0);
        }
        QVERIFY(ended);
        QCOMPARE(scripted->messages.shown.size(), std::size_t(1));
        QCOMPARE(scripted->messages.shown[0].text, QString("Unable to find langage files"));
    }

    void closingTheMainWindowEndsTheProgram()
    {
        frmMain& w = frmMain::instance();
        w.Form_Load();
        w.show();
        QCloseEvent close;
        bool ended = false;
        try {
            static_cast<QObject&>(w).event(&close);
        } catch (const ProgramEnded& end) {
            ended = true;
            QCOMPARE(end.exitCode, 0);
        }
        QVERIFY(ended);
        QVERIFY(scripted->messages.shown.empty()); // nothing is asked
        w.hide();
    }
};

int main(int argc, char** argv)
{
    QuenbyApplication application(argc, argv);
    // The run's state, as the program's main makes it, before any window.
    quenby::Sessions sessions;
    quenby::installWindows(quenby::frmMain::instance());
    MainWindowTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "MainWindowTest.moc"

// The general settings window, offscreen: its controls, its texts from the
// language, the mirror of the model, the modal show over the main window and
// its buttons; and the reopen of the KVX file after a real language change.
#include "app/QuenbyApplication.h"
#include "app/Sessions.h"
#include "app/Wiring.h"
#include "app/frmMain.h"
#include "localisation/model/LanguageLookup.h"
#include "shell/model/AppState.h"
#include "shell/model/CommonDialog.h"
#include "shell/model/DataFolders.h"
#include "shell/model/Platform.h"
#include "shell/model/SequentialFiles.h"
#include "shell/model/SettingsStore.h"
#include "shell/ui/frmGeneralSetting.h"
#include "tests/support/ScriptedServices.h"
#include "tests/support/TestFiles.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <optional>

using namespace quenby;
using namespace quenby::testing;

namespace {

QuenbyApplication& app()
{
    return *static_cast<QuenbyApplication*>(QCoreApplication::instance());
}

frmGeneralSetting& window()
{
    return frmGeneralSetting::instance();
}

QString labelText(const char* name)
{
    auto* label = window().findChild<QLabel*>(QString::fromLatin1(name));
    return label ? label->text() : QStringLiteral("<no such label>");
}

QPushButton* button(const char* name)
{
    return window().findChild<QPushButton*>(QString::fromLatin1(name));
}

QString sep()
{
    return pathSep();
}

} // namespace

class GeneralSettingWindowTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir programDir;
    QTemporaryDir storeDir;
    QTemporaryDir dataDir;
    std::optional<QtSettingsStore> store;
    std::optional<Installed<GeneralSettingView>> view;
    std::optional<ScriptedServices> scripted;
    std::optional<RuntimeError> caught;
    QString savedCurrentFolder;

    QString root(const QString& name) const { return toPlatformPath(dataDir.filePath(name)); }

    // Runs `whileShown` inside the window's modal loop, then presses OK, so
    // that the loop always ends.
    template <typename F> void whileModal(F whileShown)
    {
        QTimer::singleShot(0, &window(), [whileShown] {
            whileShown();
            button("btOk")->click();
        });
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(programDir.isValid());
        QVERIFY(storeDir.isValid());
        QVERIFY(dataDir.isValid());
        savedCurrentFolder = QDir::currentPath();
        writeBytes(programDir.filePath("en.lng"), crlfLines({"frmMain.Caption,Quenby"}));
        // The main window owns the settings window, as in the program.
        frmMain::instance();
        view.emplace(frmGeneralSetting::instance());
    }

    void init()
    {
        setAppPathOverride(programDir.path());
        store.emplace(storeDir.path());
        setSettingsStore(&*store);
        scripted.emplace();
        caught.reset();
        // As after start-up: the texts come from the English file.
        appState().LangFilePath = AppPath() + sep() + "en.lng";
        app().setFatalHandler([this](const RuntimeError& e) { caught = e; });
    }

    void cleanup()
    {
        window().hide();
        app().setFatalHandler({});
        SequentialFiles::instance().closeAll();
        appState() = AppState{};
        CommonDialog1() = CommonDialogState{};
        scripted.reset();
        setSettingsStore(nullptr);
        setAppPathOverride({});
        QFile::remove(storeDir.filePath("Quenby.ini"));
        QDir::setCurrent(savedCurrentFolder);
    }

    // Runs first: nothing has filled the window yet.
    void controlsShowTheirNamesUntilFilled()
    {
        frmGeneralSetting& w = window();
        QCOMPARE(&w, &frmGeneralSetting::instance());
        QCOMPARE(w.objectName(), QString("frmGeneralSetting"));
        QCOMPARE(w.windowTitle(), QString("frmGeneralSetting"));
        QCOMPARE(w.parentWidget(), static_cast<QWidget*>(&frmMain::instance()));
        for (const char* name : {"lbKVXFilesPath", "lbZBLFilesPath", "txtCurrentKVXFilesPath",
                                 "txtCurrentZBLFilesPath", "lbInfomationOldPath", "lbOldPath",
                                 "MessageBox_AreYouSureToChange", "MessageBox_NoDirData"}) {
            QVERIFY2(w.findChild<QLabel*>(name), name);
            QCOMPARE(labelText(name), QString::fromLatin1(name));
        }
        for (const char* name : {"btChangeKVXFilePath", "btChangeZBLFilePath", "btOk"}) {
            QVERIFY2(button(name), name);
            QCOMPARE(button(name)->text(), QString::fromLatin1(name));
        }
        // The two holders of message texts are never on screen.
        QVERIFY(w.findChild<QLabel*>("MessageBox_AreYouSureToChange")->isHidden());
        QVERIFY(w.findChild<QLabel*>("MessageBox_NoDirData")->isHidden());
    }

    void languageFillsTheTextsAndTheQuestion()
    {
        writeBytes(programDir.filePath("en.lng"),
                   crlfLines({"frmGeneralSetting.Caption,General settings",
                              "frmGeneralSetting.lbKVXFilesPath.Caption,KVX files",
                              "frmGeneralSetting.btOk.Caption,OK",
                              "frmGeneralSetting.MessageBox_AreYouSureToChange.Caption,Sure?",
                              "frmGeneralSetting.MessageBox_NoDirData.Caption,No data folder"}));
        LoadLanguage("ENGLISH");
        frmGeneralSetting& w = window();
        QCOMPARE(w.windowTitle(), QString("General settings"));
        QCOMPARE(labelText("lbKVXFilesPath"), QString("KVX files"));
        QCOMPARE(button("btOk")->text(), QString("OK"));
        QCOMPARE(labelText("MessageBox_NoDirData"), QString("No data folder"));
        // A key the file lacks shows the key.
        QCOMPARE(labelText("lbZBLFilesPath"), QString("frmGeneralSetting.lbZBLFilesPath.Caption"));
        QCOMPARE(button("btChangeZBLFilePath")->text(),
                 QString("frmGeneralSetting.btChangeZBLFilePath.Caption"));
        QCOMPARE(labelText("MessageBox_AreYouSureToChange"), QString("Sure?"));
        QCOMPARE(generalSetting().MessageBox_AreYouSureToChange(), QString("Sure?"));
        QVERIFY(!w.windowIcon().isNull());
        QVERIFY(w.isHidden()); // filling texts shows nothing
    }

    void startUpCheckReachesTheLabels()
    {
        const QString r = root("start");
        store->SaveSetting("Quenby", "UserFileTransfert", "KVX", r);
        CheckIfDirectoryExist();
        QCOMPARE(labelText("txtCurrentKVXFilesPath"), r + sep() + "KVX" + sep() + "Files");
        QCOMPARE(labelText("txtCurrentZBLFilesPath"), r + sep() + "ZBL" + sep() + "Files");
        QVERIFY(window().isHidden());
    }

    void menuCommandShowsTheWindowModallyOverTheMainWindow()
    {
        const QString r = root("menu");
        store->SaveSetting("Quenby", "UserFileTransfert", "KVX", r);
        store->SaveSetting("Quenby", "UserFileTransfert", "ZBL", r);
        bool visible = false;
        bool modal = false;
        QString kvx;
        QString zbl;
        whileModal([&] {
            visible = window().isVisible();
            modal = QApplication::activeModalWidget() == &window();
            kvx = labelText("txtCurrentKVXFilesPath");
            zbl = labelText("txtCurrentZBLFilesPath");
        });

        mnDataFilesPath_Click(); // returns when OK hides the window

        QVERIFY(visible);
        QVERIFY(modal);
        QCOMPARE(kvx, r + sep() + "KVX" + sep() + "Files" + sep());
        QCOMPARE(zbl, r + sep() + "ZBL" + sep() + "Files" + sep());
        QVERIFY(window().isHidden());
        QCOMPARE(window().parentWidget(), static_cast<QWidget*>(&frmMain::instance()));
        QVERIFY(!caught.has_value());
    }

    void changeButtonAnsweredYesChangesTheRootWhileShown()
    {
        const QString old = root("old");
        store->SaveSetting("Quenby", "UserFileTransfert", "KVX", old);
        QDir().mkpath(dataDir.filePath("new"));
        const QString r = root("new");
        scripted->folders.answers = {r};
        scripted->messages.answers = {MsgAnswer::Yes};
        bool stillVisible = false;
        QString shown;
        whileModal([&] {
            button("btChangeKVXFilePath")->click(); // brings the shown window up, no second loop
            stillVisible = window().isVisible();
            shown = labelText("txtCurrentKVXFilesPath");
        });

        mnDataFilesPath_Click();

        QVERIFY(stillVisible);
        QCOMPARE(shown, r + sep() + "KVX" + sep() + "Files" + sep());
        QCOMPARE(store->GetSetting("Quenby", "UserFileTransfert", "KVX"), r);
        QVERIFY(QFileInfo(r + sep() + "KVX" + sep() + "Files").isDir());
        QCOMPARE(scripted->messages.shown.size(), std::size_t(1));
        QCOMPARE(scripted->messages.shown[0].text,
                 generalSetting().MessageBox_AreYouSureToChange());
        QVERIFY(!caught.has_value());
    }

    void changeButtonAnsweredNoChangesNothing()
    {
        const QString old = root("old");
        store->SaveSetting("Quenby", "UserFileTransfert", "ZBL", old);
        QDir().mkpath(dataDir.filePath("other"));
        scripted->folders.answers = {root("other")};
        scripted->messages.answers = {MsgAnswer::No};
        QString shown;
        whileModal([&] {
            button("btChangeZBLFilePath")->click();
            shown = labelText("txtCurrentZBLFilesPath");
        });

        mnDataFilesPath_Click();

        QCOMPARE(shown, old + sep() + "ZBL" + sep() + "Files" + sep());
        QCOMPARE(store->GetSetting("Quenby", "UserFileTransfert", "ZBL"), old);
        QVERIFY(QDir(root("other")).isEmpty());
    }

    void closingOnlyHidesTheWindow()
    {
        QPointer<frmGeneralSetting> before(&window());
        QTimer::singleShot(0, &window(), [] { window().close(); });
        window().bringUp();
        QVERIFY(!before.isNull());
        QVERIFY(window().isHidden());
        QCOMPARE(before.data(), &frmGeneralSetting::instance());
    }

    void reopenAfterALanguageChangeReadsTheLanguageFile()
    {
        writeBytes(programDir.filePath("fr.lng"),
                   crlfLines({"frmMain.Caption,Quenby en francais"}));
        writeBytes(dataDir.filePath("t.txt"), crlfLines({"test line"}));
        const QString test = root("t.txt");
        generalSetting().setTxtCurrentKVXFilesPath(QString());
        scripted->files.answers = {test};
        QCOMPARE(SelectKvxTestFile(), False16);
        QCOMPARE(ReopenKvxTestFile(), False16);
        QCOMPARE(appState().KvxTestFilePath.toText(), test);

        LoadLanguage("FRANCAIS");
        QCOMPARE(ReopenKvxTestFile(), False16);

        const QString fr = AppPath() + sep() + "fr.lng";
        QCOMPARE(appState().KvxTestFilePath.toText(), fr);
        const Int16 no = static_cast<Int16>(appState().KvxTestFileNo.toNumber());
        QCOMPARE(SequentialFiles::instance().lineInput(no),
                 QString("frmMain.Caption,Quenby en francais"));
    }
};

int main(int argc, char** argv)
{
    QuenbyApplication application(argc, argv);
    // The run's state, as the program's main makes it, before any window.
    quenby::Sessions sessions;
    quenby::installWindows(quenby::frmMain::instance());
    GeneralSettingWindowTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "GeneralSettingWindowTest.moc"

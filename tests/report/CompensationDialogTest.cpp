// The temperature compensation dialog, offscreen: it mirrors its model, hands
// the operator's typing and buttons to it, and is shown modally by the KVX
// report's compensation box; each modal show here is ended from a timer, as
// an operator would end it.
#include "app/QuenbyApplication.h"
#include "app/Sessions.h"
#include "app/Wiring.h"
#include "app/frmMain.h"
#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxTestRecord.h"
#include "report/model/TemperatureCompensation.h"
#include "report/ui/frmCompensedResistanceSetting.h"
#include "shell/model/AppState.h"
#include "shell/model/Platform.h"
#include "tests/support/ScriptedCompensation.h"
#include "tests/support/TestFiles.h"
#include "zbl/model/ZblBasicReportModel.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <functional>
#include <memory>

using namespace quenby;
using namespace quenby::testing;

namespace {

const QString Aluminium = QStringLiteral("Alluminium (TK=225)");
const QString Copper = QStringLiteral("Copper (TK=234.5)");
const QString Title = QStringLiteral("Temperature Compensation");

frmCompensedResistanceSetting& dialog()
{
    return frmCompensedResistanceSetting::instance();
}

QString compensated(int n)
{
    return kvxCondensedReport().cell(KvxReportColumn::WindingComp, n);
}

// Types `text` over what the box holds, key by key.
void retype(QLineEdit* box, const QString& text)
{
    box->selectAll();
    QTest::keyClick(box, Qt::Key_Backspace);
    QTest::keyClicks(box, text);
}

} // namespace

class CompensationDialogTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir programDir;
    // Fresh models for each test, the two reports counted, and the window in
    // force as the dialog's view.
    struct Fresh
    {
        OwnedSession<KvxSession> kvx;
        OwnedSession<ZblSession> zbl;
        OwnedSession<CompensationDialogModel> dialog;
        CountedCompensationReport<KvxCompensationReport, KvxReportCompensation> kvxReport;
        CountedCompensationReport<ZblCompensationReport, ZblReportCompensation> zblReport;
        Installed<KvxCompensationReport> kvxSlot{kvxReport};
        Installed<ZblCompensationReport> zblSlot{zblReport};
        Installed<CompensationDialogView> view{frmCompensedResistanceSetting::instance()};
    };
    std::unique_ptr<Fresh> fresh;
    int& kvxMirrors() { return fresh->kvxReport.mirrors; }
    int& zblMirrors() { return fresh->zblReport.mirrors; }

    // Picks entry `index` of the KVX report's box and runs the click; `inside`
    // runs from a timer once the modal show has begun. True when the timer ran
    // inside the show with the dialog up and modal: a show that does not wait
    // returns before the timer's turn.
    bool pickWhileModal(int index, const std::function<void()>& inside)
    {
        KvxCondensedReportModel& report = kvxCondensedReport();
        report.cbCompensationIndex = index;
        report.cbCompensationText = report.cbCompensationItems.at(index);
        bool wasModal = false;
        QTimer operatorTimer;
        operatorTimer.setSingleShot(true);
        connect(&operatorTimer, &QTimer::timeout, [&] {
            wasModal = dialog().isVisible() && QApplication::activeModalWidget() == &dialog();
            inside();
            // Whatever `inside` did, the show must end for the test to go on.
            if (dialog().isVisible())
                dialog().hide();
        });
        operatorTimer.start(0);
        KvxReport_cbCompensation_Click();
        const bool ran = !operatorTimer.isActive();
        operatorTimer.stop();
        return ran && wasModal;
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(programDir.isValid());
        const QString file = programDir.filePath(QStringLiteral("en.lng"));
        writeBytes(
            file,
            crlfLines({QStringLiteral("frmCompensedResistanceSetting.Caption,") + Title,
                       QStringLiteral("frmCompensedResistanceSetting.cmdOK.Caption,O&K"),
                       QStringLiteral("frmCompensedResistanceSetting.cmdCancel.Caption,Cancel")}));
        setAppPathOverride(programDir.path());
        appState().LangFilePath = file;
    }

    void init()
    {
        fresh.reset();
        fresh = std::make_unique<Fresh>();
        kvxCondensedReport().cbCompensationItems = QStringList{Aluminium, Copper};
        kvxCondensedReport().txtTemperature = QStringLiteral("20");
        kvxCondensedReport().cell(KvxReportColumn::WindingRes, 1) = QStringLiteral("1.000 ohm");
        kvxTestRecord().lastReference = Dynamic(1.0);
        dialog().mirrorModel();
    }

    void cleanup()
    {
        if (dialog().isVisible())
            dialog().hide();
    }

    void oneDialogMadeOnFirstTouchIsTheDialogsView()
    {
        QCOMPARE(&frmCompensedResistanceSetting::instance(), &dialog());
        QCOMPARE(&compensationDialogView(), static_cast<CompensationDialogView*>(&dialog()));
        QVERIFY(!dialog().isVisible());
        QCOMPARE(dialog().txtTS()->text(), QString("75"));
    }

    void mirrorsTheModel()
    {
        CompensationDialogModel& model = compensationDialog();
        model.txtTS = QStringLiteral("80");
        model.txtTK = QStringLiteral("225");
        model.txtTM = QStringLiteral("12 C");
        model.caption = QStringLiteral("KVX ") + Title;
        compensationDialogView().dialogChanged();
        QCOMPARE(dialog().txtTS()->text(), QString("80"));
        QCOMPARE(dialog().txtTK()->text(), QString("225"));
        QCOMPARE(dialog().txtTM()->text(), QString("12 C"));
        QCOMPARE(dialog().windowTitle(), QString("KVX ") + Title);
    }

    void typingGoesIntoTheModel()
    {
        retype(dialog().txtTS(), QStringLiteral("65"));
        retype(dialog().txtTK(), QStringLiteral("240"));
        retype(dialog().txtTM(), QStringLiteral("18.5"));
        QCOMPARE(compensationDialog().txtTS, QString("65"));
        QCOMPARE(compensationDialog().txtTK, QString("240"));
        QCOMPARE(compensationDialog().txtTM, QString("18.5"));
    }

    void languageFillSetsTheTitleOfWindowAndModel()
    {
        compensationDialog().caption = QStringLiteral("stale");
        dialog().FillTextsCompensedResistance();
        QCOMPARE(dialog().windowTitle(), Title);
        QCOMPARE(compensationDialog().caption, Title);
        QCOMPARE(dialog().cmdOK()->text(), QString("O&K"));
    }

    void okTypedInTheModalShowCompensatesTheKvxReport()
    {
        bool tmShown = false;
        const bool modal = pickWhileModal(1, [&] {
            tmShown = dialog().txtTM()->text() == QLatin1String("20") &&
                      dialog().txtTK()->text() == QLatin1String("234.5");
            retype(dialog().txtTS(), QStringLiteral("75"));
            QTest::mouseClick(dialog().cmdOK(), Qt::LeftButton);
        });
        QVERIFY(modal);
        QVERIFY(tmShown);
        QVERIFY(!dialog().isVisible());
        QVERIFY(!compensationDialog().shown);
        QCOMPARE(compensated(1), QString("1.216 ohm"));
        QCOMPARE(kvxCondensedReport().txtTemperature, QString("20C"));
        QCOMPARE(kvxCondensedReport().lbTexteCompensedTemp1, QString("75C"));
        QCOMPARE(kvxCondensedReport().cbCompensationIndex, -1);
        QVERIFY(kvxMirrors() >= 1);
        // The dialog shows what the rule rewrote.
        QCOMPARE(dialog().txtTS()->text(), QString("75"));
        // The refill put the language's title over the "KVX " one.
        QCOMPARE(dialog().windowTitle(), Title);
    }

    void returnKeyIsOk()
    {
        QVERIFY(pickWhileModal(0, [] {
            retype(dialog().txtTS(), QStringLiteral("75"));
            QTest::keyClick(dialog().txtTS(), Qt::Key_Return);
        }));
        QVERIFY(!dialog().isVisible());
        QCOMPARE(compensated(1), QString("1.224 ohm"));
    }

    void editedTkReachesTheZblBox()
    {
        QVERIFY(pickWhileModal(1, [] {
            retype(dialog().txtTK(), QStringLiteral("240"));
            QTest::mouseClick(dialog().cmdOK(), Qt::LeftButton);
        }));
        QCOMPARE(compensated(1), QString("1.212 ohm"));
        QCOMPARE(zblBasicReport().cbCompensationText, QString("Custom (TK=240)"));
        QCOMPARE(zblBasicReport().cbCompensationItems.size(), 3);
        // The KVX box shows no choice after the dialog.
        QCOMPARE(kvxCondensedReport().cbCompensationText, QString());
        QCOMPARE(kvxCondensedReport().cbCompensationItems.size(), 2);
        QVERIFY(zblMirrors() >= 1);
    }

    void cancelKeepsTheColumnAndEmptiesBothBoxes()
    {
        QVERIFY(pickWhileModal(1, [] { QTest::mouseClick(dialog().cmdOK(), Qt::LeftButton); }));
        QCOMPARE(compensated(1), QString("1.216 ohm"));
        zblBasicReport().cbCompensationText = Aluminium;
        kvxMirrors() = 0;

        const bool modal = pickWhileModal(0, [] {
            retype(dialog().txtTS(), QStringLiteral("20"));
            QTest::mouseClick(dialog().cmdCancel(), Qt::LeftButton);
        });
        QVERIFY(modal);
        QVERIFY(!dialog().isVisible());
        QCOMPARE(compensated(1), QString("1.216 ohm"));
        QCOMPARE(kvxCondensedReport().cbCompensationText, QString());
        QCOMPARE(zblBasicReport().cbCompensationText, QString());
        QCOMPARE(kvxMirrors(), 1);
        // What was typed stays for the next opening.
        QCOMPARE(compensationDialog().txtTS, QString("20"));
    }

    void escapeIsCancel()
    {
        zblBasicReport().cbCompensationText = Aluminium;
        QVERIFY(pickWhileModal(1, [] { QTest::keyClick(&dialog(), Qt::Key_Escape); }));
        QVERIFY(!dialog().isVisible());
        QCOMPARE(compensated(1), QString());
        QCOMPARE(kvxCondensedReport().cbCompensationText, QString());
        QCOMPARE(zblBasicReport().cbCompensationText, QString());
    }

    void closingByTheFrameEmptiesBothBoxesOnly()
    {
        QVERIFY(pickWhileModal(1, [] { QTest::mouseClick(dialog().cmdOK(), Qt::LeftButton); }));
        QCOMPARE(compensated(1), QString("1.216 ohm"));
        zblBasicReport().cbCompensationText = Aluminium;
        QVERIFY(pickWhileModal(0, [] {
            retype(dialog().txtTS(), QStringLiteral("20"));
            QVERIFY(dialog().close());
        }));
        QVERIFY(!dialog().isVisible());
        QVERIFY(!compensationDialog().shown);
        QCOMPARE(compensated(1), QString("1.216 ohm"));
        QCOMPARE(kvxCondensedReport().cbCompensationText, QString());
        QCOMPARE(zblBasicReport().cbCompensationText, QString());
        QCOMPARE(kvxCondensedReport().cbCompensationIndex, -1);
    }

    void aSecondClickWhileUpBringsItToTheFront()
    {
        bool returnedAtOnce = false;
        bool nested = false;
        QVERIFY(pickWhileModal(1, [&] {
            // Ends a second modal loop, should the click start one.
            QTimer guard;
            guard.setSingleShot(true);
            connect(&guard, &QTimer::timeout, [&] {
                nested = true;
                dialog().hide();
            });
            guard.start(2000);
            // A click from behind the modal show: no second modal loop.
            KvxReport_cbCompensation_Click();
            returnedAtOnce = dialog().isVisible() && compensationDialog().shown;
            QTest::mouseClick(dialog().cmdOK(), Qt::LeftButton);
        }));
        QVERIFY(!nested);
        QVERIFY(returnedAtOnce);
        QVERIFY(!dialog().isVisible());
        QCOMPARE(compensated(1), QString("1.216 ohm"));
    }

    void theZblReportUpGetsTheColumn()
    {
        zblBasicReport().shown = true;
        zblBasicReport().lbResB(0) = QStringLiteral("2 mOhm");
        QVERIFY(pickWhileModal(1, [] { QTest::mouseClick(dialog().cmdOK(), Qt::LeftButton); }));
        QCOMPARE(compensated(1), QString());
        QCOMPARE(zblBasicReport().txtConbinedResistanceB(0), QString("2.432 mOhm"));
        QVERIFY(zblMirrors() >= 1);
    }
};

int main(int argc, char** argv)
{
    QuenbyApplication application(argc, argv);
    // The run's state, as the program's main makes it, before any window.
    quenby::Sessions sessions;
    quenby::installWindows(quenby::frmMain::instance());
    CompensationDialogTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "CompensationDialogTest.moc"

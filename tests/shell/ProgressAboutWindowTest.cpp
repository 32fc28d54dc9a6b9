// The busy window and the About window, offscreen.
#include "app/QuenbyApplication.h"
#include "app/Sessions.h"
#include "app/Wiring.h"
#include "app/frmMain.h"
#include "shell/model/AppState.h"
#include "shell/model/Platform.h"
#include "shell/model/ProgressAbout.h"
#include "shell/model/RuntimeError.h"
#include "shell/ui/AppIcon.h"
#include "shell/ui/frmAbout.h"
#include "shell/ui/frmProcessProgress.h"
#include "tests/support/TestFiles.h"

#include <QFrame>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTimer>
#include <QtTest>

#include <cmath>
#include <optional>

using namespace quenby;
using namespace quenby::testing;

namespace {

QuenbyApplication& app()
{
    return *static_cast<QuenbyApplication*>(QCoreApplication::instance());
}

// Twips to pixels at the test screen's dpi, for expectations written in the
// unit of the layout.
double twipsX(double twips)
{
    return twips * QGuiApplication::primaryScreen()->logicalDotsPerInchX() / 1440.0;
}
double twipsY(double twips)
{
    return twips * QGuiApplication::primaryScreen()->logicalDotsPerInchY() / 1440.0;
}

bool near(double a, double b)
{
    return std::abs(a - b) <= 1.0;
}

// What the close box does: close, then let Qt delete the window.
void unloadAbout()
{
    if (frmAbout::isLoaded())
        frmAbout::instance().close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

bool inRing(const QString& text)
{
    return QStringList({" ", ".", "..", "...", "...."}).contains(text);
}

} // namespace

class ProgressAboutWindowTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir programDir;
    std::optional<RuntimeError> caught;

    void writeLang(const QStringList& lines)
    {
        writeBytes(programDir.filePath("en.lng"), crlfLines(lines));
        appState().LangFilePath = AppPath() + pathSep() + "en.lng";
    }

private Q_SLOTS:
    void init()
    {
        QVERIFY(programDir.isValid());
        setAppPathOverride(programDir.path());
        caught.reset();
        app().setFatalHandler([this](const RuntimeError& e) { caught = e; });
        appState().ProcessInProgress = False16;
        writeLang({"nothing,here"});
    }

    void cleanup()
    {
        // No failure may have reached the top level during a test.
        QVERIFY2(!caught.has_value(), caught ? qPrintable(caught->text()) : "");
        app().setFatalHandler({});
        appState().ProcessInProgress = False16;
        appState().LangFilePath.clear();
        setAppPathOverride({});
    }

    // ---- frmProcessProgress ----

    void progressWindowHasItsControls()
    {
        frmProcessProgress& w = frmProcessProgress::instance();
        QCOMPARE(&w, &frmProcessProgress::instance());
        QCOMPARE(w.objectName(), QString("frmProcessProgress"));

        auto* status = w.findChild<QLabel*>("lbTexteStatus");
        QVERIFY(status);
        QCOMPARE(status->text(), QString("Process in Progress"));
        auto* dots = w.findChild<QLabel*>("lbPoint");
        QVERIFY(dots);
        QCOMPARE(dots->text(), QString("..."));
        auto* timer = w.findChild<QTimer*>("tmrProgress");
        QVERIFY(timer);
        QCOMPARE(timer->interval(), 50);
        QVERIFY(timer->isActive());
        QVERIFY(w.findChild<QPushButton*>("Command1"));
        for (const char* name : {"Line1", "Line2"}) {
            auto* line = w.findChild<QFrame*>(name);
            QVERIFY(line);
            QCOMPARE(line->frameShape(), QFrame::HLine);
        }
        QVERIFY(!w.isVisible()); // made on touch, not shown
    }

    void command1DoesNothing()
    {
        frmProcessProgress& w = frmProcessProgress::instance();
        w.show();
        w.lbPoint()->setText("..");
        appState().ProcessInProgress = False16;
        auto* button = w.findChild<QPushButton*>("Command1");
        QSignalSpy clicked(button, &QPushButton::clicked);
        button->click();
        QCOMPARE(clicked.count(), 1);
        QVERIFY(w.isVisible());
        QCOMPARE(w.lbPoint()->text(), QString(".."));
        QCOMPARE(w.lbTexteStatus()->text(), QString("Process in Progress"));
        w.hide();
    }

    void dotsStillWhileNoProcessRunsEvenWhenVisible()
    {
        frmProcessProgress& w = frmProcessProgress::instance();
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        w.lbPoint()->setText("..");
        appState().ProcessInProgress = False16;
        QSignalSpy ticks(w.tmrProgress(), &QTimer::timeout);
        QTRY_VERIFY(ticks.count() >= 4);              // the timer does tick...
        QCOMPARE(w.lbPoint()->text(), QString("..")); // ...and the dots stay
        w.hide();
    }

    void dotsMoveWhileHidden()
    {
        frmProcessProgress& w = frmProcessProgress::instance();
        w.hide();
        w.lbPoint()->setText(" ");
        appState().ProcessInProgress = True16;
        QTRY_VERIFY(w.lbPoint()->text() != " ");
        QVERIFY(inRing(w.lbPoint()->text()));
        QVERIFY(w.isHidden());
        appState().ProcessInProgress = False16;
    }

    void tickGoesRoundTheRing()
    {
        frmProcessProgress& w = frmProcessProgress::instance();
        appState().ProcessInProgress = True16;
        w.lbPoint()->setText(" ");
        QStringList seen;
        for (int i = 0; i < 6; ++i) {
            w.tmrProgress_Timer();
            seen << w.lbPoint()->text();
        }
        QCOMPARE(seen, QStringList({".", "..", "...", "....", " ", "."}));

        // A text that is not in the ring stays.
        w.lbPoint()->setText("Busy");
        w.tmrProgress_Timer();
        QCOMPARE(w.lbPoint()->text(), QString("Busy"));
        w.lbPoint()->setText(".....");
        w.tmrProgress_Timer();
        QCOMPARE(w.lbPoint()->text(), QString("....."));
    }

    void tickSetsTheTimerEnabledAgain()
    {
        frmProcessProgress& w = frmProcessProgress::instance();
        w.tmrProgress()->stop();
        w.tmrProgress_Timer();
        QVERIFY(w.tmrProgress()->isActive());
        QCOMPARE(w.tmrProgress()->interval(), 50);
    }

    void hidingKeepsTheWindow()
    {
        QPointer<frmProcessProgress> before = &frmProcessProgress::instance();
        before->show();
        before->lbPoint()->setText("....");
        before->hide();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!before.isNull());
        QCOMPARE(before.data(), &frmProcessProgress::instance());
        QCOMPARE(frmProcessProgress::instance().lbPoint()->text(), QString("....")); // kept
    }

    void progressTextsFromTheLanguage()
    {
        frmProcessProgress& w = frmProcessProgress::instance();
        writeLang({"frmProcessProgress.lbTexteStatus.Caption,Working, please wait "});
        w.setWindowIcon(QIcon());
        w.FillTextsProcessProgress();
        QCOMPARE(w.lbTexteStatus()->text(), QString("Working, please wait"));
        QVERIFY(!w.windowIcon().isNull());

        writeLang({"nothing,here"});
        w.FillTextsProcessProgress();
        QCOMPARE(w.lbTexteStatus()->text(), QString("frmProcessProgress.lbTexteStatus.Caption"));
    }

    void setPositionFormCentresOnTheMainWindow()
    {
        frmMain& main = frmMain::instance();
        frmProcessProgress& w = frmProcessProgress::instance();
        const QRect mainBefore = main.geometry();

        // The place is the centring rule's, taken on the frames in twips: 15
        // to a pixel at the offscreen screen's 96 dpi.
        QCOMPARE(QGuiApplication::primaryScreen()->logicalDotsPerInchX(), 96.0);
        QCOMPARE(QGuiApplication::primaryScreen()->logicalDotsPerInchY(), 96.0);
        main.setGeometry(100, 100, 640, 420);
        w.SetPositionForm();
        const auto twips = [](const QRect& r) {
            return TwipsRect{r.x() * 15.0, r.y() * 15.0, r.width() * 15.0, r.height() * 15.0};
        };
        const FormPosition p =
            centredFormPosition(twips(main.frameGeometry()), twips(w.frameGeometry()));
        QCOMPARE(w.pos(), QPoint(qRound(p.left / 15.0), qRound(p.top / 15.0)));

        // Wherever the main window stands, the centres meet to a pixel.
        for (const QRect& r : {QRect(100, 100, 640, 420), QRect(-500, 40, 801, 533),
                               QRect(1200, 700, 500, 300), QRect(0, 0, 331, 121)}) {
            main.setGeometry(r);
            w.SetPositionForm();
            const QPointF a = QRectF(main.frameGeometry()).center();
            const QPointF b = QRectF(w.frameGeometry()).center();
            QVERIFY2(
                near(a.x(), b.x()) && near(a.y(), b.y()),
                qPrintable(
                    QString("main %1,%2 own %3,%4").arg(a.x()).arg(a.y()).arg(b.x()).arg(b.y())));
        }
        main.setGeometry(mainBefore);
    }

    void setPositionFormOverflowsBeyondSixteenBits()
    {
        frmMain& main = frmMain::instance();
        frmProcessProgress& w = frmProcessProgress::instance();
        const QRect mainBefore = main.geometry();
        main.setGeometry(100, 100, 640, 420);
        w.SetPositionForm();
        const QPoint placed = w.pos();

        // A main window just beyond 32767 twips to the right: 2195 pixels at 96 dpi.
        const int beyond = static_cast<int>(
            std::ceil(32768.0 * QGuiApplication::primaryScreen()->logicalDotsPerInchX() / 1440.0));
        main.move(beyond + 10, 100);
        int number = 0;
        try {
            w.SetPositionForm();
        } catch (const RuntimeError& e) {
            number = e.number();
        }
        QCOMPARE(number, err::Overflow);
        QCOMPARE(number, 6);
        QCOMPARE(w.pos(), placed); // the window was not moved
        main.setGeometry(mainBefore);
    }

    // ---- frmAbout ----

    void aboutWindowHasItsControlsAndDefaults()
    {
        unloadAbout();
        QVERIFY(!frmAbout::isLoaded());
        frmAbout& w = frmAbout::instance();
        QVERIFY(frmAbout::isLoaded());
        QCOMPARE(&w, &frmAbout::instance());
        QVERIFY(!w.isVisible()); // a touch loads it without showing it

        auto* pic = w.findChild<QLabel*>("picLogo");
        QVERIFY(pic);
        // The logo is drawn when the window is first shown or its box asked for.
        QVERIFY(pic->pixmap().isNull());
        QCOMPARE(pic->size(), productLogoSize(pic->width()));
        QCOMPARE(w.picLogo(), pic);
        QVERIFY(!pic->pixmap().isNull());
        auto* company = w.findChild<QLabel*>("lblOrvaneCompany");
        QVERIFY(company);
        QCOMPARE(company->text(), QString("Orvane inc."));
        auto* address = w.findChild<QPlainTextEdit*>("lbAddress");
        QVERIFY(address);
        QVERIFY(address->isReadOnly());
        QCOMPARE(address->toPlainText(), QString());
        auto* version = w.findChild<QLabel*>("lbSoftwareVersion");
        QVERIFY(version);
        QCOMPARE(version->text(), QString("Software version:"));
        QVERIFY(w.testAttribute(Qt::WA_DeleteOnClose));
    }

    void applicationIconIsDrawnAtTheSizeAskedFor()
    {
        const QIcon icon = applicationIcon();
        QCOMPARE(icon.availableSizes(),
                 (QList<QSize>{{16, 16}, {24, 24}, {32, 32}, {48, 48}, {64, 64}}));
        for (int side : {16, 64, 256}) {
            const QImage drawn = icon.pixmap(side, side).toImage();
            QCOMPARE(drawn.size(), QSize(side, side));
            // The corners are clear, the rounded square is not.
            QCOMPARE(qAlpha(drawn.pixel(0, 0)), 0);
            QVERIFY(qAlpha(drawn.pixel(side / 2, side - 2)) > 0);
        }
    }

    void aboutShowsTheProductLogo()
    {
        frmAbout& w = frmAbout::instance();
        const QImage expected = productLogo(w.picLogo()->width()).toImage();
        const QImage shown = w.picLogo()->grab().toImage().convertToFormat(expected.format());
        QCOMPARE(shown.size(), expected.size());
        QCOMPARE(shown, expected);
    }

    void aboutLoadStacksTheControls()
    {
        unloadAbout();
        frmAbout& w = frmAbout::instance();
        const QRect pic = w.picLogo()->geometry();
        const QRect company = w.lblOrvaneCompany()->geometry();
        const QRect address = w.lbAddress()->geometry();
        const QRect version = w.lbSoftwareVersion()->geometry();

        // Each text 200 twips under the one above, at the picture's design left.
        QVERIFY(near(company.y(), pic.y() + pic.height() + twipsY(200)));
        QVERIFY(near(address.y(), company.y() + company.height() + twipsY(200)));
        QVERIFY(near(version.y(), address.y() + address.height() + twipsY(200)));
        QCOMPARE(address.x(), company.x());
        QCOMPARE(version.x(), company.x());
        // 200 + 567 twips under the last text.
        QVERIFY(near(w.height(), version.y() + version.height() + twipsY(767)));
        // The texts are the widest here: half of 567 twips beside them.
        QVERIFY(near(w.width(), address.x() + address.width() + twipsX(283.5)));
        // The picture centred.
        QVERIFY(near(2 * pic.x() + pic.width(), w.width()));
        QVERIFY(pic.x() > company.x());
    }

    void aboutWidthFollowsTheWidestControl()
    {
        unloadAbout();
        frmAbout& w = frmAbout::instance();
        const int left = w.lbAddress()->x();
        // The load step runs on the designed places, where the picture shares
        // the texts' left; each run below starts from there again.
        const auto reload = [&w, left] {
            w.picLogo()->move(left, w.picLogo()->y());
            w.Form_Load();
        };

        // A wider address box widens the window.
        w.lbAddress()->resize(600, w.lbAddress()->height());
        reload();
        QVERIFY(near(w.width(), left + 600 + twipsX(283.5)));
        QVERIFY(near(2 * w.picLogo()->x() + w.picLogo()->width(), w.width()));

        // The widest text decides, whichever it is.
        w.lbAddress()->resize(100, w.lbAddress()->height());
        w.lbSoftwareVersion()->resize(450, w.lbSoftwareVersion()->height());
        reload();
        QVERIFY(near(w.width(), left + 450 + twipsX(283.5)));
        QVERIFY(near(2 * w.picLogo()->x() + w.picLogo()->width(), w.width()));

        w.lbSoftwareVersion()->resize(100, w.lbSoftwareVersion()->height());
        w.lblOrvaneCompany()->resize(520, w.lblOrvaneCompany()->height());
        reload();
        QVERIFY(near(w.width(), left + 520 + twipsX(283.5)));
        QVERIFY(near(2 * w.picLogo()->x() + w.picLogo()->width(), w.width()));

        // Narrow texts leave the picture the widest: its design margin on both
        // sides, so it keeps that left.
        w.lblOrvaneCompany()->resize(40, w.lblOrvaneCompany()->height());
        reload();
        QVERIFY(near(w.width(), 2 * left + w.picLogo()->width()));
        QCOMPARE(w.picLogo()->x(), left);
        unloadAbout();
    }

    void aboutTextsFromALanguageFile()
    {
        unloadAbout();
        writeLang({"frmAbout.Caption,About Quenby",
                   "frmAbout.lbSoftwareVersion.Caption,Program version: ",
                   "frmAbout.lbAddress,Orvane inc.\\n1200 Example Road\\nTenville\\nTel. 555 0100",
                   "frmAbout.lblOrvaneCompany,Orvane Instruments"});
        frmAbout& w = frmAbout::instance();
        const QSize laidOut = w.size();
        const QRect picture = w.picLogo()->geometry();
        w.setWindowIcon(QIcon());
        w.FillTextsAbout();

        QCOMPARE(w.windowTitle(), QString("About Quenby"));
        QCOMPARE(w.lbSoftwareVersion()->text(), QString("Program version: 3.13.1"));
        QCOMPARE(w.lblOrvaneCompany()->text(), QString("Orvane Instruments"));
        QVERIFY(!w.windowIcon().isNull());

        // The backslash-n of the file are line breaks in the text box.
        const QTextDocument* doc = w.lbAddress()->document();
        QCOMPARE(doc->blockCount(), 4);
        QStringList lines;
        for (QTextBlock b = doc->begin(); b.isValid(); b = b.next())
            lines << b.text();
        QCOMPARE(lines,
                 QStringList({"Orvane inc.", "1200 Example Road", "Tenville", "Tel. 555 0100"}));
        QVERIFY(!w.lbAddress()->toPlainText().contains('\r'));

        // A language change fills the texts without laying the window out again.
        QCOMPARE(w.size(), laidOut);
        QCOMPARE(w.picLogo()->geometry(), picture);
    }

    void aboutMissingKeysShowTheKeys()
    {
        unloadAbout();
        writeLang({"nothing,here"});
        frmAbout& w = frmAbout::instance();
        w.FillTextsAbout();
        QCOMPARE(w.windowTitle(), QString("frmAbout.Caption"));
        QCOMPARE(w.lbSoftwareVersion()->text(),
                 QString("frmAbout.lbSoftwareVersion.Caption 3.13.1"));
        QCOMPARE(w.lbAddress()->toPlainText(), QString("frmAbout.lbAddress"));
        QCOMPARE(w.lblOrvaneCompany()->text(), QString("frmAbout.lblOrvaneCompany"));
    }

    void aboutShowsWithoutBeingModal()
    {
        unloadAbout();
        mnuAbout_Click();
        frmAbout& w = frmAbout::instance();
        QVERIFY(w.isVisible());
        QVERIFY(!w.isModal());
        QCOMPARE(w.windowModality(), Qt::NonModal);
        QVERIFY(QApplication::activeModalWidget() == nullptr);
        // Showing it again keeps the same window.
        QPointer<frmAbout> shown = &w;
        mnuAbout_Click();
        QCOMPARE(&frmAbout::instance(), shown.data());
        unloadAbout();
    }

    void hidingTheAboutWindowDoesNotUnloadIt()
    {
        unloadAbout();
        QPointer<frmAbout> w = &frmAbout::instance();
        w->show();
        w->lblOrvaneCompany()->setText("changed");
        w->hide();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!w.isNull());
        QVERIFY(frmAbout::isLoaded());
        QCOMPARE(frmAbout::instance().lblOrvaneCompany()->text(), QString("changed"));
        unloadAbout();
    }

    void closeBoxUnloadsAndTheNextTouchShowsDefaults()
    {
        unloadAbout();
        writeLang({"frmAbout.Caption,About Quenby",
                   "frmAbout.lbSoftwareVersion.Caption,Program version:",
                   "frmAbout.lbAddress,Line one\\nLine two",
                   "frmAbout.lblOrvaneCompany,Orvane Instruments"});
        mnuAbout_Click();
        QPointer<frmAbout> first = &frmAbout::instance();
        first->FillTextsAbout();
        QCOMPARE(first->lblOrvaneCompany()->text(), QString("Orvane Instruments"));

        QVERIFY(first->close());
        // Unloaded at once: the next touch makes a new window even before Qt
        // has deleted the old one.
        QVERIFY(!frmAbout::isLoaded());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(first.isNull());

        mnuAbout_Click();
        frmAbout& second = frmAbout::instance();
        QVERIFY(second.isVisible());
        QCOMPARE(second.windowTitle(), QString("About"));
        QCOMPARE(second.lblOrvaneCompany()->text(), QString("Orvane inc."));
        QCOMPARE(second.lbSoftwareVersion()->text(), QString("Software version:"));
        QCOMPARE(second.lbAddress()->toPlainText(), QString());
        // Laid out again by its load step.
        QVERIFY(near(2 * second.picLogo()->x() + second.picLogo()->width(), second.width()));

        // The next language fill reaches the new window.
        second.FillTextsAbout();
        QCOMPARE(second.lbAddress()->toPlainText(), QString("Line one\nLine two"));
        unloadAbout();
    }
};

int main(int argc, char** argv)
{
    QuenbyApplication application(argc, argv);
    // The run's state, as the program's main makes it, before any window.
    quenby::Sessions sessions;
    quenby::installWindows(quenby::frmMain::instance());
    ProgressAboutWindowTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ProgressAboutWindowTest.moc"

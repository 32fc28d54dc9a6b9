// The Company Logo command from the main menu to the reports, offscreen: the
// picture chosen becomes the logo bitmap, sized to keep its proportions, the
// success message comes, and the report windows load the logo again.
#include "app/model/CompanyLogo.h"
#include "app/QuenbyApplication.h"
#include "app/Sessions.h"
#include "app/Wiring.h"
#include "app/frmMain.h"
#include "kvx/model/KvxReportView.h"
#include "kvx/ui/frmKVXCondensedReport.h"
#include "localisation/model/LanguageLookup.h"
#include "logo/model/BilinearResize.h"
#include "logo/model/LogoSession.h"
#include "logo/ui/frmProcessLogo.h"
#include "logo/ui/frmResizeLogo.h"
#include "shell/model/AppState.h"
#include "shell/model/DataFolders.h"
#include "shell/model/Platform.h"
#include "shell/model/Twips.h"
#include "tests/support/ScriptedServices.h"
#include "tests/support/TestFiles.h"
#include "zbl/ui/frmPrintVGraph.h"
#include "zbl/ui/frmPrintZBLBasicReport.h"
#include "zbl/ui/frmZBLBasicReport.h"
#include "zbl/ui/frmZBLVGraph.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QtTest>

#include <optional>
#include <vector>

using namespace quenby;
using namespace quenby::testing;

class CompanyLogoTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir programDir;
    QTemporaryDir pictures;
    std::optional<ScriptedServices> scripted;

    // A picture of one colour, saved in a format of its own.
    QString picture(const char* name, int width, int height, QColor colour)
    {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(colour);
        const QString path = pictures.filePath(QString::fromLatin1(name));
        if (!image.save(path))
            return {};
        return path;
    }

    static QImage savedLogo() { return QImage(LogoFilePath()); }

    static bool hasPicture(const QLabel* label) { return label && !label->pixmap().isNull(); }

    static std::vector<LogoTarget*> allTargets()
    {
        return {&frmKVXCondensedReport::instance().logoTarget(),
                &frmZBLBasicReport::instance().logoTarget(), &frmZBLVGraph::instance().logoTarget(),
                &frmPrintZBLBasicReport::instance().logoTarget(),
                &frmPrintVGraph::instance().logoTarget()};
    }

private Q_SLOTS:
    void init()
    {
        setAppPathOverride(programDir.path());
        QFile::remove(programDir.filePath(QStringLiteral("en.lng")));
        QVERIFY(QFile::copy(langSourcePath("en.lng"), programDir.filePath("en.lng")));
        appState().LangFilePath = programDir.filePath(QStringLiteral("en.lng"));
        QFile::remove(LogoFilePath());
        scripted.emplace();
        for (LogoTarget* target : madeLogoTargets())
            target->imgLogo().clear();
    }

    void cleanup()
    {
        scripted.reset();
        setAppPathOverride({});
    }

    // Runs first: no paper twin has been made yet.
    void aPaperTwinMadeWhenTheLogoExistsTakesItAtItsLoad()
    {
        QVERIFY(!frmPrintZBLBasicReport::existing());
        QVERIFY(!frmPrintVGraph::existing());
        QVERIFY(frmResizeLogo::instance().loadLogoImage(picture("first.png", 80, 40, Qt::red)));
        QVERIFY(hasPicture(&frmPrintZBLBasicReport::instance().logoTarget().imgLogo()));
        QVERIFY(hasPicture(&frmPrintVGraph::instance().logoTarget().imgLogo()));
        // The logo stands in the head of the print-out's first page.
        QCOMPARE(
            frmPrintZBLBasicReport::instance().logoTarget().imgLogo().parentWidget()->objectName(),
            QString("frHeaderPrint"));
    }

    void aWidePictureKeepsTheWidthOfTheBoxAndItsProportions()
    {
        // 400 x 200: r = 2, so the bitmap is 1960 wide and 1960 / 2 high.
        QVERIFY(frmResizeLogo::instance().loadLogoImage(picture("wide.png", 400, 200, Qt::red)));
        const QImage logo = savedLogo();
        QCOMPARE(logo.size(), QSize(1960, 980));
        QCOMPARE(QColor(logo.pixel(980, 490)), QColor(Qt::red));
        QCOMPARE(LogoFilePath(), programDir.path() + pathSep() + "logo.bmp");
    }

    void aTallPictureIsNotStretchedWiderThanItIs()
    {
        // 100 x 300: r = 1/3, below 1.05; the width from the box's height
        // (980 / 3 = 327) is more than the picture's own 100, which limits it.
        QVERIFY(frmResizeLogo::instance().loadLogoImage(picture("tall.jpg", 100, 300, Qt::blue)));
        QCOMPARE(savedLogo().size(), QSize(100, 300));
    }

    void aPictureThatCannotBeReadWritesNothing()
    {
        const QString path = pictures.filePath(QStringLiteral("broken.bmp"));
        QFile broken(path);
        QVERIFY(broken.open(QIODevice::WriteOnly));
        broken.write("BM not a bitmap");
        broken.close();
        QVERIFY(!frmResizeLogo::instance().loadLogoImage(path));
        QVERIFY(!QFile::exists(LogoFilePath()));
    }

    void theCommandMakesTheLogoSaysSoAndPutsItOnTheReports()
    {
        scripted->files.answers.push_back(picture("logo.gif.png", 300, 120, Qt::darkGreen));
        mnCLogo_Click();

        QVERIFY(QFile::exists(LogoFilePath()));
        QCOMPARE(scripted->messages.shown.size(), std::size_t(1));
        const QString success = FindKeyInLanguageFile(
            "frmProcessLogo.lbMsgSucces.Caption", programDir.filePath(QStringLiteral("en.lng")));
        QVERIFY(!success.isEmpty());
        QCOMPARE(scripted->messages.shown[0].text, success);
        QCOMPARE(scripted->messages.shown[0].title, success);
        QCOMPARE(scripted->messages.shown[0].icon, MsgIcon::Exclamation);
        // A report page made after the command takes the logo with it.
        QVERIFY(!frmZBLBasicReport::instance().controlsMade());
        QVERIFY(hasPicture(frmKVXCondensedReport::instance().imgLogo()));
        QVERIFY(hasPicture(frmZBLBasicReport::instance().frResistance()->findChild<QLabel*>(
            QStringLiteral("imgLogo"))));
        QVERIFY(frmResizeLogo::instance().isHidden());
    }

    void theLogoStandsCentredOverEachWindowsHeadLabelAtItsShownSize()
    {
        // Both paper twins are made before the command: the logo goes on all
        // five windows.
        frmPrintZBLBasicReport::instance();
        frmPrintVGraph::instance();
        // 300 x 120 becomes a bitmap of 1960 x 784: its longer side is shown
        // at 1080 twips, its height at 1080 / 2.5 = 432.
        scripted->files.answers.push_back(picture("banner.png", 300, 120, Qt::darkBlue));
        mnCLogo_Click();
        QCOMPARE(processLogo().LogoRatio, 2.5);
        QCOMPARE(processLogo().LogoShownWidth, 1080.0);
        QCOMPARE(processLogo().LogoShownHeight, 432.0);
        const QSize shown(pixelsOfTwips(1080), pixelsOfTwips(432));
        for (LogoTarget* target : allTargets()) {
            const QLabel& box = target->imgLogo();
            QVERIFY2(hasPicture(&box), qPrintable(box.window()->objectName()));
            QCOMPARE(box.size(), shown);
            QCOMPARE(box.pixmap().size(), shown);
            const QRect head = target->logoHeadLabel();
            QCOMPARE(box.x(), head.left() + head.width() / 2 - shown.width() / 2);
            QCOMPARE(box.y(), head.top());
        }
        // With QUENBY_PICTURES_DIR set, the windows are saved there with their
        // logo.
        if (const QString folder = qEnvironmentVariable("QUENBY_PICTURES_DIR"); !folder.isEmpty())
            for (LogoTarget* target : allTargets()) {
                QWidget* window = target->imgLogo().window();
                QVERIFY(window->grab().save(
                    QDir(folder).filePath(window->objectName() + QStringLiteral("-logo.png"))));
            }
    }

    void aSquareLogoFillsTheWholeBox()
    {
        QVERIFY(frmResizeLogo::instance().loadLogoImage(picture("square.png", 50, 50, Qt::red)));
        frmProcessLogo::instance().loadAndFit(1560, 240);
        QCOMPARE(processLogo().LogoShownWidth, 1080.0);
        QCOMPARE(processLogo().LogoShownHeight, 1080.0);
        QCOMPARE(frmZBLBasicReport::instance().logoTarget().imgLogo().size(),
                 QSize(pixelsOfTwips(1080), pixelsOfTwips(1080)));
    }

    void theBitmapIsReadOnceWhileItsFileStaysAsItIs()
    {
        QVERIFY(frmResizeLogo::instance().loadLogoImage(picture("once.png", 80, 40, Qt::red)));
        frmProcessLogo& processing = frmProcessLogo::instance();
        processing.loadAndFit(1560, 240);
        const qint64 read = processing.sourcePicture().cacheKey();
        processing.loadAndFit(1560, 240);
        QCOMPARE(processing.sourcePicture().cacheKey(), read);
        // A bitmap put there by hand is read again.
        QImage replaced(100, 100, QImage::Format_RGB32);
        replaced.fill(Qt::blue);
        QVERIFY(replaced.save(LogoFilePath(), "BMP"));
        processing.loadAndFit(1560, 240);
        QCOMPARE(processing.sourcePicture().size(), QSize(100, 100));
        QCOMPARE(QColor(processing.sourcePicture().pixel(50, 50)), QColor(Qt::blue));
        // So is one the Company Logo command makes.
        QVERIFY(frmResizeLogo::instance().loadLogoImage(picture("again.png", 80, 40, Qt::green)));
        processing.loadAndFit(1560, 240);
        QCOMPARE(QColor(processing.sourcePicture().pixel(10, 10)), QColor(Qt::green));
    }

    void processingMeasuresTheBitmapAndShowsItsMeasures()
    {
        QVERIFY(frmResizeLogo::instance().loadLogoImage(picture("wide.bmp", 400, 100, Qt::red)));
        frmProcessLogo& w = frmProcessLogo::instance();
        QVERIFY(w.cmdLoad());
        // 1960 x 490 pixels, in twips at 96 to the inch.
        QCOMPARE(processLogo().LogoWidth, 29400.0);
        QCOMPARE(processLogo().LogoHeight, 7350.0);
        QCOMPARE(processLogo().Margin, Int16(2500));
        QCOMPARE(w.findChild<QLabel*>("Label1")->text(), QString("Width: 29400"));
        QCOMPARE(w.findChild<QLabel*>("Label2")->text(), QString("Height: 7350"));
        QCOMPARE(w.findChild<QLabel*>("Label3")->text(), QString("Ratio: 4"));
        QVERIFY(w.findChild<QLabel*>("Image1")->isHidden());

        // cmdProcess: stretched images, the logo fitted at the preview's place.
        w.cmdProcess();
        QVERIFY(w.findChild<QLabel*>("Image1")->hasScaledContents());
        const QRect image1 = w.findChild<QLabel*>("Image1")->geometry();
        QCOMPARE(image1.width(), pixelsOfTwips(1080));
        QCOMPARE(image1.top(), pixelsOfTwips(120 + 540 - 270 / 2.0));
        QVERIFY(hasPicture(&frmZBLVGraph::instance().logoTarget().imgLogo()));
    }

    void processingResamplesTheBitmapToTheSizeOfItsTextBoxes()
    {
        QVERIFY(frmResizeLogo::instance().loadLogoImage(picture("two.png", 64, 32, Qt::green)));
        frmProcessLogo& w = frmProcessLogo::instance();
        QVERIFY(w.cmdLoad());
        const QImage source = w.sourcePicture();
        w.findChild<QLineEdit*>("txtWidth")->setText("40");
        w.findChild<QLineEdit*>("txtHeight")->setText("16 px");
        QVERIFY(w.cmdProcess2());
        QVERIFY(!w.findChild<QLabel*>("Image1")->hasScaledContents());
        QCOMPARE(w.findChild<QLabel*>("dstPicture")->size(), QSize(42, 18));
        const QImage saved = savedLogo().convertToFormat(QImage::Format_RGB32);
        QCOMPARE(saved, ResizeImageBilinear(source, 40, 16));

        // "abc" is a height of 2.0: the border alone, no picture, nothing
        // written.
        QFile::remove(LogoFilePath());
        w.findChild<QLineEdit*>("txtHeight")->setText("abc");
        QVERIFY(!w.cmdProcess2());
        QCOMPARE(w.findChild<QLabel*>("dstPicture")->height(), 2);
        QVERIFY(!QFile::exists(LogoFilePath()));
        w.findChild<QLineEdit*>("txtWidth")->setText("1960");
        w.findChild<QLineEdit*>("txtHeight")->setText("1960");
    }

    void anUnreadableLogoFileStopsAtTheLoad()
    {
        QFile broken(LogoFilePath());
        QVERIFY(broken.open(QIODevice::WriteOnly));
        broken.write("BM broken");
        broken.close();
        frmProcessLogo::instance().loadAndFit(1560, 240);
        for (LogoTarget* target : allTargets())
            QVERIFY(!hasPicture(&target->imgLogo()));
        // A report's load with that file finds nothing to show either.
        KvxReport_Form_Load();
        QVERIFY(!hasPicture(frmKVXCondensedReport::instance().imgLogo()));
    }

    void aCancelledDialogChangesNothing()
    {
        mnCLogo_Click();
        QVERIFY(scripted->messages.shown.empty());
        QVERIFY(!QFile::exists(LogoFilePath()));
        QVERIFY(!hasPicture(frmKVXCondensedReport::instance().imgLogo()));
    }

    void anUnreadablePictureEndsTheCommandWithoutAWord()
    {
        const QString path = pictures.filePath(QStringLiteral("empty.jpg"));
        QFile empty(path);
        QVERIFY(empty.open(QIODevice::WriteOnly));
        empty.close();
        scripted->files.answers.push_back(path);
        mnCLogo_Click();
        QVERIFY(scripted->messages.shown.empty());
        QVERIFY(!QFile::exists(LogoFilePath()));
    }
};

int main(int argc, char** argv)
{
    QuenbyApplication app(argc, argv);
    quenby::Sessions sessions;
    quenby::installWindows(quenby::frmMain::instance());
    CompanyLogoTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "CompanyLogoTest.moc"

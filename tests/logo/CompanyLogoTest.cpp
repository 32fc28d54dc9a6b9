// The Company Logo command from the main menu to the reports, offscreen: the
// picture chosen becomes the logo bitmap, sized to keep its proportions, the
// success message comes, and the report windows load the logo again.
#include "app/model/CompanyLogo.h"
#include "app/QuenbyApplication.h"
#include "app/Sessions.h"
#include "app/Wiring.h"
#include "app/frmMain.h"
#include "kvx/ui/frmKVXCondensedReport.h"
#include "localisation/model/LanguageLookup.h"
#include "logo/ui/frmResizeLogo.h"
#include "shell/model/AppState.h"
#include "shell/model/DataFolders.h"
#include "shell/model/Platform.h"
#include "tests/support/ScriptedServices.h"
#include "tests/support/TestFiles.h"
#include "zbl/ui/frmZBLBasicReport.h"

#include <QColor>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QTemporaryDir>
#include <QtTest>

#include <optional>

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

private Q_SLOTS:
    void init()
    {
        setAppPathOverride(programDir.path());
        QFile::remove(programDir.filePath(QStringLiteral("en.lng")));
        QVERIFY(QFile::copy(langSourcePath("en.lng"), programDir.filePath("en.lng")));
        appState().LangFilePath = programDir.filePath(QStringLiteral("en.lng"));
        QFile::remove(LogoFilePath());
        scripted.emplace();
        frmKVXCondensedReport::instance().imgLogo()->clear();
        frmZBLBasicReport::instance().findChild<QLabel*>(QStringLiteral("imgLogo"))->clear();
    }

    void cleanup()
    {
        scripted.reset();
        setAppPathOverride({});
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
        QVERIFY(hasPicture(frmKVXCondensedReport::instance().imgLogo()));
        QVERIFY(hasPicture(
            frmZBLBasicReport::instance().findChild<QLabel*>(QStringLiteral("imgLogo"))));
        QVERIFY(frmResizeLogo::instance().isHidden());
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

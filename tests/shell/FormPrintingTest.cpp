// The printer dialog behind its service and the printing of a window as a
// form: a small form with texts, a chart and a logo goes through the scripted
// printer into a PDF file, which poppler's tools then read back.
#include "shell/model/Services.h"
#include "shell/model/Session.h"
#include "shell/ui/FormPrinter.h"
#include "shell/ui/FormSize.h"
#include "shell/ui/PrintPages.h"
#include "tests/support/PdfReadBack.h"
#include "tests/support/ScriptedServices.h"

#include <QChart>
#include <QChartView>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QFrame>
#include <QImage>
#include <QLabel>
#include <QLineSeries>
#include <QPixmap>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QValueAxis>
#include <QtTest>

#include <cmath>
#include <memory>

using namespace quenby;
using namespace quenby::testing;

namespace {

constexpr int LogoWidth = 120;
constexpr int LogoHeight = 60;

// A print window the size of a report page, as the reports build theirs:
// white paper, texts at fixed places, a chart and a logo.
struct SmallForm
{
    SmallForm()
    {
        form.setAutoFillBackground(true);
        QPalette paper = form.palette();
        paper.setColor(QPalette::Window, Qt::white);
        form.setPalette(paper);
        SetFormClientSize(form, 8.5f, 8.8f);

        QImage logoImage(LogoWidth, LogoHeight, QImage::Format_RGB32);
        for (int y = 0; y < LogoHeight; ++y) {
            for (int x = 0; x < LogoWidth; ++x)
                logoImage.setPixel(x, y, qRgb(x * 2, y * 4, 128));
        }
        logo = new QLabel(&form);
        logo->setPixmap(QPixmap::fromImage(logoImage));
        logo->setGeometry(20, 20, LogoWidth, LogoHeight);

        company = new QLabel(QStringLiteral("CompanyAcme"), &form);
        company->setGeometry(200, 30, 300, 24);
        station = new QLabel(QStringLiteral("StationNorth"), &form);
        station->setGeometry(form.width() / 2 + 40, 30, 250, 24);
        screenOnly = new QLabel(QStringLiteral("ScreenOnlyCursor"), &form);
        screenOnly->setGeometry(200, 60, 300, 24);
        screenOnly->hide();

        auto* series = new QLineSeries;
        for (int i = 0; i <= 40; ++i)
            series->append(i, std::sqrt(double(i)));
        series->setPen(QPen(QColor(255, 0, 0), 3));
        auto* chart = new QChart;
        chart->legend()->hide();
        chart->addSeries(series);
        auto* axisX = new QValueAxis;
        axisX->setTitleText(QStringLiteral("CurrentAmps"));
        auto* axisY = new QValueAxis;
        axisY->setTitleText(QStringLiteral("VoltsAxis"));
        chart->addAxis(axisX, Qt::AlignBottom);
        chart->addAxis(axisY, Qt::AlignLeft);
        series->attachAxis(axisX);
        series->attachAxis(axisY);
        chartView = new QChartView(chart, &form);
        chartView->setGeometry(40, 120, 600, 360);

        auto* hiddenChart = new QChart;
        auto* hiddenAxis = new QValueAxis;
        hiddenAxis->setTitleText(QStringLiteral("HiddenChartAxis"));
        hiddenChart->addAxis(hiddenAxis, Qt::AlignBottom);
        hiddenChartView = new QChartView(hiddenChart, &form);
        hiddenChartView->setGeometry(40, 500, 300, 200);
        hiddenChartView->hide();
    }

    QWidget form;
    QLabel* logo = nullptr;
    QLabel* company = nullptr;
    QLabel* station = nullptr;
    QLabel* screenOnly = nullptr;
    QChartView* chartView = nullptr;
    QChartView* hiddenChartView = nullptr;
};

// The lines of a poppler listing below its two head lines.
QStringList listing(const ToolRun& run)
{
    QStringList lines = run.output.split(u'\n', Qt::SkipEmptyParts);
    return lines.mid(2);
}

// What a report's print command does: the dialog, then each copy of the page.
PrintAnswer printCopies(QWidget& form, const PrintRequest& request)
{
    const PrintAnswer answer = showPrinterDialog(request);
    std::unique_ptr<PrintPages> pages = openPrintPages(answer);
    if (!pages || !pages->begin())
        return answer;
    for (int copy = 1; copy <= answer.copies; ++copy) {
        if (copy > 1)
            pages->newPage();
        printForm(form, *pages);
    }
    pages->end();
    return answer;
}

} // namespace

class FormPrintingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_services = std::make_unique<OwnedSession<Services>>();
        m_scripted = std::make_unique<ScriptedServices>();
        QVERIFY(m_dir.isValid());
        m_pdf = m_dir.filePath(QStringLiteral("page.pdf"));
        QFile::remove(m_pdf);
        m_scripted->printer.pdfFile = m_pdf;
    }

    void cleanup()
    {
        m_scripted.reset();
        m_services.reset();
    }

    void clientSizeOfAPlainWindowIsThePaper()
    {
        QWidget window;
        window.resize(300, 200);
        SetFormClientSize(window, 8.5f, 8.8f);
        QCOMPARE(window.width(), int(std::lround(8.5 * window.logicalDpiX())));
        QCOMPARE(window.height(), int(std::lround(8.8 * window.logicalDpiY())));
    }

    void thickFrameStaysOutOfTheClientSize()
    {
        QFrame window;
        window.setFrameStyle(QFrame::Box | QFrame::Plain);
        window.setLineWidth(12);
        window.resize(300, 200);
        QCOMPARE(window.width() - window.contentsRect().width(), 24);
        SetFormClientSize(window, 8.5f, 8.8f);
        const int clientWidth = int(std::lround(8.5 * window.logicalDpiX()));
        const int clientHeight = int(std::lround(8.8 * window.logicalDpiY()));
        QCOMPARE(window.contentsRect().width(), clientWidth);
        QCOMPARE(window.contentsRect().height(), clientHeight);
        QCOMPARE(window.width(), clientWidth + 24);
        QCOMPARE(window.height(), clientHeight + 24);
        // Sizing again changes nothing: the frame is not counted twice.
        SetFormClientSize(window, 8.5f, 8.8f);
        QCOMPARE(window.width(), clientWidth + 24);
    }

    void formPrintsAsVectorPage()
    {
        SmallForm small;
        m_scripted->printer.answers.push_back({false, 1, 0, 0, {}});
        QElapsedTimer timer;
        timer.start();
        const PrintAnswer answer = printCopies(small.form, {1, 0, 0, 9999});
        const qint64 ms = timer.elapsed();
        QVERIFY(!answer.cancelled);
        QVERIFY(QFileInfo::exists(m_pdf));
        const qint64 size = QFileInfo(m_pdf).size();
        qInfo("one page: %lld ms, %lld bytes", ms, size);
        QVERIFY2(size < 100 * 1024, qPrintable(QString::number(size)));

        QCOMPARE(pdfPages(m_pdf), 1);

        const QString text = pdfText(m_pdf, 1);
        QVERIFY2(text.contains(QStringLiteral("CompanyAcme")), qPrintable(text));
        QVERIFY2(text.contains(QStringLiteral("StationNorth")), qPrintable(text));
        // The chart's titles are texts too: the chart was drawn as a chart.
        QVERIFY2(text.contains(QStringLiteral("CurrentAmps")), qPrintable(text));
        QVERIFY2(text.contains(QStringLiteral("VoltsAxis")), qPrintable(text));
        QVERIFY2(!text.contains(QStringLiteral("ScreenOnlyCursor")), qPrintable(text));
        QVERIFY2(!text.contains(QStringLiteral("HiddenChartAxis")), qPrintable(text));

        const ToolRun fonts = runTool(QStringLiteral("pdffonts"), {m_pdf});
        QCOMPARE(fonts.exitCode, 0);
        const QStringList fontLines = listing(fonts);
        QVERIFY2(!fontLines.isEmpty(), qPrintable(fonts.output));
        const QRegularExpression flags(
            QStringLiteral("\\s(yes|no)\\s+(yes|no)\\s+(yes|no)\\s+\\d+\\s+\\d+\\s*$"));
        for (const QString& line : fontLines) {
            const QRegularExpressionMatch m = flags.match(line);
            QVERIFY2(m.hasMatch() && m.captured(1) == QStringLiteral("yes"), qPrintable(line));
        }

        // The logo is the one picture of the page: the chart is no bitmap.
        const ToolRun images =
            runTool(QStringLiteral("pdfimages"), {QStringLiteral("-list"), m_pdf});
        QCOMPARE(images.exitCode, 0);
        const QStringList imageLines = listing(images);
        QCOMPARE(imageLines.size(), 1);
        const QStringList columns = imageLines.constFirst().simplified().split(u' ');
        QVERIFY2(columns.size() > 4, qPrintable(images.output));
        QCOMPARE(columns.at(3).toInt(), LogoWidth);
        QCOMPARE(columns.at(4).toInt(), LogoHeight);

        // The layout of the screen, scaled to the printable width: the second
        // label starts where its place in the form says, a quarter inch in.
        const ToolRun boxes = runTool(QStringLiteral("pdftotext"),
                                      {QStringLiteral("-bbox"), m_pdf, QStringLiteral("-")});
        const QRegularExpressionMatch word =
            QRegularExpression(
                QStringLiteral("xMin=\"([0-9.]+)\"[^>]*xMax=\"([0-9.]+)\"[^>]*>StationNorth<"))
                .match(boxes.output);
        QVERIFY2(word.hasMatch(), qPrintable(boxes.output));
        const double pointsPerFormPixel = (8.0 * 72) / small.form.width();
        const double left = 18 + small.station->x() * pointsPerFormPixel;
        QVERIFY2(
            std::abs(word.captured(1).toDouble() - left) < 4,
            qPrintable(word.captured(1) + QStringLiteral(" against ") + QString::number(left)));
        // The text keeps its size against the form: as wide as on the screen.
        const double width = small.station->fontMetrics().horizontalAdvance(small.station->text()) *
                             pointsPerFormPixel;
        const double printedWidth = word.captured(2).toDouble() - word.captured(1).toDouble();
        QVERIFY2(std::abs(printedWidth - width) < width * 0.1,
                 qPrintable(QString::number(printedWidth) + QStringLiteral(" against ") +
                            QString::number(width)));

        // The series is on the page, in its red, inside the chart's place.
        const QString png = m_dir.filePath(QStringLiteral("page"));
        QCOMPARE(runTool(QStringLiteral("pdftoppm"),
                         {QStringLiteral("-png"), QStringLiteral("-r"), QStringLiteral("50"),
                          QStringLiteral("-singlefile"), m_pdf, png})
                     .exitCode,
                 0);
        const QImage page(png + QStringLiteral(".png"));
        QVERIFY(!page.isNull());
        const double pixelsPerFormPixel = (8.0 * 50) / small.form.width();
        const QRect chartPlace(int(12.5 + small.chartView->x() * pixelsPerFormPixel),
                               int(12.5 + small.chartView->y() * pixelsPerFormPixel),
                               int(small.chartView->width() * pixelsPerFormPixel),
                               int(small.chartView->height() * pixelsPerFormPixel));
        int redInside = 0;
        int redOutside = 0;
        for (int y = 0; y < page.height(); ++y) {
            for (int x = 0; x < page.width(); ++x) {
                const QColor c = page.pixelColor(x, y);
                if (c.red() > 200 && c.green() < 90 && c.blue() < 90)
                    ++(chartPlace.contains(x, y) ? redInside : redOutside);
            }
        }
        QVERIFY2(redInside > 50, qPrintable(QString::number(redInside)));
        QCOMPARE(redOutside, 0);
    }

    void twoCopiesGiveTwoPages()
    {
        SmallForm small;
        m_scripted->printer.answers.push_back({false, 2, 0, 0, {}});
        const PrintAnswer answer = printCopies(small.form, {1, 0, 0, 9999});
        QCOMPARE(answer.copies, 2);
        QCOMPARE(pdfPages(m_pdf), 2);
        const QString first = pdfText(m_pdf, 1);
        QVERIFY(first.contains(QStringLiteral("CompanyAcme")));
        QCOMPARE(pdfText(m_pdf, 2), first);
        const ToolRun images =
            runTool(QStringLiteral("pdfimages"), {QStringLiteral("-list"), m_pdf});
        QCOMPARE(listing(images).size(), 2);
    }

    void cancelPrintsNothing()
    {
        SmallForm small;
        m_scripted->printer.answers.push_back({true, 3, 0, 0, {}});
        const PrintAnswer answer = printCopies(small.form, {2, 0, 0, 4});
        QVERIFY(answer.cancelled);
        QVERIFY(!openPrintPages(answer));
        QVERIFY(!QFileInfo::exists(m_pdf));
        QCOMPARE(m_scripted->printer.requests.size(), size_t(1));
        QCOMPARE(m_scripted->printer.requests.front().copies, 2);
        QCOMPARE(m_scripted->printer.requests.front().maxPage, 4);
    }

    void noPrinterServiceCountsAsCancel()
    {
        services().printers = nullptr;
        const PrintAnswer answer = showPrinterDialog({});
        QVERIFY(answer.cancelled);
        QVERIFY(!openPrintPages(answer));
    }

    void pageRangeIsPassedThrough()
    {
        m_scripted->printer.answers.push_back({false, 1, 2, 3, {}});
        const PrintAnswer answer = showPrinterDialog({1, 1, 4, 4});
        QVERIFY(!answer.cancelled);
        QCOMPARE(answer.fromPage, 2);
        QCOMPARE(answer.toPage, 3);
        QCOMPARE(answer.pdfFile, m_pdf);
        QCOMPARE(m_scripted->printer.requests.front().fromPage, 1);
        QCOMPARE(m_scripted->printer.requests.front().toPage, 4);
        // The range names pages; it prints nothing by itself.
        QVERIFY(!QFileInfo::exists(m_pdf));
    }

private:
    std::unique_ptr<OwnedSession<Services>> m_services;
    std::unique_ptr<ScriptedServices> m_scripted;
    QTemporaryDir m_dir;
    QString m_pdf;
};

QTEST_MAIN(FormPrintingTest)
#include "FormPrintingTest.moc"

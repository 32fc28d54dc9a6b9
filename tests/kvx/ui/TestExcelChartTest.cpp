// frmTestExcelChart, the development aid, offscreen: its two position labels
// show a graph position as "##0.0#" whatever the desktop's language, after a
// cursor moves and as the mouse goes over the graph; cmdPlotData2 draws the
// window's stored array on its own graph, sets the report graph's track mode
// to 2 and clears the report graph's cursors.
#include "kvx/model/KneeGraph.h"
#include "kvx/model/KvxTestRoad.h"
#include "kvx/model/TestExcelChartView.h"
#include "kvx/ui/KvxKneeChart.h"
#include "kvx/ui/frmTestExcelChart.h"
#include "shell/model/AppState.h"
#include "shell/model/SequentialFiles.h"
#include "tests/support/TestFiles.h"
#include "tools/ToolSessions.h"

#include <QLabel>
#include <QLineSeries>
#include <QMouseEvent>
#include <QPushButton>
#include <QtTest>

#include <memory>

using namespace quenby;

class TestExcelChartTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_sessions = std::make_unique<tools::ToolSessions>();
        appState().LangFilePath = quenby::testing::langSourcePath(QStringLiteral("en.lng"));
    }
    void cleanup()
    {
        SequentialFiles::instance().closeAll();
        m_sessions.reset();
    }

    void positionTextHasOneOrTwoDecimals_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("two decimals") << 12.345 << QStringLiteral("12.35");
        QTest::newRow("whole number") << 12.0 << QStringLiteral("12.0");
        QTest::newRow("one decimal") << 7.5 << QStringLiteral("7.5");
        QTest::newRow("zero") << 0.0 << QStringLiteral("0.0");
        QTest::newRow("below one") << 0.256 << QStringLiteral("0.26");
        QTest::newRow("no thousands separator") << 1999.999 << QStringLiteral("2000.0");
        QTest::newRow("negative") << -3.14159 << QStringLiteral("-3.14");
    }
    void positionTextHasOneOrTwoDecimals()
    {
        QFETCH(double, value);
        QFETCH(QString, text);
        QCOMPARE(testChartPositionText(value), text);
    }

    void cursorMoveShowsBothPositionsFormatted()
    {
        TestExcelChartWindow window;
        Q_EMIT window.CWGraph1().cursorDragged(3, 12.345, 12.0);
        QCOMPARE(window.lblXPos()->text(), QStringLiteral("12.35"));
        QCOMPARE(window.lblYPos()->text(), QStringLiteral("12.0"));
    }

    void mouseOverTheGraphShowsItsPositionFormatted()
    {
        TestExcelChartWindow window;
        window.resize(640, 480);
        (void)window.grab(); // lays the chart out
        QCoreApplication::processEvents();
        const QPoint at = window.CWGraph1().viewportPoint(QPointF(123.456, 45.0));
        const QPointF value = window.CWGraph1().valueAt(at);
        QMouseEvent move(QEvent::MouseMove, QPointF(at),
                         window.CWGraph1().viewport()->mapToGlobal(QPointF(at)), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.CWGraph1().viewport(), &move);
        QCOMPARE(window.lblXPos()->text(), testChartPositionText(value.x()));
        QCOMPARE(window.lblYPos()->text(), testChartPositionText(value.y()));
        // The pixel lands near the value asked for.
        QVERIFY(std::abs(value.x() - 123.456) < 5.0);
        QVERIFY(window.lblXPos()->text().contains(u'.'));
    }

    void mouseMoveKeepsTheFormattedText()
    {
        TestExcelChartLabels labels;
        TestExcelChart_CWGraph1_MouseMove(labels, 1.0 / 3.0, 1500.0);
        QCOMPARE(labels.lblXPos, QStringLiteral("0.33"));
        QCOMPARE(labels.lblYPos, QStringLiteral("1500.0"));
    }

    void plotData2DrawsTheStoredArrayAndClearsTheReportCursors()
    {
        OpenKvxTestForReport(quenby::testing::samplePath(QStringLiteral("kvx-x2-x4-only.txt")),
                             QStringLiteral("IEEE 30"));
        KneeGraph& report = kvxReportGraph();
        bool anyVisible = false;
        for (int n = 1; n <= KneeGraph::CursorCount; ++n)
            anyVisible = anyVisible || report.cursor(n).visible;
        QVERIFY(anyVisible);
        const QString first = frmTestExcelChart().names()[0];
        QVERIFY(!first.isEmpty());

        TestExcelChartWindow window;
        QCOMPARE(window.CWGraph1().plot(1)->count(), 0);
        QTest::mouseClick(window.cmdPlotData2(), Qt::LeftButton);

        QCOMPARE(report.trackMode(), TestChartReportTrackMode);
        for (int n = 1; n <= KneeGraph::CursorCount; ++n) {
            QVERIFY(!report.cursor(n).visible);
            QCOMPARE(report.cursor(n).x, 0.0);
            QCOMPARE(report.cursor(n).y, 0.0);
        }
        QCOMPARE(frmTestExcelChart().CWGraph1.plot(1).data, frmTestExcelChart().plotArray(first));
        QVERIFY(window.CWGraph1().plot(1)->count() > 0);
    }

    void plotData2BeforeAnyDrawingDrawsTheEmptyArray()
    {
        TestExcelChartWindow window;
        QTest::mouseClick(window.cmdPlotData2(), Qt::LeftButton);
        QCOMPARE(frmTestExcelChart().CWGraph1.plot(1).data,
                 frmTestExcelChart().plotArray(QLatin1String(EraseCode)));
        QCOMPARE(kvxReportGraph().trackMode(), TestChartReportTrackMode);
    }

private:
    std::unique_ptr<tools::ToolSessions> m_sessions;
};

QTEST_MAIN(TestExcelChartTest)
#include "TestExcelChartTest.moc"

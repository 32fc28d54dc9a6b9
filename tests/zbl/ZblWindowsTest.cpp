// The ZBL report windows, offscreen: each is one instance that only hides,
// holds every control of its page under the control's name, keeps its unused
// menu entries out of sight, and takes its texts from the language.
#include "app/QuenbyApplication.h"
#include "app/Sessions.h"
#include "app/Wiring.h"
#include "app/frmMain.h"
#include "localisation/model/LanguageLookup.h"
#include "localisation/model/WindowTextKeys.h"
#include "localisation/ui/WindowTexts.h"
#include "report/model/TemperatureCompensation.h"
#include "report/ui/frmCompensedResistanceSetting.h"
#include "shell/model/AppState.h"
#include "shell/model/NumberText.h"
#include "shell/model/Platform.h"
#include "tests/support/PdfReadBack.h"
#include "tests/support/ScriptedServices.h"
#include "tests/support/TestFiles.h"
#include "tests/support/WindowChecks.h"
#include "tools/zblsamples/ZblSampleWriter.h"
#include "zbl/model/VGraph.h"
#include "zbl/model/ZblBasicReportView.h"
#include "zbl/model/ZblReportWindow.h"
#include "zbl/ui/frmPrintVGraph.h"
#include "zbl/ui/frmPrintZBLBasicReport.h"
#include "zbl/ui/frmZBLBasicReport.h"
#include "zbl/ui/frmZBLVGraph.h"

#include <QAbstractSeries>
#include <QChartView>
#include <QCheckBox>
#include <QComboBox>
#include <QFontMetricsF>
#include <QFrame>
#include <QGraphicsEllipseItem>
#include <QGraphicsTextItem>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QLineSeries>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QValueAxis>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <functional>

using namespace quenby;
using namespace quenby::testing;

namespace {
// The report window as the program has it, its bring-up only counted so that
// nothing waits, and its texts left as the test put them.
class CountedBringUp final : public ZblReportWindow
{
public:
    void fillReportTexts() override {}
    void mirrorReport() override { real().mirrorReport(); }
    void bringUpReport() override { ++bringUps; }
    void hideReport() override { real().hideReport(); }
    void loadLogo(const QString& path, double left, double top) override
    {
        real().loadLogo(path, left, top);
    }
    int bringUps = 0;

private:
    static frmZBLBasicReport& real() { return frmZBLBasicReport::instance(); }
};

// How many windows of that name the application holds.
int windowsNamed(const QString& name)
{
    int count = 0;
    for (const QWidget* w : QApplication::allWidgets())
        if (w->isWindow() && w->objectName() == name)
            ++count;
    return count;
}
} // namespace

namespace {

QWidget& windowOf(const QString& routine)
{
    if (routine == u"FillTextsZblBasicReport")
        return frmZBLBasicReport::instance();
    if (routine == u"FillTextsZblVGraph")
        return frmZBLVGraph::instance();
    if (routine == u"FillTextsPrintVGraph")
        return frmPrintVGraph::instance();
    return frmPrintZBLBasicReport::instance();
}

void runFill(const QString& routine)
{
    if (routine == u"FillTextsZblBasicReport")
        frmZBLBasicReport::instance().FillTextsZblBasicReport();
    else if (routine == u"FillTextsZblVGraph")
        frmZBLVGraph::instance().FillTextsZblVGraph();
    else if (routine == u"FillTextsPrintVGraph")
        frmPrintVGraph::instance().FillTextsPrintVGraph();
    else if (routine == u"FillTextsPrintZblBasicReport")
        frmPrintZBLBasicReport::instance().FillTextsPrintZblBasicReport();
    else
        QFAIL("no such fill routine");
}

QValueAxis* axisOf(const QWidget& window, Qt::Orientation orientation)
{
    auto* view = window.findChild<QChartView*>(QStringLiteral("CWGraph1"));
    if (!view)
        return nullptr;
    const QList<QAbstractAxis*> axes = view->chart()->axes(orientation);
    return axes.size() == 1 ? qobject_cast<QValueAxis*>(axes.first()) : nullptr;
}

// What an entry's place shows: the control's text, or the x axis caption.
QString shownText(const QWidget& window, const WindowTextEntry& entry)
{
    if (entry.target == TextTarget::AxisXCaption) {
        QValueAxis* axis = axisOf(window, Qt::Horizontal);
        return axis ? axis->titleText() : QStringLiteral("<no x axis>");
    }
    return controlText(window, QString::fromLatin1(entry.control));
}

QAction* entry(const QWidget& window, const QString& name)
{
    if (auto* menu = window.findChild<QMenu*>(name))
        return menu->menuAction();
    return window.findChild<QAction*>(name);
}

QWidget* widget(const QWidget& window, const QString& name)
{
    return window.findChild<QWidget*>(name);
}

// The head of the test on the report and on the V graph pages.
const QStringList HeadCaptions = {
    "lbDeviceTestReport",  "lbTexteTestReport",
    "lbTexteFileName",     "lbTexteDate",
    "lbTexteInstrumentSN", "lbTexteXFRSerialNumber",
    "lbTexteCompany",      "lbTexteStation",
    "lbTexteDesignator",   "lbTexteManufacturer",
    "lbTexteOperator",     "lbTexteTemperature",
    "lbTexteNotes",        "imgLogo",
};
const QStringList HeadValues = {"lbTexteFileName(1)", "lbTexteDate(1)", "lbTexteInstrumentSN(1)"};
const QStringList HeadBoxes = {"txtXFRSerialNumber", "txtCompany",      "txtStation",
                               "txtDesignator",      "txtManufacturer", "txtOperator",
                               "txtTemperature",     "txtNotes"};

const QStringList ReportCells = {"txtTapA",     "txtWindingA", "lbResA", "txtConbinedResistanceA",
                                 "txtTapB",     "txtWindingB", "lbResB", "txtConbinedResistanceB",
                                 "txtTotalTime"};
const QStringList ReportColumnHeads = {"lbTexteCHANA",       "lbTexteCHANB",
                                       "lbTexteTAPA",        "lbTexteWindingA",
                                       "lbTexteResistanceA", "lbTexteCompensedResistanceA",
                                       "lbTexteTAPB",        "lbTexteWindingB",
                                       "lbTexteResistanceB", "lbTexteCompensedResistanceB"};
const QStringList ReportMenuEntries = {
    "mnuPrint",    "mnuBasicReport", "mnuBasicVgraph", "mnuBasicVgraphRS", "mnuExport",
    "mnuEdit",     "mnuTaps",        "mnuVGraph",      "mnuVGraphA",       "mnuVGraphB",
    "mnuVGraphRS", "mnuSave",        "mnuOk"};
const QStringList ReportHiddenEntries = {"mnuExport",   "mnuEdit",        "mnuTaps",
                                         "mnuVGraphRS", "mnuBasicVgraph", "mnuBasicVgraphRS"};

const QStringList PrintCells = {"lbResultTapA",     "lbResultWindingA", "lbResultResA",
                                "lbResultCompResA", "lbResultTapB",     "lbResultWindingB",
                                "lbResultResB",     "lbResultCompResB", "lbtotTime"};

} // namespace

class ZblWindowsTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir programDir;

    // Makes `lines` the language file of the program.
    void useLanguage(const QStringList& lines)
    {
        const QString file = programDir.filePath(QStringLiteral("test.lng"));
        writeBytes(file, crlfLines(lines));
        setAppPathOverride(programDir.path());
        appState().LangFilePath = file;
    }

    // Opens `sample` through the main menu's road, the file dialog answering
    // with it; the bring-up only counts, so that nothing waits.
    int openSample(const QString& sample)
    {
        // The program always has a language: the V graph commands read it.
        if (appState().LangFilePath.isEmpty()) {
            setAppPathOverride(programDir.path());
            appState().LangFilePath = langSourcePath(QStringLiteral("en.lng"));
        }
        ScriptedServices scripted;
        scripted.files.answers.push_back(samplePath(sample));
        CountedBringUp report;
        const Installed<ZblReportWindow> counted(report);
        mnZBLFiles_Click();
        return report.bringUps;
    }

    // A saved test of `rows` rows, taps "P<i>A" and "P<i>B", written and
    // opened through the main menu's road, its report mirrored.
    void openSavedTest(int rows)
    {
        samples::ZblSavedFile file;
        file.date = QStringLiteral("15 Nov.2024   09:07:33");
        file.company = QStringLiteral("Northfield Power Co-op");
        file.station = QStringLiteral("Harlow Substation");
        file.compensationFactor = QStringLiteral("Copper (TK=234.5)");
        file.compensedTemp = QStringLiteral("75");
        for (int i = 0; i < rows; ++i) {
            samples::ZblSavedRow row;
            row.tapA = QStringLiteral("P%1A").arg(i);
            row.tapB = QStringLiteral("P%1B").arg(i);
            row.windingA = row.windingB = QStringLiteral("H1-H2");
            row.resistanceA = row.resistanceB = QStringLiteral("1.234 mOhm");
            row.current = QStringLiteral("10 A");
            row.interval = QStringLiteral("5");
            row.total = QStringLiteral("00:00:05");
            file.rows.push_back(row);
        }
        const QString path = programDir.filePath(QStringLiteral("printed.zbl"));
        QCOMPARE(samples::writeSavedZblFile(path, file), Int16(0));
        setAppPathOverride(programDir.path());
        appState().LangFilePath = langSourcePath(QStringLiteral("en.lng"));
        ScriptedServices scripted;
        scripted.files.answers.push_back(path);
        CountedBringUp report;
        const Installed<ZblReportWindow> counted(report);
        mnZBLFiles_Click();
        frmZBLBasicReport::instance().fillReportTexts();
        frmZBLBasicReport::instance().mirrorModel();
    }

    static int visibleRowsOf(const frmZBLBasicReport& w)
    {
        int visible = 0;
        for (int r = 0; r < frmZBLBasicReport::RowCount; ++r)
            visible += w.cell(ZblColumn::TapA, r)->isVisibleTo(&w) ? 1 : 0;
        return visible;
    }

    static QStringList routines()
    {
        return {"FillTextsZblBasicReport", "FillTextsZblVGraph", "FillTextsPrintVGraph",
                "FillTextsPrintZblBasicReport"};
    }

    static void addRoutineRows()
    {
        QTest::addColumn<QString>("routine");
        for (const QString& r : routines())
            QTest::newRow(qPrintable(r)) << r;
    }

    // The graph of channel A opened from the report, then shown again
    // without a modal wait so that the test can use the mouse on it.
    frmZBLVGraph&
    openGraphAForMouse(const QString& sample = QStringLiteral("zbl-manual-19-rows.zbl"))
    {
        openSample(sample);
        frmZBLBasicReport& w = frmZBLBasicReport::instance();
        w.mirrorModel();
        frmZBLVGraph& graph = frmZBLVGraph::instance();
        graph.close(); // a failed test before may have left it showing
        QTimer::singleShot(0, &graph, [&] { graph.close(); });
        entry(w, "mnuVGraphA")->trigger();
        graph.setWindowModality(Qt::NonModal);
        graph.show();
        [&] { QVERIFY(QTest::qWaitForWindowExposed(&graph)); }();
        // Chart axes and plot area lay out anew only when events run.
        QCoreApplication::processEvents();
        return graph;
    }

    // Every Y label of a graph reads as the model computes it: each tick
    // with the decimals its range needs, all different, none cut short, and
    // each whole within the room the chart leaves left of its plot area.
    static void checkYLabels(const VGraphChart& c, const GraphAxis& y)
    {
        QChart* chart = c.view->chart();
        const QRectF area = chart->plotArea();
        const QStringList expected =
            vGraphTickLabels(y.minimum, y.maximum, VGraphYTickCount,
                             vGraphTickDecimals(y.minimum, y.maximum, VGraphYTickCount));
        const QList<const QGraphicsTextItem*> labels = yLabelsOf(c);
        QStringList shown;
        for (const QGraphicsTextItem* label : labels)
            shown.append(label->toPlainText());
        QCOMPARE(shown, expected);

        QSet<QString> apart;
        const QFontMetricsF metrics(c.axisY->labelsFont());
        const qreal room = area.left() - chart->margins().left();
        for (const QGraphicsTextItem* label : labels) {
            const QString text = label->toPlainText();
            QVERIFY2(!text.contains(QLatin1String("...")) && !text.contains(QChar(0x2026)),
                     qPrintable(text));
            apart.insert(text);
            QVERIFY2(metrics.horizontalAdvance(text) <= room,
                     qPrintable(text + " needs " +
                                QString::number(metrics.horizontalAdvance(text)) + " of " +
                                QString::number(room)));
            const QRectF at = chart->mapRectFromScene(label->sceneBoundingRect());
            QVERIFY2(at.left() >= 0.0 && at.right() <= area.left(), qPrintable(text));
        }
        QCOMPARE(apart.size(), shown.size());
    }

    // The Y labels as the chart draws them, bottom to top: its text items
    // left of the plot area, at the height of a tick.
    static QList<const QGraphicsTextItem*> yLabelsOf(const VGraphChart& c)
    {
        QChart* chart = c.view->chart();
        const QRectF area = chart->plotArea();
        QList<const QGraphicsTextItem*> labels;
        for (const QGraphicsItem* item : c.view->scene()->items()) {
            const auto* text = qgraphicsitem_cast<const QGraphicsTextItem*>(item);
            if (!text || !text->isVisible() || text->toPlainText().isEmpty())
                continue;
            const QPointF centre = chart->mapRectFromScene(text->sceneBoundingRect()).center();
            if (centre.x() < area.left() && centre.y() >= area.top() - 1 &&
                centre.y() <= area.bottom() + 1)
                labels.append(text);
        }
        std::sort(labels.begin(), labels.end(), [](const auto* a, const auto* b) {
            return a->sceneBoundingRect().center().y() > b->sceneBoundingRect().center().y();
        });
        return labels;
    }

    // The plot area of a graph in pixels of its viewport.
    static QRect plotAreaInViewport(const VGraphChart& c)
    {
        QChart* chart = c.view->chart();
        return c.view->mapFromScene(chart->mapRectToScene(chart->plotArea())).boundingRect();
    }

    // Pixels of the cursor's red in the viewport of a graph, inside its plot
    // area (with a pixel of antialiasing around it) or outside.
    static int redPixels(const VGraphChart& c, bool insidePlot)
    {
        const QImage image = c.view->viewport()->grab().toImage();
        const QRect area = plotAreaInViewport(c).adjusted(-1, -1, 1, 1);
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor colour = image.pixelColor(x, y);
                const bool red = colour.red() > 150 && colour.green() < 110 && colour.blue() < 110;
                if (red && area.contains(x, y) == insidePlot)
                    ++count;
            }
        }
        return count;
    }

    // The ring stands on the model's cursor, inside the plot area, clipped
    // to it, and no red of it lies outside the plot area.
    static void checkRingOnPlot(const frmZBLVGraph& graph)
    {
        const VGraphChart& c = graph.CWGraph1();
        QChart* chart = c.view->chart();
        const QRectF area = chart->plotArea();
        const QRectF around = area.adjusted(-0.5, -0.5, 0.5, 0.5);
        const QGraphicsEllipseItem* ring = graph.cursorRing();
        QVERIFY(ring->isVisible());
        const GraphCursor& cursor = zblVGraph().window.CWGraph1.cursor;
        const QPointF centre = chart->mapFromScene(ring->scenePos());
        const QPointF point = chart->mapToPosition(QPointF(cursor.x, cursor.y), c.plot);
        QVERIFY2(QLineF(centre, point).length() < 0.5,
                 qPrintable(QStringLiteral("ring at %1,%2, point at %3,%4")
                                .arg(centre.x())
                                .arg(centre.y())
                                .arg(point.x())
                                .arg(point.y())));
        QVERIFY(around.contains(centre));
        QVERIFY(ring->isClipped());
        const QRectF paintable =
            chart->mapFromScene(ring->mapToScene(ring->clipPath())).boundingRect();
        QVERIFY(around.contains(paintable));
        QCOMPARE(redPixels(c, false), 0);
        QVERIFY(redPixels(c, true) > 0);
    }

    // Neither ring nor red anywhere on the graph.
    static void checkRingHidden(const frmZBLVGraph& graph)
    {
        QVERIFY(!graph.cursorRing()->isVisible());
        QCOMPARE(redPixels(graph.CWGraph1(), false), 0);
        QCOMPARE(redPixels(graph.CWGraph1(), true), 0);
    }

    // The point of the graph's viewport that shows `value`.
    static QPoint viewportPointOf(const frmZBLVGraph& graph, const QPointF& value)
    {
        const VGraphChart& c = graph.CWGraph1();
        QChart* chart = c.view->chart();
        return c.view->mapFromScene(chart->mapToScene(chart->mapToPosition(value, c.plot)));
    }

    // The value under a point of the graph's viewport.
    static QPointF valueOfViewportPoint(const frmZBLVGraph& graph, const QPoint& pos)
    {
        const VGraphChart& c = graph.CWGraph1();
        QChart* chart = c.view->chart();
        return chart->mapToValue(chart->mapFromScene(c.view->mapToScene(pos)), c.plot);
    }

    static void dragOnGraph(const frmZBLVGraph& graph, const QPoint& from, const QPoint& to)
    {
        QWidget* viewport = graph.CWGraph1().view->viewport();
        QTest::mousePress(viewport, Qt::LeftButton, {}, from);
        QMouseEvent move(QEvent::MouseMove, QPointF(to), viewport->mapToGlobal(QPointF(to)),
                         Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(viewport, &move);
        QTest::mouseRelease(viewport, Qt::LeftButton, {}, to);
    }

    struct Axes
    {
        double xMin, xMax, yMin, yMax;
    };
    static Axes axesOf(const frmZBLVGraph& graph)
    {
        const VGraphChart& c = graph.CWGraph1();
        return {c.axisX->min(), c.axisX->max(), c.axisY->min(), c.axisY->max()};
    }

    // Ticks the zoom box and draws a rectangle over the middle of the graph,
    // `kept` of its width and height (half by default); gives the axes before
    // the zoom.
    static Axes zoomIntoTheMiddle(frmZBLVGraph& graph, double kept = 0.5)
    {
        const Axes full = axesOf(graph);
        graph.findChild<QCheckBox*>("ckZoom")->click();
        const double w = (full.xMax - full.xMin) * (1 - kept) / 2;
        const double h = (full.yMax - full.yMin) * (1 - kept) / 2;
        const QPoint from = viewportPointOf(graph, {full.xMin + w, full.yMin + h});
        const QPoint to = viewportPointOf(graph, {full.xMax - w, full.yMax - h});
        dragOnGraph(graph, from, to);
        return full;
    }

private Q_SLOTS:
    void cleanup()
    {
        appState().LangFilePath.clear();
        setAppPathOverride({});
    }

    // Runs first: later tests fill the windows and overwrite these texts.
    void designTextsBeforeAnyFill()
    {
        const frmZBLBasicReport& report = frmZBLBasicReport::instance();
        const QList<QPair<QString, QString>> menus = {
            {"mnuPrint", "Print"},          {"mnuBasicReport", "Basic Report"},
            {"mnuBasicVgraph", "V-Graph"},  {"mnuBasicVgraphRS", "Basic  & V-Graph(Rs)"},
            {"mnuExport", "Export"},        {"mnuEdit", "Edits Notes"},
            {"mnuTaps", "Edit Taps"},       {"mnuVGraph", "V-Graph"},
            {"mnuVGraphA", "Channel A"},    {"mnuVGraphB", "Channel B"},
            {"mnuVGraphRS", "V-Graph(Rs)"},
        };
        for (const auto& [name, text] : menus)
            QCOMPARE(controlText(report, name), text);

        QCOMPARE(controlText(frmZBLVGraph::instance(), "lbUnZoom"),
                 QString("***Double-click on graph for full size graph."));
        QCOMPARE(controlText(frmPrintZBLBasicReport::instance(), "lbPage"), QString("Page 1 / 1"));
    }

    void eachWindowIsOneInstanceMadeHidden()
    {
        // Asked for again and again, each window exists once.
        for (int i = 0; i < 2; ++i) {
            frmZBLBasicReport::instance();
            frmZBLVGraph::instance();
            frmPrintVGraph::instance();
            frmPrintZBLBasicReport::instance();
        }
        for (const char* name :
             {"frmZBLBasicReport", "frmZBLVGraph", "frmPrintVGraph", "frmPrintZBLBasicReport"})
            QCOMPARE(windowsNamed(QString::fromLatin1(name)), 1);
        for (const QString& r : routines()) {
            const QWidget& w = windowOf(r);
            QVERIFY2(!w.isVisible(), qPrintable(w.objectName()));
            QVERIFY(!w.testAttribute(Qt::WA_DeleteOnClose));
        }
    }

    void closingOnlyHides()
    {
        for (QWidget* w : std::initializer_list<QWidget*>{&frmZBLBasicReport::instance(),
                                                          &frmZBLVGraph::instance()}) {
            QPointer<QWidget> alive(w);
            w->show();
            QVERIFY(w->isVisible());
            QVERIFY(w->close());
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY(!alive.isNull());
            QVERIFY(w->isHidden());
        }
        QCOMPARE(static_cast<QWidget*>(&frmZBLBasicReport::instance()),
                 static_cast<QWidget*>(&frmZBLBasicReport::instance()));
    }

    void reportHasEveryControl()
    {
        const frmZBLBasicReport& w = frmZBLBasicReport::instance();
        requireControls<QLabel>(w, HeadCaptions);
        requireControls<QLabel>(w, HeadValues);
        requireControls<QLabel>(w, {"lbTexteCompensedTemp", "lbTexteCompensedTemp(1)",
                                    "lbTexteCompensedFactor", "lbTotalTime", "lbTotalTimeBdr"});
        requireControls<QLineEdit>(w, HeadBoxes);
        // The column heads are text boxes: the language fills their text.
        requireControls<QLineEdit>(w, ReportColumnHeads);
        requireControls<QComboBox>(w, {"cbCompensation"});
        requireControls<QFrame>(w, {"frResistance"});
        requireControls<QScrollBar>(w, {"VScroll1"});
        requireArrays<QLineEdit>(w, ReportCells, frmZBLBasicReport::RowCount);
        if (QTest::currentTestFailed())
            return; // what follows needs those controls
        QCOMPARE(frmZBLBasicReport::RowCount, 122);
        QVERIFY(w.findChild<QComboBox*>("cbCompensation")->isEditable());

        QCOMPARE(w.cell(ZblColumn::TapA, 0)->objectName(), QString("txtTapA(0)"));
        QCOMPARE(w.cell(ZblColumn::ResB, 57)->objectName(), QString("lbResB(57)"));
        QCOMPARE(w.cell(ZblColumn::TotalTime, 121)->objectName(), QString("txtTotalTime(121)"));

        // The whole page, head and table, scrolls on its frame.
        QWidget* page = widget(w, "frResistance");
        QVERIFY(page->isAncestorOf(widget(w, "txtCompany")));
        QVERIFY(page->isAncestorOf(widget(w, "txtTapA(121)")));
    }

    void reportTableColumnsLieUnderTheirHeads()
    {
        const frmZBLBasicReport& w = frmZBLBasicReport::instance();
        const QStringList heads = {
            "lbTexteTAPA",   "lbTexteWindingA", "lbTexteResistanceA", "lbTexteCompensedResistanceA",
            "lbTexteTAPB",   "lbTexteWindingB", "lbTexteResistanceB", "lbTexteCompensedResistanceB",
            "lbTotalTimeBdr"};
        // Widths in twips of tap, winding, resistance, compensated; 15 to a pixel.
        const QList<int> widths = {39, 68, 65, 97, 39, 68, 65, 97, 51};
        for (int c = 0; c < heads.size(); ++c) {
            const QRect head = widget(w, heads[c])->geometry();
            const QRect first = w.cell(static_cast<ZblColumn>(c), 0)->geometry();
            QCOMPARE(first.left(), head.left());
            QCOMPARE(first.width(), head.width());
            QCOMPARE(first.top(), head.bottom() + 1);
            QVERIFY(qAbs(first.width() - widths[c]) <= 1);
            if (c > 0)
                QCOMPARE(first.left(),
                         w.cell(static_cast<ZblColumn>(c - 1), 0)->geometry().right() + 1);
            for (int r = 1; r < frmZBLBasicReport::RowCount; ++r) {
                const QRect cell = w.cell(static_cast<ZblColumn>(c), r)->geometry();
                const QRect above = w.cell(static_cast<ZblColumn>(c), r - 1)->geometry();
                QCOMPARE(cell.left(), above.left());
                QCOMPARE(cell.top(), above.bottom() + 1);
                QCOMPARE(cell.height(), 21);
            }
        }
        QCOMPARE(w.cell(ZblColumn::TapA, 0)->x(), 67); // 1000 twips from the page's edge
        // Each channel head spans the four columns of its channel.
        const QRect chanA = widget(w, "lbTexteCHANA")->geometry();
        QCOMPARE(chanA.left(), w.cell(ZblColumn::TapA, 0)->x());
        QCOMPARE(chanA.right(), w.cell(ZblColumn::CompensatedA, 0)->geometry().right());
        const QRect chanB = widget(w, "lbTexteCHANB")->geometry();
        QCOMPARE(chanB.left(), chanA.right() + 1);
        QCOMPARE(chanB.right(), w.cell(ZblColumn::CompensatedB, 0)->geometry().right());
        // The total time head sits inside its border.
        QVERIFY(
            widget(w, "lbTotalTimeBdr")->geometry().contains(widget(w, "lbTotalTime")->geometry()));
    }

    void reportMenusWithTheirHiddenEntries()
    {
        const frmZBLBasicReport& w = frmZBLBasicReport::instance();
        for (const QString& name : ReportMenuEntries) {
            QAction* a = entry(w, name);
            QVERIFY2(a, qPrintable(name));
            QCOMPARE(a->isVisible(), !ReportHiddenEntries.contains(name));
        }
        auto* print = w.findChild<QMenu*>("mnuPrint");
        auto* vgraph = w.findChild<QMenu*>("mnuVGraph");
        QVERIFY(print && vgraph);
        for (const char* name : {"mnuBasicReport", "mnuBasicVgraph", "mnuBasicVgraphRS"})
            QVERIFY(print->actions().contains(entry(w, name)));
        for (const char* name : {"mnuVGraphA", "mnuVGraphB", "mnuVGraphRS"})
            QVERIFY(vgraph->actions().contains(entry(w, name)));
        const QList<QAction*> bar = w.menuBar()->actions();
        for (const char* name :
             {"mnuPrint", "mnuExport", "mnuEdit", "mnuTaps", "mnuVGraph", "mnuSave", "mnuOk"})
            QVERIFY2(bar.contains(entry(w, name)), name);
    }

    void vGraphHasEveryControl()
    {
        const frmZBLVGraph& w = frmZBLVGraph::instance();
        requireControls<QLabel>(w, HeadCaptions);
        requireControls<QLabel>(w, HeadValues);
        requireControls<QLineEdit>(w, HeadBoxes);
        requireControls<QLabel>(w, {"lbCHAN", "lbUnZoom", "lbVolts", "lbCurrent", "lbCurseur"});
        requireControls<QCheckBox>(w, {"ckZoom"});
        requireControls<QScrollBar>(w, {"VScroll1"});
        requireControls<QFrame>(w, {"frZBLVGraph"});
        requireControls<QChartView>(w, {"CWGraph1"});
        requireControls<QAction>(w, {"mnuPrint"});
        if (QTest::currentTestFailed())
            return; // what follows needs those controls
        QVERIFY(w.menuBar()->actions().contains(entry(w, "mnuPrint")));
        // Shown only while the graph is zoomed.
        QVERIFY(widget(w, "lbUnZoom")->isHidden());
        QVERIFY(widget(w, "frZBLVGraph")->isAncestorOf(widget(w, "CWGraph1")));
    }

    void printVGraphHasEveryControl()
    {
        const frmPrintVGraph& w = frmPrintVGraph::instance();
        requireControls<QLabel>(w, HeadCaptions);
        requireControls<QLabel>(w, HeadValues);
        requireControls<QLineEdit>(w, HeadBoxes);
        requireControls<QLabel>(w, {"lbCHAN"});
        requireControls<QChartView>(w, {"CWGraph1"});
    }

    void eachGraphHasOnePlotOnTwoLinearAxes_data()
    {
        QTest::addColumn<QString>("routine");
        QTest::newRow("frmZBLVGraph") << QString("FillTextsZblVGraph");
        QTest::newRow("frmPrintVGraph") << QString("FillTextsPrintVGraph");
    }
    void eachGraphHasOnePlotOnTwoLinearAxes()
    {
        QFETCH(QString, routine);
        const QWidget& w = windowOf(routine);
        auto* view = w.findChild<QChartView*>("CWGraph1");
        QVERIFY(view);
        QValueAxis* x = axisOf(w, Qt::Horizontal);
        QValueAxis* y = axisOf(w, Qt::Vertical);
        QVERIFY(x && y);
        QCOMPARE(view->chart()->series().size(), 1);
        auto* plot = qobject_cast<QLineSeries*>(view->chart()->series().first());
        QVERIFY(plot);
        QCOMPARE(plot->attachedAxes().size(), 2);
        QVERIFY(plot->attachedAxes().contains(x));
        QVERIFY(plot->attachedAxes().contains(y));
        // The accessor hands out the same pieces.
        const VGraphChart& graph = routine == u"FillTextsZblVGraph"
                                       ? frmZBLVGraph::instance().CWGraph1()
                                       : frmPrintVGraph::instance().CWGraph1();
        QCOMPARE(graph.view, view);
        QCOMPARE(graph.axisX, x);
        QCOMPARE(graph.axisY, y);
        QCOMPARE(graph.plot, plot);
    }

    void printReportHasEveryControl()
    {
        const frmPrintZBLBasicReport& w = frmPrintZBLBasicReport::instance();
        requireControls<QFrame>(w, {"frHeaderPrint", "frDataPrint", "frmPageNumber"});
        requireControls<QLabel>(w, {"lbPage", "imgLogo"});
        requireControls<QLabel>(w, {"lbFileName", "lbDate", "LBCompany", "LBDesignator",
                                    "LBXFRSerialNumber", "LBTemperature", "lbStation",
                                    "lbManufacturer", "lbOperator", "lbCompensatedTemp",
                                    "lbCompensendFactor", "lbNotes"});
        requireControls<QLabel>(w, {"lbCHANA", "lbCHANB", "lbTAPA", "lbTAPB", "lbWindingA",
                                    "lbWindingB", "lbResA", "lbResB", "lbCompensedResistanceA",
                                    "lbCompensedResistanceB", "lbTotalTime", "lbTotalTimeBdr"});
        requireArrays<QLabel>(w, PrintCells, frmPrintZBLBasicReport::RowsPerPage);
        if (QTest::currentTestFailed())
            return; // what follows needs those controls
        QCOMPARE(frmPrintZBLBasicReport::RowsPerPage, 33);
        QCOMPARE(w.cell(ZblColumn::CompensatedB, 32)->objectName(),
                 QString("lbResultCompResB(32)"));
        QCOMPARE(w.cell(ZblColumn::TotalTime, 0)->objectName(), QString("lbtotTime(0)"));
        QVERIFY(widget(w, "frDataPrint")->isAncestorOf(widget(w, "lbResultTapA(0)")));
        QVERIFY(widget(w, "frHeaderPrint")->isAncestorOf(widget(w, "lbNotes")));
        QVERIFY(widget(w, "frmPageNumber")->isAncestorOf(widget(w, "lbPage")));
    }

    void printReportIsASheetWithItsFirstPageFrames()
    {
        const frmPrintZBLBasicReport& w = frmPrintZBLBasicReport::instance();
        // 8.5 by 8.8 inches at 96 pixels to the inch.
        QCOMPARE(w.size(), QSize(816, 845));
        QCOMPARE(widget(w, "frHeaderPrint")->y(), 10);  // 150 twips
        QCOMPARE(widget(w, "frDataPrint")->y(), 283);   // 4250 twips
        QCOMPARE(widget(w, "frmPageNumber")->y(), 833); // 12500 twips
        QCOMPARE(w.cell(ZblColumn::TapA, 0)->x(), 38);  // 570 twips
        QCOMPARE(w.cell(ZblColumn::TapA, 1)->y() - w.cell(ZblColumn::TapA, 0)->y(), 15);
        QCOMPARE(widget(w, "lbCHANA")->x(), w.cell(ZblColumn::TapA, 0)->x());
        QCOMPARE(widget(w, "lbTotalTimeBdr")->x(), w.cell(ZblColumn::TotalTime, 0)->x());
        // The heads that the language fills stay off the paper; the print
        // copies the report's heads into those beside them.
        for (const QString& name : ReportColumnHeads) {
            QWidget* filled = widget(w, name);
            QVERIFY2(filled && filled->isHidden(), qPrintable(name));
        }
        QVERIFY(!widget(w, "lbCHANA")->isHidden());
    }

    void tableNamesOnlyControlsTheWindowHas_data() { addRoutineRows(); }
    void tableNamesOnlyControlsTheWindowHas()
    {
        QFETCH(QString, routine);
        const WindowTextTable* table = windowTextTable(routine);
        QVERIFY(table);
        const QWidget& w = windowOf(routine);
        QCOMPARE(w.objectName(), table->window);
        for (const WindowTextEntry& e : table->entries) {
            const QString control = QString::fromLatin1(e.control);
            if (control.isEmpty())
                continue;
            QVERIFY2(w.findChild<QObject*>(control), qPrintable(control));
        }
    }

    void fillPutsEachTextInItsControl_data() { addRoutineRows(); }
    void fillPutsEachTextInItsControl()
    {
        QFETCH(QString, routine);
        const WindowTextTable* table = windowTextTable(routine);
        QVERIFY(table);
        QStringList lines;
        for (const WindowTextEntry& e : table->entries)
            lines << QStringLiteral("%1,T:%1").arg(QLatin1String(e.key));
        useLanguage(lines);

        QWidget& w = windowOf(routine);
        runFill(routine);
        QVERIFY(!w.isVisible());
        QVERIFY(!w.windowIcon().isNull());
        for (const WindowTextEntry& e : table->entries) {
            QCOMPARE(shownText(w, e), QStringLiteral("T:") + QLatin1String(e.key));
        }
    }

    void emptyLanguageShowsTheKeys_data() { addRoutineRows(); }
    void emptyLanguageShowsTheKeys()
    {
        QFETCH(QString, routine);
        const WindowTextTable* table = windowTextTable(routine);
        QVERIFY(table);
        useLanguage({});

        QWidget& w = windowOf(routine);
        runFill(routine);
        QVERIFY(!w.isVisible());
        for (const WindowTextEntry& e : table->entries)
            if (e.target == TextTarget::WindowTitle)
                QCOMPARE(w.windowTitle(), QString::fromLatin1(e.key));
        for (const WindowTextEntry& e : table->entries) {
            QCOMPARE(shownText(w, e), QString::fromLatin1(e.key));
        }
    }

    void perColumnKeysFillReportTextBoxes()
    {
        useLanguage({"frmZBLBasicReport.lbTexteCHANA.Caption,CHANNEL A",
                     "frmZBLBasicReport.lbTexteCompensedResistanceB.Caption,Rc (20 C)"});
        frmZBLBasicReport& w = frmZBLBasicReport::instance();
        w.FillTextsZblBasicReport();
        QCOMPARE(w.findChild<QLineEdit*>("lbTexteCHANA")->text(), QString("CHANNEL A"));
        QCOMPARE(w.findChild<QLineEdit*>("lbTexteCompensedResistanceB")->text(),
                 QString("Rc (20 C)"));
    }

    void fillKeepsHiddenEntriesHidden()
    {
        useLanguage({});
        frmZBLBasicReport& w = frmZBLBasicReport::instance();
        w.FillTextsZblBasicReport();
        for (const QString& name : ReportHiddenEntries)
            QVERIFY2(!entry(w, name)->isVisible(), qPrintable(name));
        frmZBLVGraph::instance().FillTextsZblVGraph();
        QVERIFY(widget(frmZBLVGraph::instance(), "lbUnZoom")->isHidden());
    }

    void reportMirrorsATestOpenedFromTheMainMenu()
    {
        QCOMPARE(openSample(QStringLiteral("zbl-manual-19-rows.zbl")), 1);
        frmZBLBasicReport& w = frmZBLBasicReport::instance();
        w.mirrorModel();
        const ZblBasicReportModel& m = zblBasicReport();

        QCOMPARE(controlText(w, "lbTexteFileName(1)"), QString("zbl-manual-19-rows.zbl"));
        QCOMPARE(controlText(w, "lbTexteDate(1)"), m.lbTexteDate1);
        QCOMPARE(controlText(w, "lbTexteInstrumentSN(1)"), m.lbTexteInstrumentSN1);
        QVERIFY(!m.txtCompany.isEmpty());
        for (const auto& [name, field] :
             QList<QPair<QString, QString>>{{"txtXFRSerialNumber", m.txtXFRSerialNumber},
                                            {"txtCompany", m.txtCompany},
                                            {"txtStation", m.txtStation},
                                            {"txtDesignator", m.txtDesignator},
                                            {"txtManufacturer", m.txtManufacturer},
                                            {"txtOperator", m.txtOperator},
                                            {"txtNotes", m.txtNotes},
                                            {"txtTemperature", m.txtTemperature}})
            QCOMPARE(controlText(w, name), field);

        for (int c = 0; c < ZblColumnCount; ++c)
            for (int r = 0; r < frmZBLBasicReport::RowCount; ++r)
                QCOMPARE(w.cell(static_cast<ZblColumn>(c), r)->text(),
                         m.cell(static_cast<ZblReportColumn>(c), r));
        QVERIFY(!w.cell(ZblColumn::TapA, 0)->text().isEmpty());
        QCOMPARE(w.cell(ZblColumn::CompensatedA, 0)->text(), QString("---"));

        // Rows 0 to 18 hold the test; the rest are only hidden.
        QCOMPARE(visibleRowsOf(w), 19);
        QVERIFY(w.cell(ZblColumn::TotalTime, 18)->isVisibleTo(&w));
        QVERIFY(!w.cell(ZblColumn::TotalTime, 19)->isVisibleTo(&w));

        QVERIFY(w.VScroll1()->isVisibleTo(&w));
        QCOMPARE(w.VScroll1()->maximum(), 1000);
        QCOMPARE(w.VScroll1()->value(), 0);
        QCOMPARE(w.frResistance()->y(), 0);
    }

    void scrollingMovesThePageTwoTwipsAStep()
    {
        openSample(QStringLiteral("zbl-manual-19-rows.zbl"));
        frmZBLBasicReport& w = frmZBLBasicReport::instance();
        w.mirrorModel();
        w.VScroll1()->setValue(300);
        QCOMPARE(zblBasicReport().VScroll1Value, 300);
        QCOMPARE(zblBasicReport().frResistanceTop, -600);
        QCOMPARE(w.frResistance()->y(), -pixelsOfTwips(600));
        w.VScroll1()->setValue(0);
        QCOMPARE(w.frResistance()->y(), 0);
    }

    void operatorEditsGoBackIntoTheModel()
    {
        openSample(QStringLiteral("zbl-manual-19-rows.zbl"));
        frmZBLBasicReport& w = frmZBLBasicReport::instance();
        w.mirrorModel();
        QLineEdit* winding = w.cell(ZblColumn::WindingB, 4);
        winding->selectAll();
        QTest::keyClicks(winding, QStringLiteral("X2-X3"));
        QCOMPARE(zblBasicReport().cell(ZblReportColumn::WindingB, 4), QString("X2-X3"));

        auto* company = w.findChild<QLineEdit*>(QStringLiteral("txtCompany"));
        company->selectAll();
        QTest::keyClicks(company, QStringLiteral("North Grid"));
        QCOMPARE(zblBasicReport().txtCompany, QString("North Grid"));

        // A mirror leaves what was typed in place.
        w.mirrorModel();
        QCOMPARE(winding->text(), QString("X2-X3"));
        QCOMPARE(company->text(), QString("North Grid"));
    }

    void showingAndHidingKeepTheModelInStep()
    {
        frmZBLBasicReport& w = frmZBLBasicReport::instance();
        w.show();
        QVERIFY(zblBasicReport().shown);
        entry(w, "mnuOk")->trigger();
        QVERIFY(!w.isVisible());
        QVERIFY(!zblBasicReport().shown);

        frmCompensedResistanceSetting& dialog = frmCompensedResistanceSetting::instance();
        w.show();
        dialog.show();
        QVERIFY(w.close());
        QVERIFY(!w.isVisible());
        QVERIFY(!dialog.isVisible());
        QVERIFY(!zblBasicReport().shown);
    }

    void bringUpWaitsUntilTheReportIsHidden()
    {
        openSample(QStringLiteral("zbl-manual-19-rows.zbl"));
        frmZBLBasicReport& w = frmZBLBasicReport::instance();
        bool shownWhileWaiting = false;
        QTimer::singleShot(0, &w, [&] {
            shownWhileWaiting = zblBasicReport().shown;
            // A refill from inside the wait hides and shows the report.
            w.hide();
            w.show();
            QTimer::singleShot(0, &w, [&w] { entry(w, "mnuOk")->trigger(); });
        });
        zblReportWindow().bringUpReport();
        QVERIFY(w.loaded());
        QVERIFY(shownWhileWaiting);
        QVERIFY(!w.isVisible());
        QCOMPARE(w.windowModality(), Qt::ApplicationModal);
        QVERIFY(!zblBasicReport().shown);
    }

    void pickingACompensationEntryFillsTheCompensatedColumns()
    {
        useLanguage({}); // the dialog refills its texts on each opening
        openSample(QStringLiteral("zbl-manual-19-rows.zbl"));
        frmZBLBasicReport& w = frmZBLBasicReport::instance();
        w.mirrorModel();
        // The dialog serves the report that is on screen.
        w.show();
        QComboBox* box = w.cbCompensation();
        QCOMPARE(box->itemText(1), zblBasicReport().cbCompensationItems.at(1));

        frmCompensedResistanceSetting& dialog = frmCompensedResistanceSetting::instance();
        bool dialogShown = false;
        QTimer::singleShot(0, &dialog, [&] {
            dialogShown = dialog.isVisible();
            dialog.txtTS()->setText(QStringLiteral("75"));
            QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
        });
        QTest::keyClick(box, Qt::Key_Down); // the first entry, as a click picks it
        QVERIFY(dialogShown);
        QVERIFY(!dialog.isVisible());

        const ZblBasicReportModel& m = zblBasicReport();
        QVERIFY(m.cell(ZblReportColumn::ConbinedResistanceA, 0) != QString("---"));
        QVERIFY(!m.cell(ZblReportColumn::ConbinedResistanceA, 0).isEmpty());
        for (int r = 0; r < 19; ++r) {
            QCOMPARE(w.cell(ZblColumn::CompensatedA, r)->text(),
                     m.cell(ZblReportColumn::ConbinedResistanceA, r));
            QCOMPARE(w.cell(ZblColumn::CompensatedB, r)->text(),
                     m.cell(ZblReportColumn::ConbinedResistanceB, r));
        }
        QCOMPARE(controlText(w, "lbTexteCompensedTemp(1)"), m.lbTexteCompensedTemp1);
        QVERIFY(!m.lbTexteCompensedTemp1.isEmpty());
        QCOMPARE(box->currentText(), m.cbCompensationText);
        entry(w, "mnuOk")->trigger();
    }

    void channelAGraphMirrorsThePlotOverTheReport()
    {
        openSample(QStringLiteral("zbl-manual-19-rows.zbl"));
        frmZBLBasicReport& w = frmZBLBasicReport::instance();
        w.mirrorModel();
        frmZBLVGraph& graph = frmZBLVGraph::instance();
        bool graphShown = false;
        QTimer::singleShot(0, &graph, [&] {
            graphShown = graph.isVisible();
            graph.close();
        });
        entry(w, "mnuVGraphA")->trigger();
        QVERIFY(graphShown);
        QVERIFY(!graph.isVisible());
        QCOMPARE(graph.windowModality(), Qt::ApplicationModal);
        QCOMPARE(graph.parentWidget(), static_cast<QWidget*>(&w));

        const VGraphForm& form = zblVGraph().window;
        QCOMPARE(GraphChannel(), QString("A"));
        QCOMPARE(form.lbCHAN, controlText(w, "lbTexteCHANA"));
        QCOMPARE(form.CWGraph1.caption, zblBasicReport().cell(ZblReportColumn::WindingA, 0));
        const PlotArray& plot = form.CWGraph1.plot1;
        QVERIFY(plot.columns() > 1);
        const QList<QPointF> points = graph.CWGraph1().plot->points();
        QCOMPARE(points.size(), plot.columns());
        for (int i = 0; i < plot.columns(); ++i) {
            QCOMPARE(points[i].x(), plot.at(0, i));
            QCOMPARE(points[i].y(), plot.at(1, i));
        }
        QCOMPARE(graph.CWGraph1().axisY->max(), form.CWGraph1.y.maximum);
        QCOMPARE(controlText(graph, "lbCHAN"), form.lbCHAN);
    }

    void channelBGraphPlotsChannelB()
    {
        openSample(QStringLiteral("zbl-manual-19-rows.zbl"));
        frmZBLBasicReport& w = frmZBLBasicReport::instance();
        w.mirrorModel();
        frmZBLVGraph& graph = frmZBLVGraph::instance();
        bool graphShown = false;
        QTimer::singleShot(0, &graph, [&] {
            graphShown = graph.isVisible();
            graph.close();
        });
        entry(w, "mnuVGraphB")->trigger();
        QVERIFY(graphShown);

        const VGraphForm& form = zblVGraph().window;
        QCOMPARE(GraphChannel(), QString("B"));
        QCOMPARE(form.lbCHAN, controlText(w, "lbTexteCHANB"));
        QCOMPARE(form.CWGraph1.caption, zblBasicReport().cell(ZblReportColumn::WindingB, 0));
        // Channel B of this sample reads in microohms: the plot holds ohms.
        const PlotArray& plot = form.CWGraph1.plot1;
        QVERIFY(plot.columns() > 1);
        QVERIFY(plot.at(1, 1) > 0.0 && plot.at(1, 1) < 0.001);
        const QList<QPointF> points = graph.CWGraph1().plot->points();
        QCOMPARE(points.size(), plot.columns());
        QCOMPARE(points[1].y(), plot.at(1, 1));
        QCOMPARE(controlText(graph, "lbCHAN"), form.lbCHAN);
    }

    void vGraphZoomsIntoADrawnRectangleAndDoubleClickRestores()
    {
        frmZBLVGraph& graph = openGraphAForMouse();
        QWidget* viewport = graph.CWGraph1().view->viewport();
        const Axes full = axesOf(graph);
        QCOMPARE(full.xMin, zblVGraph().window.CWGraph1.x.minimum);

        graph.findChild<QCheckBox*>("ckZoom")->click();
        QVERIFY(zblVGraph().window.ckZoom);
        QCOMPARE(zblVGraph().window.CWGraph1.trackMode, TrackZoomRectangle);
        QVERIFY(!graph.findChild<QLabel*>("lbUnZoom")->isHidden());

        const double w = full.xMax - full.xMin;
        const double h = full.yMax - full.yMin;
        const QPoint from = viewportPointOf(graph, {full.xMin + w / 4, full.yMin + h / 4});
        const QPoint to = viewportPointOf(graph, {full.xMax - w / 4, full.yMax - h / 4});
        // The rectangle in values as the graph shows them before the zoom.
        const QPointF a = valueOfViewportPoint(graph, from);
        const QPointF b = valueOfViewportPoint(graph, to);
        dragOnGraph(graph, from, to);

        Axes zoomed = axesOf(graph);
        QCOMPARE(zoomed.xMin, std::min(a.x(), b.x()));
        QCOMPARE(zoomed.xMax, std::max(a.x(), b.x()));
        QCOMPARE(zoomed.yMin, std::min(a.y(), b.y()));
        QCOMPARE(zoomed.yMax, std::max(a.y(), b.y()));
        QVERIFY(zoomed.xMin > full.xMin && zoomed.xMax < full.xMax);
        QVERIFY(zoomed.yMin > full.yMin && zoomed.yMax < full.yMax);
        QCOMPARE(zblVGraph().window.CWGraph1.x.minimum, zoomed.xMin);
        QVERIFY(!graph.findChild<QLabel*>("lbUnZoom")->isHidden());

        const QPoint middle = viewport->rect().center();
        QTest::mouseDClick(viewport, Qt::LeftButton, {}, middle);
        QTest::mouseRelease(viewport, Qt::LeftButton, {}, middle);
        const Axes restored = axesOf(graph);
        QCOMPARE(restored.xMin, full.xMin);
        QCOMPARE(restored.xMax, full.xMax);
        QCOMPARE(restored.yMin, full.yMin);
        QCOMPARE(restored.yMax, full.yMax);
        QVERIFY(graph.findChild<QLabel*>("lbUnZoom")->isHidden());
        QVERIFY(!graph.findChild<QCheckBox*>("ckZoom")->isChecked());
        QCOMPARE(zblVGraph().window.CWGraph1.trackMode, TrackDragCursor);
        graph.close();
    }

    void vGraphRightClickKeepsTheZoom()
    {
        frmZBLVGraph& graph = openGraphAForMouse();
        QWidget* viewport = graph.CWGraph1().view->viewport();
        const Axes full = zoomIntoTheMiddle(graph);
        const Axes zoomed = axesOf(graph);
        QVERIFY(zoomed.xMax < full.xMax);

        QTest::mouseClick(viewport, Qt::RightButton, {}, viewport->rect().center());
        const Axes after = axesOf(graph);
        QCOMPARE(after.xMin, zoomed.xMin);
        QCOMPARE(after.xMax, zoomed.xMax);
        QCOMPARE(after.yMin, zoomed.yMin);
        QCOMPARE(after.yMax, zoomed.yMax);
        QVERIFY(!graph.findChild<QLabel*>("lbUnZoom")->isHidden());

        zblVGraph().CWGraph1_DblClick();
        graph.mirror(zblVGraph().window);
        graph.close();
    }

    void vGraphCursorDragShowsResistanceAndPosition()
    {
        useLanguage({"frmZBLVGraph.lbCurrent,Tap"});
        frmZBLVGraph& graph = openGraphAForMouse();
        QCOMPARE(zblVGraph().window.CWGraph1.trackMode, TrackDragCursor);
        const Axes full = axesOf(graph);
        const double h = full.yMax - full.yMin;
        const QPoint from = viewportPointOf(graph, {full.xMin + 1, full.yMin + h / 3});
        const QPoint to = viewportPointOf(graph, {full.xMin + 3, full.yMin + h / 2});
        dragOnGraph(graph, from, to);

        const QPointF at = valueOfViewportPoint(graph, to);
        QCOMPARE(controlText(graph, "lbVolts"),
                 formatNumber(at.y() * 1000.0, u"0.000") + QStringLiteral("mohm"));
        QCOMPARE(controlText(graph, "lbCurrent"),
                 QStringLiteral("Tap ") + formatNumber(at.x(), u"0"));
        QCOMPARE(zblVGraph().window.CWGraph1.cursor.x, at.x());
        QCOMPARE(zblVGraph().window.CWGraph1.cursor.y, at.y());
        // The drag changed no axis.
        QCOMPARE(axesOf(graph).xMax, full.xMax);
        graph.close();
    }

    void vGraphYLabelsAreWholeApartAndFitLeftOfThePlot()
    {
        // The test of the picture: a V between 0.55 and 0.70 ohm, whose
        // labels once read "0.7...", "0.6...", "0.6...".
        frmZBLVGraph& graph = openGraphAForMouse(QStringLiteral("zbl-autotc-122-rows.zbl"));
        const GraphAxis full = zblVGraph().window.CWGraph1.y;
        QCOMPARE(vGraphTickDecimals(full.minimum, full.maximum, VGraphYTickCount), 2);
        checkYLabels(graph.CWGraph1(), full);
        if (QTest::currentTestFailed())
            return;

        // Zoomed into a tenth of the middle, the labels take the decimals of
        // the smaller steps.
        zoomIntoTheMiddle(graph, 0.1);
        QCoreApplication::processEvents();
        const GraphAxis zoomed = zblVGraph().window.CWGraph1.y;
        QVERIFY(zoomed.maximum - zoomed.minimum < full.maximum - full.minimum);
        QCOMPARE(vGraphTickDecimals(zoomed.minimum, zoomed.maximum, VGraphYTickCount), 3);
        checkYLabels(graph.CWGraph1(), zoomed);
        if (QTest::currentTestFailed())
            return;

        // The print twin, never shown, draws the whole curve with the same
        // labels when it is laid out for paper.
        frmPrintVGraph& paper = frmPrintVGraph::instance();
        paper.mirror(zblVGraph().print);
        (void)paper.grab();
        QCoreApplication::processEvents();
        (void)paper.grab();
        checkYLabels(paper.CWGraph1(), zblVGraph().print.CWGraph1.y);
        if (QTest::currentTestFailed())
            return;

        // Channel B of another test, in microohms, over a graph laid out
        // for milliohms.
        zblVGraph().CWGraph1_DblClick();
        graph.close();
        openSample(QStringLiteral("zbl-manual-19-rows.zbl"));
        frmZBLBasicReport& w = frmZBLBasicReport::instance();
        w.mirrorModel();
        QTimer::singleShot(0, &graph, [&] { graph.close(); });
        entry(w, "mnuVGraphB")->trigger();
        (void)graph.grab();
        QCoreApplication::processEvents();
        const GraphAxis micro = zblVGraph().window.CWGraph1.y;
        QVERIFY(micro.maximum < 0.001);
        QVERIFY(vGraphTickDecimals(micro.minimum, micro.maximum, VGraphYTickCount) >= 5);
        checkYLabels(graph.CWGraph1(), micro);
    }

    void vGraphPrintsItsPaperTwinOncePerCopy()
    {
        QTemporaryDir paper;
        frmZBLVGraph& graph = openGraphAForMouse();
        graph.findChild<QCheckBox*>("ckZoom")->click();
        ScriptedServices scripted;
        scripted.printer.pdfFile = paper.filePath(QStringLiteral("vgraph.pdf"));
        scripted.printer.accept(2, 1, 1); // the page range is read and not used
        entry(graph, "mnuPrint")->trigger();

        QCOMPARE(scripted.printer.requests.size(), std::size_t(1));
        QCOMPARE(pdfPages(scripted.printer.pdfFile), 2);
        for (int page = 1; page <= 2; ++page) {
            const QString text = pdfText(scripted.printer.pdfFile, page);
            // The head, the channel and the graph's caption come from the
            // graph; the axis labels are texts too.
            QVERIFY2(text.contains(QStringLiteral("zbl-manual-19-rows.zbl")), qPrintable(text));
            QVERIFY2(text.contains(zblVGraph().window.lbCHAN), qPrintable(text));
            QVERIFY2(text.contains(zblVGraph().window.CWGraph1.caption), qPrintable(text));
            // The paper twin has the texts of the language, as the graph does.
            QVERIFY2(text.contains(FindKeyInLanguageFile("frmZBLVGraph.lbTexteTestReport.Caption",
                                                         appState().LangFilePath)),
                     qPrintable(text));
        }
        // With the zoom box ticked, the unzoom hint comes back; the paper
        // twin is unloaded.
        QVERIFY(zblVGraph().window.lbUnZoomVisible);
        QVERIFY(zblVGraph().print.lbCHAN.isEmpty());

        // A cancel: the hint stays hidden and nothing is printed.
        QFile::remove(scripted.printer.pdfFile);
        entry(graph, "mnuPrint")->trigger();
        QVERIFY(!zblVGraph().window.lbUnZoomVisible);
        QVERIFY(!QFile::exists(scripted.printer.pdfFile));
        QVERIFY(graph.findChild<QLabel*>("lbUnZoom")->isHidden());
        graph.close();
    }

    void basicReportPrintsThirtyThreeRowsAPage_data()
    {
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("copies");
        QTest::addColumn<int>("pages");
        QTest::newRow("33 rows, one page") << 33 << 1 << 1;
        QTest::newRow("34 rows, two pages") << 34 << 1 << 2;
        QTest::newRow("34 rows, two copies collated") << 34 << 2 << 4;
        QTest::newRow("70 rows, three pages") << 70 << 1 << 3;
        QTest::newRow("100 rows, four pages") << 100 << 1 << 4;
    }

    void basicReportPrintsThirtyThreeRowsAPage()
    {
        QFETCH(int, rows);
        QFETCH(int, copies);
        QFETCH(int, pages);
        openSavedTest(rows);
        QTemporaryDir paper;
        ScriptedServices scripted;
        scripted.printer.pdfFile = paper.filePath(QStringLiteral("report.pdf"));
        // The page range is read and not used: every page is printed.
        scripted.printer.accept(copies, 2, 2);
        entry(frmZBLBasicReport::instance(), "mnuBasicReport")->trigger();

        QCOMPARE(scripted.printer.requests.size(), std::size_t(1));
        QCOMPARE(pdfPages(scripted.printer.pdfFile), pages);
        const int perCopy = pages / copies;
        for (int page = 1; page <= pages; ++page) {
            const QString text = pdfText(scripted.printer.pdfFile, page);
            const int p = (page - 1) % perCopy + 1;
            QVERIFY2(text.contains(QStringLiteral("Page %1 / %2").arg(p).arg(perCopy)),
                     qPrintable(text));
            // The head of the test stands on the first page of each copy only.
            QCOMPARE(text.contains(QStringLiteral("Harlow Substation")), p == 1);
            QCOMPARE(text.contains(QStringLiteral("printed.zbl")), p == 1);
            // The page's rows, and none of the others.
            const int first = (p - 1) * 33;
            const int last = std::min(rows, p * 33) - 1;
            for (const int row : {first, last})
                QVERIFY2(text.contains(QStringLiteral("P%1A").arg(row)), qPrintable(text));
            if (first > 0)
                QVERIFY(!text.contains(QStringLiteral("P%1A").arg(first - 1)));
            QVERIFY(!text.contains(QStringLiteral("P%1A").arg(last + 1)));
            // The report's heads, as the report shows them, on every page.
            QVERIFY2(text.contains(FindKeyInLanguageFile("frmZBLBasicReport.lbTexteCHANA.Caption",
                                                         appState().LangFilePath)),
                     qPrintable(text));
        }
        // The print window stays hidden throughout.
        QVERIFY(frmPrintZBLBasicReport::instance().isHidden());
    }

    void basicReportPrintsNothingOnCancelOrWithoutRows()
    {
        QTemporaryDir paper;
        ScriptedServices scripted;
        scripted.printer.pdfFile = paper.filePath(QStringLiteral("report.pdf"));
        openSavedTest(12);
        entry(frmZBLBasicReport::instance(), "mnuBasicReport")->trigger(); // cancelled
        QCOMPARE(scripted.printer.requests.size(), std::size_t(1));
        QVERIFY(!QFile::exists(scripted.printer.pdfFile));

        // No row: the count of one gives no page, after the dialog.
        openSavedTest(0);
        scripted.printer.accept();
        entry(frmZBLBasicReport::instance(), "mnuBasicReport")->trigger();
        QCOMPARE(scripted.printer.requests.size(), std::size_t(2));
        QVERIFY(!QFile::exists(scripted.printer.pdfFile));
    }

    void basicReportPrintShowsTheCompensationAndEditedCells()
    {
        openSavedTest(5);
        frmZBLBasicReport& w = frmZBLBasicReport::instance();
        QLineEdit* tap = w.cell(ZblColumn::TapA, 2);
        tap->setText(QString());
        QTest::keyClicks(tap, QStringLiteral("N_EDIT"));
        // The operator writes the compensation into its box.
        QTest::keyClicks(w.cbCompensation()->lineEdit(), QStringLiteral("Copper (TK=234.5)"));
        QTemporaryDir paper;
        ScriptedServices scripted;
        scripted.printer.pdfFile = paper.filePath(QStringLiteral("report.pdf"));
        scripted.printer.accept();
        entry(w, "mnuBasicReport")->trigger();
        const QString text = pdfText(scripted.printer.pdfFile, 1);
        QVERIFY2(text.contains(QStringLiteral("N_EDIT")), qPrintable(text));
        QVERIFY2(text.contains(QStringLiteral("Copper (TK=234.5)")), qPrintable(text));
        QCOMPARE(frmPrintZBLBasicReport::instance()
                     .findChild<QLabel*>(QStringLiteral("lbCompensendFactor"))
                     ->text(),
                 QStringLiteral("Copper (TK=234.5)"));
    }

    void vGraphXLabelsStayWholeAndDistinctWhenZoomed()
    {
        frmZBLVGraph& graph = openGraphAForMouse();
        VGraphForm& form = zblVGraph().window;
        const VGraphChart& c = graph.CWGraph1();
        form.CWGraph1.x.minimum = 3.0;
        form.CWGraph1.x.maximum = 5.0;
        graph.mirror(form);
        QCOMPARE(c.axisX->tickCount(), 3);
        QCOMPARE(c.axisX->labelFormat(), QString("%.0f"));
        form.CWGraph1.x.minimum = 2.5;
        form.CWGraph1.x.maximum = 4.0;
        graph.mirror(form);
        QCOMPARE(c.axisX->tickCount(), VGraphXTickCount);
        QCOMPARE(c.axisX->labelFormat(), QString("%.%1f").arg(vGraphTickDecimals(2.5, 4.0, 5)));
        QVERIFY(vGraphTickDecimals(2.5, 4.0, 5) > 0);
        graph.close();
    }

    void saveWritesTheEditedReportThatOpensAgain()
    {
        openSavedTest(5);
        frmZBLBasicReport& w = frmZBLBasicReport::instance();
        QLineEdit* tap = w.cell(ZblColumn::TapA, 1);
        tap->setText(QString());
        QTest::keyClicks(tap, QStringLiteral("N_SAVED"));
        ScriptedServices scripted;
        const QString path = programDir.filePath(QStringLiteral("edited.zbl"));
        QFile::remove(path);
        scripted.files.saveAnswers.push_back(path);
        entry(w, "mnuSave")->trigger();
        QCOMPARE(scripted.files.saveRequests.size(), std::size_t(1));
        QVERIFY(QFile::exists(path));
        // The head names the saved file; the file opened first is left as it
        // was.
        QVERIFY2(w.findChild<QLabel*>(QStringLiteral("lbTexteFileName(1)"))
                     ->text()
                     .contains(QStringLiteral("edited.zbl")),
                 qPrintable(w.findChild<QLabel*>(QStringLiteral("lbTexteFileName(1)"))->text()));

        // Read back through the open road: the edit is in the report.
        scripted.files.answers.push_back(path);
        CountedBringUp report;
        const Installed<ZblReportWindow> counted(report);
        mnZBLFiles_Click();
        w.mirrorModel();
        QCOMPARE(w.cell(ZblColumn::TapA, 1)->text(), QStringLiteral("N_SAVED"));
        QCOMPARE(w.cell(ZblColumn::TapA, 4)->text(), QStringLiteral("P4A"));

        // A cancelled dialog writes nothing.
        QFile::remove(path);
        entry(w, "mnuSave")->trigger();
        QVERIFY(!QFile::exists(path));
    }

    void vGraphCursorIsDrawnOnThePlotOnly()
    {
        useLanguage({"frmZBLVGraph.lbCurrent,Tap"});
        frmZBLVGraph& graph = openGraphAForMouse(QStringLiteral("zbl-autotc-122-rows.zbl"));
        const VGraphChart& c = graph.CWGraph1();
        const Axes full = axesOf(graph);

        // As the window is loaded, the cursor stands at (0, 0): left of the
        // first row and below the curve, so it is not drawn.
        GraphCursor& cursor = zblVGraph().window.CWGraph1.cursor;
        cursor.x = 0.0;
        cursor.y = 0.0;
        cursor.visible = true;
        graph.mirror(zblVGraph().window);
        QCoreApplication::processEvents();
        checkRingHidden(graph);

        // A press on the Y labels, left of the plot, does not take the cursor.
        const QRect area = plotAreaInViewport(c);
        QWidget* viewport = c.view->viewport();
        const QPoint onLabels(area.left() - 15, area.center().y());
        QTest::mouseClick(viewport, Qt::LeftButton, {}, onLabels);
        QCOMPARE(cursor.x, 0.0);
        QCOMPARE(cursor.y, 0.0);
        checkRingHidden(graph);

        // A press on the plot does, and the ring stands on it.
        const double h = full.yMax - full.yMin;
        const QPoint onPlot = viewportPointOf(graph, {31.0, full.yMin + h / 2});
        QTest::mouseClick(viewport, Qt::LeftButton, {}, onPlot);
        QVERIFY(std::abs(cursor.x - 31.0) < 0.5);
        checkRingOnPlot(graph);

        // Dragged past the Y axis, the cursor stays at the plot's left edge,
        // half of its ring cut away.
        dragOnGraph(graph, onPlot, QPoint(2, onPlot.y()));
        QCOMPARE(cursor.x, full.xMin);
        QVERIFY(cursor.y > full.yMin && cursor.y < full.yMax);
        checkRingOnPlot(graph);

        // A zoom that leaves the cursor's point out hides the ring...
        zoomIntoTheMiddle(graph);
        QCoreApplication::processEvents();
        QVERIFY(axesOf(graph).xMin > cursor.x);
        QCOMPARE(cursor.x, full.xMin);
        checkRingHidden(graph);

        // ...a click ends the zoom mode, and a press on the zoomed plot then
        // puts the cursor there, where the labels of the zoom leave the plot
        // area...
        const Axes zoomed = axesOf(graph);
        const QPoint inZoom = viewportPointOf(
            graph, {(zoomed.xMin + zoomed.xMax) / 2, (zoomed.yMin + zoomed.yMax) / 2});
        QTest::mouseClick(viewport, Qt::LeftButton, {}, inZoom);
        QCOMPARE(zblVGraph().window.CWGraph1.trackMode, TrackDragCursor);
        checkRingHidden(graph);
        QTest::mouseClick(viewport, Qt::LeftButton, {}, inZoom);
        QCoreApplication::processEvents();
        QVERIFY(cursor.x > zoomed.xMin && cursor.x < zoomed.xMax);
        checkRingOnPlot(graph);

        // ...and the unzoom keeps it on its point of the whole curve.
        QTest::mouseDClick(viewport, Qt::LeftButton, {}, inZoom);
        QTest::mouseRelease(viewport, Qt::LeftButton, {}, inZoom);
        QCoreApplication::processEvents();
        QCOMPARE(axesOf(graph).xMin, full.xMin);
        checkRingOnPlot(graph);
        graph.close();
    }
};

int main(int argc, char** argv)
{
    QuenbyApplication application(argc, argv);
    // The run's state, as the program's main makes it, before any window.
    quenby::Sessions sessions;
    quenby::installWindows(quenby::frmMain::instance());
    ZblWindowsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ZblWindowsTest.moc"

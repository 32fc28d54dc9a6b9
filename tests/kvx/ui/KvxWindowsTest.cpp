// The KVX windows, offscreen: the condensed report and the temperature
// compensation dialog are each one instance that only hides, hold every
// control of their pages under the control's name, and take their texts from
// the language; the report's insulation column mirrors the report model.
#include "app/QuenbyApplication.h"
#include "app/Sessions.h"
#include "app/Wiring.h"
#include "app/frmMain.h"
#include "kvx/model/KneeGraph.h"
#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxReportView.h"
#include "kvx/model/KvxTestFileReader.h"
#include "kvx/model/KvxTestRecord.h"
#include "kvx/model/KvxTestRoad.h"
#include "kvx/ui/frmKVXCondensedReport.h"
#include "localisation/model/WindowTextKeys.h"
#include "localisation/ui/WindowTexts.h"
#include "report/ui/frmCompensedResistanceSetting.h"
#include "shell/model/AppState.h"
#include "shell/model/NumberText.h"
#include "shell/model/Platform.h"
#include "shell/model/ProgressAbout.h"
#include "shell/model/SequentialFiles.h"
#include "tests/support/PdfReadBack.h"
#include "tests/support/ScriptedServices.h"
#include "tests/support/ScriptedViews.h"
#include "tests/support/TestFiles.h"
#include "tests/support/WindowChecks.h"

#include <QAbstractScrollArea>
#include <QChart>
#include <QChartView>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFrame>
#include <QGraphicsItem>
#include <QImage>
#include <QLabel>
#include <QLegend>
#include <QLegendMarker>
#include <QLineEdit>
#include <QLineSeries>
#include <QLogValueAxis>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QScatterSeries>
#include <QScrollBar>
#include <QSet>
#include <QTemporaryDir>
#include <QTimer>
#include <QWheelEvent>
#include <QtTest>

#include <array>
#include <cmath>

using namespace quenby;
using namespace quenby::testing;

namespace {

// How many windows of that name the application holds.
int windowsNamed(const QString& name)
{
    int count = 0;
    for (const QWidget* w : QApplication::allWidgets())
        if (w->isWindow() && w->objectName() == name)
            ++count;
    return count;
}

const QString ReportFill = QStringLiteral("FillTextsKvxCondensedReport");
const QString DialogFill = QStringLiteral("FillTextsCompensedResistance");

QWidget& windowOf(const QString& routine)
{
    if (routine == ReportFill)
        return frmKVXCondensedReport::instance();
    return frmCompensedResistanceSetting::instance();
}

void runFill(const QString& routine)
{
    if (routine == ReportFill)
        frmKVXCondensedReport::instance().FillTextsKvxCondensedReport();
    else
        frmCompensedResistanceSetting::instance().FillTextsCompensedResistance();
}

QLogValueAxis* axisOf(const QWidget& window, Qt::Orientation orientation)
{
    auto* view = window.findChild<QChartView*>(QStringLiteral("CWGraph1"));
    if (!view)
        return nullptr;
    const QList<QAbstractAxis*> axes = view->chart()->axes(orientation);
    return axes.size() == 1 ? qobject_cast<QLogValueAxis*>(axes.first()) : nullptr;
}

// What an entry's place shows: the control's text, a list item or an axis
// caption, each read from its own widget.
QString shownText(const QWidget& window, const WindowTextEntry& entry)
{
    const QString control = QString::fromLatin1(entry.control);
    switch (entry.target) {
    case TextTarget::ListItem0:
    case TextTarget::ListItem1: {
        auto* list = window.findChild<QComboBox*>(control);
        if (!list)
            return QStringLiteral("<no list>");
        return list->itemText(entry.target == TextTarget::ListItem0 ? 0 : 1);
    }
    case TextTarget::AxisXCaption:
    case TextTarget::AxisYCaption: {
        QLogValueAxis* axis = axisOf(
            window, entry.target == TextTarget::AxisXCaption ? Qt::Horizontal : Qt::Vertical);
        return axis ? axis->titleText() : QStringLiteral("<no axis>");
    }
    default: {
        // A head whose word is too wide for its column shows the word broken
        // with a hyphen at the end of a line: the same text, read unbroken.
        QString text = controlText(window, control);
        text.replace(QLatin1String("-\n"), QString());
        text.replace(u'\n', u' ');
        return text;
    }
    }
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

// Where a control lies on the report's page.
QRect onPage(const QString& name)
{
    frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
    QWidget* control = widget(w, name);
    if (!control)
        return {};
    return QRect(control->mapTo(w.frKVXReport(), QPoint(0, 0)), control->size());
}

// Lays the report out as a grab does, without showing it.
void layOut(QWidget& window)
{
    (void)window.grab();
}

const QStringList HeadCaptions = {
    "lbDeviceTestReport",     "lbTexteTestReport",
    "lbTexteFileName",        "lbTexteDate",
    "lbTexteInstrumentSN",    "lbTexteCompany",
    "lbTexteDesignator",      "lbTexteCTSerialNumber",
    "lbTexteTemperature",     "lbTexteRatio",
    "lbTextePhase",           "lbTexteClass",
    "lbTexteStation",         "lbTexteManufacturer",
    "lbTexteOperator",        "lbTexteVoltageRAting",
    "lbTextePosition",        "lbKneeType",
    "lbTexteNotes",           "lbTexteCompensedTemp",
    "lbTexteCompensedFactor", "imgLogo",
};
const QStringList HeadValues = {"lbTexteFileName(1)", "lbTexteDate(1)", "lbTexteInstrumentSN(1)",
                                "lbTexteCompensedTemp(1)"};
// The text boxes of the description, each with the label that stands in for
// it on paper.
const QStringList HeadBoxes = {"Company",      "Class", "CTSerialNumber", "Designator",
                               "Manufacturer", "Notes", "Operator",       "Phase",
                               "Position",     "Ratio", "Station",        "Temperature",
                               "VoltageRating"};
const QStringList TableArrays = {"lbTestNumber",
                                 "lbTapTest",
                                 "lbIEE30Test",
                                 "lbIEE45Test",
                                 "lbAINSIIC1050Test",
                                 "lbNPRATIOTest",
                                 "lbMSRATIOTest",
                                 "lbErrorTest",
                                 "lbPhaseTest",
                                 "lbPolarity",
                                 "lbWindingResTest",
                                 "lbWindingCompTest",
                                 "lbInsulationResistanceTest"};
const QStringList GraphLabels = {"lbVolts", "lbCurrent", "lbUnZoom", "lbCurseur"};
const QStringList MenuEntries = {"mnSave",       "mnExport",     "mnExcel",
                                 "mnWord",       "mnPrint",      "mnKneepoint",
                                 "mnKneeIEEE30", "mnKneeIEEE45", "mnKneeAINSIIEC1050",
                                 "mnOk"};

} // namespace

class KvxWindowsTest : public QObject
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

    static void addRoutineRows()
    {
        QTest::addColumn<QString>("routine");
        QTest::newRow("frmKVXCondensedReport") << ReportFill;
        QTest::newRow("frmCompensedResistanceSetting") << DialogFill;
    }

    // The program's English texts, as the language load leaves them.
    void useShippedLanguage()
    {
        setAppPathOverride(programDir.path());
        appState().LangFilePath = langSourcePath(QStringLiteral("en.lng"));
    }

    // The main window's road after the knee choice, on a sample file: the
    // report emptied, the file read, the report filled and mirrored.
    void openAndFill(const QString& sample, const char* standard)
    {
        useShippedLanguage();
        kvxCondensedReport() = KvxCondensedReportModel{};
        kvxReportGraph() = KneeGraph{};
        frmTestExcelChart() = TestExcelChart{};
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        w.FillTextsKvxCondensedReport();

        OpenKvxTestForReport(samplePath(sample), QString::fromLatin1(standard));
        w.mirrorModel();
    }

    static void showLaidOut(QWidget& window)
    {
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        // Chart axes and plot area lay out anew only when events run.
        QCoreApplication::processEvents();
    }

    static void sendMouse(QWidget* target, QEvent::Type type, QPoint at, Qt::MouseButton button,
                          Qt::MouseButtons held = Qt::NoButton)
    {
        const Qt::MouseButtons buttons =
            type == QEvent::MouseButtonPress ? Qt::MouseButtons(button) : held;
        QMouseEvent event(type, QPointF(at), QPointF(target->mapToGlobal(at)), button, buttons,
                          Qt::NoModifier);
        QApplication::sendEvent(target, &event);
    }

    // The plot area of the chart in pixels of its viewport.
    static QRect plotAreaInViewport(const KvxKneeChart& graph)
    {
        QChart* chart = graph.chart();
        return graph.mapFromScene(chart->mapRectToScene(chart->plotArea())).boundingRect();
    }

    // Each knee cursor is drawn exactly when the model shows it and its point
    // lies within the axes as drawn; a drawn one stands on its point, inside
    // the plot area, clipped to it. Gives how many are drawn.
    static int checkKneeCursorsOnPlot(const KvxKneeChart& graph)
    {
        QChart* chart = graph.chart();
        const QRectF around = chart->plotArea().adjusted(-0.5, -0.5, 0.5, 0.5);
        const GraphAxis shownX{QString(), graph.axisX()->min(), graph.axisX()->max(), true};
        const GraphAxis shownY{QString(), graph.axisY()->min(), graph.axisY()->max(), true};
        int drawn = 0;
        for (int n = 1; n <= KvxKneeChart::CursorCount; ++n) {
            const QPointF value = graph.cursorValue(n);
            const bool onPlot = kneePointOnPlot(value.x(), value.y(), shownX, shownY);
            [&] { QCOMPARE(graph.cursorDrawn(n), graph.cursorVisible(n) && onPlot); }();
            if (!graph.cursorDrawn(n))
                continue;
            ++drawn;
            const QGraphicsItem* item = graph.cursorItem(n);
            const QPointF centre = chart->mapFromScene(item->scenePos());
            const QPointF point = chart->mapToPosition(value, graph.plot(1));
            [&] {
                QVERIFY2(QLineF(centre, point).length() < 0.5, qPrintable(kvxCursorName(n)));
                QVERIFY2(around.contains(centre), qPrintable(kvxCursorName(n)));
                QVERIFY(item->isClipped());
                const QRectF paintable =
                    chart->mapFromScene(item->mapToScene(item->clipPath())).boundingRect();
                QVERIFY(around.contains(paintable));
            }();
        }
        return drawn;
    }

    // What the cursors add to the chart's picture lies within its plot area
    // (and a pixel of antialiasing around it): with the model's cursors shown
    // and hidden, the picture differs nowhere else. Gives how many pixels
    // they change.
    static int checkCursorsPaintOnlyOnPlot(frmKVXCondensedReport& w)
    {
        const KvxKneeChart& graph = w.CWGraph1();
        KneeGraph& model = kvxReportGraph();
        const QImage with = graph.viewport()->grab().toImage();
        std::array<bool, KvxKneeChart::CursorCount> shown{};
        for (int n = 1; n <= KvxKneeChart::CursorCount; ++n) {
            shown[static_cast<std::size_t>(n - 1)] = model.cursor(n).visible;
            model.setCursorVisible(n, false);
        }
        w.mirrorModel();
        const QImage without = graph.viewport()->grab().toImage();
        for (int n = 1; n <= KvxKneeChart::CursorCount; ++n)
            model.setCursorVisible(n, shown[static_cast<std::size_t>(n - 1)]);
        w.mirrorModel();

        const QRect area = plotAreaInViewport(graph).adjusted(-1, -1, 1, 1);
        int changed = 0;
        for (int y = 0; y < with.height(); ++y) {
            for (int x = 0; x < with.width(); ++x) {
                if (with.pixel(x, y) == without.pixel(x, y))
                    continue;
                ++changed;
                [&] {
                    QVERIFY2(area.contains(x, y),
                             qPrintable(QStringLiteral("a cursor paints at %1,%2").arg(x).arg(y)));
                }();
                if (QTest::currentTestFailed())
                    return changed;
            }
        }
        return changed;
    }

    static void clearReportModel()
    {
        for (int n = 0; n <= KvxCondensedReportModel::RowCount; ++n)
            kvxCondensedReport().lbInsulationResistanceTest(n).clear();
    }

private Q_SLOTS:
    void cleanup()
    {
        clearReportModel();
        appState().ProcessInProgress = False16;
        appState().LangFilePath.clear();
        setAppPathOverride({});
    }

    // Runs first: later tests fill the windows and overwrite these texts.
    void designTextsBeforeAnyFill()
    {
        const frmKVXCondensedReport& report = frmKVXCondensedReport::instance();
        QCOMPARE(report.windowTitle(), QString("KVX Condensed Report"));
        QCOMPARE(controlText(report, "lbUnZoom"),
                 QString("***Double-click on graph for full size graph."));
        QCOMPARE(controlText(report, "txBurden"), QString("BURDEN: "));
        // Two entries from the start, index 0 aluminium and index 1 copper, as
        // the compensation rule reads them; none of them chosen.
        QComboBox* compensation = report.cbCompensation();
        QCOMPARE(compensation->count(), 2);
        QCOMPARE(compensation->itemText(0), QString("Alluminium (TK=225)"));
        QCOMPARE(compensation->itemText(1), QString("Copper (TK=234.5)"));
        QCOMPARE(compensation->currentIndex(), -1);
        QCOMPARE(compensation->currentText(), QString());
        QCOMPARE(axisOf(report, Qt::Horizontal)->titleText(), QString("Current (mA)"));
        QCOMPARE(axisOf(report, Qt::Vertical)->titleText(), QString("Voltage (Volts)"));
        QCOMPARE(controlText(report, "mnKneeIEEE30"), QString("IEEE 30"));
        QCOMPARE(controlText(report, "mnKneeIEEE45"), QString("IEEE 45"));
        QCOMPARE(controlText(report, "mnKneeAINSIIEC1050"), QString("AINSI/IEC10/50"));
        // The window's icon is the language fill's to set.
        QVERIFY(report.windowIcon().isNull());
        for (const QString& array : TableArrays)
            QVERIFY2(!controlText(report, array + "(0)").isEmpty(), qPrintable(array));
    }

    void eachWindowIsOneInstanceMadeHidden()
    {
        // Asked for again and again, each window exists once.
        for (int i = 0; i < 2; ++i) {
            frmKVXCondensedReport::instance();
            frmCompensedResistanceSetting::instance();
        }
        QCOMPARE(windowsNamed(QStringLiteral("frmKVXCondensedReport")), 1);
        QCOMPARE(windowsNamed(QStringLiteral("frmCompensedResistanceSetting")), 1);
        for (QWidget* w : std::initializer_list<QWidget*>{
                 &frmKVXCondensedReport::instance(), &frmCompensedResistanceSetting::instance()}) {
            QVERIFY2(!w->isVisible(), qPrintable(w->objectName()));
            QVERIFY(!w->testAttribute(Qt::WA_DeleteOnClose));
        }
        QCOMPARE(frmKVXCondensedReport::instance().objectName(), QString("frmKVXCondensedReport"));
        QCOMPARE(frmCompensedResistanceSetting::instance().objectName(),
                 QString("frmCompensedResistanceSetting"));
    }

    void closingOnlyHides()
    {
        for (QWidget* w : std::initializer_list<QWidget*>{
                 &frmKVXCondensedReport::instance(), &frmCompensedResistanceSetting::instance()}) {
            QPointer<QWidget> alive(w);
            w->show();
            QVERIFY(w->isVisible());
            QVERIFY(w->close());
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY(!alive.isNull());
            QVERIFY(w->isHidden());
        }
    }

    void reportHasEveryControl()
    {
        const frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        requireControls<QLabel>(w, HeadCaptions);
        requireControls<QLabel>(w, HeadValues);
        for (const QString& field : HeadBoxes) {
            requireControls<QLineEdit>(w, {"txt" + field});
            requireControls<QLabel>(w, {"lbTxt" + field});
            // On screen the box shows; its paper twin waits for a print.
            QVERIFY2(!widget(w, "txt" + field)->isHidden(), qPrintable(field));
            QVERIFY2(widget(w, "lbTxt" + field)->isHidden(), qPrintable(field));
        }
        requireControls<QLineEdit>(w, {"txBurden"});
        requireControls<QComboBox>(w, {"cbCompensation"});
        requireControls<QLabel>(w, {"lbCompensation", "lbCbCompensation"});
        QVERIFY(widget(w, "lbCompensation")->isHidden());
        QVERIFY(widget(w, "lbCbCompensation")->isHidden());
        QVERIFY(w.cbCompensation()->isEditable());
        requireArrays<QLabel>(w, TableArrays, frmKVXCondensedReport::RowCount + 1);
        QCOMPARE(frmKVXCondensedReport::RowCount, 10);

        requireControls<QLabel>(w, GraphLabels);
        requireControls<QCheckBox>(w, {"ckZoom"});
        requireControls<QChartView>(w, {"CWGraph1"});
        QVERIFY(widget(w, "lbUnZoom")->isHidden()); // shown only while zoomed
        QVERIFY(!w.findChild<QCheckBox*>("ckZoom")->isChecked());

        // The whole page scrolls: head, table and graph lie on frKVXReport,
        // the widget of the scroll area whose bar is VScroll1.
        requireControls<QFrame>(w, {"frKVXReport"});
        requireControls<QScrollBar>(w, {"VScroll1"});
        auto* bar = w.findChild<QScrollBar*>("VScroll1");
        QCOMPARE(bar->orientation(), Qt::Vertical);
        auto* area = qobject_cast<QAbstractScrollArea*>(w.centralWidget());
        QVERIFY(area);
        QCOMPARE(area->verticalScrollBar(), bar);
        QCOMPARE(w.VScroll1(), bar);
        QCOMPARE(w.frKVXReport()->parentWidget(), area->viewport());
        // A step is 30 twips; an arrow click moves 8 of them, about a row.
        QCOMPARE(bar->singleStep(), 8);
        QWidget* page = w.frKVXReport();
        for (const char* name : {"imgLogo", "txtCompany", "lbTapTest(10)", "cbCompensation",
                                 "CWGraph1", "ckZoom", "lbTxtNotes"})
            QVERIFY2(page->isAncestorOf(widget(w, name)), name);

        // The accessors hand out the named controls.
        QCOMPARE(w.cell(KvxColumn::TestNumber, 0)->objectName(), QString("lbTestNumber(0)"));
        QCOMPARE(w.cell(KvxColumn::Polarity, 3)->objectName(), QString("lbPolarity(3)"));
        QCOMPARE(w.cell(KvxColumn::Insulation, 10)->objectName(),
                 QString("lbInsulationResistanceTest(10)"));
        for (int c = 0; c < KvxColumnCount; ++c)
            QCOMPARE(kvxColumnArray(static_cast<KvxColumn>(c)), TableArrays[c]);
    }

    void reportMenus()
    {
        const frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        for (const QString& name : MenuEntries)
            QVERIFY2(entry(w, name), qPrintable(name));
        // No save and no word-processor export in this window.
        QVERIFY(!entry(w, "mnSave")->isEnabled());
        QVERIFY(!entry(w, "mnWord")->isEnabled());
        for (const char* name : {"mnExport", "mnExcel", "mnPrint", "mnKneepoint", "mnKneeIEEE30",
                                 "mnKneeIEEE45", "mnKneeAINSIIEC1050", "mnOk"}) {
            QVERIFY2(entry(w, name)->isEnabled(), name);
            QVERIFY2(entry(w, name)->isVisible(), name);
        }
        auto* exportMenu = w.findChild<QMenu*>("mnExport");
        auto* knee = w.findChild<QMenu*>("mnKneepoint");
        QVERIFY(exportMenu && knee);
        QCOMPARE(exportMenu->actions(), (QList<QAction*>{entry(w, "mnExcel"), entry(w, "mnWord")}));
        QCOMPARE(knee->actions(),
                 (QList<QAction*>{entry(w, "mnKneeIEEE30"), entry(w, "mnKneeIEEE45"),
                                  entry(w, "mnKneeAINSIIEC1050")}));
        QCOMPARE(w.menuBar()->actions(),
                 (QList<QAction*>{entry(w, "mnSave"), entry(w, "mnPrint"), entry(w, "mnExport"),
                                  entry(w, "mnKneepoint"), entry(w, "mnOk")}));
    }

    void graphHasTenPlotsAndTenCursorsOnLogAxes()
    {
        const frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        const KvxKneeChart& graph = w.CWGraph1();
        QCOMPARE(static_cast<const QChartView*>(&graph), w.findChild<QChartView*>("CWGraph1"));
        QLogValueAxis* x = axisOf(w, Qt::Horizontal);
        QLogValueAxis* y = axisOf(w, Qt::Vertical);
        QVERIFY(x && y);
        QCOMPARE(graph.axisX(), x);
        QCOMPARE(graph.axisY(), y);
        for (QLogValueAxis* axis : {x, y}) {
            QCOMPARE(axis->min(), 1.0);
            QCOMPARE(axis->max(), 2000.0);
            QCOMPARE(axis->base(), 10.0);
        }
        QChart* chart = graph.chart();
        QCOMPARE(chart->series().size(), 10);
        QVERIFY(chart->legend()->isVisible());
        QCOMPARE(graph.trackMode(), 1);

        QSet<QRgb> colours;
        for (int n = 1; n <= KvxKneeChart::PlotCount; ++n) {
            QLineSeries* plot = graph.plot(n);
            QVERIFY(plot);
            QCOMPARE(plot->name(), QString("Plot-%1").arg(n));
            QCOMPARE(plot->attachedAxes().size(), 2);
            QVERIFY(plot->attachedAxes().contains(x) && plot->attachedAxes().contains(y));
            QVERIFY(plot->isVisible());
            colours.insert(plot->pen().color().rgb());
            // Before any test no plot carries a tap, and none is in the legend.
            const QList<QLegendMarker*> markers = chart->legend()->markers(plot);
            QCOMPARE(markers.size(), 1);
            QVERIFY(!markers.first()->isVisible());
            // Cursor n takes the colour of plot n.
            QVERIFY(!graph.cursorVisible(n));
            QVERIFY(!graph.cursorDrawn(n));
            QCOMPARE(graph.cursorColour(n), plot->pen().color());
        }
        QCOMPARE(colours.size(), KvxKneeChart::PlotCount);
    }

    void pageRunsHeadTableCompensationGraph()
    {
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        layOut(w);
        const QRect head = onPage("lbTexteNotes");
        const QRect table = onPage("lbTapTest(0)");
        const QRect compensation = onPage("cbCompensation");
        const QRect graph = onPage("CWGraph1");
        QVERIFY(onPage("lbDeviceTestReport").bottom() < onPage("lbTexteTestReport").top());
        QVERIFY(onPage("lbTexteTestReport").bottom() < onPage("lbKneeType").top());
        QVERIFY(onPage("lbKneeType").bottom() < onPage("lbTexteFileName").top());
        QVERIFY(head.bottom() < table.top());
        QVERIFY(onPage("lbTapTest(10)").bottom() < compensation.top());
        QVERIFY(compensation.bottom() < onPage("ckZoom").top());
        QVERIFY(onPage("ckZoom").bottom() < graph.top());
        // Everything lies within the sheet.
        const QRect sheet = w.frKVXReport()->rect();
        for (const char* name : {"lbDeviceTestReport", "txtNotes", "lbInsulationResistanceTest(10)",
                                 "txBurden", "CWGraph1"})
            QVERIFY2(sheet.contains(onPage(name)), name);
        // The logo sits where the logo code puts it: 1560 by 240 twips.
        QCOMPARE(onPage("imgLogo").topLeft(), QPoint(104, 16));
        // The head's captions line up in two columns, and so do its values.
        for (const char* name : {"lbTexteCompany", "lbTexteClass", "lbTexteNotes"})
            QCOMPARE(onPage(name).left(), onPage("lbTexteFileName").left());
        for (const char* name : {"lbTexteStation", "lbTextePosition", "lbTexteInstrumentSN"})
            QCOMPARE(onPage(name).left(), onPage("lbTexteDate").left());
        for (const char* name : {"txtCompany", "txtClass", "txtNotes"})
            QCOMPARE(onPage(name).left(), onPage("lbTexteFileName(1)").left());
    }

    void tableCellsLieUnderTheirHeads()
    {
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        layOut(w);
        for (int c = 0; c < KvxColumnCount; ++c) {
            const auto column = static_cast<KvxColumn>(c);
            const QRect head = w.cell(column, 0)->geometry();
            if (c > 0)
                QCOMPARE(head.left(),
                         w.cell(static_cast<KvxColumn>(c - 1), 0)->geometry().right() + 1);
            for (int n = 1; n <= frmKVXCondensedReport::RowCount; ++n) {
                const QRect cell = w.cell(column, n)->geometry();
                const QRect above = w.cell(column, n - 1)->geometry();
                QCOMPARE(cell.left(), head.left());
                QCOMPARE(cell.width(), head.width());
                QCOMPARE(cell.top(), above.bottom() + 1);
                QCOMPARE(cell.height(), 20);
            }
        }
    }

    void hiddenRowsCloseUpThePage()
    {
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        layOut(w);
        const int fullHeight = w.frKVXReport()->height();
        const int graphTop = onPage("CWGraph1").top();
        for (int n = 4; n <= frmKVXCondensedReport::RowCount; ++n)
            for (int c = 0; c < KvxColumnCount; ++c)
                w.cell(static_cast<KvxColumn>(c), n)->hide();
        layOut(w);
        QCOMPARE(w.frKVXReport()->height(), fullHeight - 7 * 20);
        QCOMPARE(onPage("CWGraph1").top(), graphTop - 7 * 20);
        for (int n = 4; n <= frmKVXCondensedReport::RowCount; ++n)
            for (int c = 0; c < KvxColumnCount; ++c)
                w.cell(static_cast<KvxColumn>(c), n)->show();
        layOut(w);
        QCOMPARE(w.frKVXReport()->height(), fullHeight);
        QVERIFY(!w.isVisible());
    }

    void dialogHasEveryControl()
    {
        const frmCompensedResistanceSetting& w = frmCompensedResistanceSetting::instance();
        requireControls<QLineEdit>(w, {"txtTS", "txtTK", "txtTM"});
        requireControls<QLabel>(w, {"lbTexteTS", "lbTexteTK", "lbTexteTM"});
        requireControls<QPushButton>(w, {"cmdOK", "cmdCancel"});
        QCOMPARE(w.txtTS(), w.findChild<QLineEdit*>("txtTS"));
        QCOMPARE(w.txtTK(), w.findChild<QLineEdit*>("txtTK"));
        QCOMPARE(w.txtTM(), w.findChild<QLineEdit*>("txtTM"));
        QVERIFY(w.findChild<QPushButton*>("cmdOK")->isDefault());
        QVERIFY(!w.findChild<QPushButton*>("cmdCancel")->isDefault());
        // TK and TM are filled from the report each time the dialog opens.
        QVERIFY(w.txtTK()->text().isEmpty());
        QVERIFY(w.txtTM()->text().isEmpty());
        QVERIFY(!w.txtTS()->text().isEmpty());
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
            if (control.isEmpty()) {
                QCOMPARE(e.target, TextTarget::WindowTitle);
                continue;
            }
            QVERIFY2(w.findChildren<QObject*>(control).size() == 1, qPrintable(control));
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
        for (const WindowTextEntry& e : table->entries)
            QCOMPARE(shownText(w, e), QStringLiteral("T:") + QLatin1String(e.key));
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
            QCOMPARE(shownText(w, e), QString::fromLatin1(e.key));
        if (routine == ReportFill) {
            QCOMPARE(w.windowTitle(), QString("frmKVXCondensedReport.Caption"));
            QComboBox* compensation = frmKVXCondensedReport::instance().cbCompensation();
            QCOMPARE(compensation->count(), 2);
            QCOMPARE(compensation->itemText(0),
                     QString("frmKVXCondensedReport.cbCompensation.Aluminium"));
            QCOMPARE(compensation->itemText(1),
                     QString("frmKVXCondensedReport.cbCompensation.Coper"));
            QCOMPARE(compensation->currentIndex(), -1);
            QCOMPARE(axisOf(w, Qt::Horizontal)->titleText(),
                     QString("frmKVXCondensedReport.CWGraph1.AxesX"));
        } else {
            QCOMPARE(w.windowTitle(), QString("frmCompensedResistanceSetting.Caption"));
        }
    }

    void fillKeepsScreenOnlyStateAsItWas()
    {
        useLanguage({});
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        w.FillTextsKvxCondensedReport();
        QVERIFY(widget(w, "lbUnZoom")->isHidden());
        QVERIFY(!entry(w, "mnSave")->isEnabled());
        QVERIFY(!entry(w, "mnWord")->isEnabled());
        QVERIFY(widget(w, "lbTxtCompany")->isHidden());
        for (int n = 1; n <= KvxKneeChart::CursorCount; ++n)
            QVERIFY(!w.CWGraph1().cursorDrawn(n));
    }

    void insulationColumnMirrorsTheModel()
    {
        KvxCondensedReportModel& model = kvxCondensedReport();
        model.lbInsulationResistanceTest(0) = QStringLiteral("Insulation  1000 Vdc");
        model.lbInsulationResistanceTest(1) = QStringLiteral("12.5 Gohm");
        model.lbInsulationResistanceTest(10) = QStringLiteral("x");
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        w.mirrorModel();
        for (int n = 0; n <= frmKVXCondensedReport::RowCount; ++n)
            QCOMPARE(w.cell(KvxColumn::Insulation, n)->text(), model.lbInsulationResistanceTest(n));
        QCOMPARE(controlText(w, "lbInsulationResistanceTest(0)"), QString("Insulation  1000 Vdc"));
        QCOMPARE(controlText(w, "lbInsulationResistanceTest(1)"), QString("12.5 Gohm"));

        model.lbInsulationResistanceTest(1).clear();
        w.mirrorModel();
        QCOMPARE(controlText(w, "lbInsulationResistanceTest(1)"), QString());
    }

    void fillWritesTheInsulationHeadIntoTheModel()
    {
        KvxCondensedReportModel& model = kvxCondensedReport();
        model.lbInsulationResistanceTest(0) = QStringLiteral("Insulation  500 Vdc");
        model.lbInsulationResistanceTest(1) = QStringLiteral("8 Gohm");
        useLanguage({"frmKVXCondensedReport.txtInsulationRes.Text, Insulation"});
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        w.FillTextsKvxCondensedReport();
        QCOMPARE(model.lbInsulationResistanceTest(0), QString("Insulation"));
        QCOMPARE(controlText(w, "lbInsulationResistanceTest(0)"), QString("Insulation"));
        // The rows keep what the reader put in the model.
        QCOMPARE(model.lbInsulationResistanceTest(1), QString("8 Gohm"));
        QCOMPARE(controlText(w, "lbInsulationResistanceTest(1)"), QString("8 Gohm"));
    }

    // Pictures of both windows for a look at the layout; the report's whole
    // sheet as well, since the window shows only its top.
    void windowsGrabAsWhitePages()
    {
        setAppPathOverride(programDir.path());
        appState().LangFilePath = langSourcePath(QStringLiteral("en.lng"));
        frmKVXCondensedReport& report = frmKVXCondensedReport::instance();
        report.FillTextsKvxCondensedReport();
        frmCompensedResistanceSetting& dialog = frmCompensedResistanceSetting::instance();
        dialog.FillTextsCompensedResistance();
        // The whole table, as a test of ten taps shows it.
        for (int n = 1; n <= KvxCondensedReportModel::RowCount; ++n)
            kvxCondensedReport().setRowVisible(n, true);
        report.mirrorModel();

        // Chart axes lay out anew only when events run.
        QCoreApplication::processEvents();
        const QImage window = report.grab().toImage();
        const QImage sheet = report.frKVXReport()->grab().toImage();
        const QImage box = dialog.grab().toImage();
        for (const QImage* image : {&window, &sheet, &box})
            QVERIFY(!image->isNull());
        const QString folder = QDir::tempPath();
        QVERIFY(window.save(folder + "/quenby-kvx-condensed-report.png"));
        QVERIFY(sheet.save(folder + "/quenby-kvx-condensed-report-sheet.png"));
        QVERIFY(box.save(folder + "/quenby-kvx-compensation.png"));
        QCOMPARE(sheet.width(), 800);
        QVERIFY(sheet.height() > 1000);
        // White paper at the corners and in the margin beside the table.
        QCOMPARE(sheet.pixelColor(2, 2), QColor(Qt::white));
        QCOMPARE(sheet.pixelColor(sheet.width() - 3, sheet.height() - 3), QColor(Qt::white));
        QCOMPARE(sheet.pixelColor(10, onPage("lbTapTest(5)").center().y()), QColor(Qt::white));
        // The heads are ruled: the line above the first head is dark.
        const QRect head = onPage("lbTapTest(0)");
        QVERIFY(sheet.pixelColor(head.center().x(), head.top()).lightness() < 100);

        QVERIFY(!report.isVisible());
        QVERIFY(!dialog.isVisible());
    }

    // ---- the window mirrors the report model and runs its events ------------

    void mirrorsAFilledReport()
    {
        openAndFill(QStringLiteral("kvx-ten-taps.txt"), KneeStandardIeee30);
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        const KvxCondensedReportModel& model = kvxCondensedReport();
        for (int c = 0; c < KvxColumnCount; ++c) {
            for (int n = 0; n <= frmKVXCondensedReport::RowCount; ++n) {
                QLabel* label = w.cell(static_cast<KvxColumn>(c), n);
                QCOMPARE(label->text(), model.cell(static_cast<KvxReportColumn>(c), n));
                if (n > 0)
                    QCOMPARE(!label->isHidden(), model.rowVisible(n));
            }
        }
        QCOMPARE(w.cell(KvxColumn::Tap, 10)->text(), QString("X4-X5"));
        QCOMPARE(w.cell(KvxColumn::Ieee30, 1)->text(), QString("88.40"));
        for (const KvxReportHeaderControl& control : kvxReportHeaderControls())
            QCOMPARE(controlText(w, control.control), kvxCondensedReport().*control.cell);
        QCOMPARE(controlText(w, "lbTexteFileName(1)"), QString("kvx-ten-taps.txt"));
        QCOMPARE(controlText(w, "txtCompany"), QString("Northfield Power Cooperative"));
        QCOMPARE(controlText(w, "lbKneeType"), QString("IEEE 30"));
        QCOMPARE(controlText(w, "lbInsulationResistanceTest(0)"),
                 QString("Insulation    1000 Vdc"));

        // The chart: ten curves named by their tap pair, a cursor on each knee.
        const KvxKneeChart& graph = w.CWGraph1();
        QChart* chart = graph.chart();
        for (int n = 1; n <= KvxKneeChart::PlotCount; ++n) {
            QLineSeries* plot = graph.plot(n);
            QCOMPARE(plot->name(), kvxSlotPair(n));
            QCOMPARE(chart->legend()->markers(plot).first()->label(), kvxSlotPair(n));
            QVERIFY(chart->legend()->markers(plot).first()->isVisible());
            // Columns 1 to 100: the repair's filler at index 0, then 99 points.
            QCOMPARE(plot->count(), 100);
            for (const QPointF& p : plot->points())
                QVERIFY(p.x() > 0 && p.y() > 0);
            const GraphCursor& cursor = kvxReportGraph().cursor(n);
            QVERIFY(cursor.visible);
            QCOMPARE(graph.cursorValue(n), QPointF(cursor.x, cursor.y));
            QVERIFY(graph.cursorDrawn(n));
        }
        QCOMPARE(axisOf(w, Qt::Horizontal)->titleText(), QString("Excitation current (mA)"));
        QCOMPARE(axisOf(w, Qt::Vertical)->titleText(), QString("Excitation voltage (V)"));
    }

    void aDroppedRowShowsAsAnEmptyLineWithItsQuote()
    {
        openAndFill(QStringLiteral("kvx-out-of-order.txt"), KneeStandardIeee30);
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        QCOMPARE(w.cell(KvxColumn::Tap, 5)->text(), QString("X4-X5"));
        QVERIFY(!w.cell(KvxColumn::Tap, 6)->isHidden());
        QCOMPARE(w.cell(KvxColumn::Tap, 6)->text(), QString());
        QCOMPARE(w.cell(KvxColumn::WindingRes, 6)->text(), QString("\""));
        for (int n = 7; n <= frmKVXCondensedReport::RowCount; ++n)
            QVERIFY(w.cell(KvxColumn::Tap, n)->isHidden());
        // Four curves in the legend: X4-X5 on plot 5 has no curve block, and
        // plot 6 holds the filler of a tap the file lacks.
        QChart* chart = w.CWGraph1().chart();
        for (int n = 1; n <= 10; ++n)
            QCOMPARE(chart->legend()->markers(w.CWGraph1().plot(n)).first()->isVisible(), n <= 4);
        QCOMPARE(w.CWGraph1().plot(4)->name(), QString("X2-X4"));
    }

    void headerEditsGoBackIntoTheModel()
    {
        openAndFill(QStringLiteral("kvx-ten-taps.txt"), KneeStandardIeee30);
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        auto* company = w.findChild<QLineEdit*>("txtCompany");
        company->selectAll();
        QTest::keyClicks(company, "Elm Creek Utility");
        QCOMPARE(kvxCondensedReport().txtCompany, QString("Elm Creek Utility"));
        auto* burden = w.findChild<QLineEdit*>("txBurden");
        burden->end(false);
        QTest::keyClicks(burden, "15 VA");
        QCOMPARE(kvxCondensedReport().txBurden, QString("BURDEN: 15 VA"));
        // A refill of the header writes the file's values again.
        FillKvxReportHeader();
        w.mirrorModel();
        QCOMPARE(company->text(), QString("Northfield Power Cooperative"));
    }

    void draggingACursorMovesItAndItsReadout()
    {
        openAndFill(QStringLiteral("kvx-x2-x4-only.txt"), KneeStandardIeee30);
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        showLaidOut(w);
        KvxKneeChart& graph = w.CWGraph1();
        // Only slot 6 is in the file: its cursor lies on plot 1, in the
        // colour of plot 6.
        for (int n = 1; n <= 10; ++n)
            QCOMPARE(graph.cursorDrawn(n), n == 6);
        QCOMPARE(graph.plot(1)->name(), QString("X2-X4"));
        QCOMPARE(graph.cursorColour(6), graph.plot(6)->pen().color());

        const QPointF knee = graph.cursorValue(6);
        const QPoint from = graph.viewportPoint(knee);
        const QPoint to = from + QPoint(60, -40);
        QWidget* surface = graph.viewport();
        sendMouse(surface, QEvent::MouseButtonPress, from, Qt::LeftButton);
        QCOMPARE(graph.draggedCursor(), 6);
        sendMouse(surface, QEvent::MouseMove, from + QPoint(30, -20), Qt::NoButton, Qt::LeftButton);
        const GraphCursor half = kvxReportGraph().cursor(6);
        QVERIFY(half.x > knee.x() && half.y > knee.y());
        sendMouse(surface, QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
        sendMouse(surface, QEvent::MouseButtonRelease, to, Qt::LeftButton);
        QCOMPARE(graph.draggedCursor(), 0);

        const GraphCursor moved = kvxReportGraph().cursor(6);
        const QPointF expected = graph.valueAt(to);
        QVERIFY(std::abs(moved.x / expected.x() - 1) < 0.02);
        QVERIFY(std::abs(moved.y / expected.y() - 1) < 0.02);
        QVERIFY(moved.x > knee.x() * 1.2);
        QCOMPARE(graph.cursorValue(6), QPointF(moved.x, moved.y));
        QVERIFY((graph.viewportPoint(graph.cursorValue(6)) - to).manhattanLength() <= 2);
        QCOMPARE(controlText(w, "lbVolts"), formatNumber(moved.y, u"0.00") + "Vac");
        QCOMPARE(controlText(w, "lbCurrent"), formatNumber(moved.x, u"0.00") + "mA");
        QCOMPARE(kvxCondensedReport().lbVolts, controlText(w, "lbVolts"));

        // A press away from every cursor moves nothing and draws no rectangle.
        const QPoint away = graph.viewportPoint(QPointF(2.0, 2.0));
        sendMouse(surface, QEvent::MouseButtonPress, away, Qt::LeftButton);
        QCOMPARE(graph.draggedCursor(), 0);
        sendMouse(surface, QEvent::MouseMove, away + QPoint(80, -80), Qt::NoButton, Qt::LeftButton);
        sendMouse(surface, QEvent::MouseButtonRelease, away + QPoint(80, -80), Qt::LeftButton);
        QCOMPARE(kvxReportGraph().cursor(6).x, moved.x);
        QCOMPARE(graph.axisX()->min(), 1.0);
        QCOMPARE(graph.axisX()->max(), 2000.0);
        w.hide();
    }

    void zoomBoxRubberBandRightClickAndDoubleClick()
    {
        openAndFill(QStringLiteral("kvx-ten-taps.txt"), KneeStandardIeee30);
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        showLaidOut(w);
        KvxKneeChart& graph = w.CWGraph1();
        auto* zoom = w.findChild<QCheckBox*>("ckZoom");
        QWidget* unzoom = widget(w, "lbUnZoom");
        QVERIFY(unzoom->isHidden());

        QTest::mouseClick(zoom, Qt::LeftButton);
        QVERIFY(zoom->isChecked());
        QCOMPARE(kvxReportGraph().trackMode(), 6);
        QCOMPARE(graph.trackMode(), 6);
        QCOMPARE(graph.rubberBand(), QChartView::RectangleRubberBand);
        QVERIFY(!unzoom->isHidden());

        // A rectangle from 10 to 100 on both axes, drawn over the cursors:
        // in this mode a press near a cursor does not take it.
        QWidget* surface = graph.viewport();
        const QPoint from = graph.viewportPoint(QPointF(10.0, 100.0));
        const QPoint to = graph.viewportPoint(QPointF(100.0, 10.0));
        sendMouse(surface, QEvent::MouseButtonPress, from, Qt::LeftButton);
        QCOMPARE(graph.draggedCursor(), 0);
        sendMouse(surface, QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
        sendMouse(surface, QEvent::MouseButtonRelease, to, Qt::LeftButton);
        QCoreApplication::processEvents();

        for (QLogValueAxis* axis : {graph.axisX(), graph.axisY()}) {
            QVERIFY2(std::abs(axis->min() / 10.0 - 1) < 0.05,
                     qPrintable(QString::number(axis->min())));
            QVERIFY2(std::abs(axis->max() / 100.0 - 1) < 0.05,
                     qPrintable(QString::number(axis->max())));
            // One decade: labels on the fifth root of ten, five to the decade.
            QVERIFY(std::abs(axis->base() - std::pow(10.0, 0.2)) < 1e-9);
            QCOMPARE(axis->labelFormat(), QString("%.3g"));
        }
        const GraphAxis& modelX = kvxReportGraph().axis(KneeGraph::AxisX);
        const GraphAxis& modelY = kvxReportGraph().axis(KneeGraph::AxisY);
        QCOMPARE(modelX.minimum, graph.axisX()->min());
        QCOMPARE(modelX.maximum, graph.axisX()->max());
        QCOMPARE(modelY.minimum, graph.axisY()->min());
        QCOMPARE(modelY.maximum, graph.axisY()->max());
        // The end of the zoom drags cursors again; the hint stays.
        QVERIFY(!zoom->isChecked());
        QCOMPARE(kvxReportGraph().trackMode(), 1);
        QCOMPARE(graph.rubberBand(), QChartView::NoRubberBand);
        QVERIFY(!unzoom->isHidden());

        // Zooming again, a right click does not zoom out.
        QTest::mouseClick(zoom, Qt::LeftButton);
        QCOMPARE(graph.rubberBand(), QChartView::RectangleRubberBand);
        const QPoint middle = graph.viewportPoint(QPointF(30.0, 30.0));
        sendMouse(surface, QEvent::MouseButtonPress, middle, Qt::RightButton);
        sendMouse(surface, QEvent::MouseButtonRelease, middle, Qt::RightButton);
        QCOMPARE(graph.axisX()->min(), modelX.minimum);
        QCOMPARE(graph.axisX()->max(), modelX.maximum);
        QCOMPARE(graph.axisY()->min(), modelY.minimum);
        QCOMPARE(graph.axisY()->max(), modelY.maximum);
        QCOMPARE(kvxReportGraph().trackMode(), 6);
        QVERIFY(zoom->isChecked());

        // A double click restores the full range.
        QTest::mouseDClick(surface, Qt::LeftButton, {}, middle);
        QTest::mouseRelease(surface, Qt::LeftButton, {}, middle);
        for (QLogValueAxis* axis : {graph.axisX(), graph.axisY()}) {
            QCOMPARE(axis->min(), 1.0);
            QCOMPARE(axis->max(), 2000.0);
            QCOMPARE(axis->base(), 10.0);
        }
        QCOMPARE(kvxReportGraph().axis(KneeGraph::AxisY).maximum, 2000.0);
        QVERIFY(unzoom->isHidden());
        QVERIFY(!zoom->isChecked());
        w.hide();
    }

    void kneeCursorsAreDrawnOnThePlotOnly()
    {
        // Within both axes, bounds included; the knee of an empty text at
        // 0.0001 is not.
        const GraphAxis full{QString(), KneeAxisMinimum, KneeAxisMaximum, true};
        QVERIFY(kneePointOnPlot(1.0, 2000.0, full, full));
        QVERIFY(kneePointOnPlot(35.0, 88.4, full, full));
        QVERIFY(!kneePointOnPlot(0.0001, 0.0001, full, full));
        QVERIFY(!kneePointOnPlot(35.0, 2000.5, full, full));
        QVERIFY(!kneePointOnPlot(0.5, 88.4, full, full));

        openAndFill(QStringLiteral("kvx-ten-taps.txt"), KneeStandardIeee30);
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        showLaidOut(w);
        KvxKneeChart& graph = w.CWGraph1();
        QCOMPARE(checkKneeCursorsOnPlot(graph), 10);
        QVERIFY(checkCursorsPaintOnlyOnPlot(w) > 0);

        // A cursor dragged past the top right corner stays in it, its arms
        // cut at the plot's edges.
        QWidget* surface = graph.viewport();
        const QPoint from = graph.viewportPoint(graph.cursorValue(3));
        const QRect area = plotAreaInViewport(graph);
        const QPoint beyond = area.topRight() + QPoint(40, -40);
        sendMouse(surface, QEvent::MouseButtonPress, from, Qt::LeftButton);
        QCOMPARE(graph.draggedCursor(), 3);
        sendMouse(surface, QEvent::MouseMove, beyond, Qt::NoButton, Qt::LeftButton);
        sendMouse(surface, QEvent::MouseButtonRelease, beyond, Qt::LeftButton);
        QVERIFY(std::abs(kvxReportGraph().cursor(3).x / KneeAxisMaximum - 1) < 0.01);
        QVERIFY(std::abs(kvxReportGraph().cursor(3).y / KneeAxisMaximum - 1) < 0.01);
        QCOMPARE(checkKneeCursorsOnPlot(graph), 10);
        QVERIFY(checkCursorsPaintOnlyOnPlot(w) > 0);

        // A zoom from 5 to 10 mA and 30 to 300 V keeps six knees (6.2 mA at
        // 44.9 V and 88.8 V up to 7.25 mA at 273.8 V) and hides the three
        // above 300 V and the dragged cursor; those kept stand on their
        // points once the zoomed axes are laid out.
        QTest::mouseClick(w.findChild<QCheckBox*>("ckZoom"), Qt::LeftButton);
        const QPoint zoomFrom = graph.viewportPoint(QPointF(5.0, 300.0));
        const QPoint zoomTo = graph.viewportPoint(QPointF(10.0, 30.0));
        sendMouse(surface, QEvent::MouseButtonPress, zoomFrom, Qt::LeftButton);
        sendMouse(surface, QEvent::MouseMove, zoomTo, Qt::NoButton, Qt::LeftButton);
        sendMouse(surface, QEvent::MouseButtonRelease, zoomTo, Qt::LeftButton);
        QCoreApplication::processEvents();
        QVERIFY(std::abs(graph.axisY()->max() / 300.0 - 1) < 0.05);
        QCOMPARE(checkKneeCursorsOnPlot(graph), 6);
        for (const int hidden : {3, 4, 7, 9})
            QVERIFY(!graph.cursorDrawn(hidden));
        QVERIFY(checkCursorsPaintOnlyOnPlot(w) > 0);

        // The unzoom brings every one back.
        const QPoint middle = graph.viewportPoint(QPointF(30.0, 30.0));
        QTest::mouseDClick(surface, Qt::LeftButton, {}, middle);
        QTest::mouseRelease(surface, Qt::LeftButton, {}, middle);
        QCoreApplication::processEvents();
        QCOMPARE(checkKneeCursorsOnPlot(graph), 10);
        QVERIFY(checkCursorsPaintOnlyOnPlot(w) > 0);
        w.hide();
    }

    void kneeCommandsFromTheMenuRefillTheReport()
    {
        openAndFill(QStringLiteral("kvx-ten-taps.txt"), KneeStandardIeee30);
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        std::vector<bool> busy;
        ScriptedMainWindow main;
        main.onProgress = [&busy](bool show) {
            busy.push_back(show && appState().ProcessInProgress != False16);
        };
        const Installed<MainWindowView> busyWatch(main);
        w.show();
        QStringList before;
        for (int n = 1; n <= frmKVXCondensedReport::RowCount; ++n)
            for (int c = 0; c < KvxColumnCount; ++c)
                before << w.cell(static_cast<KvxColumn>(c), n)->text();
        const QPointF knee30 = w.CWGraph1().cursorValue(1);

        auto* knee = w.findChild<QMenu*>("mnKneepoint");
        QAction* ieee45 = entry(w, "mnKneeIEEE45");
        QVERIFY(knee->actions().contains(ieee45));
        ieee45->trigger();

        QCOMPARE(appState().KneeStandard, QString("IEEE 45"));
        QCOMPARE(controlText(w, "lbKneeType"), QString("IEEE 45"));
        QVERIFY(w.CWGraph1().cursorValue(1) != knee30);
        QCOMPARE(w.CWGraph1().cursorValue(1).y(), kvxTestRecord().knees[0].voltage);
        QStringList after;
        for (int n = 1; n <= frmKVXCondensedReport::RowCount; ++n)
            for (int c = 0; c < KvxColumnCount; ++c)
                after << w.cell(static_cast<KvxColumn>(c), n)->text();
        QCOMPARE(after, before);
        QCOMPARE(busy, (std::vector<bool>{true, false}));
        QVERIFY(w.isVisible());

        entry(w, "mnKneeAINSIIEC1050")->trigger();
        QCOMPARE(controlText(w, "lbKneeType"), QString("AINSI/IEC10/50"));
        entry(w, "mnKneeIEEE30")->trigger();
        QCOMPARE(controlText(w, "lbKneeType"), QString("IEEE 30"));
        QCOMPARE(w.CWGraph1().cursorValue(1), knee30);
        w.hide();
    }

    void bringUpWaitsUntilTheReportIsClosedThroughARefill()
    {
        openAndFill(QStringLiteral("kvx-ten-taps.txt"), KneeStandardIeee30);
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        bool refilled = false;
        bool visibleAfterRefill = false;
        // From inside the modal wait: a knee command hides and shows the
        // report, and the wait goes on; then the operator closes it.
        QTimer::singleShot(0, &w, [&] {
            entry(w, "mnKneeIEEE45")->trigger();
            refilled = true;
            visibleAfterRefill = w.isVisible();
            QTimer::singleShot(0, &w, [&w] { w.close(); });
        });
        w.bringUp();
        QVERIFY(refilled);
        QVERIFY(visibleAfterRefill);
        QVERIFY(!w.isVisible());
        QCOMPARE(w.windowModality(), Qt::ApplicationModal);
        QVERIFY(!kvxCondensedReport().shown);
    }

    void okHidesTheReportAndClosingHidesTheDialogToo()
    {
        openAndFill(QStringLiteral("kvx-ten-taps.txt"), KneeStandardIeee30);
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        w.show();
        QVERIFY(kvxCondensedReport().shown);
        entry(w, "mnOk")->trigger();
        QVERIFY(!w.isVisible());
        QVERIFY(!kvxCondensedReport().shown);
        QCOMPARE(kvxTestRecord().curves[0].volts[5], 0.0);

        frmCompensedResistanceSetting& dialog = frmCompensedResistanceSetting::instance();
        w.show();
        dialog.show();
        QVERIFY(w.close());
        QVERIFY(!w.isVisible());
        QVERIFY(!dialog.isVisible());
    }

    void pickingACompensationEntryOpensTheDialogAndOkFillsTheColumn()
    {
        openAndFill(QStringLiteral("kvx-ten-taps.txt"), KneeStandardIeee30);
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        QComboBox* box = w.cbCompensation();
        QCOMPARE(box->itemText(0), QString("Alluminium (TK=225)"));
        QCOMPARE(box->itemText(1), QString("Copper (TK=234.5)"));
        QCOMPARE(kvxCondensedReport().cbCompensationItems,
                 (QStringList{"Alluminium (TK=225)", "Copper (TK=234.5)"}));
        QCOMPARE(box->currentIndex(), -1);

        // The pick opens the dialog modally, loaded from the report: TK of
        // aluminium, TM from the temperature. OK there fills the column.
        frmCompensedResistanceSetting& dialog = frmCompensedResistanceSetting::instance();
        bool dialogShown = false;
        QString tk;
        QString tm;
        QTimer::singleShot(0, &dialog, [&] {
            dialogShown = dialog.isVisible();
            tk = dialog.txtTK()->text();
            tm = dialog.txtTM()->text();
            dialog.txtTS()->setText(QStringLiteral("75"));
            QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
        });
        QTest::keyClick(box, Qt::Key_Down); // the first entry, as a click picks it
        QVERIFY(dialogShown);
        QCOMPARE(tk, QString("225"));
        QCOMPARE(tm, QString("21.5 C"));
        QVERIFY(!dialog.isVisible());

        // 0.10040 x (225 + 75) / (225 + 21.5); the value has no unit.
        QCOMPARE(kvxCondensedReport().cell(KvxReportColumn::WindingComp, 1), QString("0.122 "));
        QCOMPARE(w.cell(KvxColumn::WindingComp, 1)->text(), QString("0.122 "));
        QVERIFY(!w.cell(KvxColumn::WindingComp, 10)->text().isEmpty());
        QCOMPARE(controlText(w, "lbTexteCompensedTemp(1)"), QString("75C"));
        // The box shows no choice again, so the same pick is a click again.
        QCOMPARE(kvxCondensedReport().cbCompensationIndex, -1);
        QCOMPARE(box->currentIndex(), -1);
    }

    void scrollingMovesThePage30TwipsAStep()
    {
        openAndFill(QStringLiteral("kvx-ten-taps.txt"), KneeStandardIeee30);
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        showLaidOut(w);
        QScrollBar* bar = w.VScroll1();
        QVERIFY(bar->maximum() > 0);
        auto* area = qobject_cast<QAbstractScrollArea*>(w.centralWidget());
        const double dpi = area->logicalDpiY();

        bar->setValue(20);
        QCOMPARE(kvxCondensedReport().VScroll1, 20);
        QCOMPARE(kvxCondensedReport().frKVXReportTop, -600.0);
        QCOMPARE(w.frKVXReport()->y(), twipsToPixels(-600.0, dpi));

        // At the end of the bar the foot of the page is in view.
        bar->setValue(bar->maximum());
        const int foot = w.frKVXReport()->geometry().bottom();
        QVERIFY(foot <= area->viewport()->height());
        QVERIFY(foot >= area->viewport()->height() - twipsToPixels(30, dpi) - 1);

        // The wheel scrolls the page down from the top.
        bar->setValue(0);
        QCOMPARE(w.frKVXReport()->y(), 0);
        const QPointF at(20, 20);
        QWheelEvent wheel(at, area->viewport()->mapToGlobal(at), QPoint(), QPoint(0, -120),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(area->viewport(), &wheel);
        QVERIFY(bar->value() > 0);
        QCOMPARE(w.frKVXReport()->y(), twipsToPixels(-30.0 * bar->value(), dpi));
        QCOMPARE(kvxCondensedReport().VScroll1, bar->value());

        // Over the graph the wheel is left to the page: the graph does not
        // take it (the page gets what its children leave).
        const int before = bar->value();
        QWidget* chart = w.CWGraph1().viewport();
        QWheelEvent overGraph(at, chart->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(chart, &overGraph);
        QVERIFY(!overGraph.isAccepted());
        QCOMPARE(bar->value(), before);
        QCOMPARE(w.CWGraph1().axisX()->max(), 2000.0);
        bar->setValue(0);
        w.hide();
    }

    void printingGivesAPagePerCopyInThePrintFormAndPutsTheWindowBack()
    {
        openAndFill(QStringLiteral("kvx-ten-taps.txt"), KneeStandardIeee30);
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        auto* company = w.findChild<QLineEdit*>("txtCompany");
        company->setText(QStringLiteral("Edited Utility Co"));
        w.cbCompensation()->setEditText(QStringLiteral("Copper (TK=234.5)"));
        const QStringList boxes = {"txtCompany", "txtNotes", "txtRatio", "txtTemperature"};
        QStringList before;
        for (const QString& name : boxes)
            before << w.findChild<QLineEdit*>(name)->text();

        QTemporaryDir paper;
        ScriptedServices scripted;
        scripted.printer.pdfFile = paper.filePath(QStringLiteral("kvx.pdf"));
        scripted.printer.accept(2);
        entry(w, "mnPrint")->trigger();

        QCOMPARE(pdfPages(scripted.printer.pdfFile), 2);
        const QString first = pdfText(scripted.printer.pdfFile, 1);
        QCOMPARE(pdfText(scripted.printer.pdfFile, 2), first);
        // Texts of the boxes as plain words, the table, the compensation.
        QVERIFY2(first.contains(QStringLiteral("Edited Utility Co")), qPrintable(first));
        QVERIFY2(first.contains(QStringLiteral("X1-X2")), qPrintable(first));
        QVERIFY2(first.contains(QStringLiteral("Copper (TK=234.5)")), qPrintable(first));
        // What is only for the screen stays off the paper.
        QVERIFY2(!first.contains(QStringLiteral("Zoom")), qPrintable(first));

        // The window is as it was: every box shown, editable, with its text.
        for (int i = 0; i < boxes.size(); ++i) {
            auto* box = w.findChild<QLineEdit*>(boxes[i]);
            QVERIFY(!box->isHidden());
            QVERIFY(!box->isReadOnly());
            QCOMPARE(box->text(), before[i]);
            QVERIFY(w.findChild<QLabel*>("lbTxt" + boxes[i].mid(3))->isHidden());
        }
        QVERIFY(!w.cbCompensation()->isHidden());
        QVERIFY(!w.findChild<QCheckBox*>("ckZoom")->isHidden());
        QVERIFY(w.findChild<QLabel*>("lbCompensation")->isHidden());
        QVERIFY(w.findChild<QLabel*>("lbCbCompensation")->isHidden());
    }

    void printingAnEmptyCompensationBoxPrintsNoMaterialAndACancelPrintsNothing()
    {
        openAndFill(QStringLiteral("kvx-ten-taps.txt"), KneeStandardIeee45);
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        w.cbCompensation()->setCurrentIndex(-1);
        w.cbCompensation()->setEditText(QString());
        QTemporaryDir paper;
        ScriptedServices scripted;
        scripted.printer.pdfFile = paper.filePath(QStringLiteral("kvx.pdf"));
        scripted.printer.accept();
        entry(w, "mnPrint")->trigger();
        QCOMPARE(pdfPages(scripted.printer.pdfFile), 1);
        const QString text = pdfText(scripted.printer.pdfFile, 1);
        QVERIFY(!text.contains(QStringLiteral("TK=")));
        QCOMPARE(w.findChild<QLabel*>("lbCompensation")->text(), QString());

        // A cancel: nothing printed, nothing changed.
        QFile::remove(scripted.printer.pdfFile);
        entry(w, "mnPrint")->trigger();
        QVERIFY(!QFile::exists(scripted.printer.pdfFile));
        QVERIFY(!w.findChild<QLineEdit*>("txtCompany")->isHidden());
        QCOMPARE(scripted.printer.requests.size(), std::size_t(2));
    }

    void aLastReferenceOfMinusOneHidesTheHeadsOnTheWindow()
    {
        openAndFill(QStringLiteral("kvx-ten-taps.txt"), KneeStandardIeee30);
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        const QWidget* page = w.frKVXReport();
        kvxTestRecord().lastReference = Dynamic(-1.0);
        TreatVisibleTestTexte();
        w.mirrorModel();
        for (int c = 0; c < KvxColumnCount; ++c) {
            QVERIFY(!w.cell(static_cast<KvxColumn>(c), 0)->isVisibleTo(page));
            QVERIFY(!w.cell(static_cast<KvxColumn>(c), 1)->isVisibleTo(page));
        }
        // The showing runs over rows 1 to 10 only: the heads stay hidden for
        // the next test of the run, as the rule has it.
        kvxTestRecord().lastReference = Dynamic(2.0);
        TreatVisibleTestTexte();
        w.mirrorModel();
        for (int c = 0; c < KvxColumnCount; ++c) {
            QVERIFY(!w.cell(static_cast<KvxColumn>(c), 0)->isVisibleTo(page));
            QVERIFY(w.cell(static_cast<KvxColumn>(c), 2)->isVisibleTo(page));
            QVERIFY(!w.cell(static_cast<KvxColumn>(c), 3)->isVisibleTo(page));
        }
        kvxCondensedReport() = KvxCondensedReportModel{};
        w.mirrorModel();
        QVERIFY(w.cell(KvxColumn::TestNumber, 0)->isVisibleTo(page));
    }

    void theWheelOverTheCompensationBoxIsLeftToThePage()
    {
        openAndFill(QStringLiteral("kvx-ten-taps.txt"), KneeStandardIeee30);
        frmKVXCondensedReport& w = frmKVXCondensedReport::instance();
        w.show();
        QComboBox* box = w.cbCompensation();
        box->clearFocus();
        const int index = box->currentIndex();
        const QString text = box->currentText();
        const QPointF at = QPointF(box->rect().center());
        for (const int delta : {-120, 120}) {
            QWheelEvent wheel(at, box->mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(box, &wheel);
            // Not taken by the box: it goes on to the page, which scrolls.
            QVERIFY(!wheel.isAccepted());
        }
        QCOMPARE(box->currentIndex(), index);
        QCOMPARE(box->currentText(), text);
        QVERIFY(!compensationDialog().shown);
        QVERIFY(!frmCompensedResistanceSetting::instance().isVisible());
        w.hide();
    }
};

int main(int argc, char** argv)
{
    QuenbyApplication application(argc, argv);
    // The run's state, as the program's main makes it, before any window.
    quenby::Sessions sessions;
    quenby::installWindows(quenby::frmMain::instance());
    KvxWindowsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "KvxWindowsTest.moc"

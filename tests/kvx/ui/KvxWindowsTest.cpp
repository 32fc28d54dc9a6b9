// The KVX windows, offscreen: the condensed report and the temperature
// compensation dialog are each one instance that only hides, hold every
// control of their pages under the control's name, and take their texts from
// the language; the report's insulation column mirrors the report model.
#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/ui/frmCompensedResistanceSetting.h"
#include "kvx/ui/frmKVXCondensedReport.h"
#include "localisation/model/WindowTextKeys.h"
#include "localisation/ui/WindowTexts.h"
#include "shell/model/AppState.h"
#include "shell/model/Platform.h"
#include "shell/ui/QuenbyApplication.h"
#include "tests/support/TestFiles.h"

#include <QChart>
#include <QChartView>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFrame>
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
#include <QScrollArea>
#include <QScrollBar>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

using namespace quenby;
using namespace quenby::testing;

namespace {

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
    default:
        return controlText(window, control);
    }
}

// Every name exists exactly once in the window, and is of the kind given.
template <typename Kind> void requireControls(const QWidget& window, const QStringList& names)
{
    for (const QString& name : names) {
        const QList<QObject*> found = window.findChildren<QObject*>(name);
        QVERIFY2(found.size() == 1, qPrintable(window.objectName() + ": " + name + " found " +
                                               QString::number(found.size()) + " times"));
        QVERIFY2(qobject_cast<Kind*>(found.first()),
                 qPrintable(window.objectName() + ": " + name + " is of the wrong kind"));
    }
}

// Elements 0 to last of each array, and none behind them.
template <typename Kind>
void requireArrays(const QWidget& window, const QStringList& arrays, int last)
{
    for (const QString& array : arrays) {
        QStringList names;
        for (int i = 0; i <= last; ++i)
            names << QStringLiteral("%1(%2)").arg(array).arg(i);
        requireControls<Kind>(window, names);
        const QString behind = QStringLiteral("%1(%2)").arg(array).arg(last + 1);
        QVERIFY2(!window.findChild<QObject*>(behind), qPrintable(behind + " should not exist"));
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

    static void clearReportModel()
    {
        for (int n = 0; n <= KvxCondensedReportModel::RowCount; ++n)
            kvxCondensedReport().lbInsulationResistanceTest(n).clear();
    }

private Q_SLOTS:
    void cleanup()
    {
        clearReportModel();
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
        QCOMPARE(&frmKVXCondensedReport::instance(), &frmKVXCondensedReport::instance());
        QCOMPARE(&frmCompensedResistanceSetting::instance(),
                 &frmCompensedResistanceSetting::instance());
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
        requireArrays<QLabel>(w, TableArrays, frmKVXCondensedReport::RowCount);
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
        auto* area = qobject_cast<QScrollArea*>(w.centralWidget());
        QVERIFY(area);
        QCOMPARE(area->verticalScrollBar(), bar);
        QCOMPARE(area->widget(), static_cast<QWidget*>(w.frKVXReport()));
        QCOMPARE(bar->singleStep(), 2); // 30 twips
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
        QCOMPARE(graph.view, w.findChild<QChartView*>("CWGraph1"));
        QLogValueAxis* x = axisOf(w, Qt::Horizontal);
        QLogValueAxis* y = axisOf(w, Qt::Vertical);
        QVERIFY(x && y);
        QCOMPARE(graph.axisX, x);
        QCOMPARE(graph.axisY, y);
        for (QLogValueAxis* axis : {x, y}) {
            QCOMPARE(axis->min(), 1.0);
            QCOMPARE(axis->max(), 2000.0);
            QCOMPARE(axis->base(), 10.0);
        }
        QChart* chart = graph.view->chart();
        QCOMPARE(chart->series().size(), 20);
        QVERIFY(chart->legend()->isVisible());

        QSet<QRgb> colours;
        for (int i = 0; i < KvxKneeChart::PlotCount; ++i) {
            QLineSeries* plot = graph.plots[static_cast<std::size_t>(i)];
            QScatterSeries* cursor = graph.cursors[static_cast<std::size_t>(i)];
            QVERIFY(plot && cursor);
            QCOMPARE(plot->name(), QString("Plot-%1").arg(i + 1));
            QCOMPARE(cursor->name(), QString("Cursor-%1").arg(i + 1));
            QVERIFY(qobject_cast<QScatterSeries*>(plot) == nullptr);
            QCOMPARE(plot->attachedAxes().size(), 2);
            QVERIFY(plot->attachedAxes().contains(x) && plot->attachedAxes().contains(y));
            QCOMPARE(cursor->attachedAxes().size(), 2);
            QVERIFY(plot->isVisible());
            QVERIFY(!cursor->isVisible());
            QCOMPARE(cursor->color(), plot->pen().color());
            colours.insert(plot->pen().color().rgb());
            // The legend names the plots, never the cursors.
            const QList<QLegendMarker*> plotMarkers = chart->legend()->markers(plot);
            QCOMPARE(plotMarkers.size(), 1);
            QVERIFY(plotMarkers.first()->isVisible());
            QCOMPARE(plotMarkers.first()->label(), plot->name());
            for (QLegendMarker* marker : chart->legend()->markers(cursor))
                QVERIFY(!marker->isVisible());
        }
        QCOMPARE(colours.size(), KvxKneeChart::PlotCount);
    }

    void shownCursorStaysOutOfTheLegend()
    {
        const KvxKneeChart& graph = frmKVXCondensedReport::instance().CWGraph1();
        QScatterSeries* cursor = graph.cursors[2];
        cursor->append(50.0, 120.0);
        cursor->setVisible(true);
        QVERIFY(cursor->isVisible());
        const QList<QLegendMarker*> markers = graph.view->chart()->legend()->markers(cursor);
        QVERIFY(!markers.isEmpty());
        for (QLegendMarker* marker : markers)
            QVERIFY(!marker->isVisible());
        cursor->setVisible(false);
        cursor->clear();
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
        for (QScatterSeries* cursor : w.CWGraph1().cursors)
            QVERIFY(!cursor->isVisible());
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
};

int main(int argc, char** argv)
{
    QuenbyApplication application(argc, argv);
    KvxWindowsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "KvxWindowsTest.moc"

#include "kvx/model/KvxReportView.h"

#include "kvx/model/KneeGraph.h"
#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxReportWindow.h"
#include "kvx/model/KvxTestFileReader.h"
#include "kvx/model/KvxTestRecord.h"
#include "localisation/model/LanguageLookup.h"
#include "report/model/TemperatureCompensation.h"
#include "shell/model/AppState.h"
#include "shell/model/Checked.h"
#include "shell/model/DataFolders.h"
#include "shell/model/FileSystem.h"
#include "shell/model/MainWindowView.h"
#include "shell/model/NumberText.h"
#include "shell/model/Platform.h"

#include <algorithm>

namespace quenby {

namespace {

using Col = KvxReportColumn;

void showProgress(bool show)
{
    mainWindowView().showProgress(show);
}

// The language text of `key` on the main window's status bar.
void statusText(const char* key)
{
    setStatusText(QString::fromLatin1(key));
    mainWindowView().mirrorMainWindow();
}

bool fillRunning()
{
    return appState().ProcessInProgress != False16;
}

// Row n from the tap of `slot`, in the order of the table's columns. The
// compensated column is the compensation's to write, so a refill keeps it.
void writeRow(KvxCondensedReportModel& m, int n, int slot, const KvxTapResult& tap)
{
    m.cell(Col::TestNumber, n) = QString::number(n);
    m.cell(Col::Tap, n) = tap.tapName;
    m.cell(Col::Ieee30, n) = tap.vsIeee30;
    m.cell(Col::Ieee45, n) = tap.vsIeee45;
    m.cell(Col::Iec1050, n) = tap.vsIec1050;
    m.cell(Col::NpRatio, n) = tap.nominalRatio;
    m.cell(Col::MsRatio, n) = tap.measuredRatio;
    m.cell(Col::Error, n) = tap.errorPercent;
    m.cell(Col::Phase, n) = tap.phaseAngle;
    m.cell(Col::Polarity, n) = tap.polarity;
    m.cell(Col::WindingRes, n) = tap.windingResistance;
    // Intended: only slot 1 carries an insulation value into the report;
    // the other rows keep whatever their cell held.
    if (slot == 1)
        m.cell(Col::Insulation, n) = tap.insulation;
}

// Intended: a blanked row holds a single double quote in its winding cell,
// and its insulation cell is not touched. The row is normally hidden, but
// the export reads the cells as they are.
void blankRow(KvxCondensedReportModel& m, int n)
{
    for (int c = 0; c < KvxReportColumnCount; ++c) {
        const auto column = static_cast<Col>(c);
        if (column == Col::Insulation)
            continue;
        m.cell(column, n) =
            column == Col::WindingRes ? QString::fromLatin1(KvxBlankedWindingText) : QString();
    }
}

// The slot (1 to 10) of a tap code such as "X2X3", or 0.
int slotOfCode(const QString& code)
{
    for (int slot = 1; slot <= KvxSlotCount; ++slot)
        if (code == kvxSlotShortCode(slot))
            return slot;
    return 0;
}

// The value the repair gives every point a curve block did not fill.
constexpr double RepairFiller = 0.0001;

// Whether a plot shows a measured curve rather than the repair's filler.
bool holdsACurve(const PlotArray& plot)
{
    return std::any_of(plot.y.begin(), plot.y.end(), [](double v) { return v > RepairFiller; });
}

// Plot n carries the n-th tap drawn. The entry behind the present taps holds
// the flat filler of an absent tap, and a present tap without a curve block
// draws nothing either: neither gets a legend.
void nameThePlots(KvxCondensedReportModel& m)
{
    const KvxTestRecord& r = kvxTestRecord();
    const auto& names = frmTestExcelChart().names();
    const KneeGraph& graph = kvxReportGraph();
    for (std::size_t p = 0; p < m.plotLegend.size(); ++p) {
        const int slot = slotOfCode(names[p]);
        const bool present =
            slot > 0 && !r.taps[static_cast<std::size_t>(slot - 1)].tapName.isEmpty();
        const bool drawn = holdsACurve(graph.plot(static_cast<int>(p) + 1).data);
        m.plotLegend[p] = present && drawn ? kvxSlotPair(slot) : QString();
    }
}

void kneeCommand(const char* standard)
{
    // A knee command during a fill would change the standard under FindISat.
    if (fillRunning())
        return;
    appState().KneeStandard = QString::fromLatin1(standard);
    kvxTestRecord().kneeTypeText = appState().KneeStandard;
    RefreshKvxReport();
}

} // namespace

void FillKvxReportHeader()
{
    const KvxTestRecord& r = kvxTestRecord();
    KvxCondensedReportModel& m = kvxCondensedReport();
    // The order of kvxReportHeaderControls().
    m.lbTexteFileName1 = r.fileName;
    m.lbTexteDate1 = r.dateTime;
    m.lbTexteInstrumentSN1 = r.instrumentSerial.toText();
    m.txtCompany = r.company;
    m.txtDesignator = r.designation;
    m.txtCTSerialNumber = r.ctSerial;
    m.txtTemperature = r.temperature;
    m.txtRatio = r.ratio;
    m.txtPhase = r.phase;
    m.txtClass = r.testClass;
    m.txtNotes = r.notes;
    m.txtStation = r.station;
    m.txtManufacturer = r.manufacturer;
    m.txtOperator = r.operatorName;
    m.txtVoltageRating = r.voltageRating;
    m.txtPosition = r.position;
    m.lbKneeType = r.kneeTypeText;
}

void FillKvxReportTaps()
{
    const KvxTestRecord& r = kvxTestRecord();
    KvxCondensedReportModel& m = kvxCondensedReport();
    int n = 1;
    for (int slot = 1; slot <= KvxSlotCount; ++slot) {
        const KvxTapResult& tap = r.taps[static_cast<std::size_t>(slot - 1)];
        if (tap.tapName == kvxSlotPair(slot)) {
            writeRow(m, n, slot, tap);
            ++n;
        }
    }
    for (; n < KvxCondensedReportModel::RowCount + 1; ++n)
        blankRow(m, n);

    frmTestExcelChart().cmdPlotData_Click();
    nameThePlots(m);
}

void TreatVisibleTestTexte()
{
    KvxCondensedReportModel& m = kvxCondensedReport();
    for (int n = 1; n <= KvxCondensedReportModel::RowCount; ++n)
        m.setRowVisible(n, true);
    // Intended: the rows shown follow the reference number of the last table
    // row, not the count of taps found, so a row the reader dropped leaves a
    // visible empty line when a later row follows it.
    const double last = kvxTestRecord().lastReference.toNumber();
    for (double n = last + 1; n <= KvxCondensedReportModel::RowCount; ++n)
        m.setRowVisible(static_cast<int>(n), false);
}

void flushAllTap()
{
    KvxCondensedReportModel& m = kvxCondensedReport();
    for (int n = 1; n <= KvxCondensedReportModel::RowCount; ++n)
        for (int c = 0; c < KvxReportColumnCount; ++c)
            m.cell(static_cast<Col>(c), n).clear();
}

void RefreshKvxReport()
{
    if (fillRunning())
        return;
    KvxCondensedReportModel& m = kvxCondensedReport();
    KvxReportWindow& window = kvxReportWindow();

    statusText(MainStatusKeys::ProcessProgress);
    const bool wasShown = m.shown;
    m.shown = false;
    window.hideReport();
    appState().ProcessInProgress = True16;
    showProgress(true);
    FillKvxReportTaps();
    ParseKvxHeaderFields();
    FillKvxReportHeader();
    TreatVisibleTestTexte();
    // Cleared before the report comes back: a modal show does not return
    // until the report is closed, and the next knee command must run.
    appState().ProcessInProgress = False16;
    showProgress(false);
    statusText(MainStatusKeys::Ready);
    window.mirrorReport();
    // From its own menu the report is still inside the modal show that
    // brought it up, so a plain show puts it back there.
    m.shown = true;
    if (wasShown)
        window.showReport();
    else
        window.bringUpReport();
}

void KvxReport_Form_Load()
{
    KvxCondensedReportModel& m = kvxCondensedReport();
    FillKvxReportHeader();
    // The window has no save and no word-processor export.
    m.mnSaveEnabled = false;
    m.mnWordEnabled = false;
    m.mnExportVisible = true;
    // Index 0 aluminium, index 1 copper: the compensation reads them so.
    m.cbCompensationItems = QStringList{
        GetLanguageText(QStringLiteral("frmKVXCondensedReport.cbCompensation.Aluminium")),
        GetLanguageText(QStringLiteral("frmKVXCondensedReport.cbCompensation.Coper"))};
    KneeGraph& graph = kvxReportGraph();
    graph.setAxisCaption(KneeGraph::AxisX,
                         GetLanguageText(QStringLiteral("frmKVXCondensedReport.CWGraph1.AxesX")));
    graph.setAxisCaption(KneeGraph::AxisY,
                         GetLanguageText(QStringLiteral("frmKVXCondensedReport.CWGraph1.AxesY")));
    const QString logo = LogoFilePath();
    if (FileExistsApi(logo) != False16)
        kvxReportWindow().loadLogo(logo, KvxReportLogoLeft, KvxReportLogoTop);
    graph.setTrackMode(TrackDragCursor);
}

void KvxReport_Form_Unload()
{
    kvxCondensedReport().shown = false;
    kvxReportWindow().hideReport();
    compensationDialog().hideDialog();
}

void mnKneeIEEE30_Click()
{
    kneeCommand(KneeStandardIeee30);
}

void mnKneeIEEE45_Click()
{
    kneeCommand(KneeStandardIeee45);
}

void mnKneeAINSIIEC1050_Click()
{
    kneeCommand(KneeStandardIec1050);
}

void mnOk_Click()
{
    kvxCondensedReport().shown = false;
    kvxReportWindow().hideReport();
    flushGraph();
}

void KvxReport_VScroll1_Change(int value)
{
    KvxCondensedReportModel& m = kvxCondensedReport();
    m.VScroll1 = value;
    // A 16-bit product, as the window's arithmetic has always been; the page
    // is far too short for it to overflow.
    m.frKVXReportTop = mul16(toInt16(value), -KvxReportScrollTwips);
}

void KvxReport_ckZoom_Click(bool checked)
{
    KvxCondensedReportModel& m = kvxCondensedReport();
    m.ckZoom = checked;
    if (checked) {
        kvxReportGraph().setTrackMode(TrackZoomRectangle);
        m.lbUnZoomVisible = true;
    } else {
        // The operator took the box back before drawing a rectangle.
        kvxReportGraph().setTrackMode(TrackDragCursor);
    }
}

void KvxReport_CWGraph1_ZoomEnd(double xMin, double xMax, double yMin, double yMax)
{
    KneeGraph& graph = kvxReportGraph();
    graph.setAxisRange(KneeGraph::AxisX, xMin, xMax);
    graph.setAxisRange(KneeGraph::AxisY, yMin, yMax);
    graph.setTrackMode(TrackDragCursor);
    kvxCondensedReport().ckZoom = false;
}

void KvxReport_CWGraph1_DblClick()
{
    KneeGraph& graph = kvxReportGraph();
    graph.setAxisRange(KneeGraph::AxisX, KneeAxisMinimum, KneeAxisMaximum);
    graph.setAxisRange(KneeGraph::AxisY, KneeAxisMinimum, KneeAxisMaximum);
    // With the box cleared the graph drags cursors again, so that box and
    // mode never disagree.
    graph.setTrackMode(TrackDragCursor);
    KvxCondensedReportModel& m = kvxCondensedReport();
    m.ckZoom = false;
    m.lbUnZoomVisible = false;
}

void KvxReport_CWGraph1_CursorChange(int n, double x, double y)
{
    kvxReportGraph().setCursorPosition(n, x, y);
    KvxCondensedReportModel& m = kvxCondensedReport();
    m.lbVolts = formatNumber(y, u"0.00") + QStringLiteral("Vac");
    m.lbCurrent = formatNumber(x, u"0.00") + QStringLiteral("mA");
}

} // namespace quenby

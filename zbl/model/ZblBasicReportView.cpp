#include "zbl/model/ZblBasicReportView.h"

#include "localisation/model/LanguageLookup.h"
#include "shell/model/AppState.h"
#include "shell/model/DataFolders.h"
#include "shell/model/FileSystem.h"
#include "shell/model/MainWindowView.h"
#include "shell/model/Platform.h"
#include "shell/model/YieldHook.h"
#include "zbl/model/ZblCompensation.h"
#include "zbl/model/ZblReportWindow.h"
#include "zbl/model/ZblTestRecord.h"

#include <cmath>

namespace quenby {

namespace {
void showProgress(bool show)
{
    mainWindowView().showProgress(show);
}

ZblBasicReportModel& model()
{
    return zblBasicReport();
}
} // namespace

QString& ZblBasicReportTarget::lbTexteFileName1()
{
    return model().lbTexteFileName1;
}
QString& ZblBasicReportTarget::lbTexteDate1()
{
    return model().lbTexteDate1;
}
QString& ZblBasicReportTarget::lbTexteCompensedTemp1()
{
    return model().lbTexteCompensedTemp1;
}
QString& ZblBasicReportTarget::txtXFRSerialNumber()
{
    return model().txtXFRSerialNumber;
}
QString& ZblBasicReportTarget::txtCompany()
{
    return model().txtCompany;
}
QString& ZblBasicReportTarget::txtStation()
{
    return model().txtStation;
}
QString& ZblBasicReportTarget::txtDesignator()
{
    return model().txtDesignator;
}
QString& ZblBasicReportTarget::txtManufacturer()
{
    return model().txtManufacturer;
}
QString& ZblBasicReportTarget::txtOperator()
{
    return model().txtOperator;
}
QString& ZblBasicReportTarget::txtTemperature()
{
    return model().txtTemperature;
}
QString& ZblBasicReportTarget::txtNotes()
{
    return model().txtNotes;
}
QString& ZblBasicReportTarget::cbCompensationText()
{
    return model().cbCompensationText;
}
QString& ZblBasicReportTarget::cell(ZblReportColumn column, int i)
{
    return model().cell(column, i);
}
QString& ZblBasicReportTarget::txtTK()
{
    return compensationDialog().txtTK;
}
QString& ZblBasicReportTarget::txtTS()
{
    return compensationDialog().txtTS;
}
QString& ZblBasicReportTarget::txtTM()
{
    return compensationDialog().txtTM;
}
void ZblBasicReportTarget::FillZBLBasicReportConpensedResistance()
{
    quenby::FillZBLBasicReportConpensedResistance();
}

Int16 CheckNumberOfTAPInFiles()
{
    const ZblTestRecord& record = zblTestRecord();
    Int16 count = 0;
    for (int i = 0; i < ZblRowsUsed; ++i) {
        const QString& line = record.RowLine[static_cast<std::size_t>(i)];
        if (line != QLatin1String("") && line != QLatin1String("-") && line != ZblEndOfFileMarker)
            ++count;
        // The compensation line of a saved file closes the table; it has
        // been counted, as the closing rule of an uploaded file is.
        if (line.left(17) == QLatin1String("TEMP COMPENSATION"))
            break;
    }
    return count;
}

void TreatVisibleTAPTexte()
{
    // The count holds one line past the rows; with no row at all row 0
    // stays in view.
    int n = CheckNumberOfTAPInFiles();
    if (n > 1)
        --n;
    ZblBasicReportModel& m = model();
    for (int i = 0; i < ZblBasicReportModel::RowCount; ++i)
        m.setRowVisible(i, true);
    for (int i = n; i < ZblBasicReportModel::RowCount; ++i)
        m.setRowVisible(i, false);
}

double RoundUp(double x, double f)
{
    const double t = std::floor(x * f);
    // Compared with x rather than with x * f: a ceiling for f = 1, the only
    // factor the print uses, and kept so for any other.
    const double e = x == t ? 0.0 : 1.0;
    return (t + e) / f;
}

void PlaceZBLReportColumns()
{
    model().placeColumns();
}

void CentreZblTotalTimeHead()
{
    model().centreTotalTime();
}

int ZblScrollMaximum(int n)
{
    // The scroll bar knows nothing of the table's height: these three steps
    // are all of its mapping, kept as they are.
    const std::int32_t factor = n <= 23 ? 100 : n <= 45 ? 200 : 300;
    const std::int32_t product = static_cast<std::int32_t>(n) * factor;
    return static_cast<int>(std::nearbyint(static_cast<double>(product) / 2.0));
}

ZblTwipRect ZblTapARect(int n)
{
    const ZblBasicReportModel& m = model();
    if (n >= 0 && n < ZblBasicReportModel::RowCount)
        return m.cellRect(ZblReportColumn::TapA, n);
    // A full table counts one row past the last; by the layout it lies
    // directly under row 121.
    ZblTwipRect last = m.cellRect(ZblReportColumn::TapA, ZblBasicReportModel::RowCount - 1);
    last.top += (n - (ZblBasicReportModel::RowCount - 1)) * last.height;
    return last;
}

void ZblReport_Form_Load()
{
    ZblBasicReportModel& m = model();
    const QString logo = LogoFilePath();
    if (FileExistsApi(logo) != False16)
        zblReportWindow().loadLogo(logo, ZblReportLogoLeft, ZblReportLogoTop);
    // Index 0 aluminium, index 1 copper: the compensation reads them so.
    m.cbCompensationItems =
        QStringList{GetLanguageText(QStringLiteral("frmZBLBasicReport.cbCompensation.Aluminium")),
                    GetLanguageText(QStringLiteral("frmZBLBasicReport.cbCompensation.Coper"))};
    m.mnuExportVisible = false;
    m.mnuEditVisible = false;
    m.mnuTapsVisible = false;
    m.mnuVGraphRSVisible = false;
    m.mnuBasicVgraphVisible = false;
    m.mnuBasicVgraphRSVisible = false;
    compensationDialog().txtTS.clear();
    m.cbCompensationText.clear();
    CentreZblTotalTimeHead();
}

void ZblReport_VScroll1_Change(int value)
{
    ZblBasicReportModel& m = model();
    m.VScroll1Value = value;
    m.frResistanceTop = value * -2;
}

void ZblReport_mnuOk_Click()
{
    model().shown = false;
    zblReportWindow().hideReport();
}

void ZblReport_Form_Unload()
{
    ZblReport_mnuOk_Click();
    compensationDialog().hideDialog();
}

void FillZblReportFromOpenTest()
{
    compensationDialog().txtTS.clear();
    ZblBasicReportModel& m = model();
    m.cbCompensationText.clear();

    ZblBasicReportTarget target;
    ClearZBLChannelTables();
    ClearZBLCompensedColumns(target);
    ClearZBLRowLines();
    ClearZBLCompensedColumns(target);
    ReadZBLFile();
    FillZBLHeaderControls(target);

    TreatVisibleTAPTexte();

    m.VScroll1Visible = false;
    ZblReport_VScroll1_Change(0);
    m.frResistanceTop = 0;

    const int n = CheckNumberOfTAPInFiles();
    const ZblTwipRect tap = ZblTapARect(n);
    const double bottom = tap.top + tap.height;
    appState().ZblScrollOverflowPercent =
        (bottom - ZblReportFormHeight) / ZblReportFormHeight * 100.0;
    if (n >= 20) {
        m.VScroll1Visible = true;
        m.VScroll1Max = ZblScrollMaximum(n);
    }

    ParseZBLTableLines();
    FillZBLTapControls(target);
    SetZBLCompensationFromFile(QStringLiteral("ZBL"), target);
    PlaceZBLReportColumns();
}

void mnZBLFiles_Click()
{
    // Nothing is cleared before the dialog: a cancel leaves the test as it was.
    if (SelectZblTestFile() != False16)
        return;

    appState().ProcessInProgress = True16;
    showProgress(true);
    FillZblReportFromOpenTest();

    appState().ProcessInProgress = False16;
    // The wait on the busy flag ends at once, since the flag was just cleared.
    while (appState().ProcessInProgress != False16)
        letSystemBreathe();
    ZblReportWindow& window = zblReportWindow();
    window.fillReportTexts();
    showProgress(false);
    window.mirrorReport();
    window.bringUpReport();
}

} // namespace quenby

#include "zbl/model/ZblPrintReport.h"

#include "shell/model/RuntimeError.h"
#include "zbl/model/ZblBasicReportView.h"
#include "zbl/model/ZblSession.h"

namespace quenby {

namespace {

std::size_t printRow(ZblReportColumn column, int j)
{
    if (j < 0 || j >= ZblPrintReportModel::RowsPerPage)
        raiseRuntimeErrorOnValue(
            err::SubscriptOutOfRange,
            QStringLiteral("print %1(%2)").arg(QLatin1String(zblReportColumnName(column))).arg(j));
    return static_cast<std::size_t>(j);
}

constexpr std::array<ZblReportColumn, ZblReportColumnCount> AllColumns = {
    ZblReportColumn::TapA,     ZblReportColumn::WindingA,
    ZblReportColumn::ResA,     ZblReportColumn::ConbinedResistanceA,
    ZblReportColumn::TapB,     ZblReportColumn::WindingB,
    ZblReportColumn::ResB,     ZblReportColumn::ConbinedResistanceB,
    ZblReportColumn::TotalTime};

} // namespace

QString& ZblPrintReportModel::cell(ZblReportColumn column, int j)
{
    return m_cells[static_cast<std::size_t>(column)][printRow(column, j)];
}

const QString& ZblPrintReportModel::cell(ZblReportColumn column, int j) const
{
    return m_cells[static_cast<std::size_t>(column)][printRow(column, j)];
}

bool ZblPrintReportModel::rowVisible(int j) const
{
    return m_rowVisible[printRow(ZblReportColumn::TapA, j)];
}

void ZblPrintReportModel::setRowVisible(int j, bool visible)
{
    m_rowVisible[printRow(ZblReportColumn::TapA, j)] = visible;
}

ZblTwipRect ZblPrintReportModel::cellRect(ZblReportColumn column, int j) const
{
    const auto c = static_cast<std::size_t>(column);
    return {columnLeft[c], rowTop[printRow(column, j)], columnWidth[c], rowHeight};
}

ZblPrintReportModel& zblPrintReport()
{
    return zblSession().print;
}

void ZblPrint_Form_Load()
{
    ZblPrintReportModel& m = zblPrintReport();
    m.centreTotalTime();
    m.loaded = true;
}

void PlaceZBLPrintColumns()
{
    zblPrintReport().place(ZblPrintColumns);
}

void TreatVisibleFrame(Int16 page)
{
    ZblPrintReportModel& m = zblPrintReport();
    if (page == 1) {
        m.frHeaderPrint = {ZblPrintHeaderTop, true};
        m.frDataPrint = {ZblPrintDataTopFirst, true};
    } else {
        m.frHeaderPrint.visible = false;
        m.frDataPrint = {ZblPrintDataTopOther, true};
    }
    // Placed, not shown: the print shows it on the first two pages only.
    m.frmPageNumber.top = ZblPrintPageNumberTop;
}

void TreatVisibleTAPTexte(Int16 page, Int16 count)
{
    ZblPrintReportModel& m = zblPrintReport();
    for (int j = 0; j < ZblPrintReportModel::RowsPerPage; ++j)
        m.setRowVisible(j, false);
    const int rows = (count - 1) - (page - 1) * ZblPrintReportModel::RowsPerPage;
    for (int j = 0; j < rows && j < ZblPrintReportModel::RowsPerPage; ++j)
        m.setRowVisible(j, true);
}

void FillDataTap(Int16 page, Int16 count)
{
    ZblPrintReportModel& m = zblPrintReport();
    const ZblBasicReportModel& report = zblBasicReport();
    const int first = (page - 1) * ZblPrintReportModel::RowsPerPage;
    // The count holds one more than the rows: one cell row beyond the last
    // is filled too and stays hidden, as the print has always done.
    for (int j = 0; first + j < count && j < ZblPrintReportModel::RowsPerPage; ++j) {
        const int i = first + j;
        for (const ZblReportColumn column : AllColumns)
            m.cell(column, j) = report.cell(column, i);
    }
}

void ZblReport_mnuBasicReport_Click(
    const ZblColumnHeadTexts& reportHeads, const std::function<std::optional<int>()>& printerDialog,
    const std::function<bool(const ZblPrintReportModel&)>& printPage)
{
    ZblPrintReportModel& m = zblPrintReport();
    if (!m.loaded)
        ZblPrint_Form_Load();
    const ZblBasicReportModel& report = zblBasicReport();

    const Int16 n = sub16(CheckNumberOfTAPInFiles(), 1);
    const Int16 pages =
        toInt16(RoundUp(divide(n, static_cast<double>(ZblPrintReportModel::RowsPerPage)), 1.0));

    m.lbFileName = report.lbTexteFileName1;
    m.lbDate = report.lbTexteDate1;
    m.LBCompany = report.txtCompany;
    m.LBDesignator = report.txtDesignator;
    m.LBXFRSerialNumber = report.txtXFRSerialNumber;
    m.LBTemperature = report.txtTemperature;
    m.lbStation = report.txtStation;
    m.lbManufacturer = report.txtManufacturer;
    m.lbOperator = report.txtOperator;
    m.lbCompensatedTemp = report.lbTexteCompensedTemp1;
    m.lbCompensendFactor = report.cbCompensationText;
    m.lbNotes = report.txtNotes;
    m.heads = reportHeads;

    PlaceZBLPrintColumns();

    // Of the dialog only the copies count: the page range is read and not
    // used, every page is printed.
    const std::optional<int> copies = printerDialog();
    if (!copies)
        return;
    const Int16 count = add16(n, 1);
    for (int copy = 1; copy <= *copies; ++copy) {
        for (Int16 page = 1; page <= ZblPrintReportModel::MostPages; ++page) {
            if (pages < page)
                continue;
            TreatVisibleFrame(page);
            TreatVisibleTAPTexte(page, count);
            FillDataTap(page, count);
            m.lbPage = QStringLiteral("Page %1 / %2").arg(page).arg(pages);
            // From page 3 on the frame shows only because it stayed visible.
            if (page == 1 || page == 2)
                m.frmPageNumber.visible = true;
            if (!printPage(m))
                return;
        }
    }
}

} // namespace quenby

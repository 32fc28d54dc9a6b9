#include "zbl/model/ZblBasicReportModel.h"
#include "zbl/model/ZblSession.h"

#include "shell/model/RuntimeError.h"

namespace quenby {

namespace {
constexpr std::array<const char*, ZblReportColumnCount> ColumnNames = {
    "txtTapA",     "txtWindingA", "lbResA", "txtConbinedResistanceA",
    "txtTapB",     "txtWindingB", "lbResB", "txtConbinedResistanceB",
    "txtTotalTime"};

std::size_t rowIndex(ZblReportColumn column, int i)
{
    if (i < 0 || i >= ZblBasicReportModel::RowCount)
        raiseRuntimeErrorOnValue(
            err::SubscriptOutOfRange,
            QStringLiteral("%1(%2)").arg(QLatin1String(zblReportColumnName(column))).arg(i));
    return static_cast<std::size_t>(i);
}
} // namespace

const char* zblReportColumnName(ZblReportColumn column)
{
    return ColumnNames[static_cast<std::size_t>(column)];
}

QString& ZblBasicReportModel::cell(ZblReportColumn column, int i)
{
    return m_cells[static_cast<std::size_t>(column)][rowIndex(column, i)];
}

const QString& ZblBasicReportModel::cell(ZblReportColumn column, int i) const
{
    return m_cells[static_cast<std::size_t>(column)][rowIndex(column, i)];
}

bool ZblBasicReportModel::rowVisible(int i) const
{
    return m_rowVisible[rowIndex(ZblReportColumn::TapA, i)];
}

void ZblBasicReportModel::setRowVisible(int i, bool visible)
{
    m_rowVisible[rowIndex(ZblReportColumn::TapA, i)] = visible;
}

ZblTwipRect ZblBasicReportModel::cellRect(ZblReportColumn column, int i) const
{
    const auto c = static_cast<std::size_t>(column);
    return {columnLeft[c], rowTop[rowIndex(column, i)], columnWidth[c], rowHeight};
}

ZblBasicReportModel& zblBasicReport()
{
    return zblSession().report;
}

} // namespace quenby

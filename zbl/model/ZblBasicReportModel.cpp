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

void ZblBasicReportModel::placeColumns()
{
    constexpr std::array<int, 4> channel = {ZblTapWidth, ZblWindingWidth, ZblResistanceWidth,
                                            ZblCompensedWidth};
    constexpr int channelWidth =
        ZblTapWidth + ZblWindingWidth + ZblResistanceWidth + ZblCompensedWidth;
    lbTexteCHANA = {ZblTableLeft, ZblChannelHeadTop, channelWidth, ZblChannelHeadHeight};
    lbTexteCHANB = {ZblTableLeft + channelWidth, ZblChannelHeadTop, channelWidth,
                    ZblChannelHeadHeight};

    // The heads lie in one row, each at its column's width.
    const int headTop = ZblChannelHeadTop + ZblChannelHeadHeight;
    int left = ZblTableLeft;
    for (std::size_t c = 0; c < columnHead.size(); ++c) {
        const int width = channel[c % channel.size()];
        columnHead[c] = {left, headTop, width, ZblColumnHeadHeight};
        left += width;
    }
    // The border of the total time spans both rows of heads, so that its
    // bottom meets the other heads' bottom.
    lbTotalTimeBdr = {left, ZblChannelHeadTop, ZblTotalTimeWidth,
                      ZblChannelHeadHeight + ZblColumnHeadHeight};
    lbTotalTime.top = lbTotalTimeBdr.top;
    lbTotalTime.width = ZblTotalTimeWidth;
    lbTotalTime.height = lbTotalTimeBdr.height;

    // Row 0 directly under its head, every next row under the one before.
    for (std::size_t c = 0; c < columnLeft.size(); ++c) {
        const ZblTwipRect& head = c < columnHead.size() ? columnHead[c] : lbTotalTimeBdr;
        columnLeft[c] = head.left;
        columnWidth[c] = head.width;
    }
    rowHeight = ZblRowHeight;
    rowTop[0] = headTop + ZblColumnHeadHeight;
    for (std::size_t i = 1; i < rowTop.size(); ++i)
        rowTop[i] = rowTop[i - 1] + rowHeight;
}

ZblBasicReportModel& zblBasicReport()
{
    return zblSession().report;
}

} // namespace quenby

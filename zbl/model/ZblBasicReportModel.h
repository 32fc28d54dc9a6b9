// The cells of the ZBL basic report, without any screen.
//
// The report window mirrors these cells; the V graph, the save and the
// print-out read them back, since once a report is filled its cells are the
// working copy of the test. This holds the fields that the temperature
// compensation reads and writes, and the table of 122 rows by nine cells that
// the ZBL reader fills; the rest of the head joins them with the reader.
#pragma once

#include <QString>
#include <QStringList>

#include <array>

namespace quenby {

// A control's box on the window, in twips (1/1440 inch).
struct ZblTwipRect
{
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    bool operator==(const ZblTwipRect&) const = default;
};

// The columns of the table, channel A then channel B then the total time.
enum class ZblReportColumn {
    TapA,                // txtTapA
    WindingA,            // txtWindingA
    ResA,                // lbResA
    ConbinedResistanceA, // txtConbinedResistanceA: compensated A
    TapB,                // txtTapB
    WindingB,            // txtWindingB
    ResB,                // lbResB
    ConbinedResistanceB, // txtConbinedResistanceB: compensated B
    TotalTime,           // txtTotalTime
};
inline constexpr int ZblReportColumnCount = 9;

// The control array name of a column ("lbResA").
const char* zblReportColumnName(ZblReportColumn column);

// Rows of the report's table: the most a ZBL test holds.
inline constexpr int ZblReportRowCount = 122;

// The constants of a column layout, in twips: the table's left edge, the
// widths of the columns of one channel and of the total time, and the row
// height; then where the channel heads stand and how high the two rows of
// heads are, each window's own choice.
struct ZblColumnConstants
{
    int left = 0;
    int tapWidth = 0;
    int windingWidth = 0;
    int resistanceWidth = 0;
    int compensedWidth = 0;
    int totalTimeWidth = 0;
    int rowHeight = 0;
    int channelHeadTop = 0;
    int channelHeadHeight = 0;
    int columnHeadHeight = 0;
};

// The report window's layout.
inline constexpr ZblColumnConstants ZblReportColumns{1000, 585, 1025, 975, 1455,
                                                     765,  315, 4200, 315, 420};

// The places of a table's column heads and of its `Rows` rows, as
// PlaceZBLReportColumns sets them; the print window takes the same steps with
// its own constants.
template <int Rows> struct ZblColumnPlacement
{
    // The two channel heads over four columns each, one head per channel
    // column in the order of ZblReportColumn, and the total time label
    // inside its border.
    ZblTwipRect lbTexteCHANA;
    ZblTwipRect lbTexteCHANB;
    std::array<ZblTwipRect, ZblReportColumnCount - 1>
        columnHead; // lbTexteTAPA ... lbTexteCompensedResistanceB
    ZblTwipRect lbTotalTimeBdr;
    ZblTwipRect lbTotalTime;
    // Row i of a column lies at the column's left and width, at rowTop[i],
    // with height rowHeight.
    std::array<int, ZblReportColumnCount> columnLeft{};
    std::array<int, ZblReportColumnCount> columnWidth{};
    std::array<int, Rows> rowTop{};
    int rowHeight = 0;

    void place(const ZblColumnConstants& k)
    {
        const std::array<int, 4> channel = {k.tapWidth, k.windingWidth, k.resistanceWidth,
                                            k.compensedWidth};
        const int channelWidth = k.tapWidth + k.windingWidth + k.resistanceWidth + k.compensedWidth;
        lbTexteCHANA = {k.left, k.channelHeadTop, channelWidth, k.channelHeadHeight};
        lbTexteCHANB = {k.left + channelWidth, k.channelHeadTop, channelWidth, k.channelHeadHeight};

        // The heads lie in one row, each at its column's width.
        const int headTop = k.channelHeadTop + k.channelHeadHeight;
        int at = k.left;
        for (std::size_t c = 0; c < columnHead.size(); ++c) {
            const int width = channel[c % channel.size()];
            columnHead[c] = {at, headTop, width, k.columnHeadHeight};
            at += width;
        }
        // The border of the total time spans both rows of heads, so that its
        // bottom meets the other heads' bottom.
        lbTotalTimeBdr = {at, k.channelHeadTop, k.totalTimeWidth,
                          k.channelHeadHeight + k.columnHeadHeight};
        lbTotalTime.top = lbTotalTimeBdr.top;
        lbTotalTime.width = k.totalTimeWidth;
        lbTotalTime.height = lbTotalTimeBdr.height;

        // Row 0 directly under its head, every next row under the one before.
        for (std::size_t c = 0; c < columnLeft.size(); ++c) {
            const ZblTwipRect& head = c < columnHead.size() ? columnHead[c] : lbTotalTimeBdr;
            columnLeft[c] = head.left;
            columnWidth[c] = head.width;
        }
        rowHeight = k.rowHeight;
        rowTop[0] = headTop + k.columnHeadHeight;
        for (std::size_t i = 1; i < rowTop.size(); ++i)
            rowTop[i] = rowTop[i - 1] + rowHeight;
    }

    // lbTotalTime centred over lbTotalTimeBdr.
    void centreTotalTime()
    {
        lbTotalTime.left = lbTotalTimeBdr.left + (lbTotalTimeBdr.width - lbTotalTime.width) / 2;
    }
};

class ZblBasicReportModel : public ZblColumnPlacement<ZblReportRowCount>
{
public:
    ZblBasicReportModel() { placeColumns(); }

    // Lays out the column heads and the cells of all 122 rows.
    void placeColumns() { place(ZblReportColumns); }

    // Rows 0 to 121; every row exists at all times, used or not.
    static constexpr int RowCount = ZblReportRowCount;

    // The text of cell (column, i), i from 0 to 121; any other index is
    // Subscript out of range.
    QString& cell(ZblReportColumn column, int i);
    const QString& cell(ZblReportColumn column, int i) const;

    // The cells the compensation reads and writes, by their control names.
    QString& lbResA(int i) { return cell(ZblReportColumn::ResA, i); }
    QString& lbResB(int i) { return cell(ZblReportColumn::ResB, i); }
    QString& txtConbinedResistanceA(int i) { return cell(ZblReportColumn::ConbinedResistanceA, i); }
    QString& txtConbinedResistanceB(int i) { return cell(ZblReportColumn::ConbinedResistanceB, i); }

    // Whether the nine cells of row i are shown; all rows start shown.
    bool rowVisible(int i) const;
    void setRowVisible(int i, bool visible);

    // The box of cell (column, i), as the column layout places it.
    ZblTwipRect cellRect(ZblReportColumn column, int i) const;

    // The head of the report.
    QString lbTexteFileName1;     // lbTexteFileName(1)
    QString lbTexteDate1;         // lbTexteDate(1)
    QString lbTexteInstrumentSN1; // lbTexteInstrumentSN(1)
    QString txtXFRSerialNumber;
    QString txtCompany;
    QString txtStation;
    QString txtDesignator;
    QString txtManufacturer;
    QString txtOperator;
    QString txtNotes;
    QString txtTemperature;
    // The compensation combo box: its list, index 0 aluminium and index 1
    // copper as the window's load puts them from the language (index 2 is
    // added for a custom conductor constant), its text, and its list index
    // (-1 for no choice). The text is kept apart from the index: the box is
    // editable, and the compensation sets texts that no pick made.
    QStringList cbCompensationItems{QStringLiteral("Alluminium (TK=225)"),
                                    QStringLiteral("Copper (TK=234.5)")};
    QString cbCompensationText;
    int cbCompensationIndex = -1;
    QString lbTexteCompensedTemp1; // lbTexteCompensedTemp(1)

    // Whether the window is on screen; the window keeps this in step. The
    // compensation dialog decides by it which report it serves.
    bool shown = false;

    // The scroll bar and the frame it moves.
    bool VScroll1Visible = false;
    int VScroll1Value = 0;
    int VScroll1Max = 0;
    int frResistanceTop = 0;

    // Menu entries that lead nowhere; the load hides them.
    bool mnuExportVisible = true;
    bool mnuEditVisible = true;
    bool mnuTapsVisible = true;
    bool mnuVGraphRSVisible = true;
    bool mnuBasicVgraphVisible = true;
    bool mnuBasicVgraphRSVisible = true;

private:
    std::array<std::array<QString, RowCount>, ZblReportColumnCount> m_cells;
    std::array<bool, RowCount> m_rowVisible = [] {
        std::array<bool, RowCount> all{};
        all.fill(true);
        return all;
    }();
};

// The one ZBL basic report of the run.
ZblBasicReportModel& zblBasicReport();

} // namespace quenby

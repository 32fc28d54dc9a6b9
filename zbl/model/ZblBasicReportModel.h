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

// The column layout, in twips: the table's left edge, the widths of the
// columns of one channel and of the total time, and the row height. The
// channel heads' top and the heads' heights are this window's own choice.
inline constexpr int ZblTableLeft = 1000;
inline constexpr int ZblTapWidth = 585;
inline constexpr int ZblWindingWidth = 1025;
inline constexpr int ZblResistanceWidth = 975;
inline constexpr int ZblCompensedWidth = 1455;
inline constexpr int ZblTotalTimeWidth = 765;
inline constexpr int ZblRowHeight = 315;
inline constexpr int ZblChannelHeadTop = 4200;
inline constexpr int ZblChannelHeadHeight = 315;
inline constexpr int ZblColumnHeadHeight = 420;

class ZblBasicReportModel
{
public:
    ZblBasicReportModel() { placeColumns(); }

    // Lays out the column heads and the cells of all 122 rows.
    void placeColumns();

    // Rows 0 to 121; every row exists at all times, used or not.
    static constexpr int RowCount = 122;

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

    // The column heads: the two channel heads over four columns each, one
    // head per channel column in the order of ZblReportColumn, and the total
    // time label inside its border.
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
    std::array<int, RowCount> rowTop{};
    int rowHeight = 0;

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

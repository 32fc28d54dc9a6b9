// The print-out of the ZBL basic report, without a screen.
//
// frmPrintZBLBasicReport is a window that is never shown: sized to the paper,
// filled page by page from the report and printed as a picture of itself.
// This holds all of its state, and mnuBasicReport_Click walks it through the
// pages; the window mirrors the state at each page and prints it.
#pragma once

#include "shell/model/Checked.h"
#include "zbl/model/ZblBasicReportModel.h"

#include <QString>

#include <array>
#include <functional>
#include <optional>

namespace quenby {

// The print window's column layout: narrower rows than the report's, the
// table starting at the channel heads' left edge, and the heads at the top of
// the table frame.
inline constexpr ZblColumnConstants ZblPrintColumns{570, 590, 1030, 970, 1460,
                                                    770, 225, 0,    225, 300};

// The frames of the sheet, in twips.
inline constexpr int ZblPrintHeaderTop = 150;
inline constexpr int ZblPrintDataTopFirst = 4250;
inline constexpr int ZblPrintDataTopOther = 1050;
inline constexpr int ZblPrintPageNumberTop = 12500;
// The client area of the sheet, in inches.
inline constexpr float ZblPrintWidthInches = 8.5F;
inline constexpr float ZblPrintHeightInches = 8.8F;

// A frame of the sheet: where it stands and whether it is shown.
struct ZblPrintFrame
{
    int top = 0;
    bool visible = false;

    bool operator==(const ZblPrintFrame&) const = default;
};

// The column heads as the report shows them, which the print copies: the
// two channel heads, the eight heads of the channel columns in the order of
// ZblReportColumn, and the total time.
struct ZblColumnHeadTexts
{
    QString CHANA;
    QString CHANB;
    std::array<QString, ZblReportColumnCount - 1> column;
    QString TotalTime;
};

class ZblPrintReportModel : public ZblColumnPlacement<33>
{
public:
    // Rows of the table on one sheet, and the most sheets of a test.
    static constexpr int RowsPerPage = 33;
    static constexpr int MostPages = 4;

    // The print cell of (column, j), j from 0 to 32; any other index is
    // Subscript out of range.
    QString& cell(ZblReportColumn column, int j);
    const QString& cell(ZblReportColumn column, int j) const;
    // Whether the nine cells of row j are shown; the window designs them
    // hidden.
    bool rowVisible(int j) const;
    void setRowVisible(int j, bool visible);
    // The box of print cell (column, j) inside frDataPrint.
    ZblTwipRect cellRect(ZblReportColumn column, int j) const;

    // The values of the head.
    QString lbFileName;
    QString lbDate;
    QString LBCompany;
    QString LBDesignator;
    QString LBXFRSerialNumber;
    QString LBTemperature;
    QString lbStation;
    QString lbManufacturer;
    QString lbOperator;
    QString lbCompensatedTemp;
    QString lbCompensendFactor;
    QString lbNotes;
    // lbCHANA, lbCHANB, lbTAPA ... lbCompensedResistanceB, lbTotalTime.
    ZblColumnHeadTexts heads;

    ZblPrintFrame frHeaderPrint{ZblPrintHeaderTop, true};
    ZblPrintFrame frDataPrint{ZblPrintDataTopFirst, true};
    // The page number's frame is designed hidden: the print shows it.
    ZblPrintFrame frmPageNumber{ZblPrintPageNumberTop, false};
    QString lbPage = QStringLiteral("Page 1 / 1"); // as designed

    // Whether the window's load has run: at the first print.
    bool loaded = false;

    ZblPrintReportModel() { place(ZblPrintColumns); }

private:
    std::array<std::array<QString, RowsPerPage>, ZblReportColumnCount> m_cells;
    std::array<bool, RowsPerPage> m_rowVisible{};
};

// The print window's load: its column layout, and the total time's head
// centred over its border as the report window does it. The logo and the
// sheet's size are the window's.
void ZblPrint_Form_Load();

// The column layout of the print window.
void PlaceZBLPrintColumns();
// Places and shows the frames for `page`.
void TreatVisibleFrame(Int16 page);
// Hides all 33 rows, then shows the rows of `page` of a table counted as
// `count` (one more than its rows).
void TreatVisibleTAPTexte(Int16 page, Int16 count);
// Copies the report's cells of `page` into the print cells, one row beyond
// the last included, which stays hidden.
void FillDataTap(Int16 page, Int16 count);

// mnuBasicReport of the report: copies the head and the column heads of the
// report, asks `printerDialog` for a number of copies (none: cancelled), and
// prints every page of the test once a copy, collated, through `printPage`;
// a false from it is a printer failure, which ends the command as a cancel
// does, without a word.
void ZblReport_mnuBasicReport_Click(
    const ZblColumnHeadTexts& reportHeads, const std::function<std::optional<int>()>& printerDialog,
    const std::function<bool(const ZblPrintReportModel&)>& printPage);

// The print-out of the run's ZBL report.
ZblPrintReportModel& zblPrintReport();

} // namespace quenby

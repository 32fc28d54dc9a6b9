// The cells of the condensed KVX report, without any screen.
//
// Everything the report window shows is held here, and the window mirrors it:
// the header fields, the table of ten rows under its column heads, the
// compensation line, and the labels of the graph. The print-out and the
// spreadsheet export read the cells back, since once a report is filled its
// cells are the working copy of the test. Row n (1 to 10) is a position on the
// page, index 0 of each column is its head.
#pragma once

#include <QString>
#include <QStringList>

#include <array>

namespace quenby {

// The columns of the table, in the order a row is written.
enum class KvxReportColumn {
    TestNumber,  // lbTestNumber
    Tap,         // lbTapTest
    Ieee30,      // lbIEE30Test
    Ieee45,      // lbIEE45Test
    Iec1050,     // lbAINSIIC1050Test
    NpRatio,     // lbNPRATIOTest
    MsRatio,     // lbMSRATIOTest
    Error,       // lbErrorTest
    Phase,       // lbPhaseTest
    Polarity,    // lbPolarity
    WindingRes,  // lbWindingResTest
    WindingComp, // lbWindingCompTest
    Insulation,  // lbInsulationResistanceTest
};
inline constexpr int KvxReportColumnCount = 13;

// The control array name of a column ("lbTapTest").
const char* kvxReportColumnName(KvxReportColumn column);

class KvxCondensedReportModel
{
public:
    static constexpr int RowCount = 10;

    // The caption of cell (column, n), n from 0 (the head) to 10; any other
    // index is Subscript out of range.
    QString& cell(KvxReportColumn column, int n);
    const QString& cell(KvxReportColumn column, int n) const;

    // Whether the controls of row n (1 to 10) are shown.
    bool rowVisible(int n) const;
    void setRowVisible(int n, bool visible);

    // lbInsulationResistanceTest(n): the insulation column.
    QString& lbInsulationResistanceTest(int n) { return cell(KvxReportColumn::Insulation, n); }
    const QString& lbInsulationResistanceTest(int n) const
    {
        return cell(KvxReportColumn::Insulation, n);
    }

    // Header.
    QString lbTexteFileName1;     // lbTexteFileName(1)
    QString lbTexteDate1;         // lbTexteDate(1)
    QString lbTexteInstrumentSN1; // lbTexteInstrumentSN(1)
    QString txtCompany;
    QString txtDesignator;
    QString txtCTSerialNumber;
    QString txtTemperature;
    QString txtRatio;
    QString txtPhase;
    QString txtClass;
    QString txtNotes;
    QString txtStation;
    QString txtManufacturer;
    QString txtOperator;
    QString txtVoltageRating;
    QString txtPosition;
    QString lbKneeType;
    QString txBurden = QStringLiteral("BURDEN: ");

    // Compensation line: the combo box's list, its text and its list index
    // (-1 when it shows no choice), and the compensated temperature.
    // Index 0 is aluminium and index 1 copper, as the language load puts them.
    QStringList cbCompensationItems{QStringLiteral("Alluminium (TK=225)"),
                                    QStringLiteral("Copper (TK=234.5)")};
    QString cbCompensationText;
    int cbCompensationIndex = -1;
    QString lbTexteCompensedTemp1; // lbTexteCompensedTemp(1)

    // Graph labels and controls.
    QString lbVolts;
    QString lbCurrent;
    bool ckZoom = false;
    bool lbUnZoomVisible = false;
    int VScroll1 = 0;

    // Whether the window is on screen; the window keeps this in step.
    bool shown = false;

    // The legend of plots 1 to 10 of the graph: the tap pair drawn on the
    // plot, empty for a plot that holds no tap of the test. Index 0 is plot 1.
    std::array<QString, RowCount> plotLegend;

    // Top of the page frame frKVXReport in its window, in twips; VScroll1
    // moves it.
    double frKVXReportTop = 0.0;

    // Menu states that the window's load sets.
    bool mnSaveEnabled = true;
    bool mnWordEnabled = true;
    bool mnExportVisible = true;

    // The header field of a control name ("txtCompany", "lbTexteDate(1)"),
    // or null for a name that is no header field.
    QString* headerField(const QString& control);

private:
    std::array<std::array<QString, RowCount + 1>, KvxReportColumnCount> m_cells;
    // Row 0, the column heads, shows from the start; the rows below show
    // once a test fills them.
    std::array<bool, RowCount + 1> m_rowVisible{true};
};

// A header control and the cell of the model that holds its text.
struct KvxReportHeaderControl
{
    const char* control; // "lbTexteFileName(1)", "txtCompany"
    QString KvxCondensedReportModel::*cell;
};

// The header controls in the order the report's header fill writes them.
// txBurden comes last: it is typed by the operator and never filled.
inline constexpr int KvxReportHeaderFieldCount = 17;
const std::array<KvxReportHeaderControl, KvxReportHeaderFieldCount + 1>& kvxReportHeaderControls();

// The one condensed report of the run.
KvxCondensedReportModel& kvxCondensedReport();

} // namespace quenby

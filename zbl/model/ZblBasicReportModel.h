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

class ZblBasicReportModel
{
public:
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

private:
    std::array<std::array<QString, RowCount>, ZblReportColumnCount> m_cells;
};

// The one ZBL basic report of the run.
ZblBasicReportModel& zblBasicReport();

} // namespace quenby

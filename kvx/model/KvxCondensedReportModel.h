// The cells of the condensed KVX report, without any screen.
//
// The report window mirrors these cells; the print-out and the spreadsheet
// export read them back. For now the model holds the cells that the file
// reader writes: the insulation column, whose head (index 0) carries the
// insulation test voltage of slot 1. Index n (1 to 10) is report row n.
#pragma once

#include <QString>

#include <array>

namespace quenby {

class KvxCondensedReportModel
{
public:
    static constexpr int RowCount = 10;

    // lbInsulationResistanceTest(n), n from 0 (the column head) to 10; any
    // other index is Subscript out of range.
    QString& lbInsulationResistanceTest(int n);
    const QString& lbInsulationResistanceTest(int n) const;

private:
    std::array<QString, RowCount + 1> m_insulationResistanceTest;
};

// The one condensed report of the run.
KvxCondensedReportModel& kvxCondensedReport();

} // namespace quenby

// The ZBL basic report as the temperature compensation sees it, and its
// compensated column(s) filled through the dialog.
#pragma once

#include "report/model/TemperatureCompensation.h"

namespace quenby {

class ZblReportCompensation final : public ZblCompensationReport
{
public:
    QString& txtTemperature() override;
    QString& lbTexteCompensedTemp1() override;
    QStringList& cbCompensationItems() override;
    QString& cbCompensationText() override;
    bool reportShown() const override;
    void fillCompensedColumns() override;
    void mirrorReport() override;
};

// Both compensated columns of the ZBL report, rows 0 to 121, hidden ones
// included: B from lbResB, then A from lbResA, row by row.
void FillZBLBasicReportConpensedResistance();

// The report's compensation box picked: the report window writes the pick
// (text and list index) into its model first, calls this, and mirrors the
// model once it returns. The dialog's OK or Cancel runs inside the modal show.
void ZblReport_cbCompensation_Click();

} // namespace quenby

// The KVX condensed report as the temperature compensation sees it, and its
// compensated column(s) filled through the dialog.
#pragma once

#include "report/model/TemperatureCompensation.h"

namespace quenby {

class KvxReportCompensation final : public KvxCompensationReport
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

// The KVX report's compensated column, rows 1 to the last reference number
// of the test record, from its winding resistance column.
void FillKVXBasicReportConpensedResistance();

// The report's compensation box picked: the report window writes the pick
// (text and list index) into its model first, calls this, and mirrors the
// model once it returns. The dialog's OK or Cancel runs inside the modal show.
void KvxReport_cbCompensation_Click();

} // namespace quenby

#include "zbl/model/ZblCompensation.h"

#include "shell/model/YieldHook.h"
#include "zbl/model/ZblBasicReportModel.h"
#include "zbl/model/ZblBasicReportView.h"
#include "zbl/model/ZblReportWindow.h"

namespace quenby {

QString& ZblReportCompensation::txtTemperature()
{
    return zblBasicReport().txtTemperature;
}

QString& ZblReportCompensation::lbTexteCompensedTemp1()
{
    return zblBasicReport().lbTexteCompensedTemp1;
}

QStringList& ZblReportCompensation::cbCompensationItems()
{
    return zblBasicReport().cbCompensationItems;
}

QString& ZblReportCompensation::cbCompensationText()
{
    return zblBasicReport().cbCompensationText;
}

bool ZblReportCompensation::reportShown() const
{
    return zblBasicReport().shown;
}

void ZblReportCompensation::fillCompensedColumns()
{
    FillZBLBasicReportConpensedResistance();
}

void ZblReportCompensation::mirrorReport()
{
    zblReportWindow().mirrorReport();
}

void FillZBLBasicReportConpensedResistance()
{
    CompensationDialogModel& dialog = compensationDialog();
    ZblBasicReportModel& report = zblBasicReport();
    const QString zbl = QStringLiteral("ZBL");
    for (int i = 0; i < ZblBasicReportModel::RowCount; ++i) {
        QString resistanceB = report.lbResB(i);
        report.txtConbinedResistanceB(i) =
            dialog.CalculatedCompensendResistanceRS(resistanceB, zbl);
        QString resistanceA = report.lbResA(i);
        report.txtConbinedResistanceA(i) =
            dialog.CalculatedCompensendResistanceRS(resistanceA, zbl);
        letSystemBreathe();
    }
    compensationDialogView().dialogChanged();
    zblCompensationReport().mirrorReport();
}

void ZblReport_cbCompensation_Click()
{
    CompensationDialogModel& dialog = compensationDialog();
    dialog.FillValueZBL();
    // No choice shown, so that picking the same item again is a click again:
    // the box then shows no text either, until a custom TK puts its entry
    // there.
    ZblBasicReportModel& report = zblBasicReport();
    report.cbCompensationIndex = -1;
    report.cbCompensationText.clear();
    dialog.refillTexts();
    dialog.bringUp();
}

} // namespace quenby

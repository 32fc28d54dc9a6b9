#include "kvx/model/KvxCompensation.h"

#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxReportView.h"
#include "kvx/model/KvxReportWindow.h"
#include "kvx/model/KvxTestRecord.h"
#include "localisation/model/LanguageLookup.h"
#include "localisation/model/Vocabulary.h"
#include "shell/model/YieldHook.h"

namespace quenby {

QString& KvxReportCompensation::txtTemperature()
{
    return kvxCondensedReport().txtTemperature;
}

QString& KvxReportCompensation::lbTexteCompensedTemp1()
{
    return kvxCondensedReport().lbTexteCompensedTemp1;
}

QStringList& KvxReportCompensation::cbCompensationItems()
{
    return kvxCondensedReport().cbCompensationItems;
}

QString& KvxReportCompensation::cbCompensationText()
{
    return kvxCondensedReport().cbCompensationText;
}

bool KvxReportCompensation::reportShown() const
{
    return kvxCondensedReport().shown;
}

void KvxReportCompensation::fillCompensedColumns()
{
    FillKVXBasicReportConpensedResistance();
}

void KvxReportCompensation::mirrorReport()
{
    kvxReportWindow().mirrorReport();
}

void FillKVXBasicReportConpensedResistance()
{
    CompensationDialogModel& dialog = compensationDialog();
    KvxCondensedReportModel& report = kvxCondensedReport();
    // Up to the reference number of the last table row, not the count of
    // taps found; beyond row 10 the cell is Subscript out of range.
    const double last = kvxTestRecord().lastReference.toNumber();
    for (int n = 1; n <= last; ++n) {
        // A copy: the winding cell itself keeps its text.
        QString winding = report.cell(KvxReportColumn::WindingRes, n);
        report.cell(KvxReportColumn::WindingComp, n) =
            dialog.CalculatedCompensendResistanceRS(winding, QStringLiteral("KVX"));
        letSystemBreathe();
    }
    compensationDialogView().dialogChanged();
    kvxCompensationReport().mirrorReport();
}

void KvxReport_cbCompensation_Click()
{
    CompensationDialogModel& dialog = compensationDialog();
    dialog.FillValueKVX();
    dialog.caption = QStringLiteral("KVX ") +
                     GetLanguageText(QString::fromLatin1(KvxReportKeys::CompensationDialogTitle));
    compensationDialogView().dialogChanged();
    // The refill that follows puts the language's title back over the
    // "KVX " one, so the prefix never stays on screen. Kept in this order.
    dialog.refillTexts();
    dialog.bringUp();
    // No choice shown, so that picking the same item again is a click again:
    // the box then shows no text either.
    KvxCondensedReportModel& report = kvxCondensedReport();
    report.cbCompensationIndex = -1;
    report.cbCompensationText.clear();
}

} // namespace quenby

#include "kvx/model/TemperatureCompensation.h"

#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxTestRecord.h"
#include "localisation/model/LanguageLookup.h"
#include "localisation/model/Vocabulary.h"
#include "shell/model/Checked.h"
#include "shell/model/NumberText.h"
#include "shell/model/YieldHook.h"
#include "zbl/model/ZblBasicReportModel.h"

namespace quenby {

namespace {

void call(const std::function<void()>& hook)
{
    if (hook)
        hook();
}

// Blanks only, as the platform's trim does; tabs stay.
QString trimBlanks(const QString& text)
{
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && text[begin] == u' ')
        ++begin;
    while (end > begin && text[end - 1] == u' ')
        --end;
    return text.mid(begin, end - begin);
}

QString plainLeadingNumber(const QString& text)
{
    return numberText(leadingNumber(text));
}

// TM and TK from a report's temperature field and compensation box. Index 1
// is copper and index 0 aluminium; any other text (the custom entry, or an
// empty box) leaves TK and TkSelected as the last fill or the operator left
// them.
void fillValue(CompensationDialogModel& dialog, const QString& temperature,
               const QStringList& items, const QString& text)
{
    dialog.txtTM = temperature;
    if (items.size() > 1 && text == items[1]) {
        dialog.TkSelected = 234.5;
        dialog.txtTK = numberText(dialog.TkSelected);
    } else if (!items.isEmpty() && text == items[0]) {
        dialog.TkSelected = 225.0;
        dialog.txtTK = numberText(dialog.TkSelected);
    }
    call(compensationHooks().dialogChanged);
}

} // namespace

CompensationHooks& compensationHooks()
{
    static CompensationHooks hooks;
    return hooks;
}

CompensationDialogModel& compensationDialog()
{
    static CompensationDialogModel dialog;
    return dialog;
}

QString FindUnitInString(const QString& text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        const bool numberPart = (c >= u'0' && c <= u'9') || c == u'.' || c == u',';
        if (!numberPart)
            return trimBlanks(text.mid(i));
    }
    return {};
}

void CompensationDialogModel::FillValueKVX()
{
    const KvxCondensedReportModel& report = kvxCondensedReport();
    fillValue(*this, report.txtTemperature, report.cbCompensationItems, report.cbCompensationText);
}

void CompensationDialogModel::FillValueZBL()
{
    const ZblBasicReportModel& report = zblBasicReport();
    fillValue(*this, report.txtTemperature, report.cbCompensationItems, report.cbCompensationText);
}

QString CompensationDialogModel::CalculatedCompensendResistanceRS(QString& resistanceText,
                                                                  const QString& instrument)
{
    // A text whose unit is all of it has no leading number: ">20", "Error",
    // "---" and "" all stop the scan at once (or never start it).
    const QString unit = FindUnitInString(resistanceText);
    if (trimBlanks(resistanceText) == unit)
        return {};

    // "1,5 ohm" passed the unit scan whole, but its leading number stops at
    // the comma: R is 1.
    resistanceText = plainLeadingNumber(resistanceText);
    txtTS = plainLeadingNumber(txtTS);
    txtTK = plainLeadingNumber(txtTK);
    txtTM = plainLeadingNumber(txtTM);
    const double resistance = leadingNumber(resistanceText);
    const double tk = leadingNumber(txtTK);
    const double tkPlusTs = tk + leadingNumber(txtTS);
    const double tkPlusTm = tk + leadingNumber(txtTM);

    const bool kvx = instrument == QLatin1String("KVX");
    QString result;
    // The KVX report leaves a zero resistance uncompensated; the ZBL report
    // compensates whatever it reads. A TK + TM of 0 is not caught: the
    // division raises the run-time failure, as it always has.
    if (!kvx || !(resistanceText.isEmpty() || resistanceText == QLatin1String("0")))
        result = formatNumber(divide(resistance * tkPlusTs, tkPlusTm), u"0.000") + u' ' + unit;

    // Written back on every value: the temperature field gains a "C" here
    // and loses it again to the leading number on the next value. Intended.
    const QString compensedTemp = txtTS + u'C';
    const QString temperature = txtTM + u'C';
    if (kvx) {
        KvxCondensedReportModel& report = kvxCondensedReport();
        report.lbTexteCompensedTemp1 = compensedTemp;
        report.txtTemperature = temperature;
    } else if (instrument == QLatin1String("ZBL")) {
        ZblBasicReportModel& report = zblBasicReport();
        report.lbTexteCompensedTemp1 = compensedTemp;
        report.txtTemperature = temperature;
    }
    return result;
}

void CompensationDialogModel::CheckIfTkChange()
{
    const double tk = leadingNumber(txtTK);
    if (tk == TkSelected)
        return;
    // Only the ZBL report's box gets the custom entry, whichever report the
    // dialog served; the KVX box keeps what it showed. Intended.
    ZblBasicReportModel& zbl = zblBasicReport();
    const QString custom = QStringLiteral("Custom (TK=") + numberText(tk) + u')';
    if (zbl.cbCompensationItems.size() > 2)
        zbl.cbCompensationItems[2] = custom;
    else
        zbl.cbCompensationItems.append(custom);
    zbl.cbCompensationText = custom;
    call(compensationHooks().zblReportChanged);
}

void CompensationDialogModel::cmdOK_Click()
{
    // The dialog tells whom it serves by whether the ZBL report is up, not by
    // who opened it. Intended.
    if (!zblBasicReport().shown)
        FillKVXBasicReportConpensedResistance();
    else
        FillZBLBasicReportConpensedResistance();
    CheckIfTkChange();
    hideDialog();
}

void CompensationDialogModel::cmdCancel_Click()
{
    // Both boxes are emptied, whichever report opened the dialog, and the
    // compensated columns keep what an earlier OK put there. Intended.
    zblBasicReport().cbCompensationText.clear();
    kvxCondensedReport().cbCompensationText.clear();
    call(compensationHooks().zblReportChanged);
    call(compensationHooks().kvxReportChanged);
    hideDialog();
}

void CompensationDialogModel::closeByFrame()
{
    zblBasicReport().cbCompensationText.clear();
    kvxCondensedReport().cbCompensationText.clear();
    shown = false;
    call(compensationHooks().zblReportChanged);
    call(compensationHooks().kvxReportChanged);
}

void CompensationDialogModel::bringUp()
{
    if (shown) {
        call(compensationHooks().bringDialogToFront);
        return;
    }
    shown = true;
    call(compensationHooks().dialogChanged);
    call(compensationHooks().showDialogModal);
}

void CompensationDialogModel::hideDialog()
{
    shown = false;
    call(compensationHooks().hideDialog);
}

void CompensationDialogModel::refillTexts()
{
    caption = GetLanguageText(QString::fromLatin1(KvxReportKeys::CompensationDialogTitle));
    call(compensationHooks().fillDialogTexts);
    call(compensationHooks().dialogChanged);
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
    call(compensationHooks().dialogChanged);
    call(compensationHooks().kvxReportChanged);
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
    call(compensationHooks().dialogChanged);
    call(compensationHooks().zblReportChanged);
}

void KvxReport_cbCompensation_Click()
{
    CompensationDialogModel& dialog = compensationDialog();
    dialog.FillValueKVX();
    dialog.caption = QStringLiteral("KVX ") +
                     GetLanguageText(QString::fromLatin1(KvxReportKeys::CompensationDialogTitle));
    call(compensationHooks().dialogChanged);
    // The refill that follows puts the language's title back over the
    // "KVX " one, so the prefix never stays on screen. Kept in this order.
    dialog.refillTexts();
    dialog.bringUp();
    // No choice shown, so that picking the same item again is a click again.
    kvxCondensedReport().cbCompensationIndex = -1;
}

void ZblReport_cbCompensation_Click()
{
    CompensationDialogModel& dialog = compensationDialog();
    dialog.FillValueZBL();
    // No choice shown, so that picking the same item again is a click again.
    zblBasicReport().cbCompensationIndex = -1;
    dialog.refillTexts();
    dialog.bringUp();
}

} // namespace quenby

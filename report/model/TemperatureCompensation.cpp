#include "report/model/TemperatureCompensation.h"

#include "localisation/model/LanguageLookup.h"
#include "localisation/model/Vocabulary.h"
#include "shell/model/Checked.h"
#include "shell/model/NumberText.h"
#include "shell/model/Session.h"
#include "shell/model/TextRules.h"

namespace quenby {

namespace {

QString plainLeadingNumber(const QString& text)
{
    return numberText(leadingNumber(text));
}

// TM and TK from a report's temperature field and compensation box. Index 1
// is copper and index 0 aluminium; any other text (the custom entry, or an
// empty box) leaves TK and TkSelected as the last fill or the operator left
// them.
void fillValue(CompensationDialogModel& dialog, CompensationReport& report)
{
    const QStringList& items = report.cbCompensationItems();
    const QString& text = report.cbCompensationText();
    dialog.txtTM = report.txtTemperature();
    if (items.size() > 1 && text == items[1]) {
        dialog.TkSelected = 234.5;
        dialog.txtTK = numberText(dialog.TkSelected);
    } else if (!items.isEmpty() && text == items[0]) {
        dialog.TkSelected = 225.0;
        dialog.txtTK = numberText(dialog.TkSelected);
    }
    compensationDialogView().dialogChanged();
}

} // namespace

KvxCompensationReport& kvxCompensationReport()
{
    return Slot<KvxCompensationReport>::current();
}

ZblCompensationReport& zblCompensationReport()
{
    return Slot<ZblCompensationReport>::current();
}

CompensationDialogModel& compensationDialog()
{
    return Slot<CompensationDialogModel>::current();
}

CompensationDialogView& compensationDialogView()
{
    return Slot<CompensationDialogView>::current();
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
    fillValue(*this, kvxCompensationReport());
}

void CompensationDialogModel::FillValueZBL()
{
    fillValue(*this, zblCompensationReport());
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
    CompensationReport* report = nullptr;
    if (kvx)
        report = &kvxCompensationReport();
    else if (instrument == QLatin1String("ZBL"))
        report = &zblCompensationReport();
    if (report) {
        report->lbTexteCompensedTemp1() = compensedTemp;
        report->txtTemperature() = temperature;
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
    ZblCompensationReport& zbl = zblCompensationReport();
    const QString custom = QStringLiteral("Custom (TK=") + numberText(tk) + u')';
    QStringList& items = zbl.cbCompensationItems();
    if (items.size() > 2)
        items[2] = custom;
    else
        items.append(custom);
    zbl.cbCompensationText() = custom;
    zbl.mirrorReport();
}

void CompensationDialogModel::cmdOK_Click()
{
    // The dialog tells whom it serves by whether the ZBL report is up, not by
    // who opened it. Intended.
    if (!zblCompensationReport().reportShown())
        kvxCompensationReport().fillCompensedColumns();
    else
        zblCompensationReport().fillCompensedColumns();
    CheckIfTkChange();
    hideDialog();
}

void CompensationDialogModel::cmdCancel_Click()
{
    // Both boxes are emptied, whichever report opened the dialog, and the
    // compensated columns keep what an earlier OK put there. Intended.
    clearReportBoxes();
    hideDialog();
}

void CompensationDialogModel::clearReportBoxes()
{
    ZblCompensationReport& zbl = zblCompensationReport();
    KvxCompensationReport& kvx = kvxCompensationReport();
    zbl.cbCompensationText().clear();
    kvx.cbCompensationText().clear();
    zbl.mirrorReport();
    kvx.mirrorReport();
}

void CompensationDialogModel::closeByFrame()
{
    shown = false;
    clearReportBoxes();
}

void CompensationDialogModel::bringUp()
{
    if (shown) {
        compensationDialogView().bringDialogToFront();
        return;
    }
    shown = true;
    compensationDialogView().dialogChanged();
    compensationDialogView().showDialogModal();
}

void CompensationDialogModel::hideDialog()
{
    shown = false;
    compensationDialogView().hideDialog();
}

void CompensationDialogModel::refillTexts()
{
    caption = GetLanguageText(QString::fromLatin1(KvxReportKeys::CompensationDialogTitle));
    compensationDialogView().fillDialogTexts();
    compensationDialogView().dialogChanged();
}

} // namespace quenby

// Temperature compensation of winding resistance, for both report windows.
//
// A measured resistance R is referred from the temperature of the measurement
// TM to a reference temperature TS with the conductor constant TK:
//
//     R compensated = R x (TK + TS) / (TK + TM)
//
// TK is 234.5 for copper and 225 for aluminium, or what the operator types.
// One dialog, frmCompensedResistanceSetting, serves the KVX condensed report
// and the ZBL basic report. This is its model: the three texts TS, TK and TM,
// the TK of the last fill, the title and whether the dialog is up, with the
// operations of its buttons and the fills of the reports' compensated
// columns. Whatever needs a screen (the modal show, the language texts, the
// mirroring of a changed model) goes through compensationHooks(), which the
// windows set, so that all of this runs without a screen.
#pragma once

#include <QString>

#include <functional>

namespace quenby {

// What the windows plug in. An empty hook is skipped.
struct CompensationHooks
{
    // Shows the dialog modally over the window in front; returns once the
    // dialog is hidden again. Without it the dialog only counts as shown.
    std::function<void()> showDialogModal;
    // Gives the focus to the dialog, which is already up.
    std::function<void()> bringDialogToFront;
    std::function<void()> hideDialog;
    // Puts the language texts on the dialog's controls, its title included.
    std::function<void()> fillDialogTexts;
    // The dialog's model changed (its texts or title): mirror it.
    std::function<void()> dialogChanged;
    // A report's model changed (compensated cells, temperature field,
    // compensated temperature, compensation box): mirror it.
    std::function<void()> kvxReportChanged;
    std::function<void()> zblReportChanged;
};
CompensationHooks& compensationHooks();

// The unit part of a value's text ("1.234 mohm" gives "mohm"): from the first
// character that is none of "0" to "9", "." and "," to the end, trimmed of
// blanks; "" when there is no such character.
QString FindUnitInString(const QString& text);

class CompensationDialogModel
{
public:
    // Transformer windings are commonly referred to 75 degrees Celsius; TS
    // keeps whatever the operator leaves in it from one use to the next.
    QString txtTS = QStringLiteral("75");
    QString txtTK; // refilled from the report's compensation box on each opening
    QString txtTM; // refilled from the report's temperature on each opening
    // The TK the last fill chose; a TK that differs from it was typed in.
    double TkSelected = 0.0;
    QString caption = QStringLiteral("Temperature Compensation");
    // Whether the dialog is up; the window keeps this in step.
    bool shown = false;

    // Load TM and TK from the KVX, or the ZBL, report.
    void FillValueKVX();
    void FillValueZBL();

    // The compensated text of one value for the report of `instrument`
    // ("KVX" or "ZBL"), "" for a value without a leading number. Rewrites
    // `resistanceText`, the three texts, and the asking report's temperature
    // field and compensated temperature. The caller mirrors what changed.
    QString CalculatedCompensendResistanceRS(QString& resistanceText, const QString& instrument);

    // Adds the custom entry to the ZBL report's box when TK was typed in.
    void CheckIfTkChange();

    void cmdOK_Click();
    void cmdCancel_Click();
    // The dialog closed by its frame: the window hides itself.
    void closeByFrame();

    // Shows the dialog modally, or brings it to the front if it is up.
    void bringUp();
    void hideDialog();
    // The title from the language, then the texts of every control.
    void refillTexts();
};

// The one compensation dialog of the run.
CompensationDialogModel& compensationDialog();

// The KVX report's compensated column, rows 1 to the last reference number
// of the test record, from its winding resistance column.
void FillKVXBasicReportConpensedResistance();
// Both compensated columns of the ZBL report, rows 0 to 121, hidden ones
// included: B from lbResB, then A from lbResA, row by row.
void FillZBLBasicReportConpensedResistance();

// The reports' compensation box picked: the report window writes the pick
// (text and list index) into its model first, calls this, and mirrors the
// model once it returns. The dialog's OK or Cancel runs inside the modal show.
void KvxReport_cbCompensation_Click();
void ZblReport_cbCompensation_Click();

} // namespace quenby

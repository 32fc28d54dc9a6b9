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
// mirroring of a changed model) goes through the dialog's view, and what it
// needs of the two reports through their CompensationReport, so that all of
// this runs without a screen and without this folder knowing either report.
#pragma once

#include <QString>
#include <QStringList>

namespace quenby {

// What the dialog asks of its window.
class CompensationDialogView
{
public:
    virtual ~CompensationDialogView() = default;
    // Shows the dialog modally over the window in front; returns once the
    // dialog is hidden again.
    virtual void showDialogModal() = 0;
    // Gives the focus to the dialog, which is already up.
    virtual void bringDialogToFront() = 0;
    virtual void hideDialog() = 0;
    // Puts the language texts on the dialog's controls, its title included.
    virtual void fillDialogTexts() = 0;
    // The dialog's model changed (its texts or title): mirror it.
    virtual void dialogChanged() = 0;
};

// What the dialog asks of a report it serves: its temperature field, the
// compensated temperature, its compensation box, whether it is up, the fill
// of its compensated column(s), and the mirror of its window. Each report
// implements it in its own folder; the application installs both.
class CompensationReport
{
public:
    virtual ~CompensationReport() = default;
    virtual QString& txtTemperature() = 0;
    virtual QString& lbTexteCompensedTemp1() = 0;
    virtual QStringList& cbCompensationItems() = 0;
    virtual QString& cbCompensationText() = 0;
    virtual bool reportShown() const = 0;
    // FillKVXBasicReportConpensedResistance or FillZBLBasicReportConpensedResistance.
    virtual void fillCompensedColumns() = 0;
    // The report's model changed (compensated cells, temperature field,
    // compensated temperature, compensation box): its window mirrors it.
    virtual void mirrorReport() = 0;
};
// The two reports, each in a slot of its own.
class KvxCompensationReport : public CompensationReport
{
};
class ZblCompensationReport : public CompensationReport
{
};
KvxCompensationReport& kvxCompensationReport();
ZblCompensationReport& zblCompensationReport();

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
    // Both report boxes emptied and mirrored.
    void clearReportBoxes();

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
CompensationDialogView& compensationDialogView();

} // namespace quenby

// The ZBL basic report without a screen: which rows it shows, its column
// layout and scroll bar, its load, and the main window's road that opens a
// ZBL test and brings the report up. The windows take part through their
// views (ZblReportWindow, MainWindowView), so all of it runs in tests.
#pragma once

#include "shell/model/Checked.h"
#include "zbl/model/ZblBasicReportModel.h"
#include "zbl/model/ZblTestFileReader.h"

#include <QString>

namespace quenby {

// The reader's view of the report: the head and cells of zblBasicReport(),
// the three texts of the compensation dialog, and its fill of the
// compensated columns.
class ZblBasicReportTarget final : public ZblReportTarget
{
public:
    QString& lbTexteFileName1() override;
    QString& lbTexteDate1() override;
    QString& lbTexteCompensedTemp1() override;
    QString& txtXFRSerialNumber() override;
    QString& txtCompany() override;
    QString& txtStation() override;
    QString& txtDesignator() override;
    QString& txtManufacturer() override;
    QString& txtOperator() override;
    QString& txtTemperature() override;
    QString& txtNotes() override;
    QString& cbCompensationText() override;
    QString& cell(ZblReportColumn column, int i) override;
    QString& txtTK() override;
    QString& txtTS() override;
    QString& txtTM() override;
    void FillZBLBasicReportConpensedResistance() override;
};

// Where the logo goes on the page, in twips.
inline constexpr double ZblReportLogoLeft = 1560;
inline constexpr double ZblReportLogoTop = 240;
// The inside height of the report window, in twips.
inline constexpr int ZblReportFormHeight = 11400;

// The lines of RowLine up to the compensation line, not counting empty
// ones, "-" and the end marker: one more than the table's rows whenever the
// file has a closing line.
Int16 CheckNumberOfTAPInFiles();
// Shows rows 0 to count - 2 (at least row 0) and hides the rest.
void TreatVisibleTAPTexte();
// Ceiling of x at the step 1 / f (true for f = 1 only, see the source).
double RoundUp(double x, double f);
// The column heads and all cells at their places.
void PlaceZBLReportColumns();
// lbTotalTime centred over lbTotalTimeBdr; on load and on a click on it.
void CentreZblTotalTimeHead();
// The maximum VScroll1 gets for a row count of n (20 and more).
int ZblScrollMaximum(int n);
// The box txtTapA(n) has or would have by the column layout; n may be 122,
// one past the last row, which a full table counts.
ZblTwipRect ZblTapARect(int n);

void ZblReport_Form_Load();
// A change of VScroll1 (or a drag of its thumb) to `value`.
void ZblReport_VScroll1_Change(int value);
// mnuOk: hides the window. Closing also hides the compensation dialog.
void ZblReport_mnuOk_Click();
void ZblReport_Form_Unload();

// The open command's fill of the report from the test file in hand (its
// number and path in the application state), without the dialog and the
// windows: the clears, the read, the head, the rows shown, the scroll bar, the
// table with its stored compensation and the column layout.
void FillZblReportFromOpenTest();

// The road of a ZBL test from the main window's menu.
void mnZBLFiles_Click();

} // namespace quenby

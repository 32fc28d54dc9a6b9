// Filling the condensed KVX report from the test record, and the report
// window's own commands and graph events, without any screen.
//
// These are the operations of `fncKVXViewCondensedReport` and the event logic
// of `frmKVXCondensedReport`. They work on the report's cell model
// (kvxCondensedReport()) and its graph (kvxReportGraph()); the window only
// mirrors both. What the logic needs of windows (hide or show the report,
// the busy window, the main window's status bar, the compensation dialog,
// the logo) it asks of their views (KvxReportWindow, MainWindowView, the
// compensation dialog's), which the application installs and a test scripts.
//
// A report row n (1 to 10) is a position on the page, not a tap slot: the
// taps present are packed from row 1 in slot order. Which rows show follows
// the reference number of the last table row, not the count of taps found.
#pragma once

#include "localisation/model/Vocabulary.h"

#include <QString>

namespace quenby {

// Where the logo goes on the page, in twips.
inline constexpr double KvxReportLogoLeft = 1560;
inline constexpr double KvxReportLogoTop = 240;
// How far the page moves for one step of VScroll1, in twips.
inline constexpr int KvxReportScrollTwips = 30;

// The text a blanked row holds in lbWindingResTest(n).
inline constexpr auto KvxBlankedWindingText = "\"";

// ---- fncKVXViewCondensedReport ---------------------------------------------

// The header fields of the record into the header controls, in the order of
// kvxReportHeaderControls().
void FillKvxReportHeader();
// The present taps into rows 1 up, in slot order; the rows behind them
// blanked; then the graph drawn by cmdPlotData_Click, with the plots' legends.
void FillKvxReportTaps();
// Rows 1 to 10 shown, then those behind the last reference number hidden.
void TreatVisibleTestTexte();
// Every cell of rows 1 to 10 emptied.
void flushAllTap();
// The refill after a change of knee standard, with the report hidden and the
// busy window shown. Does nothing while a fill runs (ProcessInProgress).
void RefreshKvxReport();

// ---- frmKVXCondensedReport -------------------------------------------------

// The window's load: header, menu states, compensation list, axis captions,
// logo, track mode.
void KvxReport_Form_Load();
// Closing the window: the report and the compensation dialog are hidden.
void KvxReport_Form_Unload();

// The knee commands: KneeStandard and the record's knee text set, then the
// report refilled. Ignored while a fill runs.
void mnKneeIEEE30_Click();
void mnKneeIEEE45_Click();
void mnKneeAINSIIEC1050_Click();

// Hides the report and zeroes the curves.
void mnOk_Click();

// The page's top follows the scroll bar's value, 30 twips a step.
void KvxReport_VScroll1_Change(int value);

// Graph events.
void KvxReport_ckZoom_Click(bool checked);
// A rectangle zoom ended, leaving the axes at these ranges.
void KvxReport_CWGraph1_ZoomEnd(double xMin, double xMax, double yMin, double yMax);
void KvxReport_CWGraph1_DblClick();
// Cursor n (1 to 10) was moved to (x mA, y V).
void KvxReport_CWGraph1_CursorChange(int n, double x, double y);

} // namespace quenby

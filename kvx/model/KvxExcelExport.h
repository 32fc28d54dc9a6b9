// The spreadsheet export of a KVX test (`fncExcelReport`): the test is read
// again from its file and written into a copy of a prepared workbook
// template, which the operator may then save.
//
// The template lies beside the program, "TMP2.xlsx" or, for the current
// language, "TMP2-<language>.xlsx". It holds the layout, the labels, the
// column heads, the print setup and the chart of the excitation curves, which
// reads the curve rows P4:IV23; the export writes values only and makes no
// chart. The header cells come from the test record as just read, the table
// rows from the report's cells, and only the rows the report shows. No
// spreadsheet program is needed: the workbook file is filled directly.
#pragma once

#include "shell/model/Checked.h"
#include "shell/model/Services.h"
#include "shell/model/Session.h"

#include <QString>

#include <optional>

namespace quenby {

class XlsxWorkbook;

inline constexpr auto KvxExcelTemplateStem = "TMP2";
inline constexpr auto KvxExcelTemplateEnding = ".xlsx";
// The question asked once the workbook is filled, kept as the program has
// always spelt it.
inline constexpr auto KvxExcelSaveTitle = "Saving Repport";
inline constexpr auto KvxExcelSaveQuestion = "Convertion completed, save files?";
// The save dialog.
inline constexpr auto KvxExcelSaveFilter = "*.xlsx";
inline constexpr auto KvxExcelSaveDialogTitle = "Rapport KVX";

// Where the export writes on the first worksheet, rows and columns from 1.
namespace KvxExcelCells {
// The head of the insulation column, which carries the test voltage.
inline constexpr int InsulationHeadRow = 14;
inline constexpr int InsulationHeadColumn = 13;
// Report row n goes to sheet row RowBase + n, its cells from FirstColumn on.
inline constexpr int RowBase = 15;
inline constexpr int FirstColumn = 3;
// The curve of slot k: current across row 2k + 2, volts across row 2k + 3,
// from column P to column IV (the chart's ranges).
inline constexpr int CurveFirstColumn = 16; // P
inline constexpr int CurveLastColumn = 256; // IV
} // namespace KvxExcelCells

// The state the export keeps between runs.
struct KvxExcelExportState
{
    // The operator's answer to the save question of the last export.
    MsgAnswer saveAnswer = MsgAnswer::No;
};

inline KvxExcelExportState& kvxExcelExport()
{
    return Slot<KvxExcelExportState>::current();
}

// The template of the current language if it is there, else the plain one:
// AppPath + "TMP2" [+ "-" + GetLanguageCode()] + ".xlsx".
QString KvxExcelTemplatePath();

// First divided by second of a nominal ratio text "a:b", when the text splits
// at ":" into exactly two parts whose numbers are both other than 0.
std::optional<double> nominalRatioValue(const QString& text);

// Fills the first worksheet of `book`: the cell map from the record and the
// report, the insulation head, the report rows that show, and the twenty
// curve rows of all 120 points each.
void FillKvxWorkbook(XlsxWorkbook& book);

// The export of the test file just read: the template filled if it is there,
// the save question, and on Yes the save dialog and the save. A workbook
// that cannot be saved (no template, a path that cannot be written) raises
// the run-time failure with the path; a cancelled dialog saves nothing.
void MakeKvxExcelReport();

// ExportExcel of the main window: askFile true is the main window's
// mnExcel, which asks for a test file; false is the report's mnExcel, which
// opens again the file last chosen.
void ExportExcel(Bool16 askFile);

// The report window's mnExcel.
void KvxReport_mnExcel_Click();

} // namespace quenby

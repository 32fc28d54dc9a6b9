// The save of the ZBL basic report: the report on the screen written back to
// a ZBL test file (module fncFiles).
//
// The file is rebuilt as a whole from the report's cells, not from the
// record: the head texts, the table cells, the compensation box and the
// compensated temperature, so the operator's edits reach the file. Only the
// current, the interval and the total time of each row come from the record,
// which holds them unchanged since the window has no editable cell for the
// first two. The compensated columns are not stored: a reload works them out
// again from the material and the temperature.
//
// The file is the saved kind of ZBL test file: 88 hyphens, "ZBL Report", the
// ten labelled head lines with an empty mode, the two rules around the table
// head, one row in print zones for each table row, an empty line and the two
// compensation lines; Windows-1252 with CR LF.
//
// The save never writes over a file the program holds open, and the test file
// the report came from stays open for input: a save under the name of the
// report's file goes to a numbered name instead ("t.zbl" to "t(1).zbl").
//
// The save shows no message at all, on success or failure. Any run-time
// failure on its way ends it quietly, the output file closed: a cancelled
// dialog, a file that cannot be opened for output, or a resistance cell whose
// number part is no number, at which the file ends with the row before it.
#pragma once

#include "shell/model/Checked.h"

#include <QString>

namespace quenby {

// The save dialog's filter and the name it leaves when nothing was chosen.
inline constexpr auto ZblSaveFilePattern = "*.zbl";

// The whole command: asks for a name in the main window's file dialog
// (starting beside the program in ZBL/Files, filter "*.zbl"), points the
// record's FilePath at it and writes the report there. Shows nothing. Gives
// the number of the run-time failure that ended it early, 0 when it ran to its
// end; the menu has no use for it.
int SaveZBLReport();

// The numbered name for a save under `oldPath` (the report's file), given the
// chosen `newPath`, equal to it: "name.zbl" becomes "name(1).zbl", then the
// digit in front of ")" counts up while a file of that name exists, to
// "name(10).zbl" and then "name((1).zbl". A character there that is not a
// digit raises Type mismatch.
QString MakeZBLNameUnique(const QString& oldPath, const QString& newPath);

// True16 when the directory lookup of `path` finds a file, else False16.
Bool16 ZBLFileExists(const QString& path);

// A resistance cell as it goes into the file: its number part, up to the first
// blank, in the shortest form with a zero ahead of the point, and the rest
// behind one blank ("1.50 mOhm" gives "1.5 mOhm", ".5 mOhm" gives
// "0.5 mOhm"). A number part that is no number ("OFF", "---") raises Type
// mismatch; an empty cell raises Subscript out of range.
QString NormalizeResistanceText(const QString& text);

// mnuSave of frmZBLBasicReport. The window mirrors the report afterwards: the
// file name in the head is the saved file's.
void ZblReport_mnuSave_Click();

} // namespace quenby

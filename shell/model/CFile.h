// Line file access for the test file makers of the upload.
//
// A CFile holds one numbered file of the sequential file service at a time,
// opened either for reading items or for writing lines. Its operations never
// let a run-time failure out: each one catches it and hands back the error
// number, 0 meaning success, so that the makers can test one number and carry
// on or stop. MakeDirectory is the one exception: a folder that cannot be made
// reaches the caller as a RuntimeError, because nothing can be written below it.
//
// Reads take one comma-delimited item, not a whole line (leading blanks
// skipped, an item in double quotes loses its quotes). The callers write and
// read lines without commas or quotes, for which an item is the whole line.
//
// Text arguments are references on purpose: PrintLineToFileZBL changes some of
// its caller's texts and the callers rely on seeing that.
#pragma once

#include "shell/model/Checked.h"
#include "shell/model/Dynamic.h"

#include <QString>

namespace quenby {

class CFile
{
public:
    // Makes every missing folder of `path`. Only the parts followed by a
    // separator are folders: "/x/y/" makes y, "/x/y/name.txt" makes no
    // name.txt. Raises RuntimeError when a folder cannot be made.
    void MakeDirectory(QString& path);

    // True16 if `path` can be made the current folder of the process. The
    // current folder stays changed afterwards.
    Bool16 FolderExists(QString& path);

    // Opens for item input (writeMode false) or for output, truncating an
    // existing file. Returns the error number; on failure the number is closed.
    Int16 OpenFile(QString& fileName, Bool16 writeMode);

    // Closes the file; closing a file that is not open does nothing.
    void CloseFile();

    // Counts the items of the whole file, without moving the read position.
    // The count is given back both in `count` and as the result; it stops at
    // 32767 and failures are swallowed.
    Int16 GetLineQtyFromFile(Int16& count);

    // Reads the next item into `line`. At the end of the file `line` keeps
    // its text and the result is 0.
    Int16 GetNextLine(QString& line);

    // Reads item `lineNo` (from 1) from the start of the file into `line`.
    // Beyond the end, `line` holds the last item of the file and the result is 0.
    Int16 GetLineNo(Int16 lineNo, QString& line);

    // Writes `line` and a line end. Returns 1 without writing when the file
    // was opened for input.
    Int16 PrintLineToFile(QString& line);

    // Writes one table row of a ZBL test file: "-" and the nine fields, each
    // item in the next print zone of 14 columns. An empty field becomes "---"
    // and a current of exactly 10000, 1000, 100 or 10 becomes its range label,
    // both in the caller's texts; blanks of the tap and winding fields become
    // "_" in the written row only. Returns 1 when the file was opened for input.
    Int16 PrintLineToFileZBL(QString& tapA, QString& windingA, QString& resistanceA, QString& tapB,
                             QString& windingB, QString& resistanceB, QString& current,
                             Dynamic& interval, QString& total);

    // The file number in use, 0 before the first OpenFile.
    Int16 fileNo() const { return m_fileNo; }

private:
    Int16 m_fileNo = 0;
    Bool16 m_writeMode = False16; // True16: opened for output
};

} // namespace quenby

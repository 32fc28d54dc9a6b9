// The ZBL report as a CSV file, for the batch converter: one file per test,
// the head of the report and then its table, cell by cell as the report shows
// it.
//
// The format is chosen so that spreadsheet programs open it as columns
// whatever the desktop's language:
//  - UTF-8 with a byte order mark, so that accented names read right;
//  - ";" between fields: no cell of the report holds it, it is the list
//    separator of desktops that write a decimal comma (so the file opens as
//    columns there with a double click), and import dialogs find it
//    elsewhere; "," would split texts such as "Harlow, Sub 2";
//  - cells are texts as the report shows them ("436.49 mOhm", "00:00:00"),
//    with "." as their decimal point; the only plain number, the interval in
//    seconds, is written with "." as well and no thousands separator;
//  - every line, the last one included, ends in CR LF, and a field that
//    holds ";", a double quote, CR or LF is quoted as RFC 4180 says: between
//    double quotes, each double quote inside doubled.
//
// The names of the head fields and of the columns are fixed English words,
// whatever the language of the report, so that a script can rely on them.
#pragma once

#include "zbl/model/ZblBasicReportModel.h"
#include "zbl/model/ZblTestRecord.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace quenby {

inline constexpr char ZblCsvSeparator = ';';

// One field as it stands in the file: quoted when it must be.
QString zblCsvField(const QString& text);

// One line of fields, joined by the separator and ended by CR LF.
QString zblCsvLine(const QStringList& fields);

// The names of the head fields, in the order of the head lines.
const QStringList& zblCsvHeadNames();
// The names of the table's columns: the nine cells of the report, then the
// current and the interval of the record, in the order of the file.
const QStringList& zblCsvColumnNames();

// The whole file for `rows` table rows (0 to 122) of `report`, with the
// current and interval of those rows from `record`: the byte order mark, a
// line "name;value" for each head field, an empty line, the line of column
// names, then one line per row.
QByteArray zblReportCsv(const ZblBasicReportModel& report, const ZblTestRecord& record, int rows);

// The rows the report shows of the open test, as its print-out counts them:
// the table's line count less the closing line, at least 0.
int zblReportTableRows();

// The main window's road of a ZBL test without its dialogs and windows:
// `path` opened under a free file number, read, and the report's cells filled
// as the open command fills them, compensation from the file included. A file
// that the reader rejects raises RuntimeError; the file is closed either way.
void OpenZblTestForExport(const QString& path);

// The CSV of the open test, as zblReportCsv writes it.
QByteArray ExportZblReportCsv();

// Opens `testFile` for export and writes its CSV into `csvFile`. A file that
// the reader rejects, or a CSV that cannot be written, raises RuntimeError.
void WriteZblReportCsv(const QString& testFile, const QString& csvFile);

} // namespace quenby

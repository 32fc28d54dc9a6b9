// A plain-text dump of the ZBL test record and of what the reader put on the
// report, for support staff and for golden-file tests.
//
// Texts are shown in double quotes, so trailing blanks stay visible; a
// backslash, a double quote and any control character are escaped (\\, \",
// \r, \n, \t, \xNN). Numbers use the system's number text. All 122 rows are
// shown, one line each; element 122 of the arrays, which nothing writes, is
// left out. The dump is UTF-8 once encoded; file text was decoded from the
// file's code page on the way in.
#pragma once

#include "zbl/model/ZblTestFileReader.h"
#include "zbl/model/ZblTestRecord.h"

#include <QString>

namespace quenby {

QString dumpZblTestRecord(const ZblTestRecord& record);
QString dumpZblReportFill(const ZblReportFill& report);

} // namespace quenby

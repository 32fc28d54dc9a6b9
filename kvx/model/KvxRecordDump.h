// A plain-text dump of the KVX test record and of the report cells the reader
// writes, one value a line, for support staff and for golden-file tests.
//
// Texts are shown in double quotes, so trailing blanks stay visible; a
// backslash, a double quote and any control character are escaped (\\, \",
// \r, \n, \t, \xNN). Numbers use the system's number text. Every curve shows
// all of its 120 points. The dump is UTF-8 once encoded; file text was decoded
// from the file's code page on the way in.
#pragma once

#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxTestRecord.h"

#include <QString>

namespace quenby {

QString dumpKvxTestRecord(const KvxTestRecord& record, const KvxCondensedReportModel& report);

} // namespace quenby

// Turns an uploaded ZBL file (header record and data frame) into a ZBL test
// file in <root>/ZBL/Files/<stamp>/.
#pragma once

#include "upload/model/DeviceRecords.h"

#include <QString>

namespace quenby {

void WriteZblTestFile(const ZblHeaderRecord& header);

// "Jan." .. "Dec.", May without a point; "" for other values.
QString ZblMonthName(int month);
// The file maker's own copy of the name filter, the same set of characters.
QString ZblCleanFileName(const QString& text);

// The folder an upload's ZBL test files go to: the "ZBL" data root of the
// settings store, then ZBL, Files and the upload's stamp, with a separator at
// the end.
QString ZblUploadFolder();
// The second filter over a whole file name: each of * / \ < > : ? " | becomes
// a blank.
QString ZblBlankFileNameCharacters(const QString& name);

} // namespace quenby

// Turns an uploaded ZBL file (its header record and the readings decoded from
// its data frame) into a ZBL test file in <root>/ZBL/Files/<stamp>/.
#pragma once

#include "upload/model/DeviceRecords.h"

#include <QString>

#include <vector>

namespace quenby {

// `readings` are the header's readings in order (ParseZblRecords), one row
// each. The file is named after CurrentFile and goes to this upload's folder.
void WriteZblTestFile(const ZblHeaderRecord& header, const std::vector<ZblDeviceRecord>& readings);

// "Jan." .. "Dec.", May without a point; "" for other values.
QString ZblMonthName(int month);
// The file maker's own copy of the name filter, the same set of characters.
QString ZblCleanFileName(const QString& text);

// The second filter over a whole file name: each of * / \ < > : ? " | becomes
// a blank.
QString ZblBlankFileNameCharacters(const QString& name);

} // namespace quenby

// Turns an uploaded KVX file (header record and data frame) into a KVX test
// file in <root>/KVX/Files/<stamp>/, laid out like the instrument's own files.
#pragma once

#include "upload/model/DeviceRecords.h"

#include <QString>

namespace quenby {

void WriteKvxTestFile(const KvxHeaderRecord& header);

// Every character of "<>*?|/\:$&%" becomes "_".
QString CleanFileName(const QString& text);
// A current in milliamperes as the excitation table shows it, centred in width.
QString KvxCurrentText(double milliamperes, int width);
// "Jan. " .. "Jun. ", "Jul." .. "Dec."; "" for other values.
QString KvxMonthName(int month);

} // namespace quenby

// Turns an uploaded KVX file (its header record and the tests decoded from its
// data frame) into a KVX test file in <root>/KVX/Files/<stamp>/, laid out like
// the instrument's own files.
#pragma once

#include "upload/model/DeviceRecords.h"

#include <QString>

#include <vector>

namespace quenby {

// `tests` are the header's tests in order (ParseKvxRecords), one table row
// each. The file is named after CurrentFile and goes to this upload's folder;
// the instrument's serial is DeviceSerial.
void WriteKvxTestFile(const KvxHeaderRecord& header, const std::vector<KvxDeviceRecord>& tests);

// Every character of "<>*?|/\:$&%" becomes "_".
QString CleanFileName(const QString& text);
// A current in milliamperes as the excitation table shows it: appended to the
// line under construction through TextLineCentered(text, width), and given
// back as the piece appended.
QString KvxCurrentText(double milliamperes, int width);
// "Jan. " .. "Jun. ", "Jul." .. "Dec."; "" for other values.
QString KvxMonthName(int month);

} // namespace quenby

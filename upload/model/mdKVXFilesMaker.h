// Turns an uploaded KVX file (header record and data frame) into a KVX test
// file in <root>/KVX/Files/<stamp>/, laid out like the instrument's own files.
#pragma once

#include "upload/model/DeviceRecords.h"

#include <QString>

namespace quenby {

void WriteKvxTestFile(const KvxHeaderRecord& header);

// Every character of "<>*?|/\:$&%" becomes "_".
QString CleanFileName(const QString& text);
// A current in milliamperes as the excitation table shows it: appended to the
// line under construction through TextLineCentered(text, width), and given
// back as the piece appended.
QString KvxCurrentText(double milliamperes, int width);
// "Jan. " .. "Jun. ", "Jul." .. "Dec."; "" for other values.
QString KvxMonthName(int month);

// The folder an upload's KVX test files go to: the "KVX" data root of the
// settings store, then KVX, Files and the upload's stamp, with a separator at
// the end. An absent key leaves the path starting at the separator.
QString KvxUploadFolder();

} // namespace quenby

// The conversion of one test file that needs no screen: a ZBL test into the
// CSV of its basic report.
#pragma once

#include <QString>

namespace quenby::converters {

// The report's load, once before the first conversion: the compensation
// list in the language in force, as the window's load leaves it.
void loadZblReportForExport();

// Reads `testFile` and writes its CSV into `csvFile`. The open road clears
// and refills every cell, head field and compensation text, so that no value
// of an earlier test of the batch reaches the next one. Raises
// quenby::RuntimeError when the test cannot be read or the CSV cannot be
// written.
void convertZblTestToCsv(const QString& testFile, const QString& csvFile);

} // namespace quenby::converters

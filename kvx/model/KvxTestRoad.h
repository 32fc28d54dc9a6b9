// The main window's road of a KVX test, from the menu command to the report:
// the file is chosen and read, the operator picks the knee standard in one of
// the three boxes, and the report is filled and brought up. The windows take
// part through hooks, so the whole road runs in tests without a screen.
#pragma once

#include <QString>

namespace quenby {

// The knee standard of box `index`: 0 "IEEE 30", 1 "IEEE 45", else "AINSI/IEC10/50".
QString kneeStandardOfBox(int index);

// The click on knee box `index`.
void chkKneeType_Click(int index);

// The road of a KVX test.
void mnKVXFiles_Click();

// The road's steps around the operator: the test emptied before a file is
// read, and the report filled once the knee standard is chosen.
void EmptyKvxTest();
void FillKvxReportForStandard(const QString& standard);

// The road without its dialogs, for the tools and the tests that look at a
// report: `path` opened as the chooser opens it, read, and the report filled
// for `standard`. The report window is neither mirrored nor brought up.
void OpenKvxTestForReport(const QString& path, const QString& standard);

// The main window's report commands for a standard; out of reach in this
// version (their menu is hidden) but kept.
void mnKVXCRIEEE30_Click();
void mnKVXIEEE45_Click();
void mnKVXANSIIEC1050_Click();

} // namespace quenby

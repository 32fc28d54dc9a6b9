// The conversion of one KVX test into a PDF of its condensed report: the
// test read and the report filled as the open command fills them under the
// knee standard given, then the report window's own print form, logo
// included, printed as one page into the PDF.
#pragma once

#include <QString>

namespace quenby {
class frmKVXCondensedReport;
}

namespace quenby::converters {

// `report` must be the report window in force (kvxReportWindow()) with its
// texts filled. Each test starts from an empty record, so that no knee
// current of an earlier test in the batch reaches the next one. Raises
// quenby::RuntimeError when the test cannot be read or the PDF cannot be
// written.
void convertKvxTestToPdf(frmKVXCondensedReport& report, const QString& testFile,
                         const QString& standard, const QString& pdfFile);

} // namespace quenby::converters

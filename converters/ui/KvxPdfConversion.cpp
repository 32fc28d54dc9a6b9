#include "converters/ui/KvxPdfConversion.h"

#include "kvx/model/KvxSession.h"
#include "kvx/model/KvxTestRoad.h"
#include "kvx/ui/frmKVXCondensedReport.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/SequentialFiles.h"
#include "shell/ui/PrintPages.h"

#include <QCoreApplication>
#include <QPrinter>

namespace quenby::converters {

namespace {

// The program keeps its one test file open; a batch opens hundreds.
struct ClosesTestFiles
{
    ~ClosesTestFiles() { SequentialFiles::instance().closeAll(); }
};

} // namespace

void convertKvxTestToPdf(frmKVXCondensedReport& report, const QString& testFile,
                         const QString& standard, const QString& pdfFile)
{
    const ClosesTestFiles closes;
    kvxSession().record = KvxTestRecord{};
    OpenKvxTestForReport(testFile, standard);
    report.mirrorModel();
    // The chart lays its axes out once the posted events have run.
    QCoreApplication::sendPostedEvents();

    PrinterPages pages(makePdfPrinter(pdfFile));
    if (!pages.begin())
        raiseRuntimeError(err::PathFileAccessError, pdfFile);
    report.printReportPages(pages, 1);
    pages.end();
}

} // namespace quenby::converters

#include "converters/model/TestConversions.h"

#include "zbl/model/ZblBasicReportView.h"
#include "zbl/model/ZblCsvExport.h"

namespace quenby::converters {

void loadZblReportForExport()
{
    ZblReport_Form_Load();
}

void convertZblTestToCsv(const QString& testFile, const QString& csvFile)
{
    WriteZblReportCsv(testFile, csvFile);
}

} // namespace quenby::converters

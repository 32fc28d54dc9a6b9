// zbl_report_converter: ZBL test files into CSV files, one for each test,
// with the head and the cells of the basic report (zbl/model/ZblCsvExport.h
// tells the format). Without arguments it shows its window; `--help` tells
// the command line.
#include "converters/model/TestConversions.h"
#include "converters/ui/ConverterProgram.h"
#include "tools/ToolSessions.h"

#include <QApplication>

using namespace quenby;

int main(int argc, char** argv)
{
    converters::drawOffscreenWithoutDisplay(argc);
    QApplication app(argc, argv);
    tools::ToolSessions sessions;

    return converters::runConverter(
        converters::zblConverterKind(), &converters::loadZblReportForExport,
        [](const QString&) -> converters::ConvertOne { return &converters::convertZblTestToCsv; });
}

// kvx_report_converter: KVX test files into PDF reports, one PDF for each
// test, each the print form of the condensed report under the knee standard
// chosen. Without arguments it shows its window; `--help` tells the command
// line.
#include "converters/ui/ConverterProgram.h"
#include "converters/ui/KvxPdfConversion.h"
#include "kvx/model/KvxReportWindow.h"
#include "kvx/ui/frmKVXCondensedReport.h"
#include "logo/model/LogoSession.h"
#include "logo/ui/frmProcessLogo.h"
#include "report/ui/ReportLogo.h"
#include "shell/model/Session.h"
#include "tools/ToolSessions.h"

#include <QApplication>

#include <vector>

using namespace quenby;

int main(int argc, char** argv)
{
    converters::drawOffscreenWithoutDisplay(argc);
    QApplication app(argc, argv);
    tools::ToolSessions sessions;
    // The real report window, not the tool's stand-in: its page is printed.
    frmKVXCondensedReport& report = frmKVXCondensedReport::instance();
    const Installed<KvxReportWindow> window(report);
    // The logo's processing puts the logo bitmap, if there is one, on the
    // report's page at the window's load.
    OwnedSession<LogoSession> logoSession;
    frmProcessLogo& logo = frmProcessLogo::instance();
    logo.setTargets([&report] { return std::vector<LogoTarget*>{&report.logoTarget()}; });
    const Installed<LogoProcessing> logoProcessing(logo);

    return converters::runConverter(
        converters::kvxConverterKind(), [&report] { report.FillTextsKvxCondensedReport(); },
        [&report](const QString& standard) -> converters::ConvertOne {
            return [&report, standard](const QString& testFile, const QString& pdfFile) {
                converters::convertKvxTestToPdf(report, testFile, standard, pdfFile);
            };
        });
}

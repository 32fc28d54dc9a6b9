// quenby-render-zbl-report [--lang <language file>] <ZBL test file> <report.png> <vgraph.png>
//
// Opens a ZBL test file through the program's own open command, with the file
// dialog answered by the name given, fills the basic report and the V graph of
// channel A, and saves a picture of each window. Used to look at the ZBL
// report without a screen: run it with QT_QPA_PLATFORM=offscreen.
//
// Texts come from the language file given, else from en.lng beside this
// program. A read that fails prints the failure and ends with status 1; bad
// arguments end with status 2.
#include "shell/model/AppState.h"
#include "shell/model/Platform.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/Services.h"
#include "tools/ToolSessions.h"
#include "zbl/model/VGraph.h"
#include "zbl/model/ZblBasicReportView.h"
#include "zbl/ui/frmZBLBasicReport.h"
#include "zbl/ui/frmZBLVGraph.h"

#include <QApplication>
#include <QLineEdit>
#include <QPixmap>
#include <QStringList>

#include <cstdio>

using namespace quenby;

namespace {

// The open dialog of this tool answers with the file named on the command line.
class NamedFile final : public FileDialogService
{
public:
    explicit NamedFile(QString path) : m_path(std::move(path)) {}
    QString getOpenFileName(const OpenFileRequest&) override { return m_path; }

private:
    QString m_path;
};

int usage()
{
    std::fprintf(stderr, "usage: quenby-render-zbl-report [--lang <language file>] "
                         "<ZBL test file> <report.png> <vgraph.png>\n");
    return 2;
}

bool save(QWidget& window, const QString& path)
{
    window.resize(window.sizeHint().expandedTo(QSize(900, 1100)));
    QCoreApplication::processEvents();
    return window.grab().save(path);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    tools::ToolSessions sessions;
    QStringList args = QCoreApplication::arguments();
    args.removeFirst();
    QString langFile = AppPath() + pathSep() + QStringLiteral("en.lng");
    if (args.size() == 5 && args[0] == QLatin1String("--lang")) {
        langFile = args[1];
        args.remove(0, 2);
    }
    if (args.size() != 3)
        return usage();
    appState().LangFilePath = langFile;

    NamedFile dialog(args[0]);
    services().files = &dialog;
    // The report is grabbed, not shown: nothing waits for the operator.
    frmZBLBasicReport& report = frmZBLBasicReport::instance();
    try {
        report.FillTextsZblBasicReport();
        mnZBLFiles_Click();
        report.mirrorModel();
        if (!save(report, args[1]))
            return 1;
        frmZBLVGraph& graph = frmZBLVGraph::instance();
        graph.FillTextsZblVGraph();
        // The channel's head as the report shows it.
        const auto* head = report.findChild<QLineEdit*>(QStringLiteral("lbTexteCHANA"));
        zblVGraph().openChannelFromReport(QStringLiteral("A"), head ? head->text() : QString());
        graph.mirror(zblVGraph().window);
        if (!save(graph, args[2]))
            return 1;
    } catch (const RuntimeError& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
    return 0;
}

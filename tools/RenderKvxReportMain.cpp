// quenby-render-kvx-report [--standard <knee standard>] [--lang <language file>]
//                          <KVX test file> <picture.png>
//
// Reads a KVX test file through the program's own reader, fills the condensed
// report the way the open command does once the knee standard is chosen
// ("IEEE 30" unless told otherwise), and saves a picture of the whole report
// page. Used to look at the report without a screen: run it with
// QT_QPA_PLATFORM=offscreen.
//
// Texts come from the language file given, else from en.lng beside this
// program. A read that fails prints the failure and ends with status 1; bad
// arguments end with status 2.
#include "kvx/model/KneeGraph.h"
#include "kvx/model/KvxReportView.h"
#include "kvx/model/KvxTestRecord.h"
#include "kvx/model/KvxTestRoad.h"
#include "kvx/ui/frmKVXCondensedReport.h"
#include "shell/model/AppState.h"
#include "shell/model/Platform.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/SequentialFiles.h"
#include "tools/ToolSessions.h"

#include <QApplication>
#include <QFileInfo>
#include <QFrame>
#include <QImage>
#include <QStringList>

#include <cstdio>

using namespace quenby;

namespace {

int usage()
{
    std::fprintf(stderr, "usage: quenby-render-kvx-report [--standard \"IEEE 30\"|\"IEEE 45\"|"
                         "\"AINSI/IEC10/50\"] [--lang <language file>] <KVX test file> "
                         "<picture.png>\n");
    return 2;
}

void printUtf8(std::FILE* stream, const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    tools::ToolSessions sessions;
    QStringList args = QCoreApplication::arguments();
    args.removeFirst();

    QString standard = QString::fromLatin1(KneeStandardIeee30);
    QString langFile = AppPath() + pathSep() + QStringLiteral("en.lng");
    while (args.size() > 2 && args[0].startsWith(QLatin1String("--"))) {
        if (args[0] == QLatin1String("--standard"))
            standard = args[1];
        else if (args[0] == QLatin1String("--lang"))
            langFile = args[1];
        else
            return usage();
        args.remove(0, 2);
    }
    if (args.size() != 2 || args[0].startsWith(QLatin1String("--")))
        return usage();
    if (standard != QLatin1String(KneeStandardIeee30) &&
        standard != QLatin1String(KneeStandardIeee45) &&
        standard != QLatin1String(KneeStandardIec1050))
        return usage();
    if (!QFileInfo::exists(langFile)) {
        printUtf8(stderr,
                  QStringLiteral("quenby-render-kvx-report: no language file %1\n").arg(langFile));
        return 2;
    }
    appState().LangFilePath = QFileInfo(langFile).absoluteFilePath();

    frmKVXCondensedReport& report = frmKVXCondensedReport::instance();
    try {
        report.FillTextsKvxCondensedReport();
        OpenKvxTestForReport(args[0], standard);
    } catch (const RuntimeError& e) {
        printUtf8(stderr, QStringLiteral("Run-time error '%1': %2 (%3)\n")
                              .arg(e.number())
                              .arg(e.text(), e.where()));
        return 1;
    }
    report.mirrorModel();

    // A grab lays the page out; chart axes follow only once events have run.
    (void)report.grab();
    QCoreApplication::processEvents();
    const QImage page = report.frKVXReport()->grab().toImage();
    if (page.isNull() || !page.save(args[1])) {
        printUtf8(stderr,
                  QStringLiteral("quenby-render-kvx-report: cannot write %1\n").arg(args[1]));
        return 2;
    }
    printUtf8(
        stdout,
        QStringLiteral("%1: %2 x %3 pixels\n").arg(args[1]).arg(page.width()).arg(page.height()));
    return 0;
}

// quenby-zbl-dump <file>: reads a ZBL test file through the program's own
// reader, in the order the open command uses, and prints the record and what
// went onto the report, so that support staff can see what the program makes
// of a customer's file.
//
// The path is shown as given. A read that fails prints the failure on stderr,
// then the record as far as it was filled, and ends with status 1.
#include "shell/model/AppState.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/SequentialFiles.h"
#include "tools/ToolSessions.h"
#include "zbl/model/ZblRecordDump.h"
#include "zbl/model/ZblTestFileReader.h"

#include <QCoreApplication>
#include <QStringList>

#include <cstdio>
#include <memory>

using namespace quenby;

namespace {

void printUtf8(std::FILE* stream, const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    tools::ToolSessions sessions;
    QStringList args = QCoreApplication::arguments();
    args.removeFirst();
    if (args.size() != 1 || args[0].startsWith(QLatin1String("--"))) {
        std::fprintf(stderr, "usage: quenby-zbl-dump <ZBL test file>\n");
        return 2;
    }
    const QString path = args[0];

    // The report is large; keep it off the stack.
    auto report = std::make_unique<ZblReportFill>();
    int status = 0;
    try {
        SequentialFiles& files = SequentialFiles::instance();
        const Int16 fileNo = files.freeFile();
        files.open(fileNo, path, SequentialFiles::Mode::Input);
        appState().ZblTestFilePath = Dynamic(path);
        appState().ZblTestFileNo = Dynamic(static_cast<double>(fileNo));

        ClearZBLChannelTables();
        ClearZBLCompensedColumns(*report);
        ClearZBLRowLines();
        ClearZBLCompensedColumns(*report);
        ReadZBLFile();
        FillZBLHeaderControls(*report);
        ParseZBLTableLines();
        FillZBLTapControls(*report);
        SetZBLCompensationFromFile(QStringLiteral("ZBL"), *report);
    } catch (const RuntimeError& e) {
        std::fprintf(stderr, "quenby-zbl-dump: %s\n", e.what());
        status = 1;
    }
    printUtf8(stdout, dumpZblTestRecord(zblTestRecord()));
    printUtf8(stdout, dumpZblReportFill(*report));
    return status;
}

// quenby-kvx-dump [--lang <language file>] <file>: reads a KVX test file
// through the program's own reader and prints the record, so that support
// staff can see what the program makes of a customer's file.
//
// The insulation column head is looked up in a language file: the one given,
// else en.lng beside this program, else none (the key itself is shown). A read
// that fails prints the failure on stderr, then the record as far as it was
// filled, and ends with status 1.
#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxRecordDump.h"
#include "kvx/model/KvxTestFileReader.h"
#include "kvx/model/KvxTestRecord.h"
#include "shell/model/AppState.h"
#include "shell/model/Platform.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/SequentialFiles.h"
#include "tools/ToolSessions.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStringList>
#include <QTemporaryDir>

#include <cstdio>

using namespace quenby;

namespace {

void printUtf8(std::FILE* stream, const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
}

int usage()
{
    std::fprintf(stderr, "usage: quenby-kvx-dump [--lang <language file>] <KVX test file>\n");
    return 2;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    tools::ToolSessions sessions;
    QStringList args = QCoreApplication::arguments();
    args.removeFirst();

    QString langFile;
    if (args.size() == 3 && args[0] == QLatin1String("--lang")) {
        langFile = args[1];
        args.remove(0, 2);
    }
    if (args.size() != 1 || args[0].startsWith(QLatin1String("--")))
        return usage();
    const QString path = args[0];

    // Without any language file, an empty one makes every lookup show its key.
    QTemporaryDir scratch;
    if (langFile.isEmpty()) {
        const QString beside = AppPath() + pathSep() + QStringLiteral("en.lng");
        if (QFileInfo::exists(beside)) {
            langFile = beside;
        } else {
            langFile = scratch.filePath(QStringLiteral("none.lng"));
            QFile empty(langFile);
            if (!empty.open(QIODevice::WriteOnly)) {
                std::fprintf(stderr, "quenby-kvx-dump: cannot make a scratch language file\n");
                return 2;
            }
        }
    }
    appState().LangFilePath = QFileInfo(langFile).absoluteFilePath();

    int status = 0;
    try {
        SequentialFiles& files = SequentialFiles::instance();
        const Int16 fileNo = files.freeFile();
        files.open(fileNo, path, SequentialFiles::Mode::Input);
        appState().KvxTestFilePath = Dynamic(path);
        appState().KvxTestFileNo = Dynamic(static_cast<double>(fileNo));
        // The order of the program's own open command.
        FlushKvxCurves();
        ClearKvxRecord();
        ReadKvxTestFile();
    } catch (const RuntimeError& e) {
        printUtf8(stderr, QStringLiteral("Run-time error '%1': %2 (%3)\n")
                              .arg(e.number())
                              .arg(e.text(), e.where()));
        status = 1;
    }
    printUtf8(stdout, dumpKvxTestRecord(kvxTestRecord(), kvxCondensedReport()));
    return status;
}

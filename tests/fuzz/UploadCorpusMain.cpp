// fuzz_upload_corpus <folder> <scenario.sim>...: writes the starting inputs of
// fuzz_upload into <folder>, one for each stored file of each instrument
// scenario: the instrument's byte, then the header frame and the data frame
// the instrument sends for that file.
#include "tools/instrument-sim/InstrumentFrames.h"
#include "tools/instrument-sim/ScenarioReader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

using namespace quenby::sim;

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::fprintf(stderr, "usage: fuzz_upload_corpus <folder> <scenario.sim>...\n");
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    if (!QDir().mkpath(folder)) {
        std::fprintf(stderr, "fuzz_upload_corpus: cannot make %s\n", argv[1]);
        return 1;
    }
    int written = 0;
    for (int a = 2; a < argc; ++a) {
        const QString path = QString::fromLocal8Bit(argv[a]);
        Instrument instrument;
        try {
            instrument = readScenarioFile(path);
        } catch (const ScenarioError& e) {
            std::fprintf(stderr, "fuzz_upload_corpus: %s\n", e.what());
            return 1;
        }
        for (int i = 0; i < instrument.fileCount(); ++i) {
            const auto n = static_cast<std::size_t>(i);
            const bool zbl = instrument.kind == DeviceKind::Zbl;
            QByteArray input(1, zbl ? 1 : 0);
            input += zbl ? zblHeaderFrame(instrument.zblFiles[n])
                         : kvxHeaderFrame(instrument.kvxFiles[n]);
            input +=
                zbl ? zblDataFrame(instrument.zblFiles[n]) : kvxDataFrame(instrument.kvxFiles[n]);
            QFile out(QDir(folder).filePath(
                QStringLiteral("%1-%2").arg(QFileInfo(path).completeBaseName()).arg(i + 1)));
            if (!out.open(QIODevice::WriteOnly) || out.write(input) != input.size()) {
                std::fprintf(stderr, "fuzz_upload_corpus: cannot write into %s\n", argv[1]);
                return 1;
            }
            ++written;
        }
    }
    std::printf("%d starting inputs\n", written);
    return written > 0 ? 0 : 1;
}

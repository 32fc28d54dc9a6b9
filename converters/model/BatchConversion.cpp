#include "converters/model/BatchConversion.h"

#include "kvx/model/KneeGraph.h"
#include "localisation/model/LanguageLookup.h"
#include "shell/model/DataFolders.h"
#include "shell/model/FileSystem.h"
#include "shell/model/Platform.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/SettingsStore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <exception>

namespace quenby::converters {

const ConverterKind& kvxConverterKind()
{
    static const ConverterKind kind{QStringLiteral("kvx_report_converter"), QStringLiteral("KVX"),
                                    QStringLiteral("txt"), QStringLiteral("pdf"), true};
    return kind;
}

const ConverterKind& zblConverterKind()
{
    static const ConverterKind kind{QStringLiteral("zbl_report_converter"), QStringLiteral("ZBL"),
                                    QStringLiteral("zbl"), QStringLiteral("csv"), false};
    return kind;
}

TestFileList collectTestFiles(const QStringList& inputs, const QString& suffix)
{
    TestFileList list;
    for (const QString& input : inputs) {
        const QFileInfo info(input);
        if (info.isDir()) {
            const QDir folder(input);
            const QStringList names = folder.entryList({QStringLiteral("*.") + suffix},
                                                       QDir::Files | QDir::Readable | QDir::Hidden,
                                                       QDir::Name | QDir::IgnoreCase);
            for (const QString& name : names)
                list.files.append(folder.filePath(name));
        } else if (info.isFile()) {
            list.files.append(input);
        } else {
            list.missing.append({input, runtimeErrorText(err::FileNotFound)});
        }
    }
    return list;
}

QString outputPathFor(const QString& testFile, const QString& outputFolder, const QString& suffix)
{
    const QFileInfo info(testFile);
    const QString name = info.completeBaseName() + u'.' + suffix;
    const QDir folder(outputFolder.isEmpty() ? info.absolutePath() : outputFolder);
    return folder.filePath(name);
}

QString partialPathFor(const QString& outputPath)
{
    return outputPath + QStringLiteral(".part");
}

QString converterText(const char* key, const QString& fallback)
{
    const QString name = QString::fromLatin1(key);
    const QString text = GetLanguageText(name);
    return text == name ? fallback : text;
}

QString BatchSummary::text() const
{
    QString t =
        converterText("frmConverter.Summary", QStringLiteral("Converted %1 of %2 test files."))
            .arg(converted.size())
            .arg(total) +
        u'\n';
    for (const ConversionFailure& failure : failures)
        t += failure.file + QStringLiteral(": ") + failure.text + u'\n';
    return t;
}

namespace {

// Runs one conversion; the failure text, or "" when it went well.
QString convertInto(const QString& testFile, const QString& output, const ConvertOne& convert)
{
    const QString partial = partialPathFor(output);
    QFile::remove(partial);
    QString failure;
    try {
        convert(testFile, partial);
        if (!QFileInfo(partial).isFile())
            failure =
                runtimeErrorText(err::PathFileAccessError) + QStringLiteral(" (") + partial + u')';
    } catch (const RuntimeError& e) {
        failure = QString::fromUtf8(e.what());
    } catch (const std::exception& e) {
        // Any other fault of one file must not end the batch either.
        failure = QString::fromUtf8(e.what());
    }
    if (failure.isEmpty()) {
        // The old output goes only once the new one is whole.
        if (QFileInfo::exists(output) && !QFile::remove(output))
            failure =
                runtimeErrorText(err::PermissionDenied) + QStringLiteral(" (") + output + u')';
        else if (!QFile::rename(partial, output))
            failure =
                runtimeErrorText(err::PathFileAccessError) + QStringLiteral(" (") + output + u')';
    }
    if (!failure.isEmpty())
        QFile::remove(partial);
    return failure;
}

} // namespace

BatchSummary runBatch(const TestFileList& list, const QString& outputFolder,
                      const ConverterKind& kind, const ConvertOne& convert,
                      const BatchProgress& progress)
{
    BatchSummary summary;
    summary.total = static_cast<int>(list.files.size() + list.missing.size());
    summary.failures = list.missing;
    if (!outputFolder.isEmpty() && !QDir().mkpath(outputFolder)) {
        for (const QString& file : list.files)
            summary.failures.append({file, runtimeErrorText(err::PathNotFound) +
                                               QStringLiteral(" (") + outputFolder + u')'});
        return summary;
    }
    // Two tests of one name from different folders would write one output:
    // the later ones get a number behind their name.
    QSet<QString> taken;
    int number = 0;
    for (const QString& file : list.files) {
        ++number;
        if (progress)
            progress(number, static_cast<int>(list.files.size()), file);
        QString output = outputPathFor(file, outputFolder, kind.outputSuffix);
        for (int n = 2; taken.contains(output); ++n) {
            const QFileInfo info(outputPathFor(file, outputFolder, kind.outputSuffix));
            output = info.dir().filePath(info.completeBaseName() + u'-' + QString::number(n) +
                                         u'.' + kind.outputSuffix);
        }
        taken.insert(output);
        const QString failure = convertInto(file, output, convert);
        if (failure.isEmpty())
            summary.converted.append(output);
        else
            summary.failures.append({file, failure});
    }
    return summary;
}

QString defaultTestFolder(const ConverterKind& kind)
{
    SettingsStore& store = settingsStore();
    const QString app = QString::fromLatin1(SettingsAppData);
    const QString root =
        store.GetSetting(app, QString::fromLatin1(SectionUserFileTransfert), kind.instrument);
    if (!root.isEmpty())
        return dataFilesFolder(root, kind.instrument);
    // The folder of the last opened file, which is a files folder already.
    return store.GetSetting(app, QString::fromLatin1(SectionFileTransfert), kind.instrument);
}

QString converterLanguageFile(const QString& given)
{
    if (!given.isEmpty())
        return QFileInfo(given).absoluteFilePath();
    const QString word =
        settingsStore().GetSetting(QString::fromLatin1(SettingsAppLanguage),
                                   QStringLiteral("Language"), QStringLiteral("Language"));
    const QString chosen = languageFilePath(word);
    if (!chosen.isEmpty() && QFileInfo::exists(chosen))
        return chosen;
    return AppPath() + pathSep() + QStringLiteral("en.lng");
}

namespace {

bool isStandard(const QString& text)
{
    return text == QLatin1String(KneeStandardIeee30) || text == QLatin1String(KneeStandardIeee45) ||
           text == QLatin1String(KneeStandardIec1050);
}

} // namespace

CommandLine parseCommandLine(const QStringList& arguments, const ConverterKind& kind)
{
    CommandLine line;
    line.standard = QString::fromLatin1(KneeStandardIeee30);
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& a = arguments[i];
        const bool valued =
            a == QLatin1String("-o") || a == QLatin1String("--output") ||
            a == QLatin1String("--lang") ||
            (kind.hasStandard && (a == QLatin1String("-s") || a == QLatin1String("--standard")));
        if (a == QLatin1String("-h") || a == QLatin1String("--help")) {
            line.help = true;
        } else if (valued) {
            if (i + 1 >= arguments.size()) {
                line.error = a + QStringLiteral(" needs a value");
                return line;
            }
            const QString& value = arguments[++i];
            if (a == QLatin1String("--lang"))
                line.languageFile = value;
            else if (a == QLatin1String("-o") || a == QLatin1String("--output"))
                line.outputFolder = value;
            else
                line.standard = value;
        } else if (a.startsWith(u'-') && a.size() > 1) {
            line.error = QStringLiteral("unknown option ") + a;
            return line;
        } else {
            line.inputs.append(a);
        }
    }
    if (kind.hasStandard && !isStandard(line.standard)) {
        line.error = QStringLiteral("unknown knee standard \"") + line.standard + u'"';
        return line;
    }
    if (!line.help && line.inputs.isEmpty())
        line.error = QStringLiteral("no test file or folder given");
    return line;
}

QString usageText(const ConverterKind& kind)
{
    const QString output = kind.outputSuffix.toUpper();
    QString t = QStringLiteral("usage: %1 [options] <test file or folder>...\n"
                               "       %1             (no arguments: the converter window)\n\n")
                    .arg(kind.program);
    t +=
        QStringLiteral("Converts each %1 test file into a %2 file; a folder gives its *.%3 files.\n"
                       "A file that cannot be read is skipped and listed at the end.\n\n")
            .arg(kind.instrument, output, kind.testSuffix);
    t += QStringLiteral("  -o, --output <folder>  where the %1 files go (default: beside each "
                        "test file)\n")
             .arg(output);
    if (kind.hasStandard)
        t += QStringLiteral("  -s, --standard <name>  the knee standard: \"IEEE 30\" (default), "
                            "\"IEEE 45\" or \"AINSI/IEC10/50\"\n");
    t += QStringLiteral("  --lang <file>          the language file of the report texts\n"
                        "  -h, --help             this text\n\n"
                        "Exit status: 0 all converted, 1 some file failed, 2 bad arguments.\n");
    return t;
}

} // namespace quenby::converters

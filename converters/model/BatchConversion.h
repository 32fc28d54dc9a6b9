// The batch converters without a screen: which test files a run takes, where
// each output goes, the run itself and what it tells the operator at the end.
//
// A converter turns every test file it is given into one output file: the
// KVX converter a PDF of the condensed report, the ZBL converter a CSV of the
// basic report. A file that the reader rejects is skipped and listed with its
// failure text; it never stops the batch. Each output is written under a
// temporary name beside its final one and renamed only once it is complete,
// so a file with the final name is always a whole one.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace quenby::converters {

// What tells the two converters apart.
struct ConverterKind
{
    QString program;          // "kvx_report_converter"
    QString instrument;       // "KVX": the data folder family
    QString testSuffix;       // "txt": the test files taken from a folder
    QString outputSuffix;     // "pdf"
    bool hasStandard = false; // the KVX report is drawn under a knee standard
};
const ConverterKind& kvxConverterKind();
const ConverterKind& zblConverterKind();

struct ConversionFailure
{
    QString file; // the test file as named
    QString text; // why it could not be converted
    bool operator==(const ConversionFailure&) const = default;
};

// The test files of `inputs`: a file is taken as named; a folder gives its
// files ending in "." + suffix (any case), by name, without going into
// sub-folders. A name that is neither is a failure of its own.
struct TestFileList
{
    QStringList files;
    QList<ConversionFailure> missing;
};
TestFileList collectTestFiles(const QStringList& inputs, const QString& suffix);

// The output of `testFile`: its name with the last ending replaced by
// "." + suffix, in `outputFolder`, or beside the test file when that is "".
QString outputPathFor(const QString& testFile, const QString& outputFolder, const QString& suffix);

// The temporary name an output is written under until it is complete.
QString partialPathFor(const QString& outputPath);

// The text of `key` in the language in use, or `fallback` when the language
// file has none.
QString converterText(const char* key, const QString& fallback);

struct BatchSummary
{
    int total = 0;         // test files taken, the missing ones included
    QStringList converted; // the outputs written, in order
    QList<ConversionFailure> failures;

    bool allConverted() const { return failures.isEmpty(); }
    // "Converted 3 of 4 test files." then, for each failure, a line
    // "<file>: <text>".
    QString text() const;
};

// Writes the output of one test file into `partialPath`; raises
// quenby::RuntimeError when the file cannot be read.
using ConvertOne = std::function<void(const QString& testFile, const QString& partialPath)>;
// Told before each file: its place from 1 on, the count, and its name.
using BatchProgress = std::function<void(int number, int total, const QString& testFile)>;

// Converts each file of `list` in turn. A failed conversion leaves no output
// for its file, not even the partial one; an output of a good one replaces an
// older file of the same name. `progress` may be empty.
BatchSummary runBatch(const TestFileList& list, const QString& outputFolder,
                      const ConverterKind& kind, const ConvertOne& convert,
                      const BatchProgress& progress = {});

// The folder of test files a window starts with: the data folder of the
// instrument as the settings store names it (the root chosen by the operator,
// else the folder of the last opened file), or "" when the store names none.
QString defaultTestFolder(const ConverterKind& kind);

// The language file for the report texts: `given` if not empty, else the
// file of the language the settings store names, else en.lng beside the
// program.
QString converterLanguageFile(const QString& given);

// The command line. Without arguments a converter shows its window.
struct CommandLine
{
    bool help = false;
    QString error; // not "": the arguments cannot be used
    QStringList inputs;
    QString outputFolder;
    QString standard;
    QString languageFile;
};
CommandLine parseCommandLine(const QStringList& arguments, const ConverterKind& kind);
QString usageText(const ConverterKind& kind);

// Exit statuses of the command line.
inline constexpr int ExitConverted = 0;
inline constexpr int ExitSomeFailed = 1;
inline constexpr int ExitBadArguments = 2;

} // namespace quenby::converters

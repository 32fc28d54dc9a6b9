#include "converters/ui/ConverterProgram.h"

#include "shell/ui/QtServices.h"

#include "shell/model/AppState.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QStringList>
#include <QtGlobal>

#include <cstdio>

namespace quenby::converters {

namespace {

void printUtf8(std::FILE* stream, const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
}

} // namespace

void drawOffscreenWithoutDisplay(int argc)
{
#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
    if (argc > 1 && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") &&
        qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
#else
    static_cast<void>(argc);
#endif
}

int runConverter(const ConverterKind& kind, const std::function<void()>& loadTexts,
                 const ConverterFor& converterFor)
{
    QStringList arguments = QCoreApplication::arguments();
    arguments.removeFirst();
    const bool window = arguments.isEmpty();
    const CommandLine line = parseCommandLine(arguments, kind);
    if (!window && line.help) {
        printUtf8(stdout, usageText(kind));
        return ExitConverted;
    }
    if (!window && !line.error.isEmpty()) {
        printUtf8(stderr,
                  kind.program + QStringLiteral(": ") + line.error + u'\n' + usageText(kind));
        return ExitBadArguments;
    }

    const QString language = converterLanguageFile(line.languageFile);
    if (!QFileInfo::exists(language)) {
        const QString text = QStringLiteral("No language file %1").arg(language);
        if (window)
            QMessageBox::critical(nullptr, kind.program, text);
        else
            printUtf8(stderr, kind.program + QStringLiteral(": ") + text + u'\n');
        return ExitBadArguments;
    }
    appState().LangFilePath = language;
    loadTexts();

    if (window) {
        installQtServices();
        ConverterWindow converter(kind, converterFor);
        converter.show();
        return QApplication::exec();
    }

    const TestFileList list = collectTestFiles(line.inputs, kind.testSuffix);
    const BatchSummary summary =
        runBatch(list, line.outputFolder, kind, converterFor(line.standard),
                 [](int number, int total, const QString& file) {
                     printUtf8(stdout, QStringLiteral("[%1/%2] %3\n")
                                           .arg(number)
                                           .arg(total)
                                           .arg(QDir::toNativeSeparators(file)));
                 });
    // The count on the output, each failure on the error output.
    const QStringList lines = summary.text().split(u'\n', Qt::SkipEmptyParts);
    printUtf8(stdout, lines.value(0) + u'\n');
    for (qsizetype i = 1; i < lines.size(); ++i)
        printUtf8(stderr, lines[i] + u'\n');
    return summary.allConverted() ? ExitConverted : ExitSomeFailed;
}

} // namespace quenby::converters

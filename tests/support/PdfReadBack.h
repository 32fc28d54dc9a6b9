// Reading a printed PDF back with poppler's tools: the page count and the
// text of a page as pdftotext lays it out.
#pragma once

#include <QProcess>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

namespace quenby::testing {

struct ToolRun
{
    int exitCode = -1;
    QString output;
};

inline ToolRun runTool(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(30000))
        return {};
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput())};
}

// -1 when the file is no PDF poppler can read.
inline int pdfPages(const QString& pdf)
{
    const ToolRun info = runTool(QStringLiteral("pdfinfo"), {pdf});
    const QRegularExpressionMatch m = QRegularExpression(QStringLiteral("^Pages:\\s+(\\d+)$"),
                                                         QRegularExpression::MultilineOption)
                                          .match(info.output);
    return info.exitCode == 0 && m.hasMatch() ? m.captured(1).toInt() : -1;
}

inline QString pdfText(const QString& pdf, int page)
{
    const QString p = QString::number(page);
    return runTool(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), QStringLiteral("-f"), p,
                                                 QStringLiteral("-l"), p, pdf, QStringLiteral("-")})
        .output;
}

} // namespace quenby::testing

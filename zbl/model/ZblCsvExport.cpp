#include "zbl/model/ZblCsvExport.h"

#include "report/model/TemperatureCompensation.h"
#include "shell/model/AppState.h"
#include "shell/model/NumberText.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/SequentialFiles.h"
#include "zbl/model/ZblBasicReportView.h"
#include "zbl/model/ZblTestFileReader.h"

#include <QFile>

#include <algorithm>

namespace quenby {

QString zblCsvField(const QString& text)
{
    const bool quote = text.contains(QLatin1Char(ZblCsvSeparator)) || text.contains(u'"') ||
                       text.contains(u'\r') || text.contains(u'\n');
    if (!quote)
        return text;
    QString doubled = text;
    doubled.replace(QStringLiteral("\""), QStringLiteral("\"\""));
    return u'"' + doubled + u'"';
}

QString zblCsvLine(const QStringList& fields)
{
    QString line;
    for (qsizetype i = 0; i < fields.size(); ++i) {
        if (i > 0)
            line += QLatin1Char(ZblCsvSeparator);
        line += zblCsvField(fields[i]);
    }
    return line + QStringLiteral("\r\n");
}

const QStringList& zblCsvHeadNames()
{
    static const QStringList names{
        QStringLiteral("File name"),
        QStringLiteral("Date"),
        QStringLiteral("Transformer serial no."),
        QStringLiteral("Company"),
        QStringLiteral("Station"),
        QStringLiteral("Designation"),
        QStringLiteral("Manufacturer"),
        QStringLiteral("Operator"),
        QStringLiteral("Temperature"),
        QStringLiteral("Temperature compensation"),
        QStringLiteral("Reference temperature"),
        QStringLiteral("Notes"),
    };
    return names;
}

const QStringList& zblCsvColumnNames()
{
    static const QStringList names{
        QStringLiteral("Tap A"),        QStringLiteral("Winding A"),
        QStringLiteral("Resistance A"), QStringLiteral("Compensated resistance A"),
        QStringLiteral("Tap B"),        QStringLiteral("Winding B"),
        QStringLiteral("Resistance B"), QStringLiteral("Compensated resistance B"),
        QStringLiteral("Total time"),   QStringLiteral("Current"),
        QStringLiteral("Interval (s)"),
    };
    return names;
}

QByteArray zblReportCsv(const ZblBasicReportModel& report, const ZblTestRecord& record, int rows)
{
    // The values in the order of zblCsvHeadNames: the head the print-out
    // carries.
    const QStringList head{
        report.lbTexteFileName1,
        report.lbTexteDate1,
        report.txtXFRSerialNumber,
        report.txtCompany,
        report.txtStation,
        report.txtDesignator,
        report.txtManufacturer,
        report.txtOperator,
        report.txtTemperature,
        report.cbCompensationText,
        report.lbTexteCompensedTemp1,
        report.txtNotes,
    };
    QString text;
    for (qsizetype i = 0; i < head.size(); ++i)
        text += zblCsvLine({zblCsvHeadNames()[i], head[i]});
    text += QStringLiteral("\r\n");
    text += zblCsvLine(zblCsvColumnNames());

    const int count = std::clamp(rows, 0, ZblBasicReportModel::RowCount);
    for (int i = 0; i < count; ++i) {
        QStringList fields;
        for (int c = 0; c < ZblReportColumnCount; ++c)
            fields.append(report.cell(static_cast<ZblReportColumn>(c), i));
        const auto k = static_cast<std::size_t>(i);
        fields.append(record.CurrentText[k]);
        fields.append(numberText(record.IntervalSeconds[k]));
        text += zblCsvLine(fields);
    }
    return QByteArrayLiteral("\xEF\xBB\xBF") + text.toUtf8();
}

int zblReportTableRows()
{
    return std::max(0, static_cast<int>(CheckNumberOfTAPInFiles()) - 1);
}

void OpenZblTestForExport(const QString& path)
{
    SequentialFiles& files = SequentialFiles::instance();
    const Int16 fileNo = files.freeFile();
    appState().ZblTestFilePath = Dynamic(path);
    appState().ZblTestFileNo = Dynamic(static_cast<int>(fileNo));
    files.open(fileNo, path, SequentialFiles::Mode::Input);

    // The steps of the open command, in its order, without its windows.
    try {
        FillZblReportFromOpenTest();
    } catch (const RuntimeError&) {
        files.close(fileNo);
        throw;
    }
    // A batch opens many files; the program keeps its one test open, a batch
    // must not.
    files.close(fileNo);
}

QByteArray ExportZblReportCsv()
{
    return zblReportCsv(zblBasicReport(), zblTestRecord(), zblReportTableRows());
}

void WriteZblReportCsv(const QString& testFile, const QString& csvFile)
{
    OpenZblTestForExport(testFile);
    const QByteArray bytes = ExportZblReportCsv();
    QFile file(csvFile);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        raiseRuntimeError(err::PathFileAccessError, csvFile);
    if (file.write(bytes) != bytes.size() || !file.flush())
        raiseRuntimeError(err::DiskFull, csvFile);
}

} // namespace quenby

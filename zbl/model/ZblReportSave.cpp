#include "zbl/model/ZblReportSave.h"

#include "shell/model/CommonDialog.h"
#include "shell/model/DataFolders.h"
#include "shell/model/NumberText.h"
#include "shell/model/Platform.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/SequentialFiles.h"
#include "shell/model/Services.h"
#include "shell/model/TextRules.h"
#include "shell/model/YieldHook.h"
#include "zbl/model/ZblBasicReportModel.h"
#include "zbl/model/ZblBasicReportView.h"
#include "zbl/model/ZblTestFileReader.h"
#include "zbl/model/ZblTestRecord.h"

#include <QFileInfo>
#include <QStringList>

namespace quenby {

namespace {

const QString ZblEnding = QStringLiteral(".zbl");

// The characters from 1-based position `start` on, at most `length` of them,
// as the platform's text service cuts them: a start before the first
// character is an invalid argument, one past the end gives "".
QString mid(const QString& text, qsizetype start, qsizetype length)
{
    if (start < 1 || length < 0)
        raiseRuntimeErrorOnValue(err::InvalidProcedureCall, text);
    return text.mid(start - 1, length);
}

// The first `length` characters; a negative length is an invalid argument.
QString left(const QString& text, qsizetype length)
{
    if (length < 0)
        raiseRuntimeErrorOnValue(err::InvalidProcedureCall, text);
    return text.left(length);
}

// The file name of an existing file, "" for anything else.
QString directoryLookup(const QString& path)
{
    if (path.isEmpty())
        return {};
    const QFileInfo info(path);
    return info.exists() && info.isFile() ? info.fileName() : QString();
}

// The platform refuses to open for output a file that the program holds
// open, with File already open: the test file the report came from, and every
// test file opened before it, stay open for input until the program ends. So
// the save can never write over them, whatever name leads there.
void refuseOpenFile(const QString& path)
{
    const SequentialFiles& files = SequentialFiles::instance();
    const QFileInfo target(path);
    for (Int16 no = 1; no <= SequentialFiles::MaxFileNumber; ++no) {
        if (!files.isOpen(no))
            continue;
        const QFileInfo open(files.path(no));
        const bool same = target.exists() && open.exists()
                              ? target.canonicalFilePath() == open.canonicalFilePath()
                              : target.absoluteFilePath() == open.absoluteFilePath();
        if (same)
            raiseRuntimeError(err::FileAlreadyOpen, path);
    }
}

// The save dialog of the main window's dialog control: on OK the chosen name
// replaces the file name box; a cancel raises the cancel error, the box kept.
void showSave(CommonDialogState& dialog)
{
    QString chosen;
    if (FileDialogService* service = services().files)
        chosen = service->getSaveFileName(
            {dialog.FileName, dialog.Filter, dialog.DialogTitle, dialog.InitDir});
    if (chosen.isEmpty())
        raiseRuntimeError(CommonDialogCancelError, dialog.DialogTitle);
    dialog.FileName = chosen;
}

void printLine(Int16 fileNo, const QString& line)
{
    SequentialFiles::instance().printLine(fileNo, line);
}

void printZoned(Int16 fileNo, const QStringList& items)
{
    ZonedLine line;
    for (const QString& item : items)
        line.add(item);
    printLine(fileNo, line.text());
}

void writeHead(Int16 fileNo, const ZblBasicReportModel& report)
{
    printLine(fileNo, QString(88, u'-'));
    printLine(fileNo, QStringLiteral("ZBL Report"));
    printLine(fileNo, QStringLiteral("Date/Time:    ") + report.lbTexteDate1);
    // The mode of a test does not go through a save: the line stays empty.
    printLine(fileNo, QStringLiteral("Mode:         "));
    printLine(fileNo, QStringLiteral("Serial:       ") + report.txtXFRSerialNumber);
    printLine(fileNo, QStringLiteral("Company:      ") + report.txtCompany);
    printLine(fileNo, QStringLiteral("Station:      ") + report.txtStation);
    printLine(fileNo, QStringLiteral("Designation:  ") + report.txtDesignator);
    printLine(fileNo, QStringLiteral("Manufacturer: ") + report.txtManufacturer);
    printLine(fileNo, QStringLiteral("Operator:     ") + report.txtOperator);
    printLine(fileNo, QStringLiteral("Temperature:  ") + report.txtTemperature);
    printLine(fileNo, QStringLiteral("Notes:        ") + report.txtNotes);
    printLine(fileNo, QString(136, u'-'));
    printLine(fileNo, QString::fromLatin1(ZblTableHead));
    printLine(fileNo, QString(136, u'-'));
}

// Row i: the report's cells, and the current, interval and total time that
// the record holds. The total time cell of the window is not what is written.
void writeRow(Int16 fileNo, int i, ZblBasicReportModel& report, const ZblTestRecord& record)
{
    const auto k = static_cast<std::size_t>(i);
    const auto cell = [&report, i](ZblReportColumn column) {
        return trimBlanks(report.cell(column, i));
    };
    const auto resistance = [&report, i](ZblReportColumn column) {
        return trimBlanks(NormalizeResistanceText(report.cell(column, i)));
    };
    printZoned(fileNo, {QStringLiteral("-"), cell(ZblReportColumn::TapA),
                        cell(ZblReportColumn::WindingA), resistance(ZblReportColumn::ResA),
                        cell(ZblReportColumn::TapB), cell(ZblReportColumn::WindingB),
                        resistance(ZblReportColumn::ResB), trimBlanks(record.CurrentText[k]),
                        numberText(record.IntervalSeconds[k]), trimBlanks(record.TotalTime[k])});
}

} // namespace

Bool16 ZBLFileExists(const QString& path)
{
    return directoryLookup(path).isEmpty() ? False16 : True16;
}

QString MakeZBLNameUnique(const QString& oldPath, const QString& newPath)
{
    QString name = newPath;
    const qsizetype l = oldPath.size();
    // The new name is cut with the old name's length: the two are equal when
    // the save asks, so this is the same text.
    if (mid(oldPath, l - 4, 1) != QLatin1String(")"))
        name = left(name, l - 4) + QStringLiteral("(1)") + ZblEnding;
    while (ZBLFileExists(name) != False16) {
        // Only the last digit inside the parentheses counts up, so "name(10)"
        // is followed by "name((1)". Intended: that is how the numbering has
        // always run, and a name it makes is still a free name.
        const qsizetype n = name.size();
        const double sum = strictNumber(mid(name, n - 5, 1)) + 1.0;
        name = left(name, n - 7) + u'(' + numberText(sum) + u')' + ZblEnding;
        letSystemBreathe();
    }
    return name;
}

QString NormalizeResistanceText(const QString& text)
{
    // Split at the first blank into at most two pieces; an empty text has
    // none, and asking for the first one fails.
    QStringList pieces;
    if (!text.isEmpty()) {
        const qsizetype blank = text.indexOf(u' ');
        pieces = blank < 0 ? QStringList{text} : QStringList{text.left(blank), text.mid(blank + 1)};
    }
    if (pieces.isEmpty())
        raiseRuntimeErrorOnValue(err::SubscriptOutOfRange, text);
    // The strict conversion: "OFF" or "---" is no number, and the save stops.
    QString number = trimBlanks(numberText(strictNumber(pieces[0])));
    if (number.startsWith(u'.'))
        number.prepend(u'0');
    pieces[0] = number;
    return pieces.join(u' ');
}

int SaveZBLReport()
{
    SequentialFiles& files = SequentialFiles::instance();
    CommonDialogState& dialog = CommonDialog1();
    ZblTestRecord& record = zblTestRecord();
    ZblBasicReportModel& report = zblBasicReport();
    Int16 fileNo = 0;
    int failure = 0;

    // The start folder is the one beside the program, not the data root.
    dialog.InitDir = dataFilesFolder(AppPath(), QStringLiteral("ZBL"));
    dialog.Filter = QString::fromLatin1(ZblSaveFilePattern);
    dialog.CancelError = true;
    try {
        showSave(dialog);
        QString name = dialog.FileName;
        if (name.right(4) != ZblEnding)
            name += ZblEnding;
        if (name == QLatin1String(ZblSaveFilePattern)) {
            files.close(fileNo);
            return 0;
        }
        fileNo = files.freeFile();
        if (name == record.FilePath)
            name = MakeZBLNameUnique(record.FilePath, name);
        // From here the record names the new file, even when the writing
        // below stops early.
        record.FilePath = name;
        refuseOpenFile(name);
        files.open(fileNo, name, SequentialFiles::Mode::Output);
        report.lbTexteFileName1 = directoryLookup(name);

        writeHead(fileNo, report);
        // The count holds one line past the rows. A cell that is no number
        // ends the file at the row before it, without the compensation
        // lines: intended, a test with a channel switched off is not saved
        // whole, and a reload shows the rows written so far.
        const int n = CheckNumberOfTAPInFiles() - 1;
        for (int i = 0; i < n; ++i) {
            writeRow(fileNo, i, report, record);
            letSystemBreathe();
        }
        printLine(fileNo, QString());
        printZoned(fileNo, {ZblCompensationFactorKey, report.cbCompensationText});
        printZoned(fileNo, {ZblCompensedTempKey, report.lbTexteCompensedTemp1});
    } catch (const RuntimeError& e) {
        failure = e.number();
    }
    files.close(fileNo);
    return failure;
}

void ZblReport_mnuSave_Click()
{
    // The save says nothing, whatever became of it.
    static_cast<void>(SaveZBLReport());
}

} // namespace quenby

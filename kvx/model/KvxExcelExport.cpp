#include "kvx/model/KvxExcelExport.h"

#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxTestFileReader.h"
#include "kvx/model/KvxTestRecord.h"
#include "kvx/model/XlsxWorkbook.h"
#include "localisation/model/LanguageLookup.h"
#include "localisation/model/Vocabulary.h"
#include "shell/model/DataFolders.h"
#include "shell/model/FileSystem.h"
#include "shell/model/MainWindowView.h"
#include "shell/model/NumberText.h"
#include "shell/model/Platform.h"
#include "shell/model/RuntimeError.h"

#include <QFile>
#include <QFileInfo>

#include <array>
#include <memory>

namespace quenby {

namespace {

// The header cells and the record field each takes.
struct HeaderCell
{
    int row;
    int column;
    QString KvxTestRecord::*field;
};

const std::array<HeaderCell, 16> HeaderCells = {{
    {3, 4, &KvxTestRecord::fileName},
    {4, 4, &KvxTestRecord::company},
    {5, 4, &KvxTestRecord::designation},
    {6, 4, &KvxTestRecord::ctSerial},
    {7, 4, &KvxTestRecord::temperature},
    {8, 4, &KvxTestRecord::ratio},
    {9, 4, &KvxTestRecord::phase},
    {10, 4, &KvxTestRecord::testClass},
    {12, 3, &KvxTestRecord::notes},
    {3, 11, &KvxTestRecord::dateTime},
    {4, 11, &KvxTestRecord::station},
    {5, 11, &KvxTestRecord::manufacturer},
    {6, 11, &KvxTestRecord::operatorName},
    // (7, 11) is the instrument serial, a dynamic value, written apart.
    {8, 11, &KvxTestRecord::voltageRating},
    {9, 11, &KvxTestRecord::position},
    {10, 11, &KvxTestRecord::kneeTypeText},
}};
constexpr int InstrumentSerialRow = 7;
constexpr int InstrumentSerialColumn = 11;
constexpr int CompensationRow = 11;
constexpr int CompensationColumn = 11;

// The report columns of a sheet row, from column 3 on.
constexpr std::array<KvxReportColumn, 11> RowColumns = {
    KvxReportColumn::Tap,         KvxReportColumn::Ieee30,     KvxReportColumn::Ieee45,
    KvxReportColumn::Iec1050,     KvxReportColumn::NpRatio,    KvxReportColumn::MsRatio,
    KvxReportColumn::Error,       KvxReportColumn::Phase,      KvxReportColumn::WindingRes,
    KvxReportColumn::WindingComp, KvxReportColumn::Insulation,
};

void status(const char* key)
{
    setStatusText(QString::fromLatin1(key));
    mainWindowView().mirrorMainWindow();
}

// A dynamic value goes in as what it holds: a number as a number.
void setDynamic(XlsxWorkbook& book, int row, int column, const Dynamic& value)
{
    if (value.isNumber())
        book.setNumber(row, column, value.toNumber());
    else
        book.setText(row, column, value.toText());
}

// The save of step 8: the dialog, the old file deleted, the workbook saved.
void SaveKvxWorkbook(const XlsxWorkbook* book)
{
    SaveFileRequest request;
    request.filter = QString::fromLatin1(KvxExcelSaveFilter);
    request.title = QString::fromLatin1(KvxExcelSaveDialogTitle);
    QString name;
    if (FileDialogService* files = services().files)
        name = files->getSaveFileName(request);
    // A cancelled dialog is caught here and ends the save without a word.
    if (name.isEmpty())
        return;
    // A name without an ending gets the workbook's, as a spreadsheet
    // program's save does.
    if (QFileInfo(name).suffix().isEmpty())
        name += QLatin1String(KvxExcelTemplateEnding);
    if (QFileInfo::exists(name) && !QFile::remove(name))
        raiseRuntimeError(err::PathFileAccessError, name);
    // With no template there is no workbook to save.
    if (!book)
        raiseRuntimeError(WorkbookOperationFailed, name);
    book->saveAs(name);
}

} // namespace

QString KvxExcelTemplatePath()
{
    QString path = AppPath() + pathSep() + QLatin1String(KvxExcelTemplateStem);
    const QString language = QStringLiteral("-") + GetLanguageCode();
    if (FileExistsApi(path + language + QLatin1String(KvxExcelTemplateEnding)) != False16)
        path += language;
    return path + QLatin1String(KvxExcelTemplateEnding);
}

std::optional<double> nominalRatioValue(const QString& text)
{
    const QStringList parts = text.split(u':');
    if (parts.size() != 2)
        return std::nullopt;
    const double first = leadingNumber(parts.at(0));
    const double second = leadingNumber(parts.at(1));
    if (first == 0.0 || second == 0.0)
        return std::nullopt;
    return first / second;
}

void FillKvxWorkbook(XlsxWorkbook& book)
{
    const KvxTestRecord& record = kvxTestRecord();
    const KvxCondensedReportModel& report = kvxCondensedReport();

    for (const HeaderCell& cell : HeaderCells)
        book.setText(cell.row, cell.column, record.*cell.field);
    setDynamic(book, InstrumentSerialRow, InstrumentSerialColumn, record.instrumentSerial);
    book.setText(CompensationRow, CompensationColumn, report.cbCompensationText);

    using namespace KvxExcelCells;
    book.setText(InsulationHeadRow, InsulationHeadColumn, report.lbInsulationResistanceTest(0));
    for (int n = 1; n <= KvxCondensedReportModel::RowCount; ++n) {
        // The ratio is worked out ahead of each row and goes into no cell.
        [[maybe_unused]] const std::optional<double> ratio =
            nominalRatioValue(report.cell(KvxReportColumn::NpRatio, n));
        if (!report.rowVisible(n))
            continue;
        int column = FirstColumn;
        for (const KvxReportColumn c : RowColumns)
            book.setText(RowBase + n, column++, report.cell(c, n));
    }

    // All 120 points of each curve, the filler at index 0 and the flat tail
    // included, so that the chart draws the curves as the report does.
    for (int k = 1; k <= KvxSlotCount; ++k) {
        const KvxTapCurve& curve = record.curves[static_cast<std::size_t>(k - 1)];
        book.setNumberRange(2 * k + 2, CurveFirstColumn, CurveLastColumn, curve.current);
        book.setNumberRange(2 * k + 3, CurveFirstColumn, CurveLastColumn, curve.volts);
    }
}

void MakeKvxExcelReport()
{
    const QString path = KvxExcelTemplatePath();
    std::unique_ptr<XlsxWorkbook> book;
    // Without a template nothing is written, and the question still comes.
    if (FileExistsApi(path) != False16) {
        book = std::make_unique<XlsxWorkbook>(path);
        FillKvxWorkbook(*book);
    }
    const MsgAnswer answer =
        showMessage(QString::fromLatin1(KvxExcelSaveQuestion), MsgButtons::YesNo, MsgIcon::None,
                    QString::fromLatin1(KvxExcelSaveTitle));
    kvxExcelExport().saveAnswer = answer;
    if (answer == MsgAnswer::Yes)
        SaveKvxWorkbook(book.get());
    // The filled copy is closed unsaved: the template itself never changes.
}

void ExportExcel(Bool16 askFile)
{
    FlushKvxCurves();
    const Bool16 noFile = askFile != False16 ? SelectKvxTestFile() : ReopenKvxTestFile();
    if (noFile != False16)
        return;
    status(MainStatusKeys::ConversionProgress);
    ReadKvxTestFile();
    status(MainStatusKeys::CreatingExcelReport);
    MakeKvxExcelReport();
    status(MainStatusKeys::ConversionComplet);
    status(MainStatusKeys::Ready);
}

void KvxReport_mnExcel_Click()
{
    ExportExcel(False16);
}

} // namespace quenby

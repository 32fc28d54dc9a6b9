// Shared set-up of the spreadsheet export tests: the KVX fixture's scratch
// folder stands beside the program and holds the committed workbook
// templates; the dialogs and windows are scripted; a test file of three taps
// is at hand.
#pragma once

#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxExcelExport.h"
#include "kvx/model/KvxTestRoad.h"
#include "shell/model/CommonDialog.h"
#include "shell/model/MainWindowState.h"
#include "tests/kvx/KvxTestSupport.h"
#include "tests/support/ScriptedServices.h"
#include "tests/support/ScriptedViews.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>

namespace quenby::testing {

inline const FreshEachTest<KvxExcelExportState> freshKvxExcelExport;

// The report's columns in the order a sheet row holds them, from column C.
inline constexpr std::array<KvxReportColumn, 11> SheetRowColumns = {
    KvxReportColumn::Tap,         KvxReportColumn::Ieee30,    KvxReportColumn::Ieee45,
    KvxReportColumn::Iec1050,     KvxReportColumn::NpRatio,   KvxReportColumn::MsRatio,
    KvxReportColumn::Error,       KvxReportColumn::Phase,     KvxReportColumn::WindingRes,
    KvxReportColumn::WindingComp, KvxReportColumn::Insulation};

// A cell of the header and the text it must hold.
struct ExpectedCell
{
    int row;
    int column;
    QString text;
};

// The committed templates, as the build copies them beside the program.
inline QString committedTemplate(const QString& name)
{
    return QDir(QStringLiteral(QUENBY_TEMPLATES_DIR)).filePath(name);
}

class KvxExcelFixture : public KvxFixture
{
protected:
    void SetUp() override
    {
        KvxFixture::SetUp();
        for (const char* name : {"TMP2.xlsx", "TMP2-en.xlsx", "TMP2-fr.xlsx", "TMP2-polish.xlsx"})
            ASSERT_TRUE(QFile::copy(committedTemplate(QString::fromLatin1(name)),
                                    m_dir.filePath(QString::fromLatin1(name))));
        windows.main.onMirror = [this] {
            const QString& text = mainWindowState().statusText;
            if (statusTexts.isEmpty() || statusTexts.last() != text)
                statusTexts << text;
        };
    }

    // A test of three taps, X1-X2, X1-X3 and X2-X3, the last with reference
    // number 3.
    QString threeTapFile()
    {
        samples::KvxSampleFile file = smallSample();
        samples::KvxSampleRow r3 = file.rows[1];
        r3.fields = {"03",  "X2-X3", "100:5", "20",    "20.010",  "0.0",     "0.2",
                     "POS", "41.00", "44.20", "47.60", "0.05020", "2.5E+08", "500"};
        r3.blockNumber = QStringLiteral("03");
        file.rows.push_back(r3);
        return writeFile(QStringLiteral("three-taps.txt"), samples::kvxSampleBytes(file));
    }

    // The report of `path` filled for `standard`, as the main window's road
    // leaves it, and the export of the report's mnExcel answered Yes and
    // saved under `saveAs`.
    void exportFromReport(const QString& path, const QString& saveAs,
                          const QString& standard = QStringLiteral("IEEE 30"))
    {
        OpenKvxTestForReport(path, standard);
        CommonDialog1().FileName = path;
        scripted.messages.answers.push_back(MsgAnswer::Yes);
        scripted.files.saveAnswers.push_back(saveAs);
        KvxReport_mnExcel_Click();
    }

    ScriptedWindows windows;
    ScriptedServices scripted;
    QStringList statusTexts;
};

} // namespace quenby::testing

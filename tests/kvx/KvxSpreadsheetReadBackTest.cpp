// The exported workbook as a real spreadsheet program reads it: LibreOffice
// Calc, headless, turns the saved file into CSV and into PDF. Every cell of
// the map, the rows the report shows and all 20 x 120 curve values must be
// where the export puts them, and the PDF must carry the template's chart.
// Each conversion runs under a profile folder of its own, so that runs may
// go side by side.
#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxTestRecord.h"
#include "tests/kvx/KvxExcelFixture.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QUrl>
#include <gtest/gtest.h>

#include <cmath>

using namespace quenby;
using namespace quenby::testing;

namespace {

// The fields of CSV text: comma separated, quoted with doubled quotes.
std::vector<QStringList> parseCsv(const QString& text)
{
    std::vector<QStringList> rows;
    QStringList row;
    QString field;
    bool quoted = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (quoted) {
            if (c == u'"' && i + 1 < text.size() && text.at(i + 1) == u'"') {
                field += u'"';
                ++i;
            } else if (c == u'"') {
                quoted = false;
            } else {
                field += c;
            }
        } else if (c == u'"') {
            quoted = true;
        } else if (c == u',') {
            row << field;
            field.clear();
        } else if (c == u'\n') {
            row << field;
            field.clear();
            rows.push_back(row);
            row.clear();
        } else if (c != u'\r') {
            field += c;
        }
    }
    if (!field.isEmpty() || !row.isEmpty()) {
        row << field;
        rows.push_back(row);
    }
    return rows;
}

class KvxSpreadsheetReadBackTest : public KvxExcelFixture
{
protected:
    void SetUp() override
    {
        KvxExcelFixture::SetUp();
        m_soffice = QStandardPaths::findExecutable(QStringLiteral("soffice"));
        if (m_soffice.isEmpty())
            GTEST_SKIP() << "LibreOffice (soffice) is not installed";
    }

    // Converts `file` with LibreOffice into `filter` in a folder of its own
    // and returns the path of the result.
    QString convert(const QString& file, const QString& filter, const QString& ending)
    {
        QTemporaryDir profile;
        EXPECT_TRUE(profile.isValid());
        const QString outDir = m_dir.filePath(QStringLiteral("converted-") + ending);
        QDir().mkpath(outDir);
        QProcess lo;
        lo.setProgram(m_soffice);
        lo.setArguments({QStringLiteral("--headless"),
                         QStringLiteral("-env:UserInstallation=") +
                             QUrl::fromLocalFile(profile.path()).toString(),
                         QStringLiteral("--convert-to"), filter, QStringLiteral("--outdir"), outDir,
                         file});
        lo.start();
        EXPECT_TRUE(lo.waitForFinished(120000)) << "LibreOffice did not finish";
        EXPECT_EQ(lo.exitCode(), 0) << lo.readAllStandardError().toStdString();
        const QString result =
            QDir(outDir).filePath(QFileInfo(file).completeBaseName() + u'.' + ending);
        EXPECT_TRUE(QFileInfo::exists(result))
            << lo.readAllStandardOutput().toStdString() << lo.readAllStandardError().toStdString();
        return result;
    }

    QString m_soffice;
};

} // namespace

TEST_F(KvxSpreadsheetReadBackTest, CalcFindsEveryValueWhereTheExportPutsIt)
{
    const QString saved = m_dir.filePath(QStringLiteral("ten-taps.xlsx"));
    kvxCondensedReport().cbCompensationText = QStringLiteral("Copper (TK=234.5)");
    exportFromReport(samplePath(QStringLiteral("kvx-ten-taps.txt")), saved);
    ASSERT_TRUE(QFileInfo::exists(saved));

    // Values as stored, not as shown; English number forms.
    const QString csvPath = convert(
        saved, QStringLiteral("csv:Text - txt - csv (StarCalc):44,34,76,1,,1033,false,false,false"),
        QStringLiteral("csv"));
    const std::vector<QStringList> sheet = parseCsv(QString::fromUtf8(readBytes(csvPath)));
    const auto at = [&sheet](int row, int column) -> QString {
        const auto r = static_cast<std::size_t>(row - 1);
        if (r >= sheet.size() || column - 1 >= sheet[r].size())
            return QString();
        return sheet[r].at(column - 1);
    };

    const KvxTestRecord& r = record();
    const KvxCondensedReportModel& report = kvxCondensedReport();
    EXPECT_EQ(at(1, 3), "KVX Current Transformer Test"); // the template's own text
    const std::vector<ExpectedCell> cells = {{3, 4, QStringLiteral("kvx-ten-taps.txt")},
                                             {4, 4, r.company},
                                             {5, 4, r.designation},
                                             {6, 4, r.ctSerial},
                                             {7, 4, r.temperature},
                                             {8, 4, r.ratio},
                                             {9, 4, r.phase},
                                             {10, 4, r.testClass},
                                             {12, 3, r.notes},
                                             {3, 11, r.dateTime},
                                             {4, 11, r.station},
                                             {5, 11, r.manufacturer},
                                             {6, 11, r.operatorName},
                                             {7, 11, r.instrumentSerial.toText()},
                                             {8, 11, r.voltageRating},
                                             {9, 11, r.position},
                                             {10, 11, QStringLiteral("IEEE 30")},
                                             {11, 11, QStringLiteral("Copper (TK=234.5)")}};
    for (const ExpectedCell& cell : cells)
        EXPECT_EQ(at(cell.row, cell.column), cell.text) << cell.row << " " << cell.column;
    EXPECT_EQ(at(14, 13), report.lbInsulationResistanceTest(0));
    EXPECT_FALSE(r.company.isEmpty());

    for (int n = 1; n <= 10; ++n) {
        ASSERT_TRUE(report.rowVisible(n));
        for (int i = 0; i < 11; ++i)
            EXPECT_EQ(at(15 + n, 3 + i),
                      report.cell(SheetRowColumns[static_cast<std::size_t>(i)], n))
                << "row " << n << " column " << 3 + i;
    }
    EXPECT_EQ(at(16, 3), "X1-X2");
    EXPECT_TRUE(at(16, 7).contains(u':')) << at(16, 7).toStdString();

    for (int k = 1; k <= KvxSlotCount; ++k) {
        const KvxTapCurve& curve = r.curves[static_cast<std::size_t>(k - 1)];
        for (int i = 0; i < KvxCurvePoints; ++i) {
            const std::array<std::pair<int, double>, 2> cells = {
                std::pair{2 * k + 2, curve.current[static_cast<std::size_t>(i)]},
                std::pair{2 * k + 3, curve.volts[static_cast<std::size_t>(i)]}};
            for (const auto& [row, expected] : cells) {
                bool ok = false;
                const double value = at(row, 16 + i).toDouble(&ok);
                ASSERT_TRUE(ok) << "row " << row << " index " << i << ": "
                                << at(row, 16 + i).toStdString();
                EXPECT_NEAR(value, expected, std::abs(expected) * 1e-12)
                    << "row " << row << " index " << i;
            }
        }
        EXPECT_EQ(at(2 * k + 2, 136), "#N/A");
        EXPECT_EQ(at(2 * k + 3, 256), "#N/A");
    }
    // The curves are real: the first slot rises from the filler.
    EXPECT_EQ(at(4, 16).toDouble(), 0.0001);
    EXPECT_GT(record().curves[0].volts[40], 1.0);
}

TEST_F(KvxSpreadsheetReadBackTest, PrintedWorkbookShowsTheChartOfTheCurves)
{
    const QString saved = m_dir.filePath(QStringLiteral("printed.xlsx"));
    exportFromReport(samplePath(QStringLiteral("kvx-ten-taps.txt")), saved);
    const QString pdf = convert(saved, QStringLiteral("pdf"), QStringLiteral("pdf"));

    QProcess text;
    text.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    ASSERT_TRUE(text.waitForFinished(30000));
    const QString shown = QString::fromUtf8(text.readAllStandardOutput());
    // One landscape page holds the report and its chart.
    EXPECT_EQ(shown.count(u'\f'), 1) << shown.toStdString();
    EXPECT_TRUE(shown.contains(QStringLiteral("Excitation curves"))) << shown.toStdString();
    EXPECT_TRUE(shown.contains(QStringLiteral("Excitation current (mA)")));
    EXPECT_TRUE(shown.contains(QStringLiteral("Excitation voltage (V)")));
    for (int k = 1; k <= KvxSlotCount; ++k)
        EXPECT_TRUE(shown.contains(kvxSlotPair(k))) << kvxSlotPair(k).toStdString();
    // Logarithmic axes label their decades.
    EXPECT_TRUE(shown.contains(QStringLiteral("1000"))) << shown.toStdString();
    EXPECT_TRUE(shown.contains(QStringLiteral("kvx-ten-taps.txt")));
}

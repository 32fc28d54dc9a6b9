#include "tests/kvx/KvxTestSupport.h"

#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxTestFileReader.h"
#include "shell/model/AppState.h"
#include "shell/model/Platform.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/SequentialFiles.h"
#include "shell/model/YieldHook.h"
#include "tests/support/Failure.h"
#include "tests/support/TestFiles.h"

namespace quenby::testing {

samples::KvxSampleFile smallSample()
{
    samples::KvxSampleFile f;
    f.serial = QStringLiteral("SN-1");
    f.company = QStringLiteral("Test Co");
    f.station = QStringLiteral("Station 1");
    f.designation = QStringLiteral("CT 1");
    f.manufacturer = QStringLiteral("Maker");
    f.operatorName = QStringLiteral("Op");
    f.temperature = QStringLiteral("20 C");
    f.ratio = QStringLiteral("300:5");
    f.voltageRating = QStringLiteral("C100");
    f.testClass = QStringLiteral("C100");
    f.position = QStringLiteral("H1");
    f.phase = QStringLiteral("A");
    f.instrumentSerial = QStringLiteral("KVX-1");
    f.day = 5;
    f.month = 1;
    f.year = 2024;
    f.hour = 9;
    f.minute = 5;
    f.second = 0;
    f.notes = QStringList{QStringLiteral("One line.")};

    samples::KvxSampleRow r1;
    r1.fields = {"01",  "X1-X2", "200:5", "40",    "40.012",  "0.0", "0.1",
                 "POS", "82.00", "88.40", "95.20", "0.10040", ">1G", "500"};
    r1.blockNumber = QStringLiteral(" 1");
    r1.curve = std::vector<samples::KvxSamplePoint>{
        {1.0, 0.001}, {2.5, 0.002}, {5.5, 0.75}, {6.0, 1.0}, {6.5, 1.25}};
    samples::KvxSampleRow r2;
    r2.fields = {"02",  "X1-X3",  "300:5",  "60",     "60.020",  "0.0",     "0.1",
                 "POS", "123.00", "132.60", "142.80", "0.15060", "1.5E+08", "1000"};
    r2.blockNumber = QStringLiteral("02");
    r2.curve = std::vector<samples::KvxSamplePoint>{
        {2.0, 0.001}, {4.0, 0.002}, {8.0, 0.004}, {9.0, 0.5}, {9.5, 1.5}};
    f.rows = {r1, r2};
    return f;
}

void KvxFixture::SetUp()
{
    ASSERT_TRUE(m_dir.isValid());
    writeBytes(m_dir.filePath(QStringLiteral("en.lng")),
               crlfLines({QStringLiteral("frmKVXCondensedReport.Caption,KVX Condensed Report"),
                          QStringLiteral("frmKVXCondensedReport.txtInsulationRes.Text, ") +
                              InsulationHeadText}));
    setAppPathOverride(m_dir.path());
    AppState& app = appState();
    app.LangFilePath = m_dir.filePath(QStringLiteral("en.lng"));
    app.KvxTestFilePath = Dynamic();
    app.KvxTestFileNo = Dynamic();
    kvxTestRecord() = KvxTestRecord{};
    kvxCondensedReport() = KvxCondensedReportModel{};
    setYieldHook([this] { ++m_breaths; });
}

void KvxFixture::TearDown()
{
    setYieldHook({});
    SequentialFiles::instance().closeAll();
    setAppPathOverride(QString());
    appState().LangFilePath.clear();
}

QString KvxFixture::writeFile(const QString& name, const QByteArray& bytes)
{
    const QString path = m_dir.filePath(name);
    writeBytes(path, bytes);
    return path;
}

QString KvxFixture::writeLines(const QString& name, const QStringList& lines)
{
    return writeFile(name, crlfLines(lines));
}

Int16 KvxFixture::openKvx(const QString& path)
{
    SequentialFiles& files = SequentialFiles::instance();
    const Int16 no = files.freeFile();
    files.open(no, path, SequentialFiles::Mode::Input);
    appState().KvxTestFilePath = Dynamic(path);
    appState().KvxTestFileNo = Dynamic(static_cast<double>(no));
    return no;
}

int KvxFixture::readKvx(const QString& path)
{
    openKvx(path);
    FlushKvxCurves();
    ClearKvxRecord();
    return failureOf([] { ReadKvxTestFile(); });
}

int KvxFixture::readLines(const QStringList& lines, const QString& name)
{
    return readKvx(writeLines(name, lines));
}

KvxTestRecord& KvxFixture::record()
{
    return kvxTestRecord();
}

const KvxTapResult& KvxFixture::slot(int n)
{
    return kvxTestRecord().taps.at(static_cast<std::size_t>(n - 1));
}

const KvxTapCurve& KvxFixture::curve(int n)
{
    return kvxTestRecord().curves.at(static_cast<std::size_t>(n - 1));
}

QString KvxFixture::insulationHead()
{
    return kvxCondensedReport().lbInsulationResistanceTest(0);
}

qsizetype indexOfLine(const QStringList& lines, const QString& text)
{
    return lines.indexOf(text);
}

qsizetype indexOfLineStarting(const QStringList& lines, const QString& start)
{
    for (qsizetype i = 0; i < lines.size(); ++i)
        if (lines[i].startsWith(start))
            return i;
    return -1;
}

} // namespace quenby::testing

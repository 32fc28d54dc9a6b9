#include "tests/zbl/ZblTestSupport.h"

#include "shell/model/AppState.h"
#include "shell/model/NumberText.h"
#include "shell/model/SequentialFiles.h"
#include "shell/model/YieldHook.h"
#include "tests/support/TestFiles.h"
#include "tools/zblsamples/ZblSampleWriter.h"

namespace quenby::testing {

std::optional<RuntimeError> failureFrom(const std::function<void()>& f)
{
    try {
        f();
    } catch (const RuntimeError& e) {
        return e;
    }
    return std::nullopt;
}

QStringList uploadedLines(const QStringList& rows, const QString& mode)
{
    QStringList lines{QString(mode == QLatin1String("Manual") ? 76 : 88, u'-'),
                      QStringLiteral("ZBL Report    "),
                      QStringLiteral("Date/Time:    15 Nov.2024   09:07:33"),
                      QStringLiteral("Mode:         ") + mode,
                      QStringLiteral("Serial:       ZBL-1"),
                      QStringLiteral("Company:      Test Co"),
                      QStringLiteral("Station:      Station 1"),
                      QStringLiteral("Designation:  T1"),
                      QStringLiteral("Manufacturer: Maker"),
                      QStringLiteral("Operator:     Op"),
                      QStringLiteral("Temperature:  20 C"),
                      QStringLiteral("Notes:        None"),
                      samples::zblRule(),
                      QString::fromLatin1(ZblTableHead),
                      samples::zblRule()};
    lines << rows << samples::zblRule();
    return lines;
}

QString zonedRow(const QStringList& items)
{
    ZonedLine row;
    row.add(QStringLiteral("-"));
    for (const QString& item : items)
        row.add(item);
    return row.text();
}

void ZblFixture::SetUp()
{
    ASSERT_TRUE(m_dir.isValid());
    AppState& app = appState();
    app.ZblTestFilePath = Dynamic();
    app.ZblTestFileNo = Dynamic();
    zblTestRecord() = ZblTestRecord{};
    m_report = std::make_unique<ZblReportFill>();
    setYieldHook([this] { ++m_breaths; });
}

void ZblFixture::TearDown()
{
    setYieldHook({});
    SequentialFiles::instance().closeAll();
    appState().ZblTestFilePath = Dynamic();
    appState().ZblTestFileNo = Dynamic();
}

QString ZblFixture::writeFile(const QString& name, const QByteArray& bytes)
{
    const QString path = m_dir.filePath(name);
    writeBytes(path, bytes);
    return path;
}

QString ZblFixture::writeLines(const QString& name, const QStringList& lines)
{
    return writeFile(name, crlfLines(lines));
}

Int16 ZblFixture::openZbl(const QString& path)
{
    SequentialFiles& files = SequentialFiles::instance();
    const Int16 no = files.freeFile();
    files.open(no, path, SequentialFiles::Mode::Input);
    appState().ZblTestFilePath = Dynamic(path);
    appState().ZblTestFileNo = Dynamic(static_cast<double>(no));
    return no;
}

int ZblFixture::readZbl(const QString& path)
{
    openZbl(path);
    ZblReportFill& r = report();
    return failureOf([&r] {
        ClearZBLChannelTables();
        ClearZBLCompensedColumns(r);
        ClearZBLRowLines();
        ClearZBLCompensedColumns(r);
        ReadZBLFile();
        FillZBLHeaderControls(r);
    });
}

int ZblFixture::loadZbl(const QString& path)
{
    const int failure = readZbl(path);
    if (failure != 0)
        return failure;
    ZblReportFill& r = report();
    return failureOf([&r] {
        ParseZBLTableLines();
        FillZBLTapControls(r);
        SetZBLCompensationFromFile(QStringLiteral("ZBL"), r);
    });
}

int ZblFixture::loadLines(const QStringList& lines, const QString& name)
{
    return loadZbl(writeLines(name, lines));
}

ZblTestRecord& ZblFixture::record()
{
    return zblTestRecord();
}

} // namespace quenby::testing

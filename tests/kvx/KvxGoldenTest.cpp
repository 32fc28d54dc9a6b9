// Each committed sample read through the reader and dumped, compared byte for
// byte with its golden dump in tests/data/kvx.
//
// How the goldens were made: the dump tool on each sample, with the language
// file of this folder,
//     quenby-kvx-dump --lang tests/data/kvx/golden-en.lng samples/<name>.txt
//         > tests/data/kvx/<name>.dump
// and then checked by hand against the sample file: the header values and the
// date gap, each slot against its table row (pairs out of order, "---" read
// empty, the "ohm " unit, the dropped rows), the first and last points of
// every curve and the points of 0.75 A and 1 A, the flat ends after the last
// point, 0.0001 at index 0 and in slots without data, and the insulation head.
// A change to the reader that alters a dump needs the same check again.
#include "kvx/model/KvxCondensedReportModel.h"
#include "kvx/model/KvxRecordDump.h"
#include "shell/model/AppState.h"
#include "shell/model/Platform.h"
#include "tests/kvx/KvxTestSupport.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

using namespace quenby;
using namespace quenby::testing;

namespace {

class kvxGolden : public KvxFixture, public ::testing::WithParamInterface<const char*>
{
protected:
    void SetUp() override
    {
        KvxFixture::SetUp();
        setAppPathOverride(testDataPath(QStringLiteral("kvx")));
        appState().LangFilePath = testDataPath(QStringLiteral("kvx/golden-en.lng"));
    }
};

} // namespace

TEST_P(kvxGolden, DumpOfTheSampleMatchesItsGoldenFile)
{
    const QString name = QString::fromLatin1(GetParam());
    ASSERT_EQ(readKvx(samplePath(name + QStringLiteral(".txt"))), 0);
    const QByteArray dump = dumpKvxTestRecord(record(), kvxCondensedReport()).toUtf8();
    const QByteArray golden = readBytes(testDataPath(QStringLiteral("kvx/") + name + ".dump"));
    EXPECT_EQ(dump.size(), golden.size());
    // Line by line first, so that a difference shows where it is.
    const QList<QByteArray> got = dump.split('\n');
    const QList<QByteArray> want = golden.split('\n');
    for (qsizetype i = 0; i < std::min(got.size(), want.size()); ++i) {
        if (got[i] != want[i]) {
            ADD_FAILURE() << "line " << i + 1 << ":\n  got  " << got[i].toStdString() << "\n  want "
                          << want[i].toStdString();
            break;
        }
    }
    EXPECT_TRUE(dump == golden);
}

INSTANTIATE_TEST_SUITE_P(Samples, kvxGolden,
                         ::testing::Values("kvx-ten-taps", "kvx-ten-taps-no-stamp",
                                           "kvx-out-of-order", "kvx-july-error-phase",
                                           "kvx-x2-x4-only"),
                         [](const ::testing::TestParamInfo<const char*>& info) {
                             std::string n = info.param;
                             for (char& c : n)
                                 if (c == '-')
                                     c = '_';
                             return n;
                         });

TEST(kvxDump, ShowsTrailingBlanksAndEscapesControlCharacters)
{
    KvxTestRecord r;
    KvxCondensedReportModel report;
    r.taps[0].insulation = QStringLiteral(">1Gohm ");
    r.rawNotes = QStringLiteral("a\"b\\c\r\n\x01");
    r.lastReference = Dynamic(3.0);
    r.instrumentSerial = Dynamic(QStringLiteral("KVX-1"));
    report.lbInsulationResistanceTest(0) = QStringLiteral("Ins  ");
    const QString dump = dumpKvxTestRecord(r, report);
    EXPECT_TRUE(dump.contains(QStringLiteral("\n  insulation: \">1Gohm \"\n")));
    EXPECT_TRUE(dump.contains(QStringLiteral("rawNotes: \"a\\\"b\\\\c\\r\\n\\x01\"\n")));
    EXPECT_TRUE(dump.contains(QStringLiteral("lastReference: number 3\n")));
    EXPECT_TRUE(dump.contains(QStringLiteral("instrumentSerial: text \"KVX-1\"\n")));
    EXPECT_TRUE(dump.contains(QStringLiteral("lbInsulationResistanceTest(0): \"Ins  \"\n")));
    EXPECT_TRUE(dump.contains(QStringLiteral("  119 0 0\n")));
    EXPECT_EQ(dump.count(QStringLiteral("curve: pointCount")), 10);
}

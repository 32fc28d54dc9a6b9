// Each committed ZBL sample read through the open command's order of calls
// and dumped, record and report, compared byte for byte with its golden dump
// in tests/data/zbl.
//
// How the goldens were made: the dump tool on each sample, run inside the
// samples folder so that the path in the dump is the bare file name,
//     cd samples && ../build/bin/quenby-zbl-dump <name>.zbl
//         > ../tests/data/zbl/<name>.dump
// and then checked by hand against the sample file: the ten header values
// and the empty mode of a saved file; each stored line against the file
// (rows, then the closing rule and "Fin de Fichier", or the empty line and
// the compensation lines, and nothing past element 121); each row's tokens,
// the resistance numbers in their shortest form, "OFF" as one token and the
// shifted fields of the "OVER" rows, currents with their unit ("10 A",
// "100 mA"), the bare " 1500" taking the interval along, the zero current;
// "NAV", empty or found compensation values; and on the report the copied
// head and cells, "---" in the compensated columns, and the dialog's TK, TS
// and TM where a compensation was applied. A change to the reader that
// alters a dump needs the same check again.
#include "shell/model/AppState.h"
#include "tests/support/TestFiles.h"
#include "tests/zbl/ZblTestSupport.h"
#include "zbl/model/ZblRecordDump.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace quenby;
using namespace quenby::testing;

namespace {

class zblGolden : public ZblFixture, public ::testing::WithParamInterface<const char*>
{
protected:
    void SetUp() override
    {
        ZblFixture::SetUp();
        m_previous = QDir::currentPath();
        ASSERT_TRUE(QDir::setCurrent(samplePath(QString())));
    }
    void TearDown() override
    {
        QDir::setCurrent(m_previous);
        ZblFixture::TearDown();
    }

    QString m_previous;
};

} // namespace

TEST_P(zblGolden, DumpOfTheSampleMatchesItsGoldenFile)
{
    const QString name = QString::fromLatin1(GetParam());
    ASSERT_EQ(loadZbl(name + QStringLiteral(".zbl")), 0);
    const QByteArray dump = (dumpZblTestRecord(record()) + dumpZblReportFill(report())).toUtf8();
    const QByteArray golden = readBytes(testDataPath(QStringLiteral("zbl/") + name + ".dump"));
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

INSTANTIATE_TEST_SUITE_P(Samples, zblGolden,
                         ::testing::Values("zbl-manual-19-rows", "zbl-timed-20-rows",
                                           "zbl-autotc-23-rows", "zbl-manual-24-rows-channel-b-off",
                                           "zbl-timed-46-rows-over", "zbl-autotc-122-rows",
                                           "zbl-no-rows", "zbl-saved-compensated",
                                           "zbl-saved-no-values", "zbl-saved-comma-key",
                                           "zbl-saved-121-rows"),
                         [](const ::testing::TestParamInfo<const char*>& info) {
                             std::string n = info.param;
                             for (char& c : n)
                                 if (c == '-')
                                     c = '_';
                             return n;
                         });

TEST(zblDump, ShowsTrailingBlanksAndEscapesControlCharacters)
{
    auto r = std::make_unique<ZblTestRecord>();
    r->SerialText = QStringLiteral("SN 1  ");
    r->NotesText = QStringLiteral("a\"b\\c\r\n\x01");
    r->IntervalSeconds[0] = 2.5;
    const QString dump = dumpZblTestRecord(*r);
    EXPECT_TRUE(dump.contains(QStringLiteral("SerialText: \"SN 1  \"\n")));
    EXPECT_TRUE(dump.contains(QStringLiteral("NotesText: \"a\\\"b\\\\c\\r\\n\\x01\"\n")));
    EXPECT_TRUE(dump.contains(
        QStringLiteral("row 0: \"\" \"\" \"\" | \"\" \"\" \"\" | \"\" 2.5 \"\" | 0 0\n")));
    EXPECT_FALSE(dump.contains(QStringLiteral("row 122")));
    EXPECT_TRUE(dump.contains(QStringLiteral("row 121:")));
}

// The committed ZBL sample files against the layout of a ZBL test file, and
// the writer rules that produced them: the uploaded kind and the saved kind,
// Windows-1252 with CR LF, rows in print zones of 14 columns.
#include "shell/model/CodePage.h"
#include "tests/support/TestFiles.h"
#include "tests/zbl/ZblTestSupport.h"
#include "tools/zblsamples/ZblSampleWriter.h"

#include <gtest/gtest.h>

using namespace quenby;
using namespace quenby::testing;
using namespace quenby::samples;

namespace {

struct Sample
{
    const char* name;
    const char* mode; // "" for a saved file
    int rows;
};

const Sample Samples[] = {
    {"zbl-manual-19-rows.zbl", "Manual", 19},
    {"zbl-timed-20-rows.zbl", "Timed", 20},
    {"zbl-autotc-23-rows.zbl", "Auto T/C", 23},
    {"zbl-manual-24-rows-channel-b-off.zbl", "Manual", 24},
    {"zbl-timed-46-rows-over.zbl", "Timed", 46},
    {"zbl-autotc-122-rows.zbl", "Auto T/C", 122},
    {"zbl-no-rows.zbl", "Timed", 0},
    {"zbl-saved-compensated.zbl", "", 12},
    {"zbl-saved-no-values.zbl", "", 6},
    {"zbl-saved-comma-key.zbl", "", 6},
    {"zbl-saved-121-rows.zbl", "", 121},
};

const QStringList Labels = {"Date/Time:    ", "Mode:         ", "Serial:       ",
                            "Company:      ", "Manufacturer: ", "Operator:     "};

// The file's lines, after checking that every line ends in CR LF and no
// other CR or LF stands anywhere.
QStringList linesOf(const QByteArray& bytes, const std::string& name)
{
    EXPECT_TRUE(bytes.endsWith("\r\n")) << name;
    QStringList lines;
    qsizetype start = 0;
    while (start < bytes.size()) {
        const qsizetype cr = bytes.indexOf('\r', start);
        EXPECT_GE(cr, 0) << name;
        if (cr < 0)
            break;
        EXPECT_EQ(bytes.mid(cr, 2), QByteArray("\r\n")) << name;
        const QByteArray line = bytes.mid(start, cr - start);
        EXPECT_EQ(line.indexOf('\n'), -1) << name;
        lines << decodeText(line, CodePage::Windows1252);
        start = cr + 2;
    }
    return lines;
}

QStringList sampleLines(const char* name)
{
    return linesOf(readBytes(samplePath(QString::fromLatin1(name))), name);
}

QString rightTrimmed(const QString& text)
{
    qsizetype end = text.size();
    while (end > 0 && text[end - 1] == u' ')
        --end;
    return text.left(end);
}

// A row of short fields: each of the ten in its own zone. The row must be
// exactly what the print-zone rule makes of those fields.
QStringList zoneFields(const QString& row)
{
    QStringList fields;
    for (int k = 0; k < 10; ++k)
        fields << rightTrimmed(row.mid(14 * k, 14));
    return fields;
}

} // namespace

TEST(zblSamples, EveryLineEndsInCrLfAndTheTextIsWindows1252)
{
    for (const Sample& s : Samples) {
        SCOPED_TRACE(s.name);
        const QByteArray bytes = readBytes(samplePath(QString::fromLatin1(s.name)));
        linesOf(bytes, s.name);
        // The only byte above 127 is the micro sign, one byte 0xB5.
        for (const char c : bytes) {
            const auto b = static_cast<unsigned char>(c);
            if (b >= 0x80) {
                EXPECT_EQ(b, 0xB5);
            }
        }
    }
    // The micro sign stands in the files of micro-ohm readings.
    EXPECT_TRUE(
        readBytes(samplePath(QStringLiteral("zbl-manual-19-rows.zbl"))).contains("\xB5Ohm"));
    EXPECT_TRUE(
        readBytes(samplePath(QStringLiteral("zbl-saved-compensated.zbl"))).contains("\xB5Ohm"));
}

TEST(zblSamples, UploadedFilesFollowTheUploadLayout)
{
    for (const Sample& s : Samples) {
        if (*s.mode == '\0')
            continue;
        SCOPED_TRACE(s.name);
        const QStringList lines = sampleLines(s.name);
        const QString mode = QString::fromLatin1(s.mode);
        ASSERT_EQ(lines.size(), 15 + s.rows + 1);
        EXPECT_EQ(lines[0], QString(mode == QLatin1String("Manual") ? 76 : 88, u'-'));
        EXPECT_EQ(lines[1], QStringLiteral("ZBL Report    "));
        EXPECT_TRUE(lines[2].startsWith(Labels[0]));
        EXPECT_EQ(lines[3], Labels[1] + mode);
        EXPECT_TRUE(lines[4].startsWith(Labels[2]));
        EXPECT_TRUE(lines[5].startsWith(Labels[3]));
        EXPECT_TRUE(lines[6].startsWith(QStringLiteral("Station:      ")));
        EXPECT_TRUE(lines[7].startsWith(QStringLiteral("Designation:  ")));
        EXPECT_TRUE(lines[8].startsWith(Labels[4]));
        EXPECT_TRUE(lines[9].startsWith(Labels[5]));
        EXPECT_TRUE(lines[10].startsWith(QStringLiteral("Temperature:  ")));
        EXPECT_TRUE(lines[11].startsWith(QStringLiteral("Notes:        ")));
        // Every value begins at the fifteenth character.
        for (int n = 2; n <= 11; ++n)
            EXPECT_NE(lines[n][14], u' ') << n;
        EXPECT_EQ(lines[12], zblRule());
        EXPECT_EQ(lines[13], QString::fromLatin1(ZblTableHead));
        EXPECT_EQ(lines[13].size(), 136);
        EXPECT_EQ(lines[14], zblRule());
        EXPECT_EQ(lines.last(), zblRule());
    }
}

TEST(zblSamples, SavedFilesFollowTheSaveLayout)
{
    for (const Sample& s : Samples) {
        if (*s.mode != '\0')
            continue;
        SCOPED_TRACE(s.name);
        const QStringList lines = sampleLines(s.name);
        ASSERT_EQ(lines.size(), 15 + s.rows + 3);
        EXPECT_EQ(lines[0], QString(88, u'-'));
        EXPECT_EQ(lines[1], QStringLiteral("ZBL Report"));
        EXPECT_EQ(lines[3], QStringLiteral("Mode:         "));
        EXPECT_EQ(lines[12], zblRule());
        EXPECT_EQ(lines[13], QString::fromLatin1(ZblTableHead));
        EXPECT_EQ(lines[14], zblRule());
        EXPECT_EQ(lines[15 + s.rows], QString());
        const QString& factor = lines[15 + s.rows + 1];
        const QString& compensed = lines[15 + s.rows + 2];
        if (QByteArray(s.name) == "zbl-saved-comma-key.zbl") {
            EXPECT_EQ(factor, QStringLiteral("TEMP COMPENSATION FACTOR:,Alluminium (TK=225)"));
            EXPECT_EQ(compensed, QStringLiteral("TEMP COMPENSED:,85"));
        } else {
            // The value's zone begins at column 28; an empty value leaves
            // the key's zone padded.
            EXPECT_EQ(factor.left(28), QStringLiteral("TEMP COMPENSATION FACTOR:   "));
            EXPECT_EQ(compensed.left(28), QStringLiteral("TEMP COMPENSED:             "));
        }
    }
    EXPECT_EQ(sampleLines("zbl-saved-no-values.zbl").mid(21),
              (QStringList{QString(), QStringLiteral("TEMP COMPENSATION FACTOR:   "),
                           QStringLiteral("TEMP COMPENSED:             ")}));
}

TEST(zblSamples, RowsLieInPrintZones)
{
    for (const Sample& s : Samples) {
        SCOPED_TRACE(s.name);
        const QStringList lines = sampleLines(s.name);
        for (int i = 0; i < s.rows; ++i) {
            const QString& row = lines[15 + i];
            const QStringList fields = zoneFields(row);
            EXPECT_EQ(fields[0], QStringLiteral("-")) << i;
            EXPECT_EQ(zonedRow(fields.mid(1)), row) << i;
            for (const QString& field : fields)
                EXPECT_FALSE(field.trimmed().isEmpty()) << i;
        }
    }
}

TEST(zblSamples, SamplesHoldTheFormsTheReaderMustMeet)
{
    const QStringList manual = sampleLines("zbl-manual-19-rows.zbl");
    EXPECT_EQ(zoneFields(manual[15])[3], QString::fromUtf8("436.49 mOhm"));
    EXPECT_EQ(zoneFields(manual[15])[6], QString::fromUtf8("845.30 µOhm"));
    EXPECT_EQ(zoneFields(manual[15])[7], QStringLiteral("10A"));
    EXPECT_EQ(zoneFields(manual[15])[8], QStringLiteral(" 5sec"));
    EXPECT_EQ(zoneFields(manual[24])[1], QStringLiteral("N_10"));

    const QStringList timed = sampleLines("zbl-timed-20-rows.zbl");
    EXPECT_EQ(zoneFields(timed[15])[7], QStringLiteral("1A"));
    EXPECT_EQ(zoneFields(timed[16])[7], QStringLiteral("100mA"));

    const QStringList autoTc = sampleLines("zbl-autotc-23-rows.zbl");
    EXPECT_EQ(zoneFields(autoTc[15])[7], QStringLiteral(" 1500"));
    EXPECT_EQ(zoneFields(autoTc[37])[7], QStringLiteral("10mA"));

    const QStringList off = sampleLines("zbl-manual-24-rows-channel-b-off.zbl");
    EXPECT_EQ(zoneFields(off[15]).mid(4, 3), (QStringList{"---", "-", "OFF"}));

    const QStringList over = sampleLines("zbl-timed-46-rows-over.zbl");
    EXPECT_EQ(zoneFields(over[15 + 4])[3], QStringLiteral("OVER"));
    EXPECT_EQ(zoneFields(over[15 + 29])[3], QStringLiteral("OVER"));
    EXPECT_EQ(zoneFields(over[15 + 6])[6], QStringLiteral("OVER"));

    const QStringList big = sampleLines("zbl-autotc-122-rows.zbl");
    EXPECT_EQ(zoneFields(big[15])[7], QStringLiteral(" 0"));
    EXPECT_EQ(zoneFields(big[15 + 40])[7], QStringLiteral("10mA"));

    const QStringList saved = sampleLines("zbl-saved-compensated.zbl");
    EXPECT_EQ(zoneFields(saved[15])[7], QStringLiteral("10 A"));
    EXPECT_EQ(zoneFields(saved[15])[8], QStringLiteral("5"));
    EXPECT_EQ(zoneFields(saved[18])[7], QStringLiteral("100 mA"));
}

// ---- The upload's writer rules -------------------------------------------

class zblUploadWriter : public ZblFixture
{
protected:
    ZblUploadFile oneReading(double milliamperes)
    {
        ZblUploadFile f;
        ZblUploadReading r;
        r.tapA = r.tapB = QStringLiteral("1");
        r.windingA1 = QStringLiteral("H1");
        r.windingA2 = QStringLiteral("H2");
        r.windingB1 = QStringLiteral("X1");
        r.windingB2 = QStringLiteral("X2");
        r.resistanceA = QStringLiteral("1.5 mO");
        r.resistanceB = QStringLiteral("2.5 mO");
        r.currentMilliamperes = milliamperes;
        f.readings.push_back(r);
        return f;
    }
    QStringList written(const ZblUploadFile& f, const QString& name = QStringLiteral("w.zbl"))
    {
        const QString path = m_dir.filePath(name);
        EXPECT_EQ(writeUploadedZblFile(path, f), 0);
        return linesOf(readBytes(path), name.toStdString());
    }
};

TEST_F(zblUploadWriter, CurrentRangesAreLabelledByExactEquality)
{
    EXPECT_EQ(zoneFields(written(oneReading(1000))[15])[7], QStringLiteral("1A"));
    EXPECT_EQ(zoneFields(written(oneReading(10000))[15])[7], QStringLiteral("10A"));
    EXPECT_EQ(zoneFields(written(oneReading(100))[15])[7], QStringLiteral("100mA"));
    EXPECT_EQ(zoneFields(written(oneReading(10))[15])[7], QStringLiteral("10mA"));
    EXPECT_EQ(zoneFields(written(oneReading(1500))[15])[7], QStringLiteral(" 1500"));
    EXPECT_EQ(zoneFields(written(oneReading(0))[15])[7], QStringLiteral(" 0"));

    // Read back: the labelled current is one token, the bare one takes the
    // interval along, zero stands alone.
    ASSERT_EQ(loadZbl(m_dir.filePath(QStringLiteral("w.zbl"))), 0);
    EXPECT_EQ(record().CurrentText[0], QStringLiteral("0"));
    EXPECT_EQ(record().IntervalSeconds[0], 5.0);
}

TEST_F(zblUploadWriter, ModeDecidesTheHyphensAndTheModeText)
{
    ZblUploadFile f = oneReading(10000);
    f.mode = 0;
    QStringList lines = written(f);
    EXPECT_EQ(lines[0], QString(76, u'-'));
    EXPECT_EQ(lines[3], QStringLiteral("Mode:         Manual"));
    f.mode = 1;
    lines = written(f);
    EXPECT_EQ(lines[0], QString(88, u'-'));
    EXPECT_EQ(lines[3], QStringLiteral("Mode:         Timed"));
    for (int mode : {2, 7, -1}) {
        f.mode = mode;
        lines = written(f);
        EXPECT_EQ(lines[0], QString(88, u'-')) << mode;
        EXPECT_EQ(lines[3], QStringLiteral("Mode:         Auto T/C")) << mode;
    }
    ASSERT_EQ(loadZbl(m_dir.filePath(QStringLiteral("w.zbl"))), 0);
    EXPECT_EQ(record().ModeText, QStringLiteral("Auto T/C"));
}

TEST_F(zblUploadWriter, DateLineHasNoBlankAfterTheMonth)
{
    ZblUploadFile f = oneReading(10000);
    f.day = 3, f.month = 5, f.year = 14, f.hour = 9, f.minute = 8, f.second = 7;
    EXPECT_EQ(written(f)[2], QStringLiteral("Date/Time:    3 May2014   09:08:07"));
    f.day = 15, f.month = 11, f.year = 24, f.hour = 9, f.minute = 7, f.second = 33;
    EXPECT_EQ(written(f)[2], QStringLiteral("Date/Time:    15 Nov.2024   09:07:33"));
}

TEST_F(zblUploadWriter, BlanksOfTapsAndWindingsBecomeUnderscores)
{
    ZblUploadFile f = oneReading(10000);
    f.readings[0].tapA = QStringLiteral("N 10");
    f.readings[0].windingB1 = QStringLiteral("X 1");
    const QStringList lines = written(f);
    EXPECT_EQ(zoneFields(lines[15])[1], QStringLiteral("N_10"));
    EXPECT_EQ(zoneFields(lines[15])[5], QStringLiteral("X_1-X2"));
    // The resistance keeps its blank: number and unit are two tokens.
    EXPECT_EQ(zoneFields(lines[15])[3], QStringLiteral("1.5 mOhm"));
    ASSERT_EQ(loadZbl(m_dir.filePath(QStringLiteral("w.zbl"))), 0);
    EXPECT_EQ(record().TapA[0], QStringLiteral("N_10"));
    EXPECT_EQ(record().WindingB[0], QStringLiteral("X_1-X2"));
    EXPECT_EQ(report().cell(ZblReportColumn::TapA, 0), QStringLiteral("N_10"));
}

TEST_F(zblUploadWriter, EmptyFieldsBecomeDashesAndOffAndOverStay)
{
    ZblUploadFile f = oneReading(10000);
    f.readings[0].tapB.clear();
    f.readings[0].resistanceA = QStringLiteral("OVER");
    f.readings[0].resistanceB = QStringLiteral("OFF");
    const QStringList fields = zoneFields(written(f)[15]);
    EXPECT_EQ(fields[3], QStringLiteral("OVER"));
    EXPECT_EQ(fields[4], QStringLiteral("---"));
    EXPECT_EQ(fields[6], QStringLiteral("OFF"));
}

TEST_F(zblUploadWriter, NoReadingsGiveTheHeadAndTheClosingRule)
{
    ZblUploadFile f = oneReading(10000);
    f.readings.clear();
    const QStringList lines = written(f);
    ASSERT_EQ(lines.size(), 16);
    EXPECT_EQ(lines[14], zblRule());
    EXPECT_EQ(lines[15], zblRule());
}

TEST_F(zblUploadWriter, SecondUploadOfTheSameNameOverwritesTheFirst)
{
    ZblUploadFile first = oneReading(10000);
    first.readings.push_back(first.readings[0]);
    ZblUploadFile second = oneReading(100);
    written(first, QStringLiteral("1-7.zbl"));
    const QStringList lines = written(second, QStringLiteral("1-7.zbl"));
    EXPECT_EQ(lines.size(), 17);
    ASSERT_EQ(loadZbl(m_dir.filePath(QStringLiteral("1-7.zbl"))), 0);
    EXPECT_EQ(record().CurrentText[0], QStringLiteral("100 mA"));
    EXPECT_EQ(record().RowLine[1], zblRule());
}

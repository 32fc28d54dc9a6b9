// The committed sample files against the layout of a KVX test file, and the
// writer rules that produced them.
#include "shell/model/CodePage.h"
#include "tests/kvx/KvxTestSupport.h"
#include "tests/support/TestFiles.h"

#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace quenby;
using namespace quenby::testing;
using namespace quenby::samples;

namespace {

const QStringList SampleNames = {"kvx-ten-taps.txt", "kvx-ten-taps-no-stamp.txt",
                                 "kvx-out-of-order.txt", "kvx-july-error-phase.txt",
                                 "kvx-x2-x4-only.txt"};

const QString Head1 = QStringLiteral(
    " Ref.   Taps       N.P.     Calculated   Measured   Error     Phase     Polarity      Vs"
    "         Vs         Vs      Wdg. Res.   Insulation   Insulation");
const QString Head2 = QStringLiteral(
    " Test              Ratio     Ratio        Ratio       %       Angle      Status    IEEE 45"
    "   IEEE 30   IEC 10-50    (Ohms)       (Ohms)       (Volts) ");

// The sample's lines, after checking that every line ends in CR LF and no
// other CR or LF stands anywhere.
QStringList sampleLines(const QString& name)
{
    const QByteArray bytes = readBytes(samplePath(name));
    EXPECT_TRUE(bytes.endsWith("\r\n")) << name.toStdString();
    QStringList lines;
    qsizetype start = 0;
    while (start < bytes.size()) {
        const qsizetype cr = bytes.indexOf('\r', start);
        EXPECT_GE(cr, 0);
        if (cr < 0)
            break;
        EXPECT_EQ(bytes.mid(cr, 2), QByteArray("\r\n")) << name.toStdString();
        const QByteArray line = bytes.mid(start, cr - start);
        EXPECT_EQ(line.indexOf('\n'), -1) << name.toStdString();
        lines << decodeText(line, CodePage::Windows1252);
        start = cr + 2;
    }
    return lines;
}

class kvxSamples : public KvxFixture
{
};

} // namespace

TEST_F(kvxSamples, BannerHeaderAndTableHeadsFollowTheLayout)
{
    for (const QString& name : SampleNames) {
        SCOPED_TRACE(name.toStdString());
        QStringList lines = sampleLines(name);
        if (name != QLatin1String("kvx-ten-taps-no-stamp.txt")) {
            ASSERT_EQ(lines.value(0), QStringLiteral("[3,31,0,0]"));
            lines.removeFirst();
        }
        ASSERT_GE(lines.size(), 30);
        EXPECT_EQ(lines[0], QString(125, u'-'));
        EXPECT_EQ(lines[1], QStringLiteral("KVX LT Transformer Test Results"));
        EXPECT_EQ(lines[2], QString(125, u'-'));
        const char* labels[] = {
            "MCU  version:    ", "Acq  version:    ", "Kbd  version:    ", "Data version:    "};
        for (int i = 0; i < 4; ++i)
            EXPECT_TRUE(lines[3 + i].startsWith(QLatin1String(labels[i])));
        EXPECT_EQ(lines[7], QStringLiteral(" "));
        const char* header[] = {
            "Serial:          ", "Company:         ", "Station:         ", "Designation:     ",
            "Manufacturer:    ", "Operator:        ", "Temperature:     ", "Ratio:           ",
            "Voltage Rating:  ", "Class:           ", "Position:        ", "Phase:           ",
            "KVX S/N:         ", "Date:            ", "Time:            ", "Notes:           "};
        for (int i = 0; i < 16; ++i) {
            EXPECT_EQ(QString::fromLatin1(header[i]).size(), 17);
            EXPECT_TRUE(lines[8 + i].startsWith(QLatin1String(header[i]))) << i;
        }
        EXPECT_TRUE(QRegularExpression(QStringLiteral("^Time:            \\d\\d:\\d\\d:\\d\\d$"))
                        .match(lines[22])
                        .hasMatch());
        const qsizetype top = lines.indexOf(QString(149, u'-'));
        ASSERT_GT(top, 23);
        EXPECT_EQ(lines[top - 1], QString());
        EXPECT_EQ(lines[top + 1], Head1);
        EXPECT_EQ(lines[top + 1].size(), 151);
        EXPECT_EQ(lines[top + 2], Head2);
        EXPECT_EQ(lines[top + 2].size(), 150);
        EXPECT_EQ(lines[top + 3], QString(148, u'-'));
    }
}

TEST_F(kvxSamples, RowsPutEachFieldAtItsWriterColumn)
{
    for (const QString& name : SampleNames) {
        SCOPED_TRACE(name.toStdString());
        const QStringList lines = sampleLines(name);
        qsizetype i = lines.indexOf(QString(148, u'-')) + 1;
        int rows = 0;
        for (; i < lines.size() && !lines[i].isEmpty(); ++i, ++rows) {
            const QString& row = lines[i];
            EXPECT_EQ(row.mid(0, 1), QStringLiteral(" "));
            EXPECT_EQ(row.mid(1, 2), QStringLiteral("%1").arg(rows + 1, 2, 10, QLatin1Char('0')));
            // Each field starts at its column, or right behind a field that
            // ran past it.
            for (std::size_t c = 1; c < KvxWriterColumns.size(); ++c) {
                const int col = KvxWriterColumns[c];
                if (col >= row.size())
                    continue;
                const bool starts = row[col] != u' ' && row[col - 1] == u' ';
                const bool blankColumn =
                    row.mid(col,
                            (c + 1 < KvxWriterColumns.size() ? KvxWriterColumns[c + 1] : 200) - col)
                        .trimmed()
                        .isEmpty();
                const bool pushedOn = row[col] != u' ' && row[col - 1] != u' ';
                EXPECT_TRUE(starts || blankColumn || pushedOn) << row.toStdString() << " @" << col;
            }
        }
        EXPECT_GE(rows, 1);
        EXPECT_LE(rows, 10);
    }
}

TEST_F(kvxSamples, CurveBlocksHaveTheirHeadsAndCentredPoints)
{
    for (const QString& name : SampleNames) {
        SCOPED_TRACE(name.toStdString());
        const QStringList lines = sampleLines(name);
        int blocks = 0;
        for (qsizetype i = 0; i < lines.size(); ++i) {
            if (!lines[i].startsWith(QLatin1String("Ref Test #")))
                continue;
            ++blocks;
            EXPECT_EQ(lines[i - 1], QString());
            EXPECT_EQ(lines[i - 2], QString());
            EXPECT_EQ(lines[i + 1], QString(32, u'-'));
            EXPECT_EQ(lines[i + 2], QStringLiteral(" No.    Vx (volts)  Current (A)"));
            EXPECT_EQ(lines[i + 3], QString(32, u'-'));
            int number = 1;
            qsizetype p = i + 4;
            for (; p < lines.size() && !lines[p].isEmpty(); ++p, ++number) {
                const QStringList pieces = lines[p].split(u' ', Qt::SkipEmptyParts);
                ASSERT_EQ(pieces.size(), 3) << lines[p].toStdString();
                EXPECT_EQ(pieces[0].toInt(), number);
                EXPECT_GE(lines[p].size(), 31);
            }
            EXPECT_LE(number - 1, 119);
            ASSERT_LT(p, lines.size());
            EXPECT_EQ(lines[p], QString());
        }
        EXPECT_GE(blocks, 1);
    }
}

TEST_F(kvxSamples, TextIsWindows1252)
{
    const QByteArray outOfOrder = readBytes(samplePath("kvx-out-of-order.txt"));
    EXPECT_TRUE(outOfOrder.contains("Operator:        M. L\xe9vesque\r\n"));
    const QByteArray july = readBytes(samplePath("kvx-july-error-phase.txt"));
    EXPECT_TRUE(july.contains("Temperature:     17.0 \xb0"
                              "C\r\n"));
}

TEST_F(kvxSamples, TenTapSampleHasFullCurvesForEveryTap)
{
    const QStringList lines = sampleLines("kvx-ten-taps.txt");
    for (int n = 1; n <= 10; ++n) {
        const qsizetype head = lines.indexOf(QStringLiteral("Ref Test #%1").arg(n, 2));
        ASSERT_GT(head, 0) << n;
        EXPECT_TRUE(lines[head + 4 + 118].startsWith(QLatin1String("  119 ")));
        EXPECT_EQ(lines[head + 4 + 119], QString());
    }
}

TEST_F(kvxSamples, FileWithoutLineOneReadsTheSameAsOneWithIt)
{
    const QByteArray with = readBytes(samplePath("kvx-ten-taps.txt"));
    const QByteArray without = readBytes(samplePath("kvx-ten-taps-no-stamp.txt"));
    EXPECT_EQ(QByteArray("[3,31,0,0]\r\n") + without, with);

    ASSERT_EQ(readKvx(samplePath("kvx-ten-taps.txt")), 0);
    const KvxTestRecord a = record();
    ASSERT_EQ(readKvx(samplePath("kvx-ten-taps-no-stamp.txt")), 0);
    const KvxTestRecord& b = record();
    EXPECT_EQ(b.fileName, QStringLiteral("kvx-ten-taps-no-stamp.txt"));
    EXPECT_EQ(b.rawSerial, a.rawSerial);
    EXPECT_EQ(b.rawNotes, a.rawNotes);
    EXPECT_EQ(b.dateTime, a.dateTime);
    EXPECT_EQ(b.tableRows, a.tableRows);
    for (std::size_t i = 0; i < 10; ++i) {
        EXPECT_EQ(b.taps[i].tapName, a.taps[i].tapName);
        EXPECT_EQ(b.taps[i].insulation, a.taps[i].insulation);
        EXPECT_EQ(b.curves[i].volts, a.curves[i].volts);
        EXPECT_EQ(b.curves[i].current, a.curves[i].current);
        EXPECT_EQ(b.curves[i].pointCount, a.curves[i].pointCount);
    }
}

TEST_F(kvxSamples, ErrorPhaseRowHasThirteenFieldsAndABlankPolarityColumn)
{
    const QStringList lines = sampleLines("kvx-july-error-phase.txt");
    const QString row = lines[lines.indexOf(QString(148, u'-')) + 1];
    EXPECT_EQ(row.split(u' ', Qt::SkipEmptyParts).size(), 13);
    EXPECT_EQ(row.mid(61, 5), QStringLiteral("Error"));
    EXPECT_EQ(row.mid(66, 15).trimmed(), QString());
    ASSERT_EQ(readKvx(samplePath("kvx-july-error-phase.txt")), 0);
    EXPECT_EQ(slot(1).phaseAngle, QStringLiteral("Error"));
    EXPECT_EQ(slot(1).polarity, QString());
    EXPECT_EQ(slot(1).tapName, QStringLiteral("X1-X2"));
}

TEST_F(kvxSamples, CurrentsOfThreeQuartersAndOneAmpereReadAsWritten)
{
    EXPECT_EQ(kvxCurrentText(0.75), QStringLiteral("750.000m"));
    EXPECT_EQ(kvxCurrentText(1.0), QStringLiteral("1.000"));
    EXPECT_EQ(kvxCurrentText(0.0005), QStringLiteral("0.500m"));
    EXPECT_EQ(kvxPointLine(3, {5.5, 0.75}), QStringLiteral("  03      5.50      750.000m   "));
    const QStringList lines = sampleLines("kvx-ten-taps.txt");
    qsizetype threeQuarters = -1, one = -1;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QStringList p = lines[i].split(u' ', Qt::SkipEmptyParts);
        if (p.size() == 3 && p[2] == QLatin1String("750.000m") && threeQuarters < 0)
            threeQuarters = i;
        if (p.size() == 3 && p[2] == QLatin1String("1.000") && one < 0)
            one = i;
    }
    ASSERT_GT(threeQuarters, 0);
    ASSERT_GT(one, threeQuarters);
    ASSERT_EQ(readKvx(samplePath("kvx-ten-taps.txt")), 0);
    const int indexOfThreeQuarters =
        lines[threeQuarters].split(u' ', Qt::SkipEmptyParts)[0].toInt();
    const int indexOfOne = lines[one].split(u' ', Qt::SkipEmptyParts)[0].toInt();
    EXPECT_EQ(curve(1).current[static_cast<std::size_t>(indexOfThreeQuarters)], 750.0);
    EXPECT_EQ(curve(1).current[static_cast<std::size_t>(indexOfOne)], 1000.0);
}

TEST_F(kvxSamples, JulyDateHasNoBlankBetweenMonthAndYear)
{
    EXPECT_EQ(kvxMonthText(6), QStringLiteral("Jun. "));
    EXPECT_EQ(kvxMonthText(7), QStringLiteral("Jul."));
    EXPECT_EQ(kvxMonthText(12), QStringLiteral("Dec."));
    EXPECT_EQ(kvxMonthText(13), QString());
    const QStringList lines = sampleLines("kvx-july-error-phase.txt");
    EXPECT_GE(lines.indexOf(QStringLiteral("Date:            5 Jul.2024")), 0);
    EXPECT_GE(
        sampleLines("kvx-ten-taps.txt").indexOf(QStringLiteral("Date:            12 Mar. 2024")),
        0);
    ASSERT_EQ(readKvx(samplePath("kvx-july-error-phase.txt")), 0);
    EXPECT_EQ(record().dateTime, QStringLiteral("5 Jul.2024   14:30:07"));
}

TEST_F(kvxSamples, VsOfExactlyOneVoltReadsDashes)
{
    EXPECT_EQ(kvxVsText(1.0), QStringLiteral("---"));
    EXPECT_EQ(kvxVsText(0.5), QStringLiteral("---"));
    EXPECT_EQ(kvxVsText(1.004), QStringLiteral("1.00"));
    EXPECT_EQ(kvxVsText(82.0), QStringLiteral("82.00"));
    samples::KvxSampleFile f = smallSample();
    f.rows.resize(1);
    f.rows[0].fields[9] = kvxVsText(1.0);
    ASSERT_EQ(readLines(kvxSampleLines(f)), 0);
    EXPECT_EQ(slot(1).vsIeee30, QString());
    EXPECT_EQ(slot(1).vsIeee45, QStringLiteral("82.00"));
}

TEST_F(kvxSamples, NumberTextRoundsHalvesToEvenAndPadsShortFractions)
{
    EXPECT_EQ(kvxNumberText(2.5, 1, 0), QStringLiteral("2"));
    EXPECT_EQ(kvxNumberText(0.5, 5, 3), QStringLiteral("0.500"));
    EXPECT_EQ(kvxNumberText(12.34567, 4, 2), QStringLiteral("12.35"));
    EXPECT_EQ(kvxNumberText(-0.5, 6, 2), QStringLiteral(" 0-.50"));
    EXPECT_EQ(kvxNumberText(-0.2, 3, 1), QStringLiteral("-.2"));
    EXPECT_EQ(kvxNumberText(40, 5, 3), QStringLiteral("40.000"));
    EXPECT_EQ(kvxNumberText(0.1004, 7, 5), QStringLiteral("0.10040"));
    EXPECT_EQ(kvxCentred(QStringLiteral("No."), 6), QStringLiteral(" No.  "));
    EXPECT_EQ(kvxCentred(QStringLiteral("toolongtext"), 6), QStringLiteral("toolongtext"));
}

TEST_F(kvxSamples, FieldTextsFollowTheInstrumentsRules)
{
    EXPECT_EQ(kvxWindingText(0.0), QStringLiteral("---"));
    EXPECT_EQ(kvxWindingText(-1.0), QStringLiteral("Error"));
    EXPECT_EQ(kvxWindingText(20.0), QStringLiteral(">20"));
    EXPECT_EQ(kvxWindingText(0.6024), QStringLiteral("0.60240"));
    EXPECT_EQ(kvxInsulationText(0.0f), QStringLiteral("---"));
    EXPECT_EQ(kvxInsulationText(-5.0f), QStringLiteral("Error"));
    EXPECT_EQ(kvxInsulationText(1.5e9f), QStringLiteral(">1G"));
    EXPECT_EQ(kvxInsulationText(1.5e6f), QStringLiteral("<2M"));
    EXPECT_EQ(kvxInsulationText(123456789.0f), QStringLiteral("1.234568E+08"));
    EXPECT_EQ(kvxInsulationText(5.0e6f), QStringLiteral("5000000"));
    EXPECT_EQ(kvxMeasuredRatioText(0.9), QStringLiteral("---"));
    EXPECT_EQ(kvxErrorText(1000.5), QStringLiteral(">1000"));
}

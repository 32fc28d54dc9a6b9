// quenby-kvx-samples <folder>: writes the project's KVX sample test files into
// <folder>. The committed files under samples/ were made with it; tests read
// the committed files, never this program's output.
#include "tools/kvxsamples/KvxSampleWriter.h"

#include <QDir>
#include <QFile>

#include <cmath>
#include <cstdio>

using namespace quenby::samples;

namespace {

// A smooth excitation curve: the voltage rises steeply, bends near `knee`
// volts and keeps climbing slowly, while the current runs on a log scale
// from 0.2 mA to `topAmperes`.
std::vector<KvxSamplePoint> excitationCurve(int points, double knee, double bendAmperes,
                                            double topAmperes)
{
    std::vector<KvxSamplePoint> curve;
    const double bottom = 0.0002;
    for (int j = 0; j < points; ++j) {
        const double t = points > 1 ? static_cast<double>(j) / (points - 1) : 0.0;
        const double amperes = bottom * std::pow(topAmperes / bottom, t);
        const double volts =
            knee * 1.15 * (1.0 - std::exp(-amperes / bendAmperes)) + knee * 0.04 * amperes;
        curve.push_back({volts, amperes});
    }
    return curve;
}

// Puts `amperes` on the point whose current lies nearest to it.
void pinCurrent(std::vector<KvxSamplePoint>& curve, double amperes)
{
    std::size_t best = 0;
    for (std::size_t i = 1; i < curve.size(); ++i)
        if (std::fabs(curve[i].amperes - amperes) < std::fabs(curve[best].amperes - amperes))
            best = i;
    curve[best].amperes = amperes;
}

QString two(int n)
{
    return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'));
}

struct TapValues
{
    QString pair;
    int primary = 0;     // nominal primary amperes, secondary 5 A
    double measured = 0; // measured ratio
    double phase = 0;
    bool positive = true;
    double vs45 = 0, vs30 = 0, vs1050 = 0;
    double winding = 0;
    float insulation = 0;
    QString insulationVolts;
};

// A row as the instrument prints a complete test of one tap pair.
KvxSampleRow measuredRow(int reference, const TapValues& v)
{
    KvxSampleRow row;
    const double calculated = v.primary / 5.0;
    const double error = (v.measured - calculated) / calculated * 100.0;
    row.fields = {two(reference),
                  v.pair,
                  QStringLiteral("%1:5").arg(v.primary),
                  kvxNumberText(calculated, 1, 0),
                  kvxMeasuredRatioText(v.measured),
                  kvxErrorText(error),
                  kvxNumberText(v.phase, 3, 1),
                  v.positive ? QStringLiteral("POS") : QStringLiteral("NEG"),
                  kvxVsText(v.vs45),
                  kvxVsText(v.vs30),
                  kvxVsText(v.vs1050),
                  kvxWindingText(v.winding),
                  kvxInsulationText(v.insulation),
                  v.insulationVolts};
    return row;
}

KvxSampleRow withCurve(KvxSampleRow row, const QString& blockNumber,
                       std::vector<KvxSamplePoint> curve)
{
    row.blockNumber = blockNumber;
    row.curve = std::move(curve);
    return row;
}

// The instrument's block number: a blank where a leading zero would be.
QString blankPadded(int n)
{
    return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char(' '));
}

// A multi-ratio 1200:5 current transformer; the taps' knee voltages and
// winding resistances follow their turns.
TapValues multiRatioTap(const char* pair, int primary)
{
    const double turns = primary / 5.0;
    TapValues v;
    v.pair = QString::fromLatin1(pair);
    v.primary = primary;
    v.measured = turns * (1.0 - 0.003 + primary * 4e-6);
    v.phase = 0.1 + primary / 12000.0;
    v.vs45 = turns * 2.05;
    v.vs30 = turns * 2.21;
    v.vs1050 = turns * 2.38;
    v.winding = turns * 0.00251;
    v.insulation = 2.5e9f;
    v.insulationVolts = QStringLiteral("1000");
    return v;
}

KvxSampleFile tenTaps()
{
    KvxSampleFile f;
    f.serial = QStringLiteral("MR-1200-0457");
    f.company = QStringLiteral("Northfield Power Cooperative");
    f.station = QStringLiteral("Elm Creek 138 kV");
    f.designation = QStringLiteral("BKR 52-T2 bushing CT H1");
    f.manufacturer = QStringLiteral("Harwell Instruments");
    f.operatorName = QStringLiteral("D. Okafor");
    f.temperature = QStringLiteral("21.5 C");
    f.ratio = QStringLiteral("1200:5");
    f.voltageRating = QStringLiteral("C400");
    f.testClass = QStringLiteral("C400");
    f.position = QStringLiteral("H1");
    f.phase = QStringLiteral("A");
    f.instrumentSerial = QStringLiteral("KVX-20417");
    f.day = 12;
    f.month = 3;
    f.year = 2024;
    f.hour = 9;
    f.minute = 5;
    f.second = 0;
    f.notes = QStringList{QStringLiteral("Routine test after breaker overhaul.")};

    const struct
    {
        const char* pair;
        int primary;
    } taps[] = {{"X1-X2", 200}, {"X1-X3", 300},  {"X1-X4", 800}, {"X1-X5", 1200}, {"X2-X3", 100},
                {"X2-X4", 600}, {"X2-X5", 1000}, {"X3-X4", 500}, {"X3-X5", 900},  {"X4-X5", 400}};
    const float insulations[] = {1.5e9f, 1.5e8f, 1.5e6f, -1.0f,  0.0f,
                                 5.0e6f, 8.5e8f, 2.5e9f, 4.0e8f, 3.0e9f};
    int reference = 1;
    for (const auto& tap : taps) {
        TapValues v = multiRatioTap(tap.pair, tap.primary);
        v.insulation = insulations[reference - 1];
        v.insulationVolts = reference % 3 == 0 ? QStringLiteral("500") : QStringLiteral("1000");
        auto curve = excitationCurve(119, v.vs45 / 0.82, 0.004 + tap.primary * 1e-6, 2.0);
        if (reference == 1) {
            pinCurrent(curve, 0.75);
            pinCurrent(curve, 1.0);
        }
        f.rows.push_back(withCurve(measuredRow(reference, v), blankPadded(reference), curve));
        ++reference;
    }
    return f;
}

KvxSampleFile outOfOrder()
{
    KvxSampleFile f;
    f.serial = QStringLiteral("RL-600-1182");
    f.company = QStringLiteral("Baie-Verte Hydro");
    f.station = QStringLiteral("Poste Lac-Noir");
    f.designation = QStringLiteral("T1 LV neutral CT");
    f.manufacturer = QStringLiteral("Corvane Electric");
    f.operatorName = QStringLiteral("M. Lévesque");
    f.temperature = QStringLiteral("8 C");
    f.ratio = QStringLiteral("600:5");
    f.voltageRating = QStringLiteral("C200");
    f.testClass = QStringLiteral("C200");
    f.position = QStringLiteral("X0");
    f.phase = QStringLiteral("N");
    f.instrumentSerial = QStringLiteral("KVX-19873");
    f.day = 3;
    f.month = 11;
    f.year = 2023;
    f.hour = 16;
    f.minute = 42;
    f.second = 51;
    f.notes = QStringList{QStringLiteral("Taps tested in field order; X3-X5 insulation high.")};

    TapValues x2x3 = multiRatioTap("X2-X3", 100);
    x2x3.insulationVolts = QStringLiteral("500");
    TapValues x1x2 = multiRatioTap("X1-X2", 200);
    x1x2.insulationVolts = QStringLiteral("500");
    x1x2.insulation = 6.0e6f;
    TapValues x4x5 = multiRatioTap("X4-X5", 400);
    x4x5.insulationVolts = QStringLiteral("---");
    TapValues x1x3 = multiRatioTap("X1-X3", 300);
    x1x3.insulationVolts = QStringLiteral("500");
    TapValues x3x5 = multiRatioTap("X3-X5", 900);
    x3x5.insulation = 123456789.0f; // seven digits in exponent form: runs into the next column
    x3x5.insulationVolts = QStringLiteral("500");
    TapValues x2x4 = multiRatioTap("X2-X4", 600);
    x2x4.measured = 1350.5; // a wrong connection: the error runs past 1000 %
    x2x4.positive = false;
    x2x4.winding = 27.0;
    x2x4.insulationVolts = QStringLiteral("500");

    f.rows.push_back(withCurve(measuredRow(1, x2x3), QStringLiteral(" 1"),
                               excitationCurve(96, 25.0, 0.004, 1.5)));
    f.rows.push_back(withCurve(measuredRow(2, x1x2), QStringLiteral("02"),
                               excitationCurve(100, 50.0, 0.005, 1.5)));
    // No excitation test on this tap: phase, polarity and knee columns empty.
    KvxSampleRow noExcitation = measuredRow(3, x4x5);
    for (std::size_t i : {6, 7, 8, 9, 10})
        noExcitation.fields[i] = QStringLiteral("---");
    f.rows.push_back(noExcitation);
    // Ratio not measured on this tap.
    KvxSampleRow noRatio = measuredRow(4, x1x3);
    noRatio.fields[4] = QStringLiteral("---");
    noRatio.fields[5] = QStringLiteral("---");
    f.rows.push_back(
        withCurve(noRatio, QStringLiteral(" 4"), excitationCurve(88, 75.0, 0.006, 1.5)));
    f.rows.push_back(withCurve(measuredRow(5, x3x5), QStringLiteral("05"),
                               excitationCurve(110, 220.0, 0.008, 2.0)));
    f.rows.push_back(withCurve(measuredRow(6, x2x4), QStringLiteral(" 6"),
                               excitationCurve(119, 150.0, 0.007, 2.0)));
    return f;
}

KvxSampleFile julyErrorPhase()
{
    KvxSampleFile f;
    f.serial = QStringLiteral("BT-2000-0093");
    f.company = QStringLiteral("Tasman Grid Services");
    f.station = QStringLiteral("Rivermouth 66 kV");
    f.designation = QStringLiteral("GT3 HV bushing CT");
    f.manufacturer = QStringLiteral("Oakridge Transformers");
    f.operatorName = QStringLiteral("S. Whitcombe");
    f.temperature = QStringLiteral("17.0 °C");
    f.ratio = QStringLiteral("2000:5");
    f.voltageRating = QStringLiteral("C800");
    f.testClass = QStringLiteral("C800");
    f.position = QStringLiteral("H2");
    f.phase = QStringLiteral("B");
    f.instrumentSerial = QStringLiteral("KVX-21005");
    f.day = 5;
    f.month = 7;
    f.year = 2024;
    f.hour = 14;
    f.minute = 30;
    f.second = 7;
    f.notes = QStringList{QStringLiteral("Phase reading failed on X1-X2; "),
                          QStringLiteral("lead to X2 found loose and retightened, "),
                          QStringLiteral("retest booked for August.")};

    // Phase exactly 90 is the instrument's failed phase reading: "Error", and
    // nothing at all in the polarity column.
    TapValues x1x2 = multiRatioTap("X1-X2", 400);
    x1x2.insulationVolts = QStringLiteral("---");
    KvxSampleRow errorRow = measuredRow(1, x1x2);
    errorRow.fields[6] = QStringLiteral("Error");
    errorRow.fields[7].clear();
    f.rows.push_back(
        withCurve(errorRow, QStringLiteral(" 1"), excitationCurve(119, 98.0, 0.005, 2.0)));

    // The instrument writes large knee voltages in kilovolts and small ones in
    // millivolts.
    TapValues x1x3 = multiRatioTap("X1-X3", 2000);
    KvxSampleRow kilo = measuredRow(2, x1x3);
    kilo.fields[8] = QStringLiteral("1.52k");
    kilo.fields[9] = QStringLiteral("1.64k");
    kilo.fields[10] = QStringLiteral("1.77k");
    f.rows.push_back(
        withCurve(kilo, QStringLiteral(" 2"), excitationCurve(119, 1850.0, 0.02, 2.0)));

    TapValues x2x3 = multiRatioTap("X2-X3", 100);
    KvxSampleRow milli = measuredRow(3, x2x3);
    milli.fields[8] = QStringLiteral("980.50m");
    milli.fields[9] = QStringLiteral("---");
    milli.fields[10] = QStringLiteral("---");
    f.rows.push_back(withCurve(milli, QStringLiteral(" 3"), excitationCurve(60, 1.2, 0.002, 0.5)));
    return f;
}

KvxSampleFile x2x4Only()
{
    KvxSampleFile f;
    f.serial = QStringLiteral("SP-600-2210");
    f.company = QStringLiteral("Cedar Ridge Mining");
    f.station = QStringLiteral("Pit 4 substation");
    f.designation = QStringLiteral("Feeder 7 protection CT");
    f.manufacturer = QStringLiteral("Harwell Instruments");
    f.operatorName = QStringLiteral("J. Park");
    f.temperature = QStringLiteral("31 C");
    f.ratio = QStringLiteral("600:5");
    f.voltageRating = QStringLiteral("C200");
    f.testClass = QStringLiteral("C200");
    f.position = QStringLiteral("X2-X4");
    f.phase = QStringLiteral("C");
    f.instrumentSerial = QStringLiteral("KVX-20417");
    f.day = 28;
    f.month = 2;
    f.year = 2025;
    f.hour = 7;
    f.minute = 58;
    f.second = 30;
    f.notes = QStringList{QStringLiteral("Single tap in service.")};

    TapValues x2x4 = multiRatioTap("X2-X4", 600);
    x2x4.insulationVolts = QStringLiteral("---");
    f.rows.push_back(withCurve(measuredRow(1, x2x4), QStringLiteral(" 1"),
                               excitationCurve(40, 300.0, 0.006, 1.2)));
    return f;
}

bool writeSample(const QDir& folder, const char* name, const KvxSampleFile& sample)
{
    QFile out(folder.filePath(QString::fromLatin1(name)));
    const QByteArray bytes = kvxSampleBytes(sample);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate) || out.write(bytes) != bytes.size()) {
        std::fprintf(stderr, "quenby-kvx-samples: cannot write %s\n", qPrintable(out.fileName()));
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: quenby-kvx-samples <folder>\n");
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    if (!folder.mkpath(QStringLiteral("."))) {
        std::fprintf(stderr, "quenby-kvx-samples: cannot make %s\n", argv[1]);
        return 1;
    }
    KvxSampleFile noStamp = tenTaps();
    noStamp.stampLine = false;
    const bool ok = writeSample(folder, "kvx-ten-taps.txt", tenTaps()) &&
                    writeSample(folder, "kvx-ten-taps-no-stamp.txt", noStamp) &&
                    writeSample(folder, "kvx-out-of-order.txt", outOfOrder()) &&
                    writeSample(folder, "kvx-july-error-phase.txt", julyErrorPhase()) &&
                    writeSample(folder, "kvx-x2-x4-only.txt", x2x4Only());
    return ok ? 0 : 1;
}

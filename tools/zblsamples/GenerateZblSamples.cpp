// quenby-zbl-samples <folder>: writes the project's ZBL sample test files into
// <folder>. The committed files under samples/ were made with it; tests read
// the committed files, never this program's output.
#include "tools/zblsamples/ZblSampleWriter.h"

#include "shell/model/NumberText.h"
#include "shell/model/Session.h"
#include "shell/model/ShellSession.h"

#include <QDir>

#include <cmath>
#include <cstdio>
#include <functional>

using namespace quenby;
using namespace quenby::samples;

namespace {

// Resistance of a tapped winding: lowest at the middle position and rising by
// one step per position either side, which draws the V of the V graph.
double vShape(int tap, int middle, double lowest, double step)
{
    return lowest + step * std::abs(tap - middle);
}

// The instrument's text of a resistance: four decimals below 10 of its unit,
// two above, and the unit with the omega that arrives as "O".
QString instrumentText(double value, const char* unit)
{
    return QString::number(value, 'f', value < 10.0 ? 4 : 2) + u' ' + QString::fromUtf8(unit);
}

ZblUploadReading reading(int tap, const QString& windingA, double milliohmsA,
                         const QString& windingB, double microohmsB)
{
    ZblUploadReading r;
    r.tapA = QString::number(tap);
    const QStringList a = windingA.split(u'-');
    r.windingA1 = a.value(0);
    r.windingA2 = a.value(1);
    r.resistanceA = instrumentText(milliohmsA, "mO");
    r.tapB = r.tapA;
    const QStringList b = windingB.split(u'-');
    r.windingB1 = b.value(0);
    r.windingB2 = b.value(1);
    r.resistanceB = instrumentText(microohmsB, "µO");
    return r;
}

ZblUploadFile header(int mode)
{
    ZblUploadFile f;
    f.mode = mode;
    f.serial = QStringLiteral("ZBL-20417");
    f.company = QStringLiteral("Northfield Power Co-op");
    f.station = QStringLiteral("Harlow Substation");
    f.designation = QStringLiteral("T2 66/11 kV 20 MVA");
    f.manufacturer = QStringLiteral("Velsing Transformers");
    f.operatorName = QStringLiteral("J. Okafor");
    f.temperature = QStringLiteral("18 C");
    return f;
}

// 19 taps of a Manual test, H1-H2 against X1-X2; tap 10 is the neutral,
// which the instrument names "N 10".
ZblUploadFile manual19()
{
    ZblUploadFile f = header(0);
    f.day = 15, f.month = 11, f.year = 24, f.hour = 9, f.minute = 7, f.second = 33;
    f.notes = QStringLiteral("OLTC 1-19, after maintenance");
    for (int tap = 1; tap <= 19; ++tap) {
        ZblUploadReading r = reading(tap, QStringLiteral("H1-H2"), vShape(tap, 10, 398.6, 4.21),
                                     QStringLiteral("X1-X2"), 845.2 + 0.1 * tap);
        if (tap == 10)
            r.tapA = r.tapB = QStringLiteral("N 10");
        f.readings.push_back(r);
    }
    return f;
}

// 20 taps of a Timed test, at 1 A and 100 mA in turn.
ZblUploadFile timed20()
{
    ZblUploadFile f = header(1);
    f.day = 3, f.month = 5, f.year = 24, f.hour = 17, f.minute = 0, f.second = 0;
    f.designation = QStringLiteral("T1 33/6.6 kV 5 MVA");
    f.notes = QStringLiteral("Timed, 10 s per tap");
    for (int tap = 1; tap <= 20; ++tap) {
        ZblUploadReading r = reading(tap, QStringLiteral("H2-H3"), vShape(tap, 11, 1210.0, 12.5),
                                     QStringLiteral("X2-X3"), 3120.0 + tap);
        r.currentMilliamperes = tap % 2 ? 1000.0 : 100.0;
        r.intervalSeconds = 10.0;
        f.readings.push_back(r);
    }
    return f;
}

// 23 taps of an Auto T/C test at 1500 mA, a range the row writer does not
// label; the last three at 10 mA.
ZblUploadFile autoTc23()
{
    ZblUploadFile f = header(2);
    f.day = 28, f.month = 2, f.year = 25, f.hour = 14, f.minute = 30, f.second = 5;
    f.station = QStringLiteral("Quarry Lane");
    f.notes = QStringLiteral("Auto tap change, 1.5 A");
    for (int tap = 1; tap <= 23; ++tap) {
        ZblUploadReading r = reading(tap, QStringLiteral("H3-H1"), vShape(tap, 12, 402.3, 3.95),
                                     QStringLiteral("X3-X1"), 851.7);
        r.currentMilliamperes = tap <= 20 ? 1500.0 : 10.0;
        r.intervalSeconds = 3.0;
        f.readings.push_back(r);
    }
    return f;
}

// 24 taps of channel A alone: channel B switched off, its tap and winding
// terminals empty.
ZblUploadFile manual24ChannelBOff()
{
    ZblUploadFile f = header(0);
    f.day = 7, f.month = 1, f.year = 25, f.hour = 8, f.minute = 15, f.second = 42;
    f.notes = QStringLiteral("Channel B off");
    for (int tap = 1; tap <= 24; ++tap) {
        ZblUploadReading r =
            reading(tap, QStringLiteral("H1-H0"), vShape(tap, 12, 199.8, 2.07), QString(), 0.0);
        r.tapB.clear();
        r.windingB1.clear();
        r.windingB2.clear();
        r.resistanceB = QStringLiteral("OFF");
        f.readings.push_back(r);
    }
    return f;
}

// 46 taps, two phases of 23, with three readings over range.
ZblUploadFile timed46Over()
{
    ZblUploadFile f = header(1);
    f.day = 19, f.month = 8, f.year = 24, f.hour = 11, f.minute = 2, f.second = 9;
    f.notes = QStringLiteral("Two phases; contact trouble on taps 5 and 7");
    for (int row = 0; row < 46; ++row) {
        const int tap = row % 23 + 1;
        const bool second = row >= 23;
        ZblUploadReading r =
            reading(tap, second ? QStringLiteral("H2-H3") : QStringLiteral("H1-H2"),
                    vShape(tap, 12, second ? 401.1 : 398.6, 4.2), QStringLiteral("X1-X2"),
                    845.2 + 0.2 * tap);
        if (row == 4 || row == 29)
            r.resistanceA = QStringLiteral("OVER");
        if (row == 6)
            r.resistanceB = QStringLiteral("OVER");
        f.readings.push_back(r);
    }
    return f;
}

// 122 readings: three phases of 33 taps and 23 of a fourth pass. Mode 5 is
// neither Manual nor Timed. The first reading has no current, a few are at
// 10 mA.
ZblUploadFile autoTc122()
{
    ZblUploadFile f = header(5);
    f.day = 1, f.month = 12, f.year = 24, f.hour = 23, f.minute = 59, f.second = 59;
    f.designation = QStringLiteral("GSU 400/21 kV");
    f.notes = QStringLiteral("Full OLTC run, three phases and a repeat");
    const QString windings[] = {QStringLiteral("H1-H2"), QStringLiteral("H2-H3"),
                                QStringLiteral("H3-H1"), QStringLiteral("H1-H2")};
    for (int row = 0; row < 122; ++row) {
        const int tap = row % 33 + 1;
        const int pass = row / 33;
        ZblUploadReading r = reading(tap, windings[pass], vShape(tap, 17, 612.4 + pass, 5.13),
                                     QStringLiteral("X1-X2"), 1502.0 + pass + 0.1 * tap);
        if (row == 0)
            r.currentMilliamperes = 0.0;
        else if (row % 40 == 0)
            r.currentMilliamperes = 10.0;
        f.readings.push_back(r);
    }
    return f;
}

ZblUploadFile noRows()
{
    ZblUploadFile f = header(1);
    f.day = 9, f.month = 9, f.year = 24, f.hour = 10, f.minute = 0, f.second = 1;
    f.notes = QStringLiteral("Aborted before the first tap");
    return f;
}

// The rows a save writes from the report: the cell texts, the resistance
// number in its shortest form, the current as the reader stored it, the
// interval as a plain number.
std::vector<ZblSavedRow> savedRows(int count, const QString& current)
{
    std::vector<ZblSavedRow> rows;
    for (int i = 0; i < count; ++i) {
        const int tap = i % 33 + 1;
        ZblSavedRow r;
        r.tapA = r.tapB = QString::number(tap);
        r.windingA = QStringLiteral("H1-H2");
        r.windingB = QStringLiteral("X1-X2");
        r.resistanceA = numberText(vShape(tap, 17, 612.4, 5.13)) + QStringLiteral(" mOhm");
        r.resistanceB = numberText(1502.0 + 0.1 * tap) + QStringLiteral(" µOhm");
        r.current = current;
        r.interval = QStringLiteral("5");
        r.total = QStringLiteral("00:00:00");
        rows.push_back(r);
    }
    return rows;
}

ZblSavedFile savedHeader()
{
    ZblSavedFile f;
    f.date = QStringLiteral("15 Nov.2024   09:07:33");
    f.serial = QStringLiteral("ZBL-20417");
    f.company = QStringLiteral("Northfield Power Co-op");
    f.station = QStringLiteral("Harlow Substation");
    f.designation = QStringLiteral("T2 66/11 kV 20 MVA");
    f.manufacturer = QStringLiteral("Velsing Transformers");
    f.operatorName = QStringLiteral("J. Okafor");
    f.temperature = QStringLiteral("22 C");
    f.notes = QStringLiteral("Referred to 75 C, copper");
    return f;
}

ZblSavedFile savedCompensated()
{
    ZblSavedFile f = savedHeader();
    f.rows = savedRows(12, QStringLiteral("10 A"));
    f.rows[3].current = QStringLiteral("100 mA");
    f.rows[5].tapA = f.rows[5].tapB = QStringLiteral("N_10");
    f.compensationFactor = QStringLiteral("Copper (TK=234.5)");
    f.compensedTemp = QStringLiteral("75");
    return f;
}

ZblSavedFile savedNoValues()
{
    ZblSavedFile f = savedHeader();
    f.notes = QStringLiteral("Saved without compensation");
    f.rows = savedRows(6, QStringLiteral("10 A"));
    return f;
}

ZblSavedFile savedCommaKey()
{
    ZblSavedFile f = savedHeader();
    f.temperature = QStringLiteral("31.5 C");
    f.notes = QStringLiteral("Edited by hand: keys with commas");
    f.rows = savedRows(6, QStringLiteral("1 A"));
    f.compensationFactor = QStringLiteral("Alluminium (TK=225)");
    f.compensedTemp = QStringLiteral("85");
    f.commaAfterKey = true;
    return f;
}

ZblSavedFile saved121()
{
    ZblSavedFile f = savedHeader();
    f.notes = QStringLiteral("Full run saved; compensation below the table");
    f.rows = savedRows(121, QStringLiteral("10 A"));
    f.compensationFactor = QStringLiteral("Copper (TK=234.5)");
    f.compensedTemp = QStringLiteral("75");
    return f;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: quenby-zbl-samples <folder>\n");
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    if (!folder.exists()) {
        std::fprintf(stderr, "quenby-zbl-samples: no such folder: %s\n", argv[1]);
        return 2;
    }
    // The files go through the program's own file numbers.
    const OwnedSession<ShellSession> shell;
    const struct
    {
        const char* name;
        std::function<Int16(const QString&)> write;
    } files[] = {
        {"zbl-manual-19-rows.zbl",
         [](const QString& p) { return writeUploadedZblFile(p, manual19()); }},
        {"zbl-timed-20-rows.zbl",
         [](const QString& p) { return writeUploadedZblFile(p, timed20()); }},
        {"zbl-autotc-23-rows.zbl",
         [](const QString& p) { return writeUploadedZblFile(p, autoTc23()); }},
        {"zbl-manual-24-rows-channel-b-off.zbl",
         [](const QString& p) { return writeUploadedZblFile(p, manual24ChannelBOff()); }},
        {"zbl-timed-46-rows-over.zbl",
         [](const QString& p) { return writeUploadedZblFile(p, timed46Over()); }},
        {"zbl-autotc-122-rows.zbl",
         [](const QString& p) { return writeUploadedZblFile(p, autoTc122()); }},
        {"zbl-no-rows.zbl", [](const QString& p) { return writeUploadedZblFile(p, noRows()); }},
        {"zbl-saved-compensated.zbl",
         [](const QString& p) { return writeSavedZblFile(p, savedCompensated()); }},
        {"zbl-saved-no-values.zbl",
         [](const QString& p) { return writeSavedZblFile(p, savedNoValues()); }},
        {"zbl-saved-comma-key.zbl",
         [](const QString& p) { return writeSavedZblFile(p, savedCommaKey()); }},
        {"zbl-saved-121-rows.zbl",
         [](const QString& p) { return writeSavedZblFile(p, saved121()); }},
    };
    for (const auto& f : files) {
        const QString path = folder.filePath(QString::fromLatin1(f.name));
        if (f.write(path) != 0) {
            std::fprintf(stderr, "quenby-zbl-samples: cannot write %s\n", f.name);
            return 1;
        }
    }
    return 0;
}

// Scenario file format (UTF-8 text, one statement a line):
//
//   # a comment; lines starting with "#" or ";" and blank lines are skipped
//   [instrument]
//   kind = kvx                    kvx or zbl; may instead come from --kind
//   serial = KVX2318              KVX: the text (default KVX0001); ZBL: byte values
//                                 0-255 separated by blanks ("12 0 7 4 1 9" shows
//                                 "#1207419"; default 0 0 0 0 0 1). The PC takes a
//                                 serial reply of 10 bytes or more: a ZBL serial of
//                                 fewer than 6 bytes makes its upload fail there.
//
//   [file]                        one section per stored file, the first is index 0
//   number = 1                    file number byte (default: the file's position, from 1)
//   date = 2024-03-12             year 2000 to 2255
//   time = 14:05:07
//   company = ...                 texts: company, serial, station, designation,
//                                 manufacturer, operator, temperature, notes
//   KVX only:
//   ratio = 1200:5                and voltage-rating, class, position, phase
//   second-byte = 7               byte 13 of the header, which the PC shows as the
//                                 second (default: the second of `time`)
//   ZBL only:
//   test-number = 12              (default: the file's position, from 1)
//   mode = auto                   manual, timed, auto, or a number 0-255
//   reading = N 10 | H1 | H2 | 694.48mΩ | N 10 | X1 | X2 | 1.2345mΩ | 10000 | 5
//                                 one line per reading: tap, first and second terminal
//                                 and resistance of channel A, the same of channel B,
//                                 current in mA, interval in seconds
//
//   [test]                        KVX only: one test of the [file] above it
//   number = 1                    test number byte (default: its position, from 1)
//   tap = X1-X2
//   nameplate = 600:5
//   calculated-ratio = 120
//   measured-ratio = 119.94
//   ratio-error = -0.05           percent
//   phase = 0.12
//   polarity = pos                pos or neg
//   knee-ieee30 = 190.2           volts; also knee-ieee45 and knee-iec
//   insulation = 2.3e9            ohms
//   winding = 0.3012              ohms
//   valid = all                   all, none, or some of: excitation ratio insulation winding
//   point = 12.5 0.00021          one excitation point, volts and amperes
//   curve = 100 182 0.012         a made-up curve: point count, knee volts, knee amperes
//   point-count = 120             the count sent instead of the number of points
//
// Texts are checked against their field sizes (KVX header 26 characters, ratio 31,
// notes 151; ZBL header 21; taps and terminals 5; resistances 12) and must have
// Windows-1252 codes; "Ω" is taken in resistances only. A KVX file holds at most 11
// tests of at most 100 points; a ZBL file at most 166 readings, the most that the
// PC's payload store takes.
#include "tools/instrument-sim/ScenarioReader.h"

#include "shell/model/CodePage.h"

#include <QDate>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QTime>

#include <cmath>
#include <set>

namespace quenby::sim {

namespace {

constexpr int kMaxFiles = 255;
constexpr int kMaxKvxTests = 11;
constexpr int kMaxKvxPoints = 100;
constexpr int kMaxZblReadings = 166;
constexpr char16_t kOmega = 0x03A9;

enum class Section { None, Instrument, File, Test };

class Reader
{
public:
    Reader(const QString& name, std::optional<DeviceKind> kind) : m_name(name), m_kindOption(kind)
    {
        // Six bytes make the shortest serial reply that the PC takes (10
        // bytes), so an instrument without a serial line still connects.
        m_instrument.zblSerialBytes = {0, 0, 0, 0, 0, 1};
        if (m_kind)
            m_instrument.kind = *m_kind;
    }

    Instrument read(const QString& text)
    {
        const QStringList lines = text.split(QLatin1Char('\n'));
        for (int i = 0; i < lines.size(); ++i) {
            m_line = i + 1;
            QString line = lines[i];
            if (line.endsWith(QLatin1Char('\r')))
                line.chop(1);
            line = line.trimmed();
            if (line.isEmpty() || line.startsWith(QLatin1Char('#')) ||
                line.startsWith(QLatin1Char(';')))
                continue;
            if (line.startsWith(QLatin1Char('['))) {
                startSection(line);
                continue;
            }
            const qsizetype eq = line.indexOf(QLatin1Char('='));
            if (eq < 0)
                fail(QStringLiteral("expected \"key = value\" or a [section], found \"%1\"")
                         .arg(line));
            const QString key = line.left(eq).trimmed().toLower();
            const QString value = line.mid(eq + 1).trimmed();
            if (key.isEmpty())
                fail(QStringLiteral("a key is missing before \"=\""));
            take(key, value);
        }
        m_line = lines.size();
        if (!m_kind)
            fail(QStringLiteral("the kind of instrument is not given: write \"kind = kvx\" or "
                                "\"kind = zbl\" under [instrument], or use --kind"));
        applyPendingSerial();
        m_instrument.kind = *m_kind;
        return m_instrument;
    }

private:
    [[noreturn]] void fail(const QString& message) const
    {
        throw ScenarioError(QStringLiteral("%1:%2: %3").arg(m_name).arg(m_line).arg(message),
                            m_line);
    }

    bool isKvx() const { return m_kind && *m_kind == DeviceKind::Kvx; }

    void startSection(const QString& line)
    {
        if (!line.endsWith(QLatin1Char(']')))
            fail(QStringLiteral("a section name ends with \"]\": \"%1\"").arg(line));
        const QString name = line.mid(1, line.size() - 2).trimmed().toLower();
        m_keys.clear();
        if (name == QLatin1String("instrument")) {
            if (!m_instrument.kvxFiles.empty() || !m_instrument.zblFiles.empty())
                fail(QStringLiteral("[instrument] comes before the first [file]"));
            if (m_sawInstrument)
                fail(QStringLiteral("[instrument] is given twice"));
            m_sawInstrument = true;
            m_section = Section::Instrument;
        } else if (name == QLatin1String("file")) {
            if (!m_kind)
                fail(QStringLiteral("the kind of instrument must be known before the first "
                                    "[file]: write \"kind = ...\" under [instrument], or use "
                                    "--kind"));
            applyPendingSerial();
            if (m_instrument.fileCount() >= kMaxFiles)
                fail(QStringLiteral("an instrument holds at most %1 files").arg(kMaxFiles));
            const int position = m_instrument.fileCount() + 1;
            if (isKvx()) {
                KvxStoredFile f;
                f.fileNumber = position;
                m_instrument.kvxFiles.push_back(f);
            } else {
                ZblStoredFile f;
                f.fileNumber = position;
                f.testNumber = position;
                m_instrument.zblFiles.push_back(f);
            }
            m_secondByteGiven = false;
            m_section = Section::File;
        } else if (name == QLatin1String("test")) {
            if (m_kind && !isKvx())
                fail(QStringLiteral("[test] belongs to a KVX; a ZBL file has \"reading = ...\" "
                                    "lines"));
            if (m_instrument.kvxFiles.empty())
                fail(QStringLiteral("[test] must follow the [file] it belongs to"));
            KvxStoredFile& f = m_instrument.kvxFiles.back();
            if (static_cast<int>(f.tests.size()) >= kMaxKvxTests)
                fail(QStringLiteral("a KVX file holds at most %1 tests").arg(kMaxKvxTests));
            KvxTest t;
            t.testNumber = static_cast<int>(f.tests.size()) + 1;
            f.tests.push_back(t);
            m_section = Section::Test;
        } else {
            fail(QStringLiteral("unknown section [%1]: the sections are [instrument], [file] "
                                "and [test]")
                     .arg(name));
        }
    }

    void take(const QString& key, const QString& value)
    {
        const bool repeatable = key == QLatin1String("point") || key == QLatin1String("curve") ||
                                key == QLatin1String("reading");
        if (!repeatable && !m_keys.insert(key).second)
            fail(QStringLiteral("\"%1\" is given twice in this section").arg(key));
        switch (m_section) {
        case Section::None:
            fail(QStringLiteral("\"%1\" stands outside any section").arg(key));
        case Section::Instrument:
            takeInstrument(key, value);
            break;
        case Section::File:
            if (isKvx())
                takeKvxFile(key, value);
            else
                takeZblFile(key, value);
            break;
        case Section::Test:
            takeTest(key, value);
            break;
        }
    }

    [[noreturn]] void unknownKey(const QString& key, const QString& where) const
    {
        fail(QStringLiteral("unknown key \"%1\" in %2").arg(key, where));
    }

    void takeInstrument(const QString& key, const QString& value)
    {
        if (key == QLatin1String("kind")) {
            const QString v = value.toLower();
            DeviceKind kind = DeviceKind::Kvx;
            if (v == QLatin1String("kvx"))
                kind = DeviceKind::Kvx;
            else if (v == QLatin1String("zbl"))
                kind = DeviceKind::Zbl;
            else
                fail(QStringLiteral("kind is kvx or zbl, not \"%1\"").arg(value));
            if (m_kindOption && *m_kindOption != kind)
                fail(QStringLiteral("the file describes a %1, but --kind asks for a %2")
                         .arg(kindName(kind), kindName(*m_kindOption)));
            m_kind = kind;
            m_instrument.kind = kind;
        } else if (key == QLatin1String("serial")) {
            m_pendingSerial = value;
            m_serialLine = m_line;
        } else {
            unknownKey(key, QStringLiteral("[instrument]"));
        }
    }

    static QString kindName(DeviceKind kind)
    {
        return kind == DeviceKind::Kvx ? QStringLiteral("KVX") : QStringLiteral("ZBL");
    }

    // The serial is read once the kind is known, whichever of the two lines
    // came first.
    void applyPendingSerial()
    {
        if (!m_pendingSerial)
            return;
        const int line = m_line;
        m_line = m_serialLine;
        const QString value = *m_pendingSerial;
        m_pendingSerial.reset();
        if (isKvx()) {
            m_instrument.kvxSerial = checkedText(value, 64, false, QStringLiteral("serial"));
        } else {
            const QStringList parts = value.split(QLatin1Char(' '), Qt::SkipEmptyParts);
            if (parts.isEmpty() || parts.size() > 64)
                fail(QStringLiteral("a ZBL serial is 1 to 64 byte values, such as \"12 0 7\""));
            std::vector<int> bytes;
            for (const QString& p : parts)
                bytes.push_back(integer(p, 0, 255, QStringLiteral("a ZBL serial byte")));
            m_instrument.zblSerialBytes = bytes;
        }
        m_line = line;
    }

    void takeCommonFile(const QString& key, const QString& value, int& number, int& day, int& month,
                        int& year, int& hour, int& minute, int& second)
    {
        if (key == QLatin1String("number")) {
            number = integer(value, 0, 255, key);
        } else if (key == QLatin1String("date")) {
            const QDate d = QDate::fromString(value, QStringLiteral("yyyy-MM-dd"));
            if (!d.isValid() || d.year() < 2000 || d.year() > 2255)
                fail(QStringLiteral("a date reads yyyy-mm-dd, in the years 2000 to 2255, not "
                                    "\"%1\"")
                         .arg(value));
            day = d.day();
            month = d.month();
            year = d.year() - 2000;
        } else if (key == QLatin1String("time")) {
            const QTime t = QTime::fromString(value, QStringLiteral("HH:mm:ss"));
            if (!t.isValid())
                fail(QStringLiteral("a time reads hh:mm:ss, not \"%1\"").arg(value));
            hour = t.hour();
            minute = t.minute();
            second = t.second();
        }
    }

    void takeKvxFile(const QString& key, const QString& value)
    {
        KvxStoredFile& f = m_instrument.kvxFiles.back();
        const int oldSecond = f.second;
        const std::pair<const char*, QString*> texts[] = {
            {"company", &f.company},
            {"serial", &f.serial},
            {"station", &f.station},
            {"designation", &f.designation},
            {"manufacturer", &f.manufacturer},
            {"operator", &f.operatorName},
            {"temperature", &f.temperature},
            {"ratio", &f.ratio},
            {"voltage-rating", &f.voltageRating},
            {"class", &f.accuracyClass},
            {"position", &f.position},
            {"phase", &f.phase},
            {"notes", &f.notes},
        };
        for (const auto& [name, field] : texts) {
            if (key == QLatin1String(name)) {
                const int chars = key == QLatin1String("notes")   ? 151
                                  : key == QLatin1String("ratio") ? 31
                                                                  : 26;
                *field = checkedText(value, chars, false, key);
                return;
            }
        }
        if (key == QLatin1String("second-byte")) {
            f.value13 = integer(value, 0, 255, key);
            m_secondByteGiven = true;
            return;
        }
        if (key != QLatin1String("number") && key != QLatin1String("date") &&
            key != QLatin1String("time"))
            unknownKey(key, QStringLiteral("[file] of a KVX"));
        takeCommonFile(key, value, f.fileNumber, f.day, f.month, f.year, f.hour, f.minute,
                       f.second);
        // Without its own line, byte 13 carries the second, so that the PC,
        // which reads its second there, shows the file's time.
        if (!m_secondByteGiven && f.second != oldSecond)
            f.value13 = f.second;
    }

    void takeZblFile(const QString& key, const QString& value)
    {
        ZblStoredFile& f = m_instrument.zblFiles.back();
        const std::pair<const char*, QString*> texts[] = {
            {"company", &f.company},           {"serial", &f.serial},
            {"station", &f.station},           {"designation", &f.designation},
            {"manufacturer", &f.manufacturer}, {"operator", &f.operatorName},
            {"temperature", &f.temperature},   {"notes", &f.notes},
        };
        for (const auto& [name, field] : texts) {
            if (key == QLatin1String(name)) {
                *field = checkedText(value, 21, false, key);
                return;
            }
        }
        if (key == QLatin1String("test-number")) {
            f.testNumber = integer(value, 0, 255, key);
        } else if (key == QLatin1String("mode")) {
            const QString v = value.toLower();
            if (v == QLatin1String("manual"))
                f.mode = 0;
            else if (v == QLatin1String("timed"))
                f.mode = 1;
            else if (v == QLatin1String("auto"))
                f.mode = 2;
            else
                f.mode = integer(value, 0, 255,
                                 QStringLiteral("mode (manual, timed, auto or a number)"));
        } else if (key == QLatin1String("reading")) {
            takeReading(f, value);
        } else if (key == QLatin1String("number") || key == QLatin1String("date") ||
                   key == QLatin1String("time")) {
            takeCommonFile(key, value, f.fileNumber, f.day, f.month, f.year, f.hour, f.minute,
                           f.second);
        } else {
            unknownKey(key, QStringLiteral("[file] of a ZBL"));
        }
    }

    void takeReading(ZblStoredFile& f, const QString& value)
    {
        if (static_cast<int>(f.readings.size()) >= kMaxZblReadings)
            fail(QStringLiteral("a ZBL file holds at most %1 readings").arg(kMaxZblReadings));
        const QStringList parts = value.split(QLatin1Char('|'));
        if (parts.size() != 10)
            fail(QStringLiteral("a reading has 10 fields separated by \"|\" (tap, terminals "
                                "and resistance of A, the same of B, current in mA, interval "
                                "in s); this one has %1")
                     .arg(parts.size()));
        const auto field = [&](int i) { return parts[i].trimmed(); };
        ZblReading r;
        r.readingNumber = static_cast<int>(f.readings.size() + 1) & 0xFF;
        r.tapA = checkedText(field(0), 5, false, QStringLiteral("tap of channel A"));
        r.windingA1 = checkedText(field(1), 5, false, QStringLiteral("terminal of channel A"));
        r.windingA2 = checkedText(field(2), 5, false, QStringLiteral("terminal of channel A"));
        r.resistanceA = checkedText(field(3), 12, true, QStringLiteral("resistance of channel A"));
        r.tapB = checkedText(field(4), 5, false, QStringLiteral("tap of channel B"));
        r.windingB1 = checkedText(field(5), 5, false, QStringLiteral("terminal of channel B"));
        r.windingB2 = checkedText(field(6), 5, false, QStringLiteral("terminal of channel B"));
        r.resistanceB = checkedText(field(7), 12, true, QStringLiteral("resistance of channel B"));
        r.current = integer(field(8), 0, 65535, QStringLiteral("the current in mA"));
        r.interval = integer(field(9), 0, 65535, QStringLiteral("the interval in seconds"));
        f.readings.push_back(r);
    }

    void takeTest(const QString& key, const QString& value)
    {
        KvxTest& t = m_instrument.kvxFiles.back().tests.back();
        const std::pair<const char*, float*> numbers[] = {
            {"calculated-ratio", &t.calculatedRatio},
            {"measured-ratio", &t.measuredRatio},
            {"ratio-error", &t.ratioError},
            {"phase", &t.phase},
            {"knee-ieee30", &t.kneeIeee30},
            {"knee-ieee45", &t.kneeIeee45},
            {"knee-iec", &t.kneeIec1050},
            {"insulation", &t.insulation},
            {"winding", &t.windingResistance},
        };
        for (const auto& [name, field] : numbers) {
            if (key == QLatin1String(name)) {
                *field = single(value, key);
                return;
            }
        }
        if (key == QLatin1String("number")) {
            t.testNumber = integer(value, 0, 255, key);
        } else if (key == QLatin1String("tap")) {
            t.tap = checkedText(value, 5, false, key);
        } else if (key == QLatin1String("nameplate")) {
            const QStringList parts = value.split(QLatin1Char(':'));
            if (parts.size() != 2)
                fail(QStringLiteral("a nameplate ratio reads first:second, such as 600:5"));
            t.ratioFirst = integer(parts[0].trimmed(), 0, 32767, QStringLiteral("a ratio term"));
            t.ratioSecond = integer(parts[1].trimmed(), 0, 32767, QStringLiteral("a ratio term"));
        } else if (key == QLatin1String("polarity")) {
            const QString v = value.toLower();
            if (v == QLatin1String("pos") || v == QLatin1String("positive"))
                t.polarityPositive = true;
            else if (v == QLatin1String("neg") || v == QLatin1String("negative"))
                t.polarityPositive = false;
            else
                fail(QStringLiteral("polarity is pos or neg, not \"%1\"").arg(value));
        } else if (key == QLatin1String("valid")) {
            takeValid(t, value);
        } else if (key == QLatin1String("point")) {
            const QStringList parts = value.split(QLatin1Char(' '), Qt::SkipEmptyParts);
            if (parts.size() != 2)
                fail(QStringLiteral("a point is two numbers, volts and amperes"));
            addPoints(t, {{single(parts[0], QStringLiteral("volts")),
                           single(parts[1], QStringLiteral("amperes"))}});
        } else if (key == QLatin1String("curve")) {
            const QStringList parts = value.split(QLatin1Char(' '), Qt::SkipEmptyParts);
            if (parts.size() != 3)
                fail(QStringLiteral("a curve is three numbers: point count, knee volts, knee "
                                    "amperes"));
            const int count = integer(parts[0], 1, kMaxKvxPoints, QStringLiteral("a point count"));
            const double volts = single(parts[1], QStringLiteral("knee volts"));
            const double amperes = single(parts[2], QStringLiteral("knee amperes"));
            if (!(volts > 0) || !(amperes > 0))
                fail(QStringLiteral("the knee of a curve has positive volts and amperes"));
            addPoints(t, madeUpExcitationCurve(count, volts, amperes));
        } else if (key == QLatin1String("point-count")) {
            t.pointCountOverride = integer(value, 0, 65535, key);
        } else {
            unknownKey(key, QStringLiteral("[test]"));
        }
    }

    void addPoints(KvxTest& t, const std::vector<std::pair<float, float>>& points)
    {
        if (t.points.size() + points.size() > static_cast<std::size_t>(kMaxKvxPoints))
            fail(QStringLiteral("a test carries at most %1 excitation points").arg(kMaxKvxPoints));
        t.points.insert(t.points.end(), points.begin(), points.end());
    }

    void takeValid(KvxTest& t, const QString& value)
    {
        const QStringList words = value.toLower().split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (words == QStringList{QStringLiteral("all")}) {
            t.excitationValid = t.ratioValid = t.insulationValid = t.windingValid = true;
            return;
        }
        t.excitationValid = t.ratioValid = t.insulationValid = t.windingValid = false;
        if (words == QStringList{QStringLiteral("none")})
            return;
        if (words.isEmpty())
            fail(QStringLiteral("valid is all, none, or some of: excitation ratio insulation "
                                "winding"));
        for (const QString& w : words) {
            if (w == QLatin1String("excitation"))
                t.excitationValid = true;
            else if (w == QLatin1String("ratio"))
                t.ratioValid = true;
            else if (w == QLatin1String("insulation"))
                t.insulationValid = true;
            else if (w == QLatin1String("winding"))
                t.windingValid = true;
            else
                fail(QStringLiteral("valid is all, none, or some of: excitation ratio "
                                    "insulation winding; \"%1\" is none of them")
                         .arg(w));
        }
    }

    int integer(const QString& text, int low, int high, const QString& what) const
    {
        bool ok = false;
        const int v = text.trimmed().toInt(&ok);
        if (!ok || v < low || v > high)
            fail(QStringLiteral("%1 is a whole number from %2 to %3, not \"%4\"")
                     .arg(what)
                     .arg(low)
                     .arg(high)
                     .arg(text));
        return v;
    }

    float single(const QString& text, const QString& what) const
    {
        bool ok = false;
        const float v = text.trimmed().toFloat(&ok);
        if (!ok)
            fail(
                QStringLiteral("%1 is a number such as 12.5 or 2.3e9, not \"%2\"").arg(what, text));
        return v;
    }

    QString checkedText(const QString& text, int chars, bool omegaAllowed,
                        const QString& what) const
    {
        if (text.size() > chars)
            fail(QStringLiteral("%1 holds at most %2 characters; \"%3\" has %4")
                     .arg(what)
                     .arg(chars)
                     .arg(text)
                     .arg(text.size()));
        for (const QChar c : text) {
            if (c.unicode() == kOmega && omegaAllowed)
                continue;
            if (c == QLatin1Char('?'))
                continue;
            if (encodeText(QStringView(&c, 1)) == QByteArray("?"))
                fail(QStringLiteral("\"%1\" in %2 has no Windows-1252 code%3")
                         .arg(c)
                         .arg(what)
                         .arg(c.unicode() == kOmega ? QStringLiteral(" (Ω is taken in "
                                                                     "resistances only)")
                                                    : QString()));
        }
        return text;
    }

    QString m_name;
    std::optional<DeviceKind> m_kindOption;
    std::optional<DeviceKind> m_kind{m_kindOption};
    Instrument m_instrument;
    Section m_section = Section::None;
    std::set<QString> m_keys;
    int m_line = 0;
    bool m_sawInstrument = false;
    bool m_secondByteGiven = false;
    std::optional<QString> m_pendingSerial;
    int m_serialLine = 0;
};

} // namespace

Instrument readScenario(const QString& text, const QString& name, std::optional<DeviceKind> kind)
{
    Reader reader(name, kind);
    return reader.read(text);
}

Instrument readScenarioFile(const QString& path, std::optional<DeviceKind> kind)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw ScenarioError(
            QStringLiteral("%1: cannot be opened: %2").arg(path, file.errorString()), 0);
    return readScenario(QString::fromUtf8(file.readAll()), QFileInfo(path).fileName(), kind);
}

std::vector<std::pair<float, float>> madeUpExcitationCurve(int count, double kneeVolts,
                                                           double kneeAmperes)
{
    // V = a x^p / (1 + x^m)^(1/n), x = I / ic: the log-log slope falls from p
    // below the knee to p - m/n above it, and is 1 where x^m = (p-1) / (1+m/n-p).
    constexpr double p = 1.6;
    constexpr double n = 2.0;
    constexpr double m = 3.0; // slope 0.1 above the knee
    const double kneeX = std::pow((p - 1.0) / (1.0 + m / n - p), 1.0 / m);
    const double ic = kneeAmperes / kneeX;
    const double a = kneeVolts * std::pow(1.0 + std::pow(kneeX, m), 1.0 / n) / std::pow(kneeX, p);
    const double first = kneeAmperes / 8.0;
    const double last = kneeAmperes * 20.0;
    std::vector<std::pair<float, float>> points;
    for (int j = 0; j < count; ++j) {
        const double f = count > 1 ? static_cast<double>(j) / (count - 1) : 0.0;
        const double amperes = first * std::pow(last / first, f);
        const double x = amperes / ic;
        const double volts = a * std::pow(x, p) / std::pow(1.0 + std::pow(x, m), 1.0 / n);
        points.emplace_back(static_cast<float>(volts), static_cast<float>(amperes));
    }
    return points;
}

} // namespace quenby::sim

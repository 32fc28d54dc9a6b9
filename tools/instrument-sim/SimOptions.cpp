#include "tools/instrument-sim/SimOptions.h"

namespace quenby::sim {

namespace {

std::optional<qint64> wholeNumber(const QString& text, qint64 low, qint64 high)
{
    bool ok = false;
    const qint64 v = text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive)
                         ? text.mid(2).toLongLong(&ok, 16)
                         : text.toLongLong(&ok, 10);
    if (!ok || v < low || v > high)
        return std::nullopt;
    return v;
}

} // namespace

QString simUsage()
{
    return QStringLiteral(
        "usage: quenby-instrument-sim [options] [scenario.sim]\n"
        "\n"
        "Plays a KVX or a ZBL instrument on a pseudo-terminal. The first line on\n"
        "stdout is the device path to open (115200 baud, 8N1); replies go out at\n"
        "the line rate. Stored files come from the scenario file; without one the\n"
        "instrument holds no files and --kind is needed.\n"
        "\n"
        "  --kind kvx|zbl           the instrument; must agree with the file's kind\n"
        "  --log                    print each command received and reply sent on stderr\n"
        "  --exit-on-stdin-eof      end when stdin reaches end of file\n"
        "  --help                   this text\n"
        "\n"
        "Faults (N counts from 1):\n"
        "  --bad-header-check N     the N-th header frame goes out with a wrong check byte\n"
        "  --bad-data-check N       the N-th data frame goes out with a wrong check byte\n"
        "  --cut-header N[:BYTES]   the N-th header frame stops after BYTES bytes (half)\n"
        "  --cut-data N[:BYTES]     the N-th data frame stops after BYTES bytes (half)\n"
        "  --silent                 never answers anything\n"
        "  --silent-after N         answers the first N commands, then nothing\n"
        "  --noise                  a lone byte and a run starting with 0xFF before each\n"
        "                           identify reply\n"
        "  --identify-code X        answers identify with reply code X (0-255, or 0x..)\n"
        "  --unplug-after N         closes the line for good after N bytes sent, and exits\n"
        "\n"
        "Exit status: 0 on SIGTERM, SIGINT, stdin end of file or unplug; 1 when the\n"
        "scenario cannot be read or the pseudo-terminal cannot be opened; 2 on a\n"
        "mistake in the options.\n");
}

std::optional<SimOptions> parseSimOptions(const QStringList& args, QString& error)
{
    SimOptions o;
    const auto fail = [&](const QString& why) {
        error = why;
        return std::optional<SimOptions>();
    };
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args[i];
        QString name = a;
        QString value;
        bool hasValue = false;
        const qsizetype eq = a.indexOf(QLatin1Char('='));
        if (a.startsWith(QLatin1String("--")) && eq > 0) {
            name = a.left(eq);
            value = a.mid(eq + 1);
            hasValue = true;
        }
        const auto takeValue = [&]() -> std::optional<QString> {
            if (hasValue)
                return value;
            if (i + 1 >= args.size())
                return std::nullopt;
            return args[++i];
        };
        const auto count = [&](qint64 low, qint64 high) -> std::optional<qint64> {
            const std::optional<QString> v = takeValue();
            if (!v)
                return std::nullopt;
            return wholeNumber(*v, low, high);
        };
        // N or N:BYTES.
        const auto cut = [&](int& n, int& bytes) {
            const std::optional<QString> v = takeValue();
            if (!v)
                return false;
            const QStringList parts = v->split(QLatin1Char(':'));
            if (parts.size() > 2)
                return false;
            const std::optional<qint64> frame = wholeNumber(parts[0], 1, 1000000);
            if (!frame)
                return false;
            n = static_cast<int>(*frame);
            bytes = -1;
            if (parts.size() == 2) {
                const std::optional<qint64> b = wholeNumber(parts[1], 0, 1000000);
                if (!b)
                    return false;
                bytes = static_cast<int>(*b);
            }
            return true;
        };
        const bool flag = !hasValue;
        if (name == QLatin1String("--help") || name == QLatin1String("-h")) {
            o.help = true;
        } else if (name == QLatin1String("--log") && flag) {
            o.log = true;
        } else if (name == QLatin1String("--exit-on-stdin-eof") && flag) {
            o.exitOnStdinEof = true;
        } else if (name == QLatin1String("--silent") && flag) {
            o.faults.silent = true;
        } else if (name == QLatin1String("--noise") && flag) {
            o.faults.noise = true;
        } else if (name == QLatin1String("--kind")) {
            const std::optional<QString> v = takeValue();
            if (v && v->toLower() == QLatin1String("kvx"))
                o.kind = DeviceKind::Kvx;
            else if (v && v->toLower() == QLatin1String("zbl"))
                o.kind = DeviceKind::Zbl;
            else
                return fail(QStringLiteral("--kind takes kvx or zbl"));
        } else if (name == QLatin1String("--bad-header-check")) {
            const std::optional<qint64> n = count(1, 1000000);
            if (!n)
                return fail(QStringLiteral("--bad-header-check takes a frame count from 1"));
            o.faults.badHeaderCheck = static_cast<int>(*n);
        } else if (name == QLatin1String("--bad-data-check")) {
            const std::optional<qint64> n = count(1, 1000000);
            if (!n)
                return fail(QStringLiteral("--bad-data-check takes a frame count from 1"));
            o.faults.badDataCheck = static_cast<int>(*n);
        } else if (name == QLatin1String("--cut-header")) {
            if (!cut(o.faults.cutHeader, o.faults.cutHeaderBytes))
                return fail(QStringLiteral("--cut-header takes N or N:BYTES, N from 1"));
        } else if (name == QLatin1String("--cut-data")) {
            if (!cut(o.faults.cutData, o.faults.cutDataBytes))
                return fail(QStringLiteral("--cut-data takes N or N:BYTES, N from 1"));
        } else if (name == QLatin1String("--silent-after")) {
            const std::optional<qint64> n = count(1, 1000000);
            if (!n)
                return fail(QStringLiteral("--silent-after takes a command count from 1"));
            o.faults.silentAfter = static_cast<int>(*n);
        } else if (name == QLatin1String("--identify-code")) {
            const std::optional<qint64> n = count(0, 255);
            if (!n)
                return fail(QStringLiteral("--identify-code takes a byte, 0 to 255 or 0x00 to "
                                           "0xFF"));
            o.faults.identifyCode = static_cast<int>(*n);
        } else if (name == QLatin1String("--unplug-after")) {
            const std::optional<qint64> n = count(1, Q_INT64_C(1) << 40);
            if (!n)
                return fail(QStringLiteral("--unplug-after takes a byte count from 1"));
            o.faults.unplugAfter = *n;
        } else if (a.startsWith(QLatin1String("-")) && a != QLatin1String("-")) {
            return fail(QStringLiteral("unknown option %1").arg(a));
        } else {
            if (!o.scenarioPath.isEmpty())
                return fail(QStringLiteral("one scenario file only"));
            o.scenarioPath = a;
        }
    }
    if (!o.help && o.scenarioPath.isEmpty() && !o.kind)
        return fail(QStringLiteral("give a scenario file, or --kind for an instrument without "
                                   "files"));
    return o;
}

} // namespace quenby::sim

// The simulator's command line.
#include "tools/instrument-sim/SimOptions.h"

#include <gtest/gtest.h>

using namespace quenby::sim;

namespace {

std::optional<SimOptions> parse(const QStringList& args, QString* error = nullptr)
{
    QString e;
    std::optional<SimOptions> o = parseSimOptions(args, e);
    if (error != nullptr)
        *error = e;
    return o;
}

QString errorOf(const QStringList& args)
{
    QString e;
    EXPECT_FALSE(parse(args, &e).has_value()) << args.join(QLatin1Char(' ')).toStdString();
    return e;
}

} // namespace

TEST(simOptions, ScenarioAloneHasNoFaults)
{
    const auto o = parse({QStringLiteral("a.sim")});
    ASSERT_TRUE(o);
    EXPECT_EQ(o->scenarioPath, QStringLiteral("a.sim"));
    EXPECT_FALSE(o->kind);
    EXPECT_FALSE(o->log);
    EXPECT_FALSE(o->exitOnStdinEof);
    EXPECT_EQ(o->faults.badHeaderCheck, 0);
    EXPECT_EQ(o->faults.badDataCheck, 0);
    EXPECT_EQ(o->faults.cutHeader, 0);
    EXPECT_EQ(o->faults.cutData, 0);
    EXPECT_FALSE(o->faults.silent);
    EXPECT_EQ(o->faults.silentAfter, 0);
    EXPECT_FALSE(o->faults.noise);
    EXPECT_FALSE(o->faults.identifyCode);
    EXPECT_EQ(o->faults.unplugAfter, 0);
}

TEST(simOptions, EveryOptionIsTaken)
{
    const auto o = parse({QStringLiteral("--kind"),
                          QStringLiteral("ZBL"),
                          QStringLiteral("--log"),
                          QStringLiteral("--exit-on-stdin-eof"),
                          QStringLiteral("--bad-header-check"),
                          QStringLiteral("2"),
                          QStringLiteral("--bad-data-check=3"),
                          QStringLiteral("--cut-header"),
                          QStringLiteral("4"),
                          QStringLiteral("--cut-data"),
                          QStringLiteral("5:300"),
                          QStringLiteral("--silent"),
                          QStringLiteral("--silent-after"),
                          QStringLiteral("6"),
                          QStringLiteral("--noise"),
                          QStringLiteral("--identify-code"),
                          QStringLiteral("0x65"),
                          QStringLiteral("--unplug-after"),
                          QStringLiteral("1000"),
                          QStringLiteral("z.sim")});
    ASSERT_TRUE(o);
    EXPECT_EQ(o->kind, DeviceKind::Zbl);
    EXPECT_TRUE(o->log);
    EXPECT_TRUE(o->exitOnStdinEof);
    EXPECT_EQ(o->faults.badHeaderCheck, 2);
    EXPECT_EQ(o->faults.badDataCheck, 3);
    EXPECT_EQ(o->faults.cutHeader, 4);
    EXPECT_EQ(o->faults.cutHeaderBytes, -1);
    EXPECT_EQ(o->faults.cutData, 5);
    EXPECT_EQ(o->faults.cutDataBytes, 300);
    EXPECT_TRUE(o->faults.silent);
    EXPECT_EQ(o->faults.silentAfter, 6);
    EXPECT_TRUE(o->faults.noise);
    EXPECT_EQ(o->faults.identifyCode, 0x65);
    EXPECT_EQ(o->faults.unplugAfter, 1000);
    EXPECT_EQ(o->scenarioPath, QStringLiteral("z.sim"));
}

TEST(simOptions, KindAloneIsAnInstrumentWithoutFiles)
{
    const auto o = parse({QStringLiteral("--kind=kvx")});
    ASSERT_TRUE(o);
    EXPECT_EQ(o->kind, DeviceKind::Kvx);
    EXPECT_TRUE(o->scenarioPath.isEmpty());
}

TEST(simOptions, IdentifyCodeInDecimal)
{
    const auto o = parse({QStringLiteral("--kind=kvx"), QStringLiteral("--identify-code=255")});
    ASSERT_TRUE(o);
    EXPECT_EQ(o->faults.identifyCode, 255);
    const auto z = parse({QStringLiteral("--kind=kvx"), QStringLiteral("--identify-code=0")});
    ASSERT_TRUE(z);
    EXPECT_EQ(z->faults.identifyCode, 0);
}

TEST(simOptions, HelpNeedsNothingElse)
{
    const auto o = parse({QStringLiteral("--help")});
    ASSERT_TRUE(o);
    EXPECT_TRUE(o->help);
    EXPECT_TRUE(simUsage().contains(QStringLiteral("--cut-data N[:BYTES]")));
    EXPECT_TRUE(simUsage().contains(QStringLiteral("--exit-on-stdin-eof")));
}

TEST(simOptions, MistakesAreNamed)
{
    const QString kvx = QStringLiteral("--kind=kvx");
    EXPECT_EQ(errorOf({}), QStringLiteral("give a scenario file, or --kind for an instrument "
                                          "without files"));
    EXPECT_EQ(errorOf({QStringLiteral("--kind"), QStringLiteral("abc")}),
              QStringLiteral("--kind takes kvx or zbl"));
    EXPECT_EQ(errorOf({QStringLiteral("--kind")}), QStringLiteral("--kind takes kvx or zbl"));
    EXPECT_EQ(errorOf({kvx, QStringLiteral("--bad-header-check"), QStringLiteral("0")}),
              QStringLiteral("--bad-header-check takes a frame count from 1"));
    EXPECT_EQ(errorOf({kvx, QStringLiteral("--bad-data-check")}),
              QStringLiteral("--bad-data-check takes a frame count from 1"));
    EXPECT_EQ(errorOf({kvx, QStringLiteral("--cut-data"), QStringLiteral("1:2:3")}),
              QStringLiteral("--cut-data takes N or N:BYTES, N from 1"));
    EXPECT_EQ(errorOf({kvx, QStringLiteral("--cut-header"), QStringLiteral("x")}),
              QStringLiteral("--cut-header takes N or N:BYTES, N from 1"));
    EXPECT_EQ(errorOf({kvx, QStringLiteral("--cut-data"), QStringLiteral("1:-4")}),
              QStringLiteral("--cut-data takes N or N:BYTES, N from 1"));
    EXPECT_EQ(errorOf({kvx, QStringLiteral("--silent-after"), QStringLiteral("-1")}),
              QStringLiteral("--silent-after takes a command count from 1"));
    EXPECT_EQ(errorOf({kvx, QStringLiteral("--identify-code"), QStringLiteral("256")}),
              QStringLiteral("--identify-code takes a byte, 0 to 255 or 0x00 to 0xFF"));
    EXPECT_EQ(errorOf({kvx, QStringLiteral("--unplug-after"), QStringLiteral("0")}),
              QStringLiteral("--unplug-after takes a byte count from 1"));
    EXPECT_EQ(errorOf({kvx, QStringLiteral("--fast")}), QStringLiteral("unknown option --fast"));
    EXPECT_EQ(errorOf({kvx, QStringLiteral("--log=yes")}),
              QStringLiteral("unknown option --log=yes"));
    EXPECT_EQ(errorOf({QStringLiteral("a.sim"), QStringLiteral("b.sim")}),
              QStringLiteral("one scenario file only"));
}

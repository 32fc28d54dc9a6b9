// The instrument's behaviour on the line without a port: commands assembled
// from bytes in any slicing, stray bytes, commands without a reply, and each
// fault of the options.
#include "tools/instrument-sim/InstrumentResponder.h"

#include <QStringList>

#include <gtest/gtest.h>

using namespace quenby::sim;

namespace {

QByteArray bytesOf(std::initializer_list<int> values)
{
    QByteArray out;
    for (int v : values)
        out.append(static_cast<char>(v));
    return out;
}

const QByteArray kIdentify = bytesOf({0x48, 0x50, 201, 201});
const QByteArray kSerial = bytesOf({0x48, 0x50, 204, 204});
const QByteArray kCount = bytesOf({0x48, 0x50, 210, 210});

QByteArray header(int index)
{
    return bytesOf({0x48, 0x50, 211, index, (211 + index) % 256});
}

QByteArray data(int index)
{
    return bytesOf({0x48, 0x50, 212, index, (212 + index) % 256});
}

Instrument kvx()
{
    Instrument i;
    i.kind = DeviceKind::Kvx;
    i.kvxSerial = QStringLiteral("KVX777");
    KvxStoredFile a;
    a.fileNumber = 1;
    a.tests.resize(2);
    KvxStoredFile b;
    b.fileNumber = 2;
    b.tests.resize(1);
    i.kvxFiles = {a, b};
    return i;
}

// All bytes of the pieces, one after the other.
QByteArray joined(const std::vector<Outgoing>& pieces)
{
    QByteArray all;
    for (const Outgoing& o : pieces)
        all += o.bytes;
    return all;
}

struct Fixture
{
    explicit Fixture(FaultOptions faults = {}, Instrument instrument = kvx())
        : responder(std::move(instrument), faults, [this](const QString& l) { log << l; })
    {
    }
    QStringList log;
    InstrumentResponder responder;
};

} // namespace

TEST(instrumentResponder, IdentifyGetsTheKindsReply)
{
    Fixture f;
    const auto out = f.responder.receive(kIdentify);
    ASSERT_EQ(out.size(), 1u);
    EXPECT_EQ(out[0].bytes, bytesOf({0x47, 0x50, 0x63, 0x63}));
    EXPECT_EQ(out[0].pauseBeforeMs, 0);
    EXPECT_EQ(f.responder.commandCount(), 1);
}

TEST(instrumentResponder, CommandArrivingByteByByteIsAnsweredOnItsLastByte)
{
    Fixture f;
    const QByteArray h = header(1);
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(f.responder.receive(h.mid(i, 1)).empty()) << i;
        EXPECT_EQ(f.responder.pendingBytes(), i + 1);
    }
    const auto out = f.responder.receive(h.mid(4, 1));
    ASSERT_EQ(out.size(), 1u);
    EXPECT_EQ(out[0].bytes, kvxHeaderFrame(kvx().kvxFiles[1]));
    EXPECT_EQ(f.responder.pendingBytes(), 0);
}

TEST(instrumentResponder, CommandsInOneChunkAreAnsweredInOrder)
{
    Fixture f;
    const auto out = f.responder.receive(kIdentify + kSerial + kCount + data(0));
    ASSERT_EQ(out.size(), 4u);
    EXPECT_EQ(out[0].bytes, bytesOf({0x47, 0x50, 0x63, 0x63}));
    // "KVX777" fills the six serial bytes: 0x66 + 0x4B + 0x56 + 0x58 + 3 x 0x37 = 0x204.
    EXPECT_EQ(out[1].bytes, bytesOf({0x47, 0x50, 0x66, 0x4B, 0x56, 0x58, 0x37, 0x37, 0x37, 0x04}));
    EXPECT_EQ(out[2].bytes, bytesOf({0x47, 0x50, 0x6A, 2, 0x6C}));
    EXPECT_EQ(out[3].bytes.size(), 2 * 942 + 6);
    EXPECT_EQ(f.responder.commandCount(), 4);
}

TEST(instrumentResponder, StrayBytesAreDroppedUntilACommandStarts)
{
    Fixture f;
    const auto out = f.responder.receive(bytesOf({0x00, 0x13, 0xFF}) + kIdentify);
    ASSERT_EQ(out.size(), 1u);
    EXPECT_EQ(out[0].bytes, bytesOf({0x47, 0x50, 0x63, 0x63}));
    EXPECT_EQ(f.responder.commandCount(), 1);
    EXPECT_TRUE(f.log.contains(QStringLiteral("stray bytes dropped: 00 13 FF")));
}

TEST(instrumentResponder, ResynchronisesOnAnHNotFollowedByP)
{
    Fixture f;
    // "H" "H" "P" ...: the first "H" is stray; so is "H" followed by "G".
    const auto out = f.responder.receive(bytesOf({0x48, 0x48, 0x47}) + kIdentify);
    ASSERT_EQ(out.size(), 1u);
    EXPECT_EQ(out[0].bytes, bytesOf({0x47, 0x50, 0x63, 0x63}));
    EXPECT_EQ(f.responder.commandCount(), 1);
}

TEST(instrumentResponder, ShortCommandWhoseCodeIsNotRepeatedIsNoCommand)
{
    Fixture f;
    // "H P C9 48 50 C9 C9": the fourth byte is not C9, so the first "H" was
    // stray and the command starts at the second.
    const auto out = f.responder.receive(bytesOf({0x48, 0x50, 201}) + kIdentify);
    ASSERT_EQ(out.size(), 1u);
    EXPECT_EQ(out[0].bytes, bytesOf({0x47, 0x50, 0x63, 0x63}));
    EXPECT_EQ(f.responder.commandCount(), 1);
}

TEST(instrumentResponder, LongCommandWithABadCheckIsCountedAndNotAnswered)
{
    Fixture f;
    EXPECT_TRUE(f.responder.receive(bytesOf({0x48, 0x50, 211, 0, 212})).empty());
    EXPECT_EQ(f.responder.commandCount(), 1);
    EXPECT_TRUE(f.log.contains(QStringLiteral("no reply: the check of the command is wrong")));
    // The next command is read from the next byte on.
    EXPECT_EQ(f.responder.receive(kIdentify).size(), 1u);
}

TEST(instrumentResponder, FileIndexBeyondTheStoredFilesIsNotAnswered)
{
    Fixture f;
    EXPECT_TRUE(f.responder.receive(header(2)).empty());
    EXPECT_TRUE(f.responder.receive(data(2)).empty());
    EXPECT_TRUE(f.log.contains(QStringLiteral("no reply: no file of that index (2 stored)")));
}

TEST(instrumentResponder, UnknownShortCommandIsNotAnswered)
{
    Fixture f;
    EXPECT_TRUE(f.responder.receive(bytesOf({0x48, 0x50, 205, 205})).empty());
    EXPECT_EQ(f.responder.commandCount(), 1);
    EXPECT_TRUE(f.log.contains(QStringLiteral("no reply: unknown command")));
}

TEST(instrumentResponder, SilentAnswersNothing)
{
    FaultOptions o;
    o.silent = true;
    Fixture f(o);
    EXPECT_TRUE(f.responder.receive(kIdentify + kSerial + header(0)).empty());
    EXPECT_EQ(f.responder.commandCount(), 3);
}

TEST(instrumentResponder, SilentAfterAnswersTheFirstCommandsOnly)
{
    FaultOptions o;
    o.silentAfter = 2;
    Fixture f(o);
    EXPECT_EQ(f.responder.receive(kIdentify).size(), 1u);
    // A command without a reply counts as well.
    EXPECT_TRUE(f.responder.receive(header(9)).empty());
    EXPECT_TRUE(f.responder.receive(kSerial).empty());
    EXPECT_TRUE(f.responder.receive(kIdentify).empty());
}

TEST(instrumentResponder, NoiseComesBeforeEachIdentifyReply)
{
    FaultOptions o;
    o.noise = true;
    Fixture f(o);
    const auto out = f.responder.receive(kIdentify);
    ASSERT_EQ(out.size(), 3u);
    // A lone byte, then a run led by 0xFF, then the reply, each after a pause.
    EXPECT_EQ(out[0].bytes.size(), 1);
    EXPECT_EQ(static_cast<unsigned char>(out[1].bytes[0]), 0xFF);
    EXPECT_GE(out[1].bytes.size(), 2);
    EXPECT_GT(out[1].pauseBeforeMs, 0);
    EXPECT_EQ(out[2].bytes, bytesOf({0x47, 0x50, 0x63, 0x63}));
    EXPECT_GT(out[2].pauseBeforeMs, 0);
    EXPECT_EQ(f.responder.receive(kIdentify).size(), 3u);
    // Other replies come clean.
    EXPECT_EQ(f.responder.receive(kSerial).size(), 1u);
}

TEST(instrumentResponder, IdentifyCodeReplacesTheKindsCode)
{
    FaultOptions o;
    o.identifyCode = 0x65;
    Fixture f(o);
    EXPECT_EQ(joined(f.responder.receive(kIdentify)), bytesOf({0x47, 0x50, 0x65, 0x65}));
    // Only identify is concerned.
    EXPECT_EQ(joined(f.responder.receive(kCount)), bytesOf({0x47, 0x50, 0x6A, 2, 0x6C}));
}

TEST(instrumentResponder, BadHeaderCheckSpoilsTheNthHeaderOnly)
{
    FaultOptions o;
    o.badHeaderCheck = 2;
    Fixture f(o);
    const QByteArray good0 = kvxHeaderFrame(kvx().kvxFiles[0]);
    const QByteArray good1 = kvxHeaderFrame(kvx().kvxFiles[1]);
    EXPECT_EQ(joined(f.responder.receive(header(0))), good0);
    EXPECT_EQ(joined(f.responder.receive(data(0))).size(), 2 * 942 + 6); // data do not count
    const QByteArray second = joined(f.responder.receive(header(1)));
    ASSERT_EQ(second.size(), good1.size());
    EXPECT_EQ(second.left(959), good1.left(959));
    EXPECT_EQ(static_cast<unsigned char>(second[959]),
              (static_cast<unsigned char>(good1[959]) + 1) % 256);
    EXPECT_EQ(joined(f.responder.receive(header(1))), good1);
}

TEST(instrumentResponder, BadDataCheckSpoilsTheNthDataFrameOnly)
{
    FaultOptions o;
    o.badDataCheck = 1;
    Fixture f(o);
    const QByteArray good = kvxDataFrame(kvx().kvxFiles[0]);
    const QByteArray bad = joined(f.responder.receive(data(0)));
    ASSERT_EQ(bad.size(), good.size());
    EXPECT_EQ(bad.chopped(1), good.chopped(1));
    EXPECT_NE(bad.back(), good.back());
    EXPECT_EQ(joined(f.responder.receive(data(0))), good);
}

TEST(instrumentResponder, CutDataStopsTheNthDataFrameShort)
{
    FaultOptions o;
    o.cutData = 2;
    o.cutDataBytes = 100;
    Fixture f(o);
    const QByteArray good1 = kvxDataFrame(kvx().kvxFiles[1]);
    EXPECT_EQ(joined(f.responder.receive(data(0))), kvxDataFrame(kvx().kvxFiles[0]));
    EXPECT_EQ(joined(f.responder.receive(data(1))), good1.left(100));
    EXPECT_EQ(joined(f.responder.receive(data(1))), good1);
}

TEST(instrumentResponder, CutWithoutAByteCountSendsHalfTheFrame)
{
    FaultOptions o;
    o.cutHeader = 1;
    Fixture f(o);
    EXPECT_EQ(joined(f.responder.receive(header(0))), kvxHeaderFrame(kvx().kvxFiles[0]).left(480));
}

TEST(instrumentResponder, CutLongerThanTheFrameChangesNothing)
{
    FaultOptions o;
    o.cutHeader = 1;
    o.cutHeaderBytes = 5000;
    Fixture f(o);
    EXPECT_EQ(joined(f.responder.receive(header(0))), kvxHeaderFrame(kvx().kvxFiles[0]));
}

TEST(instrumentResponder, CutToNothingSendsNothing)
{
    FaultOptions o;
    o.cutData = 1;
    o.cutDataBytes = 0;
    Fixture f(o);
    EXPECT_TRUE(f.responder.receive(data(0)).empty());
}

TEST(instrumentResponder, ZblFramesCountLikeKvxFrames)
{
    Instrument z;
    z.kind = DeviceKind::Zbl;
    z.zblFiles.resize(1);
    z.zblFiles[0].readings.resize(3);
    FaultOptions o;
    o.badDataCheck = 1;
    o.cutHeader = 1;
    o.cutHeaderBytes = 50;
    Fixture f(o, z);
    EXPECT_EQ(joined(f.responder.receive(kIdentify)), bytesOf({0x47, 0x50, 0x64, 0x64}));
    EXPECT_EQ(joined(f.responder.receive(header(0))), zblHeaderFrame(z.zblFiles[0]).left(50));
    const QByteArray good = zblDataFrame(z.zblFiles[0]);
    const QByteArray bad = joined(f.responder.receive(data(0)));
    EXPECT_EQ(bad.size(), 3 * 120 + 6);
    EXPECT_EQ(bad.chopped(1), good.chopped(1));
    EXPECT_NE(bad.back(), good.back());
}

TEST(instrumentResponder, LogNamesCommandsAndReplies)
{
    Fixture f;
    f.responder.receive(kIdentify);
    EXPECT_EQ(f.log, (QStringList{QStringLiteral("command 1: identify (48 50 C9 C9)"),
                                  QStringLiteral("reply to identify: 4 bytes: 47 50 63 63")}));
}

TEST(instrumentResponder, HexTextShortensLongRuns)
{
    EXPECT_EQ(hexText(bytesOf({0x00, 0xAB, 0x7F})), QStringLiteral("00 AB 7F"));
    QByteArray many;
    for (int i = 0; i < 20; ++i)
        many.append(static_cast<char>(i));
    EXPECT_EQ(hexText(many, 8), QStringLiteral("00 01 02 03 ... 11 12 13"));
    EXPECT_EQ(hexText(QByteArray()), QString());
}

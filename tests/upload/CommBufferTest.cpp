// The receive store: appends, reads and peeks, the flush that keeps the
// contents, the count without regard to any wrap, and the bounds failure one
// element past the end.
#include "shell/model/RuntimeError.h"
#include "tests/support/Failure.h"
#include "upload/model/CCommBuffCirculaire.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

using namespace quenby;
using namespace quenby::testing;

namespace {

QByteArray bytesOf(std::initializer_list<int> values)
{
    QByteArray bytes;
    for (int v : values)
        bytes.append(static_cast<char>(static_cast<unsigned char>(v)));
    return bytes;
}

class receiveStore : public ::testing::Test
{
protected:
    // The store is 100 KB: kept off the stack.
    std::unique_ptr<CCommBuffCirculaire> store = std::make_unique<CCommBuffCirculaire>();

    int count() const
    {
        return static_cast<int>(store->GetNumberOfNewByteInCircularBuffer().toNumber());
    }
};

} // namespace

TEST_F(receiveStore, StartsWithBothIndexesAtZeroAndNothingNew)
{
    EXPECT_EQ(store->putIndex(), 0);
    EXPECT_EQ(store->getIndex(), 0);
    const Dynamic n = store->GetNumberOfNewByteInCircularBuffer();
    EXPECT_TRUE(n.isNumber());
    EXPECT_EQ(n.toNumber(), 0.0);
}

TEST_F(receiveStore, PutAppendsAndGetReadsInOrder)
{
    store->PutDataOnBuffer(bytesOf({0x47, 0x50}));
    store->PutDataOnBuffer(bytesOf({0x63, 0x01, 0x02}));
    EXPECT_EQ(store->putIndex(), 5);
    EXPECT_EQ(count(), 5);

    EXPECT_EQ(store->GetDataOnBuffer(2), bytesOf({0x47, 0x50}));
    EXPECT_EQ(store->getIndex(), 2);
    EXPECT_EQ(count(), 3);
    EXPECT_EQ(store->GetDataOnBuffer(3), bytesOf({0x63, 0x01, 0x02}));
    EXPECT_EQ(count(), 0);
}

TEST_F(receiveStore, LastCountIsTheUpperBoundOfTheLastArray)
{
    store->PutDataOnBuffer(bytesOf({1, 2, 3, 4}));
    EXPECT_EQ(store->lastCount(), 3);
    store->PutDataOnBuffer(bytesOf({9}));
    EXPECT_EQ(store->lastCount(), 0);
    store->PutDataOnBuffer(QByteArray());
    EXPECT_EQ(store->lastCount(), -1);
    EXPECT_EQ(store->putIndex(), 5);
}

TEST_F(receiveStore, FlushCountsZeroButKeepsTheOldContents)
{
    store->PutDataOnBuffer(bytesOf({0x11, 0x22, 0x33}));
    store->flushPutIndexBuffer();
    EXPECT_EQ(store->putIndex(), 0);
    EXPECT_EQ(store->getIndex(), 0);
    EXPECT_EQ(count(), 0);
    // The bytes are still in the array: a read past the count finds them.
    EXPECT_EQ(store->GetDataOnBuffer(3), bytesOf({0x11, 0x22, 0x33}));
}

TEST_F(receiveStore, PeekTwiceGivesTheSameBytesAndAGetGivesThemAgain)
{
    store->PutDataOnBuffer(bytesOf({0x47, 0x50, 0x6C, 0x00, 0x02}));
    store->GetDataOnBuffer(1);
    EXPECT_EQ(store->PeekDataBuffer(3), bytesOf({0x50, 0x6C, 0x00}));
    EXPECT_EQ(store->PeekDataBuffer(3), bytesOf({0x50, 0x6C, 0x00}));
    EXPECT_EQ(store->getIndex(), 1);
    EXPECT_EQ(count(), 4);
    EXPECT_EQ(store->GetDataOnBuffer(3), bytesOf({0x50, 0x6C, 0x00}));
    EXPECT_EQ(store->getIndex(), 4);
}

TEST_F(receiveStore, AReadOfNothingGivesAnEmptyArray)
{
    store->PutDataOnBuffer(bytesOf({1, 2}));
    EXPECT_TRUE(store->GetDataOnBuffer(0).isEmpty());
    EXPECT_TRUE(store->PeekDataBuffer(0).isEmpty());
    EXPECT_EQ(store->getIndex(), 0);
}

TEST_F(receiveStore, ReadingMoreThanStoredGivesStaleBytesAndANegativeCount)
{
    store->PutDataOnBuffer(bytesOf({0xAA, 0xBB, 0xCC, 0xDD}));
    store->flushPutIndexBuffer();
    store->PutDataOnBuffer(bytesOf({0x01}));
    // One new byte, then the old contents behind it.
    EXPECT_EQ(store->GetDataOnBuffer(4), bytesOf({0x01, 0xBB, 0xCC, 0xDD}));
    EXPECT_EQ(store->getIndex(), 4);
    EXPECT_EQ(count(), 1 - 4);
    // Never-written elements read as 0.
    EXPECT_EQ(store->PeekDataBuffer(2), bytesOf({0x00, 0x00}));
}

TEST_F(receiveStore, PutIndexAtTheLastElementTakesOneMoreByteThenFails)
{
    store->PutDataOnBuffer(QByteArray(CCommBuffCirculaire::UpperBound, '\x05'));
    ASSERT_EQ(store->putIndex(), 100000);

    // Element 100000 takes the byte; the index then moves to 100001 rather
    // than wrapping.
    store->PutDataOnBuffer(bytesOf({0x7E}));
    EXPECT_EQ(store->putIndex(), 100001);
    EXPECT_EQ(count(), 100001);

    EXPECT_EQ(failureOf([&] { store->PutDataOnBuffer(bytesOf({0x01})); }),
              err::SubscriptOutOfRange);
}

TEST_F(receiveStore, ReadingThroughTheLastElementFailsOnTheNextRead)
{
    QByteArray all(CCommBuffCirculaire::UpperBound + 1, '\x00');
    all[CCommBuffCirculaire::UpperBound] = '\x5A';
    store->PutDataOnBuffer(all);

    const QByteArray peeked = store->PeekDataBuffer(CCommBuffCirculaire::UpperBound + 1);
    EXPECT_EQ(peeked.size(), 100001);
    EXPECT_EQ(peeked.back(), '\x5A');

    const QByteArray read = store->GetDataOnBuffer(CCommBuffCirculaire::UpperBound + 1);
    EXPECT_EQ(read.back(), '\x5A');
    EXPECT_EQ(store->getIndex(), 100001);
    EXPECT_EQ(failureOf([&] { store->GetDataOnBuffer(1); }), err::SubscriptOutOfRange);
    EXPECT_EQ(failureOf([&] { store->PeekDataBuffer(1); }), err::SubscriptOutOfRange);
}

TEST_F(receiveStore, AFlushAfterTheFailurePointMakesTheStoreUsableAgain)
{
    store->PutDataOnBuffer(QByteArray(CCommBuffCirculaire::UpperBound + 1, '\x01'));
    store->flushPutIndexBuffer();
    store->PutDataOnBuffer(bytesOf({0x47, 0x50}));
    EXPECT_EQ(count(), 2);
    EXPECT_EQ(store->GetDataOnBuffer(2), bytesOf({0x47, 0x50}));
}

#include <gtest/gtest.h>

#include <set>
#include <thread>

#include "recording/FrameRing.h"

namespace orvane {
namespace frame_ring_test {


TEST(FrameRingTest, HandsOutEverySlotOnceThenNone) {
    FrameRing ring(3);
    ASSERT_EQ(ring.allocate(64, 36, AV_PIX_FMT_YUV420P), QString());
    std::set<int> handedOut;
    for (int i = 0; i < 3; ++i) handedOut.insert(ring.acquire());
    EXPECT_EQ(handedOut, (std::set<int>{0, 1, 2}));
    EXPECT_EQ(ring.acquire(), -1) << "all slots are being filled";
    for (int slot : handedOut) {
        AVFrame* picture = ring.picture(slot);
        ASSERT_NE(picture, nullptr);
        EXPECT_EQ(picture->width, 64);
        EXPECT_EQ(picture->height, 36);
        EXPECT_NE(picture->data[0], nullptr);
    }
}

TEST(FrameRingTest, QueuedSlotsComeOutInOrderAndReturnWhenReleased) {
    FrameRing ring(3);
    ASSERT_EQ(ring.allocate(64, 36, AV_PIX_FMT_YUV420P), QString());
    const int a = ring.acquire();
    const int b = ring.acquire();
    ring.push(a, 10);
    ring.push(b, 11);
    std::optional<FrameRing::Item> first = ring.pop({});
    std::optional<FrameRing::Item> second = ring.pop({});
    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->slot, a);
    EXPECT_EQ(first->frameIndex, 10);
    EXPECT_EQ(second->slot, b);
    EXPECT_EQ(second->frameIndex, 11);
    // a is free again once released; b, the latest, is kept for repeats.
    const int c = ring.acquire();
    EXPECT_NE(c, -1);
    EXPECT_NE(c, a);
    EXPECT_NE(c, b);
    EXPECT_EQ(ring.acquire(), -1) << "a is still being encoded, b is the latest";
    ring.release(first->slot);
    EXPECT_EQ(ring.acquire(), a);
    ring.release(second->slot);
    EXPECT_EQ(ring.acquire(), -1) << "the latest picture is never handed out for filling";
}

TEST(FrameRingTest, RepeatsTheLatestPictureAndKeepsItUntilEveryUseIsReleased) {
    FrameRing ring(3);
    ASSERT_EQ(ring.allocate(64, 36, AV_PIX_FMT_YUV420P), QString());
    EXPECT_FALSE(ring.repeatLatest(0)) << "nothing pushed yet";
    const int a = ring.acquire();
    ring.push(a, 0);
    EXPECT_TRUE(ring.repeatLatest(1));
    EXPECT_TRUE(ring.repeatLatest(2));
    EXPECT_FALSE(ring.repeatLatest(3)) << "the queue is as long as the ring";
    EXPECT_EQ(ring.acquire(), -1) << "the queue is full";
    for (std::int64_t index = 0; index < 3; ++index) {
        const std::optional<FrameRing::Item> item = ring.pop({});
        ASSERT_TRUE(item);
        EXPECT_EQ(item->slot, a);
        EXPECT_EQ(item->frameIndex, index);
        ring.release(item->slot);
    }
    // A new picture makes another slot the latest, and a free for filling.
    const int b = ring.acquire();
    ASSERT_NE(b, -1);
    ring.push(b, 4);
    const int next = ring.acquire();
    EXPECT_NE(next, b);
    EXPECT_NE(next, -1);
}

TEST(FrameRingTest, CloseEndsTheWaitOfTheEncoderThread) {
    FrameRing ring(2);
    ASSERT_EQ(ring.allocate(64, 36, AV_PIX_FMT_YUV420P), QString());
    std::optional<FrameRing::Item> got{FrameRing::Item{}};
    std::thread encoder([&] { got = ring.pop({}); });
    ring.close();
    encoder.join();
    EXPECT_FALSE(got);
    EXPECT_FALSE(ring.repeatLatest(0));
}

TEST(FrameRingTest, WhatIsQueuedBeforeCloseIsStillHandedOut) {
    FrameRing ring(2);
    ASSERT_EQ(ring.allocate(64, 36, AV_PIX_FMT_YUV420P), QString());
    ring.push(ring.acquire(), 7);
    ring.close();
    const std::optional<FrameRing::Item> item = ring.pop({});
    ASSERT_TRUE(item);
    EXPECT_EQ(item->frameIndex, 7);
    EXPECT_FALSE(ring.pop({}));
}

}  // namespace
}  // namespace orvane

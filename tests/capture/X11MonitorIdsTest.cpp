#include <gtest/gtest.h>

#include <set>

#include "capture/x11/X11MonitorIds.h"

namespace orvane {
namespace x11_monitor_ids_test {

using Monitor = X11MonitorIds::Monitor;

TEST(X11MonitorIds, AMonitorAloneOnItsOutputKeepsTheOutputId) {
    const auto ids = X11MonitorIds::assign({{"HDMI-1", {60}}, {"DP-2", {61, 62}}});
    EXPECT_EQ(ids, (std::vector<std::uint32_t>{60, 61}));
}

TEST(X11MonitorIds, MonitorsSharingAnOutputGetIdsOfTheirNames) {
    // An ultra-wide screen on output 60 split in two, next to a plain one.
    const auto ids = X11MonitorIds::assign({{"WideLeft", {60}}, {"WideRight", {60}}, {"Side", {70}}});
    ASSERT_EQ(ids.size(), 3u);
    EXPECT_EQ(ids[0], X11MonitorIds::nameId("WideLeft"));
    EXPECT_EQ(ids[1], X11MonitorIds::nameId("WideRight"));
    EXPECT_NE(ids[0], ids[1]);
    EXPECT_EQ(ids[2], 70u);
    // Neither half keeps the shared output's id: it would name both.
    EXPECT_NE(ids[0], 60u);
    EXPECT_NE(ids[1], 60u);
    // A second output anywhere in a monitor's list counts as shared too.
    const auto spanning = X11MonitorIds::assign({{"Both", {60, 61}}, {"Second", {61}}});
    EXPECT_EQ(spanning[0], 60u);
    EXPECT_EQ(spanning[1], X11MonitorIds::nameId("Second"));
}

TEST(X11MonitorIds, AMonitorWithoutOutputsGetsTheIdOfItsName) {
    const auto ids = X11MonitorIds::assign({{"Left", {60}}, {"Right", {}}});
    EXPECT_EQ(ids[0], 60u);
    EXPECT_EQ(ids[1], X11MonitorIds::nameId("Right"));
}

TEST(X11MonitorIds, NameIdsAreFnv1aFoldedTo31BitsWithTheTopBitSet) {
    // Saved scenes hold these values: they must never change. Computed
    // apart from this code: 32-bit FNV-1a, the top bit xored into the
    // lowest, then the top bit set.
    EXPECT_EQ(X11MonitorIds::nameId(""), 0x811c9dc4u);
    EXPECT_EQ(X11MonitorIds::nameId("Left"), 0x92773891u);
    EXPECT_EQ(X11MonitorIds::nameId("Right"), 0x9e9e9f85u);
    for (const char* name : {"a", "DP-1", "Monitor-0000003f", "Display with a long name"})
        EXPECT_NE(X11MonitorIds::nameId(name) & X11MonitorIds::kNameIdBit, 0u) << name;
}

TEST(X11MonitorIds, CollidingNamesGetDistinctIdsWhateverTheListingOrder) {
    // Two names with one hash, found by search.
    const QByteArray first = "Half-132789", second = "Half-729192";
    const std::uint32_t shared = X11MonitorIds::nameId(first);
    ASSERT_EQ(X11MonitorIds::nameId(second), shared);

    const auto forward = X11MonitorIds::assign({{first, {}}, {second, {}}, {"Other", {50}}});
    const auto backward = X11MonitorIds::assign({{"Other", {50}}, {second, {}}, {first, {}}});
    // The name first in byte order keeps the hash; the other takes the next value.
    EXPECT_EQ(forward[0], shared);
    EXPECT_EQ(forward[1], shared + 1);
    EXPECT_EQ(backward[2], shared);
    EXPECT_EQ(backward[1], shared + 1);
    EXPECT_EQ(forward[2], 50u);
    EXPECT_EQ(backward[0], 50u);

    // Many monitors on one output, the colliding pair among them: no id repeats.
    std::vector<Monitor> crowded{{first, {60}}, {second, {60}}};
    for (int i = 0; i < 2000; ++i) {
        const QByteArray name = "Split-" + QByteArray::number(i);
        crowded.push_back({name, {60}});
    }
    const auto ids = X11MonitorIds::assign(crowded);
    EXPECT_EQ(std::set<std::uint32_t>(ids.begin(), ids.end()).size(), ids.size());
    for (const std::uint32_t id : ids) EXPECT_NE(id & X11MonitorIds::kNameIdBit, 0u);
}

}  // namespace
}  // namespace orvane

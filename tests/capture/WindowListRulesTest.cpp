#include <gtest/gtest.h>

#include "capture/WindowListRules.h"

namespace orvane {
namespace window_list_rules_test {

ShareableWindow window(std::uint32_t id, const char* title, std::optional<QString> owner, int layer = 0) {
    ShareableWindow w;
    w.id = id;
    w.title = QString::fromUtf8(title);
    w.applicationName = std::move(owner);
    w.windowLayer = layer;
    w.frame = QRect(10, 20, 300, 200);
    return w;
}

std::vector<std::uint32_t> ids(const QList<CaptureWindow>& windows) {
    std::vector<std::uint32_t> result;
    for (const auto& w : windows) result.push_back(w.id);
    return result;
}

TEST(WindowListRules, DropsOtherLayersAndNamelessWindows) {
    const auto list = WindowListRules::selectable({
        window(1, "Editor", QString("Code")),
        window(2, "Panel", QString("Dock"), 20),
        window(3, "", std::nullopt),
        window(4, "", QString("")),
        window(5, "Below", QString("Desk"), -1),
    });
    EXPECT_EQ(ids(list), (std::vector<std::uint32_t>{1}));
}

TEST(WindowListRules, EmptyTitleShowsTheOwnerAlone) {
    const auto list = WindowListRules::selectable({window(7, "", QString("Music"))});
    ASSERT_EQ(list.size(), 1);
    EXPECT_EQ(list[0].displayName(), "Music");
    EXPECT_EQ(list[0].bounds, QRect(10, 20, 300, 200));
}

TEST(WindowListRules, TitleWithoutOwnerIsKeptAsUnknown) {
    const auto list = WindowListRules::selectable({window(8, "Orphan", std::nullopt)});
    ASSERT_EQ(list.size(), 1);
    EXPECT_EQ(list[0].ownerName, "Unknown");
    EXPECT_EQ(list[0].displayName(), "Unknown - Orphan");
}

TEST(WindowListRules, SortsByOwnerInPlainOrderKeepingServerOrder) {
    const auto list = WindowListRules::selectable({
        window(1, "b1", QString("beta")),
        window(2, "Z1", QString("Zeta")),
        window(3, "b2", QString("beta")),
        window(4, "A1", QString("Alpha")),
        window(5, "b0", QString("beta")),
    });
    // Capitals before lower case; beta's windows keep their order.
    EXPECT_EQ(ids(list), (std::vector<std::uint32_t>{4, 2, 1, 3, 5}));
}

TEST(WindowListRules, SearchMatchesAcrossTheJoinedName) {
    const auto list = WindowListRules::selectable({
        window(1, "Orvane Term", QString("XTerm")),
        window(2, "Notes", QString("Editor")),
    });
    struct Case {
        const char* text;
        std::vector<std::uint32_t> expected;
    };
    const Case cases[] = {
        {"", {2, 1}},
        {"term - orv", {1}},
        {"XTERM", {1}},
        {"r - n", {2}},
        {"nothing like it", {}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(ids(WindowListRules::search(list, QString::fromUtf8(c.text))), c.expected) << c.text;
}

}  // namespace
}  // namespace orvane

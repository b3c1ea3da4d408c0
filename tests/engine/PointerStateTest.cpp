// The pointer fields on their own: initial values, notification only on a
// change (the click moment on every assignment), and the meta-object names.

#include <QMetaProperty>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include "engine/PointerState.h"

namespace orvane {
namespace pointer_state_test {

TEST(PointerState, StartsWithTheCursorShownAndNothingTracked) {
    const QDateTime before = QDateTime::currentDateTimeUtc();
    PointerState pointer;
    EXPECT_TRUE(pointer.showCursor());
    EXPECT_FALSE(pointer.cursorHighlight());
    EXPECT_FALSE(pointer.showClicks());
    EXPECT_EQ(pointer.cursorHighlightColor(), (CodableColor{1, 1, 0, 1}));
    EXPECT_EQ(pointer.globalMouseLocation(), (Point{0, 0}));
    EXPECT_FALSE(pointer.isMouseOverMainWindow());
    EXPECT_EQ(pointer.lastClickPosition(), (Point{0, 0}));
    EXPECT_GE(pointer.clickTimestamp(), before.addSecs(-1));
    EXPECT_EQ(pointer.mainWindowSize(), (Size{0, 0}));
}

TEST(PointerState, ValuesNotifyOnlyWhenTheyChange) {
    PointerState pointer;
    QSignalSpy cursor(&pointer, &PointerState::showCursorChanged);
    QSignalSpy location(&pointer, &PointerState::globalMouseLocationChanged);
    QSignalSpy size(&pointer, &PointerState::mainWindowSizeChanged);
    QSignalSpy colour(&pointer, &PointerState::cursorHighlightColorChanged);

    pointer.setShowCursor(true);
    pointer.setGlobalMouseLocation({0, 0});
    pointer.setMainWindowSize({0, 0});
    pointer.setCursorHighlightColor({1, 1, 0, 1});
    for (const QSignalSpy* spy : {&cursor, &location, &size, &colour}) EXPECT_EQ(spy->count(), 0);

    pointer.setShowCursor(false);
    pointer.setGlobalMouseLocation({12, 34});
    pointer.setMainWindowSize({800, 600});
    pointer.setCursorHighlightColor({0, 1, 0, 1});
    for (const QSignalSpy* spy : {&cursor, &location, &size, &colour}) EXPECT_EQ(spy->count(), 1);
    EXPECT_EQ(cursor.at(0).at(0).toBool(), false);
    EXPECT_EQ(pointer.globalMouseLocation(), (Point{12, 34}));
    EXPECT_EQ(pointer.mainWindowSize(), (Size{800, 600}));
}

TEST(PointerState, EveryClickMomentNotifies) {
    PointerState pointer;
    QSignalSpy clicked(&pointer, &PointerState::clickTimestampChanged);
    const QDateTime moment = pointer.clickTimestamp();
    pointer.setClickTimestamp(moment);
    pointer.setClickTimestamp(moment);
    EXPECT_EQ(clicked.count(), 2);
}

TEST(PointerState, EveryFieldIsANotifyingProperty) {
    const QMetaObject& meta = PointerState::staticMetaObject;
    std::vector<std::string> names;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        names.emplace_back(property.name());
        EXPECT_TRUE(property.hasNotifySignal()) << property.name();
        EXPECT_TRUE(property.isWritable()) << property.name();
    }
    EXPECT_EQ(names, (std::vector<std::string>{"showCursor", "cursorHighlight", "showClicks", "cursorHighlightColor",
                                               "globalMouseLocation", "isMouseOverMainWindow", "lastClickPosition",
                                               "clickTimestamp", "mainWindowSize"}));
}

}  // namespace
}  // namespace orvane

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "capture/CaptureHub.h"
#include "capture/ScreenCaptureViewModel.h"
#include "capture/WindowCaptureManager.h"
#include "capture/x11/X11CaptureBackend.h"
#include "support/QStringPrinter.h"
#include "support/ManagerFetch.h"
#include "support/QtTestEnvironment.h"
#include "support/X11TestClient.h"

namespace orvane {
namespace x11_capture_test {

QByteArray display() { return test::QtTestEnvironment::instance()->displayServer().displayName(); }

class X11CaptureTest : public ::testing::Test {
protected:
    void SetUp() override {
        auto listed = backend.displays();
        ASSERT_TRUE(listed.ok());
        ASSERT_EQ(listed.value().size(), 2u);
        leftId = listed.value()[0].id;
        rightId = listed.value()[1].id;
    }

    static Source screen(std::optional<std::uint32_t> id) {
        Source s;
        s.type = SourceType::screen;
        s.configuration.screenId = id;
        return s;
    }

    static Source window(std::uint32_t id, const char* owner = nullptr, const char* title = nullptr) {
        Source s;
        s.type = SourceType::window;
        s.configuration.windowId = id;
        if (owner) s.configuration.windowOwner = owner;
        if (title) s.configuration.windowTitle = title;
        return s;
    }

    // A frame taken after this call.
    static QImage freshFrame(ScreenCaptureViewModel& model) {
        const std::uint64_t seen = model.capture() ? model.capture()->latestFrame().sequence : 0;
        test::waitUntil([&] { return model.capture() && model.capture()->latestFrame().sequence > seen + 1; });
        return model.capture() ? model.capture()->latestFrame().image : QImage();
    }

    std::uint32_t windowIdOf(const QString& title) {
        WindowCaptureManager manager(backend);
        std::uint32_t id = 0;
        test::waitUntil([&] {
            test::fetchAndWait(manager);
            for (const auto& w : manager.availableWindows())
                if (w.title == title) id = w.id;
            return id != 0;
        });
        return id;
    }

    X11CaptureBackend backend{display()};
    CaptureHub hub;
    std::uint32_t leftId = 0, rightId = 0;
};

TEST_F(X11CaptureTest, DisplayCaptureShowsAColourWhereItIs) {
    auto blue = test::colourWindow(Qt::blue, QRect(100, 100, 200, 200), "blue", false);
    auto red = test::colourWindow(Qt::red, QRect(1200, 300, 210, 210), "red", false);

    // Left at its own size: no scaling, the square where it was put.
    ScreenCaptureViewModel left(backend, hub);
    left.startCapture(screen(leftId), CaptureQuality{960, 1080, 30});
    ASSERT_TRUE(test::waitUntil([&] {
        const QImage frame = left.capturedImage();
        return !frame.isNull() && test::pixelsUnlike(frame, QRect(100, 100, 200, 200), Qt::blue) == 0;
    }));
    EXPECT_EQ(left.capturedImage().size(), QSize(960, 1080));
    EXPECT_GT(test::pixelsUnlike(left.capturedImage(), QRect(310, 100, 50, 50), Qt::blue), 0);

    // Right at the balanced size: 960x1080 fits 1280x720 as 640x720 in the
    // middle, scaled by 2/3, so the red square at (240,300) on that display
    // lands at (320 + 160, 200) and is 140 wide.
    ScreenCaptureViewModel right(backend, hub);
    right.startCapture(screen(rightId), CaptureQuality::forOrdinal(1));
    ASSERT_TRUE(test::waitUntil([&] {
        const QImage frame = right.capturedImage();
        return !frame.isNull() && test::pixelsUnlike(frame, QRect(484, 204, 132, 132), Qt::red) == 0;
    }));
    const QImage frame = right.capturedImage();
    EXPECT_EQ(frame.size(), QSize(1280, 720));
    EXPECT_EQ(test::pixelsUnlike(frame, QRect(0, 0, 318, 720), Qt::black), 0);
    EXPECT_EQ(test::pixelsUnlike(frame, QRect(962, 0, 318, 720), Qt::black), 0);
    EXPECT_GT(test::pixelsUnlike(frame, QRect(470, 190, 10, 10), Qt::red), 0);
}

TEST_F(X11CaptureTest, CoveredWindowKeepsShowingItsContent) {
    auto green = test::colourWindow(Qt::green, QRect(200, 200, 400, 300), "Covered Window", true);
    const std::uint32_t id = windowIdOf("Covered Window");
    ASSERT_NE(id, 0u);

    ScreenCaptureViewModel model(backend, hub);
    model.startCapture(window(id), CaptureQuality::forOrdinal(2));
    ASSERT_TRUE(test::waitUntil([&] {
        const QImage f = model.capturedImage();
        return !f.isNull() && test::pixelsUnlike(f, QRect(150, 100, 100, 100), Qt::green) == 0;
    }));
    EXPECT_EQ(model.capturedImage().size(), QSize(400, 300));  // its own size, not the quality's

    auto cover = test::colourWindow(Qt::magenta, QRect(100, 100, 700, 600), "Cover", false);
    test::X11TestClient client(display());
    const QRect middle(green->geometry().center() - QPoint(20, 20), QSize(40, 40));
    // The screen really shows the cover now ...
    ASSERT_TRUE(test::waitUntil([&] {
        return test::pixelsUnlike(client.screenPixels(middle), QRect(0, 0, 40, 40), Qt::magenta) == 0;
    }));
    // ... while the capture still shows the window.
    const QImage covered = freshFrame(model);
    EXPECT_EQ(test::pixelsUnlike(covered, QRect(0, 0, 400, 300), Qt::green), 0);
}

TEST_F(X11CaptureTest, WindowCoveredBeforeTheCaptureStartsIsShownWhole) {
    auto green = test::colourWindow(Qt::green, QRect(200, 200, 400, 300), "Hidden Window", true);
    const std::uint32_t id = windowIdOf("Hidden Window");
    ASSERT_NE(id, 0u);
    auto cover = test::colourWindow(Qt::magenta, QRect(100, 100, 700, 600), "Cover", false);
    test::X11TestClient client(display());
    const QRect middle(green->geometry().center() - QPoint(20, 20), QSize(40, 40));
    ASSERT_TRUE(test::waitUntil([&] {
        return test::pixelsUnlike(client.screenPixels(middle), QRect(0, 0, 40, 40), Qt::magenta) == 0;
    }));

    // Redirected now, the window paints its whole self into its own pixmap.
    ScreenCaptureViewModel model(backend, hub);
    model.startCapture(window(id), CaptureQuality::forOrdinal(2));
    EXPECT_TRUE(test::waitUntil([&] {
        const QImage f = model.capturedImage();
        return !f.isNull() && test::pixelsUnlike(f, QRect(0, 0, 400, 300), Qt::green) == 0;
    }));
}

TEST_F(X11CaptureTest, StaleWindowIdFallsBackByOwnerAndTitleAtQualitySize) {
    auto target = test::colourWindow(QColor(0, 128, 255), QRect(300, 300, 320, 200), "Fallback Target", true);
    auto sibling = test::colourWindow(QColor(255, 128, 0), QRect(650, 300, 320, 200), "Sibling", true);
    ASSERT_NE(windowIdOf("Fallback Target"), 0u);
    ASSERT_NE(windowIdOf("Sibling"), 0u);

    ScreenCaptureViewModel byTitle(backend, hub);
    byTitle.startCapture(window(0x7ffff0, "orvaneprobe", "Sibling"), CaptureQuality::forOrdinal(1));
    ASSERT_TRUE(test::waitUntil([&] { return !byTitle.capturedImage().isNull(); }));
    EXPECT_EQ(byTitle.capturedImage().size(), QSize(1280, 720));
    EXPECT_TRUE(byTitle.windowFrame().isEmpty());
    // 320x200 fills 1280x720 to 1152x720, centred: the middle is orange.
    EXPECT_TRUE(test::waitUntil([&] {
        return test::pixelsUnlike(byTitle.capturedImage(), QRect(600, 320, 80, 80), QColor(255, 128, 0)) == 0;
    }));

    ScreenCaptureViewModel stale(backend, hub);
    stale.startCapture(window(0x7ffff0, "nobody-has-this"), CaptureQuality::forOrdinal(1));
    EXPECT_EQ(stale.errorMessage(), "Capture error: Window not found");
    EXPECT_FALSE(stale.isCapturing());
}

TEST_F(X11CaptureTest, StaleScreenIdFails) {
    ScreenCaptureViewModel model(backend, hub);
    model.startCapture(screen(0x1234), CaptureQuality::forOrdinal(1));
    EXPECT_EQ(model.errorMessage(), "Capture error: No display found");
    EXPECT_FALSE(model.isCapturing());
    EXPECT_EQ(backend.openStreamCount(), 0);
}

TEST_F(X11CaptureTest, CursorAppearsOnlyInsideTheTarget) {
    const QColor grey(90, 90, 90);
    auto background = test::colourWindow(grey, QRect(0, 0, 960, 1080), "background", false);
    test::X11TestClient client(display());
    client.warpPointer(1400, 500);  // on the right display

    ScreenCaptureViewModel model(backend, hub);
    QSignalSpy changes(&model, &ScreenCaptureViewModel::isMouseOverWindowChanged);
    model.startCapture(screen(leftId), CaptureQuality{960, 1080, 30});
    ASSERT_TRUE(test::waitUntil([&] {
        const QImage f = model.capturedImage();
        return !f.isNull() && test::pixelsUnlike(f, QRect(0, 0, 960, 1080), grey) == 0;
    }));
    EXPECT_FALSE(model.isMouseOverWindow());
    auto capture = model.capture();

    client.warpPointer(480, 540);
    ASSERT_TRUE(test::waitUntil([&] { return model.isMouseOverWindow(); }));
    EXPECT_GT(test::pixelsUnlike(freshFrame(model), QRect(460, 520, 40, 40), grey), 10);

    // Moving inside without crossing the edge changes nothing.
    client.warpPointer(500, 560);
    QImage moved = freshFrame(model);
    moved = freshFrame(model);
    EXPECT_GT(test::pixelsUnlike(moved, QRect(480, 540, 40, 40), grey), 10);
    EXPECT_EQ(changes.count(), 1);

    client.warpPointer(1500, 560);
    ASSERT_TRUE(test::waitUntil([&] { return !model.isMouseOverWindow(); }));
    EXPECT_EQ(test::pixelsUnlike(freshFrame(model), QRect(0, 0, 960, 1080), grey), 0);
    EXPECT_EQ(changes.count(), 2);
    // The same stream throughout: the setting changed, nothing restarted.
    EXPECT_EQ(model.capture().get(), capture.get());
    EXPECT_EQ(capture->cursorUpdateCount(), 2);
    EXPECT_EQ(backend.openStreamCount(), 1);
}

TEST_F(X11CaptureTest, WindowCaptureShowsTheCursorOnlyOverTheWindow) {
    const QColor teal(0, 128, 128);
    auto target = test::colourWindow(teal, QRect(300, 300, 400, 300), "Cursor Window", true);
    const std::uint32_t id = windowIdOf("Cursor Window");
    ASSERT_NE(id, 0u);
    test::X11TestClient client(display());
    client.warpPointer(1500, 900);

    ScreenCaptureViewModel model(backend, hub);
    model.startCapture(window(id), CaptureQuality::forOrdinal(2));
    ASSERT_TRUE(test::waitUntil([&] {
        const QImage f = model.capturedImage();
        return !f.isNull() && test::pixelsUnlike(f, QRect(0, 0, 400, 300), teal) == 0;
    }));
    const QRect bounds = model.windowFrame();
    ASSERT_EQ(bounds.size(), QSize(400, 300));

    // The pointer 100 px into the window puts the cursor there in the frame.
    client.warpPointer(bounds.x() + 100, bounds.y() + 100);
    ASSERT_TRUE(test::waitUntil([&] { return model.isMouseOverWindow(); }));
    const QImage inside = freshFrame(model);
    EXPECT_GT(test::pixelsUnlike(inside, QRect(85, 85, 30, 30), teal), 10);
    EXPECT_EQ(test::pixelsUnlike(inside, QRect(250, 200, 100, 80), teal), 0);

    client.warpPointer(1500, 900);
    ASSERT_TRUE(test::waitUntil([&] { return !model.isMouseOverWindow(); }));
    EXPECT_EQ(test::pixelsUnlike(freshFrame(model), QRect(0, 0, 400, 300), teal), 0);
}

TEST_F(X11CaptureTest, CursorImageFollowsTheCursorTheServerShows) {
    // Two windows of one colour; over the right one the pointer is hidden.
    // The capture keeps the cursor image between frames, so it must notice
    // each change of cursor, both ways.
    const QColor grey(90, 90, 90);
    auto background = test::colourWindow(grey, QRect(0, 0, 480, 1080), "background", false);
    auto hiding = test::colourWindow(grey, QRect(480, 0, 480, 1080), "hiding", false);
    hiding->setCursor(Qt::BlankCursor);
    test::X11TestClient client(display());
    client.warpPointer(1400, 500);  // on the right display

    ScreenCaptureViewModel model(backend, hub);
    model.startCapture(screen(leftId), CaptureQuality{960, 1080, 30});
    ASSERT_TRUE(test::waitUntil([&] {
        const QImage f = model.capturedImage();
        return !f.isNull() && test::pixelsUnlike(f, QRect(0, 0, 960, 1080), grey) == 0;
    }));

    client.warpPointer(240, 540);
    ASSERT_TRUE(test::waitUntil([&] { return model.isMouseOverWindow(); }));
    EXPECT_GT(test::pixelsUnlike(freshFrame(model), QRect(220, 520, 40, 40), grey), 10);

    client.warpPointer(720, 540);
    EXPECT_EQ(test::pixelsUnlike(freshFrame(model), QRect(0, 0, 960, 1080), grey), 0);
    EXPECT_TRUE(model.isMouseOverWindow());

    client.warpPointer(250, 540);
    EXPECT_GT(test::pixelsUnlike(freshFrame(model), QRect(230, 520, 40, 40), grey), 10);
}

TEST_F(X11CaptureTest, ScreenWithoutStoredIdNeverShowsTheCursor) {
    const QColor grey(90, 90, 90);
    auto background = test::colourWindow(grey, QRect(0, 0, 960, 1080), "background", false);
    test::X11TestClient client(display());
    client.warpPointer(480, 540);

    ScreenCaptureViewModel model(backend, hub);
    model.startCapture(screen(std::nullopt), CaptureQuality{960, 1080, 30});
    ASSERT_TRUE(test::waitUntil([&] {
        const QImage f = model.capturedImage();
        return !f.isNull() && test::pixelsUnlike(f, QRect(0, 0, 400, 400), grey) == 0;
    }));
    client.warpPointer(490, 550);
    EXPECT_EQ(test::pixelsUnlike(freshFrame(model), QRect(0, 0, 960, 1080), grey), 0);
    EXPECT_FALSE(model.isMouseOverWindow());
}

TEST_F(X11CaptureTest, TwoViewsOfOneDisplayRunOneCapture) {
    ScreenCaptureViewModel preview(backend, hub), program(backend, hub);
    preview.startCapture(screen(leftId), CaptureQuality::forOrdinal(1));
    program.startCapture(screen(leftId), CaptureQuality::forOrdinal(1));
    ASSERT_TRUE(test::waitUntil([&] { return !preview.capturedImage().isNull() && !program.capturedImage().isNull(); }));
    EXPECT_EQ(backend.openStreamCount(), 1);
    EXPECT_EQ(hub.runningCount(), 1);

    ScreenCaptureViewModel elsewhere(backend, hub);
    elsewhere.startCapture(screen(rightId), CaptureQuality::forOrdinal(1));
    ASSERT_TRUE(test::waitUntil([&] { return !elsewhere.capturedImage().isNull(); }));
    EXPECT_EQ(backend.openStreamCount(), 2);

    preview.stopCapture();
    EXPECT_EQ(backend.openStreamCount(), 2);
    EXPECT_FALSE(program.capturedImage().isNull());
    program.stopCapture();
    elsewhere.stopCapture();
    EXPECT_EQ(backend.openStreamCount(), 0);
}

}  // namespace
}  // namespace orvane

// The session's pointer fields while a real pointer moves over real windows:
// the fields are declared and published, but nothing tracks the pointer, so
// none of them changes and none announces a change.

#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "engine/StreamManager.h"
#include "support/FakeWindowLayer.h"
#include "support/LogCapture.h"
#include "support/TestHome.h"

namespace orvane {
namespace pointer_tracking_test {

// Counts the pointer events the application delivers, to show that the
// motion was there to be seen by anything listening.
class PointerEventCounter : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (!qobject_cast<QWindow*>(watched)) return false;
        switch (event->type()) {
            case QEvent::MouseMove: ++moves; break;
            case QEvent::MouseButtonPress: ++presses; break;
            case QEvent::Enter:
            case QEvent::Leave: ++crossings; break;
            case QEvent::Resize: ++resizes; break;
            default: break;
        }
        return false;
    }
    int moves = 0;
    int presses = 0;
    int crossings = 0;
    int resizes = 0;
};

// What the pointer fields hold.
struct PointerFields {
    bool showCursor;
    bool cursorHighlight;
    bool showClicks;
    CodableColor cursorHighlightColor;
    Point globalMouseLocation;
    bool isMouseOverMainWindow;
    Point lastClickPosition;
    QDateTime clickTimestamp;
    Size mainWindowSize;

    static PointerFields of(const PointerState& s) {
        return {s.showCursor(),          s.cursorHighlight(),       s.showClicks(),
                s.cursorHighlightColor(), s.globalMouseLocation(),   s.isMouseOverMainWindow(),
                s.lastClickPosition(),   s.clickTimestamp(),        s.mainWindowSize()};
    }
    friend bool operator==(const PointerFields&, const PointerFields&) = default;
};

class PointerTrackingTest : public ::testing::Test {
protected:
    void SetUp() override {
        home.savePreset(test::presetWithScenes("Show", {"A", "B"}));
        session = home.startSession();
        ASSERT_TRUE(session->currentPreset());
        layer = std::make_shared<test::FakeWindowLayer>();
        session->setWindowLayer(layer);

        PointerState* s = &session->pointer();
        spies.push_back(std::make_unique<QSignalSpy>(s, &PointerState::showCursorChanged));
        spies.push_back(std::make_unique<QSignalSpy>(s, &PointerState::cursorHighlightChanged));
        spies.push_back(std::make_unique<QSignalSpy>(s, &PointerState::showClicksChanged));
        spies.push_back(std::make_unique<QSignalSpy>(s, &PointerState::cursorHighlightColorChanged));
        spies.push_back(std::make_unique<QSignalSpy>(s, &PointerState::globalMouseLocationChanged));
        spies.push_back(std::make_unique<QSignalSpy>(s, &PointerState::isMouseOverMainWindowChanged));
        spies.push_back(std::make_unique<QSignalSpy>(s, &PointerState::lastClickPositionChanged));
        spies.push_back(std::make_unique<QSignalSpy>(s, &PointerState::clickTimestampChanged));
        spies.push_back(std::make_unique<QSignalSpy>(s, &PointerState::mainWindowSizeChanged));
        for (const auto& spy : spies) ASSERT_TRUE(spy->isValid());

        mainWindow.setTitle(QStringLiteral("Console"));
        mainWindow.setGeometry(100, 100, 640, 480);
        mainWindow.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&mainWindow));
        qApp->installEventFilter(&counter);
    }
    void TearDown() override { qApp->removeEventFilter(&counter); }

    int notifications() const {
        int total = 0;
        for (const auto& spy : spies) total += static_cast<int>(spy->count());
        return total;
    }

    // The pointer across the screen and through the window: in from the
    // left, a zigzag inside, out at the bottom, with the event loop running
    // between steps the way it does while a user moves the mouse.
    void sweep() {
        for (int step = 0; step <= 40; ++step) {
            const QPoint global(20 + step * 20, 60 + (step % 2) * 300);
            QCursor::setPos(global);
            EXPECT_EQ(QCursor::pos(), global);
            QTest::qWait(5);
        }
        for (int step = 0; step < 30; ++step) {
            QTest::mouseMove(&mainWindow, QPoint(10 + step * 20, 20 + (step * 37) % 440));
            QTest::qWait(5);
        }
        QTest::mouseClick(&mainWindow, Qt::LeftButton, Qt::NoModifier, QPoint(320, 240));
        QTest::mouseClick(&mainWindow, Qt::RightButton, Qt::NoModifier, QPoint(40, 400));
        QTest::mouseDClick(&mainWindow, Qt::LeftButton, Qt::NoModifier, QPoint(600, 20));
        QCursor::setPos(mainWindow.geometry().bottomRight() + QPoint(50, 50));
        QTest::qWait(50);
    }

    test::TestHome home;
    std::unique_ptr<StreamManager> session;
    std::shared_ptr<test::FakeWindowLayer> layer;
    std::vector<std::unique_ptr<QSignalSpy>> spies;
    QWindow mainWindow;
    PointerEventCounter counter;
};

TEST_F(PointerTrackingTest, NoPointerFieldChangesWhileThePointerMoves) {
    const PointerFields before = PointerFields::of(session->pointer());

    sweep();  // with no program window
    {
        test::LogCapture log;
        session->programWindowController().openProgramWindow();
        EXPECT_EQ(log.count("🖱️ Mouse tracking disabled for performance"), 1);
    }
    sweep();  // with the program window open
    mainWindow.resize(800, 600);
    QTest::qWait(50);
    session->programWindowController().closeProgramWindow();
    QTest::qWait(20);

    // The motion was real and reached the application's windows ...
    EXPECT_GT(counter.moves, 50);
    EXPECT_GE(counter.presses, 6);
    EXPECT_GT(counter.crossings, 1);
    EXPECT_GE(counter.resizes, 1);
    // ... and the session took no notice of it.
    EXPECT_EQ(notifications(), 0);
    for (const auto& spy : spies) EXPECT_EQ(spy->count(), 0) << spy->signal().toStdString();
    EXPECT_TRUE(PointerFields::of(session->pointer()) == before);
    EXPECT_EQ(session->pointer().globalMouseLocation(), (Point{0, 0}));
    EXPECT_EQ(session->pointer().lastClickPosition(), (Point{0, 0}));
    EXPECT_EQ(session->pointer().mainWindowSize(), (Size{0, 0}));
    EXPECT_FALSE(session->pointer().isMouseOverMainWindow());
}

}  // namespace
}  // namespace orvane

#include <QAbstractButton>
#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/controls/ScaleFadeEffect.h"
#include "console/program_window/FloatingDrawingControls.h"
#include "console/stages/DrawingOverlayWidget.h"
#include "engine/StreamManager.h"

namespace orvane {
namespace drawing_controls_tests {

using test::Session;

QAbstractButton* buttonNamed(QWidget& root, const QString& name) {
    for (auto* button : root.findChildren<QAbstractButton*>())
        if (button->accessibleName() == name) return button;
    return nullptr;
}

// Pixels of the trash button's red within `box` of the grabbed controls.
int redPixels(QWidget& controls, const QRect& box) {
    const QImage image = controls.grab().toImage();
    int n = 0;
    for (int y = box.top(); y <= box.bottom(); ++y)
        for (int x = box.left(); x <= box.right(); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (c.red() > 150 && c.green() < 90 && c.blue() < 90) ++n;
        }
    return n;
}

TEST(FloatingDrawingControls, TheToolbarGrowsInAndShrinksOutOverAFifthOfASecond) {
    Session s;
    QWidget host;
    host.resize(800, 600);
    FloatingDrawingControls controls(*s.streamManager, &host);
    controls.placeIn(host.rect());
    host.show();
    QApplication::processEvents();
    EXPECT_FALSE(controls.toolbar()->isVisible());

    controls.pressMainButton();
    EXPECT_TRUE(s.streamManager->drawing().isDrawingModeEnabled());
    ASSERT_TRUE(controls.toolbar()->isVisible());
    QVariantAnimation& animation = controls.toolbarEffect()->animation();
    EXPECT_EQ(animation.duration(), 200);
    EXPECT_EQ(animation.easingCurve().type(), QEasingCurve::InOutQuad);
    ASSERT_EQ(animation.state(), QAbstractAnimation::Running);
    QApplication::processEvents();

    // Where the trash button stands once the toolbar is in.
    QAbstractButton* trash = buttonNamed(controls, QStringLiteral("Clear Drawing"));
    ASSERT_NE(trash, nullptr);
    const QRect trashBox(trash->mapTo(&controls, QPoint(0, 0)), trash->size());
    animation.pause();
    animation.setCurrentTime(0);
    EXPECT_EQ(redPixels(controls, trashBox), 0) << "nothing of the toolbar shows at the start";
    animation.setCurrentTime(100);
    EXPECT_NEAR(controls.toolbarEffect()->progress(), 0.5, 1e-6);
    // Half grown about its centre: the trash, at the bottom, is not yet where
    // it will be.
    EXPECT_LT(redPixels(controls, trashBox), 20);
    animation.setCurrentTime(200);
    EXPECT_GT(redPixels(controls, trashBox), 200);

    // Pressing again turns drawing off; the toolbar shrinks out, then goes.
    animation.resume();
    controls.pressMainButton();
    EXPECT_FALSE(s.streamManager->drawing().isDrawingModeEnabled());
    EXPECT_TRUE(controls.toolbar()->isVisible()) << "still leaving";
    EXPECT_EQ(animation.endValue().toDouble(), 0.0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !controls.toolbar()->isVisible(); }, 3000));
}

TEST(FloatingDrawingControls, AClickWithTheLineToolLeavesAStrokeNoEraserRemovesButTheTrashDoes) {
    Session s;
    QWidget host;
    host.resize(800, 600);
    DrawingOverlayWidget overlay(*s.streamManager, &host);
    overlay.setGeometry(host.rect());
    FloatingDrawingControls controls(*s.streamManager, &host);
    controls.placeIn(host.rect());
    host.show();
    controls.pressMainButton();
    QApplication::processEvents();
    DrawingState& drawing = s.streamManager->drawing();
    drawing.setSelectedDrawingTool(DrawingTool::line);

    QTest::mouseClick(&overlay, Qt::LeftButton, {}, QPoint(300, 200));
    ASSERT_EQ(drawing.drawingShapes().size(), 1u);

    // The eraser over the very point, and dragged across it.
    QAbstractButton* eraser = buttonNamed(controls, QStringLiteral("Eraser"));
    ASSERT_NE(eraser, nullptr);
    QTest::mouseClick(eraser, Qt::LeftButton);
    ASSERT_EQ(drawing.selectedDrawingTool(), DrawingTool::eraser);
    QTest::mousePress(&overlay, Qt::LeftButton, {}, QPoint(300, 200));
    QTest::mouseMove(&overlay, QPoint(305, 203));
    QTest::mouseRelease(&overlay, Qt::LeftButton, {}, QPoint(310, 206));
    EXPECT_EQ(drawing.drawingShapes().size(), 1u);

    QAbstractButton* trash = buttonNamed(controls, QStringLiteral("Clear Drawing"));
    ASSERT_NE(trash, nullptr);
    QTest::mouseClick(trash, Qt::LeftButton);
    EXPECT_TRUE(drawing.drawingShapes().empty());
    EXPECT_TRUE(drawing.freehandPaths().empty());
}

}  // namespace drawing_controls_tests
}  // namespace orvane

#include <gtest/gtest.h>

#include <QDir>
#include <QPainter>
#include <QStringList>
#include <QTemporaryDir>
#include <climits>

#include "RenderProbe.h"
#include "SceneFixtures.h"
#include "composition/DrawingOverlay.h"
#include "paint/PixelFont.h"
#include "composition/ProgressBarGeometry.h"
#include "composition/ProgressBarPainter.h"
#include "composition/SceneRenderer.h"
#include "paint/SymbolGlyphs.h"
#include "paint/SymbolPainter.h"

namespace orvane {
namespace overlay_render_test {

using test::near;

const QSize kSize(1600, 900);

QImage renderWith(const StreamingScene& scene, const BrandingConfig* branding, const ProgressBarConfig* progress,
                  QSize size = kSize) {
    SceneRenderer renderer;
    SceneRenderInputs in;
    in.scene = &scene;
    in.presetBranding = branding;
    in.progressBar = progress;
    return test::renderImage(size, [&](QPainter& p) { renderer.render(p, QSizeF(size), in, 0); });
}

StreamingScene quietScene() {
    StreamingScene scene = test::solidScene(Qt::black);
    scene.sources = {test::makeSource(SourceType::camera)};  // fullScreen: the camera is not drawn
    return scene;
}

BrandingConfig redPlate(BrandingPosition position) {
    BrandingConfig b;
    b.enabled = true;
    b.text = "ORVANE";
    b.textSize = 24;
    b.position = position;
    b.backgroundColor = {1, 0, 0, 1};
    return b;
}

TEST(BrandingOverlay, DrawsInItsCornerWithTheMargin) {
    const StreamingScene scene = quietScene();
    const struct {
        BrandingPosition position;
        QPoint inside;   // 2 points in from the box's outer corner
        QPoint outside;  // in the margin
    } cases[] = {
        {BrandingPosition::topLeft, {15, 15}, {11, 11}},
        {BrandingPosition::topRight, {1584, 15}, {1588, 11}},
        {BrandingPosition::bottomLeft, {15, 884}, {11, 888}},
        {BrandingPosition::bottomRight, {1584, 884}, {1588, 888}},
    };
    for (const auto& c : cases) {
        const BrandingConfig b = redPlate(c.position);
        const QImage image = renderWith(scene, &b, nullptr);
        // Margin 13.5 on a 900-high canvas, corner radius 7.2: probe along the edge.
        const QPoint edge(c.inside.x(), c.inside.y() < 450 ? c.inside.y() + 20 : c.inside.y() - 20);
        EXPECT_TRUE(near(image.pixelColor(edge), QColor(255, 0, 0), 3))
            << toString(c.position) << " " << test::describe(image.pixelColor(edge));
        EXPECT_TRUE(near(image.pixelColor(c.outside), Qt::black, 1)) << toString(c.position);
        EXPECT_TRUE(near(image.pixelColor(800, 450), Qt::black, 1));
    }
}

TEST(BrandingOverlay, BothSwitchesMustBeOn) {
    StreamingScene scene = quietScene();
    BrandingConfig b = redPlate(BrandingPosition::bottomRight);
    const QPoint probe(1584, 864);
    EXPECT_TRUE(near(renderWith(scene, &b, nullptr).pixelColor(probe), QColor(255, 0, 0), 3));
    scene.brandingEnabled = false;
    EXPECT_TRUE(near(renderWith(scene, &b, nullptr).pixelColor(probe), Qt::black, 1));
    scene.brandingEnabled = true;
    b.enabled = false;
    EXPECT_TRUE(near(renderWith(scene, &b, nullptr).pixelColor(probe), Qt::black, 1));
    EXPECT_TRUE(near(renderWith(scene, nullptr, nullptr).pixelColor(probe), Qt::black, 1));
}

TEST(BrandingOverlay, OpacityAppliesToTheWholePlate) {
    const StreamingScene scene = quietScene();
    BrandingConfig b = redPlate(BrandingPosition::bottomRight);
    b.opacity = 0.5;
    const QColor c = renderWith(scene, &b, nullptr).pixelColor(1584, 864);
    EXPECT_TRUE(near(c, QColor(128, 0, 0), 3)) << test::describe(c);
}

TEST(BrandingOverlay, LogoIsStretchedToItsBoxAndAMissingOneIsLeftOut) {
    QTemporaryDir dir;
    const QString path = dir.filePath("logo.png");
    QImage logo(10, 40, QImage::Format_ARGB32);
    logo.fill(QColor(0, 255, 0));
    ASSERT_TRUE(logo.save(path));
    const StreamingScene scene = quietScene();
    BrandingConfig b = redPlate(BrandingPosition::topLeft);
    b.text.clear();
    b.logoImagePath = path.toStdString();
    // Box from 13.5; padding 10.8; logo 100 by 100 from (24.3, 24.3).
    const QImage withLogo = renderWith(scene, &b, nullptr);
    EXPECT_TRUE(near(withLogo.pixelColor(30, 30), QColor(0, 255, 0), 3));
    EXPECT_TRUE(near(withLogo.pixelColor(120, 120), QColor(0, 255, 0), 3));
    EXPECT_TRUE(near(withLogo.pixelColor(130, 70), QColor(255, 0, 0), 3));  // padding after it
    b.logoImagePath = dir.filePath("gone.png").toStdString();
    b.text = "ORVANE";
    const QImage without = renderWith(scene, &b, nullptr);
    EXPECT_TRUE(near(without.pixelColor(18, 30), QColor(255, 0, 0), 3));  // the plate, text only
    EXPECT_FALSE(near(without.pixelColor(30, 30), QColor(0, 255, 0), 60));
}

ProgressStep step(int order, bool done, std::string title = {}) {
    ProgressStep s;
    s.order = order;
    s.isCompleted = done;
    s.title = std::move(title);
    return s;
}

ProgressBarConfig progressConfig() {
    ProgressBarConfig c;
    c.enabled = true;
    c.opacity = 1;
    c.backgroundColor = {0, 0, 0, 1};
    c.completedColor = {0, 1, 0, 1};
    c.pendingColor = {0, 0, 1, 1};
    // Steps out of order: the strip sorts them by `order`.
    c.steps = {step(2, false), step(0, true), step(1, false)};
    return c;
}

TEST(ProgressOverlay, MarkersAndConnectorsInOrderWithTheirColours) {
    StreamingScene scene = quietScene();
    const ProgressBarConfig config = progressConfig();
    const QImage image = renderWith(scene, nullptr, &config);
    test::keep(image, "progress-order");
    const ProgressStripMetrics m = ProgressBarGeometry::metrics(config, QSizeF(kSize));
    double cursor = m.paddingAlong;
    const QColor expectedMarker[] = {QColor(0, 255, 0), QColor(0, 0, 255), QColor(0, 0, 255)};
    const QColor expectedConnector[] = {QColor(0, 255, 0), QColor(0, 0, 255)};
    for (int i = 0; i < 3; ++i) {
        const ProgressItemPlacement p = ProgressBarGeometry::placeItem(m, cursor, QSizeF(0, 0), i < 2);
        // Below the centre, clear of the check mark or number.
        const QPoint probe(int(p.marker.center().x()), int(p.marker.center().y() + 0.38 * m.markerDiameter));
        EXPECT_TRUE(near(image.pixelColor(probe), expectedMarker[i], 6))
            << "marker " << i << ": " << test::describe(image.pixelColor(probe));
        if (i < 2) {
            const QPoint c = p.connector.center().toPoint();
            EXPECT_TRUE(near(image.pixelColor(c), expectedConnector[i], 40))
                << "connector " << i << ": " << test::describe(image.pixelColor(c));
        }
        cursor = p.next;
    }
    // The done marker carries a white check mark.
    const ProgressItemPlacement first = ProgressBarGeometry::placeItem(m, m.paddingAlong, QSizeF(0, 0), true);
    int white = 0;
    for (int y = int(first.marker.top()); y < int(first.marker.bottom()); ++y)
        for (int x = int(first.marker.left()); x < int(first.marker.right()); ++x)
            if (image.pixelColor(x, y).lightness() > 200) ++white;
    EXPECT_GT(white, 5);
}

TEST(ProgressOverlay, BothSwitchesAndStripBackground) {
    StreamingScene scene = quietScene();
    ProgressBarConfig config = progressConfig();
    config.backgroundColor = {1, 1, 1, 1};
    config.steps.clear();  // an empty strip still draws its background
    EXPECT_TRUE(near(renderWith(scene, nullptr, &config).pixelColor(800, 880), Qt::white, 1));
    EXPECT_TRUE(near(renderWith(scene, nullptr, &config).pixelColor(800, 820), Qt::black, 1));  // 75 high
    scene.progressBarEnabled = false;
    EXPECT_TRUE(near(renderWith(scene, nullptr, &config).pixelColor(800, 880), Qt::black, 1));
    scene.progressBarEnabled = true;
    config.enabled = false;
    EXPECT_TRUE(near(renderWith(scene, nullptr, &config).pixelColor(800, 880), Qt::black, 1));
}

TEST(ProgressOverlay, VerticalAtTheTopMeansTheRight) {
    StreamingScene scene = quietScene();
    ProgressBarConfig config = progressConfig();
    config.orientation = ProgressBarOrientation::vertical;
    config.position = ProgressBarPosition::top;
    config.backgroundColor = {1, 1, 1, 1};
    const QImage image = renderWith(scene, nullptr, &config);
    EXPECT_TRUE(near(image.pixelColor(1595, 450), Qt::white, 1));  // 1600 * 60 / 1280 = 75 wide
    EXPECT_TRUE(near(image.pixelColor(1520, 450), Qt::black, 1));
}

TEST(DrawingPaint, ShapesAndPaths) {
    DrawingLayers layers;
    DrawingShape rect;
    rect.type = DrawingShapeType::rectangle;
    rect.startPoint = {100, 100};
    rect.endPoint = {300, 200};
    rect.strokeWidth = 6;
    rect.color = {1, 0, 0, 1};
    layers.shapes.push_back(rect);
    FreehandPath path;
    path.points = {{400, 100}, {400, 200}};
    path.strokeWidth = 10;
    path.color = {0, 0, 1, 1};
    layers.paths.push_back(path);
    DrawingOverlay overlay;
    const auto paint = [&] {
        return test::renderImage(QSize(500, 300), [&](QPainter& p) { overlay.paint(p, layers, DrawingSelection{}); });
    };
    QImage image = paint();
    EXPECT_TRUE(near(image.pixelColor(100, 150), Qt::red, 3));
    EXPECT_TRUE(near(image.pixelColor(200, 150), Qt::black, 1));  // not filled
    EXPECT_TRUE(near(image.pixelColor(400, 150), Qt::blue, 3));
    EXPECT_TRUE(near(image.pixelColor(400, 203), Qt::blue, 3));   // round end beyond the last point

    // The eraser inside the rectangle removes nothing; on its outline it does.
    EXPECT_FALSE(DrawingOverlay::eraseShapesAt({200, 150}, layers));
    EXPECT_TRUE(near(paint().pixelColor(100, 150), Qt::red, 3));
    EXPECT_TRUE(DrawingOverlay::eraseShapesAt({295, 150}, layers));
    image = paint();
    EXPECT_TRUE(near(image.pixelColor(100, 150), Qt::black, 1));
    EXPECT_TRUE(near(image.pixelColor(400, 150), Qt::blue, 3));
}

TEST(DrawingPaint, ArrowHeadIsFifteenLongAtThirtyDegrees) {
    DrawingLayers layers;
    DrawingShape arrow;
    arrow.type = DrawingShapeType::arrow;
    arrow.startPoint = {10, 50};
    arrow.endPoint = {110, 50};
    arrow.strokeWidth = 2;
    layers.shapes.push_back(arrow);
    DrawingOverlay overlay;
    const QImage image =
        test::renderImage(QSize(130, 100), [&](QPainter& p) { overlay.paint(p, layers, DrawingSelection{}); });
    // Head strokes end at 110 - 15 cos 30° = 97.0, 50 -+ 7.5.
    EXPECT_GT(image.pixelColor(98, 43).red(), 100);
    EXPECT_GT(image.pixelColor(98, 57).red(), 100);
    EXPECT_LT(image.pixelColor(92, 40).red(), 30);  // not beyond
}

TEST(DrawingPaint, InProgressShapeAtSeventyPercent) {
    DrawingOverlay overlay;
    DrawingLayers layers;
    DrawingSelection sel;
    sel.color = {1, 1, 1, 1};
    sel.strokeWidth = 8;
    overlay.pointerMoved({10, 50}, true, sel, layers);
    overlay.pointerMoved({190, 50}, true, sel, layers);
    const QImage image = test::renderImage(QSize(200, 100), [&](QPainter& p) { overlay.paint(p, layers, sel); });
    EXPECT_TRUE(near(image.pixelColor(100, 50), QColor(179, 179, 179), 3));
}

TEST(BrandingOverlay, HalfOpacityHalvesLogoTextAndBackground) {
    QTemporaryDir dir;
    const QString path = dir.filePath("logo.png");
    QImage logo(10, 40, QImage::Format_ARGB32);
    logo.fill(QColor(0, 255, 0));
    ASSERT_TRUE(logo.save(path));
    const StreamingScene scene = quietScene();
    // A red plate, a green logo and white text on black: each shows in a
    // channel of its own, the text alone in blue.
    BrandingConfig b = redPlate(BrandingPosition::topLeft);
    b.logoImagePath = path.toStdString();
    b.textColor = {1, 1, 1, 1};
    const auto maxBlue = [](const QImage& image) {
        int most = 0;
        for (int y = 14; y < 135; ++y)
            for (int x = 125; x < 700; ++x) most = std::max(most, image.pixelColor(x, y).blue());
        return most;
    };
    const QImage full = renderWith(scene, &b, nullptr);
    b.opacity = 0.5;
    const QImage half = renderWith(scene, &b, nullptr);
    test::keep(half, "branding-half-opacity");
    // The logo, 100 by 100 from (24.3, 24.3).
    EXPECT_TRUE(near(full.pixelColor(60, 60), QColor(0, 255, 0), 3)) << test::describe(full.pixelColor(60, 60));
    EXPECT_TRUE(near(half.pixelColor(60, 60), QColor(0, 128, 0), 3)) << test::describe(half.pixelColor(60, 60));
    EXPECT_TRUE(near(half.pixelColor(110, 110), QColor(0, 128, 0), 3)) << test::describe(half.pixelColor(110, 110));
    // The plate's padding left of the logo.
    EXPECT_TRUE(near(full.pixelColor(18, 70), QColor(255, 0, 0), 3)) << test::describe(full.pixelColor(18, 70));
    EXPECT_TRUE(near(half.pixelColor(18, 70), QColor(128, 0, 0), 3)) << test::describe(half.pixelColor(18, 70));
    // The text: its brightest pixel goes from white to half.
    const int textFull = maxBlue(full);
    const int textHalf = maxBlue(half);
    EXPECT_GE(textFull, 240);
    EXPECT_NEAR(textHalf, 128, 6);
    EXPECT_NEAR(double(textHalf) / textFull, 0.5, 0.03);
}

TEST(ProgressOverlay, StepsSortByOrderStably) {
    ProgressBarConfig c;
    c.steps = {step(2, false, "c"), step(0, false, "a"), step(1, false, "b1"), step(1, true, "b2")};
    const std::vector<ProgressStep> sorted = ProgressBarPainter::orderedSteps(c);
    ASSERT_EQ(sorted.size(), 4u);
    EXPECT_EQ(sorted[0].title, "a");
    EXPECT_EQ(sorted[1].title, "b1");  // equal orders keep their places in the list
    EXPECT_EQ(sorted[2].title, "b2");
    EXPECT_EQ(sorted[3].title, "c");
    c.steps = {step(9, false, "late"), step(4, false, "early")};
    const std::vector<ProgressStep> gaps = ProgressBarPainter::orderedSteps(c);
    ASSERT_EQ(gaps.size(), 2u);
    EXPECT_EQ(gaps[0].order, 4);  // orders are kept, not renumbered from the list
    EXPECT_EQ(gaps[1].order, 9);
}

// Which of `candidates` the white number on a pending marker reads: each is
// drawn on its own as the strip draws it (bold, 0.42 of the marker, centred)
// and compared pixel by pixel with the rendered marker. Returns the best and
// how many of its pixels disagree.
std::pair<QString, int> readMarker(const QImage& image, QRectF marker, double numberSize, QColor markerColour,
                                   const QStringList& candidates) {
    const QRect area = marker.toAlignedRect();
    const auto ink = [](const QImage& img, int x, int y) { return img.pixelColor(x, y).red() > 128; };
    std::pair<QString, int> best{QString(), INT_MAX};
    for (const QString& text : candidates) {
        QImage ref(area.size(), QImage::Format_ARGB32_Premultiplied);
        ref.fill(Qt::black);
        {
            QPainter p(&ref);
            p.setRenderHint(QPainter::Antialiasing);
            p.setRenderHint(QPainter::TextAntialiasing);
            p.translate(-area.topLeft());
            p.setPen(Qt::NoPen);
            p.setBrush(markerColour);
            p.drawEllipse(marker);
            p.setFont(PixelFont::system(numberSize, QFont::Bold, nullptr));
            p.setPen(Qt::white);
            p.drawText(marker, Qt::AlignCenter, text);
        }
        int differ = 0;
        for (int y = 0; y < area.height(); ++y)
            for (int x = 0; x < area.width(); ++x)
                if (ink(ref, x, y) != ink(image, area.left() + x, area.top() + y)) ++differ;
        if (differ < best.second) best = {text, differ};
    }
    return best;
}

TEST(ProgressOverlay, PendingMarkersAreNumberedByOrderPlusOne) {
    // A large canvas, so that the numbers are some 19 points high.
    const QSize size(3200, 1800);
    const StreamingScene scene = quietScene();
    const QStringList candidates = {"0", "1", "2", "3", "4", "5", "9", "10"};
    const struct {
        std::vector<int> orders;
        std::vector<QString> shown;
    } cases[] = {
        {{2, 0, 1}, {"1", "2", "3"}},
        {{4, 9}, {"5", "10"}},
    };
    for (const auto& c : cases) {
        ProgressBarConfig config = progressConfig();
        config.steps.clear();
        for (int order : c.orders) config.steps.push_back(step(order, false));
        const QImage image = renderWith(scene, nullptr, &config, size);
        test::keep(image, "progress-numbers-" + std::to_string(c.orders.size()));
        const ProgressStripMetrics m = ProgressBarGeometry::metrics(config, QSizeF(size));
        double cursor = m.paddingAlong;
        for (std::size_t i = 0; i < c.shown.size(); ++i) {
            const ProgressItemPlacement p =
                ProgressBarGeometry::placeItem(m, cursor, QSizeF(0, 0), i + 1 < c.shown.size());
            const auto [read, differ] = readMarker(image, p.marker, m.numberSize, QColor(0, 0, 255), candidates);
            EXPECT_EQ(read, c.shown[i]) << "marker " << i << " of " << c.orders.size();
            EXPECT_LE(differ, 4) << "marker " << i << " reads " << read.toStdString();
            cursor = p.next;
        }
    }
}

TEST(DrawingPaint, ShapesDrawnInThePopOutAtFifteenHundredLieBeyondASmallStage) {
    DrawingLayers layers;
    DrawingShape rect;
    rect.type = DrawingShapeType::rectangle;
    rect.startPoint = {1500, 800};
    rect.endPoint = {1580, 860};
    rect.strokeWidth = 6;
    layers.shapes.push_back(rect);
    DrawingShape arrow = rect;
    arrow.type = DrawingShapeType::arrow;
    arrow.endPoint = {1560, 850};
    layers.shapes.push_back(arrow);
    FreehandPath path;
    path.points = {{1500, 800}, {1540, 820}, {1590, 880}};
    path.strokeWidth = 10;
    layers.paths.push_back(path);
    DrawingOverlay overlay;
    DrawingSelection sel;
    overlay.pointerMoved({1500, 800}, true, sel, layers);  // a line in progress from the same point
    overlay.pointerMoved({1550, 830}, true, sel, layers);
    const auto drawnPixels = [](const QImage& image) {
        int n = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixelColor(x, y) != QColor(Qt::black)) ++n;
        return n;
    };
    const auto paint = [&](QSize size) {
        return test::renderImage(size, [&](QPainter& p) { overlay.paint(p, layers, sel); });
    };
    // On a small stage the points stand as drawn, beyond its edge: nothing shows.
    EXPECT_EQ(drawnPixels(paint(QSize(480, 270))), 0);
    EXPECT_EQ(drawnPixels(paint(QSize(1280, 720))), 0);
    // In the pop-out window they are there.
    const QImage popOut = paint(QSize(1600, 900));
    EXPECT_GT(drawnPixels(popOut), 500);
    EXPECT_TRUE(near(popOut.pixelColor(1500, 830), Qt::red, 3)) << test::describe(popOut.pixelColor(1500, 830));
    // A shape within the small stage does show there.
    DrawingShape near100 = rect;
    near100.startPoint = {100, 100};
    near100.endPoint = {180, 160};
    layers.shapes.push_back(near100);
    const QImage small = paint(QSize(480, 270));
    EXPECT_TRUE(near(small.pixelColor(100, 130), Qt::red, 3)) << test::describe(small.pixelColor(100, 130));
}

TEST(Symbols, TableIsSortedWithOneEntryPerName) {
    // Looking a name up is a binary search.
    const auto glyphs = SymbolGlyphs::all();
    for (std::size_t i = 1; i < glyphs.size(); ++i)
        EXPECT_LT(glyphs[i - 1].symbol, glyphs[i].symbol) << "at " << glyphs[i].symbol;
    for (const SymbolGlyph& g : glyphs) {
        const auto found = SymbolGlyphs::find(g.symbol);
        ASSERT_TRUE(found) << g.symbol;
        EXPECT_EQ(found->codepoint, g.codepoint) << g.symbol;
    }
    EXPECT_FALSE(SymbolGlyphs::find("no.such.symbol"));
}

TEST(Symbols, FontIsLoadedAndHasEveryGlyph) {
    ASSERT_TRUE(SymbolPainter::fontAvailable()) << SymbolPainter::kFontPath;
    const QFontMetricsF metrics(SymbolPainter::font(24));
    for (const SymbolGlyph& g : SymbolGlyphs::all())
        EXPECT_TRUE(metrics.inFontUcs4(g.codepoint)) << g.symbol << " -> " << g.material;
}

}  // namespace
}  // namespace orvane

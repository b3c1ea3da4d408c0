// Draws the contact sheet of docs/images: every layout, and every transition
// at its midpoint, composed with test frames. Run with an output directory.
#include <QDir>
#include <QGuiApplication>
#include <QPainter>
#include <cstdio>

#include "paint/PixelFont.h"
#include "composition/SceneRenderer.h"
#include "composition/TestFrameSource.h"
#include "composition/TransitionPlayer.h"
#include "document/DocumentEnums.h"

using namespace orvane;

namespace {

const QSize kTile(480, 270);
const int kLabel = 22;

Source make(SourceType type, const std::string& name) {
    Source s;
    s.type = type;
    s.name = name;
    return s;
}

ProgressBarConfig progress() {
    ProgressBarConfig c;
    c.enabled = true;
    const char* titles[] = {"Intro", "Setup", "Demo", "Q&A"};
    for (int i = 0; i < 4; ++i) {
        ProgressStep s;
        s.title = titles[i];
        s.order = i;
        s.isCompleted = i < 2;
        c.steps.push_back(s);
    }
    return c;
}

BrandingConfig branding() {
    BrandingConfig b;
    b.enabled = true;
    b.text = "OrvaneUI";
    b.textSize = 18;
    return b;
}

struct Tile {
    QString label;
    QImage image;
};

QImage sheet(const std::vector<Tile>& tiles, int columns) {
    const int rows = static_cast<int>((tiles.size() + columns - 1) / columns);
    QImage out(columns * (kTile.width() + 8) + 8, rows * (kTile.height() + kLabel + 8) + 8,
               QImage::Format_ARGB32_Premultiplied);
    out.fill(QColor(24, 24, 28));
    QPainter p(&out);
    p.setRenderHint(QPainter::TextAntialiasing);
    p.setFont(PixelFont::system(14, QFont::Medium, &out));
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        const int x = 8 + static_cast<int>(i % columns) * (kTile.width() + 8);
        const int y = 8 + static_cast<int>(i / columns) * (kTile.height() + kLabel + 8);
        p.setPen(Qt::white);
        p.drawText(QRect(x, y, kTile.width(), kLabel), Qt::AlignLeft | Qt::AlignVCenter, tiles[i].label);
        p.drawImage(x, y + kLabel, tiles[i].image);
    }
    return out;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: contact_sheet <output directory>\n");
        return 2;
    }
    const QString dir = QString::fromLocal8Bit(argv[1]);
    QDir().mkpath(dir);

    TestFrameSource frames;
    Source camera = make(SourceType::camera, "Camera");
    camera.configuration.cameraShape = CameraShape::circle;
    Source screen = make(SourceType::screen, "Screen");
    screen.configuration.borderEnabled = true;
    screen.configuration.borderRadius = 16;
    frames.setFrame(camera.id, TestFrameSource::patternFrame(QSize(1280, 720), QColor(40, 140, 70)));
    frames.setFrame(screen.id, TestFrameSource::patternFrame(QSize(1920, 1080), QColor(40, 70, 160)));
    const BrandingConfig brand = branding();
    const ProgressBarConfig bar = progress();

    std::vector<Tile> layouts;
    for (SceneLayout layout : allCases<SceneLayout>()) {
        StreamingScene scene;
        scene.layout = layout;
        scene.sources = {camera, screen};
        SceneRenderer renderer;
        SceneRenderInputs in{&scene, &brand, &bar, false, false, 0, &frames};
        QImage image(kTile, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::black);
        QPainter p(&image);
        renderer.render(p, QSizeF(kTile), in, 0);
        layouts.push_back({QString::fromUtf8(toString(layout).data(), int(toString(layout).size())), image});
    }
    // A few states next to the layouts.
    {
        StreamingScene scene;
        SceneRenderer renderer;
        SceneRenderInputs in{&scene, &brand, &bar, false, false, 0, &frames};
        QImage image(kTile, QImage::Format_ARGB32_Premultiplied);
        QPainter p(&image);
        renderer.render(p, QSizeF(kTile), in, 0);
        layouts.push_back({"Empty scene", image});
    }
    {
        StreamingScene scene;
        scene.layout = SceneLayout::fullScreen;
        scene.sources = {screen};
        SceneRenderer renderer;
        SceneRenderInputs in{&scene, &brand, &bar, true, true, 0, &frames};
        QImage image(kTile, QImage::Format_ARGB32_Premultiplied);
        QPainter p(&image);
        renderer.render(p, QSizeF(kTile), in, 0);
        layouts.push_back({"Blur mode (program)", image});
    }
    {
        StreamingScene scene;
        scene.layout = SceneLayout::cameraLeft;
        Source content = make(SourceType::content, "Deck");
        content.configuration.contentType = ContentType::slides;
        SlidesResource deck = SlidesResource::makeNew("Deck");
        Slide extra;
        extra.content = "## Agenda\n- Capture\n- Compose\n1. Record\n---\n```\nlet x = 1\n```";
        deck.slides.insert(deck.slides.begin(), extra);
        content.configuration.slidesResource = deck;
        Source failing = make(SourceType::camera, "Camera");
        scene.sources = {failing, content};
        SceneRenderer renderer;
        SceneRenderInputs in{&scene, &brand, &bar, false, false, 0, &frames};
        QImage image(kTile, QImage::Format_ARGB32_Premultiplied);
        QPainter p(&image);
        renderer.render(p, QSizeF(kTile), in, 0);
        layouts.push_back({"Slides, camera without frames", image});
    }
    sheet(layouts, 3).save(dir + "/contact-sheet-layouts.png");

    std::vector<Tile> transitions;
    StreamingScene from;
    from.layout = SceneLayout::pipBottomRight;
    from.sources = {camera, screen};
    StreamingScene to;
    to.layout = SceneLayout::splitHorizontal;
    to.gradientColors = {{0.5, 0.2, 0.4, 1}, {0.9, 0.5, 0.3, 1}};
    to.gradientDirection = GradientDirection::leftToRight;
    to.sources = {camera, screen};
    for (TransitionType type : allCases<TransitionType>()) {
        SceneRenderer leaving, entering;
        SceneRenderInputs a{&from, &brand, &bar, false, false, 0, &frames};
        SceneRenderInputs b{&to, &brand, &bar, false, false, 0, &frames};
        QImage image(kTile, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::black);
        QPainter p(&image);
        TransitionPlayer::paintFrame(
            p, QSizeF(kTile), type, 0.5, [&](QPainter& q) { leaving.render(q, QSizeF(kTile), a, 0); },
            [&](QPainter& q) { entering.render(q, QSizeF(kTile), b, 0); });
        transitions.push_back({QString::fromUtf8(toString(type).data(), int(toString(type).size())) + " at 0.5",
                               image});
    }
    sheet(transitions, 3).save(dir + "/contact-sheet-transitions.png");
    std::printf("wrote %s/contact-sheet-layouts.png and contact-sheet-transitions.png\n", argv[1]);
    return 0;
}

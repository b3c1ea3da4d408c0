#include "console/scene_tab/CameraConfigurationView.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "console/controls/LabeledSlider.h"
#include "console/controls/SelectableTile.h"
#include "console/scene_tab/CameraSizeButton.h"
#include "console/scene_tab/ConfigSection.h"

namespace orvane {

namespace {

const char* cameraPositionSymbol(CameraOverlayPosition position) {
    switch (position) {
        case CameraOverlayPosition::topLeft: return "arrow.up.left";
        case CameraOverlayPosition::topRight: return "arrow.up.right";
        case CameraOverlayPosition::bottomLeft: return "arrow.down.left";
        case CameraOverlayPosition::bottomRight: return "arrow.down.right";
    }
    return "arrow.down.right";
}

const char* cameraShapeSymbol(CameraShape shape) {
    switch (shape) {
        case CameraShape::rectangle: return "rectangle";
        case CameraShape::verticalRectangle: return "rectangle.portrait";
        case CameraShape::circle: return "circle";
    }
    return "rectangle";
}

}  // namespace

QString CameraConfigurationView::positionTitle(CameraOverlayPosition position) {
    switch (position) {
        case CameraOverlayPosition::topLeft: return QStringLiteral("Top Left");
        case CameraOverlayPosition::topRight: return QStringLiteral("Top Right");
        case CameraOverlayPosition::bottomLeft: return QStringLiteral("Bottom Left");
        case CameraOverlayPosition::bottomRight: return QStringLiteral("Bottom Right");
    }
    return QString();
}

QString CameraConfigurationView::shapeTitle(CameraShape shape) {
    switch (shape) {
        case CameraShape::rectangle: return QStringLiteral("Rectangle");
        case CameraShape::verticalRectangle: return QStringLiteral("Vertical");
        case CameraShape::circle: return QStringLiteral("Circle");
    }
    return QString();
}

CameraConfigurationView::CameraConfigurationView(SourceUpdate onUpdate, QWidget* parent)
    : SourceSettingsPanel(QStringLiteral("CAMERA SETTINGS"), std::move(onUpdate), parent) {
    ConfigSection* position = addSection(QStringLiteral("Position"));
    auto* corners = new QHBoxLayout;
    corners->setSpacing(6);
    for (CameraOverlayPosition p : {CameraOverlayPosition::topLeft, CameraOverlayPosition::topRight,
                                    CameraOverlayPosition::bottomLeft, CameraOverlayPosition::bottomRight}) {
        auto* tile = new SelectableTile(positionTitle(p), cameraPositionSymbol(p), false);
        corners->addWidget(tile);
        positions_[p] = tile;
        bindTile(
            tile, [p](const SourceConfiguration& c) { return c.cameraPosition == p; },
            [p](SourceConfiguration& c) { c.cameraPosition = p; });
    }
    position->body()->addLayout(corners);

    ConfigSection* size = addSection(QStringLiteral("Size"));
    auto* sizes = new QHBoxLayout;
    sizes->setSpacing(6);
    for (CameraOverlaySize s : {CameraOverlaySize::small, CameraOverlaySize::medium, CameraOverlaySize::large}) {
        auto* tile = new CameraSizeButton(s);
        sizes->addWidget(tile);
        sizes_[s] = tile;
        bindTile(
            tile, [s](const SourceConfiguration& c) { return c.cameraSize == s; },
            [s](SourceConfiguration& c) { c.cameraSize = s; });
    }
    size->body()->addLayout(sizes);

    ConfigSection* shape = addSection(QStringLiteral("Shape"));
    auto* shapes = new QHBoxLayout;
    shapes->setSpacing(6);
    for (CameraShape s : {CameraShape::rectangle, CameraShape::verticalRectangle, CameraShape::circle}) {
        auto* tile = new SelectableTile(shapeTitle(s), cameraShapeSymbol(s), true);
        shapes->addWidget(tile);
        shapes_[s] = tile;
        bindTile(
            tile, [s](const SourceConfiguration& c) { return c.cameraShape == s; },
            [s](SourceConfiguration& c) { c.cameraShape = s; });
    }
    shape->body()->addLayout(shapes);

    ConfigSection* framing = addSection(QStringLiteral("Framing"));
    zoom_ = addSlider(framing->body(), QStringLiteral("Zoom"), 0.8, 1.5, 0.05, QStringLiteral("%.2fx"),
                      &SourceConfiguration::cameraZoom);
    width_ = addSlider(framing->body(), QStringLiteral("Width"), 0.5, 2.0, 0.05, QStringLiteral("%.2fx"),
                       &SourceConfiguration::cameraWidth);
    height_ = addSlider(framing->body(), QStringLiteral("Height"), 0.5, 2.0, 0.05, QStringLiteral("%.2fx"),
                        &SourceConfiguration::cameraHeight);
    horizontal_ = addSlider(framing->body(), QStringLiteral("Horizontal Position"), -1.0, 1.0, 0.05,
                            QStringLiteral("%.2f"), &SourceConfiguration::cameraHorizontalPosition);
    vertical_ = addSlider(framing->body(), QStringLiteral("Vertical Position"), -1.0, 1.0, 0.05,
                          QStringLiteral("%.2f"), &SourceConfiguration::cameraVerticalPosition);

    ConfigSection* picture = addSection(QStringLiteral("Picture"));
    brightness_ = addSlider(picture->body(), QStringLiteral("Brightness"), -1.0, 1.0, 0.05, QStringLiteral("%.2f"),
                            &SourceConfiguration::cameraBrightness);
    contrast_ = addSlider(picture->body(), QStringLiteral("Contrast"), 0.5, 2.0, 0.05, QStringLiteral("%.2fx"),
                          &SourceConfiguration::cameraContrast);

    ConfigSection* border = addSection(QStringLiteral("Border"));
    border_ = addSwitch(border->body(), QStringLiteral("Border"), &SourceConfiguration::cameraBorderEnabled);
    QVBoxLayout* borderBody =
        addDependentGroup(border->body(), &SourceConfiguration::cameraBorderEnabled, QStringLiteral("Border settings"));
    borderColor_ = addColor(borderBody, QStringLiteral("Color"), &SourceConfiguration::cameraBorderColor);
    borderWidth_ = addSlider(borderBody, QStringLiteral("Width"), 1, 10, 0.5, QStringLiteral("%.1f"),
                             &SourceConfiguration::cameraBorderWidth);
    borderGlow_ = addSlider(borderBody, QStringLiteral("Glow"), 0, 20, 1, QStringLiteral("%.1f"),
                            &SourceConfiguration::cameraBorderGlow);
    borderRadius_ = addSlider(borderBody, QStringLiteral("Radius"), 0, 50, 1, QStringLiteral("%.1f"),
                              &SourceConfiguration::cameraBorderRadius);
    setSource(Source{});
}

}  // namespace orvane

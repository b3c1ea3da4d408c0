#include "composition/SceneLayoutHelper.h"

#include <algorithm>

#include "document/StreamingScene.h"

namespace orvane {

namespace {

constexpr double kPipFraction = 0.25;
constexpr double kPipInset = 20;

// A clamp that tolerates an empty range. A box larger than the canvas would
// give lo > hi; the source is then centred on its anchor instead of failing.
double clampToRoom(double value, double room) {
    if (room < 0) return 0;
    return std::clamp(value, -room, room);
}

}  // namespace

LayoutFrame SceneLayoutHelper::calculateFrames(SceneLayout layout, QSizeF canvas) {
    const double w = canvas.width();
    const double h = canvas.height();
    const QRectF full(0, 0, w, h);
    const double pw = kPipFraction * w;
    const double ph = kPipFraction * h;
    switch (layout) {
    case SceneLayout::fullCamera: return {full, std::nullopt};
    case SceneLayout::fullScreen: return {std::nullopt, full};
    case SceneLayout::splitHorizontal: return {QRectF(0, 0, 0.65 * w, h), QRectF(0.5 * w, 0, 0.5 * w, h)};
    case SceneLayout::pipBottomRight: return {QRectF(w - pw - kPipInset, h - ph - kPipInset, pw, ph), full};
    case SceneLayout::pipBottomLeft: return {QRectF(kPipInset, h - ph - kPipInset, pw, ph), full};
    case SceneLayout::pipTopRight: return {QRectF(w - pw - kPipInset, kPipInset, pw, ph), full};
    case SceneLayout::pipTopLeft: return {QRectF(kPipInset, kPipInset, pw, ph), full};
    case SceneLayout::cameraLeft: return {QRectF(0, 0, 0.4 * w, h), QRectF(0.4 * w, 0, 0.6 * w, h)};
    case SceneLayout::cameraRight: return {QRectF(0.6 * w, 0, 0.4 * w, h), QRectF(0, 0, 0.6 * w, h)};
    }
    return {};
}

SceneLayout SceneLayoutHelper::effectiveLayout(const StreamingScene& scene) {
    if (scene.layout != SceneLayout::fullCamera) return scene.layout;
    bool hasCamera = false;
    bool hasOther = false;
    for (const auto& source : scene.sources) {
        if (source.type == SourceType::camera)
            hasCamera = true;
        else
            hasOther = true;
    }
    return (!hasCamera && hasOther) ? SceneLayout::fullScreen : SceneLayout::fullCamera;
}

bool SceneLayoutHelper::isPipLayout(SceneLayout layout) {
    return layout == SceneLayout::pipBottomRight || layout == SceneLayout::pipBottomLeft ||
           layout == SceneLayout::pipTopRight || layout == SceneLayout::pipTopLeft;
}

double SceneLayoutHelper::pipSizeFactor(CameraOverlaySize size, CameraShape shape) {
    const bool vertical = shape == CameraShape::verticalRectangle;
    switch (size) {
    case CameraOverlaySize::small: return vertical ? 0.25 : 0.15;
    case CameraOverlaySize::medium: return vertical ? 0.35 : 0.22;
    case CameraOverlaySize::large: return vertical ? 0.45 : 0.32;
    }
    return vertical ? 0.35 : 0.22;
}

CameraBox SceneLayoutHelper::calculateCameraTransform(const SourceConfiguration& config, SceneLayout layout,
                                                      QRectF cameraFrame) {
    const double w = cameraFrame.width();
    const double h = cameraFrame.height();
    double sw = w;
    double sh = h;
    switch (config.cameraShape) {
    case CameraShape::rectangle: break;
    case CameraShape::circle: sw = sh = std::min(w, h); break;
    case CameraShape::verticalRectangle:
        sh = 0.8 * h;
        sw = std::min(w, 0.8 * h * 0.5625);
        break;
    }
    const QPointF centre = cameraFrame.center();
    if (layout == SceneLayout::splitHorizontal || layout == SceneLayout::cameraLeft ||
        layout == SceneLayout::cameraRight || layout == SceneLayout::fullCamera)
        return {QSizeF(sw, sh), centre};

    sw *= config.cameraWidth;
    sh *= config.cameraHeight;
    const double ox = clampToRoom(w * config.cameraHorizontalPosition * 0.5, (w - sw) / 2);
    const double oy = clampToRoom(h * config.cameraVerticalPosition * 0.5, (h - sh) / 2);
    return {QSizeF(sw, sh), centre + QPointF(ox, oy)};
}

CameraBox SceneLayoutHelper::calculateCameraTransformPIP(const SourceConfiguration& config, QRectF cameraFrame,
                                                         QSizeF containerSize) {
    const double factor = pipSizeFactor(config.cameraSize, config.cameraShape);
    double width = 0;
    double height = 0;
    if (config.cameraShape == CameraShape::verticalRectangle) {
        height = containerSize.height() * factor;
        width = height * 0.5625;
    } else {
        width = containerSize.width() * factor;
        height = width * 0.75;
    }
    width *= config.cameraWidth;
    height *= config.cameraHeight;
    const double rx = (containerSize.width() - width) / 2;
    const double ry = (containerSize.height() - height) / 2;
    const double ox = clampToRoom(cameraFrame.width() * config.cameraHorizontalPosition * 0.5, rx);
    const double oy = clampToRoom(cameraFrame.height() * config.cameraVerticalPosition * 0.5, ry);
    return {QSizeF(width, height), cameraFrame.center() + QPointF(ox, oy)};
}

CameraShape SceneLayoutHelper::cameraShapeForLayout(CameraShape configured, SceneLayout layout) {
    if (layout == SceneLayout::splitHorizontal || layout == SceneLayout::cameraLeft ||
        layout == SceneLayout::cameraRight || layout == SceneLayout::fullCamera)
        return CameraShape::rectangle;
    return configured;
}

}  // namespace orvane

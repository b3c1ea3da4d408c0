#include "paint/PlainImageTarget.h"

#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QRegion>

namespace orvane {

std::optional<PlainImageTarget> PlainImageTarget::of(QPainter& painter) {
    if (!painter.isActive()) return std::nullopt;
    QPaintEngine* engine = painter.paintEngine();
    QPaintDevice* device = engine ? engine->paintDevice() : nullptr;
    if (!device || device->devType() != QInternal::Image || engine->type() != QPaintEngine::Raster)
        return std::nullopt;
    auto* image = static_cast<QImage*>(device);
    if (image->format() != QImage::Format_ARGB32_Premultiplied && image->format() != QImage::Format_RGB32)
        return std::nullopt;
    if (painter.opacity() != 1.0 || painter.compositionMode() != QPainter::CompositionMode_SourceOver)
        return std::nullopt;
    if (!engine->systemClip().isEmpty()) return std::nullopt;
    const QTransform toDevice = painter.deviceTransform();
    if (toDevice.type() > QTransform::TxScale || toDevice.m11() <= 0 || toDevice.m22() <= 0) return std::nullopt;
    QRect writable = image->rect();
    if (painter.hasClipping()) {
        const QRegion clip = toDevice.map(painter.clipRegion());
        if (clip.rectCount() > 1) return std::nullopt;
        writable &= clip.boundingRect();
    }
    PlainImageTarget target;
    // The engine draws into this very buffer; taking it through constBits
    // keeps the image from detaching under the painter.
    target.bits_ = const_cast<unsigned char*>(image->constBits());
    target.stride_ = image->bytesPerLine();
    target.writable_ = writable;
    target.toDevice_ = toDevice;
    return target;
}

}  // namespace orvane

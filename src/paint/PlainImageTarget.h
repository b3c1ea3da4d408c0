#pragma once

#include <QRect>
#include <QTransform>
#include <cstdint>
#include <optional>

class QImage;
class QPainter;

namespace orvane {

// What a painter draws into when its pixels can be written directly: a
// 32-bit image (premultiplied ARGB or RGB32), drawn on at full opacity with
// source over, through a transform that only scales and moves, and clipped
// to no more than one rectangle. A widget's painter, a clip path, a region
// of several rectangles or any other mode is not plain: those go to Qt.
class PlainImageTarget {
public:
    static std::optional<PlainImageTarget> of(QPainter& painter);

    // Row y of the image (device pixels).
    std::uint32_t* row(int y) const { return reinterpret_cast<std::uint32_t*>(bits_ + stride_ * y); }
    // The device pixels that may be written: the image, within the clip.
    QRect writable() const { return writable_; }
    QTransform toDevice() const { return toDevice_; }

private:
    unsigned char* bits_ = nullptr;
    qsizetype stride_ = 0;
    QRect writable_;
    QTransform toDevice_;
};

}  // namespace orvane

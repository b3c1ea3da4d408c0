#pragma once

#include <QImage>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <unordered_map>

#include "document/BrandingConfig.h"

class QPainter;

namespace orvane {

// The branding plate in its corner. The plate changes only with its
// configuration or the canvas size, so it is drawn once into an image and
// reused; logos are cached by path (a new logo always arrives under a new
// path).
class BrandingPainter {
public:
    void paint(QPainter& painter, QSizeF canvas, const BrandingConfig& branding);

    // The logo at a path, or a null image when it does not load.
    QImage logo(const std::string& path);

private:
    QImage renderPlate(const BrandingConfig& branding, QSizeF canvas, qreal dpr, QRectF* placed);

    std::size_t plateKey_ = 0;
    QImage plate_;
    QRectF plateRect_;
    std::unordered_map<std::string, QImage> logos_;
};

}  // namespace orvane

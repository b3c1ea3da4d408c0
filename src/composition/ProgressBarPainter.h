#pragma once

#include <QImage>
#include <QRectF>
#include <QSizeF>
#include <vector>

#include "document/ProgressBarConfig.h"

class QPainter;

namespace orvane {

// The step strip along one edge. Drawn once into an image per configuration
// and canvas size, then reused until either changes, so a ticked step shows
// on the next frame.
class ProgressBarPainter {
public:
    void paint(QPainter& painter, QSizeF canvas, const ProgressBarConfig& config);

    // Steps sorted by `order`, ascending and stable.
    static std::vector<ProgressStep> orderedSteps(const ProgressBarConfig& config);

private:
    QImage renderStrip(const ProgressBarConfig& config, QSizeF canvas, qreal dpr, QRectF* placed);

    std::size_t key_ = 0;
    QImage strip_;
    QRectF stripRect_;
};

}  // namespace orvane

#include "composition/ProgressBarPainter.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "paint/ColorConvert.h"
#include "paint/ImageBands.h"
#include "paint/PixelFont.h"
#include "composition/ProgressBarGeometry.h"
#include "paint/SymbolPainter.h"
#include "document/HashCombine.h"

namespace orvane {

namespace {

QRect alignedRect(QRectF r, qreal dpr) {
    const QPoint topLeft(static_cast<int>(std::floor(r.left() * dpr)), static_cast<int>(std::floor(r.top() * dpr)));
    const QPoint bottomRight(static_cast<int>(std::ceil(r.right() * dpr)), static_cast<int>(std::ceil(r.bottom() * dpr)));
    return QRect(topLeft, QSize(std::max(1, bottomRight.x() - topLeft.x()), std::max(1, bottomRight.y() - topLeft.y())));
}

}  // namespace

std::vector<ProgressStep> ProgressBarPainter::orderedSteps(const ProgressBarConfig& config) {
    std::vector<ProgressStep> steps = config.steps;
    std::stable_sort(steps.begin(), steps.end(),
                     [](const ProgressStep& a, const ProgressStep& b) { return a.order < b.order; });
    return steps;
}

QImage ProgressBarPainter::renderStrip(const ProgressBarConfig& config, QSizeF canvas, qreal dpr, QRectF* placed) {
    const ProgressStripMetrics m = ProgressBarGeometry::metrics(config, canvas);
    if (m.strip.width() < 0.5 || m.strip.height() < 0.5) return {};
    // Whole pixels, so that the cached strip is copied and not resampled.
    const QRect area = alignedRect(m.strip, dpr);
    *placed = QRectF(QPointF(area.topLeft()) / dpr, QSizeF(area.size()) / dpr);
    QImage image(area.size(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(dpr);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    p.translate(-placed->topLeft());
    p.fillRect(m.strip, ColorConvert::from(config.backgroundColor));

    const QColor completed = ColorConvert::from(config.completedColor);
    const QColor pending = ColorConvert::from(config.pendingColor);
    const QColor textColor = ColorConvert::from(config.textColor);
    const QFont doneFont = PixelFont::system(m.labelSize, QFont::DemiBold, nullptr);
    const QFont pendingFont = PixelFont::system(m.labelSize, QFont::Normal, nullptr);
    const QFont numberFont = PixelFont::system(m.numberSize, QFont::Bold, nullptr);

    const std::vector<ProgressStep> steps = orderedSteps(config);
    double cursor = (m.horizontal ? m.strip.left() : m.strip.top()) + m.paddingAlong;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const ProgressStep& step = steps[i];
        const bool last = i + 1 == steps.size();
        const QFont& font = step.isCompleted ? doneFont : pendingFont;
        const QString title = QString::fromStdString(step.title);
        const QFontMetricsF fm = PixelFont::metrics(font, nullptr);
        QSizeF labelSize;
        int flags = 0;
        if (m.horizontal) {
            labelSize = fm.size(Qt::TextSingleLine, title);
            flags = Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine;
        } else {
            // Up to two centred lines within the configured width.
            const QRectF bounds =
                fm.boundingRect(QRectF(0, 0, m.labelMaxWidth, 1e6), Qt::AlignHCenter | Qt::TextWordWrap, title);
            labelSize = QSizeF(std::min(bounds.width(), m.labelMaxWidth),
                               std::min(bounds.height(), 2 * fm.lineSpacing()));
            flags = Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap;
        }
        const ProgressItemPlacement place = ProgressBarGeometry::placeItem(m, cursor, labelSize, !last);

        p.setPen(Qt::NoPen);
        p.setBrush(step.isCompleted ? completed : pending);
        p.drawEllipse(place.marker);
        if (step.isCompleted) {
            SymbolPainter::draw(p, "checkmark", place.marker.center(), m.checkSize, Qt::white);
        } else {
            p.setFont(numberFont);
            p.setPen(Qt::white);
            p.drawText(place.marker, Qt::AlignCenter, QString::number(step.order + 1));
        }
        if (!title.isEmpty()) {
            p.save();
            p.setFont(font);
            p.setPen(textColor);
            p.setClipRect(place.label.adjusted(-1, -1, 1, 1));
            p.drawText(place.label, flags, title);
            p.restore();
        }
        if (!last) p.fillRect(place.connector, step.isCompleted ? completed : pending);
        cursor = place.next;
    }
    // The strip's opacity applies to it as a whole: baked in once.
    p.resetTransform();
    p.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    p.fillRect(QRectF(QPointF(0, 0), placed->size()), QColor::fromRgbF(0, 0, 0, float(std::clamp(config.opacity, 0.0, 1.0))));
    return image;
}

void ProgressBarPainter::paint(QPainter& painter, QSizeF canvas, const ProgressBarConfig& config) {
    const qreal dpr = painter.device() ? painter.device()->devicePixelRatioF() : 1.0;
    const std::size_t key = hashFields(config, canvas.width(), canvas.height(), dpr);
    if (key != key_ || strip_.isNull()) {
        key_ = key;
        strip_ = renderStrip(config, canvas, dpr, &stripRect_);
    }
    if (strip_.isNull()) return;
    drawImageInBands(painter, stripRect_.topLeft(), strip_);
}

}  // namespace orvane

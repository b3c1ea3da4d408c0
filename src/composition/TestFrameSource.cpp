#include "composition/TestFrameSource.h"

#include <QPainter>

namespace orvane {

void TestFrameSource::setFrame(const Uuid& sourceId, QImage image) {
    frames_[sourceId] = SourceFrame::withImage(std::move(image));
}

void TestFrameSource::setState(const Uuid& sourceId, SourceFrame frame) { frames_[sourceId] = std::move(frame); }

void TestFrameSource::clear(const Uuid& sourceId) { frames_.erase(sourceId); }

SourceFrame TestFrameSource::latestFrame(const Source& source) const {
    const auto it = frames_.find(source.id);
    return it == frames_.end() ? SourceFrame{} : it->second;
}

QImage TestFrameSource::patternFrame(QSize size, QColor base) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(base);
    QPainter p(&image);
    p.setPen(QPen(base.lighter(160), std::max(1, size.width() / 400)));
    const int step = std::max(8, size.width() / 16);
    for (int x = 0; x < size.width(); x += step) p.drawLine(x, 0, x, size.height());
    for (int y = 0; y < size.height(); y += step) p.drawLine(0, y, size.width(), y);
    p.setPen(QPen(Qt::white, std::max(2, size.width() / 200)));
    p.drawLine(0, 0, size.width(), size.height());
    return image;
}

}  // namespace orvane

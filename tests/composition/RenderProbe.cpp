#include "RenderProbe.h"

#include <QDir>
#include <QPainter>
#include <cstdlib>

namespace orvane::test {

QImage renderImage(QSize size, const std::function<void(QPainter&)>& paint, QColor fill) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(fill);
    QPainter painter(&image);
    paint(painter);
    painter.end();
    return image;
}

bool near(QColor a, QColor e, int tolerance) {
    return std::abs(a.red() - e.red()) <= tolerance && std::abs(a.green() - e.green()) <= tolerance &&
           std::abs(a.blue() - e.blue()) <= tolerance && std::abs(a.alpha() - e.alpha()) <= tolerance;
}

std::string describe(QColor c) {
    return "(" + std::to_string(c.red()) + ", " + std::to_string(c.green()) + ", " + std::to_string(c.blue()) + ", " +
           std::to_string(c.alpha()) + ")";
}

void keep(const QImage& image, const std::string& name) {
    const char* dir = std::getenv("ORVANE_TEST_IMAGES");
    if (!dir || !*dir) return;
    QDir().mkpath(QString::fromUtf8(dir));
    image.save(QString::fromUtf8(dir) + "/" + QString::fromStdString(name) + ".png");
}

}  // namespace orvane::test

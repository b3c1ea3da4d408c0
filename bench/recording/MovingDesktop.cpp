#include "MovingDesktop.h"

#include <QLinearGradient>
#include <QPainter>

namespace orvane {

namespace {
constexpr int kLineHeight = 36;
constexpr int kLines = 60;
constexpr auto kPictureInterval = std::chrono::nanoseconds(1'000'000'000 / MovingDesktop::kPicturesPerSecond);
}

MovingDesktop::MovingDesktop(QSize size) : size_(size), text_(size.width(), kLineHeight * kLines, QImage::Format_RGB32) {
    QPainter p(&text_);
    QLinearGradient g(0, 0, size.width(), text_.height());
    g.setColorAt(0, QColor(40, 44, 52));
    g.setColorAt(1, QColor(90, 60, 120));
    p.fillRect(text_.rect(), g);
    p.setPen(Qt::white);
    p.setFont(QFont("DejaVu Sans", 18));
    for (int line = 0; line < kLines; ++line)
        p.drawText(40, (line + 1) * kLineHeight,
                   QStringLiteral("%1  The quick brown fox jumps over the lazy dog, line %1").arg(line));
}

MovingDesktop::~MovingDesktop() = default;

QImage MovingDesktop::frameAt(std::int64_t n) const {
    QImage frame(size_, QImage::Format_RGB32);
    QPainter p(&frame);
    // The editor scrolls by a line every frame and wraps round its text.
    const int scroll = static_cast<int>((n * kLineHeight) % text_.height());
    const int firstPart = std::min(size_.height(), text_.height() - scroll);
    p.drawImage(QPoint(0, 0), text_, QRect(0, scroll, size_.width(), firstPart));
    if (firstPart < size_.height())
        p.drawImage(QPoint(0, firstPart), text_, QRect(0, 0, size_.width(), size_.height() - firstPart));
    // A clock in the corner and a pointer crossing the screen.
    p.fillRect(QRect(size_.width() - 260, 0, 260, 48), QColor(20, 20, 24));
    p.setPen(Qt::white);
    p.setFont(QFont("DejaVu Sans", 16));
    p.drawText(QRect(size_.width() - 250, 0, 240, 48), Qt::AlignVCenter | Qt::AlignRight,
               QStringLiteral("frame %1").arg(n));
    const int x = static_cast<int>((n * 23) % size_.width());
    const int y = static_cast<int>((n * 13) % size_.height());
    p.setRenderHint(QPainter::Antialiasing);
    p.setBrush(Qt::white);
    p.setPen(QPen(Qt::black, 2));
    p.drawPolygon(QPolygon({QPoint(x, y), QPoint(x, y + 28), QPoint(x + 8, y + 21), QPoint(x + 19, y + 21)}));
    return frame;
}

void MovingDesktop::drawCycle() {
    if (!cycle_.empty()) return;
    for (int n = 0; n < kCycle; ++n) cycle_.push_back(frameAt(n));
}

void MovingDesktop::start() {
    drawCycle();
    thread_ = std::jthread([this](std::stop_token stop) { run(stop); });
}

CapturedFrame MovingDesktop::latestFrame() const {
    std::lock_guard lock(mutex_);
    return latest_;
}

void MovingDesktop::run(std::stop_token stop) {
    const auto origin = std::chrono::steady_clock::now();
    for (std::int64_t n = 0; !stop.stop_requested(); ++n) {
        std::this_thread::sleep_until(origin + n * kPictureInterval);
        CapturedFrame frame;
        frame.image = cycle_[static_cast<std::size_t>(n % kCycle)];
        frame.sequence = static_cast<std::uint64_t>(n + 1);
        frame.capturedAt = std::chrono::steady_clock::now();
        frame.grabbedAt = frame.capturedAt;
        std::lock_guard lock(mutex_);
        latest_ = std::move(frame);
    }
}

}  // namespace orvane

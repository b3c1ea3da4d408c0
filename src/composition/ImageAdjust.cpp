#include "composition/ImageAdjust.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace orvane {

int ImageAdjust::adjustChannel(int value, double brightness, double contrast) {
    const double c = ((value / 255.0 + brightness) - 0.5) * contrast + 0.5;
    return std::clamp(static_cast<int>(std::lround(c * 255.0)), 0, 255);
}

QImage ImageAdjust::adjusted(const QImage& image, double brightness, double contrast) {
    if (image.isNull() || isNeutral(brightness, contrast)) return image;
    QImage out = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    std::array<std::uint8_t, 256> lut{};
    for (int i = 0; i < 256; ++i) lut[i] = static_cast<std::uint8_t>(adjustChannel(i, brightness, contrast));
    for (int y = 0; y < out.height(); ++y) {
        auto* line = reinterpret_cast<std::uint32_t*>(out.scanLine(y));
        for (int x = 0; x < out.width(); ++x) {
            const std::uint32_t p = line[x];
            const std::uint32_t a = p >> 24;
            if (a == 0) continue;
            if (a == 255) {
                line[x] = (p & 0xff000000u) | (std::uint32_t(lut[(p >> 16) & 0xff]) << 16) |
                          (std::uint32_t(lut[(p >> 8) & 0xff]) << 8) | lut[p & 0xff];
                continue;
            }
            // Translucent pixels: adjust the straight colour, premultiply again.
            auto channel = [&](std::uint32_t premultiplied) {
                const int straight = static_cast<int>(std::min<std::uint32_t>(255, premultiplied * 255 / a));
                return static_cast<std::uint32_t>(lut[straight] * a / 255);
            };
            line[x] = (a << 24) | (channel((p >> 16) & 0xff) << 16) | (channel((p >> 8) & 0xff) << 8) |
                      channel(p & 0xff);
        }
    }
    return out;
}

}  // namespace orvane

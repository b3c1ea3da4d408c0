#include "remote/QrCodeImage.h"

#include <qrencode.h>

#include <memory>
#include <string>

#include "document/Log.h"

namespace orvane {

namespace {

struct QrCodeDeleter {
    void operator()(QRcode* code) const { QRcode_free(code); }
};

// ["h", "t", "t", "p", ...]: one entry a code point.
std::string characterList(const QString& text) {
    std::string out = "[";
    bool first = true;
    for (const char32_t c : text.toUcs4()) {
        if (!first) out += ", ";
        first = false;
        out += '"';
        out += QString::fromUcs4(&c, 1).toStdString();
        out += '"';
    }
    out += ']';
    return out;
}

// Text that no UTF-8 can carry; toUtf8() would replace it silently.
bool hasUnpairedSurrogate(QStringView text) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            ++i;
            continue;
        }
        if (c.isSurrogate()) return true;
    }
    return false;
}

}  // namespace

QImage generateQRCode(const QString& text) {
    logLine("🔍 Raw input string: '" + text.toStdString() + "'");
    logLine("🔍 String length: " + std::to_string(text.toUcs4().size()));
    logLine("🔍 String characters: " + characterList(text));

    const QString trimmed = text.trimmed();
    logLine("🔍 After trimming: '" + trimmed.toStdString() + "'");
    logLine("🔍 Trimmed length: " + std::to_string(trimmed.toUcs4().size()));

    if (hasUnpairedSurrogate(trimmed)) {
        logLine("❌ Failed to convert URL to data: " + trimmed.toStdString());
        return {};
    }

    const QByteArray data = trimmed.toUtf8();
    // Byte mode whatever the text; version 0 lets the library pick the smallest.
    const std::unique_ptr<QRcode, QrCodeDeleter> code(QRcode_encodeData(
        static_cast<int>(data.size()), reinterpret_cast<const unsigned char*>(data.constData()), 0, QR_ECLEVEL_L));
    if (!code) {
        logLine("❌ Failed to generate QR code image");
        return {};
    }

    const int modules = code->width + 2 * kQrQuietZoneModules;
    const int side = modules * kQrPixelsPerModule;
    QImage image(side, side, QImage::Format_Grayscale8);
    image.fill(255);
    for (int y = 0; y < code->width; ++y) {
        for (int x = 0; x < code->width; ++x) {
            if (!(code->data[y * code->width + x] & 1)) continue;  // bit 0: dark module
            const int left = (x + kQrQuietZoneModules) * kQrPixelsPerModule;
            const int top = (y + kQrQuietZoneModules) * kQrPixelsPerModule;
            for (int row = top; row < top + kQrPixelsPerModule; ++row) {
                uchar* line = image.scanLine(row);
                std::fill(line + left, line + left + kQrPixelsPerModule, uchar(0));
            }
        }
    }
    image.setDevicePixelRatio(static_cast<double>(side) / kQrLogicalSize);

    const QSizeF logical = image.deviceIndependentSize();
    logLine("✅ Generated QR code for URL: " + trimmed.toStdString());
    logLine("   QR code size: " + std::to_string(qRound(logical.width())) + "x" +
            std::to_string(qRound(logical.height())));
    return image;
}

}  // namespace orvane

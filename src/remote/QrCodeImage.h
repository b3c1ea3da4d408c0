#pragma once

#include <QImage>
#include <QString>

namespace orvane {

// The QR code of `text` (trimmed at both ends): byte mode, error correction
// level L, 15 pixels a module, black on white with a quiet zone, and a
// logical size of 300 by 300 through the device pixel ratio. A null image
// when the text cannot be encoded. Logs the diagnostic lines of the sheet.
QImage generateQRCode(const QString& text);

inline constexpr int kQrPixelsPerModule = 15;
inline constexpr int kQrQuietZoneModules = 4;
inline constexpr int kQrLogicalSize = 300;

}  // namespace orvane

#pragma once

#include <QMetaType>
#include <QRect>
#include <QString>

#include <cstdint>

namespace orvane {

// One window that can be captured, as listed for the window sheet.
struct CaptureWindow {
    std::uint32_t id = 0;
    QString title;      // empty when the window has none
    QString ownerName;  // "Unknown" when no owning application is known
    int windowLayer = 0;
    QRect bounds;

    QString displayName() const {
        return title.isEmpty() ? ownerName : ownerName + QStringLiteral(" - ") + title;
    }

    friend bool operator==(const CaptureWindow&, const CaptureWindow&) = default;
};

}  // namespace orvane

Q_DECLARE_METATYPE(orvane::CaptureWindow)

#pragma once

#include <QMetaType>
#include <QRect>
#include <QString>

#include <cstdint>

namespace orvane {

// One display that can be captured, as listed for the display sheet.
struct CaptureDisplay {
    std::uint32_t id = 0;
    int width = 0;
    int height = 0;
    QString name;
    QRect frame;  // where the display lies on the X screen, in pixels

    QString displayName() const {
        return name.isEmpty() ? QStringLiteral("Display %1").arg(id) : name;
    }

    friend bool operator==(const CaptureDisplay&, const CaptureDisplay&) = default;
};

}  // namespace orvane

Q_DECLARE_METATYPE(orvane::CaptureDisplay)

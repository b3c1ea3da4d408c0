#pragma once

#include <QRect>
#include <QString>

#include <cstdint>
#include <optional>

namespace orvane {

// A window as the backend reports it, before the sheet's filter: the owning
// application may be unknown and the layer may be anything.
struct ShareableWindow {
    std::uint32_t id = 0;
    QString title;
    std::optional<QString> applicationName;
    int windowLayer = 0;
    QRect frame;
};

}  // namespace orvane

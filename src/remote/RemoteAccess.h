#pragma once

#include <QString>
#include <optional>

namespace orvane {

// The access URL, the same wherever it is shown: no trailing slash.
QString remoteAccessUrl(const QString& localIP, quint16 port);

// The port field's text: decimal digits (an optional "+") that fit 16 bits.
// Anything else leaves the port as it was.
std::optional<quint16> parsePortText(const QString& text);

}  // namespace orvane

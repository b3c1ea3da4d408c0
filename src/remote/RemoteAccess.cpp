#include "remote/RemoteAccess.h"

namespace orvane {

QString remoteAccessUrl(const QString& localIP, quint16 port) {
    return QStringLiteral("http://") + localIP + QLatin1Char(':') + QString::number(port);
}

std::optional<quint16> parsePortText(const QString& text) {
    QStringView digits(text);
    if (digits.startsWith(QLatin1Char('+'))) digits = digits.mid(1);
    if (digits.isEmpty()) return std::nullopt;
    unsigned value = 0;
    for (const QChar c : digits) {
        if (c < QLatin1Char('0') || c > QLatin1Char('9')) return std::nullopt;
        value = value * 10 + static_cast<unsigned>(c.unicode() - '0');
        if (value > 0xFFFF) return std::nullopt;
    }
    return static_cast<quint16>(value);
}

}  // namespace orvane

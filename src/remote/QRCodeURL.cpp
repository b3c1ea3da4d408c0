#include "remote/QRCodeURL.h"

#include <string>

#include "document/Log.h"
#include "remote/RemoteAccess.h"

namespace orvane {

QRCodeURL QRCodeURL::forServer(const QString& localIP, quint16 serverPort) {
    QRCodeURL shown;
    shown.url = remoteAccessUrl(localIP, serverPort);
    logLine("🔍 WebServer localIP: '" + localIP.toStdString() + "'");
    logLine("🔍 WebServer serverPort: '" + std::to_string(serverPort) + "'");
    logLine("🔍 Generated URL: '" + shown.url.toStdString() + "'");
    return shown;
}

}  // namespace orvane

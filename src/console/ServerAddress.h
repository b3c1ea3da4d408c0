#pragma once

#include <QObject>
#include <QString>

namespace orvane {

// What the bars read of the remote server, which the session holds as a
// plain object: whether it runs and the page's address.
class ServerAddress {
public:
    static bool isRunning(const QObject* server);
    // "http://" + localIP + ":" + serverPort.
    static QString url(const QObject* server);
    // Connects every notifying property of the server to `slot` of receiver.
    static void watch(QObject* server, QObject* receiver, const char* slot);
};

}  // namespace orvane

#pragma once

#include <QTcpServer>

namespace orvane {

// A listening socket that hands each accepted descriptor on as it is, so
// that connections over the cap are closed before any socket object exists.
class RemoteTcpListener : public QTcpServer {
    Q_OBJECT
public:
    using QTcpServer::QTcpServer;

signals:
    void descriptorAccepted(qintptr descriptor);

protected:
    void incomingConnection(qintptr descriptor) override;
};

}  // namespace orvane

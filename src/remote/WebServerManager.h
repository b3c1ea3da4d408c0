#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QThread>
#include <functional>
#include <memory>

#include "remote/RemoteAction.h"
#include "remote/RemoteSessionSnapshot.h"

namespace orvane {

class RecordingControl;
class RemoteActions;
class RemoteHttpServer;
class RemoteSnapshotStore;

// The tiny HTTP server a telephone drives the console through. Lives on the
// main thread; listening and every request run on a thread of its own and
// read the session only through the snapshot published here. Changes come
// back to the main thread by queued invocation and are carried out through
// RemoteActions and RecordingControl; a reply never waits for them.
class WebServerManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isServerRunning READ isServerRunning NOTIFY isServerRunningChanged)
    Q_PROPERTY(quint16 serverPort READ serverPort WRITE setServerPort NOTIFY serverPortChanged)
    Q_PROPERTY(QString serverIP READ serverIP CONSTANT)
    Q_PROPERTY(QString localIP READ localIP NOTIFY localIPChanged)
    Q_PROPERTY(quint16 listeningPort READ listeningPort NOTIFY listeningPortChanged)

public:
    static constexpr quint16 kDefaultPort = 8999;

    // Looks the local address up at once; does not start the server.
    explicit WebServerManager(QObject* parent = nullptr);
    ~WebServerManager() override;

    bool isServerRunning() const { return isServerRunning_; }
    quint16 serverPort() const { return serverPort_; }
    // Ignored while the server runs. Port 0 asks the system for a free port.
    void setServerPort(quint16 port);
    QString serverIP() const { return QStringLiteral("0.0.0.0"); }
    QString localIP() const { return localIP_; }
    // The port actually bound while running (serverPort unless that was 0).
    quint16 listeningPort() const { return listeningPort_; }
    // "http://" + localIP + ":" + serverPort.
    QString accessUrl() const;

    void startServer();
    void stopServer();
    void updateLocalIP(std::function<void()> completion = {});

    // Thread-safe. Null means the session is gone.
    void publishSession(std::shared_ptr<const RemoteSessionSnapshot> snapshot);
    std::shared_ptr<const RemoteSessionSnapshot> session() const;

    // Where actions go; neither is owned, and either may be cleared.
    void setActions(RemoteActions* actions) { actions_ = actions; }
    void setRecordingControl(RecordingControl* recorder) { recorder_ = recorder; }

signals:
    void isServerRunningChanged(bool running);
    void serverPortChanged(quint16 port);
    void localIPChanged(const QString& localIP);
    void listeningPortChanged(quint16 port);

private:
    void beginListening(int generation);
    void onListenFinished(int generation, bool ok, quint16 port, const QString& error);
    void applyAction(const RemoteAction& action);
    void setServerRunning(bool running);
    void setListeningPort(quint16 port);

    bool isServerRunning_ = false;
    bool starting_ = false;
    int generation_ = 0;  // bumped by each start and stop; stale listen answers are dropped
    quint16 serverPort_ = kDefaultPort;
    quint16 listeningPort_ = 0;
    QString localIP_ = QStringLiteral("localhost");

    std::shared_ptr<RemoteSnapshotStore> store_;
    RemoteActions* actions_ = nullptr;
    RecordingControl* recorder_ = nullptr;
    QThread thread_;
    RemoteHttpServer* server_;  // lives on thread_; deleted when it finishes
};

}  // namespace orvane

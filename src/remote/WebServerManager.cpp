#include "remote/WebServerManager.h"

#include <QCoreApplication>
#include <QThreadPool>

#include "document/Log.h"
#include "remote/LocalAddress.h"
#include "remote/RemoteAccess.h"
#include "remote/RemoteActionDispatch.h"
#include "remote/RemoteHttpServer.h"
#include "remote/RemoteSnapshotStore.h"

namespace orvane {

WebServerManager::WebServerManager(QObject* parent)
    : QObject(parent), store_(std::make_shared<RemoteSnapshotStore>()) {
    // The server thread only posts; this object outlives the thread (the
    // destructor joins it), and Qt drops events queued to a deleted receiver.
    auto sink = [this](const RemoteAction& action) {
        QMetaObject::invokeMethod(this, [this, action] { applyAction(action); }, Qt::QueuedConnection);
    };
    server_ = new RemoteHttpServer(store_, std::move(sink));
    server_->moveToThread(&thread_);
    connect(&thread_, &QThread::finished, server_, &QObject::deleteLater);
    connect(server_, &RemoteHttpServer::listenFinished, this, &WebServerManager::onListenFinished);
    thread_.setObjectName(QStringLiteral("remote-http"));
    thread_.start();

    updateLocalIP();
}

WebServerManager::~WebServerManager() {
    thread_.quit();
    thread_.wait();
}

void WebServerManager::setServerPort(quint16 port) {
    if (isServerRunning_ || port == serverPort_) return;
    serverPort_ = port;
    emit serverPortChanged(port);
}

QString WebServerManager::accessUrl() const { return remoteAccessUrl(localIP_, serverPort_); }

void WebServerManager::startServer() {
    if (isServerRunning_ || starting_) return;
    starting_ = true;
    const int generation = ++generation_;
    logLine("🌐 Starting server...");
    QPointer<WebServerManager> self(this);
    updateLocalIP([self, generation] {
        if (self) self->beginListening(generation);
    });
}

void WebServerManager::beginListening(int generation) {
    if (generation != generation_) {
        starting_ = false;  // stopped while the address was looked up
        return;
    }
    const quint16 port = serverPort_;
    QMetaObject::invokeMethod(server_, [server = server_, port, generation] { server->listen(port, generation); },
                              Qt::QueuedConnection);
}

void WebServerManager::onListenFinished(int generation, bool ok, quint16 port, const QString& error) {
    if (generation != generation_) return;
    starting_ = false;
    if (!ok) {
        logLine("❌ Failed to start web server: " + error.toStdString());
        return;
    }
    setListeningPort(port);
    setServerRunning(true);
    logLine("🌐 Web server started on " + localIP_.toStdString() + ":" + std::to_string(port));
}

void WebServerManager::stopServer() {
    ++generation_;
    starting_ = false;
    QMetaObject::invokeMethod(server_, [server = server_] { server->close(); }, Qt::QueuedConnection);
    // The flag falls on the next turn of the main loop, as the panel expects.
    QMetaObject::invokeMethod(
        this,
        [this] {
            setServerRunning(false);
            setListeningPort(0);
        },
        Qt::QueuedConnection);
    logLine("🌐 Web server stopped");
}

void WebServerManager::updateLocalIP(std::function<void()> completion) {
    QPointer<WebServerManager> self(this);
    QThreadPool::globalInstance()->start([self, completion = std::move(completion)]() mutable {
        const std::string result = selectLocalAddress(listInterfaceAddresses());
        auto* app = QCoreApplication::instance();
        if (!app) return;
        QMetaObject::invokeMethod(
            app,
            [self, result, completion = std::move(completion)] {
                // Only dereferenced here, on the main thread.
                if (self) {
                    self->localIP_ = QString::fromStdString(result);
                    emit self->localIPChanged(self->localIP_);
                    logLine("🌐 Updated localIP to: '" + result + "'");
                }
                if (completion) completion();
            },
            Qt::QueuedConnection);
    });
}

void WebServerManager::publishSession(std::shared_ptr<const RemoteSessionSnapshot> snapshot) {
    store_->publish(std::move(snapshot));
}

std::shared_ptr<const RemoteSessionSnapshot> WebServerManager::session() const {
    return store_->current()->snapshot;
}

void WebServerManager::applyAction(const RemoteAction& action) {
    applyRemoteAction(action, actions_, recorder_);
}

void WebServerManager::setServerRunning(bool running) {
    if (running == isServerRunning_) return;
    isServerRunning_ = running;
    emit isServerRunningChanged(running);
}

void WebServerManager::setListeningPort(quint16 port) {
    if (port == listeningPort_) return;
    listeningPort_ = port;
    emit listeningPortChanged(port);
}

}  // namespace orvane

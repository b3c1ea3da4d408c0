// Serves the remote interface on 127.0.0.1 for remote_http.sh: a session of
// eight scenes, the port written to a file once listening. With
// --main-thread=blocked the main thread is stuck in one-second stretches of
// work, with =spinning it burns its core; either way it republishes the
// snapshot between stretches, as a busy console would. Exits by itself after
// --lifetime seconds (default 120) at the latest.

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QTimer>
#include <chrono>
#include <memory>
#include <thread>

#include "remote/RemoteSessionSnapshot.h"
#include "remote/WebServerManager.h"

namespace {

std::shared_ptr<orvane::RemoteSessionSnapshot> makeSnapshot(int activeIndex) {
    auto snapshot = std::make_shared<orvane::RemoteSessionSnapshot>();
    snapshot->hasPreset = true;
    const char* names[] = {"Intro", "Camera", "Slides", "Screen", "Interview", "Q&A", "Break", "Outro"};
    int i = 0;
    for (const char* name : names) snapshot->scenes.push_back({"SCENE-" + std::to_string(i++), name});
    const auto& active = snapshot->scenes[static_cast<std::size_t>(activeIndex) % snapshot->scenes.size()];
    snapshot->activeScene = orvane::RemoteSceneState{active.id, active.name, true, true};
    return snapshot;
}

void burn(std::chrono::milliseconds span, bool spin) {
    if (!spin) {
        std::this_thread::sleep_for(span);
        return;
    }
    const auto end = std::chrono::steady_clock::now() + span;
    volatile unsigned sink = 0;
    while (std::chrono::steady_clock::now() < end) sink = sink + 1;
}

}  // namespace

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addOption({"port-file", "Where to write the port.", "path"});
    parser.addOption({"main-thread", "idle, blocked or spinning.", "mode", "idle"});
    parser.addOption({"lifetime", "Seconds before exiting.", "seconds", "120"});
    parser.process(app);

    orvane::WebServerManager manager;
    manager.setServerPort(0);
    manager.publishSession(makeSnapshot(0));

    const QString portFile = parser.value("port-file");
    QObject::connect(&manager, &orvane::WebServerManager::listeningPortChanged, [&](quint16 port) {
        if (port == 0) return;
        QFile file(portFile);
        if (file.open(QIODevice::WriteOnly)) file.write(QByteArray::number(port) + '\n');
    });
    manager.startServer();

    const QString mode = parser.value("main-thread");
    QTimer busy;
    int tick = 0;
    if (mode != "idle") {
        const bool spin = mode == "spinning";
        QObject::connect(&busy, &QTimer::timeout, [&, spin] {
            burn(std::chrono::milliseconds(1000), spin);
            manager.publishSession(makeSnapshot(++tick));
        });
        busy.start(0);
    }
    QTimer::singleShot(parser.value("lifetime").toInt() * 1000, &app, &QCoreApplication::quit);
    return app.exec();
}

#include "support/TestSoundServer.h"

#include <signal.h>

#include <QFile>
#include <QProcess>

#include <chrono>
#include <cstdlib>
#include <thread>

namespace orvane::test {

namespace {

QProcessEnvironment serverEnvironment(const QString& dir) {
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("XDG_RUNTIME_DIR"), dir);
    env.insert(QStringLiteral("HOME"), dir);
    env.insert(QStringLiteral("PULSE_SERVER"), QStringLiteral("unix:") + dir + QStringLiteral("/pulse/native"));
    env.remove(QStringLiteral("DISPLAY"));
    return env;
}

}  // namespace

QString TestSoundServer::start() {
    runtime_ = std::make_unique<QTemporaryDir>(QStringLiteral("/tmp/orvane-sound-XXXXXX"));
    if (!runtime_->isValid()) return QStringLiteral("no temporary directory");
    const QString dir = runtime_->path();
    QFile::setPermissions(dir, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);

    // -D returns once the daemon is ready; its pid is in the runtime dir.
    QProcess daemon;
    QProcessEnvironment env = serverEnvironment(dir);
    env.remove(QStringLiteral("PULSE_SERVER"));
    daemon.setProcessEnvironment(env);
    daemon.start(QStringLiteral("pulseaudio"), {"-D", "--exit-idle-time=-1", "-n",
                                                "--load=module-native-protocol-unix", "--log-target=stderr"});
    if (!daemon.waitForFinished(10000) || daemon.exitCode() != 0)
        return QStringLiteral("pulseaudio failed: ") + QString::fromLocal8Bit(daemon.readAllStandardError());
    QFile pidFile(dir + QStringLiteral("/pulse/pid"));
    if (!pidFile.open(QIODevice::ReadOnly)) return QStringLiteral("pulseaudio wrote no pid");
    pid_ = pidFile.readAll().trimmed().toLongLong();

    for (const QStringList& args :
         {QStringList{"pactl", "load-module", "module-null-sink", "sink_name=orvane_test_sink"},
          QStringList{"pactl", "load-module", "module-null-source", "source_name=orvane_test_mic"},
          QStringList{"pactl", "set-default-sink", "orvane_test_sink"}}) {
        const QString failure = runTool(args);
        if (!failure.isEmpty()) return failure;
    }
    ::setenv("XDG_RUNTIME_DIR", dir.toLocal8Bit().constData(), 1);
    ::setenv("PULSE_SERVER", ("unix:" + dir + "/pulse/native").toLocal8Bit().constData(), 1);
    return {};
}

QString TestSoundServer::runTool(const QStringList& argv, int timeoutMs) const {
    QProcess process;
    process.setProcessEnvironment(serverEnvironment(runtimeDir()));
    process.start(argv.first(), argv.mid(1));
    if (!process.waitForFinished(timeoutMs) || process.exitCode() != 0)
        return argv.join(' ') + QStringLiteral(" failed: ") + QString::fromLocal8Bit(process.readAllStandardError());
    return {};
}

void TestSoundServer::stop() {
    if (pid_ <= 0) return;
    ::kill(static_cast<pid_t>(pid_), SIGTERM);
    // Not our child: watch it go.
    for (int i = 0; i < 200 && ::kill(static_cast<pid_t>(pid_), 0) == 0; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    if (::kill(static_cast<pid_t>(pid_), 0) == 0) ::kill(static_cast<pid_t>(pid_), SIGKILL);
    pid_ = -1;
}

}  // namespace orvane::test

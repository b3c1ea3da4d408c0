#include "support/SoundServer.h"

#include <signal.h>

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QThread>

#include <chrono>
#include <cstdlib>
#include <thread>

namespace orvane::test {

namespace {

QProcessEnvironment environmentFor(const QString& dir) {
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("XDG_RUNTIME_DIR"), dir);
    env.insert(QStringLiteral("HOME"), dir);
    env.insert(QStringLiteral("PULSE_SERVER"), QStringLiteral("unix:") + dir + QStringLiteral("/pulse/native"));
    env.remove(QStringLiteral("DISPLAY"));
    return env;
}

}  // namespace

QString SoundServer::start(Microphone withMicrophone) {
    runtime_ = std::make_unique<QTemporaryDir>(QStringLiteral("/tmp/orvane-rec-sound-XXXXXX"));
    if (!runtime_->isValid()) return QStringLiteral("no temporary directory");
    const QString dir = runtime_->path();
    QFile::setPermissions(dir, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);

    QProcess daemon;
    QProcessEnvironment env = environmentFor(dir);
    env.remove(QStringLiteral("PULSE_SERVER"));
    daemon.setProcessEnvironment(env);
    // -D returns once the daemon is ready and has written its pid.
    daemon.start(QStringLiteral("pulseaudio"),
                 {"-D", "--exit-idle-time=-1", "-n", "--load=module-native-protocol-unix", "--log-target=stderr"});
    if (!daemon.waitForFinished(15000) || daemon.exitCode() != 0)
        return QStringLiteral("pulseaudio failed: ") + QString::fromLocal8Bit(daemon.readAllStandardError());
    QFile pidFile(dir + QStringLiteral("/pulse/pid"));
    if (!pidFile.open(QIODevice::ReadOnly)) return QStringLiteral("pulseaudio wrote no pid");
    pid_ = pidFile.readAll().trimmed().toLongLong();

    const QString sink = QString::fromLatin1(kSink);
    const QString microphone = QString::fromLatin1(kMicrophone);
    const QString microphoneSink = QString::fromLatin1(kMicrophoneSink);
    for (const QStringList& args : {QStringList{"pactl", "load-module", "module-null-sink", "sink_name=" + sink},
                                    QStringList{"pactl", "set-default-sink", sink}}) {
        if (const QString failure = runTool(args); !failure.isEmpty()) return failure;
    }
    ::setenv("XDG_RUNTIME_DIR", dir.toLocal8Bit().constData(), 1);
    ::setenv("PULSE_SERVER", ("unix:" + dir + "/pulse/native").toLocal8Bit().constData(), 1);
    if (withMicrophone == Microphone::absent) return {};

    for (const QStringList& args :
         {QStringList{"pactl", "load-module", "module-null-sink", "sink_name=" + microphoneSink},
          QStringList{"pactl", "load-module", "module-remap-source", "master=" + microphoneSink + ".monitor",
                      "source_name=" + microphone},
          QStringList{"pactl", "set-default-source", microphone}}) {
        if (const QString failure = runTool(args); !failure.isEmpty()) return failure;
    }

    const QString voice = dir + QStringLiteral("/voice.wav");
    if (const QString failure = runTool({"sox", "-n", "-r", "48000", "-c", "2", voice, "synth", "60", "sine",
                                         QString::number(kMicrophoneFrequency_hz), "vol", "0.5"});
        !failure.isEmpty())
        return failure;
    voice_ = std::make_unique<QProcess>();
    voice_->setProcessEnvironment(environmentFor(dir));
    voice_->start(QStringLiteral("paplay"), {QStringLiteral("--device=") + microphoneSink, voice});
    if (!voice_->waitForStarted(5000)) return QStringLiteral("paplay did not start");

    // 8 kHz mono bytes: the listener only asks for the short latency.
    const QString heard = dir + QStringLiteral("/heard.raw");
    listener_ = std::make_unique<QProcess>();
    listener_->setProcessEnvironment(environmentFor(dir));
    listener_->start(QStringLiteral("parecord"), {"--raw", "--format=u8", "--channels=1", "--rate=8000",
                                                  "--latency-msec=10", "--device=" + microphone, heard});
    if (!listener_->waitForStarted(5000)) return QStringLiteral("parecord did not start");
    for (int i = 0; i < 100 && QFileInfo(heard).size() < 800; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    if (QFileInfo(heard).size() < 800) return QStringLiteral("the microphone gave no sound within 5 s");
    return {};
}

QString SoundServer::runTool(const QStringList& argv, int timeoutMs, QString* output) const {
    QProcess process;
    process.setProcessEnvironment(environmentFor(runtimeDir()));
    process.start(argv.first(), argv.mid(1));
    if (!process.waitForFinished(timeoutMs) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return argv.join(' ') + QStringLiteral(" failed: ") + QString::fromLocal8Bit(process.readAllStandardError());
    if (output) *output = QString::fromLocal8Bit(process.readAllStandardOutput());
    return {};
}

void SoundServer::stop() {
    for (std::unique_ptr<QProcess>* client : {&sinkTone_, &listener_, &voice_}) {
        if (*client && (*client)->state() != QProcess::NotRunning) {
            (*client)->kill();
            (*client)->waitForFinished(3000);
        }
        client->reset();
    }
    if (pid_ <= 0) return;
    const auto pid = static_cast<pid_t>(pid_);
    ::kill(pid, SIGTERM);
    // The daemon is not our child: watch it go.
    for (int i = 0; i < 300 && ::kill(pid, 0) == 0; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
    if (::kill(pid, 0) == 0) ::kill(pid, SIGKILL);
    pid_ = -1;
    ::unsetenv("PULSE_SERVER");
}

QString SoundServer::killDaemon() {
    if (pid_ <= 0) return QStringLiteral("no daemon running");
    const auto pid = static_cast<pid_t>(pid_);
    if (::kill(pid, SIGKILL) != 0) return QStringLiteral("kill failed");
    // Not our child: gone once its process entry is gone or is a zombie
    // nobody reaps.
    for (int i = 0; i < 500; ++i) {
        QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
        if (!stat.open(QIODevice::ReadOnly)) break;
        const QByteArray text = stat.readAll();
        const int close = text.lastIndexOf(')');
        if (close < 0 || text.mid(close + 2, 1) == "Z") break;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    pid_ = -1;
    return {};
}

QString SoundServer::playSinkTone() {
    const QString tone = runtimeDir() + "/tone.wav";
    if (const QString failure =
            runTool({"sox", "-n", "-r", "48000", "-c", "2", tone, "synth", "20", "sine", "1000", "vol", "0.5"});
        !failure.isEmpty())
        return failure;
    sinkTone_ = std::make_unique<QProcess>();
    sinkTone_->setProcessEnvironment(environmentFor(runtimeDir()));
    sinkTone_->start("paplay", {QStringLiteral("--device=") + kSink, tone});
    if (!sinkTone_->waitForStarted(5000)) return QStringLiteral("paplay did not start");
    // Started is not playing: on a busy machine the player may take a good
    // part of a second to connect. The tone counts as playing once its
    // stream stands on the server.
    for (int tries = 0; tries < 100; ++tries) {
        QString inputs;
        if (runTool({"pactl", "list", "short", "sink-inputs"}, 5000, &inputs).isEmpty() && !inputs.trimmed().isEmpty())
            return {};
        QThread::msleep(50);
    }
    return QStringLiteral("the tone never reached the sound server");
}

}  // namespace orvane::test

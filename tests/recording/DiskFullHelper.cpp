// Records the test scene into <home>/Documents/OrvaneUI Recordings and,
// three seconds in, lowers this process's file size limit to the
// size the file has reached: from then on every write fails as on a full
// disk. Prints "RECORDING <file>", "LIMIT <bytes>" and, once the recorder
// has let go of the file, "STATUS <status> <message>" and "FINISHED"; the
// recorder's own log lines come in between.
#include <QFileInfo>
#include <QGuiApplication>
#include <QTimer>

#include <sys/resource.h>

#include <csignal>
#include <cstdio>

#include "support/RecordingHarness.h"

namespace {

void say(const QString& line) {
    std::printf("%s\n", line.toLocal8Bit().constData());
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: recording_disk_full_helper HOME\n");
        return 2;
    }
    orvane::test::RecordingHarness harness(QString::fromLocal8Bit(argv[1]));
    orvane::RecordingManager& recorder = harness.recorder();
    recorder.setVideoQuality(orvane::VideoQuality::low);
    recorder.setOutputFormat(orvane::OutputFormat::mp4);
    recorder.setIncludeAudio(false);
    harness.session().setProgramScene(
        harness.makeScene(orvane::test::RecordingHarness::patternPicture(QSize(640, 360))));

    bool limited = false;
    QTimer watch;
    watch.setInterval(50);
    QObject::connect(&watch, &QTimer::timeout, [&] {
        if (limited || !recorder.isRecording() || recorder.recordingDuration() < 3.0) return;
        limited = true;
        // A write past the limit then fails with EFBIG instead of ending the
        // process with SIGXFSZ.
        std::signal(SIGXFSZ, SIG_IGN);
        const qint64 size = QFileInfo(recorder.outputURL()->toLocalFile()).size();
        rlimit limit{};
        getrlimit(RLIMIT_FSIZE, &limit);
        limit.rlim_cur = static_cast<rlim_t>(size);
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0) {
            say(QStringLiteral("SETUP setrlimit failed"));
            QCoreApplication::exit(2);
            return;
        }
        say(QStringLiteral("LIMIT %1").arg(size));
    });
    QObject::connect(&recorder, &orvane::RecordingManager::recordingStatusChanged, [&](orvane::RecordingStatus status) {
        if (status == orvane::RecordingStatus::recording) {
            say(QStringLiteral("RECORDING ") + recorder.outputURL()->toLocalFile());
            watch.start();
        }
    });
    QObject::connect(&recorder, &orvane::RecordingManager::recordingFinished, [&] {
        // The outcome as it stands once the recorder has let go of the file.
        const orvane::RecordingStatus status = recorder.recordingStatus();
        say(QStringLiteral("STATUS ") +
            (status == orvane::RecordingStatus::error       ? QStringLiteral("error ")
             : status == orvane::RecordingStatus::completed ? QStringLiteral("completed ")
                                                            : QStringLiteral("other ")) +
            recorder.errorMessage().value_or(QString()));
        say(QStringLiteral("FINISHED"));
        QCoreApplication::exit(0);
    });
    QTimer::singleShot(0, [&] { recorder.startRecording(harness.session()); });
    // A recording that never fails would otherwise run on.
    QTimer::singleShot(30000, [&] {
        say(QStringLiteral("TIMEOUT"));
        QCoreApplication::exit(3);
    });
    return app.exec();
}

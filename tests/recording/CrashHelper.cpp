// Records the test scene into <home>/Documents/OrvaneUI Recordings until it
// is killed. Prints "RECORDING <file>" once the recording runs.
#include <QGuiApplication>
#include <QTimer>

#include <cstdio>

#include "support/RecordingHarness.h"

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: recording_crash_helper HOME\n");
        return 2;
    }
    orvane::test::RecordingHarness harness(QString::fromLocal8Bit(argv[1]));
    orvane::RecordingManager& recorder = harness.recorder();
    recorder.setVideoQuality(orvane::VideoQuality::low);
    recorder.setOutputFormat(orvane::OutputFormat::mp4);
    harness.session().setProgramScene(harness.makeScene(orvane::test::RecordingHarness::patternPicture(QSize(640, 360))));
    QObject::connect(&recorder, &orvane::RecordingManager::recordingStatusChanged, [&](orvane::RecordingStatus status) {
        if (status == orvane::RecordingStatus::recording) {
            std::printf("RECORDING %s\n", recorder.outputURL()->toLocalFile().toLocal8Bit().constData());
            std::fflush(stdout);
        } else if (status == orvane::RecordingStatus::error) {
            std::printf("ERROR %s\n", recorder.errorMessage().value_or(QString()).toLocal8Bit().constData());
            std::fflush(stdout);
            QCoreApplication::exit(1);
        }
    });
    QTimer::singleShot(0, [&] { recorder.startRecording(harness.session()); });
    return app.exec();
}

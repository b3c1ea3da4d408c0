// The recording benchmark's tool. Two modes:
//   recording_bench record QUALITY SECONDS OUT_DIR
//     records the reference scene (video only) and prints one line of
//     figures: frames, dropped frames, CPU seconds and cores used;
//   recording_bench raw QUALITY FRAMES
//     writes FRAMES raw BGRA frames of the same scene to standard output
//     (one second of it, composed in real time, then repeated), the input of
//     the command-line anchor.
#include <QGuiApplication>
#include <QPainter>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <memory>
#include <thread>
#include <vector>

#include "capture/CaptureHub.h"
#include "capture/LavfiCameraBackend.h"
#include "capture/SharedCapture.h"
#include "document/PresetStorage.h"
#include "engine/StreamManager.h"
#include "recording/LiveFrameTable.h"
#include "recording/ProgramFramePainter.h"
#include "recording/ProgramSnapshot.h"
#include "recording/RecordingManager.h"
#include "recording/VideoEncoder.h"

namespace orvane {
namespace {

double cpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

std::optional<VideoQuality> qualityNamed(const char* name) {
    if (!std::strcmp(name, "low")) return VideoQuality::low;
    if (!std::strcmp(name, "medium")) return VideoQuality::medium;
    if (!std::strcmp(name, "high")) return VideoQuality::high;
    if (!std::strcmp(name, "ultra")) return VideoQuality::ultra;
    return std::nullopt;
}

// The reference scene: a gradient, a full-size screen picture, a moving
// camera picture-in-picture, the preset's branding.
struct ReferenceScene {
    LavfiCameraBackend cameras{{{{QStringLiteral("lavfi:bench"), QStringLiteral("Bench Camera")},
                                 QStringLiteral("testsrc2=size=1280x720:rate=30")}}};
    CaptureHub hub;
    std::shared_ptr<SharedCapture> camera;
    std::shared_ptr<LiveFrameTable> frames = std::make_shared<LiveFrameTable>();
    StreamingScene scene;
    BrandingConfig branding;

    ReferenceScene() {
        scene.name = "Reference";
        scene.backgroundType = BackgroundType::gradient;
        scene.layout = SceneLayout::pipBottomRight;
        Source cam;
        cam.type = SourceType::camera;
        cam.name = "Camera";
        cam.configuration.cameraDeviceId = "lavfi:bench";
        Source screen;
        screen.type = SourceType::screen;
        screen.name = "Screen";
        screen.configuration.screenId = 1;
        scene.sources = {cam, screen};
        camera = hub.acquire(QStringLiteral("camera:lavfi:bench"), 0, [this] {
            return cameras.openCamera(QStringLiteral("lavfi:bench"));
        });
        std::shared_ptr<SharedCapture> capture = camera;
        frames->bindCapture(cam.id, [capture] { return capture->latestFrame(); });
        QImage desktop(1920, 1080, QImage::Format_RGB32);
        {
            QPainter p(&desktop);
            QLinearGradient g(0, 0, 1920, 1080);
            g.setColorAt(0, QColor(40, 44, 52));
            g.setColorAt(1, QColor(90, 60, 120));
            p.fillRect(desktop.rect(), g);
            p.setPen(Qt::white);
            p.setFont(QFont("DejaVu Sans", 18));
            for (int y = 40; y < 1080; y += 36)
                p.drawText(40, y, QStringLiteral("The quick brown fox jumps over the lazy dog %1").arg(y));
        }
        frames->bindFrame(screen.id, SourceFrame::withImage(desktop));
        branding.enabled = true;
        branding.text = "OrvaneUI";
        scene.brandingEnabled = true;
    }
};

int record(VideoQuality quality, double seconds, const QString& outDir) {
    qputenv("HOME", outDir.toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (outDir + "/.config").toLocal8Bit());
    PresetStorage storage(std::filesystem::path(outDir.toStdString()) / "data");
    StreamManager session(storage, std::make_unique<QSettings>(outDir + "/settings.ini", QSettings::IniFormat));
    ReferenceScene reference;
    if (session.currentPreset()) {
        Preset preset = *session.currentPreset();
        preset.branding = reference.branding;
        session.setCurrentPreset(preset);
    }
    session.setProgramScene(reference.scene);
    auto* recorder = new RecordingManager(session);
    session.setRecordingManager(recorder);
    recorder->setFrameSource(reference.frames);
    recorder->setIncludeAudio(false);
    recorder->setVideoQuality(quality);
    recorder->setOutputFormat(OutputFormat::mp4);
    QTest::qWait(1000);  // the camera runs
    // What the process costs without a recording (the camera's capture,
    // which runs for the stages anyway), over a stretch of the same scene.
    const double idleSeconds = std::min(10.0, seconds);
    const double idleBefore = cpuSeconds();
    QTest::qWait(static_cast<int>(idleSeconds * 1000));
    const double idlePerSecond = (cpuSeconds() - idleBefore) / idleSeconds;

    recorder->startRecording(session);
    if (!QTest::qWaitFor([&] { return recorder->isRecording(); }, 10000)) {
        std::fprintf(stderr, "recording did not start: %s\n",
                     recorder->errorMessage().value_or(QString()).toLocal8Bit().constData());
        return 1;
    }
    const double cpuBefore = cpuSeconds();
    const auto wallBefore = std::chrono::steady_clock::now();
    QTest::qWait(static_cast<int>(seconds * 1000));
    recorder->stopRecording();
    if (!QTest::qWaitFor([&] { return recorder->recordingStatus() != RecordingStatus::stopping; }, 60000))
        std::fprintf(stderr, "the file did not close within a minute\n");
    const double cpu = cpuSeconds() - cpuBefore;
    const double wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - wallBefore).count();
    const RecordingManager::Figures figures = recorder->lastFigures();
    const VideoQualityRow row = videoQualityRow(quality);
    std::printf("ours %dx%d: frames %lld, dropped %lld, cpu %.2f s over %.2f s = %.2f cores (preset %s)\n", row.width,
                row.height, static_cast<long long>(figures.framesEncoded), static_cast<long long>(figures.framesDropped),
                cpu, wall, cpu / wall, VideoEncoder::presetFor(row.width, row.height));
    const double own = cpu - idlePerSecond * wall;
    std::printf("ours %dx%d: without recording %.2f cores; the recording's own share %.2f s = %.2f cores\n", row.width,
                row.height, idlePerSecond, own, own / wall);
    std::printf("CPU_SECONDS %.3f\nOWN_CPU_SECONDS %.3f\nFRAMES %lld\nDROPPED %lld\n", cpu, own,
                static_cast<long long>(figures.framesEncoded), static_cast<long long>(figures.framesDropped));
    return recorder->recordingStatus() == RecordingStatus::completed ? 0 : 1;
}

int raw(VideoQuality quality, long long frameCount) {
    // Frames go to the real standard output; log lines to standard error.
    const int out = ::dup(STDOUT_FILENO);
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
    ReferenceScene reference;
    QTest::qWait(1000);  // the camera runs
    const VideoQualityRow row = videoQualityRow(quality);
    const QSize size(row.width, row.height);
    ProgramSnapshot snapshot;
    snapshot.programScene = reference.scene;
    snapshot.branding = reference.branding;
    snapshot.frames = reference.frames;
    ProgramFramePainter painter;
    std::vector<QImage> second;
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 30; ++i) {
        std::this_thread::sleep_until(start + std::chrono::milliseconds(i * 1000 / 30));
        QImage image(size, QImage::Format_RGB32);
        QPainter p(&image);
        painter.paint(p, size, snapshot, i / 30.0);
        second.push_back(image);
    }
    for (long long i = 0; i < frameCount; ++i) {
        const QImage& image = second[static_cast<std::size_t>(i % 30)];
        const char* data = reinterpret_cast<const char*>(image.constBits());
        std::size_t left = static_cast<std::size_t>(image.sizeInBytes());
        while (left > 0) {
            const ssize_t written = ::write(out, data, left);
            if (written <= 0) return 1;
            data += written;
            left -= static_cast<std::size_t>(written);
        }
    }
    return 0;
}

}  // namespace
}  // namespace orvane

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc >= 5 && !std::strcmp(argv[1], "record")) {
        const auto quality = orvane::qualityNamed(argv[2]);
        if (!quality) return 2;
        return orvane::record(*quality, std::atof(argv[3]), QString::fromLocal8Bit(argv[4]));
    }
    if (argc >= 4 && !std::strcmp(argv[1], "raw")) {
        const auto quality = orvane::qualityNamed(argv[2]);
        if (!quality) return 2;
        return orvane::raw(*quality, std::atoll(argv[3]));
    }
    std::fprintf(stderr, "usage: recording_bench record QUALITY SECONDS OUT_DIR | raw QUALITY FRAMES\n");
    return 2;
}

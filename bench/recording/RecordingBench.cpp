// The recording benchmark's tool. Three modes:
//   recording_bench record QUALITY SECONDS OUT_DIR
//     records the reference scene (video only) and prints one line of
//     figures: frames, dropped frames, CPU seconds and cores used;
//   recording_bench blocked QUALITY SECONDS OUT_DIR
//     the same, with the sources captured the application's way (shared
//     captures, view models, the program relay) while the main thread is
//     blocked for 2 s out of every 5; recording.sh measures the file;
//   recording_bench raw QUALITY FRAMES
//     writes FRAMES raw BGRA frames of the same scene to standard output
//     (its first second, then repeated), the input of the command-line
//     anchor;
//   recording_bench profile QUALITY FRAMES OUT_DIR
//     the stages of a frame one at a time, each over FRAMES frames, in CPU
//     time: composing, colour conversion, H.264, writing the file.
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QSettings>
#include <QTest>
#include <QTimer>

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <thread>
#include <vector>

#include "MovingDesktopBackend.h"
#include "ReferenceScene.h"
#include "capture/SourceCaptures.h"
#include "document/PresetStorage.h"
#include "engine/StreamManager.h"
#include "recording/FrameRing.h"
#include "recording/MovieWriter.h"
#include "recording/ProgramFrameRelay.h"
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

// Per thread of the process: seconds run on a CPU and seconds spent ready
// to run, waiting for one (the kernel's scheduler figures).
std::map<QString, std::pair<double, double>> threadSchedules() {
    std::map<QString, std::pair<double, double>> schedules;
    for (const QString& task : QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(QStringLiteral("/proc/self/task/%1/schedstat").arg(task));
        if (!file.open(QIODevice::ReadOnly)) continue;
        const QList<QByteArray> fields = file.readAll().split(' ');
        if (fields.size() >= 2) schedules[task] = {fields[0].toDouble() / 1e9, fields[1].toDouble() / 1e9};
    }
    return schedules;
}

// Over the threads alive at both times: run and wait seconds in between.
std::pair<double, double> scheduleBetween(const std::map<QString, std::pair<double, double>>& before,
                                          const std::map<QString, std::pair<double, double>>& after) {
    std::pair<double, double> total{0, 0};
    for (const auto& [task, figures] : after) {
        const auto earlier = before.find(task);
        if (earlier == before.end()) continue;
        total.first += figures.first - earlier->second.first;
        total.second += figures.second - earlier->second.second;
    }
    return total;
}

std::optional<VideoQuality> qualityNamed(const char* name) {
    if (!std::strcmp(name, "low")) return VideoQuality::low;
    if (!std::strcmp(name, "medium")) return VideoQuality::medium;
    if (!std::strcmp(name, "high")) return VideoQuality::high;
    if (!std::strcmp(name, "ultra")) return VideoQuality::ultra;
    return std::nullopt;
}

ProgramSnapshot snapshotOf(const ReferenceScene& reference) {
    ProgramSnapshot snapshot;
    snapshot.programScene = reference.scene();
    snapshot.branding = reference.branding();
    snapshot.progressBar = reference.progress();
    snapshot.frames = reference.frames();
    return snapshot;
}

// How the sources reach the recorder: straight from the bench's own
// captures, or the application's way with its main thread now and then
// blocked.
enum class Path { direct, applicationBlocked };

// The main thread is blocked this long out of every kBlockPeriod.
constexpr auto kBlock = std::chrono::milliseconds(2000);
constexpr auto kBlockPeriod = std::chrono::milliseconds(5000);

int record(VideoQuality quality, double seconds, const QString& outDir, Path path) {
    qputenv("HOME", outDir.toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (outDir + "/.config").toLocal8Bit());
    PresetStorage storage(std::filesystem::path(outDir.toStdString()) / "data");
    StreamManager session(storage, std::make_unique<QSettings>(outDir + "/settings.ini", QSettings::IniFormat));
    ReferenceScene reference(path == Path::direct ? ReferenceScene::Feed::live : ReferenceScene::Feed::captured);
    // The branding and the progress bar come from the preset; a fresh home
    // has none yet.
    Preset preset = session.currentPreset().value_or(Preset{});
    if (preset.name.empty()) preset.name = "Reference";
    preset.scenes = {reference.scene()};
    preset.activeSceneId = reference.scene().id;
    preset.branding = reference.branding();
    preset.progressBar = reference.progress();
    session.setCurrentPreset(preset);
    session.setProgramScene(reference.scene());
    auto recorder = std::make_unique<RecordingManager>(session);
    recorder->setFrameSource(reference.frames());
    // The application's capture path: a display at full size and the camera
    // through the shared captures, bound for the recorder by the relay.
    std::unique_ptr<MovingDesktopBackend> screens;
    std::unique_ptr<CaptureHub> hub;
    std::unique_ptr<SourceCaptures> captures;
    std::unique_ptr<ProgramFrameRelay> relay;
    if (path == Path::applicationBlocked) {
        const Source& screen = reference.scene().sources[0];
        screens = std::make_unique<MovingDesktopBackend>(reference.desktop(), screen.configuration.screenId.value_or(1));
        hub = std::make_unique<CaptureHub>();
        captures = std::make_unique<SourceCaptures>(*screens, reference.cameras(), *hub, CaptureQuality{1920, 1080, 30});
        relay = std::make_unique<ProgramFrameRelay>(session, *captures, reference.frames());
    }
    recorder->setIncludeAudio(false);
    recorder->setVideoQuality(quality);
    recorder->setOutputFormat(OutputFormat::mp4);
    QTest::qWait(1000);  // the sources run
    for (const Source& source : reference.scene().sources) {
        if (source.type == SourceType::content) continue;
        if (!QTest::qWaitFor([&] { return reference.frames()->latestFrame(source).state == SourceFrame::State::frame; },
                             10000))
            std::fprintf(stderr, "the source %s shows nothing\n", source.name.c_str());
    }
    // What the process costs without a recording (the camera's capture and
    // the moving screen, which run for the stages anyway), over a stretch of
    // the same scene.
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
    // The main thread stops for kBlock, first a second and a half in, then
    // every kBlockPeriod: what a long layout or a stuck slot would do.
    QTimer blocker;
    int blocks = 0;
    if (path == Path::applicationBlocked) {
        const auto block = [&blocks] {
            ++blocks;
            std::this_thread::sleep_for(kBlock);
        };
        blocker.setInterval(kBlockPeriod);
        QObject::connect(&blocker, &QTimer::timeout, block);
        QTimer::singleShot(1500, &blocker, [&blocker, block] {
            blocker.start();
            block();
        });
    }
    const double cpuBefore = cpuSeconds();
    const auto wallBefore = std::chrono::steady_clock::now();
    const auto schedulesBefore = threadSchedules();
    QTest::qWait(static_cast<int>(seconds * 1000));
    blocker.stop();
    const auto [ran, waited] = scheduleBetween(schedulesBefore, threadSchedules());
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
    std::printf("ours %dx%d: frames drawn %lld, repeated unchanged %lld; dropped %lld drawn too late, %lld with the "
                "encoder behind\n",
                row.width, row.height, static_cast<long long>(figures.framesComposed),
                static_cast<long long>(figures.framesRepeated), static_cast<long long>(figures.framesLate),
                static_cast<long long>(figures.framesEncoderBehind));
    std::printf("ours %dx%d: the process's threads ran %.2f s and waited %.2f s, ready to run, for a CPU\n", row.width,
                row.height, ran, waited);
    if (path == Path::applicationBlocked)
        std::printf("ours %dx%d: the main thread was blocked %d times for %lld ms\n", row.width, row.height, blocks,
                    static_cast<long long>(kBlock.count()));
    std::printf("CPU_SECONDS %.3f\nOWN_CPU_SECONDS %.3f\nFRAMES %lld\nDROPPED %lld\nFILE %s\n", cpu, own,
                static_cast<long long>(figures.framesEncoded), static_cast<long long>(figures.framesDropped),
                recorder->outputURL().value_or(QUrl()).toLocalFile().toLocal8Bit().constData());
    return recorder->recordingStatus() == RecordingStatus::completed ? 0 : 1;
}

int raw(VideoQuality quality, long long frameCount) {
    // Frames go to the real standard output; log lines to standard error.
    const int out = ::dup(STDOUT_FILENO);
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
    ReferenceScene reference(ReferenceScene::Feed::stepped);
    const VideoQualityRow row = videoQualityRow(quality);
    const QSize size(row.width, row.height);
    const ProgramSnapshot snapshot = snapshotOf(reference);
    ProgramFramePainter painter;
    std::vector<QImage> second;
    for (int i = 0; i < ReferenceScene::kCycle; ++i) {
        reference.step(i);
        QImage image(size, QImage::Format_RGB32);
        QPainter p(&image);
        painter.paint(p, size, snapshot, i / 30.0);
        second.push_back(image);
    }
    for (long long i = 0; i < frameCount; ++i) {
        const QImage& image = second[static_cast<std::size_t>(i % ReferenceScene::kCycle)];
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

// CPU seconds (all threads of the process) and wall seconds of one stage.
struct StageCost {
    double cpu = 0;
    double wall = 0;
};

StageCost measure(const std::function<void()>& stage) {
    const double cpuBefore = cpuSeconds();
    const auto wallBefore = std::chrono::steady_clock::now();
    stage();
    return {cpuSeconds() - cpuBefore,
            std::chrono::duration<double>(std::chrono::steady_clock::now() - wallBefore).count()};
}

int profile(VideoQuality quality, int frameCount, const QString& outDir) {
    ReferenceScene reference(ReferenceScene::Feed::stepped);
    const VideoQualityRow row = videoQualityRow(quality);
    const QSize size(row.width, row.height);
    const ProgramSnapshot snapshot = snapshotOf(reference);
    ProgramFramePainter painter;
    std::vector<QImage> composed(ReferenceScene::kCycle);
    for (QImage& image : composed) image = QImage(size, QImage::Format_RGB32);
    const auto picture = [&](int i) -> QImage& { return composed[static_cast<std::size_t>(i % ReferenceScene::kCycle)]; };
    {
        QPainter p(&picture(0));
        painter.paint(p, size, snapshot, 0);  // caches warm
    }
    const StageCost compose = measure([&] {
        for (int i = 0; i < frameCount; ++i) {
            reference.step(i);
            QPainter p(&picture(i));
            painter.paint(p, size, snapshot, i / 30.0);
        }
    });
    // A ring of converted pictures, as the recorder keeps between its threads.
    FrameRing ring(ReferenceScene::kCycle);
    if (const QString failure = ring.allocate(row.width, row.height, VideoEncoder::kPixelFormat); !failure.isEmpty())
        return 1;
    const auto converted = [&](int i) -> AVFrame& { return *ring.picture(i % ReferenceScene::kCycle); };
    const StageCost convert = measure([&] {
        for (int i = 0; i < frameCount; ++i)
            VideoEncoder::convert(picture(i).constBits(), static_cast<int>(picture(i).bytesPerLine()), converted(i));
    });
    const VideoEncoder::Settings settings{row.width, row.height, videoBitRate_bps(row.width, row.height, quality)};
    const auto encodeAll = [&](VideoEncoder& encoder) {
        for (int i = 0; i < frameCount; ++i) {
            const QString failure = encoder.encode(converted(i), i);
            if (!failure.isEmpty()) std::fprintf(stderr, "encode: %s\n", failure.toLocal8Bit().constData());
        }
        encoder.flush();
    };
    VideoEncoder bare;
    if (const QString failure = bare.open(settings, true); !failure.isEmpty()) {
        std::fprintf(stderr, "encoder: %s\n", failure.toLocal8Bit().constData());
        return 1;
    }
    const StageCost encode = measure([&] { encodeAll(bare); });
    MovieWriter writer;
    VideoEncoder written;
    if (!writer.create(outDir + "/profile.mp4", OutputFormat::mp4).isEmpty() || !written.open(settings, true).isEmpty())
        return 1;
    written.setStream(&writer, writer.addStream(written.context()));
    if (!writer.open().isEmpty()) return 1;
    const StageCost encodeAndWrite = measure([&] {
        encodeAll(written);
        writer.finish();
    });
    const auto ms = [frameCount](double seconds) { return seconds * 1000 / frameCount; };
    std::printf("profile %dx%d, %d frames, preset %s; CPU ms a frame (all threads), wall ms a frame:\n", row.width,
                row.height, frameCount, VideoEncoder::presetFor(row.width, row.height));
    std::printf("  compose        %6.2f cpu %6.2f wall\n", ms(compose.cpu), ms(compose.wall));
    std::printf("  BGRA->I420     %6.2f cpu %6.2f wall\n", ms(convert.cpu), ms(convert.wall));
    std::printf("  x264           %6.2f cpu %6.2f wall\n", ms(encode.cpu), ms(encode.wall));
    std::printf("  writing        %6.2f cpu %6.2f wall\n", ms(encodeAndWrite.cpu - encode.cpu),
                ms(encodeAndWrite.wall - encode.wall));
    const double total = ms(compose.cpu + convert.cpu + encodeAndWrite.cpu);
    std::printf("  all            %6.2f cpu = %.2f cores at 30 frames a second\n", total, total * 30 / 1000);
    return 0;
}

}  // namespace
}  // namespace orvane

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const auto quality = argc >= 3 ? orvane::qualityNamed(argv[2]) : std::nullopt;
    if (argc >= 5 && quality && !std::strcmp(argv[1], "record"))
        return orvane::record(*quality, std::atof(argv[3]), QString::fromLocal8Bit(argv[4]), orvane::Path::direct);
    if (argc >= 5 && quality && !std::strcmp(argv[1], "blocked"))
        return orvane::record(*quality, std::atof(argv[3]), QString::fromLocal8Bit(argv[4]),
                              orvane::Path::applicationBlocked);
    if (argc >= 4 && quality && !std::strcmp(argv[1], "raw")) return orvane::raw(*quality, std::atoll(argv[3]));
    if (argc >= 5 && quality && !std::strcmp(argv[1], "profile"))
        return orvane::profile(*quality, std::atoi(argv[3]), QString::fromLocal8Bit(argv[4]));
    std::fprintf(stderr,
                 "usage: recording_bench record|blocked QUALITY SECONDS OUT_DIR | raw QUALITY FRAMES |"
                 " profile QUALITY FRAMES OUT_DIR\n");
    return 2;
}

// A 1920x1080 display captured to QImage at 30 frames a second for ten
// seconds: CPU per frame (this process plus the X server, which does the
// copying) and the age of each frame when the main thread takes it. The
// anchor, measured in the same run, is one bare MIT-SHM grab of the same
// area with the same accounting.

#include <benchmark/benchmark.h>

#include <sys/mman.h>
#include <unistd.h>
#include <xcb/shm.h>
#include <xcb/xcb.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <thread>
#include <vector>

#include "capture/CaptureHub.h"
#include "capture/ScreenCaptureViewModel.h"
#include "capture/x11/X11CaptureBackend.h"
#include "support/TestDisplayServer.h"

namespace {

orvane::test::TestDisplayServer* server = nullptr;

double processCpuSeconds() {
    timespec self{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &self);
    return static_cast<double>(self.tv_sec) + static_cast<double>(self.tv_nsec) / 1e9;
}

// CPU seconds of the X server.
double serverCpuSeconds() {
    double total = 0;
    QFile stat(QStringLiteral("/proc/%1/stat").arg(server->serverPid()));
    if (stat.open(QIODevice::ReadOnly)) {
        const QByteArray text = stat.readAll();
        // Fields after the parenthesised name; utime and stime are 14 and 15.
        const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
        if (fields.size() > 13)
            total += static_cast<double>(fields[11].toLongLong() + fields[12].toLongLong()) /
                     static_cast<double>(sysconf(_SC_CLK_TCK));
    }
    return total;
}

// CPU seconds of this process and of the X server together.
double cpuSeconds() { return processCpuSeconds() + serverCpuSeconds(); }

// CPU milliseconds per bare MIT-SHM grab of the whole screen, back to back
// or, with a rate, paced like a capture so that caches are as cold.
double bareGrabCpuMs(int grabs, int framesPerSecond = 0) {
    xcb_connection_t* c = xcb_connect(server->displayName().constData(), nullptr);
    xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(c)).data;
    const std::size_t bytes = std::size_t{1920} * 1080 * 4;
    const int fd = memfd_create("bench", MFD_CLOEXEC);
    if (fd < 0 || ftruncate(fd, static_cast<off_t>(bytes)) != 0) return -1;
    void* memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
    const xcb_shm_seg_t segment = xcb_generate_id(c);
    free(xcb_request_check(c, xcb_shm_attach_fd_checked(c, segment, dup(fd), 0)));
    const double before = cpuSeconds();
    auto deadline = std::chrono::steady_clock::now();
    for (int i = 0; i < grabs; ++i) {
        if (framesPerSecond > 0) {
            deadline += std::chrono::microseconds(1000000 / framesPerSecond);
            std::this_thread::sleep_until(deadline);
        }
        free(xcb_shm_get_image_reply(c,
                                     xcb_shm_get_image(c, screen->root, 0, 0, 1920, 1080, ~0u,
                                                       XCB_IMAGE_FORMAT_Z_PIXMAP, segment, 0),
                                     nullptr));
        benchmark::DoNotOptimize(static_cast<volatile unsigned char*>(memory)[i % 1000]);
    }
    const double after = cpuSeconds();
    xcb_shm_detach(c, segment);
    xcb_disconnect(c);
    munmap(memory, bytes);
    close(fd);
    return (after - before) * 1000.0 / grabs;
}

double percentile(std::vector<double> values, double p) {
    if (values.empty()) return 0;
    std::sort(values.begin(), values.end());
    const auto index = static_cast<std::size_t>(p * static_cast<double>(values.size() - 1) + 0.5);
    return values[std::min(index, values.size() - 1)];
}

void BM_BareShmGrab(benchmark::State& state) {
    for (auto _ : state) state.counters["cpu_ms_per_grab"] = bareGrabCpuMs(300, static_cast<int>(state.range(0)));
}
BENCHMARK(BM_BareShmGrab)->Arg(0)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_DisplayCapture30fps(benchmark::State& state) {
    for (auto _ : state) {
        const double anchor = bareGrabCpuMs(300);
        const double pacedAnchor = bareGrabCpuMs(150, 30);

        orvane::X11CaptureBackend backend(server->displayName());
        orvane::CaptureHub hub;
        auto displays = backend.displays();
        if (!displays || displays.value().empty()) {
            state.SkipWithError("no display");
            return;
        }
        orvane::Source source;
        source.type = orvane::SourceType::screen;
        if (state.range(0)) source.configuration.screenId = displays.value()[0].id;
        orvane::ScreenCaptureViewModel model(backend, hub);

        std::vector<double> latencies;
        latencies.reserve(400);
        QObject::connect(&model, &orvane::ScreenCaptureViewModel::capturedImageChanged, [&] {
            if (!model.capture()) return;
            const auto age = std::chrono::steady_clock::now() - model.capture()->latestFrame().capturedAt;
            latencies.push_back(std::chrono::duration<double, std::milli>(age).count());
        });

        model.startCapture(source, orvane::CaptureQuality{1920, 1080, 30});
        QEventLoop loop;
        // Settle for half a second, then measure ten.
        QTimer::singleShot(500, Qt::PreciseTimer, &loop, &QEventLoop::quit);
        loop.exec();
        latencies.clear();
        const std::uint64_t firstSequence = model.capture()->latestFrame().sequence;
        const double cpuBefore = cpuSeconds();
        const double serverBefore = serverCpuSeconds();
        QElapsedTimer elapsed;
        elapsed.start();
        QTimer::singleShot(10000, Qt::PreciseTimer, &loop, &QEventLoop::quit);
        loop.exec();
        const double seconds = static_cast<double>(elapsed.nsecsElapsed()) / 1e9;
        const double cpuAfter = cpuSeconds();
        const double serverMs = (serverCpuSeconds() - serverBefore) * 1000.0;
        const std::uint64_t frames = model.capture()->latestFrame().sequence - firstSequence;
        model.stopCapture();

        const double cpuPerFrame = (cpuAfter - cpuBefore) * 1000.0 / static_cast<double>(std::max<std::uint64_t>(frames, 1));
        const double p99 = percentile(latencies, 0.99);
        state.counters["frames"] = static_cast<double>(frames);
        state.counters["fps"] = static_cast<double>(frames) / seconds;
        state.counters["cpu_ms_per_frame"] = cpuPerFrame;
        state.counters["server_cpu_ms_per_frame"] = serverMs / static_cast<double>(std::max<std::uint64_t>(frames, 1));
        state.counters["bare_grab_cpu_ms"] = anchor;
        state.counters["cpu_ratio"] = cpuPerFrame / anchor;
        state.counters["paced_bare_grab_cpu_ms"] = pacedAnchor;
        state.counters["cpu_ratio_paced"] = cpuPerFrame / pacedAnchor;
        state.counters["latency_median_ms"] = percentile(latencies, 0.5);
        state.counters["latency_p99_ms"] = p99;
        std::printf("display capture%s: %llu frames, %.2f ms CPU/frame; bare grab %.2f ms back to back (ratio %.2f), "
                    "%.2f ms paced at 30 fps (ratio %.2f); target ratio <= 2; "
                    "latency median %.2f ms, p99 %.2f ms (target <= %.1f ms)\n",
                    state.range(0) ? " with cursor" : "", static_cast<unsigned long long>(frames), cpuPerFrame,
                    anchor, cpuPerFrame / anchor, pacedAnchor, cpuPerFrame / pacedAnchor,
                    percentile(latencies, 0.5), p99, 1000.0 / 30 + 5);
    }
}
BENCHMARK(BM_DisplayCapture30fps)->Arg(1)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
    orvane::test::TestDisplayServer display;
    const QString failure = display.start(false, false);
    if (!failure.isEmpty()) {
        std::fprintf(stderr, "cannot start Xvfb: %s\n", failure.toLocal8Bit().constData());
        return 1;
    }
    server = &display;
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

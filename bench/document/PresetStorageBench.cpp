// Saving and loading presets through the store, against an anchor that does
// the least any JSON writer must: the library's own pretty dump of the same
// document, a plain write, fsync and rename. Prints the medians, their ratio
// and whether the targets hold (save <= 1 ms, loading 100 presets <= 100 ms).
//
// Files go to a fresh directory under $TMPDIR (default /tmp); the store's log
// lines are sent to /dev/null while the loops run.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "document/DocumentCodec.h"
#include "document/PresetStorage.h"
#include "support/SamplePresets.h"

namespace fs = std::filesystem;
using namespace orvane;

namespace {

// A directory of its own for the run, removed at exit.
const fs::path& benchDirectory() {
    static const fs::path dir = [] {
        std::string pattern = (fs::temp_directory_path() / "orvane-bench-XXXXXX").string();
        if (!::mkdtemp(pattern.data())) throw std::runtime_error("mkdtemp failed");
        return fs::path(pattern);
    }();
    return dir;
}

// Standard output goes to /dev/null while it lives, so the store's log
// lines neither flood the report nor cost a terminal's time.
class SilencedStdout {
public:
    SilencedStdout() {
        std::fflush(stdout);
        saved_ = ::dup(STDOUT_FILENO);
        const int null = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        ::dup2(null, STDOUT_FILENO);
        ::close(null);
    }
    ~SilencedStdout() {
        std::fflush(stdout);
        ::dup2(saved_, STDOUT_FILENO);
        ::close(saved_);
    }
    SilencedStdout(const SilencedStdout&) = delete;
    SilencedStdout& operator=(const SilencedStdout&) = delete;

private:
    int saved_ = -1;
};

PresetStorage storageAt(const std::string& name) {
    SilencedStdout quiet;
    return PresetStorage(benchDirectory() / name);
}

const Preset& tenScenePreset() {
    static const Preset preset = test::makeFullPreset(10);
    return preset;
}

void BM_SavePreset(benchmark::State& state) {
    const PresetStorage storage = storageAt("save");
    const Preset& preset = tenScenePreset();
    SilencedStdout quiet;
    for (auto _ : state) storage.savePreset(preset);
    std::error_code ec;
    state.counters["bytes"] = static_cast<double>(fs::file_size(storage.fileFor(preset), ec));
    if (ec) state.SkipWithError("the preset file was not written");
}
BENCHMARK(BM_SavePreset)->UseRealTime()->Unit(benchmark::kMicrosecond);

void BM_EncodePreset(benchmark::State& state) {
    const Preset& preset = tenScenePreset();
    for (auto _ : state) benchmark::DoNotOptimize(encodePreset(preset));
}
BENCHMARK(BM_EncodePreset)->UseRealTime()->Unit(benchmark::kMicrosecond);

// Made once: the framework calls a benchmark function several times.
const PresetStorage& hundredPresets() {
    static const PresetStorage storage = [] {
        PresetStorage made = storageAt("load");
        SilencedStdout quiet;
        for (int i = 0; i < 100; ++i) {
            Preset preset = test::makeFullPreset(10);
            preset.name = "Preset " + std::to_string(i + 1);
            made.savePreset(preset);
        }
        return made;
    }();
    return storage;
}

void BM_LoadHundredPresets(benchmark::State& state) {
    const PresetStorage& storage = hundredPresets();
    std::size_t loaded = 0;
    for (auto _ : state) {
        const auto presets = storage.loadPresets();
        loaded = presets.size();
        benchmark::DoNotOptimize(presets.data());
    }
    if (loaded != 100) state.SkipWithError("not all 100 presets loaded");
}
BENCHMARK(BM_LoadHundredPresets)->UseRealTime()->Unit(benchmark::kMillisecond);

// The anchor: the same document as the library's own ordered JSON value,
// pretty-dumped, written, flushed to disk and renamed into place.
void BM_AnchorDumpWriteFsyncRename(benchmark::State& state) {
    const fs::path dir = benchDirectory() / "anchor";
    fs::create_directories(dir);
    const auto document = nlohmann::ordered_json::parse(encodePreset(tenScenePreset()));
    const fs::path temporary = dir / "anchor.tmp";
    const fs::path target = dir / "anchor.json";
    for (auto _ : state) {
        const std::string text = document.dump(2);
        const int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
        if (fd < 0 || ::write(fd, text.data(), text.size()) != static_cast<ssize_t>(text.size()) ||
            ::fsync(fd) != 0 || ::close(fd) != 0 || ::rename(temporary.c_str(), target.c_str()) != 0) {
            state.SkipWithError("anchor write failed");
            break;
        }
    }
}
BENCHMARK(BM_AnchorDumpWriteFsyncRename)->UseRealTime()->Unit(benchmark::kMicrosecond);

void BM_AnchorDumpOnly(benchmark::State& state) {
    const auto document = nlohmann::ordered_json::parse(encodePreset(tenScenePreset()));
    for (auto _ : state) benchmark::DoNotOptimize(document.dump(2));
}
BENCHMARK(BM_AnchorDumpOnly)->UseRealTime()->Unit(benchmark::kMicrosecond);

// Prints as usual and keeps, per benchmark, the median over repetitions
// (or the single run without repetitions), in seconds.
class SummaryReporter : public benchmark::ConsoleReporter {
public:
    // Colour only on a terminal: this reporter replaces the library's own,
    // which would otherwise decide from --benchmark_color.
    SummaryReporter() : ConsoleReporter(::isatty(STDOUT_FILENO) ? OO_Defaults : OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.error_occurred) continue;
            const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
            const bool single = run.run_type == Run::RT_Iteration && run.repetitions <= 1;
            if (median || single) {
                const double unit = benchmark::GetTimeUnitMultiplier(run.time_unit);
                seconds_[run.run_name.function_name] = {run.GetAdjustedRealTime() / unit,
                                                        run.GetAdjustedCPUTime() / unit};
            }
        }
        ConsoleReporter::ReportRuns(runs);
    }

    struct Times {
        double real;
        double cpu;
    };

    std::optional<Times> seconds(const std::string& name) const {
        const auto it = seconds_.find(name);
        if (it == seconds_.end()) return std::nullopt;
        return it->second;
    }

private:
    std::map<std::string, Times> seconds_;
};

void printSummary(const SummaryReporter& reporter) {
    const auto save = reporter.seconds("BM_SavePreset");
    const auto load = reporter.seconds("BM_LoadHundredPresets");
    const auto anchor = reporter.seconds("BM_AnchorDumpWriteFsyncRename");
    // Targets are judged on wall time; CPU time is shown beside it because
    // fsync waits for the disk without using the processor.
    if (save)
        std::printf("save of a 10-scene preset: %.3f ms (cpu %.3f ms) (target <= 1 ms: %s)\n", save->real * 1e3,
                    save->cpu * 1e3, save->real <= 1e-3 ? "met" : "MISSED");
    if (load)
        std::printf("loading 100 presets: %.2f ms (cpu %.2f ms) (target <= 100 ms: %s)\n", load->real * 1e3,
                    load->cpu * 1e3, load->real <= 100e-3 ? "met" : "MISSED");
    if (save && anchor)
        std::printf("save / anchor (pretty dump + write + fsync + rename): %.3f ms / %.3f ms = %.2f "
                    "(cpu %.3f / %.3f ms = %.2f)\n",
                    save->real * 1e3, anchor->real * 1e3, save->real / anchor->real, save->cpu * 1e3,
                    anchor->cpu * 1e3, save->cpu / anchor->cpu);
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    SummaryReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    std::fflush(stdout);
    printSummary(reporter);
    std::error_code ec;
    fs::remove_all(benchDirectory(), ec);
    return 0;
}

#include "document/PresetStorage.h"

#include <fcntl.h>
#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <system_error>
#include <utility>

#include "document/DocumentCodec.h"
#include "document/Log.h"

namespace fs = std::filesystem;

namespace orvane {

namespace {

constexpr const char* presetExtension = ".json";

std::string errnoText(const std::string& what, const fs::path& path, int error) {
    return what + " " + path.string() + ": " + std::strerror(error);
}

// Closes a descriptor on every path out of a function.
class FileDescriptor {
public:
    explicit FileDescriptor(int fd) : fd_(fd) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() {
        if (fd_ >= 0) ::close(fd_);
    }
    int get() const { return fd_; }
    bool valid() const { return fd_ >= 0; }
    // Closes now so that the caller sees the error of close itself.
    int close() { return ::close(std::exchange(fd_, -1)); }

private:
    int fd_;
};

std::optional<std::string> readWholeFile(const fs::path& path, std::string& error) {
    FileDescriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!fd.valid()) {
        error = errnoText("cannot open", path, errno);
        return std::nullopt;
    }
    std::string data;
    char buffer[64 * 1024];
    for (;;) {
        const ssize_t n = ::read(fd.get(), buffer, sizeof buffer);
        if (n == 0) break;
        if (n < 0) {
            if (errno == EINTR) continue;
            error = errnoText("cannot read", path, errno);
            return std::nullopt;
        }
        data.append(buffer, static_cast<std::size_t>(n));
    }
    return data;
}

bool writeAll(int fd, std::string_view data) {
    while (!data.empty()) {
        const ssize_t n = ::write(fd, data.data(), data.size());
        if (n < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        data.remove_prefix(static_cast<std::size_t>(n));
    }
    return true;
}

// Writes `data` to `target` so that a reader sees either the old file or
// the whole new one: a temporary file beside it is written, flushed to disk
// and renamed over it. The temporary name is hidden and does not end in
// ".json", so a crash part-way never leaves a file that the loader picks up.
// Returns an error text, empty on success.
std::string writeFileAtomically(const fs::path& target, std::string_view data) {
    const fs::path directory = target.parent_path();
    const fs::path temporary =
        directory / ("." + target.stem().string() + "." + Uuid::generate().toString().substr(0, 8) + ".saving");

    FileDescriptor fd(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!fd.valid()) return errnoText("cannot create", temporary, errno);

    std::string error;
    if (!writeAll(fd.get(), data))
        error = errnoText("cannot write", temporary, errno);
    else if (::fsync(fd.get()) != 0)
        error = errnoText("cannot flush", temporary, errno);
    else if (fd.close() != 0)
        error = errnoText("cannot close", temporary, errno);
    else if (::rename(temporary.c_str(), target.c_str()) != 0)
        error = errnoText("cannot replace", target, errno);

    if (!error.empty()) {
        ::unlink(temporary.c_str());
        return error;
    }

    // The directory is not synced after the rename: that would cost a second
    // journal commit on every edit, and without it a power cut can at worst
    // bring back the previous complete file, never a torn one.
    return {};
}

// True when `path` names an entry inside `directory` (at any depth), after
// resolving symbolic links and ".." in the directories on the way. The entry
// itself is not resolved: removing a link removes the link only.
bool isInside(const fs::path& path, const fs::path& directory) {
    std::error_code ec;
    const fs::path absolute = fs::absolute(path, ec);
    if (ec) return false;
    const fs::path name = absolute.filename();
    if (name.empty() || name == "." || name == "..") return false;
    const fs::path parent = fs::weakly_canonical(absolute.parent_path(), ec);
    if (ec) return false;
    const fs::path root = fs::weakly_canonical(directory, ec);
    if (ec) return false;

    auto p = parent.begin();
    for (auto r = root.begin(); r != root.end(); ++r, ++p) {
        if (r->empty()) continue;  // trailing separator of the root
        if (p == parent.end() || *p != *r) return false;
    }
    return true;
}

}  // namespace

fs::path PresetStorage::defaultBase() {
    const char* dataHome = std::getenv("XDG_DATA_HOME");
    if (dataHome && *dataHome && fs::path(dataHome).is_absolute()) return fs::path(dataHome) / "OrvaneUI";

    const char* home = std::getenv("HOME");
    if (!home || !*home) {
        const passwd* entry = ::getpwuid(::getuid());
        home = entry ? entry->pw_dir : nullptr;
    }
    if (!home || !*home) {
        // Without a home there is nowhere for the user's data to go.
        logLine("❌ No home directory: cannot place the presets directory");
        std::abort();
    }
    return fs::path(home) / ".local" / "share" / "OrvaneUI";
}

PresetStorage& PresetStorage::shared() {
    static PresetStorage instance(defaultBase());
    return instance;
}

PresetStorage::PresetStorage(fs::path base)
    : presetsDirectory_(base / "Presets"),
      metadataFile_(base / "metadata.json"),
      logosDirectory_(base / "Logos") {
    // A failure here is deliberately ignored: later operations fail and log
    // on their own.
    std::error_code ignored;
    fs::create_directories(presetsDirectory_, ignored);
    fs::create_directories(logosDirectory_, ignored);
    logLine("📁 Presets directory: " + presetsDirectory_.string());
    logLine("📁 Logos directory: " + logosDirectory_.string());
}

fs::path PresetStorage::fileFor(const Preset& preset) const {
    return presetsDirectory_ / (preset.id.toString() + presetExtension);
}

std::vector<Preset> PresetStorage::loadPresets() const {
    std::vector<fs::path> files;
    std::error_code ec;
    fs::directory_iterator it(presetsDirectory_, ec);
    for (; !ec && it != fs::directory_iterator(); it.increment(ec)) {
        // Sub-directories are not entered; one named "*.json" fails to read
        // below like any other unreadable file.
        if (it->path().extension() == presetExtension) files.push_back(it->path());
    }
    if (ec) {
        logLine("❌ Error loading presets: " + presetsDirectory_.string() + ": " + ec.message());
        return {};
    }
    // The listing order is the tie-break of the sort below; make it the same
    // on every file system.
    std::sort(files.begin(), files.end());

    struct Loaded {
        Preset preset;
        fs::file_time_type modified;
    };
    std::vector<Loaded> loaded;
    loaded.reserve(files.size());
    for (const auto& file : files) {
        std::string error;
        const auto data = readWholeFile(file, error);
        if (!data) {
            logLine("❌ Error loading preset from " + file.filename().string() + ": " + error);
            continue;
        }
        auto decoded = decodePreset(*data);
        if (!decoded) {
            logLine("❌ Error loading preset from " + file.filename().string() + ": " + decoded.error);
            continue;
        }
        loaded.push_back({std::move(*decoded.value), {}});
    }

    // The date is that of the file named by the id, which need not be the
    // file the preset was read from.
    for (auto& entry : loaded) {
        std::error_code timeError;
        entry.modified = fs::last_write_time(fileFor(entry.preset), timeError);
        if (timeError) entry.modified = fs::file_time_type::min();
    }
    std::stable_sort(loaded.begin(), loaded.end(),
                     [](const Loaded& a, const Loaded& b) { return a.modified > b.modified; });

    std::vector<Preset> presets;
    presets.reserve(loaded.size());
    for (auto& entry : loaded) presets.push_back(std::move(entry.preset));
    return presets;
}

void PresetStorage::savePreset(const Preset& preset) const {
    std::string data;
    try {
        data = encodePreset(preset);
    } catch (const std::exception& e) {
        logLine(std::string("❌ Error saving preset: ") + e.what());
        return;
    }
    const fs::path file = fileFor(preset);
    const std::string error = writeFileAtomically(file, data);
    if (!error.empty()) {
        logLine("❌ Error saving preset: " + error);
        return;
    }
    logLine("✅ Preset saved: " + preset.name + " → " + file.filename().string());
}

void PresetStorage::deletePreset(const Preset& preset) const {
    if (preset.branding && preset.branding->logoImagePath) deleteLogo(preset.branding->logoImagePath);

    const fs::path file = fileFor(preset);
    if (::unlink(file.c_str()) != 0) {
        logLine("❌ Error deleting preset: " + errnoText("cannot remove", file, errno));
        return;
    }
    logLine("✅ Preset deleted: " + preset.name);
}

std::optional<std::string> PresetStorage::copyLogoToAppDirectory(const std::string& from) const {
    const fs::path source(from);
    std::string extension = source.extension().string();
    if (!extension.empty()) extension.erase(0, 1);  // the leading dot
    const fs::path target = logosDirectory_ / (Uuid::generate().toString() + "." + extension);

    std::error_code ec;
    if (!fs::copy_file(source, target, fs::copy_options::none, ec)) {
        if (!ec) ec = std::make_error_code(std::errc::io_error);
        std::error_code ignored;
        // The name is fresh, so anything there now is a partial copy of ours.
        if (ec != std::errc::file_exists) fs::remove(target, ignored);
        logLine("❌ Error copying logo: cannot copy " + source.string() + " to " + target.string() + ": " +
                ec.message());
        return std::nullopt;
    }
    logLine("✅ Logo copied to: " + target.string());
    return target.string();
}

void PresetStorage::deleteLogo(const std::optional<std::string>& at) const {
    if (!at) return;
    const fs::path path(*at);
    if (!isInside(path, logosDirectory_)) {
        logLine("⚠️ Logo not in app directory, skipping deletion");
        return;
    }
    if (::unlink(path.c_str()) != 0) {
        logLine("❌ Error deleting logo: " + errnoText("cannot remove", path, errno));
        return;
    }
    logLine("✅ Logo deleted: " + path.filename().string());
}

}  // namespace orvane

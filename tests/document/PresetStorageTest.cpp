#include "document/PresetStorage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <regex>
#include <string>
#include <vector>

#include "document/DocumentCodec.h"
#include "document/GradientPreset.h"
#include "document/PresetTemplates.h"
#include "support/FileHelpers.h"
#include "support/FileSizeLimit.h"
#include "support/SamplePresets.h"
#include "support/StdoutCapture.h"
#include "support/TempXdgDir.h"

namespace orvane {
namespace preset_storage_test {

namespace fs = std::filesystem;
using test::entryNames;
using test::readBytes;
using test::StdoutCapture;
using test::writeBytes;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr const char* saveErrorPrefix = "❌ Error saving preset: ";

fs::file_time_type timeAt(int secondsAfterEpoch) {
    const auto system = std::chrono::system_clock::time_point{} + std::chrono::seconds(secondsAfterEpoch);
    return fs::file_time_type::clock::from_sys(system);
}

std::vector<std::string> namesOf(const std::vector<Preset>& presets) {
    std::vector<std::string> names;
    for (const auto& p : presets) names.push_back(p.name);
    return names;
}

Preset namedPreset(const std::string& name) { return createPreset(name, PresetTemplate::custom); }

bool anyLineStartsWith(const std::vector<std::string>& lines, const std::string& prefix) {
    for (const auto& line : lines)
        if (line.rfind(prefix, 0) == 0) return true;
    return false;
}

class PresetStorageTest : public ::testing::Test {
protected:
    test::TempXdgDir xdg;

    // The store on this test's own base, its start-up lines swallowed.
    PresetStorage openStorage() const {
        StdoutCapture quiet;
        return PresetStorage(xdg.base());
    }

    // Saves without checking the outcome; tests that need it look at the log.
    static void saveQuietly(const PresetStorage& storage, const Preset& preset) {
        StdoutCapture quiet;
        storage.savePreset(preset);
    }

    static std::vector<Preset> loadQuietly(const PresetStorage& storage) {
        StdoutCapture quiet;
        return storage.loadPresets();
    }

    fs::path presetsDir() const { return xdg.base() / "Presets"; }
    fs::path logosDir() const { return xdg.base() / "Logos"; }
};

// ---------------------------------------------------------------- placement

TEST_F(PresetStorageTest, DefaultBaseFollowsXdgDataHome) {
    EXPECT_EQ(PresetStorage::defaultBase(), xdg.path() / "OrvaneUI");
}

TEST_F(PresetStorageTest, DefaultBaseFallsBackToLocalShareWhenXdgDataHomeIsUnsetEmptyOrRelative) {
    const char* oldHome = std::getenv("HOME");
    const std::string savedHome = oldHome ? oldHome : "";
    ::setenv("HOME", xdg.path().c_str(), 1);
    const fs::path expected = xdg.path() / ".local" / "share" / "OrvaneUI";

    ::unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(PresetStorage::defaultBase(), expected);
    ::setenv("XDG_DATA_HOME", "", 1);
    EXPECT_EQ(PresetStorage::defaultBase(), expected);
    ::setenv("XDG_DATA_HOME", "relative/data", 1);
    EXPECT_EQ(PresetStorage::defaultBase(), expected);

    if (oldHome)
        ::setenv("HOME", savedHome.c_str(), 1);
    else
        ::unsetenv("HOME");
}

TEST_F(PresetStorageTest, SharedInstanceLivesUnderXdgDataHome) {
    // The shared instance is made once per process, so it is checked in a
    // child process of its own.
    const std::string previousStyle = GTEST_FLAG_GET(death_test_style);
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const fs::path expectedPresets = xdg.base() / "Presets";
    const fs::path expectedLogos = xdg.base() / "Logos";
    EXPECT_EXIT(
        {
            StdoutCapture quiet;
            const PresetStorage& storage = PresetStorage::shared();
            const bool placed = storage.presetsDirectory() == expectedPresets &&
                                storage.logosDirectory() == expectedLogos &&
                                &storage == &PresetStorage::shared() && fs::is_directory(expectedPresets) &&
                                fs::is_directory(expectedLogos);
            std::_Exit(placed ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
    GTEST_FLAG_SET(death_test_style, previousStyle);
}

TEST_F(PresetStorageTest, FirstStartCreatesBothDirectoriesNoMetadataAndNoPreset) {
    StdoutCapture capture;
    PresetStorage storage(xdg.base());
    EXPECT_THAT(capture.lines(), ElementsAre("📁 Presets directory: " + presetsDir().string(),
                                             "📁 Logos directory: " + logosDir().string()));

    EXPECT_EQ(storage.presetsDirectory(), presetsDir());
    EXPECT_EQ(storage.logosDirectory(), logosDir());
    EXPECT_EQ(storage.metadataFile(), xdg.base() / "metadata.json");
    EXPECT_EQ(entryNames(xdg.base()), (std::set<std::string>{"Logos", "Presets"}));
    EXPECT_TRUE(entryNames(presetsDir()).empty());
    EXPECT_TRUE(entryNames(logosDir()).empty());
    EXPECT_TRUE(loadQuietly(storage).empty());
    EXPECT_FALSE(fs::exists(storage.metadataFile()));
}

TEST_F(PresetStorageTest, MetadataFileIsNeverReadOrWritten) {
    fs::create_directories(xdg.base());
    const std::string junk = "{ this is not what the store would write";
    writeBytes(xdg.base() / "metadata.json", junk);

    PresetStorage storage = openStorage();
    Preset preset = namedPreset("Show");
    StdoutCapture capture;
    storage.savePreset(preset);
    EXPECT_EQ(storage.loadPresets().size(), 1u);
    storage.deletePreset(preset);
    for (const auto& line : capture.lines()) EXPECT_THAT(line, ::testing::Not(HasSubstr("metadata")));
    EXPECT_EQ(readBytes(xdg.base() / "metadata.json"), junk);
}

// ---------------------------------------------------------------- saving

TEST_F(PresetStorageTest, SaveWritesTheFileNamedByTheUppercaseIdAndLogs) {
    PresetStorage storage = openStorage();
    Preset preset = namedPreset("Morning Show");
    const std::string fileName = preset.id.toString() + ".json";
    ASSERT_TRUE(std::regex_match(
        fileName, std::regex("[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}\\.json")))
        << fileName;

    StdoutCapture capture;
    storage.savePreset(preset);
    EXPECT_THAT(capture.lines(), ElementsAre("✅ Preset saved: Morning Show → " + fileName));
    EXPECT_EQ(entryNames(presetsDir()), (std::set<std::string>{fileName}));
    EXPECT_EQ(storage.fileFor(preset), presetsDir() / fileName);
    EXPECT_EQ(readBytes(presetsDir() / fileName), encodePreset(preset));
}

TEST_F(PresetStorageTest, FullPresetLoadsBackWithEveryField) {
    PresetStorage storage = openStorage();
    const Preset preset = test::makeFullPreset(10);
    saveQuietly(storage, preset);

    const auto loaded = loadQuietly(storage);
    ASSERT_EQ(loaded.size(), 1u);
    EXPECT_EQ(encodePreset(loaded[0]), encodePreset(preset));
    ASSERT_TRUE(loaded[0].branding && loaded[0].progressBar && loaded[0].teleprompter);
    EXPECT_EQ(*loaded[0].branding, *preset.branding);
    EXPECT_EQ(loaded[0].scenes.size(), 10u);
}

TEST_F(PresetStorageTest, RenamingAPresetOverwritesTheSameFile) {
    PresetStorage storage = openStorage();
    Preset preset = namedPreset("Before");
    saveQuietly(storage, preset);
    preset.name = "After";
    StdoutCapture capture;
    storage.savePreset(preset);
    EXPECT_THAT(capture.lines(), ElementsAre("✅ Preset saved: After → " + preset.id.toString() + ".json"));
    EXPECT_EQ(entryNames(presetsDir()).size(), 1u);
    EXPECT_THAT(namesOf(loadQuietly(storage)), ElementsAre("After"));
}

TEST_F(PresetStorageTest, SaveReplacesThePreviousFileByRenameAndLeavesNoTemporaryFile) {
    PresetStorage storage = openStorage();
    Preset preset = namedPreset("Show");
    saveQuietly(storage, preset);
    struct stat before {};
    ASSERT_EQ(::stat(storage.fileFor(preset).c_str(), &before), 0);

    preset.scenes.push_back(makeScene("Second"));
    saveQuietly(storage, preset);
    struct stat after {};
    ASSERT_EQ(::stat(storage.fileFor(preset).c_str(), &after), 0);

    // A new inode: the old file was replaced whole, never rewritten in place.
    EXPECT_NE(before.st_ino, after.st_ino);
    EXPECT_EQ(readBytes(storage.fileFor(preset)), encodePreset(preset));
    EXPECT_EQ(entryNames(presetsDir()), (std::set<std::string>{preset.id.toString() + ".json"}));
}

TEST_F(PresetStorageTest, SavedFileHasOrdinaryPermissions) {
    PresetStorage storage = openStorage();
    const mode_t mask = ::umask(022);
    ::umask(mask);
    Preset preset = namedPreset("Show");
    saveQuietly(storage, preset);
    struct stat info {};
    ASSERT_EQ(::stat(storage.fileFor(preset).c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0666 & ~mask);
}

TEST_F(PresetStorageTest, SaveIntoReadOnlyPresetsDirectoryLogsAndKeepsThePreviousFile) {
    PresetStorage storage = openStorage();
    Preset preset = namedPreset("Show");
    saveQuietly(storage, preset);
    const std::string previous = readBytes(storage.fileFor(preset));
    const auto entriesBefore = entryNames(presetsDir());

    fs::permissions(presetsDir(), fs::perms::owner_read | fs::perms::owner_exec | fs::perms::group_read |
                                      fs::perms::group_exec | fs::perms::others_read | fs::perms::others_exec);
    // Root writes into read-only directories all the same; then a file size
    // limit makes the write fail instead, so the failure path still runs.
    std::unique_ptr<test::FileSizeLimit> limit;
    if (test::canCreateFileIn(presetsDir())) {
        RecordProperty("failure", "file size limit (directory permissions do not stop this user)");
        limit = std::make_unique<test::FileSizeLimit>(64);
    }

    preset.name = "Changed";
    preset.scenes.push_back(makeScene("More"));
    StdoutCapture capture;
    storage.savePreset(preset);
    const auto lines = capture.lines();
    limit.reset();
    fs::permissions(presetsDir(), fs::perms::owner_all, fs::perm_options::add);

    ASSERT_EQ(lines.size(), 1u);
    EXPECT_THAT(lines[0], StartsWith(saveErrorPrefix));
    EXPECT_EQ(readBytes(storage.fileFor(preset)), previous);
    EXPECT_EQ(entryNames(presetsDir()), entriesBefore);
}

TEST_F(PresetStorageTest, SaveThatFailsPartWayKeepsThePreviousFileAndCleansUp) {
    PresetStorage storage = openStorage();
    Preset preset = namedPreset("Show");
    saveQuietly(storage, preset);
    const std::string previous = readBytes(storage.fileFor(preset));

    Preset larger = test::makeFullPreset(10, 256 * 1024);
    larger.id = preset.id;
    ASSERT_GT(encodePreset(larger).size(), 200u * 1024);

    std::vector<std::string> lines;
    {
        StdoutCapture capture;  // created first: its own file must stay below the limit
        test::FileSizeLimit limit(16 * 1024);
        storage.savePreset(larger);
        lines = capture.lines();
    }
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_THAT(lines[0], StartsWith(saveErrorPrefix));
    EXPECT_THAT(lines[0], HasSubstr("File too large"));
    EXPECT_EQ(readBytes(storage.fileFor(preset)), previous);
    EXPECT_EQ(entryNames(presetsDir()), (std::set<std::string>{preset.id.toString() + ".json"}));
}

TEST_F(PresetStorageTest, SaveOntoADirectoryStandingWhereTheFileShouldBeFailsAndKeepsIt) {
    PresetStorage storage = openStorage();
    Preset preset = namedPreset("Show");
    const fs::path blocker = storage.fileFor(preset);
    fs::create_directory(blocker);
    writeBytes(blocker / "keep.txt", "still here");

    StdoutCapture capture;
    storage.savePreset(preset);
    const auto lines = capture.lines();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_THAT(lines[0], StartsWith(saveErrorPrefix));
    EXPECT_TRUE(fs::is_directory(blocker));
    EXPECT_EQ(readBytes(blocker / "keep.txt"), "still here");
    EXPECT_EQ(entryNames(presetsDir()), (std::set<std::string>{blocker.filename().string()}));
}

TEST_F(PresetStorageTest, AFileWhereThePresetsDirectoryShouldBeFailsQuietlyAtStartAndLoudlyLater) {
    fs::create_directories(xdg.base());
    writeBytes(xdg.base() / "Presets", "not a directory");

    StdoutCapture capture;
    PresetStorage storage(xdg.base());
    storage.savePreset(namedPreset("Show"));
    const auto presets = storage.loadPresets();
    const auto lines = capture.lines();

    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0], "📁 Presets directory: " + presetsDir().string());
    EXPECT_EQ(lines[1], "📁 Logos directory: " + logosDir().string());
    EXPECT_THAT(lines[2], StartsWith(saveErrorPrefix));
    EXPECT_THAT(lines[3], StartsWith("❌ Error loading presets: "));
    EXPECT_TRUE(presets.empty());
    EXPECT_EQ(readBytes(xdg.base() / "Presets"), "not a directory");
    EXPECT_TRUE(fs::is_directory(logosDir()));
}

TEST_F(PresetStorageTest, ACrashDuringASaveLeavesNothingThatLoads) {
    PresetStorage storage = openStorage();
    Preset preset = namedPreset("Show");
    saveQuietly(storage, preset);
    const std::string previous = readBytes(storage.fileFor(preset));
    Preset larger = test::makeFullPreset(10, 256 * 1024);
    larger.id = preset.id;

    // The child is killed by SIGXFSZ in the middle of writing, as by a crash
    // or a power cut: nothing of the save's own clean-up runs.
    std::fflush(stdout);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        ::signal(SIGXFSZ, SIG_DFL);
        rlimit limit{};
        ::getrlimit(RLIMIT_FSIZE, &limit);
        limit.rlim_cur = 16 * 1024;
        ::setrlimit(RLIMIT_FSIZE, &limit);
        storage.savePreset(larger);
        std::_Exit(0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the child should have died part-way through the write";
    EXPECT_EQ(WTERMSIG(status), SIGXFSZ);

    const auto entries = entryNames(presetsDir());
    ASSERT_EQ(entries.size(), 2u) << "the interrupted save should have left its temporary file";
    for (const auto& name : entries) {
        if (name == preset.id.toString() + ".json") continue;
        EXPECT_NE(fs::path(name).extension(), ".json") << name;
        EXPECT_LT(fs::file_size(presetsDir() / name), encodePreset(larger).size());
    }
    EXPECT_EQ(readBytes(storage.fileFor(preset)), previous);

    StdoutCapture capture;
    const auto loaded = storage.loadPresets();
    EXPECT_TRUE(capture.lines().empty());
    ASSERT_EQ(loaded.size(), 1u);
    EXPECT_EQ(encodePreset(loaded[0]), previous);
}

// ---------------------------------------------------------------- loading

TEST_F(PresetStorageTest, DamagedFilesAreSkippedLoggedAndKeptByteIdentical) {
    PresetStorage storage = openStorage();
    Preset good = namedPreset("Good");
    saveQuietly(storage, good);

    std::string missingKey = encodePreset(namedPreset("Old"));
    const auto at = missingKey.find("\"hideProgramWhenPopout\"");
    ASSERT_NE(at, std::string::npos);
    missingKey.replace(at, std::string("\"hideProgramWhenPopout\"").size(), "\"hideProgramWhenPopoutX\"");

    const std::vector<std::pair<std::string, std::string>> damaged = {
        {"garbage.json", "this is { not json"},
        {"truncated.json", encodePreset(namedPreset("Cut")).substr(0, 120)},
        {"empty.json", ""},
        {"missing-key.json", missingKey},
        {"array.json", "[1, 2, 3]"},
    };
    for (const auto& [name, bytes] : damaged) writeBytes(presetsDir() / name, bytes);

    StdoutCapture capture;
    const auto presets = storage.loadPresets();
    const auto lines = capture.lines();

    EXPECT_THAT(namesOf(presets), ElementsAre("Good"));
    ASSERT_EQ(lines.size(), damaged.size());
    for (const auto& [name, bytes] : damaged) {
        EXPECT_TRUE(anyLineStartsWith(lines, "❌ Error loading preset from " + name + ": ")) << name;
        EXPECT_EQ(readBytes(presetsDir() / name), bytes) << name;
    }
    for (const auto& line : lines) EXPECT_GT(line.size(), std::string("❌ Error loading preset from x.json: ").size());

    // A later save touches only its own file.
    saveQuietly(storage, good);
    for (const auto& [name, bytes] : damaged) EXPECT_EQ(readBytes(presetsDir() / name), bytes) << name;
}

TEST_F(PresetStorageTest, ADirectoryNamedLikeAPresetFileIsSkippedWithALogLine) {
    PresetStorage storage = openStorage();
    saveQuietly(storage, namedPreset("Good"));
    fs::create_directory(presetsDir() / "folder.json");

    StdoutCapture capture;
    const auto presets = storage.loadPresets();
    const auto lines = capture.lines();
    EXPECT_THAT(namesOf(presets), ElementsAre("Good"));
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_THAT(lines[0], StartsWith("❌ Error loading preset from folder.json: "));
    EXPECT_TRUE(fs::is_directory(presetsDir() / "folder.json"));
}

TEST_F(PresetStorageTest, TextFilesCapitalisedExtensionsAndSubDirectoriesAreNotLoaded) {
    PresetStorage storage = openStorage();
    saveQuietly(storage, namedPreset("Real"));
    writeBytes(presetsDir() / "notes.txt", encodePreset(namedPreset("Text")));
    writeBytes(presetsDir() / "UPPER.JSON", encodePreset(namedPreset("Upper")));
    writeBytes(presetsDir() / "Mixed.Json", encodePreset(namedPreset("Mixed")));
    writeBytes(presetsDir() / "backup.json.bak", encodePreset(namedPreset("Backup")));
    writeBytes(presetsDir() / "json", encodePreset(namedPreset("Bare")));
    fs::create_directory(presetsDir() / "nested");
    writeBytes(presetsDir() / "nested" / "inner.json", encodePreset(namedPreset("Nested")));

    StdoutCapture capture;
    const auto presets = storage.loadPresets();
    EXPECT_TRUE(capture.lines().empty());
    EXPECT_THAT(namesOf(presets), ElementsAre("Real"));
}

TEST_F(PresetStorageTest, TwoFilesWithTheSameIdBothLoadAndASaveWritesOnlyTheIdNamedFile) {
    PresetStorage storage = openStorage();
    Preset preset = namedPreset("Original");
    saveQuietly(storage, preset);
    Preset copy = preset;
    copy.name = "Copy";
    const std::string copyBytes = encodePreset(copy);
    writeBytes(presetsDir() / "copy.json", copyBytes);

    const auto loaded = loadQuietly(storage);
    ASSERT_EQ(loaded.size(), 2u);
    EXPECT_EQ(loaded[0].id, preset.id);
    EXPECT_EQ(loaded[1].id, preset.id);
    EXPECT_THAT(namesOf(loaded), ::testing::UnorderedElementsAre("Original", "Copy"));

    preset.name = "Saved Again";
    saveQuietly(storage, preset);
    EXPECT_EQ(readBytes(presetsDir() / "copy.json"), copyBytes);
    EXPECT_EQ(readBytes(storage.fileFor(preset)), encodePreset(preset));
    EXPECT_EQ(entryNames(presetsDir()).size(), 2u);
}

TEST_F(PresetStorageTest, AFileNamedOtherThanItsIdSortsAsDistantPastAndASaveAddsTheIdFile) {
    PresetStorage storage = openStorage();
    Preset stray = namedPreset("Stray");
    const std::string strayBytes = encodePreset(stray);
    writeBytes(presetsDir() / "renamed-by-hand.json", strayBytes);
    fs::last_write_time(presetsDir() / "renamed-by-hand.json", timeAt(2'000'000'000));  // its own date is not used

    Preset old = namedPreset("Old");
    saveQuietly(storage, old);
    fs::last_write_time(storage.fileFor(old), timeAt(86'400));  // 2 January 1970

    EXPECT_THAT(namesOf(loadQuietly(storage)), ElementsAre("Old", "Stray"));

    stray.name = "Stray Saved";
    saveQuietly(storage, stray);
    EXPECT_TRUE(fs::exists(storage.fileFor(stray)));
    EXPECT_EQ(readBytes(presetsDir() / "renamed-by-hand.json"), strayBytes);
    EXPECT_EQ(entryNames(presetsDir()).size(), 3u);
    // Both copies of the stray now date from the id-named file.
    const auto names = namesOf(loadQuietly(storage));
    ASSERT_EQ(names.size(), 3u);
    EXPECT_EQ(names[2], "Old");
    EXPECT_THAT(std::vector<std::string>(names.begin(), names.begin() + 2),
                ::testing::UnorderedElementsAre("Stray", "Stray Saved"));
}

TEST_F(PresetStorageTest, PresetsSortNewestFirstByTheirFileDate) {
    PresetStorage storage = openStorage();
    const std::vector<std::pair<std::string, int>> dated = {
        {"January", 1'704'067'200}, {"March", 1'709'251'200}, {"February", 1'706'745'600}};
    for (const auto& [name, seconds] : dated) {
        Preset preset = namedPreset(name);
        saveQuietly(storage, preset);
        fs::last_write_time(storage.fileFor(preset), timeAt(seconds));
    }
    EXPECT_THAT(namesOf(loadQuietly(storage)), ElementsAre("March", "February", "January"));
}

TEST_F(PresetStorageTest, EqualDatesKeepTheOrderOfTheListing) {
    PresetStorage storage = openStorage();
    std::vector<Preset> presets;
    for (const char* name : {"One", "Two", "Three", "Four"}) {
        presets.push_back(namedPreset(name));
        saveQuietly(storage, presets.back());
        fs::last_write_time(storage.fileFor(presets.back()), timeAt(1'700'000'000));
    }
    // The listing is in file-name order, so ties come out sorted by id.
    std::sort(presets.begin(), presets.end(),
              [](const Preset& a, const Preset& b) { return a.id.toString() < b.id.toString(); });
    EXPECT_EQ(namesOf(loadQuietly(storage)), namesOf(presets));
}

TEST_F(PresetStorageTest, AListingThatFailsLogsAndGivesNothing) {
    PresetStorage storage = openStorage();
    fs::remove_all(presetsDir());
    StdoutCapture capture;
    EXPECT_TRUE(storage.loadPresets().empty());
    const auto lines = capture.lines();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_THAT(lines[0], StartsWith("❌ Error loading presets: "));
    EXPECT_THAT(lines[0], HasSubstr("No such file or directory"));
}

// ---------------------------------------------------------------- deleting

TEST_F(PresetStorageTest, DeletePresetRemovesOnlyItsFileAndLogs) {
    PresetStorage storage = openStorage();
    Preset doomed = namedPreset("Doomed");
    Preset kept = namedPreset("Kept");
    saveQuietly(storage, doomed);
    saveQuietly(storage, kept);

    StdoutCapture capture;
    storage.deletePreset(doomed);
    EXPECT_THAT(capture.lines(), ElementsAre("✅ Preset deleted: Doomed"));
    EXPECT_FALSE(fs::exists(storage.fileFor(doomed)));
    EXPECT_THAT(namesOf(loadQuietly(storage)), ElementsAre("Kept"));
}

TEST_F(PresetStorageTest, DeletingAPresetThatHasNoFileLogsAnError) {
    PresetStorage storage = openStorage();
    StdoutCapture capture;
    storage.deletePreset(namedPreset("Never Saved"));
    const auto lines = capture.lines();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_THAT(lines[0], StartsWith("❌ Error deleting preset: "));
}

TEST_F(PresetStorageTest, DeletingAPresetRemovesItsLogoEvenWhenAnotherPresetRefersToIt) {
    PresetStorage storage = openStorage();
    writeBytes(xdg.path() / "logo.png", "PNG bytes");
    std::optional<std::string> logo;
    {
        StdoutCapture quiet;
        logo = storage.copyLogoToAppDirectory((xdg.path() / "logo.png").string());
    }
    ASSERT_TRUE(logo);

    Preset first = namedPreset("First");
    Preset second = namedPreset("Second");
    for (Preset* p : {&first, &second}) {
        BrandingConfig branding;
        branding.logoImagePath = *logo;
        p->branding = branding;
        saveQuietly(storage, *p);
    }

    StdoutCapture capture;
    storage.deletePreset(first);
    EXPECT_THAT(capture.lines(),
                ElementsAre("✅ Logo deleted: " + fs::path(*logo).filename().string(), "✅ Preset deleted: First"));
    EXPECT_FALSE(fs::exists(*logo));
    const auto remaining = loadQuietly(storage);
    ASSERT_EQ(remaining.size(), 1u);
    ASSERT_TRUE(remaining[0].branding);
    EXPECT_EQ(remaining[0].branding->logoImagePath, logo);  // now dangling
}

TEST_F(PresetStorageTest, ALogoOutsideTheLogosDirectorySurvivesDeletePreset) {
    PresetStorage storage = openStorage();
    const fs::path outside = xdg.path() / "Pictures" / "logo.png";
    fs::create_directories(outside.parent_path());
    writeBytes(outside, "the user's own file");

    Preset preset = namedPreset("Show");
    BrandingConfig branding;
    branding.logoImagePath = outside.string();
    preset.branding = branding;
    saveQuietly(storage, preset);

    StdoutCapture capture;
    storage.deletePreset(preset);
    EXPECT_THAT(capture.lines(),
                ElementsAre("⚠️ Logo not in app directory, skipping deletion", "✅ Preset deleted: Show"));
    EXPECT_EQ(readBytes(outside), "the user's own file");
    EXPECT_FALSE(fs::exists(storage.fileFor(preset)));
}

TEST_F(PresetStorageTest, APresetWithBrandingButNoLogoDeletesNoLogo) {
    PresetStorage storage = openStorage();
    Preset preset = namedPreset("Show");
    preset.branding = BrandingConfig{};
    saveQuietly(storage, preset);
    StdoutCapture capture;
    storage.deletePreset(preset);
    EXPECT_THAT(capture.lines(), ElementsAre("✅ Preset deleted: Show"));
}

// ---------------------------------------------------------------- logos

TEST_F(PresetStorageTest, CopyLogoNamesTheCopyWithAFreshUppercaseUuidAndTheExtension) {
    PresetStorage storage = openStorage();
    const fs::path chosen = xdg.path() / "my logo.PNG";
    writeBytes(chosen, std::string("\x89PNG\r\n\x1a\n\0\0binary", 16));

    StdoutCapture capture;
    const auto first = storage.copyLogoToAppDirectory(chosen.string());
    const auto second = storage.copyLogoToAppDirectory(chosen.string());
    const auto lines = capture.lines();

    ASSERT_TRUE(first && second);
    EXPECT_NE(*first, *second);
    EXPECT_THAT(lines, ElementsAre("✅ Logo copied to: " + *first, "✅ Logo copied to: " + *second));
    const std::regex name("[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}\\.PNG");
    for (const auto& path : {*first, *second}) {
        EXPECT_EQ(fs::path(path).parent_path(), logosDir());
        EXPECT_TRUE(std::regex_match(fs::path(path).filename().string(), name)) << path;
        EXPECT_EQ(readBytes(path), readBytes(chosen));
    }
    EXPECT_TRUE(fs::exists(chosen));  // a copy, not a move
}

TEST_F(PresetStorageTest, CopyOfAnExtensionlessLogoGivesANameEndingInADot) {
    PresetStorage storage = openStorage();
    const fs::path chosen = xdg.path() / "logo";
    writeBytes(chosen, "image");
    StdoutCapture quiet;
    const auto copied = storage.copyLogoToAppDirectory(chosen.string());
    ASSERT_TRUE(copied);
    const std::string fileName = fs::path(*copied).filename().string();
    EXPECT_EQ(fileName.size(), 37u);
    EXPECT_EQ(fileName.back(), '.');
    EXPECT_TRUE(Uuid::parse(fileName.substr(0, 36)));
    EXPECT_EQ(readBytes(*copied), "image");
}

TEST_F(PresetStorageTest, CopyOfAMissingLogoReturnsNothingAndLogs) {
    PresetStorage storage = openStorage();
    StdoutCapture capture;
    const auto copied = storage.copyLogoToAppDirectory((xdg.path() / "gone.png").string());
    const auto lines = capture.lines();
    EXPECT_FALSE(copied);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_THAT(lines[0], StartsWith("❌ Error copying logo: "));
    EXPECT_TRUE(entryNames(logosDir()).empty());
}

TEST_F(PresetStorageTest, CopyOfADirectoryAsLogoFailsAndLeavesNothingBehind) {
    PresetStorage storage = openStorage();
    fs::create_directory(xdg.path() / "folder.png");
    StdoutCapture capture;
    EXPECT_FALSE(storage.copyLogoToAppDirectory((xdg.path() / "folder.png").string()));
    const auto lines = capture.lines();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_THAT(lines[0], StartsWith("❌ Error copying logo: "));
    EXPECT_TRUE(entryNames(logosDir()).empty());
}

TEST_F(PresetStorageTest, DeleteLogoWithNoPathDoesNothing) {
    PresetStorage storage = openStorage();
    writeBytes(logosDir() / "A.png", "x");
    StdoutCapture capture;
    storage.deleteLogo(std::nullopt);
    EXPECT_TRUE(capture.lines().empty());
    EXPECT_TRUE(fs::exists(logosDir() / "A.png"));
}

TEST_F(PresetStorageTest, DeleteLogoInsideTheLogosDirectoryRemovesItAndLogs) {
    PresetStorage storage = openStorage();
    writeBytes(logosDir() / "A.png", "x");
    StdoutCapture capture;
    storage.deleteLogo((logosDir() / "A.png").string());
    EXPECT_THAT(capture.lines(), ElementsAre("✅ Logo deleted: A.png"));
    EXPECT_FALSE(fs::exists(logosDir() / "A.png"));
}

TEST_F(PresetStorageTest, DeleteOfAMissingLogoLogsAnError) {
    PresetStorage storage = openStorage();
    StdoutCapture capture;
    storage.deleteLogo((logosDir() / "gone.png").string());
    const auto lines = capture.lines();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_THAT(lines[0], StartsWith("❌ Error deleting logo: "));
}

TEST_F(PresetStorageTest, PathsThatOnlyLookInsideTheLogosDirectoryAreNotDeleted) {
    PresetStorage storage = openStorage();
    const fs::path sibling = xdg.base() / "Logos-old" / "x.png";
    const fs::path above = xdg.base() / "above.png";
    fs::create_directories(sibling.parent_path());
    writeBytes(sibling, "sibling");
    writeBytes(above, "above");
    const std::vector<std::string> attempts = {
        sibling.string(),                                  // shares the text of the directory's path
        (logosDir() / ".." / "above.png").string(),        // climbs out again
        (xdg.path() / "elsewhere" / logosDir().relative_path()).string(),  // contains it further down
        logosDir().string(),                               // the directory itself
    };
    for (const auto& path : attempts) {
        StdoutCapture capture;
        storage.deleteLogo(path);
        EXPECT_THAT(capture.lines(), ElementsAre("⚠️ Logo not in app directory, skipping deletion")) << path;
    }
    EXPECT_EQ(readBytes(sibling), "sibling");
    EXPECT_EQ(readBytes(above), "above");
    EXPECT_TRUE(fs::is_directory(logosDir()));
}

TEST_F(PresetStorageTest, DeleteLogoFollowsTheLogosDirectoryThroughALink) {
    // A logo path recorded through a symbolic link to the data directory is
    // still inside the logos directory.
    PresetStorage storage = openStorage();
    const fs::path link = xdg.path() / "link";
    fs::create_directory_symlink(xdg.base(), link);
    writeBytes(logosDir() / "B.png", "x");
    StdoutCapture capture;
    storage.deleteLogo((link / "Logos" / "B.png").string());
    EXPECT_THAT(capture.lines(), ElementsAre("✅ Logo deleted: B.png"));
    EXPECT_FALSE(fs::exists(logosDir() / "B.png"));
}

// ---------------------------------------------------------------- sections

TEST_F(PresetStorageTest, APresetWithoutBrandingGainsABrandingObjectOnlyWhenOneIsSaved) {
    PresetStorage storage = openStorage();
    Preset preset = createPreset("Show", PresetTemplate::streaming);
    saveQuietly(storage, preset);
    const auto before = nlohmann::json::parse(readBytes(storage.fileFor(preset)));
    EXPECT_FALSE(before.contains("branding"));
    auto loaded = loadQuietly(storage);
    ASSERT_EQ(loaded.size(), 1u);
    EXPECT_FALSE(loaded[0].branding);

    // What a panel shows for the absent section, and what it saves first.
    const BrandingConfig shown = loaded[0].branding.value_or(BrandingConfig{});
    EXPECT_FALSE(shown.enabled);
    EXPECT_EQ(shown.text, "");
    EXPECT_EQ(shown.textColor, (CodableColor{1, 1, 1, 1}));
    EXPECT_EQ(shown.textSize, 16);
    EXPECT_FALSE(shown.logoImagePath);
    EXPECT_EQ(shown.logoWidth, 80);
    EXPECT_EQ(shown.logoHeight, 80);
    EXPECT_EQ(shown.position, BrandingPosition::bottomRight);
    EXPECT_EQ(shown.opacity, 1.0);
    EXPECT_TRUE(shown.showBackground);
    EXPECT_EQ(shown.backgroundColor, (CodableColor{0, 0, 0, 0.6}));

    // Loading and saving again does not make one appear.
    saveQuietly(storage, loaded[0]);
    EXPECT_FALSE(nlohmann::json::parse(readBytes(storage.fileFor(preset))).contains("branding"));

    loaded[0].branding = shown;
    saveQuietly(storage, loaded[0]);
    const auto after = nlohmann::json::parse(readBytes(storage.fileFor(preset)));
    ASSERT_TRUE(after.contains("branding"));
    EXPECT_TRUE(after["branding"].is_object());
    EXPECT_EQ(after["branding"]["enabled"], false);
    EXPECT_FALSE(after["branding"].contains("logoImagePath"));
    const auto reloaded = loadQuietly(storage);
    ASSERT_EQ(reloaded.size(), 1u);
    ASSERT_TRUE(reloaded[0].branding);
    EXPECT_EQ(*reloaded[0].branding, BrandingConfig{});
}

TEST_F(PresetStorageTest, AChosenGradientIsStoredAsColoursWithNoReferenceToItsRow) {
    PresetStorage storage = openStorage();
    const GradientPreset& row = GradientPreset::presets().at(3);  // "Sunset Glow"
    ASSERT_EQ(row.name, "Sunset Glow");
    Preset preset = namedPreset("Show");
    preset.scenes[0].gradientColors = row.colors;
    preset.scenes[0].gradientDirection = row.direction;
    saveQuietly(storage, preset);

    const std::string text = readBytes(storage.fileFor(preset));
    EXPECT_EQ(text.find("Sunset Glow"), std::string::npos);
    EXPECT_EQ(text.find(row.id.toString()), std::string::npos);
    const auto loaded = loadQuietly(storage);
    ASSERT_EQ(loaded.size(), 1u);
    EXPECT_EQ(loaded[0].scenes[0].gradientColors, row.colors);
    EXPECT_EQ(loaded[0].scenes[0].gradientDirection, GradientDirection::topLeftToBottomRight);
}

}  // namespace
}  // namespace orvane

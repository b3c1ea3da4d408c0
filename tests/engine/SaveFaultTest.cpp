// Saving while the disk refuses: a presets directory the user may not write
// into, and a disk that fills up in the middle of a save. Each fault is made
// in a child process, so that the test process keeps its own user and file
// size limit: the child drops from root to "nobody" (root writes into
// read-only directories all the same), or lowers its file size limit. The
// session in the child has to go on as before and lose nothing.

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "document/DocumentCodec.h"
#include "document/PresetTemplates.h"
#include "support/ForkedChild.h"
#include "support/SessionTest.h"

namespace orvane {
namespace save_fault_test {

namespace fs = std::filesystem;
using test::ForkedChild;

constexpr const char* kSaveError = "❌ Error saving preset: ";

std::string readBytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::size_t entryCount(const fs::path& directory) {
    std::size_t n = 0;
    for ([[maybe_unused]] const auto& entry : fs::directory_iterator(directory)) ++n;
    return n;
}

bool startsWith(const std::string& text, const std::string& prefix) { return text.rfind(prefix, 0) == 0; }

// What the child says between its steps: "STEP <name>" and "FACT <key> <value>".
void step(const char* name) {
    std::printf("STEP %s\n", name);
    std::fflush(stdout);
}

void fact(const char* key, const std::string& value) {
    std::printf("FACT %s %s\n", key, value.c_str());
    std::fflush(stdout);
}

// The lines the child wrote after "STEP from" and before the next step.
std::vector<std::string> linesOfStep(const std::vector<std::string>& lines, const std::string& from) {
    std::vector<std::string> out;
    bool inside = false;
    for (const auto& line : lines) {
        if (startsWith(line, "STEP ")) {
            inside = line == "STEP " + from;
            continue;
        }
        if (inside && !startsWith(line, "FACT ")) out.push_back(line);
    }
    return out;
}

std::string factOf(const std::vector<std::string>& lines, const std::string& key) {
    for (const auto& line : lines)
        if (startsWith(line, "FACT " + key + " ")) return line.substr(6 + key.size());
    return "(missing)";
}

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const auto& line : lines) text += line + "\n";
    return text;
}

class SaveFaultTest : public test::SessionTest {
protected:
    fs::path presetsDir() { return home.storage().presetsDirectory(); }
    fs::path presetFile() { return home.storage().fileFor(preset); }
    // The temporary directory that holds the data home and the settings.
    fs::path homeRoot() { return presetsDir().parent_path().parent_path().parent_path(); }

    // The part every fault shares, run in the child once the fault is on:
    // an edit that cannot be saved, the checks that nothing was lost, a
    // scene switch, then `clearFault` and one more edit that saves it all.
    int editThroughTheFault(const std::string& before, const std::function<bool()>& clearFault) {
        step("edit");
        Preset edited = *session->currentPreset();
        edited.name = "Renamed";
        StreamingScene big = makeScene("D");
        big.sources.resize(40);  // enough text to outgrow any limit a few hundred bytes above the old file
        for (std::size_t i = 0; i < big.sources.size(); ++i) big.sources[i].name = "Source " + std::to_string(i);
        edited.scenes.push_back(big);
        session->setCurrentPreset(edited);

        step("after-edit");
        fact("intact", readBytes(presetFile()) == before ? "yes" : "no");
        fact("entries", std::to_string(entryCount(presetsDir())));
        fact("name", session->currentPreset()->name);
        fact("scenes", std::to_string(session->currentPreset()->scenes.size()));

        step("switch");
        const bool switched = session->switchToSceneAt(1);
        fact("switched", switched ? "yes" : "no");
        fact("active", session->activeScene() ? session->activeScene()->name : "(none)");
        fact("intact-after-switch", readBytes(presetFile()) == before ? "yes" : "no");

        step("clear");
        if (!clearFault()) return 3;

        step("save-again");
        Preset again = *session->currentPreset();
        again.name = "Renamed again";
        session->setCurrentPreset(again);

        step("end");
        const auto stored = decodePreset(readBytes(presetFile()));
        if (!stored) {
            fact("stored", "undecodable: " + stored.error);
            return 0;
        }
        const Preset& p = *stored.value;
        fact("stored-name", p.name);
        fact("stored-scenes", std::to_string(p.scenes.size()));
        fact("stored-sources-of-D", p.scenes.size() == 4 ? std::to_string(p.scenes[3].sources.size()) : "-");
        fact("stored-active", p.activeSceneId && *p.activeSceneId == p.scenes.at(1).id ? "B" : "other");
        fact("entries-at-end", std::to_string(entryCount(presetsDir())));
        return 0;
    }

    // What every fault must show, from the child's output.
    void expectNothingLost(const ForkedChild::Outcome& outcome, const std::string& reason) {
        const std::string all = joined(outcome.lines);
        ASSERT_TRUE(outcome.exited) << "signal " << outcome.signal << "\n" << all;
        ASSERT_EQ(outcome.exitCode, 0) << all;

        // One clear line for the edit that could not be saved, with the reason.
        const auto editLines = linesOfStep(outcome.lines, "edit");
        ASSERT_EQ(editLines.size(), 1u) << all;
        EXPECT_TRUE(startsWith(editLines[0], kSaveError)) << editLines[0];
        EXPECT_NE(editLines[0].find(reason), std::string::npos) << editLines[0];

        // The previous file byte for byte, and nothing left beside it.
        EXPECT_EQ(factOf(outcome.lines, "intact"), "yes");
        EXPECT_EQ(factOf(outcome.lines, "entries"), "1");
        // The session holds the edit.
        EXPECT_EQ(factOf(outcome.lines, "name"), "Renamed");
        EXPECT_EQ(factOf(outcome.lines, "scenes"), "4");

        // It goes on working: a switch is made (its save fails the same way).
        EXPECT_EQ(factOf(outcome.lines, "switched"), "yes");
        EXPECT_EQ(factOf(outcome.lines, "active"), "B");
        EXPECT_EQ(factOf(outcome.lines, "intact-after-switch"), "yes");
        const auto switchLines = linesOfStep(outcome.lines, "switch");
        ASSERT_EQ(switchLines.size(), 1u) << all;
        EXPECT_TRUE(startsWith(switchLines[0], kSaveError)) << switchLines[0];

        // Once the disk takes writes again, the next save holds everything.
        const auto saveLines = linesOfStep(outcome.lines, "save-again");
        ASSERT_EQ(saveLines.size(), 1u) << all;
        EXPECT_EQ(saveLines[0], "✅ Preset saved: Renamed again → " + presetFile().filename().string());
        EXPECT_EQ(factOf(outcome.lines, "stored-name"), "Renamed again");
        EXPECT_EQ(factOf(outcome.lines, "stored-scenes"), "4");
        EXPECT_EQ(factOf(outcome.lines, "stored-sources-of-D"), "40");
        EXPECT_EQ(factOf(outcome.lines, "stored-active"), "B");
        EXPECT_EQ(factOf(outcome.lines, "entries-at-end"), "1");
    }
};

TEST_F(SaveFaultTest, APresetsDirectoryThatCannotBeWrittenKeepsThePreviousFileAndTheSessionGoesOn) {
    const std::string before = readBytes(presetFile());
    ASSERT_FALSE(before.empty());
    // The unprivileged user owns the data home, so that the directory's own
    // mode bits are what refuses the write, and so that it may make the
    // directory writable again itself.
    const uid_t uid = ForkedChild::unprivilegedUid();
    const gid_t gid = ForkedChild::unprivilegedGid();
    ASSERT_EQ(::chown(homeRoot().c_str(), uid, gid), 0);
    for (const auto& entry : fs::recursive_directory_iterator(homeRoot()))
        ASSERT_EQ(::lchown(entry.path().c_str(), uid, gid), 0) << entry.path();
    fs::permissions(presetsDir(), fs::perms::owner_read | fs::perms::owner_exec);

    const fs::path directory = presetsDir();
    const ForkedChild::Outcome outcome = ForkedChild::run([&] {
        if (const std::string why = ForkedChild::dropRootPrivileges(); !why.empty()) {
            std::printf("cannot drop privileges: %s\n", why.c_str());
            return 2;
        }
        // The fault is real for this process: the kernel refuses it.
        if (::access(directory.c_str(), W_OK) == 0 || errno != EACCES) {
            std::printf("the presets directory is still writable\n");
            return 2;
        }
        return editThroughTheFault(before, [&] {
            std::error_code ec;
            fs::permissions(directory, fs::perms::owner_all, ec);
            return !ec;
        });
    });
    fs::permissions(presetsDir(), fs::perms::owner_all);
    expectNothingLost(outcome, "Permission denied");
}

TEST_F(SaveFaultTest, ADiskThatFillsDuringASaveKeepsThePreviousFileAndTheSessionGoesOn) {
    const std::string before = readBytes(presetFile());
    ASSERT_FALSE(before.empty());
    const ForkedChild::Outcome outcome = ForkedChild::run([&] {
        // A write past the limit fails with EFBIG part-way through, as on a
        // full disk; the signal that would end the process is ignored.
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit original{};
        ::getrlimit(RLIMIT_FSIZE, &original);
        rlimit lowered = original;
        lowered.rlim_cur = before.size() + 256;
        if (::setrlimit(RLIMIT_FSIZE, &lowered) != 0) {
            std::printf("setrlimit failed\n");
            return 2;
        }
        return editThroughTheFault(before, [&] { return ::setrlimit(RLIMIT_FSIZE, &original) == 0; });
    });
    expectNothingLost(outcome, "File too large");
}

}  // namespace
}  // namespace orvane

// The phone's recording switch on the real recorder, wired as the console
// wires it: two presses in quick succession while the recording is being
// stopped end it once. "completed" is published only once the file is
// closed, and never "error".

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

#include <memory>
#include <string>
#include <vector>

#include "recording/RecordingManager.h"
#include "recording/RecordingStateMirror.h"
#include "recording/RemoteRecordingSwitch.h"
#include "remote/WebServerManager.h"
#include "remote/session/StreamManagerRemoteBridge.h"
#include "support/LogTap.h"
#include "support/MediaProbe.h"
#include "support/RawHttpClient.h"
#include "support/RecordingHarness.h"
#include "support/TestApp.h"

namespace orvane {
namespace recording_toggle_test {

using test::LogTap;
using test::MediaProbe;
using test::RecordingHarness;
using test::waitUntil;

// The top-level boxes of a movie file, in order; empty when they do not
// cover the file exactly (a box cut short, or bytes that are no box).
std::vector<std::string> topLevelBoxes(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray bytes = file.readAll();
    std::vector<std::string> boxes;
    qint64 at = 0;
    const auto byteAt = [&](qint64 i) { return static_cast<quint64>(static_cast<unsigned char>(bytes[i])); };
    while (at + 8 <= bytes.size()) {
        quint64 size = 0;
        for (int i = 0; i < 4; ++i) size = (size << 8) | byteAt(at + i);
        if (size == 1) {
            if (at + 16 > bytes.size()) return {};
            size = 0;
            for (int i = 8; i < 16; ++i) size = (size << 8) | byteAt(at + i);
        }
        if (size < 8 || at + static_cast<qint64>(size) > bytes.size()) return {};
        boxes.push_back(bytes.mid(at + 4, 4).toStdString());
        at += static_cast<qint64>(size);
    }
    if (at != bytes.size()) return {};
    return boxes;
}

std::string post(quint16 port, const std::string& path) {
    return test::exchange(port, "POST " + path + " HTTP/1.1\r\n\r\n");
}

std::string body(const std::string& response) {
    const auto at = response.find("\r\n\r\n");
    return at == std::string::npos ? std::string() : response.substr(at + 4);
}

TEST(RecordingToggleTest, TwoQuickStopsEndTheRecordingOnceAndCompletedMeansTheFileIsClosed) {
    // Outlives the server, whose remote bridge holds it.
    std::unique_ptr<RemoteRecordingSwitch> remoteSwitch;
    RecordingHarness harness;
    StreamManager& session = harness.session();
    RecordingManager& recorder = harness.recorder();
    recorder.setIncludeAudio(false);  // no sound server here
    recorder.setVideoQuality(VideoQuality::low);
    recorder.setOutputFormat(OutputFormat::mp4);
    session.setProgramScene(harness.makeScene());

    // The console's wiring.
    mirrorRecordingState(recorder, session);
    auto server = std::make_unique<WebServerManager>();
    server->setServerPort(0);
    auto* bridge = new StreamManagerRemoteBridge(&session, server.get(), server.get());
    remoteSwitch = std::make_unique<RemoteRecordingSwitch>(recorder, session);
    bridge->setRecordingControl(remoteSwitch.get());
    server->startServer();
    ASSERT_TRUE(waitUntil([&] { return server->isServerRunning(); }, 10000));
    const quint16 port = server->listeningPort();

    // What the file is at the moment each status is published.
    struct Seen {
        RecordingStatus status;
        std::vector<std::string> boxes;
        qint64 size = 0;
        qint64 videoFrames = -1;
    };
    std::vector<Seen> seen;
    QObject::connect(&recorder, &RecordingManager::recordingStatusChanged, [&](RecordingStatus status) {
        Seen now{status, {}, 0, -1};
        if (status == RecordingStatus::completed || status == RecordingStatus::error) {
            const QString file = recorder.outputURL()->toLocalFile();
            now.boxes = topLevelBoxes(file);
            now.size = QFileInfo(file).size();
            const QJsonObject probe = MediaProbe::probe(file, nullptr, {"-count_frames"});
            const QJsonArray videos = MediaProbe::streamsOfType(probe, "video");
            if (videos.size() == 1) now.videoFrames = videos[0].toObject().value("nb_read_frames").toString().toLongLong();
        }
        seen.push_back(std::move(now));
    });
    int finished = 0;
    QObject::connect(&recorder, &RecordingManager::recordingFinished, [&] { ++finished; });

    EXPECT_EQ(body(post(port, "/api/recording")), R"({"success":true,"isRecording":true})");
    ASSERT_TRUE(waitUntil([&] { return recorder.isRecording(); }, 10000));
    ASSERT_TRUE(waitUntil([&] { return recorder.recordingDuration() >= 1.5; }, 10000));
    ASSERT_TRUE(waitUntil([&] { return body(test::exchange(port, "GET /api/status HTTP/1.1\r\n\r\n"))
                                           .find(R"("isRecording":true)") != std::string::npos; }));

    LogTap log;
    seen.clear();
    // Two presses, both answered before the main thread has carried out
    // either: the second stop arrives while the first is closing the file.
    const std::string first = post(port, "/api/recording");
    const std::string second = post(port, "/api/recording");
    EXPECT_EQ(body(first), R"({"success":true,"isRecording":false})");
    EXPECT_EQ(body(second), R"({"success":true,"isRecording":false})");
    ASSERT_TRUE(waitUntil([&] { return finished > 0; }, 30000));
    // A second outcome of the same stop would come from the file's closing
    // thread, queued behind the first; give it time to show.
    test::spinFor(500);
    log.finish();

    EXPECT_EQ(log.count("⏹️ Recording stopped"), 1);
    EXPECT_EQ(log.count("❌"), 0);
    EXPECT_EQ(finished, 1);
    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(seen[0].status, RecordingStatus::stopping);
    EXPECT_EQ(seen[1].status, RecordingStatus::completed);
    EXPECT_EQ(recorder.recordingStatus(), RecordingStatus::completed);
    EXPECT_FALSE(recorder.errorMessage());
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_FALSE(session.isRecording());

    // When completed was published the file was whole and closed: its boxes
    // end with the closing index, it plays, and nothing came after.
    const Seen& completed = seen[1];
    ASSERT_FALSE(completed.boxes.empty()) << "the file was cut in the middle of a box";
    EXPECT_EQ(completed.boxes.front(), "ftyp");
    EXPECT_EQ(completed.boxes.back(), "mfra");
    EXPECT_GE(completed.videoFrames, 40);
    const QString file = recorder.outputURL()->toLocalFile();
    EXPECT_EQ(QFileInfo(file).size(), completed.size);
    EXPECT_NE(body(test::exchange(port, "GET /api/status HTTP/1.1\r\n\r\n")).find(R"("isRecording":false)"),
              std::string::npos);
}

}  // namespace
}  // namespace orvane

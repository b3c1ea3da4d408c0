#include <gtest/gtest.h>

#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <thread>

#include "capture/CaptureBackend.h"
#include "capture/CaptureHub.h"
#include "capture/LavfiCameraBackend.h"
#include "capture/SourceCaptures.h"
#include "document/PresetStorage.h"
#include "engine/StreamManager.h"
#include "recording/LiveFrameTable.h"
#include "recording/ProgramFrameRelay.h"
#include "support/NoDisplays.h"

namespace orvane {
namespace program_frame_relay_test {

using test::NoDisplays;

// A session on a private store, captures without a display server and with
// test cameras, and the table the recorder reads.
struct RelayFixture {
    QTemporaryDir home;
    PresetStorage storage{std::filesystem::path(home.path().toStdString()) / "data"};
    StreamManager session{storage, std::make_unique<QSettings>(home.path() + "/settings.ini", QSettings::IniFormat)};
    NoDisplays screens;
    LavfiCameraBackend cameras;
    CaptureHub hub;
    SourceCaptures captures{screens, cameras, hub, CaptureQuality{}};
    std::shared_ptr<LiveFrameTable> table = std::make_shared<LiveFrameTable>();
};

Source cameraOn(const char* device) {
    Source camera;
    camera.type = SourceType::camera;
    camera.configuration.cameraDeviceId = device;
    return camera;
}

TEST(ProgramFrameRelayTest, TheTableFollowsTheProgramScenesCaptures) {
    RelayFixture f;
    StreamManager& session = f.session;
    auto& table = f.table;
    session.setProgramScene(std::nullopt);
    ProgramFrameRelay relay(session, f.captures, table);

    StreamingScene scene;
    const Source camera = cameraOn("lavfi:smptebars");
    Source content;
    content.type = SourceType::content;
    scene.sources = {camera, content};
    EXPECT_EQ(table->latestFrame(camera).state, SourceFrame::State::idle);

    session.setProgramScene(scene);
    EXPECT_EQ(relay.programSourceIds(), std::vector<Uuid>{camera.id});  // content is drawn, not captured
    ASSERT_TRUE(QTest::qWaitFor([&] { return table->latestFrame(camera).state == SourceFrame::State::frame; }, 10000));
    const QImage first = table->latestFrame(camera).image;
    EXPECT_EQ(first.size(), QSize(640, 480));
    // New pictures keep arriving without anyone asking on the main thread.
    ASSERT_TRUE(QTest::qWaitFor([&] { return table->latestFrame(camera).image.cacheKey() != first.cacheKey(); }, 5000));

    // A scene without the camera takes it out of the table.
    session.setProgramScene(StreamingScene{});
    EXPECT_EQ(table->latestFrame(camera).state, SourceFrame::State::idle);
    EXPECT_TRUE(relay.programSourceIds().empty());
}

// A running capture is read by the table itself: new pictures arrive while
// the main thread turns no event loop at all.
TEST(ProgramFrameRelayTest, NewPicturesArriveWithoutTheMainThread) {
    RelayFixture f;
    StreamManager& session = f.session;
    auto& table = f.table;
    ProgramFrameRelay relay(session, f.captures, table);

    StreamingScene scene;
    const Source camera = cameraOn("lavfi:smptebars");
    scene.sources = {camera};
    session.setProgramScene(scene);
    ASSERT_TRUE(QTest::qWaitFor([&] { return table->latestFrame(camera).state == SourceFrame::State::frame; }, 10000));

    const qint64 first = table->latestFrame(camera).image.cacheKey();
    const std::uint64_t generation = table->generation();
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    bool changed = false;
    while (!changed && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));  // no events are processed meanwhile
        changed = table->latestFrame(camera).image.cacheKey() != first;
    }
    EXPECT_TRUE(changed) << "the camera's pictures reach the table only through the main thread";
    EXPECT_NE(table->generation(), generation) << "the recorder would repeat its last picture";
}

// A source whose capture fails shows its failure in the table: a camera
// that is not there, a screen on a machine without a display server.
TEST(ProgramFrameRelayTest, AFailedCaptureShowsItsFailure) {
    RelayFixture f;
    StreamManager& session = f.session;
    auto& table = f.table;
    ProgramFrameRelay relay(session, f.captures, table);

    StreamingScene scene;
    const Source missing = cameraOn("lavfi:unplugged");
    Source screen;
    screen.type = SourceType::screen;
    screen.configuration.screenId = 7;
    scene.sources = {missing, screen};
    session.setProgramScene(scene);
    EXPECT_EQ(table->latestFrame(missing).state, SourceFrame::State::starting);
    ASSERT_TRUE(QTest::qWaitFor([&] { return table->latestFrame(missing).state == SourceFrame::State::failed; }, 10000));
    EXPECT_EQ(table->latestFrame(missing).message, "No camera device found");
    ASSERT_TRUE(QTest::qWaitFor([&] { return table->latestFrame(screen).state == SourceFrame::State::failed; }, 10000));
    EXPECT_TRUE(table->latestFrame(screen).message.startsWith("Capture error: "))
        << table->latestFrame(screen).message.toStdString();
}

}  // namespace
}  // namespace orvane

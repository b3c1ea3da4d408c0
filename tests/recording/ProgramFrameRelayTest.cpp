#include <gtest/gtest.h>

#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

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

TEST(ProgramFrameRelayTest, TheTableFollowsTheProgramScenesCaptures) {
    QTemporaryDir home;
    PresetStorage storage(std::filesystem::path(home.path().toStdString()) / "data");
    StreamManager session(storage, std::make_unique<QSettings>(home.path() + "/settings.ini", QSettings::IniFormat));
    NoDisplays screens;
    LavfiCameraBackend cameras;
    CaptureHub hub;
    SourceCaptures captures(screens, cameras, hub, CaptureQuality{});
    auto table = std::make_shared<LiveFrameTable>();
    session.setProgramScene(std::nullopt);
    ProgramFrameRelay relay(session, captures, table);

    StreamingScene scene;
    Source camera;
    camera.type = SourceType::camera;
    camera.configuration.cameraDeviceId = "lavfi:smptebars";
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

}  // namespace
}  // namespace orvane

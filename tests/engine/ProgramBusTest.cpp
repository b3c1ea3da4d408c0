// Going live: the program copy, the transition flag and its queued reset,
// and the raise of a scene's window.

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <memory>

#include "document/EnumStrings.h"
#include "document/PresetTemplates.h"
#include "engine/StreamManager.h"
#include "support/FakeWindowLayer.h"
#include "support/LogCapture.h"
#include "support/SessionTest.h"

namespace orvane {
namespace program_bus_test {

using test::FakeWindowLayer;
using test::FakeWindowRaiser;
using test::LogCapture;
using test::SessionTest;

Source sourceOf(SourceType type, std::optional<std::uint32_t> windowId = std::nullopt) {
    Source source;
    source.type = type;
    source.name = std::string(toString(type));
    source.configuration.windowId = windowId;
    return source;
}

void runQueuedCalls() { QCoreApplication::processEvents(); }

class ProgramBusTest : public SessionTest {
protected:
    void SetUp() override {
        SessionTest::SetUp();
        raiser = std::make_shared<FakeWindowRaiser>();
        session->setWindowRaiser(raiser);
    }

    // Gives scene A these sources and a selection, through the scene rule.
    StreamingScene sceneWithSources(std::vector<Source> sources) {
        StreamingScene edited = scene(0);
        edited.sources = std::move(sources);
        edited.selectedSourceId = edited.sources.front().id;
        session->updateScene(edited);
        return edited;
    }

    std::shared_ptr<FakeWindowRaiser> raiser;
};

TEST_F(ProgramBusTest, TwoGoLivesGiveTwoIdsAndTheSameSources) {
    const StreamingScene a = sceneWithSources({sourceOf(SourceType::camera), sourceOf(SourceType::screen)});
    LogCapture log;
    session->updateLive();
    const StreamingScene first = *session->programScene();
    session->updateLive();
    const StreamingScene second = *session->programScene();

    EXPECT_NE(first.id, a.id);
    EXPECT_NE(second.id, a.id);
    EXPECT_NE(first.id, second.id);
    for (const StreamingScene* program : {&first, &second}) {
        ASSERT_EQ(program->sources.size(), 2u);
        EXPECT_EQ(program->sources[0].id, a.sources[0].id);
        EXPECT_EQ(program->sources[1].id, a.sources[1].id);
        EXPECT_EQ(program->sources[1].type, SourceType::screen);
        EXPECT_FALSE(program->selectedSourceId);
        EXPECT_EQ(program->name, "A");
        EXPECT_EQ(program->layout, a.layout);
    }
    EXPECT_EQ(log.sessionLines(), (std::vector<std::string>{"📺 Updated live program with scene: A, sources: 2",
                                                            "📺 Updated live program with scene: A, sources: 2"}));
    EXPECT_EQ(log.count("✅ Preset saved: "), 0);  // the program is never stored
}

TEST_F(ProgramBusTest, EditsReachTheProgramBeforeTheFirstGoLiveOnly) {
    ASSERT_EQ(session->programScene()->id, scene(0).id);
    StreamingScene edited = scene(0);
    edited.name = "A before";
    session->updateScene(edited);
    EXPECT_EQ(session->programScene()->name, "A before");

    session->updateLive();
    edited.name = "A after";
    QSignalSpy program(session.get(), &StreamManager::programSceneChanged);
    session->updateScene(edited);
    EXPECT_EQ(session->programScene()->name, "A before");
    EXPECT_EQ(session->activeScene()->name, "A after");
    EXPECT_EQ(program.count(), 0);
}

TEST_F(ProgramBusTest, ProgramSceneAssignmentPostsTheUpdateSignal) {
    QSignalSpy update(session.get(), &StreamManager::streamManagerUpdate);
    setTransition(false, TransitionType::fade, 0.05);
    session->updateLive();
    EXPECT_EQ(update.count(), 1);
}

class TransitionNotPlaying : public ProgramBusTest,
                             public ::testing::WithParamInterface<std::pair<bool, TransitionType>> {};

TEST_P(TransitionNotPlaying, SceneChangesAndTheFlagNeverRises) {
    const auto [enabled, type] = GetParam();
    setTransition(enabled, type, 0.05);
    QSignalSpy flag(session.get(), &StreamManager::isTransitioningChanged);
    const Uuid before = session->programScene()->id;
    session->updateLive();
    EXPECT_NE(session->programScene()->id, before);
    EXPECT_FALSE(session->isTransitioning());
    EXPECT_FALSE(flag.wait(120));
    EXPECT_EQ(flag.count(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    NoneOrDisabled, TransitionNotPlaying,
    ::testing::Values(std::pair{true, TransitionType::none}, std::pair{false, TransitionType::none},
                      std::pair{false, TransitionType::fade}, std::pair{false, TransitionType::crossDissolve},
                      std::pair{false, TransitionType::slideLeft}, std::pair{false, TransitionType::fadeScale}));

TEST_F(ProgramBusTest, PlayingTransitionRaisesTheFlagFirstAndLowersItAfterTheDuration) {
    setTransition(true, TransitionType::slideUp, 0.05);
    bool flagUpWhenProgramChanged = false;
    QObject::connect(session.get(), &StreamManager::programSceneChanged, session.get(),
                     [&] { flagUpWhenProgramChanged = session->isTransitioning(); });
    QSignalSpy flag(session.get(), &StreamManager::isTransitioningChanged);
    QElapsedTimer clock;
    clock.start();
    session->updateLive();
    EXPECT_TRUE(flagUpWhenProgramChanged);
    EXPECT_TRUE(session->isTransitioning());
    ASSERT_TRUE(flag.wait(2000));
    EXPECT_FALSE(session->isTransitioning());
    EXPECT_GE(clock.elapsed(), 45);
    ASSERT_EQ(flag.count(), 2);
    EXPECT_TRUE(flag.at(0).at(0).toBool());
    EXPECT_FALSE(flag.at(1).at(0).toBool());
}

TEST_F(ProgramBusTest, TheFirstQueuedResetEndsTheFlagEvenWhileALaterGoLivePlays) {
    setTransition(true, TransitionType::fade, 0.05);
    session->updateLive();
    setTransition(true, TransitionType::fade, 30.0);  // a long second transition
    session->updateLive();
    QSignalSpy flag(session.get(), &StreamManager::isTransitioningChanged);
    ASSERT_TRUE(flag.wait(5000));  // far less than 30 s: the first reset fired
    EXPECT_FALSE(session->isTransitioning());
}

TEST_F(ProgramBusTest, DurationIsTakenAtTheMomentOfTheCall) {
    setTransition(true, TransitionType::fade, 30.0);
    session->updateLive();
    setTransition(true, TransitionType::fade, 0.05);  // too late for the go-live above
    QSignalSpy flag(session.get(), &StreamManager::isTransitioningChanged);
    EXPECT_FALSE(flag.wait(300));
    EXPECT_TRUE(session->isTransitioning());
}

TEST_F(ProgramBusTest, NegativeDurationStillEndsTheFlag) {
    setTransition(true, TransitionType::fade, -3);
    session->updateLive();
    EXPECT_TRUE(session->isTransitioning());
    QSignalSpy flag(session.get(), &StreamManager::isTransitioningChanged);
    ASSERT_TRUE(flag.wait(1000));
    EXPECT_FALSE(session->isTransitioning());
}

TEST(ProgramBusNoPreset, WithoutPresetOrSceneTheFlagRisesForTheDefaultFade) {
    test::TestHome home;
    auto session = home.startSession();
    QSignalSpy program(session.get(), &StreamManager::programSceneChanged);
    QSignalSpy flag(session.get(), &StreamManager::isTransitioningChanged);
    QElapsedTimer clock;
    clock.start();
    session->updateLive();
    EXPECT_TRUE(session->isTransitioning());
    EXPECT_EQ(program.count(), 0);
    EXPECT_FALSE(session->programScene());
    ASSERT_TRUE(flag.wait(5000));  // the fall; the rise was counted before
    ASSERT_EQ(flag.count(), 2);
    EXPECT_FALSE(session->isTransitioning());
    EXPECT_GE(clock.elapsed(), 1090);
    EXPECT_LT(clock.elapsed(), 4000);  // generous for a loaded machine; far below a wrong unit
}

// ------------------------------------------------------------ raising windows

TEST_F(ProgramBusTest, GoLiveRaisesTheFirstWindowSourceLater) {
    sceneWithSources({sourceOf(SourceType::camera), sourceOf(SourceType::window, 4242),
                      sourceOf(SourceType::window, 99)});
    session->updateLive();
    EXPECT_TRUE(raiser->raised.empty());  // queued, not called in place
    runQueuedCalls();
    EXPECT_EQ(raiser->raised, std::vector<std::uint32_t>{4242});
}

TEST_F(ProgramBusTest, WindowSourceWithoutIdRaisesNothing) {
    sceneWithSources({sourceOf(SourceType::window), sourceOf(SourceType::window, 5)});
    session->updateLive();
    runQueuedCalls();
    EXPECT_TRUE(raiser->raised.empty());
    EXPECT_TRUE(session->programScene());
}

TEST_F(ProgramBusTest, OtherSourcesNeverRaise) {
    sceneWithSources({sourceOf(SourceType::camera), sourceOf(SourceType::screen), sourceOf(SourceType::content)});
    session->updateLive();
    runQueuedCalls();
    EXPECT_TRUE(raiser->raised.empty());
}

TEST_F(ProgramBusTest, RaiseWithoutARaiserAttachedIsHarmless) {
    session->setWindowRaiser(nullptr);
    sceneWithSources({sourceOf(SourceType::window, 1)});
    session->updateLive();
    runQueuedCalls();
    EXPECT_TRUE(session->programScene());
}

TEST_F(ProgramBusTest, BringMainWindowToFrontIsQueued) {
    auto layer = std::make_shared<FakeWindowLayer>();
    session->setWindowLayer(layer);
    LogCapture log;
    session->bringMainWindowToFront();
    EXPECT_EQ(layer->applicationBroughtToFront, 0);
    runQueuedCalls();
    EXPECT_EQ(layer->applicationBroughtToFront, 1);
    EXPECT_EQ(log.sessionLines(), std::vector<std::string>{"🪟 Main app window brought to front"});
}

}  // namespace
}  // namespace orvane

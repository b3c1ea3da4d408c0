// Keys 1 to 9 and B, on a fake clock: single presses, double presses within
// half a second, and keys that find no scene.

#include <QSignalSpy>

#include <algorithm>

#include <gtest/gtest.h>

#include "document/PresetTemplates.h"
#include "engine/KeyboardNavigationManager.h"
#include "engine/StreamManager.h"
#include "support/LogCapture.h"
#include "support/SessionTest.h"

namespace orvane {
namespace keyboard_navigation_manager_test {

using test::LogCapture;
using test::SessionTest;
using Result = KeyboardNavigationManager::KeyResult;

class KeyboardTest : public SessionTest {
protected:
    void SetUp() override {
        SessionTest::SetUp();
        setTransition(false, TransitionType::fade, 0.05);
        keys = std::make_unique<KeyboardNavigationManager>(*session, [this] { return clockNow; });
        program = std::make_unique<QSignalSpy>(session.get(), &StreamManager::programSceneChanged);
    }
    void advance(int ms) { clockNow = clockNow.addMSecs(ms); }
    int goLives() const { return static_cast<int>(program->count()); }

    QDateTime clockNow = QDateTime::fromMSecsSinceEpoch(1'700'000'000'000, Qt::UTC);
    std::unique_ptr<KeyboardNavigationManager> keys;
    std::unique_ptr<QSignalSpy> program;
};

TEST_F(KeyboardTest, AKeyBeyondTheScenesLogsOnceAndChangesNothing) {
    keys->handleKeyPress("2");  // arms "2"
    advance(100);
    LogCapture log;
    EXPECT_TRUE(keys->handleKeyPress("5"));
    EXPECT_EQ(log.sessionLines(),
              (std::vector<std::string>{"🎹 KeyboardNavigationManager: Received key '5'",
                                        "🎹 KeyboardNavigationManager: Key 5: No scene at index 4 (total scenes: 3)"}));
    EXPECT_EQ(session->activeScene()->name, "B");
    EXPECT_EQ(keys->lastPressedKey(), QStringLiteral("2"));
    EXPECT_EQ(keys->deliverKey("5", false), Result::handled);
}

TEST_F(KeyboardTest, SinglePressSwitchesThePreviewOnly) {
    LogCapture log;
    EXPECT_TRUE(keys->handleKeyPress("3"));
    EXPECT_EQ(session->activeScene()->name, "C");
    EXPECT_EQ(goLives(), 0);
    EXPECT_EQ(keys->lastPressedKey(), QStringLiteral("3"));
    EXPECT_EQ(keys->lastKeyPressTime(), clockNow);
    EXPECT_EQ(log.sessionLines(), (std::vector<std::string>{"🎹 KeyboardNavigationManager: Received key '3'",
                                                            "🎹 Key 3: Switching to scene 'C'"}));
}

TEST_F(KeyboardTest, TwoPressesWithin04SecondsGoLiveOnce) {
    keys->handleKeyPress("2");
    advance(400);
    LogCapture log;
    keys->handleKeyPress("2");
    EXPECT_EQ(goLives(), 1);
    EXPECT_EQ(session->programScene()->name, "B");
    EXPECT_NE(session->programScene()->id, scene(1).id);
    EXPECT_EQ(keys->lastPressedKey(), QString());
    EXPECT_EQ(log.sessionLines(), (std::vector<std::string>{"🎹 KeyboardNavigationManager: Received key '2'",
                                                            "🎹 Key 2 (double): Going live with scene 'B'",
                                                            "📺 Updated live program with scene: B, sources: 0",
                                                            "🔴 LIVE: 'B' is now on air!"}));
}

TEST_F(KeyboardTest, ExactlyHalfASecondStillCountsAsDouble) {
    keys->handleKeyPress("1");
    advance(500);
    keys->handleKeyPress("1");
    EXPECT_EQ(goLives(), 1);
}

TEST_F(KeyboardTest, JustOverHalfASecondIsANewFirstPress) {
    keys->handleKeyPress("1");
    advance(501);
    keys->handleKeyPress("1");
    EXPECT_EQ(goLives(), 0);
    EXPECT_EQ(keys->lastPressedKey(), QStringLiteral("1"));
}

TEST_F(KeyboardTest, ThreeQuickPressesAreSingleDoubleSingle) {
    LogCapture log;
    keys->handleKeyPress("1");
    advance(100);
    keys->handleKeyPress("1");
    advance(100);
    keys->handleKeyPress("1");
    EXPECT_EQ(goLives(), 1);
    EXPECT_EQ(log.count("🎹 Key 1: Switching to scene 'A'"), 2);
    EXPECT_EQ(log.count("🎹 Key 1 (double): Going live with scene 'A'"), 1);
    EXPECT_EQ(keys->lastPressedKey(), QStringLiteral("1"));
}

TEST_F(KeyboardTest, AnotherKeyBetweenResetsThePair) {
    LogCapture log;
    keys->handleKeyPress("1");
    advance(100);
    keys->handleKeyPress("2");
    advance(100);
    keys->handleKeyPress("1");
    EXPECT_EQ(goLives(), 0);
    EXPECT_EQ(log.count("🎹 Key 1: Switching to scene 'A'"), 2);
    EXPECT_EQ(log.count("🎹 Key 2: Switching to scene 'B'"), 1);
    EXPECT_EQ(session->activeScene()->name, "A");
}

TEST_F(KeyboardTest, DoublePressPutsTheKeysSceneInPreviewWhenItMovedInBetween) {
    keys->handleKeyPress("1");
    session->switchToScene(scene(2));  // the mouse picked C meanwhile
    advance(200);
    keys->handleKeyPress("1");
    EXPECT_EQ(session->activeScene()->name, "A");
    EXPECT_EQ(session->programScene()->name, "A");
}

TEST_F(KeyboardTest, TextFieldInFocusLetsTheDigitThrough) {
    LogCapture log;
    EXPECT_EQ(keys->deliverKey("1", true), Result::ignored);
    EXPECT_EQ(log.sessionLines(),
              (std::vector<std::string>{"🎹 Key 1 pressed", "🎹 Text field focused, ignoring shortcut"}));
    EXPECT_EQ(keys->lastPressedKey(), QString());
    EXPECT_EQ(session->activeScene()->name, "A");
}

TEST_F(KeyboardTest, DeliveredKeyIsLoggedAndHandled) {
    LogCapture log;
    EXPECT_EQ(keys->deliverKey("2", false), Result::handled);
    EXPECT_EQ(log.sessionLines().front(), "🎹 Key 2 pressed");
    EXPECT_EQ(session->activeScene()->name, "B");
}

TEST_F(KeyboardTest, BlurKeyWithATextFieldIsIgnored) {
    LogCapture log;
    EXPECT_EQ(keys->deliverKey("b", true), Result::ignored);
    EXPECT_FALSE(session->isBlurModeActive());
    EXPECT_EQ(log.sessionLines(),
              (std::vector<std::string>{"🎹 Key B pressed", "🎹 Text field focused, ignoring shortcut"}));
}

TEST_F(KeyboardTest, BlurKeyTogglesWithoutDoublePressLogic) {
    LogCapture log;
    EXPECT_EQ(keys->deliverKey("b", false), Result::handled);
    advance(100);
    EXPECT_TRUE(keys->handleKeyPress("b"));
    EXPECT_FALSE(session->isBlurModeActive());
    EXPECT_EQ(goLives(), 0);
    EXPECT_EQ(log.sessionLines(), (std::vector<std::string>{"🎹 Key B pressed",
                                                            "🎹 KeyboardNavigationManager: Blur toggle activated",
                                                            "🔒 Blur mode activated",
                                                            "🎹 KeyboardNavigationManager: Blur toggle activated",
                                                            "🔒 Blur mode deactivated"}));
}

TEST_F(KeyboardTest, KeysThatAreNoSceneNumberAreRefused) {
    for (const char* key : {"0", "x", "-1", ""}) {
        LogCapture log;
        EXPECT_FALSE(keys->handleKeyPress(key)) << key;
        EXPECT_EQ(log.sessionLines().back(), "🎹 KeyboardNavigationManager: Invalid key number");
    }
}

// Ten scenes: the digit keys reach the first nine, and nothing typed on the
// keyboard reaches the tenth, whether a key is pressed once, twice in quick
// succession, or right after another. Only a pick with the mouse does.
TEST(KeyboardTenScenes, TheTenthSceneHasNoKey) {
    test::TestHome home;
    std::vector<std::string> names;
    for (int i = 1; i <= 10; ++i) names.push_back("S" + std::to_string(i));
    home.savePreset(test::presetWithScenes("Ten", names));
    auto session = home.startSession();
    ASSERT_TRUE(session->currentPreset());
    ASSERT_EQ(session->currentPreset()->scenes.size(), 10u);
    const Uuid tenth = session->currentPreset()->scenes[9].id;

    QDateTime now = QDateTime::fromMSecsSinceEpoch(1'700'000'000'000, Qt::UTC);
    KeyboardNavigationManager keys(*session, [&now] { return now; });

    // Every scene that reached preview or program on the way, by name.
    std::vector<std::string> previewed, aired;
    QObject::connect(session.get(), &StreamManager::activeSceneChanged, [&] {
        if (session->activeScene()) previewed.push_back(session->activeScene()->name);
    });
    QObject::connect(session.get(), &StreamManager::programSceneChanged, [&] {
        if (session->programScene()) aired.push_back(session->programScene()->name);
    });
    auto press = [&](const QString& key, int msLater) {
        now = now.addMSecs(msLater);
        EXPECT_EQ(keys.deliverKey(key, false), Result::handled) << key.toStdString();
        ASSERT_TRUE(session->activeScene());
        EXPECT_NE(session->activeScene()->id, tenth) << "after " << key.toStdString();
        if (session->programScene()) {
            EXPECT_NE(session->programScene()->name, "S10") << key.toStdString();
        }
    };

    const QStringList digits{"1", "2", "3", "4", "5", "6", "7", "8", "9", "0"};
    for (const QString& key : digits) {
        LogCapture log;
        const auto goLivesBefore = aired.size();
        press(key, 1000);  // a first press
        press(key, 200);   // and the second within half a second
        if (key == QLatin1String("0")) {
            EXPECT_EQ(log.count("🎹 KeyboardNavigationManager: Invalid key number"), 2);
            EXPECT_EQ(aired.size(), goLivesBefore);
        } else {
            const std::string expected = "S" + key.toStdString();
            EXPECT_EQ(session->activeScene()->name, expected);
            ASSERT_EQ(aired.size(), goLivesBefore + 1) << key.toStdString();
            EXPECT_EQ(aired.back(), expected);
        }
    }
    // "1" then "0" at typing speed is two keys, not the number ten; nor is
    // any other digit followed by a quick "0", once or twice.
    for (const QString& first : digits) {
        press(first, 600);
        press(QStringLiteral("0"), 50);
        press(QStringLiteral("0"), 50);
    }
    EXPECT_EQ(std::count(previewed.begin(), previewed.end(), "S10"), 0);
    EXPECT_EQ(std::count(aired.begin(), aired.end(), "S10"), 0);
    // All nine keyed scenes did go on air along the way.
    for (int i = 1; i <= 9; ++i)
        EXPECT_GT(std::count(aired.begin(), aired.end(), "S" + std::to_string(i)), 0) << i;

    // The mouse reaches it: a click in the scene list switches to it.
    session->switchToScene(session->currentPreset()->scenes[9]);
    EXPECT_EQ(session->activeScene()->id, tenth);
}

TEST(KeyboardNoPreset, DigitsLogAndDoNothingWhileBStillToggles) {
    test::TestHome home;
    auto session = home.startSession();
    KeyboardNavigationManager keys(*session);
    LogCapture log;
    EXPECT_TRUE(keys.handleKeyPress("1"));
    EXPECT_TRUE(keys.handleKeyPress("1"));
    EXPECT_FALSE(session->activeScene());
    EXPECT_FALSE(session->programScene());
    EXPECT_EQ(log.count("🎹 KeyboardNavigationManager: No preset or scenes available"), 2);
    EXPECT_TRUE(keys.handleKeyPress("b"));
    EXPECT_TRUE(session->isBlurModeActive());
}

}  // namespace
}  // namespace orvane

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonValue>

#include "support/PageDriver.h"
#include "support/ServerFixture.h"

using namespace orvane::test;

namespace remote_page_browser_test {

const QString kButtonTexts =
    QStringLiteral("Array.from(document.querySelectorAll('.scene-button')).map(b => b.textContent)");
const QString kActiveButtons = QStringLiteral(
    "Array.from(document.querySelectorAll('.scene-button')).flatMap((b, i) => b.classList.contains('active') ? [i] : [])");
const QString kStatusLine = QStringLiteral(
    "document.getElementById('status').className + ' | ' + document.getElementById('status').textContent");
const QString kLiveText = QStringLiteral("document.getElementById('liveButton').textContent");
const QString kBlurState = QStringLiteral(
    "document.getElementById('blurButton').textContent + ' | ' + document.getElementById('blurButton').className");

QJsonArray strings(std::initializer_list<const char*> items) {
    QJsonArray out;
    for (const char* s : items) out.append(QString::fromUtf8(s));
    return out;
}

class RemotePageBrowser : public ServerFixture {
protected:
    void SetUp() override {
        ServerFixture::SetUp();
        driver = std::make_unique<PageDriver>();
        ASSERT_TRUE(driver->ready()) << driver->lastError().toStdString();
        ASSERT_TRUE(driver->navigate(QStringLiteral("http://127.0.0.1:%1/").arg(port)))
            << driver->lastError().toStdString();
    }
    void TearDown() override {
        driver.reset();
        ServerFixture::TearDown();
    }
    std::unique_ptr<PageDriver> driver;
};

#define EXPECT_PAGE(expr, value) \
    EXPECT_TRUE(driver->waitForValue(expr, value)) << driver->lastError().toStdString()


TEST_F(RemotePageBrowser, DrivesTheSession) {
    // The scenes of the session, the first one active.
    EXPECT_PAGE(kButtonTexts, strings({"1Intro", "2Talk", "3Outro"}));
    EXPECT_PAGE(kActiveButtons, QJsonArray{0});
    EXPECT_PAGE(kStatusLine, QStringLiteral("status connected | ✅ Connected to OrvaneUI"));
    EXPECT_EQ(driver->evaluate(QStringLiteral("document.title")), QStringLiteral("OrvaneUI Remote"));

    // A tap on a scene button changes the session's active scene.
    ASSERT_TRUE(driver->click(QStringLiteral(".scene-button"), 1));
    EXPECT_TRUE(waitUntil([&] { return session->activeIndex() == 1; }));
    EXPECT_PAGE(kActiveButtons, QJsonArray{1});

    // Go Live: the program scene follows, and the button says so for a while.
    ASSERT_TRUE(driver->click(QStringLiteral("#liveButton")));
    EXPECT_TRUE(waitUntil([&] { return session->programScene() && session->programScene()->name == "Talk"; }));
    EXPECT_PAGE(kLiveText, QStringLiteral("🔴 LIVE!"));
    EXPECT_PAGE(QStringLiteral("document.getElementById('liveButton').style.background.includes('rgb(239, 68, 68)')"),
                true);
    EXPECT_TRUE(driver->waitForValue(kLiveText, QStringLiteral("🔴 Go Live"), 4000)) << driver->lastError().toStdString();

    // Blur: flips the session's flag, and the button follows its replies.
    ASSERT_TRUE(driver->click(QStringLiteral("#blurButton")));
    EXPECT_TRUE(waitUntil([&] { return session->isBlurModeActive(); }));
    EXPECT_PAGE(kBlurState, QStringLiteral("🔓 Remove Blur | control-button active"));
    ASSERT_TRUE(driver->click(QStringLiteral("#blurButton")));
    EXPECT_TRUE(waitUntil([&] { return !session->isBlurModeActive(); }));
    EXPECT_PAGE(kBlurState, QStringLiteral("🔒 Toggle Blur | control-button"));

    // Digit keys switch scenes; a digit without a scene does nothing; B blurs.
    ASSERT_TRUE(driver->key(QStringLiteral("3")));
    EXPECT_TRUE(waitUntil([&] { return session->activeIndex() == 2; }));
    EXPECT_PAGE(kActiveButtons, QJsonArray{2});
    const int before = session->actionsApplied();
    ASSERT_TRUE(driver->key(QStringLiteral("7")));
    spinFor(300);
    EXPECT_EQ(session->actionsApplied(), before);
    ASSERT_TRUE(driver->key(QStringLiteral("b")));
    EXPECT_TRUE(waitUntil([&] { return session->isBlurModeActive(); }));
    EXPECT_PAGE(kBlurState, QStringLiteral("🔓 Remove Blur | control-button active"));

    // A change made at the console shows at the next refresh.
    session->setActiveIndex(0);
    EXPECT_PAGE(kActiveButtons, QJsonArray{0});
    session->loadPreset({"Intro", "Talk", "Outro", "Q&A"}, 3);
    EXPECT_PAGE(kButtonTexts, strings({"1Intro", "2Talk", "3Outro", "4Q&A"}));
    EXPECT_PAGE(kActiveButtons, QJsonArray{3});

    // Without a preset the page reports a failed connection.
    session->unloadPreset();
    EXPECT_PAGE(kStatusLine, QStringLiteral("status disconnected | ❌ Connection failed"));
    session->loadPreset({"Intro"});
    EXPECT_PAGE(kStatusLine, QStringLiteral("status connected | ✅ Connected to OrvaneUI"));

    // A stopped server: the grid keeps its buttons; a restart recovers.
    manager->stopServer();
    EXPECT_PAGE(kStatusLine, QStringLiteral("status disconnected | ❌ Connection failed"));
    EXPECT_EQ(driver->evaluate(kButtonTexts), strings({"1Intro"}));
    manager->setServerPort(port);
    manager->startServer();
    ASSERT_TRUE(waitUntil([&] { return manager->isServerRunning(); }));
    EXPECT_PAGE(kStatusLine, QStringLiteral("status connected | ✅ Connected to OrvaneUI"));
}

TEST_F(RemotePageBrowser, MoreThanNineScenesNumberOnButDigitsReachNine) {
    std::vector<std::string> names;
    QJsonArray numbers;
    for (int i = 1; i <= 11; ++i) {
        names.push_back("Scene " + std::to_string(i));
        numbers.append(QString::number(i));
    }
    session->loadPreset(names, 0);
    EXPECT_PAGE(QStringLiteral("document.querySelectorAll('.scene-button').length"), 11);
    EXPECT_PAGE(QStringLiteral("Array.from(document.querySelectorAll('.scene-button .number')).map(n => n.textContent)"),
                numbers);
    EXPECT_PAGE(QStringLiteral("document.querySelectorAll('.scene-button')[10].textContent"),
                QStringLiteral("11Scene 11"));
    EXPECT_PAGE(kActiveButtons, QJsonArray{0});

    // "9" is the ninth scene.
    ASSERT_TRUE(driver->key(QStringLiteral("9")));
    EXPECT_TRUE(waitUntil([&] { return session->activeIndex() == 8; }));
    EXPECT_PAGE(kActiveButtons, QJsonArray{8});

    // "0" is no scene: not the tenth, and not a switch at all.
    const int before = session->actionsApplied();
    ASSERT_TRUE(driver->key(QStringLiteral("0")));
    spinFor(500);
    EXPECT_EQ(session->actionsApplied(), before);
    EXPECT_EQ(session->activeIndex(), 8);
    EXPECT_EQ(driver->evaluate(kActiveButtons), QJsonArray{8});

    // The tenth and eleventh scenes are a tap away.
    ASSERT_TRUE(driver->click(QStringLiteral(".scene-button"), 10));
    EXPECT_TRUE(waitUntil([&] { return session->activeIndex() == 10; }));
    EXPECT_PAGE(kActiveButtons, QJsonArray{10});
}

TEST_F(RemotePageBrowser, NoActiveSceneMarksNoButton) {
    EXPECT_PAGE(kActiveButtons, QJsonArray{0});
    session->setActiveIndex(std::nullopt);
    EXPECT_PAGE(kActiveButtons, QJsonArray{});
    EXPECT_PAGE(kButtonTexts, strings({"1Intro", "2Talk", "3Outro"}));
    EXPECT_PAGE(kStatusLine, QStringLiteral("status connected | ✅ Connected to OrvaneUI"));

    // A fresh page on a session without an active scene starts unmarked too.
    session->loadPreset({"Alpha", "Beta"}, std::nullopt);
    ASSERT_TRUE(driver->navigate(QStringLiteral("http://127.0.0.1:%1/").arg(port))) << driver->lastError().toStdString();
    EXPECT_PAGE(kButtonTexts, strings({"1Alpha", "2Beta"}));
    EXPECT_EQ(driver->evaluate(kActiveButtons), QJsonArray{});
    spinFor(2500);  // past one refresh
    EXPECT_EQ(driver->evaluate(kActiveButtons), QJsonArray{});
}

TEST_F(RemotePageBrowser, SceneNamesAreTextNotMarkup) {
    session->loadPreset({"<img src=x onerror=alert(1)>", "<b>Bold</b> & \"quoted\""});
    EXPECT_PAGE(kButtonTexts, strings({"1<img src=x onerror=alert(1)>", "2<b>Bold</b> & \"quoted\""}));
    EXPECT_EQ(driver->evaluate(QStringLiteral("document.querySelectorAll('#scenes img, #scenes b').length")), 0);
    spinFor(500);
    EXPECT_EQ(driver->dialogCount(), 0);

    // The dialog detector itself works: a real alert is seen.
    driver->evaluate(QStringLiteral("setTimeout(() => alert('probe'), 0); true"));
    EXPECT_TRUE(waitUntil([&] { return driver->dialogCount() == 1; }, 3000));
}

TEST_F(RemotePageBrowser, LooksAsDesigned) {
    EXPECT_PAGE(kActiveButtons, QJsonArray{0});
    const auto style = [&](const char* selector, const char* property) {
        return driver->evaluate(QStringLiteral("getComputedStyle(document.querySelector('%1')).%2")
                                    .arg(QString::fromUtf8(selector), QString::fromUtf8(property)));
    };
    EXPECT_EQ(style("body", "backgroundImage"),
              QStringLiteral("linear-gradient(135deg, rgb(33, 37, 41) 0%, rgb(52, 58, 64) 50%, rgb(73, 80, 87) 100%)"));
    EXPECT_EQ(style("body", "color"), QStringLiteral("rgb(255, 255, 255)"));
    EXPECT_EQ(style(".container", "maxWidth"), QStringLiteral("900px"));
    EXPECT_EQ(style(".container", "borderTopLeftRadius"), QStringLiteral("16px"));
    EXPECT_EQ(style(".container", "backgroundColor"), QStringLiteral("rgba(33, 37, 41, 0.95)"));
    EXPECT_EQ(style("h1", "fontWeight"), QStringLiteral("600"));
    EXPECT_EQ(style("#status", "color"), QStringLiteral("rgb(34, 197, 94)"));
    EXPECT_EQ(style(".scene-button.active", "backgroundColor"), QStringLiteral("rgba(139, 92, 246, 0.2)"));
    EXPECT_EQ(style(".scene-button.active", "borderTopColor"), QStringLiteral("rgb(139, 92, 246)"));
    EXPECT_EQ(style(".scene-button.active", "color"), QStringLiteral("rgb(196, 181, 253)"));
    EXPECT_EQ(style(".scene-button", "minHeight"), QStringLiteral("60px"));
    EXPECT_EQ(style(".number", "position"), QStringLiteral("absolute"));
    EXPECT_EQ(style(".number", "top"), QStringLiteral("8px"));
    EXPECT_EQ(style(".number", "right"), QStringLiteral("10px"));
    EXPECT_EQ(style(".number", "width"), QStringLiteral("24px"));
    EXPECT_EQ(style("#liveButton", "textTransform"), QStringLiteral("uppercase"));
    EXPECT_EQ(style("#liveButton", "backgroundImage"),
              QStringLiteral("linear-gradient(135deg, rgb(139, 92, 246) 0%, rgb(168, 85, 247) 100%)"));
    EXPECT_EQ(style("#blurButton", "backgroundColor"), QStringLiteral("rgba(255, 255, 255, 0.08)"));
    // 800 px wide: the grid fits three columns of at least 180 px.
    EXPECT_EQ(driver->evaluate(QStringLiteral(
                  "getComputedStyle(document.getElementById('scenes')).gridTemplateColumns.split(' ').length")),
              3);

    // A telephone: two equal columns, the header stacked, a smaller title.
    ASSERT_TRUE(driver->setViewport(400, 800));
    EXPECT_PAGE(QStringLiteral("(() => { const c = getComputedStyle(document.getElementById('scenes'))"
                               ".gridTemplateColumns.split(' '); return c.length === 2 && c[0] === c[1]; })()"),
                true);
    EXPECT_EQ(style(".header", "flexDirection"), QStringLiteral("column"));
    EXPECT_EQ(style(".container", "paddingTop"), QStringLiteral("16px"));
    EXPECT_EQ(driver->evaluate(QStringLiteral(
                  "parseFloat(getComputedStyle(document.querySelector('h1')).fontSize) / "
                  "parseFloat(getComputedStyle(document.querySelector('.header')).fontSize)")),
              1.8);
}

}  // namespace remote_page_browser_test

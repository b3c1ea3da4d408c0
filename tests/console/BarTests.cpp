#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTest>
#include <gtest/gtest.h>
#include <map>

#include "ConsoleTestSupport.h"
#include "console/bars/BottomBarView.h"
#include "console/bars/TopBarView.h"
#include "console/controls/SymbolButton.h"
#include "document/PresetTemplates.h"
#include "remote/WebServerManager.h"
#include "teleprompter/TeleprompterManager.h"

namespace orvane {
namespace bar_tests {

using test::Session;

TEST(ConsoleBars, ServerAddressAndRemoteFollowTheServer) {
    Session s;
    WebServerManager server;
    server.setServerPort(0);  // any free port
    TopBarView top(*s.streamManager, s.windowManager);
    BottomBarView bottom(*s.streamManager);
    top.setWebServer(&server);
    bottom.setWebServer(&server);
    top.show();
    bottom.show();
    EXPECT_FALSE(top.remoteButton()->isVisibleTo(&top));
    EXPECT_FALSE(bottom.serverBlock()->isVisibleTo(&bottom));

    server.startServer();
    ASSERT_TRUE(QTest::qWaitFor([&] { return server.isServerRunning(); }, 5000));
    EXPECT_TRUE(top.remoteButton()->isVisibleTo(&top));
    ASSERT_TRUE(bottom.serverBlock()->isVisibleTo(&bottom));
    bool found = false;
    for (QLabel* label : bottom.serverBlock()->findChildren<QLabel*>())
        found = found || label->text() == server.accessUrl();
    EXPECT_TRUE(found) << server.accessUrl().toStdString();

    server.stopServer();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !server.isServerRunning(); }, 5000));
    EXPECT_FALSE(top.remoteButton()->isVisibleTo(&top));
    EXPECT_FALSE(bottom.serverBlock()->isVisibleTo(&bottom));
}

TEST(ConsoleBars, AServerHandedOverLaterIsFollowedAndTheOldOneForgotten) {
    Session s;
    WebServerManager first;
    first.setServerPort(0);
    first.startServer();
    ASSERT_TRUE(QTest::qWaitFor([&] { return first.isServerRunning(); }, 5000));
    WebServerManager second;
    BottomBarView bottom(*s.streamManager);
    bottom.show();
    EXPECT_FALSE(bottom.serverBlock()->isVisibleTo(&bottom));  // no server yet

    bottom.setWebServer(&first);
    EXPECT_TRUE(bottom.serverBlock()->isVisibleTo(&bottom));
    bottom.setWebServer(&second);
    EXPECT_FALSE(bottom.serverBlock()->isVisibleTo(&bottom));
    first.stopServer();
    first.startServer();  // the first server no longer reaches the bar
    ASSERT_TRUE(QTest::qWaitFor([&] { return first.isServerRunning(); }, 5000));
    EXPECT_FALSE(bottom.serverBlock()->isVisibleTo(&bottom));
    first.stopServer();
}

TEST(ConsoleBars, PresetNameEditing) {
    Session s;
    TopBarView top(*s.streamManager, s.windowManager);
    top.show();
    top.setPresetName(QStringLiteral("Morning"));
    QStringList edited;
    QObject::connect(&top, &TopBarView::presetNameEdited, [&](const QString& n) { edited << n; });

    top.startEditing();
    top.presetNameField()->setText(QStringLiteral("Changed"));
    top.cancelEditing();
    EXPECT_FALSE(top.isEditingPreset());
    EXPECT_EQ(top.presetName(), QStringLiteral("Morning"));

    top.startEditing();
    top.presetNameField()->clear();
    QTest::keyClick(top.presetNameField(), Qt::Key_Return);
    EXPECT_FALSE(top.isEditingPreset());
    EXPECT_EQ(top.presetName(), QStringLiteral("Morning"));
    EXPECT_TRUE(edited.isEmpty());

    top.startEditing();
    top.presetNameField()->setText(QStringLiteral("Evening"));
    QTest::keyClick(top.presetNameField(), Qt::Key_Return);
    EXPECT_EQ(top.presetName(), QStringLiteral("Evening"));
    EXPECT_EQ(edited, QStringList{QStringLiteral("Evening")});
}

TEST(ConsoleBars, BlurAndPerformanceSwitches) {
    Session s;
    BottomBarView bottom(*s.streamManager);
    bottom.show();
    EXPECT_FALSE(bottom.statsBlock()->isVisibleTo(&bottom));
    QTest::mouseClick(bottom.blurButton(), Qt::LeftButton);
    EXPECT_TRUE(s.streamManager->isBlurModeActive());
    EXPECT_EQ(bottom.blurButton()->symbol(), "eye.slash.fill");
    QTest::mouseClick(bottom.performanceButton(), Qt::LeftButton);
    EXPECT_TRUE(s.streamManager->showPerformanceStats());
    EXPECT_TRUE(bottom.statsBlock()->isVisibleTo(&bottom));
    QTest::mouseClick(bottom.performanceButton(), Qt::LeftButton);
    EXPECT_FALSE(bottom.statsBlock()->isVisibleTo(&bottom));
}

TEST(ConsoleBars, PerformanceReadOutsCarryTheirLabelsAndFormats) {
    Session s;
    BottomBarView bottom(*s.streamManager);
    bottom.show();
    QTest::mouseClick(bottom.performanceButton(), Qt::LeftButton);
    QStringList labels;
    std::map<QString, QLabel*> values;
    for (QLabel* label : bottom.statsBlock()->findChildren<QLabel*>()) {
        if (!label->text().isEmpty() && label->accessibleName().isEmpty()) labels << label->text();
        if (!label->accessibleName().isEmpty()) values[label->accessibleName()] = label;
    }
    EXPECT_EQ(labels, (QStringList{"CPU:", "MEM:", "FPS:"}));
    ASSERT_EQ(values.size(), 3u);
    const QRegularExpression cpu(QStringLiteral("^\\d+\\.\\d%$"));
    const QRegularExpression memory(QStringLiteral("^\\d+ MB$"));
    const QRegularExpression fps(QStringLiteral("^\\d+$"));
    EXPECT_TRUE(cpu.match(values["CPU:"]->text()).hasMatch()) << values["CPU:"]->text().toStdString();
    EXPECT_TRUE(memory.match(values["MEM:"]->text()).hasMatch()) << values["MEM:"]->text().toStdString();
    EXPECT_TRUE(fps.match(values["FPS:"]->text()).hasMatch()) << values["FPS:"]->text().toStdString();
    for (const auto& [name, value] : values) {
        EXPECT_TRUE(value->font().fixedPitch()) << name.toStdString();
        EXPECT_EQ(value->font().weight(), QFont::Bold) << name.toStdString();
        EXPECT_EQ(value->font().pixelSize(), 10) << name.toStdString();
    }
}

TEST(ConsoleBars, TeleprompterButtonFollowsThePresetSwitchAndTheWindow) {
    Session s;
    Preset preset = createPreset("Script", PresetTemplate::custom);
    s.streamManager->setCurrentPreset(preset);
    auto owned = std::make_unique<TeleprompterManager>(*s.streamManager);
    TeleprompterManager* teleprompter = owned.get();
    BottomBarView bottom(*s.streamManager);
    bottom.setTeleprompterManager(teleprompter);
    bottom.show();
    SymbolButton* button = bottom.teleprompterButton();
    EXPECT_EQ(button->accessibleName(), QStringLiteral("Teleprompter"));
    EXPECT_EQ(button->toolTip(), QStringLiteral("Toggle teleprompter window"));
    // A preset without teleprompter settings shows no button.
    EXPECT_FALSE(button->isVisibleTo(&bottom));

    Preset on = *s.streamManager->currentPreset();
    on.teleprompter = TeleprompterConfig{};
    on.teleprompter->enabled = true;
    on.teleprompter->text = "Hello";
    s.streamManager->setCurrentPreset(on);
    ASSERT_TRUE(button->isVisibleTo(&bottom));
    EXPECT_EQ(button->symbol(), "text.alignleft");

    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(teleprompter->isTeleprompterWindowOpen());
    EXPECT_EQ(button->symbol(), "text.alignleft.fill");
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_FALSE(teleprompter->isTeleprompterWindowOpen());
    EXPECT_EQ(button->symbol(), "text.alignleft");

    // Switched off in the preset: no button, even while the window is open.
    QTest::mouseClick(button, Qt::LeftButton);
    ASSERT_TRUE(teleprompter->isTeleprompterWindowOpen());
    Preset off = *s.streamManager->currentPreset();
    off.teleprompter->enabled = false;
    s.streamManager->setCurrentPreset(off);
    EXPECT_FALSE(button->isVisibleTo(&bottom));
    teleprompter->closeTeleprompterWindow();
}

}  // namespace
}  // namespace orvane

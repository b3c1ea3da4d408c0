#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSlider>
#include <gtest/gtest.h>

#include "TeleprompterTestSupport.h"
#include "teleprompter/TeleprompterConfigView.h"
#include "teleprompter/TeleprompterSection.h"

namespace orvane {
namespace teleprompter_panels_tests {

using test::LogCapture;
using test::TeleprompterFixture;

QPushButton* button(QWidget* root, const QString& text) {
    for (auto* b : root->findChildren<QPushButton*>())
        if (b->text() == text || b->accessibleName() == text) return b;
    return nullptr;
}

QSlider* slider(QWidget* root, const QString& name) {
    for (auto* s : root->findChildren<QSlider*>())
        if (s->accessibleName() == name) return s;
    return nullptr;
}

bool showsLabel(QWidget* root, const QString& text) {
    for (auto* label : root->findChildren<QLabel*>())
        if (label->text() == text && label->isVisibleTo(root)) return true;
    return false;
}

TEST(TeleprompterConfigView, SaveIsDisabledUntilAChange) {
    TeleprompterFixture f;
    TeleprompterConfigView sheet(*f.session, f.settings(), f.manager.get());
    QPushButton* save = button(&sheet, QStringLiteral("Save Changes"));
    ASSERT_NE(save, nullptr);
    EXPECT_FALSE(save->isEnabled());
    slider(&sheet, QStringLiteral("Font Size"))->setValue(30);
    EXPECT_TRUE(save->isEnabled());
    EXPECT_DOUBLE_EQ(sheet.config().fontSize, 30.0);
    EXPECT_TRUE(showsLabel(&sheet, QStringLiteral("30pt")));
}

TEST(TeleprompterConfigView, SlidersKeepTheirRangesStepsAndReadouts) {
    TeleprompterFixture f;
    TeleprompterConfigView sheet(*f.session, f.settings(), f.manager.get());
    slider(&sheet, QStringLiteral("Opacity"))->setValue(slider(&sheet, QStringLiteral("Opacity"))->minimum());
    EXPECT_NEAR(sheet.config().opacity, 0.1, 1e-9);
    EXPECT_TRUE(showsLabel(&sheet, QStringLiteral("10%")));
    slider(&sheet, QStringLiteral("Scroll Speed"))->setValue(slider(&sheet, QStringLiteral("Scroll Speed"))->maximum());
    EXPECT_NEAR(sheet.config().scrollSpeed, 3.0, 1e-9);
    EXPECT_TRUE(showsLabel(&sheet, QStringLiteral("3.0x")));
    slider(&sheet, QStringLiteral("Width"))->setValue(slider(&sheet, QStringLiteral("Width"))->minimum());
    EXPECT_DOUBLE_EQ(sheet.config().width, 400.0);
    slider(&sheet, QStringLiteral("Height"))->setValue(slider(&sheet, QStringLiteral("Height"))->maximum());
    EXPECT_DOUBLE_EQ(sheet.config().height, 800.0);
    EXPECT_TRUE(showsLabel(&sheet, QStringLiteral("800px")));
    EXPECT_EQ(slider(&sheet, QStringLiteral("Font Size"))->minimum(), 12);
    EXPECT_EQ(slider(&sheet, QStringLiteral("Font Size"))->maximum(), 72);
}

TEST(TeleprompterConfigView, SaveStoresTheWorkingCopyAndStaysOpen) {
    TeleprompterFixture f;
    f.manager->openTeleprompterWindow();
    TeleprompterConfigView sheet(*f.session, f.settings(), f.manager.get());
    sheet.show();
    sheet.findChild<QPlainTextEdit*>()->setPlainText(QStringLiteral("From the sheet"));
    for (auto* box : sheet.findChildren<QCheckBox*>())
        if (box->text() == QStringLiteral("Always on Top")) box->setChecked(false);
    LogCapture log;
    button(&sheet, QStringLiteral("Save Changes"))->click();
    const std::string text = log.text();
    EXPECT_NE(text.find("📜 Teleprompter window updated - Always on Top: false, Hide from Share: true\n"),
              std::string::npos);
    EXPECT_NE(text.find("✅ Teleprompter configuration saved\n"), std::string::npos);
    EXPECT_EQ(f.presetOnDisk().teleprompter->text, "From the sheet");
    EXPECT_FALSE(f.presetOnDisk().teleprompter->alwaysOnTop);
    EXPECT_FALSE(sheet.hasChanges());
    EXPECT_TRUE(sheet.showsSaveConfirmation());
    EXPECT_TRUE(sheet.isVisible());
    EXPECT_FALSE(button(&sheet, QStringLiteral("Save Changes"))->isEnabled());
}

TEST(TeleprompterConfigView, ResetToDefaultsSavedThenDisabledThenEnabledByAChange) {
    TeleprompterFixture f;
    TeleprompterConfig custom = f.settings();
    custom.fontSize = 50;
    custom.alwaysOnTop = false;
    f.setSettings(custom);
    TeleprompterConfigView sheet(*f.session, f.settings(), f.manager.get());
    button(&sheet, QStringLiteral("Reset to Defaults"))->click();
    EXPECT_TRUE(sheet.hasChanges());
    EXPECT_EQ(sheet.config(), TeleprompterConfig{});
    EXPECT_EQ(f.settings().fontSize, 50);  // nothing saved by the reset itself
    button(&sheet, QStringLiteral("Save Changes"))->click();
    EXPECT_EQ(f.presetOnDisk().teleprompter, TeleprompterConfig{});
    EXPECT_FALSE(button(&sheet, QStringLiteral("Save Changes"))->isEnabled());
    slider(&sheet, QStringLiteral("Opacity"))->setValue(10);
    EXPECT_TRUE(button(&sheet, QStringLiteral("Save Changes"))->isEnabled());
}

TEST(TeleprompterConfigView, NewSizeDoesNotResizeAnOpenWindow) {
    TeleprompterFixture f;
    f.manager->openTeleprompterWindow();
    const QSize before = f.manager->teleprompterWindow()->size();
    TeleprompterConfigView sheet(*f.session, f.settings(), f.manager.get());
    slider(&sheet, QStringLiteral("Width"))->setValue(30);
    button(&sheet, QStringLiteral("Save Changes"))->click();
    EXPECT_DOUBLE_EQ(f.settings().width, 1500.0);
    EXPECT_EQ(f.manager->teleprompterWindow()->size(), before);
}

TEST(TeleprompterConfigView, SayHidingFromShareIsNotSupportedHere) {
    TeleprompterFixture f;
    TeleprompterConfigView sheet(*f.session, f.settings(), f.manager.get());
    EXPECT_TRUE(showsLabel(&sheet, QString::fromLatin1(TeleprompterConfigView::unsupportedHint)));
}

TEST(TeleprompterSection, SwitchCreatesSettingsWithDefaults) {
    TeleprompterFixture f(false);
    TeleprompterSection section(*f.session, *f.manager);
    EXPECT_FALSE(section.enableSwitch()->isChecked());
    EXPECT_FALSE(section.windowButton()->isVisibleTo(&section));
    section.enableSwitch()->setChecked(true);
    ASSERT_TRUE(f.presetOnDisk().teleprompter.has_value());
    TeleprompterConfig expected;
    expected.enabled = true;
    EXPECT_EQ(*f.presetOnDisk().teleprompter, expected);
    EXPECT_TRUE(section.windowButton()->isVisibleTo(&section));
    section.enableSwitch()->setChecked(false);
    EXPECT_FALSE(f.presetOnDisk().teleprompter->enabled);
}

TEST(TeleprompterSection, WindowButtonOpensAndCloses) {
    TeleprompterFixture f;
    TeleprompterSection section(*f.session, *f.manager);
    EXPECT_EQ(section.windowButton()->text(), QStringLiteral("Open Teleprompter"));
    section.windowButton()->click();
    EXPECT_TRUE(f.manager->isTeleprompterWindowOpen());
    EXPECT_EQ(section.windowButton()->text(), QStringLiteral("Close Teleprompter"));
    EXPECT_EQ(section.windowButton()->toolTip(), QStringLiteral("Close the teleprompter window"));
    section.windowButton()->click();
    EXPECT_FALSE(f.manager->isTeleprompterWindowOpen());
}

TEST(TeleprompterSection, SettingsSheetOpensAboveAnOpenTeleprompter) {
    TeleprompterFixture f;
    ASSERT_TRUE(f.settings().alwaysOnTop);
    TeleprompterSection section(*f.session, *f.manager);
    section.show();
    f.manager->openTeleprompterWindow();
    QWidget* prompter = f.manager->teleprompterWindow();
    ASSERT_NE(prompter, nullptr);
    ASSERT_TRUE(prompter->windowFlags().testFlag(Qt::WindowStaysOnTopHint));

    section.settingsButton()->click();  // opens without waiting for the sheet
    QDialog* sheet = section.configSheet();
    ASSERT_NE(sheet, nullptr);
    EXPECT_TRUE(sheet->isVisible());
    EXPECT_TRUE(sheet->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(sheet->parentWidget(), prompter);  // kept above it by the window manager
    EXPECT_EQ(sheet->windowModality(), Qt::ApplicationModal);
    // A second press brings the same sheet forward.
    section.settingsButton()->click();
    EXPECT_EQ(section.configSheet(), sheet);
    sheet->close();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(section.configSheet(), nullptr);

    // Without the floating window the sheet is an ordinary one.
    f.manager->closeTeleprompterWindow();
    section.settingsButton()->click();
    ASSERT_NE(section.configSheet(), nullptr);
    EXPECT_FALSE(section.configSheet()->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    section.configSheet()->close();
}

TEST(TeleprompterSection, ReadoutAndPreview) {
    TeleprompterFixture f;
    TeleprompterConfig settings = f.settings();
    settings.opacity = 0.75;
    settings.alwaysOnTop = false;
    settings.hideFromScreenShare = false;
    f.setSettings(settings);
    TeleprompterSection section(*f.session, *f.manager);
    EXPECT_TRUE(showsLabel(&section, QStringLiteral("75%")));
    EXPECT_TRUE(showsLabel(&section, QStringLiteral("No")));
    EXPECT_TRUE(showsLabel(&section, QStringLiteral("Visible")));
    EXPECT_TRUE(showsLabel(&section, QStringLiteral("Preview")));
    settings.text.clear();
    f.setSettings(settings);
    EXPECT_FALSE(showsLabel(&section, QStringLiteral("Preview")));
}

}  // namespace
}  // namespace orvane

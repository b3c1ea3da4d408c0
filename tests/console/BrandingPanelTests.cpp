#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QSlider>
#include <QStandardPaths>
#include <QTest>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/controls/CaptionedSlider.h"
#include "console/controls/SymbolButton.h"
#include "console/controls/ToggleSwitch.h"
#include "console/scene_tab/SceneBrandingSection.h"
#include "console/scene_tab/SceneProgressBarSection.h"
#include "console/scene_tab/SceneTabView.h"
#include "console/sidebar/PresetBrandingSection.h"
#include "console/sidebar/PresetTabView.h"
#include "console/sidebar/RightSidebarView.h"
#include "document/PresetTemplates.h"

namespace orvane {
namespace branding_panel_tests {

using test::Session;

struct BrandingFixture {
    Session s;
    Preset preset = createPreset("Branded", PresetTemplate::streaming);
    std::unique_ptr<RightSidebarView> sidebar;

    BrandingFixture() {
        s.storage->savePreset(preset);
        s.streamManager->setCurrentPreset(preset);
        sidebar = std::make_unique<RightSidebarView>(*s.streamManager);
        sidebar->setSelectedTab(ConfigTab::preset);
        sidebar->resize(280, 1400);
        sidebar->show();
    }
    PresetBrandingSection* section() const { return sidebar->presetTab()->branding(); }
    Preset stored() const {
        for (const Preset& p : s.storage->loadPresets())
            if (p.id == preset.id) return p;
        ADD_FAILURE() << "preset file missing";
        return {};
    }
    QString fileText() const {
        QFile f(QString::fromStdString(s.storage->fileFor(preset).string()));
        EXPECT_TRUE(f.open(QIODevice::ReadOnly));
        return QString::fromUtf8(f.readAll());
    }
    QStringList logos() const {
        return QDir(QString::fromStdString(s.storage->logosDirectory().string())).entryList(QDir::Files);
    }
    // A small picture outside the application's directories.
    QString makeImage(const QString& name, QColor color) {
        const QString path = s.dir.filePath(name);
        QImage image(40, 20, QImage::Format_ARGB32);
        image.fill(color);
        EXPECT_TRUE(image.save(path));
        return path;
    }
};

TEST(BrandingPanel, APresetWithoutBrandingShowsTheDefaultsAndGainsItOnlyOnSaving) {
    BrandingFixture f;
    PresetBrandingSection* b = f.section();
    EXPECT_FALSE(b->enabledSwitch()->isChecked());
    EXPECT_FALSE(b->textField()->isVisible());
    EXPECT_FALSE(f.fileText().contains(QStringLiteral("\"branding\"")));

    QTest::mouseClick(b->enabledSwitch(), Qt::LeftButton);
    ASSERT_TRUE(f.stored().branding);
    EXPECT_TRUE(f.stored().branding->enabled);
    EXPECT_TRUE(f.fileText().contains(QStringLiteral("\"branding\"")));
    // The defaults came along.
    BrandingConfig expected;
    expected.enabled = true;
    EXPECT_EQ(*f.stored().branding, expected);
    EXPECT_TRUE(b->textField()->isVisible());
    EXPECT_EQ(b->textField()->placeholderText(), QStringLiteral("Enter branding text"));
    EXPECT_EQ(b->textSizeSlider()->readOut()->text(), QStringLiteral("Text Size: 16"));
    // No logo yet: no size sliders and no remove button.
    EXPECT_FALSE(b->logoWidthSlider()->isVisible());
    EXPECT_FALSE(b->removeLogoButton()->isVisible());
    EXPECT_EQ(b->selectLogoButton()->text(), QStringLiteral("Select Logo"));
}

TEST(BrandingPanel, EveryControlWritesItsFieldAtOnce) {
    BrandingFixture f;
    PresetBrandingSection* b = f.section();
    QTest::mouseClick(b->enabledSwitch(), Qt::LeftButton);
    b->textField()->setFocus();
    QTest::keyClicks(b->textField(), QStringLiteral("ACME"));
    EXPECT_EQ(f.stored().branding->text, "ACME");
    EXPECT_EQ(b->textField()->text(), QStringLiteral("ACME"));

    QSlider* size = b->textSizeSlider()->slider();
    EXPECT_EQ(size->minimum(), 0);
    EXPECT_EQ(size->maximum(), 30);  // 10 to 40 in steps of 1
    size->setValue(14);
    EXPECT_DOUBLE_EQ(f.stored().branding->textSize, 24);
    EXPECT_EQ(b->textSizeSlider()->readOut()->text(), QStringLiteral("Text Size: 24"));

    QTest::mouseClick(b->positionButton(BrandingPosition::topLeft), Qt::LeftButton);
    EXPECT_EQ(f.stored().branding->position, BrandingPosition::topLeft);
    EXPECT_EQ(b->positionButton(BrandingPosition::topLeft)->accessibleName(), QStringLiteral("Branding Top Left"));

    QSlider* opacity = b->opacitySlider()->slider();
    EXPECT_EQ(opacity->maximum(), 10);  // 0 to 1 in steps of 0.1
    opacity->setValue(3);
    EXPECT_DOUBLE_EQ(f.stored().branding->opacity, 0.3);
    EXPECT_EQ(b->opacitySlider()->readOut()->text(), QStringLiteral("Opacity: 30%"));

    b->backgroundOpacitySlider()->slider()->setValue(9);
    EXPECT_DOUBLE_EQ(f.stored().branding->backgroundColor.alpha, 0.9);
    EXPECT_DOUBLE_EQ(f.stored().branding->backgroundColor.red, 0);
    EXPECT_EQ(b->backgroundOpacitySlider()->readOut()->text(), QStringLiteral("Background Opacity: 90%"));
    QTest::mouseClick(b->backgroundSwitch(), Qt::LeftButton);
    EXPECT_FALSE(f.stored().branding->showBackground);
    EXPECT_FALSE(b->backgroundOpacitySlider()->isVisible());
}

TEST(BrandingPanel, PresetSettingsCopyTheCurrentPresetChangeAssignAndSave) {
    BrandingFixture f;
    // A change made to the session since the panel was built is kept: the
    // write starts from the current preset, not from a copy of its own.
    Preset renamed = *f.s.streamManager->currentPreset();
    renamed.name = "Renamed Elsewhere";
    f.s.streamManager->setCurrentPreset(renamed);
    QSignalSpy assigned(f.s.streamManager.get(), &StreamManager::currentPresetChanged);
    QTest::mouseClick(f.section()->enabledSwitch(), Qt::LeftButton);
    EXPECT_GE(assigned.count(), 1);
    const Preset& current = *f.s.streamManager->currentPreset();
    ASSERT_TRUE(current.branding);
    EXPECT_TRUE(current.branding->enabled);
    EXPECT_EQ(current.name, "Renamed Elsewhere");
    EXPECT_EQ(current.scenes, f.preset.scenes);
    const Preset stored = f.stored();
    EXPECT_EQ(stored.name, "Renamed Elsewhere");
    EXPECT_EQ(stored.branding, current.branding);
}

TEST(BrandingPanel, WithoutAPresetNothingIsWrittenAndNothingBreaks) {
    Session s;
    RightSidebarView sidebar(*s.streamManager);
    PresetBrandingSection* b = sidebar.presetTab()->branding();
    EXPECT_FALSE(b->isEnabled());
    b->updatePresetBranding(BrandingConfig{});
    b->chooseLogo(QStringLiteral("/nonexistent.png"));
    b->removeLogo();
    EXPECT_EQ(b->selectImage(), nullptr);
    EXPECT_FALSE(s.streamManager->currentPreset());
    EXPECT_TRUE(s.storage->loadPresets().empty());
}

TEST(BrandingPanel, AChosenLogoIsCopiedIntoTheLogosDirectory) {
    BrandingFixture f;
    QTest::mouseClick(f.section()->enabledSwitch(), Qt::LeftButton);
    const QString original = f.makeImage(QStringLiteral("mark.png"), Qt::red);
    test::LogCapture log;
    f.section()->chooseLogo(original);
    const std::string text = log.text();
    ASSERT_TRUE(f.stored().branding->logoImagePath);
    const QString stored = QString::fromStdString(*f.stored().branding->logoImagePath);
    EXPECT_TRUE(stored.startsWith(QString::fromStdString(f.s.storage->logosDirectory().string())));
    EXPECT_TRUE(stored.endsWith(QStringLiteral(".png")));
    EXPECT_EQ(f.logos().size(), 1);
    EXPECT_TRUE(QFile::exists(original));  // the chosen file stays where it was
    EXPECT_NE(text.find("✅ Logo copied to: "), std::string::npos) << text;
    // With a logo, its size sliders and the remove button appear.
    EXPECT_TRUE(f.section()->logoWidthSlider()->isVisible());
    EXPECT_TRUE(f.section()->removeLogoButton()->isVisible());
    EXPECT_FALSE(f.section()->logoPreview()->pixmap().isNull());
    QSlider* width = f.section()->logoWidthSlider()->slider();
    EXPECT_EQ(width->maximum(), 16);  // 40 to 200 in steps of 10
    width->setValue(2);
    EXPECT_DOUBLE_EQ(f.stored().branding->logoWidth, 60);
    EXPECT_EQ(f.section()->logoWidthSlider()->readOut()->text(), QStringLiteral("Logo Width: 60px"));
    f.section()->logoHeightSlider()->slider()->setValue(16);
    EXPECT_DOUBLE_EQ(f.stored().branding->logoHeight, 200);
}

TEST(BrandingPanel, ReplacingALogoDeletesTheOldFile) {
    BrandingFixture f;
    QTest::mouseClick(f.section()->enabledSwitch(), Qt::LeftButton);
    f.section()->chooseLogo(f.makeImage(QStringLiteral("first.png"), Qt::red));
    const QString first = QString::fromStdString(*f.stored().branding->logoImagePath);
    ASSERT_TRUE(QFile::exists(first));
    f.section()->chooseLogo(f.makeImage(QStringLiteral("second.jpg"), Qt::blue));
    const QString second = QString::fromStdString(*f.stored().branding->logoImagePath);
    EXPECT_NE(first, second);
    EXPECT_FALSE(QFile::exists(first));
    EXPECT_TRUE(QFile::exists(second));
    EXPECT_TRUE(second.endsWith(QStringLiteral(".jpg")));
    EXPECT_EQ(f.logos().size(), 1);
}

TEST(BrandingPanel, RemovingALogoDeletesItsFileAndClearsTheField) {
    BrandingFixture f;
    QTest::mouseClick(f.section()->enabledSwitch(), Qt::LeftButton);
    f.section()->chooseLogo(f.makeImage(QStringLiteral("mark.png"), Qt::red));
    const QString copy = QString::fromStdString(*f.stored().branding->logoImagePath);
    QTest::mouseClick(f.section()->removeLogoButton(), Qt::LeftButton);
    EXPECT_FALSE(f.stored().branding->logoImagePath);
    EXPECT_FALSE(QFile::exists(copy));
    EXPECT_TRUE(f.logos().isEmpty());
    EXPECT_FALSE(f.section()->removeLogoButton()->isVisible());
}

TEST(BrandingPanel, ALogoThatFailsToCopyIsReportedAndLosesNothing) {
    BrandingFixture f;
    QTest::mouseClick(f.section()->enabledSwitch(), Qt::LeftButton);
    // First without any logo: the field stays empty.
    {
        test::LogCapture log;
        f.section()->chooseLogo(f.s.dir.filePath(QStringLiteral("vanished.png")));
        const std::string text = log.text();
        EXPECT_NE(text.find("❌ Failed to copy logo image"), std::string::npos) << text;
        EXPECT_NE(text.find("❌ Error copying logo: "), std::string::npos) << text;
    }
    EXPECT_FALSE(f.stored().branding->logoImagePath);
    EXPECT_TRUE(f.logos().isEmpty());
    // Then over a stored logo: the old one stays, file and field.
    f.section()->chooseLogo(f.makeImage(QStringLiteral("kept.png"), Qt::green));
    const auto kept = f.stored().branding->logoImagePath;
    ASSERT_TRUE(kept);
    {
        test::LogCapture log;
        f.section()->chooseLogo(f.s.dir.filePath(QStringLiteral("a-directory")));
        QDir(f.s.dir.path()).mkdir(QStringLiteral("a-directory"));
        f.section()->chooseLogo(f.s.dir.filePath(QStringLiteral("a-directory")));
        EXPECT_NE(log.text().find("❌ Failed to copy logo image"), std::string::npos);
    }
    EXPECT_EQ(f.stored().branding->logoImagePath, kept);
    EXPECT_TRUE(QFile::exists(QString::fromStdString(*kept)));
    EXPECT_EQ(f.logos().size(), 1);
}

TEST(BrandingPanel, TheFileDialogAsksForOneImageAndHandsItOver) {
    BrandingFixture f;
    QTest::mouseClick(f.section()->enabledSwitch(), Qt::LeftButton);
    const QString original = f.makeImage(QStringLiteral("dialog.png"), Qt::red);
    QFileDialog* dialog = f.section()->selectImage();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Select a logo image"));
    EXPECT_EQ(dialog->fileMode(), QFileDialog::ExistingFile);
    EXPECT_TRUE(dialog->nameFilters().join(' ').contains(QStringLiteral("*.png")));
    EXPECT_TRUE(dialog->nameFilters().join(' ').contains(QStringLiteral("*.jpeg")));
    EXPECT_TRUE(dialog->isVisible());
    // It opens where pictures are kept, or at home.
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    EXPECT_EQ(dialog->directory().absolutePath(),
              QDir(QDir(pictures).exists() ? pictures : QDir::homePath()).absolutePath());
    dialog->selectFile(original);
    // As the dialog's own button does.
    ASSERT_TRUE(QMetaObject::invokeMethod(dialog, "accept", Qt::DirectConnection));
    ASSERT_TRUE(f.stored().branding->logoImagePath);
    EXPECT_EQ(f.logos().size(), 1);
}

// ------------------------------------------------------------ scene level

struct SceneFixture {
    Session s;
    Preset preset = createPreset("Scenes", PresetTemplate::streaming);
    std::unique_ptr<SceneTabView> tab;

    SceneFixture() {
        s.storage->savePreset(preset);
        s.streamManager->setCurrentPreset(preset);
        tab = std::make_unique<SceneTabView>(*s.streamManager);
        tab->resize(280, 1600);
        tab->show();
    }
    void select() { tab->setScene(s.streamManager->currentPreset()->scenes.front()); }
    void setPreset(const std::function<void(Preset&)>& change) {
        Preset p = *s.streamManager->currentPreset();
        change(p);
        s.streamManager->setCurrentPreset(p);
    }
    StreamingScene storedScene() const {
        for (const Preset& p : s.storage->loadPresets())
            if (p.id == preset.id) return p.scenes.front();
        ADD_FAILURE() << "preset file missing";
        return {};
    }
};

TEST(SceneBrandingPanel, WithoutASceneItAsksForOne) {
    SceneFixture f;
    SceneBrandingSection* b = f.tab->brandingSection();
    EXPECT_TRUE(b->noSceneLabel()->isVisible());
    EXPECT_EQ(b->noSceneLabel()->text(), QStringLiteral("Select a scene to configure branding"));
    EXPECT_FALSE(b->enabledSwitch()->isVisible());
    SceneProgressBarSection* p = f.tab->progressBarSection();
    EXPECT_TRUE(p->isVisible());
    EXPECT_EQ(p->noSceneLabel()->text(), QStringLiteral("Select a scene to configure progress bar"));
    EXPECT_FALSE(p->showSwitch()->isVisible());
}

TEST(SceneBrandingPanel, WithoutPresetBrandingThereIsNothingToEnable) {
    SceneFixture f;
    f.select();
    SceneBrandingSection* b = f.tab->brandingSection();
    EXPECT_FALSE(b->noSceneLabel()->isVisible());
    EXPECT_TRUE(b->noBrandingLabel()->isVisible());
    EXPECT_EQ(b->noBrandingLabel()->text(), QStringLiteral("No preset branding configured"));
    EXPECT_FALSE(b->enabledSwitch()->isVisible());
}

TEST(SceneBrandingPanel, TheSwitchWritesTheScenesFlagByTheSceneRule) {
    SceneFixture f;
    f.setPreset([](Preset& p) {
        BrandingConfig branding;
        branding.enabled = true;
        branding.text = "Live from the lab";
        p.branding = branding;
    });
    f.select();
    SceneBrandingSection* b = f.tab->brandingSection();
    ASSERT_TRUE(b->enabledSwitch()->isVisible());
    EXPECT_TRUE(b->enabledSwitch()->isChecked());
    EXPECT_TRUE(b->summary()->isVisible());
    EXPECT_EQ(b->textLabel()->text(), QStringLiteral("Text: Live from the lab"));
    EXPECT_FALSE(b->logoAttached()->isVisible());

    QSignalSpy written(f.tab.get(), &SceneTabView::sceneWritten);
    QTest::mouseClick(b->enabledSwitch(), Qt::LeftButton);
    ASSERT_EQ(written.count(), 1);
    EXPECT_FALSE(f.storedScene().brandingEnabled);
    EXPECT_FALSE(f.tab->scene()->brandingEnabled);
    EXPECT_FALSE(b->summary()->isVisible());
    // The preset's branding is left alone.
    EXPECT_TRUE(f.s.streamManager->currentPreset()->branding->enabled);

    // A logo added at preset level shows in the summary at once.
    QTest::mouseClick(b->enabledSwitch(), Qt::LeftButton);
    EXPECT_TRUE(f.storedScene().brandingEnabled);
    f.setPreset([](Preset& p) { p.branding->logoImagePath = "/somewhere/logo.png"; });
    EXPECT_TRUE(b->logoAttached()->isVisible());
}

TEST(SceneBrandingPanel, ProgressBarSwitchFollowsThePresetAndWritesTheScene) {
    SceneFixture f;
    f.select();
    SceneProgressBarSection* p = f.tab->progressBarSection();
    EXPECT_FALSE(p->isVisible());  // the preset has no progress bar
    f.setPreset([](Preset& preset) { preset.progressBar = ProgressBarConfig{}; });
    EXPECT_FALSE(p->isVisible());  // present but off
    f.setPreset([](Preset& preset) { preset.progressBar->enabled = true; });
    ASSERT_TRUE(p->isVisible());
    EXPECT_TRUE(p->showSwitch()->isVisible());
    EXPECT_EQ(p->showSwitch()->accessibleName(), QStringLiteral("Show in This Scene"));
    EXPECT_TRUE(p->showSwitch()->isChecked());
    QTest::mouseClick(p->showSwitch(), Qt::LeftButton);
    EXPECT_FALSE(f.storedScene().progressBarEnabled);
    EXPECT_FALSE(f.s.streamManager->currentPreset()->scenes.front().progressBarEnabled);
    EXPECT_FALSE(p->showSwitch()->isChecked());
}

}  // namespace branding_panel_tests
}  // namespace orvane

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QAccessibleValueInterface>
#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>
#include <functional>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/controls/ColorSwatchButton.h"
#include "console/controls/ConfirmDialog.h"
#include "console/controls/LabeledSlider.h"
#include "console/controls/SelectableTile.h"
#include "console/controls/ToggleSwitch.h"
#include "console/controls/ValueSlider.h"
#include "console/scene_tab/CameraConfigurationView.h"
#include "console/scene_tab/CameraSizeButton.h"
#include "console/scene_tab/SceneSourcesList.h"
#include "console/scene_tab/SceneTabView.h"
#include "console/scene_tab/SourceRowView.h"
#include "console/scene_tab/ScreenWindowEffectsView.h"
#include "console/sidebar/RightSidebarView.h"
#include "document/PresetTemplates.h"

namespace orvane {
namespace source_panel_tests {

using test::Session;

// A session on one scene holding a camera, a screen, a window and slides,
// and the sidebar editing it.
struct PanelFixture {
    Session s;
    Preset preset;
    std::unique_ptr<RightSidebarView> sidebar;

    PanelFixture() {
        preset = createPreset("Panels", PresetTemplate::custom);
        StreamingScene scene = makeScene("Talk");
        for (auto [type, name] : {std::pair{SourceType::camera, "Cam"}, std::pair{SourceType::screen, "Desk"},
                                  std::pair{SourceType::window, "Editor"}, std::pair{SourceType::content, "Notes"}}) {
            Source source;
            source.type = type;
            source.name = name;
            scene.sources.push_back(source);
        }
        preset.scenes = {scene};
        s.storage->savePreset(preset);
        s.streamManager->setCurrentPreset(preset);
        s.streamManager->switchToScene(scene);
        sidebar = std::make_unique<RightSidebarView>(*s.streamManager);
        sidebar->setSelectedScene(scene);
        sidebar->resize(280, 1400);
        sidebar->show();
    }
    SceneTabView* tab() const { return sidebar->sceneTab(); }
    CameraConfigurationView* camera() const { return tab()->cameraSettings(); }
    ScreenWindowEffectsView* effects() const { return tab()->visualEffects(); }
    void select(const std::string& name) {
        for (const Source& source : tab()->scene()->sources)
            if (source.name == name) tab()->selectSource(source.id);
    }
    // The named source as the preset file on disk holds it.
    SourceConfiguration stored(const std::string& name) const {
        for (const Preset& p : s.storage->loadPresets())
            if (p.id == preset.id)
                for (const Source& source : p.scenes.front().sources)
                    if (source.name == name) return source.configuration;
        ADD_FAILURE() << "no stored source " << name;
        return {};
    }
};

// What assistive technology does with a slider: set its value.
void setAccessibleValue(QWidget* widget, double value) {
    QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(widget);
    ASSERT_NE(iface, nullptr);
    ASSERT_NE(iface->valueInterface(), nullptr) << widget->accessibleName().toStdString();
    iface->valueInterface()->setCurrentValue(value);
}

double accessibleValue(QWidget* widget) {
    QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(widget);
    return iface && iface->valueInterface() ? iface->valueInterface()->currentValue().toDouble() : -999;
}

// What assistive technology does with a button or a switch: its press.
void pressAccessibly(QWidget* widget) {
    QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(widget);
    ASSERT_NE(iface, nullptr);
    ASSERT_NE(iface->actionInterface(), nullptr) << widget->accessibleName().toStdString();
    const QStringList actions = iface->actionInterface()->actionNames();
    const QString press = actions.contains(QAccessibleActionInterface::toggleAction())
                              ? QAccessibleActionInterface::toggleAction()
                              : QAccessibleActionInterface::pressAction();
    ASSERT_TRUE(actions.contains(press)) << actions.join(',').toStdString();
    iface->actionInterface()->doAction(press);
}

TEST(ConsoleSourcePanels, TheSelectedSourceDecidesWhichPanelShows) {
    PanelFixture f;
    // No source selected: neither panel.
    EXPECT_FALSE(f.camera()->isVisible());
    EXPECT_FALSE(f.effects()->isVisible());
    f.select("Cam");
    EXPECT_TRUE(f.camera()->isVisible());
    EXPECT_FALSE(f.effects()->isVisible());
    EXPECT_EQ(f.camera()->source().name, "Cam");
    f.select("Desk");
    EXPECT_FALSE(f.camera()->isVisible());
    EXPECT_TRUE(f.effects()->isVisible());
    EXPECT_EQ(f.effects()->source().name, "Desk");
    f.select("Editor");
    EXPECT_TRUE(f.effects()->isVisible());
    EXPECT_EQ(f.effects()->source().name, "Editor");
    f.select("Notes");
    EXPECT_FALSE(f.camera()->isVisible());
    EXPECT_FALSE(f.effects()->isVisible());
}

struct SliderCase {
    std::function<LabeledSlider*()> slider;
    QString label;
    double minimum, maximum, step;
    double value;
    QString readout;
    std::function<double(const SourceConfiguration&)> field;
};

void checkSliders(PanelFixture& f, const std::string& source, const std::vector<SliderCase>& cases) {
    for (const SliderCase& c : cases) {
        SCOPED_TRACE(c.label.toStdString());
        LabeledSlider* row = c.slider();
        ASSERT_TRUE(row->isVisible());
        EXPECT_EQ(row->label(), c.label);
        EXPECT_EQ(row->slider()->accessibleName(), c.label);
        EXPECT_DOUBLE_EQ(row->slider()->minimumValue(), c.minimum);
        EXPECT_DOUBLE_EQ(row->slider()->maximumValue(), c.maximum);
        EXPECT_DOUBLE_EQ(row->slider()->step(), c.step);
        setAccessibleValue(row->slider(), c.value);
        EXPECT_DOUBLE_EQ(c.field(f.stored(source)), c.value);
        EXPECT_DOUBLE_EQ(accessibleValue(row->slider()), c.value);
        EXPECT_EQ(row->readout(), c.readout);
    }
}

TEST(ConsoleSourcePanels, EveryCameraSliderWritesItsFieldThroughItsAccessibleValue) {
    PanelFixture f;
    f.select("Cam");
    CameraConfigurationView* p = f.camera();
    checkSliders(f, "Cam",
                 {
                     {[p] { return p->zoomSlider(); }, "Zoom", 0.8, 1.5, 0.05, 1.25, "1.25x",
                      [](const SourceConfiguration& c) { return c.cameraZoom; }},
                     {[p] { return p->widthSlider(); }, "Width", 0.5, 2.0, 0.05, 1.5, "1.50x",
                      [](const SourceConfiguration& c) { return c.cameraWidth; }},
                     {[p] { return p->heightSlider(); }, "Height", 0.5, 2.0, 0.05, 0.75, "0.75x",
                      [](const SourceConfiguration& c) { return c.cameraHeight; }},
                     {[p] { return p->horizontalPositionSlider(); }, "Horizontal Position", -1, 1, 0.05, -0.35,
                      "-0.35", [](const SourceConfiguration& c) { return c.cameraHorizontalPosition; }},
                     {[p] { return p->verticalPositionSlider(); }, "Vertical Position", -1, 1, 0.05, 0.6, "0.60",
                      [](const SourceConfiguration& c) { return c.cameraVerticalPosition; }},
                     {[p] { return p->brightnessSlider(); }, "Brightness", -1, 1, 0.05, 0.2, "0.20",
                      [](const SourceConfiguration& c) { return c.cameraBrightness; }},
                     {[p] { return p->contrastSlider(); }, "Contrast", 0.5, 2.0, 0.05, 1.3, "1.30x",
                      [](const SourceConfiguration& c) { return c.cameraContrast; }},
                     {[p] { return p->borderWidthSlider(); }, "Width", 1, 10, 0.5, 6.5, "6.5",
                      [](const SourceConfiguration& c) { return c.cameraBorderWidth; }},
                     {[p] { return p->borderGlowSlider(); }, "Glow", 0, 20, 1, 12, "12.0",
                      [](const SourceConfiguration& c) { return c.cameraBorderGlow; }},
                     {[p] { return p->borderRadiusSlider(); }, "Radius", 0, 50, 1, 30, "30.0",
                      [](const SourceConfiguration& c) { return c.cameraBorderRadius; }},
                 });
}

TEST(ConsoleSourcePanels, EveryEffectsSliderWritesItsFieldThroughItsAccessibleValue) {
    PanelFixture f;
    f.select("Desk");
    ScreenWindowEffectsView* p = f.effects();
    pressAccessibly(p->borderSwitch());
    ASSERT_TRUE(f.stored("Desk").borderEnabled);
    checkSliders(f, "Desk",
                 {
                     {[p] { return p->brightnessSlider(); }, "Brightness", 0.5, 2.0, 0.05, 1.5, "1.50",
                      [](const SourceConfiguration& c) { return c.brightness; }},
                     {[p] { return p->scaleSlider(); }, "Scale", 0.5, 2.0, 0.05, 1.0, "1.00x",
                      [](const SourceConfiguration& c) { return c.scale; }},
                     {[p] { return p->horizontalPositionSlider(); }, "Horizontal Position", -1000, 1000, 10, 190,
                      "190", [](const SourceConfiguration& c) { return c.horizontalOffset; }},
                     {[p] { return p->verticalPositionSlider(); }, "Vertical Position", -1000, 1000, 10, -40, "-40",
                      [](const SourceConfiguration& c) { return c.verticalOffset; }},
                     {[p] { return p->borderWidthSlider(); }, "Border Width", 1, 20, 0.5, 2.5, "2.5",
                      [](const SourceConfiguration& c) { return c.borderWidth; }},
                     {[p] { return p->borderGlowSlider(); }, "Border Glow", 0, 30, 1, 25, "25.0",
                      [](const SourceConfiguration& c) { return c.borderGlow; }},
                     {[p] { return p->borderRadiusSlider(); }, "Border Radius", 0, 50, 1, 0, "0.0",
                      [](const SourceConfiguration& c) { return c.borderRadius; }},
                     {[p] { return p->shadowBlurSlider(); }, "Shadow Blur", 0, 50, 1, 33, "33.0",
                      [](const SourceConfiguration& c) { return c.shadowRadius; }},
                     {[p] { return p->shadowXSlider(); }, "X", -30, 30, 1, -12, "-12",
                      [](const SourceConfiguration& c) { return c.shadowX; }},
                     {[p] { return p->shadowYSlider(); }, "Y", -30, 30, 1, 30, "30",
                      [](const SourceConfiguration& c) { return c.shadowY; }},
                 });
}

TEST(ConsoleSourcePanels, ValuesArePutOnTheStepGridAndInsideTheRange) {
    PanelFixture f;
    f.select("Cam");
    ValueSlider* zoom = f.camera()->zoomSlider()->slider();
    setAccessibleValue(zoom, 1.23);
    EXPECT_DOUBLE_EQ(f.stored("Cam").cameraZoom, 1.25);
    setAccessibleValue(zoom, 7);
    EXPECT_DOUBLE_EQ(f.stored("Cam").cameraZoom, 1.5);
    setAccessibleValue(zoom, -3);
    EXPECT_DOUBLE_EQ(f.stored("Cam").cameraZoom, 0.8);
    // The keyboard moves by one step.
    zoom->setFocus();
    QTest::keyClick(zoom, Qt::Key_Right);
    EXPECT_DOUBLE_EQ(f.stored("Cam").cameraZoom, 0.85);
    EXPECT_EQ(f.camera()->zoomSlider()->readout(), QStringLiteral("0.85x"));
}

TEST(ConsoleSourcePanels, TheWheelOverASliderWithoutTheKeyboardLeavesIt) {
    PanelFixture f;
    f.select("Cam");
    ValueSlider* zoom = f.camera()->zoomSlider()->slider();
    QSignalSpy writes(f.s.streamManager.get(), &StreamManager::sceneUpdateTimestampChanged);
    const QPointF at(zoom->width() / 2.0, zoom->height() / 2.0);
    auto roll = [&] {
        QWheelEvent wheel(at, zoom->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(zoom, &wheel);
        return wheel.isAccepted();
    };
    // Passed on to the scrolling panel, not taken.
    EXPECT_FALSE(roll());
    EXPECT_EQ(writes.count(), 0);
    EXPECT_DOUBLE_EQ(f.stored("Cam").cameraZoom, 1.0);
    // With the keyboard on the slider the wheel moves it.
    zoom->setFocus();
    f.sidebar->activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([&] { return zoom->hasFocus(); }, 2000));
    roll();
    EXPECT_EQ(writes.count(), 1);
    EXPECT_NE(f.stored("Cam").cameraZoom, 1.0);
}

TEST(ConsoleSourcePanels, AStoredValueOffTheGridIsShownAsItIsAndNotWritten) {
    PanelFixture f;
    StreamingScene scene = *f.tab()->scene();
    scene.sources[0].configuration.cameraZoom = 1.23;
    scene.selectedSourceId = scene.sources[0].id;
    f.s.streamManager->updateScene(scene);
    f.sidebar->setSelectedScene(scene);
    QSignalSpy writes(f.s.streamManager.get(), &StreamManager::sceneUpdateTimestampChanged);
    f.sidebar->setSelectedScene(scene);
    EXPECT_EQ(f.camera()->zoomSlider()->readout(), QStringLiteral("1.23x"));
    EXPECT_DOUBLE_EQ(accessibleValue(f.camera()->zoomSlider()->slider()), 1.23);
    EXPECT_EQ(writes.count(), 0);
}

TEST(ConsoleSourcePanels, SliderChangesAreWrittenOneByOneAsTheyHappen) {
    PanelFixture f;
    f.select("Cam");
    QSignalSpy writes(f.s.streamManager.get(), &StreamManager::sceneUpdateTimestampChanged);
    ValueSlider* zoom = f.camera()->zoomSlider()->slider();
    for (double v : {0.9, 0.95, 1.0, 1.05}) {
        setAccessibleValue(zoom, v);
        EXPECT_DOUBLE_EQ(f.stored("Cam").cameraZoom, v);
    }
    EXPECT_EQ(writes.count(), 4);
    // The same value again is no change.
    setAccessibleValue(zoom, 1.05);
    EXPECT_EQ(writes.count(), 4);
}

TEST(ConsoleSourcePanels, PositionSizeAndShapeButtonsMarkAndWriteTheirChoice) {
    PanelFixture f;
    f.select("Cam");
    CameraConfigurationView* p = f.camera();
    // The defaults are marked.
    EXPECT_TRUE(p->positionButton(CameraOverlayPosition::bottomRight)->isCurrent());
    EXPECT_TRUE(p->sizeButton(CameraOverlaySize::medium)->isCurrent());
    EXPECT_TRUE(p->shapeButton(CameraShape::rectangle)->isCurrent());

    EXPECT_EQ(p->positionButton(CameraOverlayPosition::topLeft)->accessibleName(), QStringLiteral("Top Left"));
    pressAccessibly(p->positionButton(CameraOverlayPosition::topLeft));
    EXPECT_EQ(f.stored("Cam").cameraPosition, CameraOverlayPosition::topLeft);
    EXPECT_TRUE(p->positionButton(CameraOverlayPosition::topLeft)->isCurrent());
    EXPECT_FALSE(p->positionButton(CameraOverlayPosition::bottomRight)->isCurrent());

    EXPECT_EQ(p->sizeButton(CameraOverlaySize::large)->accessibleName(), QStringLiteral("Large"));
    pressAccessibly(p->sizeButton(CameraOverlaySize::large));
    EXPECT_EQ(f.stored("Cam").cameraSize, CameraOverlaySize::large);
    EXPECT_TRUE(p->sizeButton(CameraOverlaySize::large)->isCurrent());
    EXPECT_FALSE(p->sizeButton(CameraOverlaySize::medium)->isCurrent());

    EXPECT_EQ(p->shapeButton(CameraShape::verticalRectangle)->accessibleName(), QStringLiteral("Vertical"));
    pressAccessibly(p->shapeButton(CameraShape::circle));
    EXPECT_EQ(f.stored("Cam").cameraShape, CameraShape::circle);
    QTest::mouseClick(p->shapeButton(CameraShape::verticalRectangle), Qt::LeftButton);
    EXPECT_EQ(f.stored("Cam").cameraShape, CameraShape::verticalRectangle);
    EXPECT_TRUE(p->shapeButton(CameraShape::verticalRectangle)->isCurrent());
    EXPECT_FALSE(p->shapeButton(CameraShape::circle)->isCurrent());
    // Pressing the current one again keeps it.
    pressAccessibly(p->shapeButton(CameraShape::verticalRectangle));
    EXPECT_TRUE(p->shapeButton(CameraShape::verticalRectangle)->isCurrent());
    EXPECT_EQ(f.stored("Cam").cameraShape, CameraShape::verticalRectangle);
}

TEST(ConsoleSourcePanels, TheThreeSizeButtonsDrawTheirSizesApart) {
    const double small = CameraSizeButton::share(CameraOverlaySize::small);
    const double medium = CameraSizeButton::share(CameraOverlaySize::medium);
    const double large = CameraSizeButton::share(CameraOverlaySize::large);
    EXPECT_LT(small + 0.1, medium);
    EXPECT_LT(medium + 0.1, large);
    // And the pictures really differ: count the lit pixels of each.
    test::ensureApplication();
    std::vector<int> lit;
    for (CameraOverlaySize size : {CameraOverlaySize::small, CameraOverlaySize::medium, CameraOverlaySize::large}) {
        CameraSizeButton button(size);
        button.resize(70, 46);
        const QImage image = button.grab().toImage();
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (qGray(image.pixel(x, y)) > 150) ++count;
        lit.push_back(count);
    }
    EXPECT_LT(lit[0], lit[1]);
    EXPECT_LT(lit[1], lit[2]);
}

TEST(ConsoleSourcePanels, TurningTheBorderOffKeepsItsColourAndSizes) {
    PanelFixture f;
    f.select("Cam");
    CameraConfigurationView* p = f.camera();
    ASSERT_TRUE(p->borderSwitch()->isChecked());
    ASSERT_TRUE(p->borderWidthSlider()->isVisible());
    setAccessibleValue(p->borderWidthSlider()->slider(), 7);
    setAccessibleValue(p->borderGlowSlider()->slider(), 5);
    setAccessibleValue(p->borderRadiusSlider()->slider(), 20);
    emit p->borderColorWell()->colorChosen(CodableColor{1, 0, 0, 1});

    pressAccessibly(p->borderSwitch());
    SourceConfiguration off = f.stored("Cam");
    EXPECT_FALSE(off.cameraBorderEnabled);
    EXPECT_DOUBLE_EQ(off.cameraBorderWidth, 7);
    EXPECT_DOUBLE_EQ(off.cameraBorderGlow, 5);
    EXPECT_DOUBLE_EQ(off.cameraBorderRadius, 20);
    EXPECT_EQ(off.cameraBorderColor, (CodableColor{1, 0, 0, 1}));
    EXPECT_FALSE(p->borderWidthSlider()->isVisible());
    EXPECT_FALSE(p->borderColorWell()->isVisible());

    pressAccessibly(p->borderSwitch());
    EXPECT_TRUE(f.stored("Cam").cameraBorderEnabled);
    EXPECT_TRUE(p->borderWidthSlider()->isVisible());
    EXPECT_EQ(p->borderWidthSlider()->readout(), QStringLiteral("7.0"));
    EXPECT_EQ(p->borderColorWell()->color(), (CodableColor{1, 0, 0, 1}));

    // The same for a capture's border and shadow.
    f.select("Editor");
    ScreenWindowEffectsView* e = f.effects();
    EXPECT_FALSE(e->borderSwitch()->isChecked());
    EXPECT_FALSE(e->borderWidthSlider()->isVisible());
    EXPECT_TRUE(e->shadowSwitch()->isChecked());
    EXPECT_TRUE(e->shadowBlurSlider()->isVisible());
    setAccessibleValue(e->shadowBlurSlider()->slider(), 40);
    emit e->shadowColorWell()->colorChosen(CodableColor{0, 0, 1, 0.5});
    pressAccessibly(e->shadowSwitch());
    SourceConfiguration shadowOff = f.stored("Editor");
    EXPECT_FALSE(shadowOff.shadowEnabled);
    EXPECT_DOUBLE_EQ(shadowOff.shadowRadius, 40);
    EXPECT_EQ(shadowOff.shadowColor, (CodableColor{0, 0, 1, 0.5}));
    EXPECT_FALSE(e->shadowBlurSlider()->isVisible());
    EXPECT_FALSE(e->shadowXSlider()->isVisible());
}

TEST(ConsoleSourcePanels, TheThreeWidthSettingsWriteDifferentFields) {
    PanelFixture f;
    f.select("Cam");
    const SourceConfiguration before = f.stored("Cam");
    setAccessibleValue(f.camera()->widthSlider()->slider(), 1.8);
    SourceConfiguration after = f.stored("Cam");
    EXPECT_DOUBLE_EQ(after.cameraWidth, 1.8);
    EXPECT_DOUBLE_EQ(after.cameraBorderWidth, before.cameraBorderWidth);
    EXPECT_DOUBLE_EQ(after.borderWidth, before.borderWidth);

    setAccessibleValue(f.camera()->borderWidthSlider()->slider(), 9.5);
    after = f.stored("Cam");
    EXPECT_DOUBLE_EQ(after.cameraBorderWidth, 9.5);
    EXPECT_DOUBLE_EQ(after.cameraWidth, 1.8);
    EXPECT_DOUBLE_EQ(after.borderWidth, before.borderWidth);

    f.select("Desk");
    pressAccessibly(f.effects()->borderSwitch());
    const SourceConfiguration desk = f.stored("Desk");
    setAccessibleValue(f.effects()->borderWidthSlider()->slider(), 12);
    const SourceConfiguration deskAfter = f.stored("Desk");
    EXPECT_DOUBLE_EQ(deskAfter.borderWidth, 12);
    EXPECT_DOUBLE_EQ(deskAfter.cameraWidth, desk.cameraWidth);
    EXPECT_DOUBLE_EQ(deskAfter.cameraBorderWidth, desk.cameraBorderWidth);
    // The camera's values stayed where they were.
    EXPECT_DOUBLE_EQ(f.stored("Cam").cameraWidth, 1.8);
    EXPECT_DOUBLE_EQ(f.stored("Cam").cameraBorderWidth, 9.5);
}

TEST(ConsoleSourcePanels, ColoursAndTheBackgroundWellWriteTheirFields) {
    PanelFixture f;
    f.select("Desk");
    ScreenWindowEffectsView* e = f.effects();
    EXPECT_EQ(e->backgroundColorWell()->accessibleName(), QStringLiteral("Background Color"));
    emit e->backgroundColorWell()->colorChosen(CodableColor{0.2, 0.4, 0.6, 1});
    EXPECT_EQ(f.stored("Desk").backgroundColor, (CodableColor{0.2, 0.4, 0.6, 1}));
    pressAccessibly(e->borderSwitch());
    emit e->borderColorWell()->colorChosen(CodableColor{0, 1, 0, 1});
    EXPECT_EQ(f.stored("Desk").borderColor, (CodableColor{0, 1, 0, 1}));
    // Other sources are untouched.
    EXPECT_EQ(f.stored("Editor").backgroundColor, (CodableColor{0, 0, 0, 1}));
}

TEST(ConsoleSourcePanels, AnUpdateForASourceNoLongerInTheSceneWritesNothing) {
    PanelFixture f;
    f.select("Cam");
    Source gone = f.camera()->source();
    f.tab()->deleteSource(gone.id);
    QSignalSpy writes(f.s.streamManager.get(), &StreamManager::sceneUpdateTimestampChanged);
    gone.configuration.cameraZoom = 1.4;
    f.tab()->updateSourceConfiguration(gone);
    EXPECT_EQ(writes.count(), 0);
    EXPECT_EQ(f.tab()->scene()->sources.size(), 3u);
}

TEST(ConsoleSourcePanels, EveryControlHasAnAccessibleName) {
    PanelFixture f;
    f.select("Cam");
    for (QWidget* panel : {static_cast<QWidget*>(f.camera()), static_cast<QWidget*>(f.effects())}) {
        for (QAbstractButton* b : panel->findChildren<QAbstractButton*>())
            EXPECT_FALSE(b->accessibleName().isEmpty()) << b->metaObject()->className();
        for (QAbstractSlider* s : panel->findChildren<QAbstractSlider*>())
            EXPECT_FALSE(s->accessibleName().isEmpty());
    }
}

TEST(ConsoleSourcePanels, TheRowsDeleteQuestionQuotesTheNameQuotesIncluded) {
    PanelFixture f;
    StreamingScene scene = *f.tab()->scene();
    scene.sources[0].name = "Anna's \"Close-up\"";
    f.sidebar->setSelectedScene(scene);
    SourceRowView* row = f.tab()->sourcesList()->rows()[0];
    ConfirmDialog* alert = row->confirmDelete();
    ASSERT_NE(alert, nullptr);
    EXPECT_TRUE(alert->isVisible());
    EXPECT_EQ(alert->title(), QStringLiteral("Delete Source"));
    EXPECT_EQ(alert->message(), QStringLiteral("Remove 'Anna's \"Close-up\"' from this scene?"));
    // Escape answers Cancel: nothing is removed.
    QTest::keyClick(alert, Qt::Key_Escape);
    EXPECT_EQ(f.tab()->scene()->sources.size(), 4u);
}

}  // namespace source_panel_tests
}  // namespace orvane

#pragma once

#include "console/scene_tab/SourceSettingsPanel.h"

namespace orvane {

// "VISUAL EFFECTS" of a screen or window source: brightness, scale and
// shift of the picture, its background colour, border and shadow.
class ScreenWindowEffectsView : public SourceSettingsPanel {
    Q_OBJECT

public:
    explicit ScreenWindowEffectsView(SourceUpdate onUpdate, QWidget* parent = nullptr);

    LabeledSlider* brightnessSlider() const { return brightness_; }
    LabeledSlider* scaleSlider() const { return scale_; }
    LabeledSlider* horizontalPositionSlider() const { return horizontal_; }
    LabeledSlider* verticalPositionSlider() const { return vertical_; }
    ColorSwatchButton* backgroundColorWell() const { return background_; }
    ToggleSwitch* borderSwitch() const { return border_; }
    ColorSwatchButton* borderColorWell() const { return borderColor_; }
    LabeledSlider* borderWidthSlider() const { return borderWidth_; }
    LabeledSlider* borderGlowSlider() const { return borderGlow_; }
    LabeledSlider* borderRadiusSlider() const { return borderRadius_; }
    ToggleSwitch* shadowSwitch() const { return shadow_; }
    ColorSwatchButton* shadowColorWell() const { return shadowColor_; }
    LabeledSlider* shadowBlurSlider() const { return shadowBlur_; }
    LabeledSlider* shadowXSlider() const { return shadowX_; }
    LabeledSlider* shadowYSlider() const { return shadowY_; }

private:
    LabeledSlider* brightness_ = nullptr;
    LabeledSlider* scale_ = nullptr;
    LabeledSlider* horizontal_ = nullptr;
    LabeledSlider* vertical_ = nullptr;
    ColorSwatchButton* background_ = nullptr;
    ToggleSwitch* border_ = nullptr;
    ColorSwatchButton* borderColor_ = nullptr;
    LabeledSlider* borderWidth_ = nullptr;
    LabeledSlider* borderGlow_ = nullptr;
    LabeledSlider* borderRadius_ = nullptr;
    ToggleSwitch* shadow_ = nullptr;
    ColorSwatchButton* shadowColor_ = nullptr;
    LabeledSlider* shadowBlur_ = nullptr;
    LabeledSlider* shadowX_ = nullptr;
    LabeledSlider* shadowY_ = nullptr;
};

}  // namespace orvane

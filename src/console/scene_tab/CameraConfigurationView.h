#pragma once

#include <map>

#include "console/scene_tab/SourceSettingsPanel.h"
#include "document/DocumentEnums.h"

namespace orvane {

class CameraSizeButton;

// "CAMERA SETTINGS": where the camera's picture sits and how big, its
// outline, zoom, framing, brightness and contrast, and its border.
class CameraConfigurationView : public SourceSettingsPanel {
    Q_OBJECT

public:
    explicit CameraConfigurationView(SourceUpdate onUpdate, QWidget* parent = nullptr);

    static QString positionTitle(CameraOverlayPosition position);
    static QString shapeTitle(CameraShape shape);

    SelectableTile* positionButton(CameraOverlayPosition position) const { return positions_.at(position); }
    CameraSizeButton* sizeButton(CameraOverlaySize size) const { return sizes_.at(size); }
    SelectableTile* shapeButton(CameraShape shape) const { return shapes_.at(shape); }
    LabeledSlider* zoomSlider() const { return zoom_; }
    LabeledSlider* widthSlider() const { return width_; }
    LabeledSlider* heightSlider() const { return height_; }
    LabeledSlider* horizontalPositionSlider() const { return horizontal_; }
    LabeledSlider* verticalPositionSlider() const { return vertical_; }
    LabeledSlider* brightnessSlider() const { return brightness_; }
    LabeledSlider* contrastSlider() const { return contrast_; }
    ToggleSwitch* borderSwitch() const { return border_; }
    ColorSwatchButton* borderColorWell() const { return borderColor_; }
    LabeledSlider* borderWidthSlider() const { return borderWidth_; }
    LabeledSlider* borderGlowSlider() const { return borderGlow_; }
    LabeledSlider* borderRadiusSlider() const { return borderRadius_; }

private:
    std::map<CameraOverlayPosition, SelectableTile*> positions_;
    std::map<CameraOverlaySize, CameraSizeButton*> sizes_;
    std::map<CameraShape, SelectableTile*> shapes_;
    LabeledSlider* zoom_ = nullptr;
    LabeledSlider* width_ = nullptr;
    LabeledSlider* height_ = nullptr;
    LabeledSlider* horizontal_ = nullptr;
    LabeledSlider* vertical_ = nullptr;
    LabeledSlider* brightness_ = nullptr;
    LabeledSlider* contrast_ = nullptr;
    ToggleSwitch* border_ = nullptr;
    ColorSwatchButton* borderColor_ = nullptr;
    LabeledSlider* borderWidth_ = nullptr;
    LabeledSlider* borderGlow_ = nullptr;
    LabeledSlider* borderRadius_ = nullptr;
};

}  // namespace orvane

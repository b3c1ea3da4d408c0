#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "console/scene_tab/SceneEdit.h"

class QComboBox;
class QLabel;
class QPushButton;

namespace orvane {

class ColorSwatchButton;
class GradientPresetButton;

// The scene's background: solid colour or gradient, the gradient row and
// the direction.
class SceneBackgroundSection : public QWidget {
    Q_OBJECT

public:
    SceneBackgroundSection(SceneEditor editor, QWidget* parent = nullptr);

    void setScene(const std::optional<StreamingScene>& scene);

    // Switching to a gradient on a scene without colours takes the first
    // gradient of the picker.
    static void updateBackgroundType(StreamingScene& scene, BackgroundType type);

    QPushButton* solidButton() const { return solid_; }
    QPushButton* gradientButton() const { return gradient_; }
    ColorSwatchButton* colorButton() const { return color_; }
    const std::vector<GradientPresetButton*>& presetButtons() const { return presets_; }
    QComboBox* directionMenu() const { return direction_; }

private:
    SceneEditor editor_;
    QLabel* none_ = nullptr;
    QWidget* body_ = nullptr;
    QPushButton* solid_ = nullptr;
    QPushButton* gradient_ = nullptr;
    ColorSwatchButton* color_ = nullptr;
    QWidget* gradientBlock_ = nullptr;
    std::vector<GradientPresetButton*> presets_;
    QComboBox* direction_ = nullptr;
};

}  // namespace orvane

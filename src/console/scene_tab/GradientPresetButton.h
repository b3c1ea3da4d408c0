#pragma once

#include <QPushButton>

#include "document/GradientPreset.h"

namespace orvane {

// One row entry of the gradient picker: a swatch of the gradient, outlined
// when the scene's colours are this gradient's.
class GradientPresetButton : public QPushButton {
    Q_OBJECT

public:
    explicit GradientPresetButton(const GradientPreset& preset, QWidget* parent = nullptr);

    const GradientPreset& preset() const { return preset_; }
    bool isMarked() const { return marked_; }
    void setMarked(bool marked);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    GradientPreset preset_;
    bool marked_ = false;
};

}  // namespace orvane

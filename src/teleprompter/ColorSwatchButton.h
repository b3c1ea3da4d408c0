#pragma once

#include <QPushButton>

#include "document/CodableColor.h"

namespace orvane {

// A button that shows a colour and opens the colour chooser. A chosen
// colour is taken apart into red, green, blue and alpha (sRGB).
class ColorSwatchButton : public QPushButton {
    Q_OBJECT
public:
    explicit ColorSwatchButton(const QString& accessibleLabel, QWidget* parent = nullptr);

    const CodableColor& color() const { return color_; }
    void setColor(const CodableColor& color);

signals:
    void colorPicked(const orvane::CodableColor& color);

private:
    void choose();

    CodableColor color_;
};

}  // namespace orvane

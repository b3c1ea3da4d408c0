#pragma once

#include <QPushButton>

#include "document/CodableColor.h"

namespace orvane {

// A small colour well of the teleprompter sheet: shows a colour and opens
// the colour chooser. A chosen colour is taken apart into red, green, blue
// and alpha (sRGB).
class ColorWellButton : public QPushButton {
    Q_OBJECT
public:
    explicit ColorWellButton(const QString& accessibleLabel, QWidget* parent = nullptr);

    const CodableColor& color() const { return color_; }
    void setColor(const CodableColor& color);

signals:
    void colorPicked(const orvane::CodableColor& color);

private:
    void choose();

    CodableColor color_;
};

}  // namespace orvane

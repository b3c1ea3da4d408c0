#pragma once

#include <QPushButton>

#include "document/CodableColor.h"

namespace orvane {

// A colour well: shows a colour and opens the colour chooser, reporting the
// chosen colour as device RGB. A colour that cannot be converted arrives as
// opaque black.
class ColorSwatchButton : public QPushButton {
    Q_OBJECT

public:
    explicit ColorSwatchButton(const QString& label, QWidget* parent = nullptr);

    void setColor(const CodableColor& color);
    CodableColor color() const { return color_; }
    static CodableColor fromQColor(const QColor& color);
    static QColor toQColor(const CodableColor& color);

signals:
    void colorChosen(const orvane::CodableColor& color);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void choose();

    CodableColor color_;
};

}  // namespace orvane

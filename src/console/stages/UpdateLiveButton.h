#pragma once

#include <QAbstractButton>
#include <QVariantAnimation>

namespace orvane {

class StreamManager;

// "Update Live" at the lower right of the preview: sends the preview to
// program, then reads "Updated!" on green for 0.3 seconds. Pressing and
// hovering ease in and out over 0.2 seconds: colour, scale, padding, shadow
// and the two labels blend from one look to the other.
class UpdateLiveButton : public QAbstractButton {
    Q_OBJECT
    Q_PROPERTY(bool isPressed READ isPressed NOTIFY isPressedChanged)
    Q_PROPERTY(bool isHovered READ isHovered NOTIFY isHoveredChanged)

public:
    static constexpr int pressedFeedbackMs = 300;
    static constexpr int lookChangeMs = 200;

    explicit UpdateLiveButton(StreamManager& streamManager, QWidget* parent = nullptr);

    bool isPressed() const { return isPressed_; }
    bool isHovered() const { return isHovered_; }
    // How far the look has gone towards pressed, and towards hovered: 0 to 1.
    double pressProgress() const;
    double hoverProgress() const;
    // The animations, for tests that step them by hand.
    QVariantAnimation& pressAnimation() { return pressLook_; }
    QVariantAnimation& hoverAnimation() { return hoverLook_; }
    QSize sizeHint() const override;

signals:
    void isPressedChanged(bool pressed);
    void isHoveredChanged(bool hovered);

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void press();
    void setIsPressed(bool pressed);
    void setIsHovered(bool hovered);
    static void animateTo(QVariantAnimation& animation, double target);

    StreamManager& streamManager_;
    bool isPressed_ = false;
    bool isHovered_ = false;
    QVariantAnimation pressLook_;
    QVariantAnimation hoverLook_;
};

}  // namespace orvane

#pragma once

#include <QAbstractButton>

namespace orvane {

class StreamManager;

// "Update Live" at the lower right of the preview: sends the preview to
// program, then reads "Updated!" on green for 0.3 seconds.
class UpdateLiveButton : public QAbstractButton {
    Q_OBJECT
    Q_PROPERTY(bool isPressed READ isPressed NOTIFY isPressedChanged)
    Q_PROPERTY(bool isHovered READ isHovered NOTIFY isHoveredChanged)

public:
    static constexpr int pressedFeedbackMs = 300;

    explicit UpdateLiveButton(StreamManager& streamManager, QWidget* parent = nullptr);

    bool isPressed() const { return isPressed_; }
    bool isHovered() const { return isHovered_; }
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

    StreamManager& streamManager_;
    bool isPressed_ = false;
    bool isHovered_ = false;
};

}  // namespace orvane

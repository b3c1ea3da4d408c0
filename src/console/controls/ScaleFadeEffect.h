#pragma once

#include <QGraphicsEffect>
#include <QVariantAnimation>

namespace orvane {

// Lets a widget enter and leave by growing from its centre while fading in,
// and shrinking while fading out: the widget is drawn at `progress` of its
// size about its centre, at `progress` opacity. The widget keeps its place in
// the layout throughout; `hideWhenGone` hides it once it has left.
class ScaleFadeEffect : public QGraphicsEffect {
    Q_OBJECT

public:
    static constexpr int durationMs = 200;
    // The smallest scale drawn: a widget is never drawn at size zero.
    static constexpr double smallestScale = 0.00001;

    explicit ScaleFadeEffect(QObject* parent = nullptr);

    double progress() const;
    // Eases from where it is to shown (1) or gone (0) over 0.2 seconds.
    void animateTo(bool shown);
    // Jumps to shown or gone, without animation.
    void setShown(bool shown);
    bool isShown() const { return target_ > 0; }
    QVariantAnimation& animation() { return animation_; }

signals:
    // The widget has finished leaving.
    void gone();

protected:
    void draw(QPainter* painter) override;

private:
    QVariantAnimation animation_;
    double target_ = 1;
};

}  // namespace orvane

#pragma once

#include <QWidget>
#include <functional>

class QLabel;
class QSlider;

namespace orvane {

// A read-out over a slider that moves in fixed steps between two values,
// such as "Opacity: 80%". The slider's accessible name is the read-out's
// name; valueChanged reports the user's changes only.
class CaptionedSlider : public QWidget {
    Q_OBJECT

public:
    using Format = std::function<QString(double)>;

    CaptionedSlider(const QString& name, double minimum, double maximum, double step, Format format,
                  QWidget* parent = nullptr);

    double value() const;
    // Snaps to the nearest step, without emitting valueChanged.
    void setValue(double value);
    QSlider* slider() const { return slider_; }
    QLabel* readOut() const { return readOut_; }

signals:
    void valueChanged(double value);

private:
    void showValue();

    double minimum_;
    double step_;
    Format format_;
    QLabel* readOut_ = nullptr;
    QSlider* slider_ = nullptr;
};

}  // namespace orvane

#pragma once

#include <QWidget>

class QLabel;
class QPushButton;
class QSlider;

namespace orvane {

class StreamManager;
class ToggleSwitch;

// How the program changes from one scene to the next: on or off, the kind
// of transition and its length. Written into the current preset.
class SceneTransitionsSection : public QWidget {
    Q_OBJECT

public:
    static constexpr double noPresetDuration = 0.3;

    explicit SceneTransitionsSection(StreamManager& streamManager, QWidget* parent = nullptr);

    ToggleSwitch* enabledSwitch() const { return enabled_; }
    QPushButton* typeButton() const { return type_; }
    QSlider* durationSlider() const { return duration_; }
    QLabel* durationText() const { return durationText_; }

private:
    void refresh();

    StreamManager& streamManager_;
    ToggleSwitch* enabled_ = nullptr;
    QWidget* details_ = nullptr;
    QPushButton* type_ = nullptr;
    QSlider* duration_ = nullptr;
    QLabel* durationText_ = nullptr;
};

}  // namespace orvane

#pragma once

#include <QWidget>
#include <optional>

#include "console/scene_tab/SceneEdit.h"

class QLabel;

namespace orvane {

class StreamManager;
class ToggleSwitch;

// Whether the selected scene shows the preset's progress bar. Shown only
// while the preset's progress bar is on; without a scene it says to select
// one.
class SceneProgressBarSection : public QWidget {
    Q_OBJECT

public:
    SceneProgressBarSection(StreamManager& streamManager, SceneEditor editor, QWidget* parent = nullptr);

    void setScene(const std::optional<StreamingScene>& scene);

    QLabel* noSceneLabel() const { return noScene_; }
    ToggleSwitch* showSwitch() const { return show_; }

private:
    void refresh();

    StreamManager& streamManager_;
    SceneEditor editor_;
    std::optional<StreamingScene> scene_;
    QLabel* noScene_ = nullptr;
    QWidget* switchRow_ = nullptr;
    ToggleSwitch* show_ = nullptr;
};

}  // namespace orvane

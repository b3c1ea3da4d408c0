#pragma once

#include <QWidget>
#include <optional>

#include "console/scene_tab/SceneEdit.h"

class QLabel;

namespace orvane {

class StreamManager;
class ToggleSwitch;

// Whether the selected scene shows the preset's branding, and a summary of
// what it would show. The branding itself is edited in the preset tab.
class SceneBrandingSection : public QWidget {
    Q_OBJECT

public:
    SceneBrandingSection(StreamManager& streamManager, SceneEditor editor, QWidget* parent = nullptr);

    void setScene(const std::optional<StreamingScene>& scene);

    QLabel* noSceneLabel() const { return noScene_; }
    QLabel* noBrandingLabel() const { return noBranding_; }
    ToggleSwitch* enabledSwitch() const { return enabled_; }
    QWidget* summary() const { return summary_; }
    QLabel* textLabel() const { return text_; }
    QWidget* logoAttached() const { return logo_; }

private:
    void refresh();

    StreamManager& streamManager_;
    SceneEditor editor_;
    std::optional<StreamingScene> scene_;
    QLabel* noScene_ = nullptr;
    QWidget* body_ = nullptr;
    QLabel* noBranding_ = nullptr;
    QWidget* withBranding_ = nullptr;
    ToggleSwitch* enabled_ = nullptr;
    QWidget* summary_ = nullptr;
    QLabel* text_ = nullptr;
    QWidget* logo_ = nullptr;
};

}  // namespace orvane

#pragma once

#include <QWidget>
#include <map>
#include <optional>

#include "console/scene_tab/SceneEdit.h"

namespace orvane {

class SymbolButton;
class ToggleSwitch;

// The scene's layout as a grid of symbol buttons, and the slow cinematic
// zoom.
class SceneLayoutSection : public QWidget {
    Q_OBJECT

public:
    SceneLayoutSection(SceneEditor editor, QWidget* parent = nullptr);

    void setScene(const std::optional<StreamingScene>& scene);

    static const char* symbolFor(SceneLayout layout);
    SymbolButton* buttonFor(SceneLayout layout) const { return buttons_.at(layout); }
    ToggleSwitch* cinematicZoomSwitch() const { return zoom_; }

private:
    SceneEditor editor_;
    std::map<SceneLayout, SymbolButton*> buttons_;
    ToggleSwitch* zoom_ = nullptr;
};

}  // namespace orvane

#pragma once

#include <QWidget>
#include <map>

#include "engine/DrawingButtonPosition.h"

namespace orvane {

class PresetBrandingSection;
class ProgressBarSection;
class SceneTransitionsSection;
class SegmentedButton;
class StreamManager;
class TeleprompterManager;
class TeleprompterSection;
class ToggleSwitch;

// The sidebar's preset tab: settings of the whole preset and of the
// session rather than of one scene.
class PresetTabView : public QWidget {
    Q_OBJECT

public:
    explicit PresetTabView(StreamManager& streamManager, QWidget* parent = nullptr);

    // Adds the teleprompter block below the transitions.
    void setTeleprompterManager(TeleprompterManager* teleprompter);

    PresetBrandingSection* branding() const { return branding_; }
    ProgressBarSection* progressBar() const { return progressBar_; }
    SceneTransitionsSection* transitions() const { return transitions_; }
    TeleprompterSection* teleprompterSection() const { return teleprompter_; }
    ToggleSwitch* hideProgramSwitch() const { return hideProgram_; }
    SegmentedButton* positionButton(DrawingButtonPosition position) const { return positions_.at(position); }
    ToggleSwitch* showDrawingButtonSwitch() const { return showDrawing_; }

private:
    void refresh();

    StreamManager& streamManager_;
    PresetBrandingSection* branding_ = nullptr;
    ProgressBarSection* progressBar_ = nullptr;
    SceneTransitionsSection* transitions_ = nullptr;
    TeleprompterSection* teleprompter_ = nullptr;
    ToggleSwitch* hideProgram_ = nullptr;
    std::map<DrawingButtonPosition, SegmentedButton*> positions_;
    ToggleSwitch* showDrawing_ = nullptr;
};

}  // namespace orvane

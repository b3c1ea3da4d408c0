#pragma once

#include <QWidget>
#include <vector>

#include "document/Preset.h"

class QSettings;

namespace orvane {

class AdaptiveGrid;
class CreatePresetView;
class PresetStorage;

// The first screen: the stored presets as cards, the create card, and the
// permissions panel. Choosing or creating a preset remembers it as the last
// one and hands it on.
class PresetSelectionView : public QWidget {
    Q_OBJECT

public:
    PresetSelectionView(PresetStorage& storage, QSettings& settings, QWidget* parent = nullptr);

    // Reads the presets from storage again (whenever the screen is shown).
    void reload();
    const std::vector<Preset>& presets() const { return presets_; }

    void selectPreset(const Preset& preset);
    void deletePreset(const Preset& preset);
    // Opens the create sheet; returns it so that callers may drive it.
    CreatePresetView* showCreatePreset();
    void showPermissionsManagement();

signals:
    void presetSelected(const orvane::Preset& preset);
    void permissionsRequested();

private:
    void rebuildCards();

    PresetStorage& storage_;
    QSettings& settings_;
    std::vector<Preset> presets_;
    AdaptiveGrid* grid_ = nullptr;
};

}  // namespace orvane

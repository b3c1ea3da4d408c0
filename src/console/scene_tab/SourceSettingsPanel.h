#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "document/Source.h"

class QVBoxLayout;

namespace orvane {

class ColorSwatchButton;
class ConfigSection;
class LabeledSlider;
class SelectableTile;
class ToggleSwitch;

// What the panels that edit one source share: a head, titled sections, and
// controls bound to one field of the source's configuration each. A control
// that the presenter changes makes a copy of the source with that one field
// changed and hands it to `onUpdate` at once; `setSource` shows a source
// without reporting anything.
class SourceSettingsPanel : public QWidget {
    Q_OBJECT

public:
    using SourceUpdate = std::function<void(const Source&)>;

    void setSource(const Source& source);
    const Source& source() const { return source_; }

protected:
    SourceSettingsPanel(const QString& head, SourceUpdate onUpdate, QWidget* parent);

    ConfigSection* addSection(const QString& title);
    LabeledSlider* addSlider(QVBoxLayout* into, const QString& label, double minimum, double maximum, double step,
                             const QString& readoutFormat, double SourceConfiguration::*field);
    ToggleSwitch* addSwitch(QVBoxLayout* into, const QString& label, bool SourceConfiguration::*field);
    ColorSwatchButton* addColor(QVBoxLayout* into, const QString& label, CodableColor SourceConfiguration::*field);
    // A group of controls shown only while a switch's field is on. Turning
    // the switch off hides them and keeps their values.
    QVBoxLayout* addDependentGroup(QVBoxLayout* into, bool SourceConfiguration::*field, const QString& name);
    // A choice tile: current while `isCurrent` holds, `choose` on a press.
    void bindTile(SelectableTile* tile, std::function<bool(const SourceConfiguration&)> isCurrent,
                  std::function<void(SourceConfiguration&)> choose);

    // The write: a copy of the source with the change, to `onUpdate`.
    void edit(const std::function<void(SourceConfiguration&)>& change);

private:
    SourceUpdate onUpdate_;
    Source source_;
    QVBoxLayout* column_ = nullptr;
    // Each control's way of showing the current source.
    std::vector<std::function<void()>> shows_;
};

}  // namespace orvane

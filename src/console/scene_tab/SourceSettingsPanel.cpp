#include "console/scene_tab/SourceSettingsPanel.h"

#include <QVBoxLayout>

#include "console/controls/ColorSwatchButton.h"
#include "console/controls/LabeledSlider.h"
#include "console/controls/SelectableTile.h"
#include "console/controls/SidebarStyle.h"
#include "console/controls/ToggleSwitch.h"
#include "console/scene_tab/ConfigSection.h"

namespace orvane {

SourceSettingsPanel::SourceSettingsPanel(const QString& head, SourceUpdate onUpdate, QWidget* parent)
    : QWidget(parent), onUpdate_(std::move(onUpdate)) {
    setAccessibleName(head);
    column_ = new QVBoxLayout(this);
    column_->setContentsMargins(0, 0, 0, 0);
    column_->setSpacing(14);
    column_->addWidget(SidebarStyle::head(head));
}

void SourceSettingsPanel::setSource(const Source& source) {
    source_ = source;
    for (const auto& show : shows_) show();
}

void SourceSettingsPanel::edit(const std::function<void(SourceConfiguration&)>& change) {
    Source copy = source_;
    change(copy.configuration);
    source_ = copy;
    for (const auto& show : shows_) show();
    if (onUpdate_) onUpdate_(copy);
}

ConfigSection* SourceSettingsPanel::addSection(const QString& title) {
    auto* section = new ConfigSection(title);
    column_->addWidget(section);
    return section;
}

LabeledSlider* SourceSettingsPanel::addSlider(QVBoxLayout* into, const QString& label, double minimum,
                                              double maximum, double step, const QString& readoutFormat,
                                              double SourceConfiguration::*field) {
    auto* slider = new LabeledSlider(label, minimum, maximum, step, readoutFormat);
    into->addWidget(slider);
    connect(slider, &LabeledSlider::valueEdited, this,
            [this, field](double value) { edit([&](SourceConfiguration& c) { c.*field = value; }); });
    shows_.push_back([this, slider, field] { slider->setShownValue(source_.configuration.*field); });
    return slider;
}

ToggleSwitch* SourceSettingsPanel::addSwitch(QVBoxLayout* into, const QString& label,
                                             bool SourceConfiguration::*field) {
    auto* toggle = new ToggleSwitch(label);
    into->addWidget(toggle);
    connect(toggle, &QAbstractButton::toggled, this,
            [this, field](bool on) { edit([&](SourceConfiguration& c) { c.*field = on; }); });
    shows_.push_back([this, toggle, field] { toggle->setOn(source_.configuration.*field); });
    return toggle;
}

ColorSwatchButton* SourceSettingsPanel::addColor(QVBoxLayout* into, const QString& label,
                                                 CodableColor SourceConfiguration::*field) {
    auto* well = new ColorSwatchButton(label);
    into->addWidget(well);
    connect(well, &ColorSwatchButton::colorChosen, this,
            [this, field](const CodableColor& color) { edit([&](SourceConfiguration& c) { c.*field = color; }); });
    shows_.push_back([this, well, field] { well->setColor(source_.configuration.*field); });
    return well;
}

QVBoxLayout* SourceSettingsPanel::addDependentGroup(QVBoxLayout* into, bool SourceConfiguration::*field,
                                                    const QString& name) {
    auto* group = new QWidget;
    group->setAccessibleName(name);
    auto* body = new QVBoxLayout(group);
    body->setContentsMargins(0, 0, 0, 0);
    body->setSpacing(8);
    into->addWidget(group);
    shows_.push_back([this, group, field] { group->setVisible(source_.configuration.*field); });
    return body;
}

void SourceSettingsPanel::bindTile(SelectableTile* tile, std::function<bool(const SourceConfiguration&)> isCurrent,
                                   std::function<void(SourceConfiguration&)> choose) {
    connect(tile, &SelectableTile::chosen, this, [this, choose] { edit(choose); });
    shows_.push_back([this, tile, isCurrent] { tile->setCurrent(isCurrent(source_.configuration)); });
}

}  // namespace orvane

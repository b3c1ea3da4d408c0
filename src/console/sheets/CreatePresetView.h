#pragma once

#include <QDialog>

#include "document/DocumentEnums.h"
#include "document/Preset.h"

class QLineEdit;
class QPushButton;

namespace orvane {

class TemplateCard;

// The sheet for a new preset: a name, one of the four templates, and
// "Create Preset", which hands the new preset on and closes.
class CreatePresetView : public QDialog {
    Q_OBJECT

public:
    explicit CreatePresetView(QWidget* parent = nullptr);

    QLineEdit* nameField() const { return nameField_; }
    QPushButton* createButton() const { return createButton_; }
    PresetTemplate selectedTemplate() const { return selectedTemplate_; }
    void selectTemplate(PresetTemplate presetTemplate);
    TemplateCard* templateCard(PresetTemplate presetTemplate) const;

    void createPreset();

signals:
    void presetCreated(const orvane::Preset& preset);

private:
    QLineEdit* nameField_ = nullptr;
    QPushButton* createButton_ = nullptr;
    std::vector<TemplateCard*> cards_;
    PresetTemplate selectedTemplate_ = PresetTemplate::streaming;
};

}  // namespace orvane

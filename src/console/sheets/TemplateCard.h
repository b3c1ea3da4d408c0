#pragma once

#include <QPushButton>

#include "document/DocumentEnums.h"

namespace orvane {

// One template in the create sheet: symbol, name, the card's line, and the
// "Selected" mark on the chosen one.
class TemplateCard : public QPushButton {
    Q_OBJECT

public:
    explicit TemplateCard(PresetTemplate presetTemplate, QWidget* parent = nullptr);

    PresetTemplate presetTemplate() const { return template_; }
    static std::string_view symbolFor(PresetTemplate presetTemplate);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    PresetTemplate template_;
};

}  // namespace orvane

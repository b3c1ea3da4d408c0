#pragma once

#include <QWidget>
#include <map>

#include "document/BrandingConfig.h"

class QFileDialog;
class QLabel;
class QLineEdit;
class QPushButton;

namespace orvane {

class CaptionedSlider;
class SymbolButton;
class StreamManager;
class ToggleSwitch;

// The preset's branding plate: the switch, the text, the logo (copied into
// the application's logos directory when chosen, deleted with it when
// removed or replaced), its size, the corner, the opacity and the
// background. A preset without branding shows the defaults; every change is
// stored in the current preset at once and saved.
class PresetBrandingSection : public QWidget {
    Q_OBJECT

public:
    explicit PresetBrandingSection(StreamManager& streamManager, QWidget* parent = nullptr);

    // What the panel shows: the preset's branding or the defaults.
    BrandingConfig config() const;
    void updatePresetBranding(const BrandingConfig& config);

    // Opens the file chooser for a logo; the choice goes to chooseLogo.
    QFileDialog* selectImage();
    // Copies the file into the logos directory and makes the copy the logo.
    // The logo it replaces is deleted once the copy is made; a copy that
    // fails is reported and changes nothing.
    void chooseLogo(const QString& path);
    void removeLogo();

    ToggleSwitch* enabledSwitch() const { return enabled_; }
    QLineEdit* textField() const { return text_; }
    CaptionedSlider* textSizeSlider() const { return textSize_; }
    QPushButton* selectLogoButton() const { return selectLogo_; }
    SymbolButton* removeLogoButton() const { return removeLogo_; }
    QLabel* logoPreview() const { return logoPreview_; }
    CaptionedSlider* logoWidthSlider() const { return logoWidth_; }
    CaptionedSlider* logoHeightSlider() const { return logoHeight_; }
    SymbolButton* positionButton(BrandingPosition position) const { return positions_.at(position); }
    CaptionedSlider* opacitySlider() const { return opacity_; }
    ToggleSwitch* backgroundSwitch() const { return background_; }
    CaptionedSlider* backgroundOpacitySlider() const { return backgroundOpacity_; }

private:
    void edit(const std::function<void(BrandingConfig&)>& change);
    void refresh();

    StreamManager& streamManager_;
    ToggleSwitch* enabled_ = nullptr;
    QWidget* details_ = nullptr;
    QLineEdit* text_ = nullptr;
    CaptionedSlider* textSize_ = nullptr;
    QPushButton* selectLogo_ = nullptr;
    SymbolButton* removeLogo_ = nullptr;
    QLabel* logoPreview_ = nullptr;
    CaptionedSlider* logoWidth_ = nullptr;
    CaptionedSlider* logoHeight_ = nullptr;
    std::map<BrandingPosition, SymbolButton*> positions_;
    CaptionedSlider* opacity_ = nullptr;
    ToggleSwitch* background_ = nullptr;
    CaptionedSlider* backgroundOpacity_ = nullptr;
};

}  // namespace orvane

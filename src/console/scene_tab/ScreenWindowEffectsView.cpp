#include "console/scene_tab/ScreenWindowEffectsView.h"

#include <QVBoxLayout>

#include "console/controls/LabeledSlider.h"
#include "console/scene_tab/ConfigSection.h"

namespace orvane {

ScreenWindowEffectsView::ScreenWindowEffectsView(SourceUpdate onUpdate, QWidget* parent)
    : SourceSettingsPanel(QStringLiteral("VISUAL EFFECTS"), std::move(onUpdate), parent) {
    ConfigSection* picture = addSection(QStringLiteral("Picture"));
    brightness_ = addSlider(picture->body(), QStringLiteral("Brightness"), 0.5, 2.0, 0.05, QStringLiteral("%.2f"),
                            &SourceConfiguration::brightness);
    scale_ = addSlider(picture->body(), QStringLiteral("Scale"), 0.5, 2.0, 0.05, QStringLiteral("%.2fx"),
                       &SourceConfiguration::scale);

    ConfigSection* place = addSection(QStringLiteral("Position"));
    horizontal_ = addSlider(place->body(), QStringLiteral("Horizontal Position"), -1000, 1000, 10,
                            QStringLiteral("%.0f"), &SourceConfiguration::horizontalOffset);
    vertical_ = addSlider(place->body(), QStringLiteral("Vertical Position"), -1000, 1000, 10,
                          QStringLiteral("%.0f"), &SourceConfiguration::verticalOffset);

    ConfigSection* background = addSection(QStringLiteral("Background"));
    background_ = addColor(background->body(), QStringLiteral("Background Color"),
                           &SourceConfiguration::backgroundColor);

    ConfigSection* border = addSection(QStringLiteral("Border"));
    border_ = addSwitch(border->body(), QStringLiteral("Border"), &SourceConfiguration::borderEnabled);
    QVBoxLayout* borderBody =
        addDependentGroup(border->body(), &SourceConfiguration::borderEnabled, QStringLiteral("Border settings"));
    borderColor_ = addColor(borderBody, QStringLiteral("Border Color"), &SourceConfiguration::borderColor);
    borderWidth_ = addSlider(borderBody, QStringLiteral("Border Width"), 1, 20, 0.5, QStringLiteral("%.1f"),
                             &SourceConfiguration::borderWidth);
    borderGlow_ = addSlider(borderBody, QStringLiteral("Border Glow"), 0, 30, 1, QStringLiteral("%.1f"),
                            &SourceConfiguration::borderGlow);
    borderRadius_ = addSlider(borderBody, QStringLiteral("Border Radius"), 0, 50, 1, QStringLiteral("%.1f"),
                              &SourceConfiguration::borderRadius);

    ConfigSection* shadow = addSection(QStringLiteral("Shadow"));
    shadow_ = addSwitch(shadow->body(), QStringLiteral("Shadow"), &SourceConfiguration::shadowEnabled);
    QVBoxLayout* shadowBody =
        addDependentGroup(shadow->body(), &SourceConfiguration::shadowEnabled, QStringLiteral("Shadow settings"));
    shadowColor_ = addColor(shadowBody, QStringLiteral("Shadow Color"), &SourceConfiguration::shadowColor);
    shadowBlur_ = addSlider(shadowBody, QStringLiteral("Shadow Blur"), 0, 50, 1, QStringLiteral("%.1f"),
                            &SourceConfiguration::shadowRadius);
    shadowX_ = addSlider(shadowBody, QStringLiteral("X"), -30, 30, 1, QStringLiteral("%.0f"),
                         &SourceConfiguration::shadowX);
    shadowY_ = addSlider(shadowBody, QStringLiteral("Y"), -30, 30, 1, QStringLiteral("%.0f"),
                         &SourceConfiguration::shadowY);
    Source screen;
    screen.type = SourceType::screen;
    setSource(screen);
}

}  // namespace orvane

#include "console/scene_tab/SceneBackgroundSection.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "console/controls/ColorSwatchButton.h"
#include "console/controls/SegmentedButton.h"
#include "console/controls/SidebarStyle.h"
#include "console/scene_tab/GradientPresetButton.h"

namespace orvane {

SceneBackgroundSection::SceneBackgroundSection(SceneEditor editor, QWidget* parent)
    : QWidget(parent), editor_(std::move(editor)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    column->addWidget(SidebarStyle::label(QStringLiteral("Background"), 12, Theme::Weight::semibold));
    none_ = SidebarStyle::caption(QStringLiteral("No scene selected"), 11);
    column->addWidget(none_);

    body_ = new QWidget;
    auto* body = new QVBoxLayout(body_);
    body->setContentsMargins(0, 0, 0, 0);
    body->setSpacing(6);
    auto* typeRow = new QHBoxLayout;
    typeRow->setSpacing(0);
    typeRow->addWidget(SidebarStyle::label(QStringLiteral("Type"), 11));
    typeRow->addStretch();
    solid_ = new SegmentedButton(QStringLiteral("Solid Color"), SegmentedButton::Edge::first);
    gradient_ = new SegmentedButton(QStringLiteral("Gradient"), SegmentedButton::Edge::last);
    typeRow->addWidget(solid_);
    typeRow->addWidget(gradient_);
    body->addLayout(typeRow);
    connect(solid_, &QPushButton::clicked, this,
            [this] { editor_([](StreamingScene& s) { updateBackgroundType(s, BackgroundType::solid); }); });
    connect(gradient_, &QPushButton::clicked, this,
            [this] { editor_([](StreamingScene& s) { updateBackgroundType(s, BackgroundType::gradient); }); });

    color_ = new ColorSwatchButton(QStringLiteral("Color"));
    connect(color_, &ColorSwatchButton::colorChosen, this, [this](const CodableColor& c) {
        editor_([c](StreamingScene& s) { s.backgroundColor = c; });
    });
    body->addWidget(color_);

    gradientBlock_ = new QWidget;
    auto* gradientColumn = new QVBoxLayout(gradientBlock_);
    gradientColumn->setContentsMargins(0, 0, 0, 0);
    gradientColumn->setSpacing(4);
    gradientColumn->addWidget(SidebarStyle::label(QStringLiteral("Gradient Presets"), 10, Theme::Weight::regular,
                                                  Theme::gray()));
    auto* scroll = new QScrollArea;
    scroll->setFixedHeight(60);
    scroll->setWidgetResizable(true);
    scroll->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    auto* row = new QWidget;
    auto* rowLayout = new QHBoxLayout(row);
    rowLayout->setContentsMargins(0, 0, 0, 0);
    rowLayout->setSpacing(6);
    for (const GradientPreset& preset : GradientPreset::presets()) {
        auto* button = new GradientPresetButton(preset);
        connect(button, &QPushButton::clicked, this, [this, preset] {
            editor_([preset](StreamingScene& s) {
                s.gradientColors = preset.colors;
                s.gradientDirection = preset.direction;
            });
        });
        rowLayout->addWidget(button);
        presets_.push_back(button);
    }
    rowLayout->addStretch();
    scroll->setWidget(row);
    gradientColumn->addWidget(scroll);
    auto* directionRow = new QHBoxLayout;
    directionRow->addWidget(SidebarStyle::label(QStringLiteral("Direction"), 11));
    direction_ = new QComboBox;
    direction_->setAccessibleName(QStringLiteral("Direction"));
    for (GradientDirection d : allCases<GradientDirection>()) {
        const auto text = toString(d);
        direction_->addItem(QString::fromUtf8(text.data(), qsizetype(text.size())), int(d));
    }
    connect(direction_, &QComboBox::activated, this, [this](int index) {
        const auto d = GradientDirection(direction_->itemData(index).toInt());
        editor_([d](StreamingScene& s) { s.gradientDirection = d; });
    });
    directionRow->addWidget(direction_, 1);
    gradientColumn->addLayout(directionRow);
    body->addWidget(gradientBlock_);
    column->addWidget(body_);
    setScene(std::nullopt);
}

void SceneBackgroundSection::updateBackgroundType(StreamingScene& scene, BackgroundType type) {
    scene.backgroundType = type;
    if (type == BackgroundType::gradient && scene.gradientColors.empty()) {
        const GradientPreset& first = GradientPreset::presets().front();
        scene.gradientColors = first.colors;
        scene.gradientDirection = first.direction;
    }
}

void SceneBackgroundSection::setScene(const std::optional<StreamingScene>& scene) {
    none_->setVisible(!scene);
    body_->setVisible(scene.has_value());
    if (!scene) return;
    const bool isGradient = scene->backgroundType == BackgroundType::gradient;
    solid_->setChecked(!isGradient);
    gradient_->setChecked(isGradient);
    color_->setVisible(!isGradient);
    color_->setColor(scene->backgroundColor);
    gradientBlock_->setVisible(isGradient);
    for (GradientPresetButton* button : presets_) button->setMarked(button->preset().matches(scene->gradientColors));
    const QSignalBlocker block(direction_);
    direction_->setCurrentIndex(direction_->findData(int(scene->gradientDirection)));
}

}  // namespace orvane

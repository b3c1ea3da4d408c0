#include "console/scene_tab/SceneLayoutSection.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "console/controls/SidebarStyle.h"
#include "console/controls/SymbolButton.h"
#include "console/controls/ToggleSwitch.h"

namespace orvane {

namespace {
SymbolButton::Look layoutLook(bool selected) {
    SymbolButton::Look look;
    look.foreground = selected ? Qt::white : Theme::white(0.8);
    look.background = selected ? Theme::withAlpha(Theme::purple(), 0.8) : Theme::white(0.06);
    look.fontSize = 10;
    look.symbolSize = 12;
    look.paddingX = 6;
    look.paddingY = 6;
    return look;
}
}  // namespace

const char* SceneLayoutSection::symbolFor(SceneLayout layout) {
    switch (layout) {
        case SceneLayout::fullCamera: return "person.fill";
        case SceneLayout::fullScreen: return "rectangle.fill";
        case SceneLayout::splitHorizontal: return "rectangle.split.2x1.fill";
        case SceneLayout::pipBottomRight: return "pip.exit";
        case SceneLayout::pipBottomLeft: return "pip.enter";
        case SceneLayout::pipTopRight: return "pip.swap";
        case SceneLayout::pipTopLeft: return "pip.remove";
        case SceneLayout::cameraLeft: return "sidebar.left";
        case SceneLayout::cameraRight: return "sidebar.right";
    }
    return "rectangle";
}

SceneLayoutSection::SceneLayoutSection(SceneEditor editor, QWidget* parent)
    : QWidget(parent), editor_(std::move(editor)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(SidebarStyle::label(QStringLiteral("Layout"), 12, Theme::Weight::semibold));
    auto* grid = new QGridLayout;
    grid->setSpacing(12);
    int i = 0;
    for (SceneLayout layout : allCases<SceneLayout>()) {
        const auto text = toString(layout);
        auto* button = new SymbolButton(QString::fromUtf8(text.data(), qsizetype(text.size())), symbolFor(layout));
        button->setLook(layoutLook(false));
        connect(button, &QPushButton::clicked, this,
                [this, layout] { editor_([layout](StreamingScene& s) { s.layout = layout; }); });
        grid->addWidget(button, i / 2, i % 2);
        buttons_[layout] = button;
        ++i;
    }
    column->addLayout(grid);

    auto* zoomRow = new QHBoxLayout;
    auto* zoomText = new QVBoxLayout;
    zoomText->setSpacing(0);
    zoomText->addWidget(SidebarStyle::label(QStringLiteral("Cinematic Zoom"), 11, Theme::Weight::medium));
    zoomText->addWidget(SidebarStyle::label(QStringLiteral("Slow zoom effect"), 9, Theme::Weight::regular,
                                            Theme::gray()));
    zoomRow->addLayout(zoomText, 1);
    zoom_ = new ToggleSwitch(QStringLiteral("Cinematic Zoom"));
    zoom_->setLabelVisible(false);
    connect(zoom_, &ToggleSwitch::toggled, this,
            [this](bool on) { editor_([on](StreamingScene& s) { s.cinematicZoomEnabled = on; }); });
    zoomRow->addWidget(zoom_);
    column->addLayout(zoomRow);
}

void SceneLayoutSection::setScene(const std::optional<StreamingScene>& scene) {
    setEnabled(scene.has_value());
    for (auto& [layout, button] : buttons_) button->setLook(layoutLook(scene && scene->layout == layout));
    zoom_->setOn(scene && scene->cinematicZoomEnabled);
}

}  // namespace orvane

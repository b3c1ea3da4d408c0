#include "console/stages/PreviewHeader.h"

#include <QHBoxLayout>

#include "console/controls/SymbolButton.h"
#include "engine/StreamManager.h"

namespace orvane {

namespace {
bool hasSourceOf(const std::optional<StreamingScene>& scene, SourceType type) {
    if (!scene) return false;
    for (const Source& s : scene->sources)
        if (s.type == type) return true;
    return false;
}
}  // namespace

PreviewHeader::PreviewHeader(StreamManager& streamManager, QWidget* parent)
    : StageHeader(QStringLiteral("PREVIEW"), false, parent), streamManager_(streamManager) {
    bringToFront_ = new SymbolButton(QStringLiteral("Bring to Front"), "arrow.up.forward.square");
    connect(bringToFront_, &QPushButton::clicked, this, &PreviewHeader::bringToFront);
    buttonRow()->addWidget(bringToFront_);
    connect(&streamManager_, &StreamManager::activeSceneChanged, this, &PreviewHeader::refresh);
    refresh();
}

void PreviewHeader::refresh() {
    const auto& scene = streamManager_.activeScene();
    setSubtitle(scene ? QString::fromStdString(scene->name) : QStringLiteral("No scene"));
    bringToFront_->setVisible(hasSourceOf(scene, SourceType::window) || hasSourceOf(scene, SourceType::camera));
}

void PreviewHeader::bringToFront() {
    const auto& scene = streamManager_.activeScene();
    if (scene && hasSourceOf(scene, SourceType::window))
        streamManager_.bringSceneWindowToFront(*scene);
    else
        streamManager_.bringMainWindowToFront();
}

}  // namespace orvane

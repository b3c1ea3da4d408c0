#include "console/program_window/ConsoleWindowLayer.h"

#include <QApplication>
#include <QDialog>
#include <QWidget>

#include "console/program_window/ProgramOutputWindow.h"
#include "engine/StreamManager.h"

namespace orvane {

ConsoleWindowLayer::ConsoleWindowLayer(StreamManager& streamManager, const FrameSource* frames)
    : streamManager_(streamManager), frames_(frames) {}

std::shared_ptr<ProgramWindow> ConsoleWindowLayer::createProgramWindow(const ProgramWindowOptions& options,
                                                                       std::function<void(ProgramWindow*)> onUserClose) {
    return std::make_shared<ProgramOutputWindow>(streamManager_, frames_, options, std::move(onUserClose),
                                                 streamManager_.settings());
}

void ConsoleWindowLayer::bringApplicationToFront() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || qobject_cast<QDialog*>(window)) continue;
        window->raise();
        window->activateWindow();
    }
}

}  // namespace orvane

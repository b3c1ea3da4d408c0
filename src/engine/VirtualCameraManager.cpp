#include "engine/VirtualCameraManager.h"

#include "engine/StreamManager.h"

namespace orvane {

VirtualCameraManager::VirtualCameraManager(StreamManager* streamManager, QObject* parent)
    : QObject(parent), streamManager_(streamManager) {}

void VirtualCameraManager::setIsRunning(bool running) {
    if (isRunning_ == running) return;
    isRunning_ = running;
    emit isRunningChanged(running);
}

StreamManager* VirtualCameraManager::streamManager() const {
    return static_cast<StreamManager*>(streamManager_.data());
}

}  // namespace orvane

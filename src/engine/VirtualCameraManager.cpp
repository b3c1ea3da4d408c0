#include "engine/VirtualCameraManager.h"

namespace orvane {

VirtualCameraManager::VirtualCameraManager(QObject* parent) : QObject(parent) {}

void VirtualCameraManager::setIsRunning(bool running) {
    if (isRunning_ == running) return;
    isRunning_ = running;
    emit isRunningChanged(running);
}

}  // namespace orvane

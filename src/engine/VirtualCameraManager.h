#pragma once

#include <QObject>

namespace orvane {

// The pop-out program window seen as a camera: a flag that follows the
// window. No frame leaves the process. `isRunning` rises when the program
// window controller first opens the window and falls only when it closes it;
// a close by the title bar leaves it set.
class VirtualCameraManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isRunning READ isRunning WRITE setIsRunning NOTIFY isRunningChanged)

public:
    explicit VirtualCameraManager(QObject* parent = nullptr);

    bool isRunning() const { return isRunning_; }
    void setIsRunning(bool running);

signals:
    void isRunningChanged(bool running);

private:
    bool isRunning_ = false;
};

}  // namespace orvane

#pragma once

#include <QObject>
#include <QPointer>

namespace orvane {

class StreamManager;

// The pop-out program window seen as a camera: a flag that follows the
// window. No frame leaves the process. `isRunning` rises when the session
// first opens the window and falls only when the session closes it; a close
// by the title bar leaves it set.
class VirtualCameraManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isRunning READ isRunning WRITE setIsRunning NOTIFY isRunningChanged)

public:
    static constexpr int captureWidth = 1920;  // nothing reads the size yet
    static constexpr int captureHeight = 1080;

    explicit VirtualCameraManager(StreamManager* streamManager, QObject* parent = nullptr);

    bool isRunning() const { return isRunning_; }
    void setIsRunning(bool running);

    StreamManager* streamManager() const;

signals:
    void isRunningChanged(bool running);

private:
    bool isRunning_ = false;
    QPointer<QObject> streamManager_;  // the session owns us; weak on purpose
};

}  // namespace orvane

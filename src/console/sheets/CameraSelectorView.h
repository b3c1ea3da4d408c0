#pragma once

#include <QDialog>
#include <optional>
#include <vector>

#include "capture/CameraDevice.h"

namespace orvane {

class CameraBackend;
class CaptureListPanel;

// The sheet that picks a camera. The list is read once, when the sheet is
// made; choosing a camera reports it and closes the sheet.
class CameraSelectorView : public QDialog {
    Q_OBJECT

public:
    CameraSelectorView(CameraBackend* backend, std::optional<QString> selectedId, QWidget* parent = nullptr);

    const std::vector<CameraDevice>& availableCameras() const { return cameras_; }
    CaptureListPanel* body() const { return body_; }
    void choose(const CameraDevice& camera);

signals:
    void cameraChosen(const orvane::CameraDevice& camera);

private:
    CaptureListPanel* body_ = nullptr;
    std::vector<CameraDevice> cameras_;
};

}  // namespace orvane

#pragma once

#include <QMetaType>
#include <QString>

namespace orvane {

// A camera offered by the camera sheet; a source keeps its id.
struct CameraDevice {
    QString id;    // the device path for V4L2 cameras
    QString name;  // the device's card name

    friend bool operator==(const CameraDevice&, const CameraDevice&) = default;
};

}  // namespace orvane

Q_DECLARE_METATYPE(orvane::CameraDevice)

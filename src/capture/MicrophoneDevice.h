#pragma once

#include <QMetaType>
#include <QString>

namespace orvane {

// A microphone offered by the microphone sheet.
struct MicrophoneDevice {
    QString id;    // the sound server's source name
    QString name;  // its description

    friend bool operator==(const MicrophoneDevice&, const MicrophoneDevice&) = default;
};

}  // namespace orvane

Q_DECLARE_METATYPE(orvane::MicrophoneDevice)

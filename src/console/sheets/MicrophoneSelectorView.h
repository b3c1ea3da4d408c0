#pragma once

#include <QDialog>
#include <functional>
#include <optional>
#include <vector>

#include "capture/MicrophoneDevice.h"

namespace orvane {

class CaptureListPanel;

// The sheet that picks the recording's microphone. Its first row turns the
// microphone off; the devices follow in the sound server's order.
class MicrophoneSelectorView : public QDialog {
    Q_OBJECT

public:
    using Lister = std::function<std::vector<MicrophoneDevice>()>;

    // Without a lister the sound server is asked.
    MicrophoneSelectorView(const std::optional<MicrophoneDevice>& selected, Lister lister = {},
                           QWidget* parent = nullptr);

    const std::vector<MicrophoneDevice>& availableMicrophones() const { return microphones_; }
    CaptureListPanel* body() const { return body_; }
    void choose(const std::optional<MicrophoneDevice>& microphone);

signals:
    void microphoneChosen(const std::optional<orvane::MicrophoneDevice>& microphone);

private:
    CaptureListPanel* body_ = nullptr;
    std::vector<MicrophoneDevice> microphones_;
};

}  // namespace orvane

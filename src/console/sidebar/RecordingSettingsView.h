#pragma once

#include <QWidget>

#include "console/sheets/MicrophoneSelectorView.h"

class QComboBox;

namespace orvane {

class RecordingManager;
class SymbolButton;
class ToggleSwitch;

// The recorder's settings, shown inside the recording panel. They read and
// write the recorder's published settings only; a change during a
// recording counts from the next start.
class RecordingSettingsView : public QWidget {
    Q_OBJECT

public:
    explicit RecordingSettingsView(RecordingManager& recorder, QWidget* parent = nullptr);

    // Where the microphone sheet lists devices; the sound server when unset.
    void setMicrophoneLister(MicrophoneSelectorView::Lister lister) { lister_ = std::move(lister); }
    MicrophoneSelectorView* showMicrophoneSelector();

    ToggleSwitch* includeAudioSwitch() const { return includeAudio_; }
    ToggleSwitch* systemAudioSwitch() const { return systemAudio_; }
    ToggleSwitch* microphoneSwitch() const { return microphone_; }
    SymbolButton* microphoneButton() const { return microphoneButton_; }
    QComboBox* audioQualityMenu() const { return audioQuality_; }
    QComboBox* videoQualityMenu() const { return videoQuality_; }
    QComboBox* formatMenu() const { return format_; }

private:
    void refresh();

    RecordingManager& recorder_;
    MicrophoneSelectorView::Lister lister_;
    ToggleSwitch* includeAudio_ = nullptr;
    QWidget* audioBlock_ = nullptr;
    ToggleSwitch* systemAudio_ = nullptr;
    ToggleSwitch* microphone_ = nullptr;
    SymbolButton* microphoneButton_ = nullptr;
    QComboBox* audioQuality_ = nullptr;
    QComboBox* videoQuality_ = nullptr;
    QComboBox* format_ = nullptr;
};

}  // namespace orvane

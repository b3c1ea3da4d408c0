#pragma once

#include <QWidget>

class QLabel;

namespace orvane {

class RecordingManager;
class RecordingSettingsView;
class StreamManager;
class SymbolButton;

// The recording tab: start and stop, what is recorded, how long, where the
// file went, what failed. It only reads and writes the recorder's published
// state.
class RecordingControlsView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool showingSettings READ showingSettings WRITE setShowingSettings NOTIFY showingSettingsChanged)

public:
    // Without a recorder the panel says that recording is unavailable.
    RecordingControlsView(StreamManager& streamManager, RecordingManager* recorder, QWidget* parent = nullptr);

    void toggleRecording();
    bool showingSettings() const { return showingSettings_; }
    void setShowingSettings(bool showing);

    SymbolButton* mainButton() const { return mainButton_; }
    SymbolButton* settingsButton() const { return gear_; }
    RecordingSettingsView* settingsView() const { return settings_; }
    QLabel* statusText() const { return status_; }
    QLabel* durationText() const { return duration_; }
    QLabel* errorText() const { return error_; }
    QLabel* microphoneLabel() const { return micLabel_; }
    QLabel* systemLabel() const { return systemLabel_; }
    SymbolButton* revealButton() const { return reveal_; }
    SymbolButton* openFolderButton() const { return openFolder_; }

signals:
    void showingSettingsChanged(bool showing);

private:
    void refresh();

    StreamManager& streamManager_;
    RecordingManager* recorder_ = nullptr;
    bool showingSettings_ = false;
    SymbolButton* gear_ = nullptr;
    RecordingSettingsView* settings_ = nullptr;
    SymbolButton* mainButton_ = nullptr;
    QLabel* systemIcon_ = nullptr;
    QLabel* systemLabel_ = nullptr;
    QLabel* micIcon_ = nullptr;
    QLabel* micLabel_ = nullptr;
    QWidget* statusRow_ = nullptr;
    QLabel* status_ = nullptr;
    QLabel* duration_ = nullptr;
    QWidget* doneRow_ = nullptr;
    SymbolButton* reveal_ = nullptr;
    SymbolButton* openFolder_ = nullptr;
    QLabel* error_ = nullptr;
};

}  // namespace orvane

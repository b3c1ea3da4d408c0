#include "console/sidebar/RecordingSettingsView.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "console/controls/EnumMenu.h"
#include "console/controls/SidebarStyle.h"
#include "console/controls/SymbolButton.h"
#include "console/controls/ToggleSwitch.h"
#include "recording/RecordingManager.h"

namespace orvane {

namespace {
QHBoxLayout* pickerRow(const QString& label, QComboBox* menu) {
    auto* row = new QHBoxLayout;
    row->addWidget(SidebarStyle::label(label, 11));
    row->addWidget(menu, 1);
    return row;
}
}  // namespace

RecordingSettingsView::RecordingSettingsView(RecordingManager& recorder, QWidget* parent)
    : QWidget(parent), recorder_(recorder) {
    setObjectName(QStringLiteral("recordingSettings"));
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QStringLiteral("#recordingSettings { background: rgba(255,255,255,0.04); border-radius: 8px; }"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(10, 10, 10, 10);
    column->setSpacing(8);

    auto* audioHead = new QHBoxLayout;
    audioHead->addWidget(SidebarStyle::symbol("speaker.wave.2", 12, Theme::white(0.8)));
    audioHead->addWidget(SidebarStyle::label(QStringLiteral("Audio Sources"), 11, Theme::Weight::semibold));
    audioHead->addStretch();
    column->addLayout(audioHead);
    includeAudio_ = new ToggleSwitch(QStringLiteral("Include Audio"));
    connect(includeAudio_, &ToggleSwitch::toggled, &recorder_, &RecordingManager::setIncludeAudio);
    column->addWidget(includeAudio_);

    audioBlock_ = new QWidget;
    auto* audio = new QVBoxLayout(audioBlock_);
    audio->setContentsMargins(0, 0, 0, 0);
    audio->setSpacing(8);
    systemAudio_ = new ToggleSwitch(QStringLiteral("System Audio (Apps, Videos, Calls)"));
    connect(systemAudio_, &ToggleSwitch::toggled, &recorder_, &RecordingManager::setIncludeSystemAudio);
    audio->addWidget(systemAudio_);
    microphone_ = new ToggleSwitch(QStringLiteral("Microphone"));
    connect(microphone_, &ToggleSwitch::toggled, &recorder_, &RecordingManager::setIncludeMicrophone);
    audio->addWidget(microphone_);
    microphoneButton_ = new SymbolButton(QStringLiteral("Select Microphone"), "mic");
    connect(microphoneButton_, &QPushButton::clicked, this, [this] { showMicrophoneSelector(); });
    audio->addWidget(microphoneButton_);
    audioQuality_ = makeEnumMenu<AudioQuality>(QStringLiteral("Audio Quality"));
    connect(audioQuality_, &QComboBox::activated, this,
            [this](int i) { recorder_.setAudioQuality(enumChoiceAt<AudioQuality>(audioQuality_, i)); });
    audio->addLayout(pickerRow(QStringLiteral("Quality"), audioQuality_));
    column->addWidget(audioBlock_);

    column->addWidget(SidebarStyle::label(QStringLiteral("Video"), 11, Theme::Weight::semibold));
    videoQuality_ = makeEnumMenu<VideoQuality>(QStringLiteral("Video Quality"));
    connect(videoQuality_, &QComboBox::activated, this,
            [this](int i) { recorder_.setVideoQuality(enumChoiceAt<VideoQuality>(videoQuality_, i)); });
    column->addLayout(pickerRow(QStringLiteral("Quality"), videoQuality_));

    column->addWidget(SidebarStyle::label(QStringLiteral("Output"), 11, Theme::Weight::semibold));
    format_ = makeEnumMenu<OutputFormat>(QStringLiteral("Format"));
    connect(format_, &QComboBox::activated, this,
            [this](int i) { recorder_.setOutputFormat(enumChoiceAt<OutputFormat>(format_, i)); });
    column->addLayout(pickerRow(QStringLiteral("Format"), format_));
    auto* folder = new SymbolButton(QStringLiteral("Open Recordings Folder"), "doc.fill");
    connect(folder, &QPushButton::clicked, &recorder_, &RecordingManager::openRecordingsFolder);
    column->addWidget(folder);

    for (auto signal : {&RecordingManager::includeAudioChanged, &RecordingManager::includeMicrophoneChanged,
                        &RecordingManager::includeSystemAudioChanged})
        connect(&recorder_, signal, this, &RecordingSettingsView::refresh);
    for (auto signal : {&RecordingManager::selectedMicrophoneChanged, &RecordingManager::audioQualityChanged,
                        &RecordingManager::videoQualityChanged, &RecordingManager::outputFormatChanged})
        connect(&recorder_, signal, this, &RecordingSettingsView::refresh);
    refresh();
}

MicrophoneSelectorView* RecordingSettingsView::showMicrophoneSelector() {
    auto* sheet = new MicrophoneSelectorView(recorder_.selectedMicrophone(), lister_, window());
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    connect(sheet, &MicrophoneSelectorView::microphoneChosen, &recorder_, &RecordingManager::setSelectedMicrophone);
    sheet->open();
    return sheet;
}

void RecordingSettingsView::refresh() {
    includeAudio_->setOn(recorder_.includeAudio());
    audioBlock_->setVisible(recorder_.includeAudio());
    systemAudio_->setOn(recorder_.includeSystemAudio());
    microphone_->setOn(recorder_.includeMicrophone());
    microphoneButton_->setVisible(recorder_.includeMicrophone());
    const auto& mic = recorder_.selectedMicrophone();
    microphoneButton_->setLabel(mic ? mic->name : QStringLiteral("Select Microphone"));
    showEnumChoice(audioQuality_, recorder_.audioQuality());
    showEnumChoice(videoQuality_, recorder_.videoQuality());
    showEnumChoice(format_, recorder_.outputFormat());
}

}  // namespace orvane

#include "console/sidebar/RecordingControlsView.h"

#include <QHBoxLayout>
#include <QMetaObject>
#include <QVBoxLayout>

#include "console/controls/SidebarStyle.h"
#include "console/controls/SymbolButton.h"
#include "console/controls/Symbols.h"
#include "console/sidebar/RecordingSettingsView.h"
#include "engine/StreamManager.h"
#include "recording/RecordingDuration.h"
#include "recording/RecordingManager.h"

namespace orvane {

namespace {
SymbolButton* linkButton(const QString& text) {
    auto* button = new SymbolButton(text, std::string());
    SymbolButton::Look look;
    look.foreground = Theme::blue();
    look.background = Qt::transparent;
    look.fontSize = 11;
    look.paddingX = 2;
    button->setLook(look);
    return button;
}
}  // namespace

RecordingControlsView::RecordingControlsView(StreamManager& streamManager, RecordingManager* recorder,
                                             QWidget* parent)
    : QWidget(parent), streamManager_(streamManager), recorder_(recorder) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(12, 12, 12, 16);
    column->setSpacing(12);

    auto* head = new QHBoxLayout;
    head->setSpacing(6);
    head->addWidget(SidebarStyle::symbol("record.circle.fill", 16, Theme::red()));
    head->addWidget(SidebarStyle::label(QStringLiteral("Recording"), 14, Theme::Weight::semibold));
    head->addStretch();
    gear_ = SidebarStyle::iconButton("gear", QStringLiteral("Recording Settings"), Theme::gray(), 14);
    connect(gear_, &QPushButton::clicked, this, [this] { setShowingSettings(!showingSettings_); });
    head->addWidget(gear_);
    column->addLayout(head);

    if (!recorder_) {
        gear_->hide();
        column->addWidget(SidebarStyle::caption(QStringLiteral("Recording is not available in this build."), 11));
        column->addStretch();
        return;
    }

    settings_ = new RecordingSettingsView(*recorder_);
    settings_->hide();
    column->addWidget(settings_);

    mainButton_ = new SymbolButton(QStringLiteral("Start Recording"), "record.circle");
    connect(mainButton_, &QPushButton::clicked, this, &RecordingControlsView::toggleRecording);
    column->addWidget(mainButton_);

    auto* indicators = new QHBoxLayout;
    indicators->setSpacing(4);
    systemIcon_ = new QLabel;
    systemLabel_ = SidebarStyle::label(QStringLiteral("System"), 10, Theme::Weight::regular, Theme::gray());
    micIcon_ = new QLabel;
    micLabel_ = SidebarStyle::label(QString(), 10, Theme::Weight::regular, Theme::gray());
    indicators->addWidget(systemIcon_);
    indicators->addWidget(systemLabel_);
    indicators->addSpacing(14);
    indicators->addWidget(micIcon_);
    indicators->addWidget(micLabel_, 1);
    column->addLayout(indicators);

    statusRow_ = new QWidget;
    auto* statusRow = new QHBoxLayout(statusRow_);
    statusRow->setContentsMargins(0, 0, 0, 0);
    auto* dot = new QLabel;
    dot->setFixedSize(8, 8);
    dot->setStyleSheet(QStringLiteral("background: rgb(255,59,48); border-radius: 4px;"));
    statusRow->addWidget(dot);
    status_ = SidebarStyle::label(QString(), 12);
    statusRow->addWidget(status_, 1);
    duration_ = SidebarStyle::label(QString(), 11, Theme::Weight::regular, Theme::gray());
    duration_->setFont(Theme::font(11));
    statusRow->addWidget(duration_);
    column->addWidget(statusRow_);

    doneRow_ = new QWidget;
    auto* done = new QHBoxLayout(doneRow_);
    done->setContentsMargins(0, 0, 0, 0);
    reveal_ = linkButton(QStringLiteral("Show in Finder"));
    connect(reveal_, &QPushButton::clicked, recorder_, &RecordingManager::revealRecordingInFinder);
    openFolder_ = linkButton(QStringLiteral("Open Folder"));
    connect(openFolder_, &QPushButton::clicked, recorder_, &RecordingManager::openRecordingsFolder);
    done->addWidget(reveal_);
    done->addWidget(openFolder_);
    done->addStretch();
    column->addWidget(doneRow_);

    error_ = SidebarStyle::label(QString(), 11, Theme::Weight::regular, Theme::red());
    error_->setWordWrap(true);
    column->addWidget(error_);
    column->addStretch();

    connect(recorder_, &RecordingManager::isRecordingChanged, this, &RecordingControlsView::refresh);
    connect(recorder_, &RecordingManager::recordingStatusChanged, this, &RecordingControlsView::refresh);
    connect(recorder_, &RecordingManager::recordingDurationChanged, this, &RecordingControlsView::refresh);
    connect(recorder_, &RecordingManager::errorMessageChanged, this, &RecordingControlsView::refresh);
    connect(recorder_, &RecordingManager::includeSystemAudioChanged, this, &RecordingControlsView::refresh);
    connect(recorder_, &RecordingManager::includeMicrophoneChanged, this, &RecordingControlsView::refresh);
    connect(recorder_, &RecordingManager::selectedMicrophoneChanged, this, &RecordingControlsView::refresh);
    refresh();
}

void RecordingControlsView::setShowingSettings(bool showing) {
    if (showingSettings_ == showing) return;
    showingSettings_ = showing;
    if (settings_) settings_->setVisible(showing);
    emit showingSettingsChanged(showing);
}

void RecordingControlsView::toggleRecording() {
    if (!recorder_) return;
    if (recorder_->isRecording()) {
        recorder_->stopRecording();
        return;
    }
    // The start runs from the event loop, never inside the click.
    QMetaObject::invokeMethod(
        recorder_, [recorder = recorder_, session = &streamManager_] { recorder->startRecording(*session); },
        Qt::QueuedConnection);
}

void RecordingControlsView::refresh() {
    const bool recording = recorder_->isRecording();
    const RecordingStatus status = recorder_->recordingStatus();
    mainButton_->setLabel(recording ? QStringLiteral("Stop Recording") : QStringLiteral("Start Recording"));
    mainButton_->setSymbol(recording ? "stop.fill" : "record.circle");
    SymbolButton::Look look;
    look.foreground = Qt::white;
    look.background = recording ? Theme::red() : Theme::withAlpha(Theme::red(), 0.75);
    look.fontSize = 13;
    look.symbolSize = 13;
    look.paddingY = 8;
    look.radius = 8;
    look.bold = true;
    mainButton_->setLook(look);
    mainButton_->setEnabled(status != RecordingStatus::preparing && status != RecordingStatus::stopping);

    const bool system = recorder_->includeSystemAudio();
    systemIcon_->setPixmap(Symbols::pixmap(system ? "speaker.wave.2.fill" : "speaker.slash.fill", 12,
                                           system ? Theme::green() : Theme::gray()));
    const auto& mic = recorder_->selectedMicrophone();
    const bool micOn = recorder_->includeMicrophone() && mic.has_value();
    micIcon_->setPixmap(Symbols::pixmap(micOn ? "mic.fill" : "mic.slash", 12, micOn ? Theme::green() : Theme::gray()));
    micLabel_->setText(mic ? mic->name : QStringLiteral("No Mic"));

    statusRow_->setVisible(recording);
    const auto text = toString(status);
    status_->setText(QString::fromUtf8(text.data(), qsizetype(text.size())));
    duration_->setText(formatDuration(recorder_->recordingDuration()));
    doneRow_->setVisible(status == RecordingStatus::completed);
    const auto& error = recorder_->errorMessage();
    error_->setVisible(error.has_value());
    error_->setText(error.value_or(QString()));
}

}  // namespace orvane

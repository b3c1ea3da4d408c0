#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/controls/SymbolButton.h"
#include "console/controls/ToggleSwitch.h"
#include "console/sheets/CaptureListPanel.h"
#include "console/sheets/CaptureTile.h"
#include "console/sheets/MicrophoneSelectorView.h"
#include "console/sidebar/RecordingControlsView.h"
#include "console/sidebar/RecordingSettingsView.h"
#include "console/sidebar/RightSidebarView.h"
#include "document/PresetTemplates.h"
#include "recording/RecordingDuration.h"
#include "recording/RecordingManager.h"

namespace orvane {
namespace recording_panel_tests {

using test::Session;

// A session with a recorder, recording into a private home.
struct RecorderFixture {
    QTemporaryDir home;
    QByteArray oldHome = qgetenv("HOME");
    Session s;
    std::unique_ptr<RecordingManager> recorder;  // goes before the session
    std::unique_ptr<RightSidebarView> sidebar;

    RecorderFixture() {
        qputenv("HOME", home.path().toUtf8());
        recorder = std::make_unique<RecordingManager>(*s.streamManager);
        // No sound server here, and a small picture keeps the test quick.
        recorder->setIncludeAudio(false);
        recorder->setVideoQuality(VideoQuality::low);
        Preset preset = createPreset("Recording", PresetTemplate::streaming);
        s.streamManager->setCurrentPreset(preset);
        s.streamManager->setProgramScene(preset.scenes.front());
        sidebar = std::make_unique<RightSidebarView>(*s.streamManager);
        sidebar->setRecordingManager(recorder.get());
        sidebar->setSelectedTab(ConfigTab::recording);
        sidebar->resize(280, 800);
        sidebar->show();
    }
    ~RecorderFixture() {
        sidebar.reset();
        if (recorder->isRecording()) recorder->stopRecording();
        (void)QTest::qWaitFor([&] { return !recorder->isRecording(); }, 5000);
        recorder.reset();
        qputenv("HOME", oldHome);
    }
    RecordingControlsView* panel() const { return sidebar->recordingTab(); }
};

TEST(ConsoleRecordingPanel, DurationsAreMinutesAndSecondsThenHours) {
    EXPECT_EQ(formatDuration(59.9), QStringLiteral("0:59"));
    EXPECT_EQ(formatDuration(60), QStringLiteral("1:00"));
    EXPECT_EQ(formatDuration(3599), QStringLiteral("59:59"));
    EXPECT_EQ(formatDuration(3600), QStringLiteral("1:00:00"));
}

TEST(ConsoleRecordingPanel, TheButtonRecordsAndStopsARealFile) {
    test::ensureApplication();
    RecorderFixture f;
    SymbolButton* button = f.panel()->mainButton();
    EXPECT_EQ(button->text(), QStringLiteral("Start Recording"));
    EXPECT_EQ(button->symbol(), "record.circle");
    EXPECT_FALSE(f.panel()->statusText()->isVisibleTo(f.panel()));

    QTest::mouseClick(button, Qt::LeftButton);
    // The start runs from the event loop; while it prepares the button is off.
    ASSERT_TRUE(QTest::qWaitFor([&] { return f.recorder->recordingStatus() == RecordingStatus::preparing; }, 2000));
    EXPECT_FALSE(button->isEnabled());
    ASSERT_TRUE(QTest::qWaitFor([&] { return f.recorder->isRecording(); }, 5000));
    EXPECT_TRUE(button->isEnabled());
    EXPECT_EQ(button->text(), QStringLiteral("Stop Recording"));
    EXPECT_EQ(button->symbol(), "stop.fill");
    EXPECT_TRUE(f.panel()->statusText()->isVisible());
    EXPECT_EQ(f.panel()->statusText()->text(), QStringLiteral("Recording..."));
    ASSERT_TRUE(QTest::qWaitFor([&] { return f.recorder->recordingDuration() >= 1.0; }, 5000));
    EXPECT_EQ(f.panel()->durationText()->text(), QStringLiteral("0:01"));

    QTest::mouseClick(button, Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return f.recorder->recordingStatus() == RecordingStatus::completed; }, 10000));
    EXPECT_EQ(button->text(), QStringLiteral("Start Recording"));
    EXPECT_TRUE(button->isEnabled());
    EXPECT_FALSE(f.panel()->statusText()->isVisible());
    EXPECT_TRUE(f.panel()->revealButton()->isVisible());
    EXPECT_EQ(f.panel()->revealButton()->text(), QStringLiteral("Show in Finder"));
    EXPECT_TRUE(f.panel()->openFolderButton()->isVisible());
    ASSERT_TRUE(f.recorder->outputURL());
    const QFileInfo file(f.recorder->outputURL()->toLocalFile());
    EXPECT_TRUE(file.exists());
    EXPECT_GT(file.size(), 1000);
    EXPECT_EQ(file.absolutePath(), f.home.path() + QStringLiteral("/Documents/OrvaneUI Recordings"));
}

TEST(ConsoleRecordingPanel, AFailedStartShowsItsMessageInRed) {
    test::ensureApplication();
    RecorderFixture f;
    // A file where the documents folder should be: the recordings folder
    // cannot be made.
    QFile blocker(f.home.filePath(QStringLiteral("Documents")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    QTest::mouseClick(f.panel()->mainButton(), Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return f.recorder->errorMessage().has_value(); }, 5000));
    EXPECT_TRUE(f.panel()->errorText()->isVisible());
    EXPECT_EQ(f.panel()->errorText()->text(), *f.recorder->errorMessage());
    EXPECT_TRUE(f.panel()->errorText()->styleSheet().contains(QStringLiteral("rgba(255,59,48")));
    EXPECT_EQ(f.panel()->mainButton()->text(), QStringLiteral("Start Recording"));
    EXPECT_FALSE(f.recorder->isRecording());
}

TEST(ConsoleRecordingPanel, IndicatorsAndSettingsFollowTheRecorder) {
    test::ensureApplication();
    RecorderFixture f;
    f.recorder->setIncludeAudio(true);
    f.recorder->setIncludeMicrophone(true);
    EXPECT_EQ(f.panel()->microphoneLabel()->text(), QStringLiteral("No Mic"));
    EXPECT_EQ(f.panel()->systemLabel()->text(), QStringLiteral("System"));

    EXPECT_FALSE(f.panel()->settingsView()->isVisible());
    QTest::mouseClick(f.panel()->settingsButton(), Qt::LeftButton);
    RecordingSettingsView* settings = f.panel()->settingsView();
    ASSERT_TRUE(settings->isVisible());
    EXPECT_TRUE(settings->microphoneButton()->isVisible());
    EXPECT_EQ(settings->microphoneButton()->text(), QStringLiteral("Select Microphone"));

    // The microphone sheet: the first row turns it off, then the devices.
    settings->setMicrophoneLister([] {
        return std::vector<MicrophoneDevice>{{QStringLiteral("alsa_input.usb"), QStringLiteral("USB Mic")}};
    });
    MicrophoneSelectorView* sheet = settings->showMicrophoneSelector();
    ASSERT_EQ(sheet->body()->tiles().size(), 2u);
    EXPECT_EQ(sheet->body()->tiles()[0]->text(), QStringLiteral("Disable microphone recording"));
    QTest::mouseClick(sheet->body()->tiles()[1], Qt::LeftButton);
    ASSERT_TRUE(f.recorder->selectedMicrophone());
    EXPECT_EQ(f.recorder->selectedMicrophone()->name, QStringLiteral("USB Mic"));
    EXPECT_EQ(f.panel()->microphoneLabel()->text(), QStringLiteral("USB Mic"));
    EXPECT_EQ(settings->microphoneButton()->text(), QStringLiteral("USB Mic"));

    // Switches and pickers write the recorder.
    QTest::mouseClick(settings->microphoneSwitch(), Qt::LeftButton);
    EXPECT_FALSE(f.recorder->includeMicrophone());
    EXPECT_FALSE(settings->microphoneButton()->isVisible());
    QTest::mouseClick(settings->systemAudioSwitch(), Qt::LeftButton);
    EXPECT_FALSE(f.recorder->includeSystemAudio());
    settings->formatMenu()->activated(settings->formatMenu()->findText(QStringLiteral("mp4")));
    EXPECT_EQ(f.recorder->outputFormat(), OutputFormat::mp4);
    settings->videoQualityMenu()->activated(settings->videoQualityMenu()->findData(int(VideoQuality::medium)));
    EXPECT_EQ(f.recorder->videoQuality(), VideoQuality::medium);
    QTest::mouseClick(settings->includeAudioSwitch(), Qt::LeftButton);
    EXPECT_FALSE(f.recorder->includeAudio());
    EXPECT_FALSE(settings->systemAudioSwitch()->isVisible());
}

TEST(ConsoleRecordingPanel, WithoutARecorderThePanelSaysSo) {
    Session s;
    RightSidebarView sidebar(*s.streamManager);
    EXPECT_EQ(sidebar.recordingTab()->mainButton(), nullptr);
    sidebar.recordingTab()->toggleRecording();  // does nothing, and does not crash
}

}  // namespace
}  // namespace orvane

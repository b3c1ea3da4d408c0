#include "support/RecordingHarness.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QPainter>
#include <QTest>

#include <cstdlib>

#include "capture/SharedCapture.h"

namespace orvane::test {

RecordingHarness::RecordingHarness() : RecordingHarness(QString()) {}

RecordingHarness::RecordingHarness(const QString& home)
    : homePath_(home.isEmpty() ? ownHome_.path() : home), oldHome_(qgetenv("HOME")) {
    // The documents folder follows HOME (no user-dirs file in a fresh home).
    qputenv("HOME", homePath_.toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (homePath_ + "/.config").toLocal8Bit());
    storage_ = std::make_unique<PresetStorage>(std::filesystem::path(homePath_.toStdString()) / "data");
    session_ = std::make_unique<StreamManager>(
        *storage_, std::make_unique<QSettings>(homePath_ + "/settings.ini", QSettings::IniFormat));
    recorder_ = std::make_unique<RecordingManager>(*session_);
    frames_ = std::make_shared<LiveFrameTable>();
    recorder_->setFrameSource(frames_);
}

RecordingHarness::~RecordingHarness() {
    recorder_.reset();  // closes any file
    session_.reset();
    // The frame table holds the camera capture too; letting go of both joins
    // the capture thread here, so that no test leaves one running into the
    // next.
    camera_.reset();
    frames_.reset();
    qputenv("HOME", oldHome_);
}

StreamingScene RecordingHarness::makeScene(const QImage& screenPicture) {
    StreamingScene scene;
    scene.name = "Recorded";
    scene.backgroundType = BackgroundType::gradient;
    scene.layout = SceneLayout::cameraLeft;
    Source camera;
    camera.type = SourceType::camera;
    camera.name = "Test camera";
    camera.configuration.cameraDeviceId = "lavfi:smptebars";
    Source screen;
    screen.type = SourceType::screen;
    screen.name = "Screen";
    screen.configuration.screenId = 1;
    scene.sources = {camera, screen};
    bindCamera(camera);
    if (!screenPicture.isNull()) frames_->bindFrame(screen.id, SourceFrame::withImage(screenPicture));
    return scene;
}

void RecordingHarness::bindCamera(const Source& camera) {
    const QString id = QString::fromStdString(camera.configuration.cameraDeviceId.value_or("lavfi:smptebars"));
    std::shared_ptr<LavfiCameraBackend> cameras = cameras_;
    camera_ = hub_.acquire(QStringLiteral("camera:") + id, 0, [cameras, id] { return cameras->openCamera(id); });
    std::shared_ptr<SharedCapture> capture = camera_;
    frames_->bindCapture(camera.id, [capture] { return capture->latestFrame(); });
}

RecordingStatus RecordingHarness::record(double seconds, std::function<void()> whileRecording) {
    recorder_->startRecording(*session_);
    if (!waitFor([this] { return recorder_->recordingStatus() != RecordingStatus::preparing; }, 10000))
        return recorder_->recordingStatus();
    if (recorder_->recordingStatus() != RecordingStatus::recording) return recorder_->recordingStatus();
    if (whileRecording) whileRecording();
    QTest::qWait(static_cast<int>(seconds * 1000));
    recorder_->stopRecording();
    waitFor([this] { return recorder_->recordingStatus() != RecordingStatus::stopping; }, 20000);
    return recorder_->recordingStatus();
}

bool RecordingHarness::waitFor(const std::function<bool()>& condition, int timeoutMs) {
    return QTest::qWaitFor(condition, timeoutMs);
}

QImage RecordingHarness::patternPicture(QSize size) {
    // Black and white stripes two pixels wide: a sharp picture that any blur
    // turns grey.
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.fillRect(image.rect(), Qt::white);
    for (int x = 0; x < size.width(); x += 4) painter.fillRect(x, 0, 2, size.height(), Qt::black);
    return image;
}

}  // namespace orvane::test

#include "capture/SourceCaptures.h"

#include "capture/CameraFeed.h"
#include "capture/LatestFrame.h"
#include "capture/ScreenCaptureViewModel.h"

namespace orvane {

struct SourceCaptures::Entry {
    Source source;
    std::string signature;
    std::unique_ptr<ScreenCaptureViewModel> screen;
    std::unique_ptr<CameraFeed> camera;
    bool started = false;
};

SourceCaptures::SourceCaptures(CaptureBackend& screens, CameraBackend& cameras, CaptureHub& hub,
                               const CaptureQuality& quality, QObject* parent)
    : QObject(parent), screens_(screens), cameras_(cameras), hub_(hub), quality_(quality) {}

SourceCaptures::~SourceCaptures() = default;

std::string SourceCaptures::signature(const Source& source) {
    // What decides the capture; the rest of the configuration is drawing.
    const SourceConfiguration& c = source.configuration;
    std::string text = std::to_string(static_cast<int>(source.type));
    text += '|' + (c.screenId ? std::to_string(*c.screenId) : std::string("-"));
    text += '|' + (c.windowId ? std::to_string(*c.windowId) : std::string("-"));
    text += '|' + c.windowOwner.value_or("-") + '|' + c.windowTitle.value_or("-");
    text += '|' + c.cameraDeviceId.value_or("-");
    return text;
}

SourceCaptures::Entry& SourceCaptures::entryFor(const Source& source) {
    const std::string wanted = signature(source);
    auto it = entries_.find(source.id);
    if (it != entries_.end() && it->second->signature == wanted) return *it->second;

    auto entry = std::make_unique<Entry>();
    entry->source = source;
    entry->signature = wanted;
    const Uuid id = source.id;
    if (source.type == SourceType::screen || source.type == SourceType::window) {
        entry->screen = std::make_unique<ScreenCaptureViewModel>(screens_, hub_);
        connect(entry->screen.get(), &ScreenCaptureViewModel::capturedImageChanged, this,
                [this, id] { emit pictureChanged(id); });
        connect(entry->screen.get(), &ScreenCaptureViewModel::errorMessageChanged, this, [this, id] {
            emit pictureChanged(id);
            queueFeedChanged(id);
        });
        connect(entry->screen.get(), &ScreenCaptureViewModel::isCapturingChanged, this,
                [this, id] { queueFeedChanged(id); });
        connect(entry->screen.get(), &ScreenCaptureViewModel::captureChanged, this,
                [this, id] { queueFeedChanged(id); });
    } else if (source.type == SourceType::camera) {
        entry->camera = std::make_unique<CameraFeed>(cameras_, hub_);
        connect(entry->camera.get(), &CameraFeed::capturedImageChanged, this, [this, id] { emit pictureChanged(id); });
        connect(entry->camera.get(), &CameraFeed::errorMessageChanged, this, [this, id] {
            emit pictureChanged(id);
            queueFeedChanged(id);
        });
        connect(entry->camera.get(), &CameraFeed::captureChanged, this, [this, id] { queueFeedChanged(id); });
    } else {
        entry->started = true;  // content is drawn, not captured
    }
    Entry& result = *entry;
    entries_[id] = std::move(entry);  // replaces, and so stops, a capture of an older configuration
    if (!result.started) queueStart();
    queueFeedChanged(id);
    return result;
}

void SourceCaptures::queueFeedChanged(const Uuid& sourceId) {
    QMetaObject::invokeMethod(this, [this, sourceId] { emit feedChanged(sourceId); }, Qt::QueuedConnection);
}

void SourceCaptures::queueStart() {
    if (startQueued_) return;
    startQueued_ = true;
    QMetaObject::invokeMethod(this, &SourceCaptures::startPending, Qt::QueuedConnection);
}

void SourceCaptures::startPending() {
    startQueued_ = false;
    // Starting may fail and notify at once; the entry is already in place,
    // so whoever asks again meanwhile gets its state instead of a new start.
    for (auto& [id, entry] : entries_) {
        if (entry->started) continue;
        entry->started = true;
        queueFeedChanged(id);
        if (entry->screen) {
            entry->screen->startCapture(entry->source, quality_);
        } else if (entry->camera) {
            std::optional<QString> device;
            if (entry->source.configuration.cameraDeviceId)
                device = QString::fromStdString(*entry->source.configuration.cameraDeviceId);
            entry->camera->start(device);
        }
    }
}

void SourceCaptures::retryFailedNow() {
    for (auto& [id, entry] : entries_) {
        if (entry->screen) entry->screen->retryNow();
        if (entry->camera) entry->camera->retryNow();
    }
}

SourceFrame SourceCaptures::latestFrame(const Source& source) { return frameOf(entryFor(source)); }

SourceFrame SourceCaptures::frameOf(const Entry& entry) {
    if (!entry.started) return SourceFrame::startingUp();
    if (entry.screen) {
        const ScreenCaptureViewModel& model = *entry.screen;
        if (!model.capturedImage().isNull()) return SourceFrame::withImage(model.capturedImage());
        if (!model.errorMessage().isNull()) return SourceFrame::failure(model.errorMessage());
        if (model.isCapturing()) return SourceFrame::startingUp();
        return {};
    }
    if (entry.camera) {
        const CameraFeed& feed = *entry.camera;
        if (!feed.capturedImage().isNull()) return SourceFrame::withImage(feed.capturedImage());
        if (!feed.errorMessage().isNull()) return SourceFrame::failure(feed.errorMessage());
    }
    return {};
}

SourceCaptures::Feed SourceCaptures::feed(const Source& source) {
    const Entry& entry = entryFor(source);
    Feed result{frameOf(entry), nullptr};
    // A failed source shows its failure, even while a new attempt's capture
    // waits for a first frame: its recovery is a feed change of its own.
    if (!entry.started || result.shown.state == SourceFrame::State::failed) return result;
    std::shared_ptr<SharedCapture> capture;
    if (entry.screen) capture = entry.screen->capture();
    if (entry.camera) capture = entry.camera->capture();
    if (capture) result.frames = capture->frames();
    return result;
}

void SourceCaptures::setQuality(const CaptureQuality& quality) {
    if (quality == quality_) return;
    quality_ = quality;
    bool restarting = false;
    for (auto& [id, entry] : entries_) {
        if (!entry->screen || !entry->started) continue;
        entry->screen->stopCapture();
        entry->started = false;
        restarting = true;
    }
    if (restarting) queueStart();
}

void SourceCaptures::retainOnly(const std::vector<Uuid>& sourceIds) {
    std::erase_if(entries_, [&](const auto& item) {
        return std::find(sourceIds.begin(), sourceIds.end(), item.first) == sourceIds.end();
    });
}

}  // namespace orvane

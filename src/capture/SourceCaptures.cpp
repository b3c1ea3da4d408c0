#include "capture/SourceCaptures.h"

#include "capture/CameraFeed.h"
#include "capture/ScreenCaptureViewModel.h"

namespace orvane {

struct SourceCaptures::Entry {
    Source source;
    std::string signature;
    std::unique_ptr<ScreenCaptureViewModel> screen;
    std::unique_ptr<CameraFeed> camera;
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
        connect(entry->screen.get(), &ScreenCaptureViewModel::errorMessageChanged, this,
                [this, id] { emit pictureChanged(id); });
        entry->screen->startCapture(source, quality_);
    } else if (source.type == SourceType::camera) {
        entry->camera = std::make_unique<CameraFeed>(cameras_, hub_);
        connect(entry->camera.get(), &CameraFeed::capturedImageChanged, this, [this, id] { emit pictureChanged(id); });
        std::optional<QString> device;
        if (source.configuration.cameraDeviceId) device = QString::fromStdString(*source.configuration.cameraDeviceId);
        entry->camera->start(device);
    }
    Entry& result = *entry;
    entries_[id] = std::move(entry);
    return result;
}

SourcePicture SourceCaptures::latestPicture(const Source& source) {
    Entry& entry = entryFor(source);
    if (entry.screen) {
        const ScreenCaptureViewModel& model = *entry.screen;
        if (!model.capturedImage().isNull()) return {SourcePicture::State::frame, model.capturedImage(), {}};
        if (model.isCapturing()) return {SourcePicture::State::starting, {}, {}};
        if (!model.errorMessage().isNull()) return {SourcePicture::State::failed, {}, model.errorMessage()};
        return {};
    }
    if (entry.camera && !entry.camera->capturedImage().isNull())
        return {SourcePicture::State::frame, entry.camera->capturedImage(), {}};
    return {};
}

void SourceCaptures::setQuality(const CaptureQuality& quality) {
    if (quality == quality_) return;
    quality_ = quality;
    for (auto& [id, entry] : entries_) {
        if (!entry->screen) continue;
        entry->screen->stopCapture();
        entry->screen->startCapture(entry->source, quality_);
    }
}

void SourceCaptures::retainOnly(const std::vector<Uuid>& sourceIds) {
    std::erase_if(entries_, [&](const auto& item) {
        return std::find(sourceIds.begin(), sourceIds.end(), item.first) == sourceIds.end();
    });
}

}  // namespace orvane

#include "slides/SlideImageLoader.h"

#include <QFileInfo>
#include <QImageReader>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QUrl>

namespace orvane {

SlideImageLoader::SlideImageLoader(QObject* parent) : QObject(parent) {}

SlideImageLoader::Result SlideImageLoader::load(const std::string& reference) {
    if (reference.empty()) return {};
    const QString text = QString::fromStdString(reference);

    const QFileInfo info(text);
    if (info.isFile()) {
        FileEntry& entry = files_[reference];
        if (entry.modified != info.lastModified() || entry.size != info.size()) {
            QImageReader reader(text);
            reader.setAutoTransform(true);
            entry.image = reader.read();
            entry.modified = info.lastModified();
            entry.size = info.size();
        }
        if (!entry.image.isNull()) return {State::image, entry.image};
    }

    if (const auto it = remote_.find(reference); it != remote_.end()) return it->second;
    const QUrl url(text, QUrl::StrictMode);
    if (!url.isValid() || url.scheme().isEmpty()) return {};
    fetch(reference, url);
    return remote_[reference];
}

void SlideImageLoader::fetch(const std::string& reference, const QUrl& url) {
    remote_[reference] = {State::loading, {}};
    if (!network_) network_ = new QNetworkAccessManager(this);
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setTransferTimeout(30000);
    QNetworkReply* reply = network_->get(request);
    connect(reply, &QNetworkReply::finished, this, [this, reply, reference] {
        reply->deleteLater();
        Result result{State::failed, {}};
        if (reply->error() == QNetworkReply::NoError) {
            QImage image;
            if (image.loadFromData(reply->readAll())) result = {State::image, image};
        }
        remote_[reference] = result;
        emit imageArrived();
    });
}

}  // namespace orvane

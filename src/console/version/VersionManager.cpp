#include "console/version/VersionManager.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QFile>
#include <QGuiApplication>

#include "document/Log.h"

namespace orvane {

VersionManager::VersionManager(QObject* parent) : VersionManager(QString::fromLatin1(resourcePath), parent) {}

VersionManager::VersionManager(QString path, QObject* parent)
    : QObject(parent), path_(std::move(path)), fallbackVersion_(makeFallback()) {
    loadVersionInfo();
}

VersionInfo VersionManager::makeFallback() {
    VersionInfo info;
    const QString appVersion = QCoreApplication::applicationVersion();
    info.version = appVersion.isEmpty() ? QStringLiteral("1.0.0") : appVersion;
    info.build = QStringLiteral("1");
    info.commit = QStringLiteral("unknown");
    info.branch = QStringLiteral("main");
    info.type = QStringLiteral("development");
    return info;
}

std::optional<VersionInfo> VersionManager::loadVersionFromFile() const {
    QFile file(path_);
    if (!file.exists()) {
        logLine("📦 version_info.json no encontrado, usando Info.plist");
        return std::nullopt;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        logLine("❌ Error cargando version_info.json: " + file.errorString().toStdString());
        return std::nullopt;
    }
    QString error;
    auto info = VersionInfo::fromJson(file.readAll(), &error);
    if (!info) {
        logLine("❌ Error cargando version_info.json: " + error.toStdString());
        return std::nullopt;
    }
    logLine("📦 Versión cargada desde archivo: " + info->version.toStdString() + " (Build " + info->build.toStdString() +
            ")");
    return info;
}

void VersionManager::loadVersionInfo() {
    if (!isLoading_) {
        isLoading_ = true;
        emit isLoadingChanged(true);
    }
    auto loaded = loadVersionFromFile();
    versionInfo_ = loaded ? *loaded : fallbackVersion_;
    isLoading_ = false;
    emit versionInfoChanged();
    emit isLoadingChanged(false);
}

void VersionManager::copyVersionInfo() const {
    if (!versionInfo_ || !QGuiApplication::clipboard()) return;
    QGuiApplication::clipboard()->clear();
    QGuiApplication::clipboard()->setText(versionInfo_->clipboardText());
}

}  // namespace orvane

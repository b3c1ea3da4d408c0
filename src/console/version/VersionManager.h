#pragma once

#include <QObject>
#include <optional>

#include "console/version/VersionInfo.h"

namespace orvane {

// The version on display: the embedded version_info.json, or the
// application's own version when the file is missing or broken.
class VersionManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)

public:
    static constexpr const char* resourcePath = ":/version_info.json";

    explicit VersionManager(QObject* parent = nullptr);
    // Reads another file, for tests and tools.
    VersionManager(QString path, QObject* parent = nullptr);

    const std::optional<VersionInfo>& versionInfo() const { return versionInfo_; }
    bool isLoading() const { return isLoading_; }
    const VersionInfo& fallbackVersion() const { return fallbackVersion_; }

    void loadVersionInfo();
    void copyVersionInfo() const;

    static VersionInfo makeFallback();

signals:
    void versionInfoChanged();
    void isLoadingChanged(bool loading);

private:
    std::optional<VersionInfo> loadVersionFromFile() const;

    QString path_;
    std::optional<VersionInfo> versionInfo_;
    bool isLoading_ = true;
    VersionInfo fallbackVersion_;
};

}  // namespace orvane

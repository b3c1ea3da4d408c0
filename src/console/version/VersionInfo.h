#pragma once

#include <QColor>
#include <QString>
#include <optional>

namespace orvane {

// The record of version_info.json; every key but "tag" is required.
struct VersionInfo {
    QString version;
    QString build;
    QString commit;
    QString timestamp;
    QString branch;
    QString type;
    std::optional<QString> tag;

    // Decodes the whole file or nothing; `error` says why.
    static std::optional<VersionInfo> fromJson(const QByteArray& json, QString* error = nullptr);
    QByteArray toJson() const;

    QString detailedVersionString() const;
    QColor statusColor() const;
    const char* statusIcon() const;
    // "YYYYMMDD-HHMMSS" as "DD/MM/YYYY HH:MM:SS"; anything else as it stands.
    static QString formatTimestamp(const QString& timestamp);
    // The text that "Copy Version Info" puts on the clipboard.
    QString clipboardText() const;
};

}  // namespace orvane

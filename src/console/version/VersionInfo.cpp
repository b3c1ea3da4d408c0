#include "console/version/VersionInfo.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include "console/controls/Theme.h"

namespace orvane {

std::optional<VersionInfo> VersionInfo::fromJson(const QByteArray& json, QString* error) {
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        if (error) *error = parseError.errorString();
        return std::nullopt;
    }
    if (!doc.isObject()) {
        if (error) *error = QStringLiteral("the file does not hold an object");
        return std::nullopt;
    }
    const QJsonObject o = doc.object();
    VersionInfo info;
    const std::pair<const char*, QString*> required[] = {
        {"version", &info.version}, {"build", &info.build}, {"commit", &info.commit},
        {"timestamp", &info.timestamp}, {"branch", &info.branch}, {"type", &info.type}};
    for (const auto& [key, field] : required) {
        const QJsonValue value = o.value(QLatin1String(key));
        if (!value.isString()) {
            if (error)
                *error = value.isUndefined() ? QStringLiteral("keyNotFound: \"%1\"").arg(QLatin1String(key))
                                             : QStringLiteral("typeMismatch: \"%1\" is not a string").arg(QLatin1String(key));
            return std::nullopt;
        }
        *field = value.toString();
    }
    if (o.contains(QLatin1String("tag"))) {
        const QJsonValue tag = o.value(QLatin1String("tag"));
        if (!tag.isString() && !tag.isNull()) {
            if (error) *error = QStringLiteral("typeMismatch: \"tag\" is not a string");
            return std::nullopt;
        }
        if (tag.isString()) info.tag = tag.toString();
    }
    return info;
}

QByteArray VersionInfo::toJson() const {
    QJsonObject o{{"version", version}, {"build", build},   {"commit", commit},
                  {"timestamp", timestamp}, {"branch", branch}, {"type", type}};
    if (tag) o.insert(QStringLiteral("tag"), *tag);
    return QJsonDocument(o).toJson();
}

QString VersionInfo::detailedVersionString() const {
    QStringList lines{QStringLiteral("Version: ") + version, QStringLiteral("Build: ") + build,
                      QStringLiteral("Commit: ") + commit};
    if (tag) lines << QStringLiteral("Tag: ") + *tag;
    lines << QStringLiteral("Type: ") + type << QStringLiteral("Branch: ") + branch;
    return lines.join(QLatin1Char('\n'));
}

QColor VersionInfo::statusColor() const {
    if (type == QLatin1String("release")) return Theme::green();
    if (type == QLatin1String("rc")) return Theme::orange();
    if (type == QLatin1String("beta")) return Theme::purple();
    if (type == QLatin1String("alpha")) return Theme::red();
    return Theme::gray();
}

const char* VersionInfo::statusIcon() const {
    if (type == QLatin1String("release")) return "checkmark.circle.fill";
    if (type == QLatin1String("rc")) return "exclamationmark.triangle.fill";
    if (type == QLatin1String("beta")) return "beta.circle.fill";
    if (type == QLatin1String("alpha")) return "alpha.circle.fill";
    return "questionmark.circle.fill";
}

QString VersionInfo::formatTimestamp(const QString& timestamp) {
    const QStringList parts = timestamp.split(QLatin1Char('-'));
    if (timestamp.size() != 15 || parts.size() != 2 || parts[0].size() != 8 || parts[1].size() != 6) return timestamp;
    const QString& d = parts[0];
    const QString& t = parts[1];
    return QStringLiteral("%1/%2/%3 %4:%5:%6")
        .arg(d.mid(6, 2), d.mid(4, 2), d.left(4), t.left(2), t.mid(2, 2), t.mid(4, 2));
}

QString VersionInfo::clipboardText() const {
    return QStringLiteral("OrvanePro Version Information\n\n") + detailedVersionString() +
           QStringLiteral("\n\nTimestamp: ") + timestamp;
}

}  // namespace orvane

#include "capture/WindowListRules.h"

#include <algorithm>

namespace orvane {

QList<CaptureWindow> WindowListRules::selectable(const std::vector<ShareableWindow>& windows) {
    QList<CaptureWindow> result;
    for (const ShareableWindow& window : windows) {
        if (window.windowLayer != 0) continue;
        const bool hasTitle = !window.title.isEmpty();
        const bool hasOwner = window.applicationName && !window.applicationName->isEmpty();
        if (!hasTitle && !hasOwner) continue;
        CaptureWindow entry;
        entry.id = window.id;
        entry.title = window.title;
        entry.ownerName = window.applicationName ? *window.applicationName : QStringLiteral("Unknown");
        entry.windowLayer = window.windowLayer;
        entry.bounds = window.frame;
        result.append(entry);
    }
    // QString's operator< compares UTF-16 code units: capitals first.
    std::stable_sort(result.begin(), result.end(), [](const CaptureWindow& a, const CaptureWindow& b) {
        return a.ownerName < b.ownerName;
    });
    return result;
}

QList<CaptureWindow> WindowListRules::search(const QList<CaptureWindow>& windows, const QString& text) {
    if (text.isEmpty()) return windows;
    QList<CaptureWindow> result;
    for (const CaptureWindow& window : windows) {
        if (window.displayName().contains(text, Qt::CaseInsensitive)) result.append(window);
    }
    return result;
}

}  // namespace orvane

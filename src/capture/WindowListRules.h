#pragma once

#include <QList>
#include <QString>

#include <vector>

#include "capture/CaptureWindow.h"
#include "capture/ShareableWindow.h"

namespace orvane {

// The window sheet's rules, free of any display server.
class WindowListRules {
public:
    // Keeps normal-layer windows that have a title or a named owner, maps
    // them and sorts them by owner in plain text order; a stable sort keeps
    // one application's windows in the server's order.
    static QList<CaptureWindow> selectable(const std::vector<ShareableWindow>& windows);

    // Windows whose displayName contains the text, ignoring case; all of
    // them for an empty text. Matching runs over the joined displayName, so
    // it can span the owner, " - " and the title.
    static QList<CaptureWindow> search(const QList<CaptureWindow>& windows, const QString& text);
};

}  // namespace orvane

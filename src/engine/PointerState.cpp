#include "engine/PointerState.h"

#include "engine/AssignIfChanged.h"

namespace orvane {

PointerState::PointerState(QObject* parent) : QObject(parent) {}

void PointerState::setShowCursor(bool show) {
    if (assignIfChanged(showCursor_, show)) emit showCursorChanged(show);
}

void PointerState::setCursorHighlight(bool highlight) {
    if (assignIfChanged(cursorHighlight_, highlight)) emit cursorHighlightChanged(highlight);
}

void PointerState::setShowClicks(bool show) {
    if (assignIfChanged(showClicks_, show)) emit showClicksChanged(show);
}

void PointerState::setCursorHighlightColor(const CodableColor& color) {
    if (assignIfChanged(cursorHighlightColor_, color)) emit cursorHighlightColorChanged();
}

void PointerState::setGlobalMouseLocation(const Point& location) {
    if (assignIfChanged(globalMouseLocation_, location)) emit globalMouseLocationChanged();
}

void PointerState::setIsMouseOverMainWindow(bool over) {
    if (assignIfChanged(isMouseOverMainWindow_, over)) emit isMouseOverMainWindowChanged(over);
}

void PointerState::setLastClickPosition(const Point& position) {
    if (assignIfChanged(lastClickPosition_, position)) emit lastClickPositionChanged();
}

void PointerState::setClickTimestamp(const QDateTime& timestamp) {
    clickTimestamp_ = timestamp;
    emit clickTimestampChanged();
}

void PointerState::setMainWindowSize(const Size& size) {
    if (assignIfChanged(mainWindowSize_, size)) emit mainWindowSizeChanged();
}

}  // namespace orvane

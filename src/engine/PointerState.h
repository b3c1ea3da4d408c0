#pragma once

#include <QDateTime>
#include <QObject>

#include "document/CodableColor.h"
#include "document/Geometry.h"

namespace orvane {

// The presenter's pointer as the program may show it. Only `showCursor` acts:
// when it is false, a pop-out window opened afterwards hides the cursor over
// itself. Pointer tracking is off, so the other fields change only when
// someone assigns them, never when the pointer moves.
class PointerState : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool showCursor READ showCursor WRITE setShowCursor NOTIFY showCursorChanged)
    Q_PROPERTY(bool cursorHighlight READ cursorHighlight WRITE setCursorHighlight NOTIFY cursorHighlightChanged)
    Q_PROPERTY(bool showClicks READ showClicks WRITE setShowClicks NOTIFY showClicksChanged)
    Q_PROPERTY(orvane::CodableColor cursorHighlightColor READ cursorHighlightColor WRITE setCursorHighlightColor NOTIFY cursorHighlightColorChanged)
    Q_PROPERTY(orvane::Point globalMouseLocation READ globalMouseLocation WRITE setGlobalMouseLocation NOTIFY globalMouseLocationChanged)
    Q_PROPERTY(bool isMouseOverMainWindow READ isMouseOverMainWindow WRITE setIsMouseOverMainWindow NOTIFY isMouseOverMainWindowChanged)
    Q_PROPERTY(orvane::Point lastClickPosition READ lastClickPosition WRITE setLastClickPosition NOTIFY lastClickPositionChanged)
    Q_PROPERTY(QDateTime clickTimestamp READ clickTimestamp WRITE setClickTimestamp NOTIFY clickTimestampChanged)
    Q_PROPERTY(orvane::Size mainWindowSize READ mainWindowSize WRITE setMainWindowSize NOTIFY mainWindowSizeChanged)

public:
    explicit PointerState(QObject* parent = nullptr);

    bool showCursor() const { return showCursor_; }
    void setShowCursor(bool show);
    bool cursorHighlight() const { return cursorHighlight_; }
    void setCursorHighlight(bool highlight);
    bool showClicks() const { return showClicks_; }
    void setShowClicks(bool show);
    const CodableColor& cursorHighlightColor() const { return cursorHighlightColor_; }
    void setCursorHighlightColor(const CodableColor& color);
    const Point& globalMouseLocation() const { return globalMouseLocation_; }
    void setGlobalMouseLocation(const Point& location);
    bool isMouseOverMainWindow() const { return isMouseOverMainWindow_; }
    void setIsMouseOverMainWindow(bool over);
    const Point& lastClickPosition() const { return lastClickPosition_; }
    void setLastClickPosition(const Point& position);
    // A moment, not a value: notifies on every assignment.
    const QDateTime& clickTimestamp() const { return clickTimestamp_; }
    void setClickTimestamp(const QDateTime& timestamp);
    const Size& mainWindowSize() const { return mainWindowSize_; }
    void setMainWindowSize(const Size& size);

signals:
    void showCursorChanged(bool show);
    void cursorHighlightChanged(bool highlight);
    void showClicksChanged(bool show);
    void cursorHighlightColorChanged();
    void globalMouseLocationChanged();
    void isMouseOverMainWindowChanged(bool over);
    void lastClickPositionChanged();
    void clickTimestampChanged();
    void mainWindowSizeChanged();

private:
    bool showCursor_ = true;
    bool cursorHighlight_ = false;
    bool showClicks_ = false;
    CodableColor cursorHighlightColor_{1, 1, 0, 1};  // yellow
    Point globalMouseLocation_;
    bool isMouseOverMainWindow_ = false;
    Point lastClickPosition_;
    QDateTime clickTimestamp_ = QDateTime::currentDateTimeUtc();
    Size mainWindowSize_;
};

}  // namespace orvane

#pragma once

#include <QWidget>

class QVBoxLayout;

namespace orvane {

class ScaleFadeEffect;
class StreamManager;

// The round drawing button of the pop-out window and, while drawing, its
// toolbar: tools, colours, widths and the trash. It sits in a corner or at
// a side of its host by the session's drawingButtonPosition. The toolbar
// enters and leaves by scale and opacity over 0.2 seconds.
class FloatingDrawingControls : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool isExpanded READ isExpanded NOTIFY isExpandedChanged)

public:
    static constexpr int hostPadding = 20;

    explicit FloatingDrawingControls(StreamManager& streamManager, QWidget* parent = nullptr);

    bool isExpanded() const { return isExpanded_; }
    // Sizes the panel and moves it to its place inside `host`.
    void placeIn(const QRect& host);
    void pressMainButton();
    QWidget* toolbar() const { return toolbar_; }
    ScaleFadeEffect* toolbarEffect() const { return toolbarEffect_; }

signals:
    void isExpandedChanged(bool expanded);

private:
    void refresh();

    StreamManager& streamManager_;
    bool isExpanded_ = false;
    QWidget* mainButton_ = nullptr;
    QWidget* toolbar_ = nullptr;
    ScaleFadeEffect* toolbarEffect_ = nullptr;
    QRect host_;
};

}  // namespace orvane

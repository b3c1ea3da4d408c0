#pragma once

#include <QWidget>

class QVBoxLayout;

namespace orvane {

class StreamManager;

// The round drawing button of the pop-out window and, while drawing, its
// toolbar: tools, colours, widths and the trash. It sits in a corner or at
// a side of its host by the session's drawingButtonPosition.
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

signals:
    void isExpandedChanged(bool expanded);

private:
    void refresh();

    StreamManager& streamManager_;
    bool isExpanded_ = false;
    QWidget* mainButton_ = nullptr;
    QWidget* toolbar_ = nullptr;
    QRect host_;
};

}  // namespace orvane

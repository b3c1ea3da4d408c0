#include "console/controls/SegmentedButton.h"

namespace orvane {

SegmentedButton::SegmentedButton(const QString& text, Edge edge, QWidget* parent) : QPushButton(text, parent) {
    setAccessibleName(text);
    setCheckable(true);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    const int left = edge == Edge::first || edge == Edge::single ? 6 : 0;
    const int right = edge == Edge::last || edge == Edge::single ? 6 : 0;
    setStyleSheet(QStringLiteral("QPushButton { color: rgba(255,255,255,0.85); background: rgba(255,255,255,0.08);"
                                 " border: none; padding: 4px 8px; font-size: 10px;"
                                 " border-top-left-radius: %1px; border-bottom-left-radius: %1px;"
                                 " border-top-right-radius: %2px; border-bottom-right-radius: %2px; }"
                                 "QPushButton:hover { background: rgba(255,255,255,0.14); }"
                                 "QPushButton:checked { color: white; background: rgba(175,82,222,0.85); }")
                      .arg(left)
                      .arg(right));
    // A click only asks for the change; the owner checks the segment that
    // the document then holds.
    connect(this, &QPushButton::clicked, this, [this] { setChecked(!isChecked()); });
}

}  // namespace orvane

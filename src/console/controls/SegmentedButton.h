#pragma once

#include <QPushButton>

namespace orvane {

// One segment of a segmented choice: checkable, purple when chosen, rounded
// on the outer edges of the group. Checking is left to the owner, who sets
// it from the document after each change.
class SegmentedButton : public QPushButton {
    Q_OBJECT

public:
    enum class Edge { first, middle, last, single };

    SegmentedButton(const QString& text, Edge edge, QWidget* parent = nullptr);
};

}  // namespace orvane

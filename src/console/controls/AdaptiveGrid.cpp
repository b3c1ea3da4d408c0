#include "console/controls/AdaptiveGrid.h"

#include <algorithm>

namespace orvane {

AdaptiveGrid::AdaptiveGrid(int minColumnWidth, int maxColumnWidth, int spacing, QWidget* parent)
    : QWidget(parent), minColumnWidth_(minColumnWidth), maxColumnWidth_(maxColumnWidth), spacing_(spacing) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void AdaptiveGrid::addItem(QWidget* item) {
    item->setParent(this);
    items_.push_back(item);
    item->show();
    place(width(), true);
    updateGeometry();
}

void AdaptiveGrid::clear() {
    for (QWidget* item : items_) delete item;
    items_.clear();
    updateGeometry();
}

int AdaptiveGrid::columnsFor(int width) const {
    return std::max(1, (width + spacing_) / (minColumnWidth_ + spacing_));
}

int AdaptiveGrid::place(int width, bool apply) const {
    if (items_.empty()) return 0;
    const int columns = columnsFor(width);
    const int columnWidth =
        std::clamp((width - spacing_ * (columns - 1)) / columns, std::min(minColumnWidth_, width), maxColumnWidth_);
    int y = 0;
    for (std::size_t start = 0; start < items_.size(); start += columns) {
        int rowHeight = 0;
        const std::size_t end = std::min(items_.size(), start + columns);
        for (std::size_t i = start; i < end; ++i) {
            QWidget* item = items_[i];
            const int hint = item->hasHeightForWidth() ? item->heightForWidth(columnWidth) : item->sizeHint().height();
            const int h = std::max(hint, item->minimumHeight());
            rowHeight = std::max(rowHeight, h);
        }
        if (apply) {
            for (std::size_t i = start; i < end; ++i)
                items_[i]->setGeometry(int(i - start) * (columnWidth + spacing_), y, columnWidth, rowHeight);
        }
        y += rowHeight + spacing_;
    }
    return y - spacing_;
}

int AdaptiveGrid::heightForWidth(int width) const { return place(width, false); }

QSize AdaptiveGrid::sizeHint() const {
    const int w = std::max(width(), minColumnWidth_);
    return {w, heightForWidth(w)};
}

QSize AdaptiveGrid::minimumSizeHint() const { return {minColumnWidth_, heightForWidth(std::max(width(), minColumnWidth_))}; }

void AdaptiveGrid::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    place(width(), true);
}

}  // namespace orvane

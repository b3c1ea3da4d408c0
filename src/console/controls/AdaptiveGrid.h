#pragma once

#include <QWidget>
#include <vector>

namespace orvane {

// Lays its items out in as many columns as fit, each between a minimum and a
// maximum width, with a fixed spacing; rows take the tallest item's height.
class AdaptiveGrid : public QWidget {
    Q_OBJECT

public:
    AdaptiveGrid(int minColumnWidth, int maxColumnWidth, int spacing, QWidget* parent = nullptr);

    void addItem(QWidget* item);
    // Deletes every item.
    void clear();
    const std::vector<QWidget*>& items() const { return items_; }

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    int columnsFor(int width) const;
    int place(int width, bool apply) const;

    int minColumnWidth_;
    int maxColumnWidth_;
    int spacing_;
    std::vector<QWidget*> items_;
};

}  // namespace orvane

#pragma once

#include <QPushButton>
#include <string>

namespace orvane {

// One choice among a few shown side by side: a symbol, an optional caption
// under it, marked in purple with an outline while it is the current one.
// Pressing or toggling it (a click, the keyboard, assistive technology's
// toggle) reports `chosen`; the owner then says which one is current, and a
// current tile stays current when pressed again.
class SelectableTile : public QPushButton {
    Q_OBJECT

public:
    // `name` is the accessible name, and the caption when `showCaption`.
    SelectableTile(const QString& name, std::string symbol, bool showCaption, QWidget* parent = nullptr);

    bool isCurrent() const { return isChecked(); }
    void setCurrent(bool current);
    QSize sizeHint() const override;

signals:
    void chosen();

protected:
    void paintEvent(QPaintEvent* event) override;
    // What the tile shows in its middle; the symbol unless overridden.
    virtual void paintFigure(QPainter& painter, const QRectF& area);

private:
    std::string symbol_;
    bool showCaption_ = false;
};

}  // namespace orvane

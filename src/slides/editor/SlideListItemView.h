#pragma once

#include <QWidget>

#include "document/Slide.h"

class QLabel;
class QToolButton;

namespace orvane {

// One row of the slide list: its place counted from 1, the title, and while
// the pointer is over it the move and delete buttons. Ends of the list have
// no move button past them.
class SlideListItemView : public QWidget {
    Q_OBJECT
public:
    SlideListItemView(const Slide& slide, int index, bool selected, bool canMoveUp, bool canMoveDown,
                      QWidget* parent = nullptr);

    QToolButton* moveUpButton() const { return up_; }
    QToolButton* moveDownButton() const { return down_; }
    QToolButton* deleteButton() const { return trash_; }
    bool isHovering() const { return hovering_; }

signals:
    void selected();
    void moveUpRequested();
    void moveDownRequested();
    void deleteRequested();

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void setHovering(bool hovering);

    bool selected_ = false;
    bool hovering_ = false;
    QToolButton* up_ = nullptr;
    QToolButton* down_ = nullptr;
    QToolButton* trash_ = nullptr;
};

}  // namespace orvane

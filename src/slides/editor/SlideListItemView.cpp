#include "slides/editor/SlideListItemView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>

#include "slides/editor/SymbolIcon.h"

namespace orvane {

namespace {

QToolButton* rowButton(const char* symbol, const QString& help, const QColor& color) {
    auto* button = new QToolButton;
    button->setIcon(SymbolIcon::make(symbol, color, 14));
    button->setToolTip(help);
    button->setAccessibleName(help);
    button->setAutoRaise(true);
    return button;
}

}  // namespace

SlideListItemView::SlideListItemView(const Slide& slide, int index, bool selected, bool canMoveUp,
                                     bool canMoveDown, QWidget* parent)
    : QWidget(parent), selected_(selected) {
    const QString title = QString::fromStdString(slide.title);
    setAccessibleName(QStringLiteral("%1. %2").arg(index + 1).arg(title));
    setAttribute(Qt::WA_Hover);
    setMinimumHeight(40);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(10, 6, 6, 6);
    auto* number = new QLabel(QStringLiteral("%1.").arg(index + 1));
    number->setStyleSheet(QStringLiteral("color: gray;"));
    auto* name = new QLabel(title);
    name->setStyleSheet(selected ? QStringLiteral("color: white; font-weight: 600;")
                                 : QStringLiteral("color: white;"));
    row->addWidget(number);
    row->addWidget(name, 1);
    if (canMoveUp) {
        up_ = rowButton("arrow.up", QStringLiteral("Move Up"), Qt::white);
        connect(up_, &QToolButton::clicked, this, &SlideListItemView::moveUpRequested);
        row->addWidget(up_);
    }
    if (canMoveDown) {
        down_ = rowButton("arrow.down", QStringLiteral("Move Down"), Qt::white);
        connect(down_, &QToolButton::clicked, this, &SlideListItemView::moveDownRequested);
        row->addWidget(down_);
    }
    trash_ = rowButton("trash", QStringLiteral("Delete Slide"), QColor(255, 69, 58));
    connect(trash_, &QToolButton::clicked, this, &SlideListItemView::deleteRequested);
    row->addWidget(trash_);
    setHovering(false);
}

void SlideListItemView::setHovering(bool hovering) {
    hovering_ = hovering;
    for (QToolButton* button : {up_, down_, trash_})
        if (button) button->setVisible(hovering);
    update();
}

void SlideListItemView::enterEvent(QEnterEvent* event) {
    setHovering(true);
    QWidget::enterEvent(event);
}

void SlideListItemView::leaveEvent(QEvent* event) {
    setHovering(false);
    QWidget::leaveEvent(event);
}

void SlideListItemView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) emit selected();
    QWidget::mousePressEvent(event);
}

void SlideListItemView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor ground = selected_ ? QColor(175, 82, 222, 90) : QColor(255, 255, 255, hovering_ ? 20 : 0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(QRectF(rect()).adjusted(2, 2, -2, -2), 6, 6);
}

}  // namespace orvane

#include "teleprompter/RoundSymbolButton.h"

#include <QPainter>

#include "paint/SymbolPainter.h"

namespace orvane {

RoundSymbolButton::RoundSymbolButton(std::string symbol, const QColor& color, const QString& help, QWidget* parent)
    : QAbstractButton(parent) {
    setFixedSize(30, 30);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    setSymbol(std::move(symbol), color, help);
}

void RoundSymbolButton::setSymbol(std::string symbol, const QColor& color, const QString& help) {
    symbol_ = std::move(symbol);
    color_ = color;
    setToolTip(help);
    setAccessibleName(help);
    update();
}

void RoundSymbolButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, hovered_ || isDown() ? 200 : 140));
    painter.drawEllipse(rect().adjusted(1, 1, -1, -1));
    SymbolPainter::draw(painter, symbol_, QRectF(rect()).center(), 20, color_);
}

void RoundSymbolButton::enterEvent(QEnterEvent* event) {
    hovered_ = true;
    update();
    QAbstractButton::enterEvent(event);
}

void RoundSymbolButton::leaveEvent(QEvent* event) {
    hovered_ = false;
    update();
    QAbstractButton::leaveEvent(event);
}

}  // namespace orvane

#pragma once

#include <QAbstractButton>
#include <QColor>
#include <string>

namespace orvane {

// A round 30×30 button showing one symbol, with its help text as tool tip
// and accessible name, so screen readers and tests find it by that text.
class RoundSymbolButton : public QAbstractButton {
    Q_OBJECT
public:
    RoundSymbolButton(std::string symbol, const QColor& color, const QString& help, QWidget* parent = nullptr);

    void setSymbol(std::string symbol, const QColor& color, const QString& help);
    const std::string& symbol() const { return symbol_; }
    QSize sizeHint() const override { return {30, 30}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    std::string symbol_;
    QColor color_;
    bool hovered_ = false;
};

}  // namespace orvane

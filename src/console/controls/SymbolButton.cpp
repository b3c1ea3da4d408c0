#include "console/controls/SymbolButton.h"

#include "console/controls/Symbols.h"

namespace orvane {

namespace {
QString rgba(const QColor& c) {
    return QStringLiteral("rgba(%1,%2,%3,%4)").arg(c.red()).arg(c.green()).arg(c.blue()).arg(c.alphaF());
}
}  // namespace

SymbolButton::SymbolButton(const QString& text, std::string symbol, QWidget* parent)
    : QPushButton(text, parent), symbol_(std::move(symbol)) {
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    if (!text.isEmpty()) setAccessibleName(text);
    refresh();
}

void SymbolButton::setHelpText(const QString& help) {
    setToolTip(help);
    if (text().isEmpty()) setAccessibleName(help);
}

void SymbolButton::setSymbol(std::string symbol) {
    if (symbol == symbol_) return;
    symbol_ = std::move(symbol);
    refresh();
}

void SymbolButton::setLabel(const QString& text) {
    setText(text);
    if (!text.isEmpty()) setAccessibleName(text);
}

void SymbolButton::setLook(const Look& look) {
    look_ = look;
    refresh();
}

void SymbolButton::refresh() {
    if (!symbol_.empty()) {
        setIcon(Symbols::icon(symbol_, look_.symbolSize + 2, look_.foreground));
        setIconSize(QSize(int(look_.symbolSize + 2), int(look_.symbolSize + 2)));
    } else {
        setIcon(QIcon());
    }
    setStyleSheet(QStringLiteral("QPushButton { color: %1; background: %2; border: none; border-radius: %3px;"
                                 " padding: %4px %5px; font-size: %6px; font-weight: %7; }"
                                 "QPushButton:hover { background: %8; }"
                                 "QPushButton:disabled { color: rgba(255,255,255,0.35); }")
                      .arg(rgba(look_.foreground), rgba(look_.background))
                      .arg(look_.radius)
                      .arg(look_.paddingY)
                      .arg(look_.paddingX)
                      .arg(int(look_.fontSize))
                      .arg(look_.bold ? 600 : 500)
                      .arg(rgba(look_.background.alphaF() > 0.5 ? look_.background.lighter(115)
                                                                : QColor(255, 255, 255,
                                                                         std::min(255, look_.background.alpha() + 20)))));
}

}  // namespace orvane

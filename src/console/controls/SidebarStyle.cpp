#include "console/controls/SidebarStyle.h"

#include <QFrame>
#include <QLabel>

#include "console/controls/SymbolButton.h"
#include "console/controls/Symbols.h"

namespace orvane::SidebarStyle {

namespace {
QString css(const QColor& c) {
    return QStringLiteral("rgba(%1,%2,%3,%4)").arg(c.red()).arg(c.green()).arg(c.blue()).arg(c.alphaF());
}
}  // namespace

QLabel* label(const QString& text, double size, Theme::Weight weight, const QColor& color) {
    auto* l = new QLabel(text);
    l->setFont(Theme::font(size, weight));
    l->setStyleSheet(QStringLiteral("color: %1; background: transparent;").arg(css(color)));
    return l;
}

QLabel* head(const QString& text) { return label(text, 11, Theme::Weight::bold, Theme::white(0.7)); }

QLabel* caption(const QString& text, double size) {
    QLabel* l = label(text, size, Theme::Weight::regular, Theme::gray());
    l->setWordWrap(true);
    return l;
}

QLabel* symbol(const std::string& name, double size, const QColor& color) {
    auto* l = new QLabel;
    l->setPixmap(Symbols::pixmap(name, size, color));
    l->setFixedSize(int(size) + 2, int(size) + 2);
    l->setAlignment(Qt::AlignCenter);
    return l;
}

QFrame* divider() {
    auto* line = new QFrame;
    line->setFixedHeight(1);
    line->setStyleSheet(QStringLiteral("background: rgba(255,255,255,0.1);"));
    return line;
}

SymbolButton* iconButton(const std::string& symbol, const QString& help, const QColor& color, double size) {
    auto* button = new SymbolButton(QString(), symbol);
    SymbolButton::Look look;
    look.foreground = color;
    look.background = Qt::transparent;
    look.symbolSize = size;
    look.paddingX = 3;
    look.paddingY = 3;
    button->setLook(look);
    button->setHelpText(help);
    return button;
}

QWidget* card(QWidget* parent) {
    auto* w = new QWidget(parent);
    w->setObjectName(QStringLiteral("sidebarCard"));
    w->setAttribute(Qt::WA_StyledBackground);
    w->setStyleSheet(QStringLiteral("#sidebarCard { background: rgba(255,255,255,0.05); border-radius: 8px; }"));
    return w;
}

}  // namespace orvane::SidebarStyle

#include "console/controls/Theme.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPalette>
#include <QStyleFactory>

namespace orvane::Theme {

QColor consoleGround() { return QColor::fromRgbF(0.11f, 0.13f, 0.16f); }
QColor sidebarGround() { return QColor::fromRgbF(0.13f, 0.15f, 0.18f); }
QColor mockGround() { return QColor::fromRgbF(0.15f, 0.17f, 0.2f); }
QColor purple() { return QColor(175, 82, 222); }
QColor pink() { return QColor(255, 55, 95); }
QColor orange() { return QColor(255, 149, 0); }
QColor green() { return QColor(52, 199, 89); }
QColor red() { return QColor(255, 59, 48); }
QColor blue() { return QColor(10, 132, 255); }
QColor gray() { return QColor(142, 142, 147); }
QColor white(double opacity) { return withAlpha(Qt::white, opacity); }
QColor black(double opacity) { return withAlpha(Qt::black, opacity); }

QColor withAlpha(QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

QFont font(double pixelSize, Weight weight) {
    QFont f = QApplication::font();
    f.setPixelSize(std::max(1, static_cast<int>(pixelSize + 0.5)));
    switch (weight) {
    case Weight::regular: f.setWeight(QFont::Normal); break;
    case Weight::medium: f.setWeight(QFont::Medium); break;
    case Weight::semibold: f.setWeight(QFont::DemiBold); break;
    case Weight::bold: f.setWeight(QFont::Bold); break;
    }
    return f;
}

QFont monospaceFont(double pixelSize, Weight weight) {
    QFont f = font(pixelSize, weight);
    f.setFamily(QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
    f.setStyleHint(QFont::Monospace);
    f.setFixedPitch(true);
    return f;
}

void apply(QApplication& app) {
    app.setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QPalette p;
    const QColor base = consoleGround();
    p.setColor(QPalette::Window, base);
    p.setColor(QPalette::WindowText, Qt::white);
    p.setColor(QPalette::Base, QColor(30, 34, 41));
    p.setColor(QPalette::AlternateBase, sidebarGround());
    p.setColor(QPalette::Text, Qt::white);
    p.setColor(QPalette::PlaceholderText, white(0.4));
    p.setColor(QPalette::Button, QColor(44, 49, 58));
    p.setColor(QPalette::ButtonText, Qt::white);
    p.setColor(QPalette::ToolTipBase, QColor(44, 49, 58));
    p.setColor(QPalette::ToolTipText, Qt::white);
    p.setColor(QPalette::Highlight, purple());
    p.setColor(QPalette::HighlightedText, Qt::white);
    p.setColor(QPalette::Link, blue());
    p.setColor(QPalette::Disabled, QPalette::Text, white(0.35));
    p.setColor(QPalette::Disabled, QPalette::ButtonText, white(0.35));
    p.setColor(QPalette::Disabled, QPalette::WindowText, white(0.35));
    app.setPalette(p);
    app.setStyleSheet(QStringLiteral(
        "QToolTip { color: white; background: #2c313a; border: 1px solid #3a404a; }"
        "QLineEdit { background: rgba(255,255,255,0.08); border: 1px solid rgba(255,255,255,0.15);"
        "  border-radius: 6px; padding: 5px 8px; color: white; selection-background-color: #af52de; }"
        "QLineEdit:focus { border: 1px solid #af52de; }"
        "QScrollArea { background: transparent; border: none; }"
        "QScrollArea > QWidget > QWidget { background: transparent; }"
        "QDialog { background: #1c2129; }"
        "QMenu { background: #2c313a; color: white; border: 1px solid #3a404a; }"
        "QMenu::item:selected { background: #af52de; }"));
}

}  // namespace orvane::Theme

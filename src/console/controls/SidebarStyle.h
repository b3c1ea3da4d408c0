#pragma once

#include <QColor>
#include <QFrame>
#include <QLabel>
#include <QString>
#include <string>

#include "console/controls/Theme.h"

namespace orvane {

class SymbolButton;

// The small pieces the configuration sidebar's panels are made of, so that
// every panel has the same heads, captions and rules.
namespace SidebarStyle {

QLabel* label(const QString& text, double size, Theme::Weight weight = Theme::Weight::regular,
              const QColor& color = Theme::white());
// A section head such as "SOURCES": small, bold, dimmed capitals.
QLabel* head(const QString& text);
// Grey explanatory text that wraps.
QLabel* caption(const QString& text, double size = 10);
// A symbol as a picture.
QLabel* symbol(const std::string& name, double size, const QColor& color);
QFrame* divider();
// A flat symbol-only button with its help text.
SymbolButton* iconButton(const std::string& symbol, const QString& help, const QColor& color, double size = 12);
// A panel row: rounded faint ground.
QWidget* card(QWidget* parent = nullptr);

}  // namespace SidebarStyle
}  // namespace orvane

#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <string_view>

namespace orvane {

// Pictures of the interface's symbols at a size and colour, drawn with the
// composition's symbol table.
namespace Symbols {

QPixmap pixmap(std::string_view symbol, double size, const QColor& color);
QIcon icon(std::string_view symbol, double size, const QColor& color);

}  // namespace Symbols
}  // namespace orvane

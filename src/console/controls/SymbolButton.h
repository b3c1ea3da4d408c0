#pragma once

#include <QColor>
#include <QPushButton>
#include <string>

namespace orvane {

// The console's button: a symbol, an optional label, a tinted rounded
// ground. A button without a label takes its help text as accessible name.
class SymbolButton : public QPushButton {
    Q_OBJECT

public:
    struct Look {
        QColor foreground = Qt::white;
        QColor background = QColor(255, 255, 255, 26);
        double fontSize = 10;
        double symbolSize = 10;
        int radius = 6;
        int paddingX = 10;
        int paddingY = 4;
        bool bold = false;
    };

    SymbolButton(const QString& text, std::string symbol, QWidget* parent = nullptr);

    // For a symbol-only button: the tool tip and the accessible name.
    void setHelpText(const QString& help);
    void setSymbol(std::string symbol);
    void setLabel(const QString& text);
    void setLook(const Look& look);
    const Look& look() const { return look_; }
    const std::string& symbol() const { return symbol_; }

private:
    void refresh();

    std::string symbol_;
    Look look_;
};

}  // namespace orvane

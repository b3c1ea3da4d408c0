#pragma once

#include <QPushButton>
#include <string>

namespace orvane {

// A large add button: symbol, title and subtitle; a plus sign while hovered.
class QuickAddButton : public QPushButton {
    Q_OBJECT

public:
    QuickAddButton(const QString& title, const QString& subtitle, std::string symbol, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString subtitle_;
    std::string symbol_;
};

}  // namespace orvane

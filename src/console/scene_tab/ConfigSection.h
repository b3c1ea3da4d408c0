#pragma once

#include <QWidget>

class QLabel;
class QVBoxLayout;

namespace orvane {

// A titled group of a source panel: the title in bold over its controls.
class ConfigSection : public QWidget {
    Q_OBJECT

public:
    explicit ConfigSection(const QString& title, QWidget* parent = nullptr);

    QString title() const;
    QVBoxLayout* body() const { return body_; }

private:
    QLabel* title_ = nullptr;
    QVBoxLayout* body_ = nullptr;
};

}  // namespace orvane

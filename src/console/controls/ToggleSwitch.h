#pragma once

#include <QAbstractButton>

namespace orvane {

// An on/off switch: the label on the left, a pill on the right. Checkable;
// `toggled` reports the user's change. A switch whose label is hidden keeps
// the label as its accessible name.
class ToggleSwitch : public QAbstractButton {
    Q_OBJECT

public:
    explicit ToggleSwitch(const QString& label, QWidget* parent = nullptr);

    void setLabelVisible(bool visible);
    // Sets the state without emitting toggled or clicked.
    void setOn(bool on);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool labelVisible_ = true;
};

}  // namespace orvane

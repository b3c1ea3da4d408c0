#pragma once

#include <QDialog>

class QLineEdit;
class QPushButton;

namespace orvane {

// The small sheet that names a new progress step: "Step Title", "Cancel" and
// "Add Step". A title of blanks cannot be added.
class AddStepView : public QDialog {
    Q_OBJECT

public:
    explicit AddStepView(QWidget* parent = nullptr);

    QLineEdit* titleField() const { return title_; }
    QPushButton* addButton() const { return add_; }
    QPushButton* cancelButton() const { return cancel_; }

signals:
    // The trimmed title, once, when "Add Step" is pressed.
    void stepAdded(const QString& title);

private:
    QLineEdit* title_ = nullptr;
    QPushButton* add_ = nullptr;
    QPushButton* cancel_ = nullptr;
};

}  // namespace orvane

#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

namespace orvane {

// The console's question before something is removed: a title, a message
// that wraps, "Cancel" and a red button that does it. Escape and closing
// the window cancel; only the red button confirms. The dialog is modal to
// its window and deletes itself once answered.
class ConfirmDialog : public QDialog {
    Q_OBJECT

public:
    ConfirmDialog(const QString& title, const QString& message, const QString& destructiveText,
                  QWidget* parent = nullptr);

    QString title() const;
    QString message() const;
    QPushButton* cancelButton() const { return cancel_; }
    QPushButton* destructiveButton() const { return destructive_; }

signals:
    // The red button was pressed; emitted before the dialog closes.
    void confirmed();

private:
    QLabel* title_ = nullptr;
    QLabel* message_ = nullptr;
    QPushButton* cancel_ = nullptr;
    QPushButton* destructive_ = nullptr;
};

}  // namespace orvane

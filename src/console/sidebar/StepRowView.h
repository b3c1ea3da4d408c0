#pragma once

#include <QWidget>

#include "document/ProgressStep.h"

class QLabel;

namespace orvane {

class SymbolButton;

// One step in the progress bar's sheet: a circle that ticks it off, its
// title (struck through when done), and buttons to move it up or down and to
// delete it. The row only asks; the sheet changes the configuration.
class StepRowView : public QWidget {
    Q_OBJECT

public:
    explicit StepRowView(const ProgressStep& step, QWidget* parent = nullptr);

    const ProgressStep& step() const { return step_; }
    SymbolButton* toggleButton() const { return toggle_; }
    QLabel* titleLabel() const { return title_; }
    SymbolButton* moveUpButton() const { return up_; }
    SymbolButton* moveDownButton() const { return down_; }
    SymbolButton* deleteButton() const { return delete_; }

signals:
    void toggleRequested(const orvane::Uuid& id);
    void moveUpRequested(const orvane::Uuid& id);
    void moveDownRequested(const orvane::Uuid& id);
    void deleteRequested(const orvane::Uuid& id);

private:
    ProgressStep step_;
    SymbolButton* toggle_ = nullptr;
    QLabel* title_ = nullptr;
    SymbolButton* up_ = nullptr;
    SymbolButton* down_ = nullptr;
    SymbolButton* delete_ = nullptr;
};

}  // namespace orvane

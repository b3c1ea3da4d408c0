#pragma once

#include <QDialog>
#include <cstdint>
#include <optional>

#include "capture/CaptureDisplay.h"

namespace orvane {

class CaptureBackend;
class CaptureListPanel;
class ScreenCaptureManager;

// The sheet that picks a display to capture. It lists the displays as soon
// as it is made; choosing one reports it and closes the sheet.
class ScreenSelectorView : public QDialog {
    Q_OBJECT

public:
    // Without a backend the sheet says that capture is unavailable.
    ScreenSelectorView(CaptureBackend* backend, std::optional<std::uint32_t> selectedId, QWidget* parent = nullptr);

    CaptureListPanel* body() const { return body_; }
    void choose(const CaptureDisplay& display);

signals:
    void displayChosen(const orvane::CaptureDisplay& display);

private:
    void refresh();

    ScreenCaptureManager* manager_ = nullptr;
    CaptureListPanel* body_ = nullptr;
    std::optional<std::uint32_t> selectedId_;
};

}  // namespace orvane

#pragma once

#include <QDialog>
#include <QList>
#include <cstdint>
#include <optional>

#include "capture/CaptureWindow.h"

class QLineEdit;

namespace orvane {

class CaptureBackend;
class CaptureListPanel;
class SymbolButton;
class WindowCaptureManager;

// The sheet that picks a window to capture, with a search over the
// windows' shown names. Choosing one reports it and closes the sheet.
class WindowSelectorView : public QDialog {
    Q_OBJECT

public:
    // Without a backend the sheet says that capture is unavailable.
    WindowSelectorView(CaptureBackend* backend, std::optional<std::uint32_t> selectedId, QWidget* parent = nullptr);

    // The windows whose shown name contains `search`, ignoring case; all of
    // them for an empty search.
    static QList<CaptureWindow> filter(const QList<CaptureWindow>& windows, const QString& search);

    CaptureListPanel* body() const { return body_; }
    QLineEdit* searchField() const { return search_; }
    SymbolButton* clearSearchButton() const { return clear_; }
    void choose(const CaptureWindow& window);

signals:
    void windowChosen(const orvane::CaptureWindow& window);

private:
    void refresh();

    WindowCaptureManager* manager_ = nullptr;
    CaptureListPanel* body_ = nullptr;
    QLineEdit* search_ = nullptr;
    SymbolButton* clear_ = nullptr;
    std::optional<std::uint32_t> selectedId_;
};

}  // namespace orvane

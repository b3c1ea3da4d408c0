#pragma once

#include <QImage>
#include <QPointer>
#include <QWidget>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class QLabel;
class QStackedLayout;
class QVBoxLayout;

namespace orvane {

class CaptureTile;
class SymbolButton;

// The body of a capture sheet, in one of four states: loading, an error
// with "Retry", an empty list, or the tiles. Thumbnails are fetched one
// per turn of the event loop, so a long list never freezes the sheet.
class CaptureListPanel : public QWidget {
    Q_OBJECT

public:
    enum class State { loading, error, empty, list };
    using ThumbnailFetch = std::function<std::optional<QImage>()>;

    explicit CaptureListPanel(QWidget* parent = nullptr);

    void showLoading(const QString& text);
    // With needsPermission the block also offers "Open System Settings" and
    // the hint, where the desktop's settings program is known; elsewhere
    // only a sentence saying what to check.
    void showError(const QString& message, bool needsPermission, const QString& hint);
    void showEmpty(const std::string& symbol, const QString& text);
    // Takes the tiles; each fetch fills its tile's thumbnail later.
    void showTiles(const std::vector<CaptureTile*>& tiles, std::vector<ThumbnailFetch> fetches = {});

    State state() const { return state_; }
    QString message() const;
    const std::vector<CaptureTile*>& tiles() const { return tiles_; }
    SymbolButton* retryButton() const { return retry_; }
    SymbolButton* settingsButton() const { return settings_; }
    QLabel* hintText() const { return hint_; }

signals:
    void retryRequested();

private:
    void clearTiles();
    void fetchNextThumbnail();

    State state_ = State::loading;
    QStackedLayout* stack_ = nullptr;
    QLabel* loadingText_ = nullptr;
    QLabel* errorText_ = nullptr;
    QLabel* hint_ = nullptr;
    SymbolButton* retry_ = nullptr;
    SymbolButton* settings_ = nullptr;
    QLabel* emptySymbol_ = nullptr;
    QLabel* emptyText_ = nullptr;
    QVBoxLayout* list_ = nullptr;
    std::vector<CaptureTile*> tiles_;
    std::deque<std::pair<QPointer<CaptureTile>, ThumbnailFetch>> pending_;
};

}  // namespace orvane

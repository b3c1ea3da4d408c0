#include "teleprompter/TeleprompterManager.h"

#include <QString>

#include "document/Log.h"
#include "engine/StreamManager.h"
#include "teleprompter/ScrollTicker.h"
#include "teleprompter/TeleprompterSettings.h"
#include "teleprompter/TeleprompterWindow.h"

namespace orvane {

namespace {

const char* shareWord(bool hidden) { return hidden ? "HIDDEN from" : "VISIBLE in"; }
const char* boolWord(bool value) { return value ? "true" : "false"; }

// A speed as a decimal number that always shows its fraction: 1.0, 0.5, 2.25.
std::string decimal(double value) {
    QString text = QString::number(value, 'g', 15);
    if (!text.contains(u'.') && !text.contains(u'e') && !text.contains(u'n') && !text.contains(u'i'))
        text += QStringLiteral(".0");
    return text.toStdString();
}

}  // namespace

TeleprompterManager::TeleprompterManager(StreamManager& streamManager, QObject* parent)
    : QObject(parent), streamManager_(&streamManager), ticker_(new ScrollTicker(this)) {
    connect(ticker_, &ScrollTicker::tick, this, [this] { setScrollOffset(scrollOffset_ + pointsPerTick_); });
}

TeleprompterManager::~TeleprompterManager() {
    if (window_) closeTeleprompterWindow();
}

QWidget* TeleprompterManager::teleprompterWindow() const { return window_; }

void TeleprompterManager::setScrollOffset(double offset) {
    if (scrollOffset_ == offset) return;
    scrollOffset_ = offset;
    emit scrollOffsetChanged(offset);
}

void TeleprompterManager::setWindowOpen(bool open) {
    if (isTeleprompterWindowOpen_ == open) return;
    isTeleprompterWindowOpen_ = open;
    emit isTeleprompterWindowOpenChanged(open);
}

void TeleprompterManager::setScrolling(bool scrolling) {
    if (isScrolling_ == scrolling) return;
    isScrolling_ = scrolling;
    emit isScrollingChanged(scrolling);
}

void TeleprompterManager::openTeleprompterWindow() {
    if (window_) {
        window_->bringToFront();
        return;
    }
    const auto settings = teleprompterSettings(streamManager_);
    if (!settings) {
        logLine("⚠️ No teleprompter configuration found");
        return;
    }
    window_ = new TeleprompterWindow(*this, QSize(static_cast<int>(settings->width), static_cast<int>(settings->height)),
                                     streamManager_->settings());
    applyLevel(settings->alwaysOnTop);
    logLine(std::string("📜 Teleprompter set to ") + shareWord(settings->hideFromScreenShare) + " screen share");
    window_->bringToFront();
    setWindowOpen(true);
    if (settings->isScrolling) startScrolling();
    logLine("📜 Teleprompter window opened");
}

void TeleprompterManager::applyLevel(bool alwaysOnTop) {
    // Hiding from screen sharing has no equivalent on this display server:
    // the setting is stored and logged, and the panels say so.
    if (window_) window_->setAlwaysOnTop(alwaysOnTop);
}

void TeleprompterManager::updateWindowLevel() {
    if (!window_) return;
    const auto settings = teleprompterSettings(streamManager_);
    if (!settings) return;
    applyLevel(settings->alwaysOnTop);
    logLine(std::string("📜 Teleprompter updated to ") + shareWord(settings->hideFromScreenShare) + " screen share");
    logLine(std::string("📜 Teleprompter window updated - Always on Top: ") + boolWord(settings->alwaysOnTop) +
            ", Hide from Share: " + boolWord(settings->hideFromScreenShare));
}

void TeleprompterManager::startScrolling() {
    const auto settings = teleprompterSettings(streamManager_);
    if (!settings) return;
    stopScrolling();  // a second start restarts the clock, never doubles it
    setScrolling(true);
    // The speed is read once; a change takes effect at the next start.
    pointsPerTick_ = settings->scrollSpeed * pointsPerSecondAtSpeedOne / ScrollTicker::ticksPerSecond;
    ticker_->start();
    logLine("📜 Teleprompter scrolling started at speed: " + decimal(settings->scrollSpeed) + "x");
}

void TeleprompterManager::stopScrolling() {
    ticker_->stop();
    setScrolling(false);
    logLine("📜 Teleprompter scrolling stopped");
}

void TeleprompterManager::closeTeleprompterWindow() {
    stopScrolling();
    if (window_) window_->close();  // reports back through windowWillClose
    if (window_) window_->deleteLater();
    window_ = nullptr;
    setWindowOpen(false);
    setScrollOffset(0);
    logLine("📜 Teleprompter window closed");
}

void TeleprompterManager::windowWillClose(QWidget* window) {
    if (!window || window != window_) return;
    setWindowOpen(false);
    window_->deleteLater();
    window_ = nullptr;
    stopScrolling();
    setScrollOffset(0);
    logLine("📜 Teleprompter window closed by user");
}

}  // namespace orvane

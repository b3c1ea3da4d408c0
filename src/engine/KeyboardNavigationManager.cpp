#include "engine/KeyboardNavigationManager.h"

#include <string>

#include "document/Log.h"
#include "engine/StreamManager.h"

namespace orvane {

namespace {

// Far enough back that any press after it is a first press.
QDateTime distantPast() { return QDateTime(QDate(1, 1, 1), QTime(0, 0), Qt::UTC); }

std::string text(const QString& s) { return s.toStdString(); }

}  // namespace

KeyboardNavigationManager::KeyboardNavigationManager(StreamManager& streamManager, QObject* parent)
    : KeyboardNavigationManager(streamManager, [] { return QDateTime::currentDateTimeUtc(); }, parent) {}

KeyboardNavigationManager::KeyboardNavigationManager(StreamManager& streamManager, Clock clock, QObject* parent)
    : QObject(parent), streamManager_(streamManager), clock_(std::move(clock)), lastKeyPressTime_(clock_()) {}

KeyboardNavigationManager::KeyResult KeyboardNavigationManager::deliverKey(const QString& key,
                                                                            bool textFieldFocused) {
    if (key == QLatin1String("b"))
        logLine("🎹 Key B pressed");
    else
        logLine("🎹 Key " + text(key) + " pressed");
    if (textFieldFocused) {
        logLine("🎹 Text field focused, ignoring shortcut");
        return KeyResult::ignored;
    }
    handleKeyPress(key);
    return KeyResult::handled;
}

bool KeyboardNavigationManager::handleKeyPress(const QString& key) {
    if (key == QLatin1String("b")) {
        logLine("🎹 KeyboardNavigationManager: Blur toggle activated");
        streamManager_.toggleBlurMode();
        return true;
    }
    return handleNumericKeyPress(key);
}

bool KeyboardNavigationManager::handleNumericKeyPress(const QString& key) {
    logLine("🎹 KeyboardNavigationManager: Received key '" + text(key) + "'");

    bool parsed = false;
    const int number = key.toInt(&parsed, 10);
    if (!parsed || number < 1) {
        logLine("🎹 KeyboardNavigationManager: Invalid key number");
        return false;
    }
    const auto& preset = streamManager_.currentPreset();
    if (!preset) {
        logLine("🎹 KeyboardNavigationManager: No preset or scenes available");
        return true;
    }
    const std::size_t index = static_cast<std::size_t>(number) - 1;
    if (index >= preset->scenes.size()) {
        logLine("🎹 KeyboardNavigationManager: Key " + text(key) + ": No scene at index " + std::to_string(index) +
                " (total scenes: " + std::to_string(preset->scenes.size()) + ")");
        return true;
    }
    // A copy: the actions below change the preset that holds it.
    const StreamingScene scene = preset->scenes[index];

    const QDateTime pressedAt = clock_();
    const double secondsSinceLast = static_cast<double>(lastKeyPressTime_.msecsTo(pressedAt)) / 1000.0;
    if (lastPressedKey_ == key && secondsSinceLast <= doublePressTimeInterval) {
        handleDoublePressAction(scene, key);
        // A third quick press starts a new pair.
        lastPressedKey_.clear();
        lastKeyPressTime_ = distantPast();
    } else {
        handleSinglePressAction(scene, key);
        lastPressedKey_ = key;
        lastKeyPressTime_ = pressedAt;
    }
    emit keyStateChanged();
    return true;
}

void KeyboardNavigationManager::handleSinglePressAction(const StreamingScene& scene, const QString& key) {
    logLine("🎹 Key " + text(key) + ": Switching to scene '" + scene.name + "'");
    streamManager_.switchToScene(scene);
}

void KeyboardNavigationManager::handleDoublePressAction(const StreamingScene& scene, const QString& key) {
    logLine("🎹 Key " + text(key) + " (double): Going live with scene '" + scene.name + "'");
    const auto& active = streamManager_.activeScene();
    if (!active || active->id != scene.id) streamManager_.switchToScene(scene);
    streamManager_.updateLive();
    showLiveUpdateFeedback(QString::fromStdString(scene.name));
}

void KeyboardNavigationManager::showLiveUpdateFeedback(const QString& sceneName) {
    logLine("🔴 LIVE: '" + text(sceneName) + "' is now on air!");
}

}  // namespace orvane

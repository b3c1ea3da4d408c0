#pragma once

#include <QDateTime>
#include <QObject>
#include <QString>

#include <functional>

namespace orvane {

class StreamManager;
struct StreamingScene;

// Keys 1 to 9 pick the scene at that place, a second press of the same key
// within half a second puts it on air, and "b" toggles blur. There is no
// timer: the pair is judged at the next press.
class KeyboardNavigationManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString lastPressedKey READ lastPressedKey NOTIFY keyStateChanged)
    Q_PROPERTY(QDateTime lastKeyPressTime READ lastKeyPressTime NOTIFY keyStateChanged)

public:
    using Clock = std::function<QDateTime()>;

    static constexpr double doublePressTimeInterval = 0.5;  // seconds, inclusive

    // What the key system should do with a key after delivery.
    enum class KeyResult { ignored, handled };
    Q_ENUM(KeyResult)

    explicit KeyboardNavigationManager(StreamManager& streamManager, QObject* parent = nullptr);
    KeyboardNavigationManager(StreamManager& streamManager, Clock clock, QObject* parent = nullptr);

    // The console's key handler for "1".."9" and "b": logs the key, lets it
    // pass to a focused text field, and otherwise takes it. Taken keys count
    // as handled even when no scene answers to them.
    KeyResult deliverKey(const QString& key, bool textFieldFocused);

    // True when the key was taken.
    bool handleKeyPress(const QString& key);

    const QString& lastPressedKey() const { return lastPressedKey_; }
    const QDateTime& lastKeyPressTime() const { return lastKeyPressTime_; }

signals:
    void keyStateChanged();

private:
    bool handleNumericKeyPress(const QString& key);
    void handleSinglePressAction(const StreamingScene& scene, const QString& key);
    void handleDoublePressAction(const StreamingScene& scene, const QString& key);
    void showLiveUpdateFeedback(const QString& sceneName);

    StreamManager& streamManager_;
    Clock clock_;
    QDateTime lastKeyPressTime_;
    QString lastPressedKey_;
};

}  // namespace orvane

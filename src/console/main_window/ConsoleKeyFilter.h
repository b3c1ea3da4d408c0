#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

class QKeyEvent;

namespace orvane {

class KeyboardNavigationManager;

// Delivers the keys 1 to 9 and B to the keyboard navigation while the
// console's window (or a sheet over it) has them, and lets them pass to a
// focused text field.
class ConsoleKeyFilter : public QObject {
    Q_OBJECT

public:
    ConsoleKeyFilter(QWidget* console, KeyboardNavigationManager& navigation, QObject* parent = nullptr);

    // Whether the focused widget of the active window edits text.
    static bool isTextFieldFocused();
    // "1".."9" or "b" for the eleven console keys, empty otherwise.
    static QString consoleKey(const QKeyEvent& event);

signals:
    // After a digit was taken, so that the console's selection follows.
    void digitHandled();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool belongsToConsole(QObject* watched) const;

    QPointer<QWidget> console_;
    KeyboardNavigationManager& navigation_;
};

}  // namespace orvane

#include "console/main_window/ConsoleKeyFilter.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QWidget>

#include "document/Log.h"
#include "engine/KeyboardNavigationManager.h"

namespace orvane {

ConsoleKeyFilter::ConsoleKeyFilter(QWidget* console, KeyboardNavigationManager& navigation, QObject* parent)
    : QObject(parent), console_(console), navigation_(navigation) {}

bool ConsoleKeyFilter::isTextFieldFocused() {
    QWidget* window = QApplication::activeWindow();
    QWidget* focus = QApplication::focusWidget();
    if (!window && focus) window = focus->window();
    if (!window || !focus) return false;
    if (qobject_cast<QLineEdit*>(focus) || qobject_cast<QTextEdit*>(focus) || qobject_cast<QPlainTextEdit*>(focus))
        return true;
    if (auto* spin = qobject_cast<QAbstractSpinBox*>(focus)) return !spin->isReadOnly();
    const QString className = QString::fromLatin1(focus->metaObject()->className());
    return className.contains(QLatin1String("TextField")) || className.contains(QLatin1String("TextEditor"));
}

QString ConsoleKeyFilter::consoleKey(const QKeyEvent& event) {
    if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return {};
    const int key = event.key();
    if (key >= Qt::Key_1 && key <= Qt::Key_9) return QString(QChar('1' + (key - Qt::Key_1)));
    if (key == Qt::Key_B && !(event.modifiers() & Qt::ShiftModifier)) return QStringLiteral("b");
    return {};
}

bool ConsoleKeyFilter::belongsToConsole(QObject* watched) const {
    auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget || !console_ || !console_->isVisible()) return false;
    QWidget* consoleWindow = console_->window();
    QWidget* window = widget->window();
    if (window == consoleWindow) return true;
    // A sheet of the console: the text-field guard decides there.
    return qobject_cast<QDialog*>(window) && window->parentWidget() && window->parentWidget()->window() == consoleWindow;
}

bool ConsoleKeyFilter::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return false;
    auto* keyEvent = static_cast<QKeyEvent*>(event);
    if (keyEvent->isAutoRepeat()) return false;
    const QString key = consoleKey(*keyEvent);
    if (key.isEmpty() || !belongsToConsole(watched)) return false;
    // A key travels up the parents when a widget passes it on; take it once,
    // where it arrives.
    QWidget* focus = QApplication::focusWidget();
    if (focus && watched != focus) return false;

    const bool textFocused = isTextFieldFocused();
    if (!textFocused && qobject_cast<QDialog*>(qobject_cast<QWidget*>(watched)->window())) return false;
    const auto result = navigation_.deliverKey(key, textFocused);
    if (result == KeyboardNavigationManager::KeyResult::ignored) return false;
    if (key != QLatin1String("b")) emit digitHandled();
    return true;
}

}  // namespace orvane

#include "console/controls/ConsoleAccessibility.h"

#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>

#include "console/controls/ClickingButtonAccessible.h"
#include "console/controls/MenuEntryAccessible.h"

namespace orvane {

namespace {

// The push button whose menu holds the action, if any.
QPushButton* menuButtonOf(QAction* action) {
    for (QObject* owner : action->associatedObjects()) {
        auto* menu = qobject_cast<QMenu*>(owner);
        if (!menu) continue;
        auto* button = qobject_cast<QPushButton*>(menu->parentWidget());
        if (button && button->menu() == menu) return button;
    }
    return nullptr;
}

QAccessibleInterface* consoleAccessibleFactory(const QString& className, QObject* object) {
    // Only the most derived class answers, so that whatever is left to Qt
    // is asked of Qt's own factory as before.
    if (!object || className != QLatin1String(object->metaObject()->className())) return nullptr;
    if (auto* action = qobject_cast<QAction*>(object)) {
        QPushButton* button = menuButtonOf(action);
        return button ? new MenuEntryAccessible(action, button) : nullptr;
    }
    auto* button = qobject_cast<QAbstractButton*>(object);
    if (!button || qobject_cast<QToolButton*>(button)) return nullptr;  // tool buttons: Qt's own
    // A plain button that stays down reads as a check box (or a radio button
    // in an exclusive group) to assistive tools, as with Qt's own; see role().
    QAccessible::Role role = QAccessible::Button;
    if (qobject_cast<QCheckBox*>(button))
        role = QAccessible::CheckBox;
    else if (qobject_cast<QRadioButton*>(button))
        role = QAccessible::RadioButton;
    return new ClickingButtonAccessible(button, role);
}

}  // namespace

void ConsoleAccessibility::install() {
    static const bool installed = [] {
        QAccessible::installFactory(&consoleAccessibleFactory);
        return true;
    }();
    (void)installed;
}

}  // namespace orvane

#include "console/controls/MenuEntryAccessible.h"

#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QWidget>

namespace orvane {

MenuEntryAccessible::MenuEntryAccessible(QAction* action, QPushButton* button) : action_(action), button_(button) {}

bool MenuEntryAccessible::isValid() const { return action_ && button_; }

QObject* MenuEntryAccessible::object() const { return action_; }

QWindow* MenuEntryAccessible::window() const {
    return button_ ? button_->window()->windowHandle() : nullptr;
}

QAccessibleInterface* MenuEntryAccessible::parent() const {
    return button_ ? QAccessible::queryAccessibleInterface(button_.data()) : nullptr;
}

QString MenuEntryAccessible::text(QAccessible::Text t) const {
    if (!action_) return {};
    switch (t) {
    case QAccessible::Name: {
        QString name = action_->text();
        name.remove(QLatin1Char('&'));
        return name;
    }
    case QAccessible::Description: return action_->toolTip() == action_->text() ? QString() : action_->toolTip();
    default: return {};
    }
}

QRect MenuEntryAccessible::rect() const {
    // The entry has no place of its own until the menu opens: the button's.
    if (!button_) return {};
    return QRect(button_->mapToGlobal(QPoint(0, 0)), button_->size());
}

QAccessible::State MenuEntryAccessible::state() const {
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    if (!button_->isVisible()) state.invisible = true;
    if (!action_->isEnabled() || !button_->isEnabled()) state.disabled = true;
    state.focusable = false;
    if (action_->isCheckable()) state.checkable = true;
    if (action_->isChecked()) state.checked = true;
    return state;
}

void* MenuEntryAccessible::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
}

QStringList MenuEntryAccessible::actionNames() const {
    if (!isValid() || !action_->isEnabled() || !button_->isEnabled()) return {};
    return {pressAction()};
}

void MenuEntryAccessible::doAction(const QString& actionName) {
    if (actionName != pressAction() || actionNames().isEmpty()) return;
    // As a click in the open menu: the menu closes, then the entry acts.
    if (QMenu* menu = button_->menu(); menu && menu->isVisible()) menu->hide();
    QMetaObject::invokeMethod(action_.data(), &QAction::trigger, Qt::QueuedConnection);
}

}  // namespace orvane

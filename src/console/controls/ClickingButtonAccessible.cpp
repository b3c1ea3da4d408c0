#include "console/controls/ClickingButtonAccessible.h"

#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QMenu>
#include <QPushButton>

namespace orvane {

namespace {

// A button's text without its mnemonic marks ("&Save" reads "Save").
QString withoutMnemonicMarks(QString text) {
    for (qsizetype i = 0; i < text.size(); ++i)
        if (text[i] == QLatin1Char('&')) text.remove(i, 1);  // "&&" keeps one: the loop steps over it
    return text;
}

}  // namespace

ClickingButtonAccessible::ClickingButtonAccessible(QAbstractButton* button, QAccessible::Role role)
    : QAccessibleWidget(button, role), role_(role) {
    addControllingSignal(button->isCheckable() ? QStringLiteral("toggled(bool)") : QStringLiteral("clicked()"));
}

QAbstractButton* ClickingButtonAccessible::button() const { return qobject_cast<QAbstractButton*>(object()); }

QPushButton* ClickingButtonAccessible::menuButton() const {
    auto* push = qobject_cast<QPushButton*>(object());
    return push && push->menu() ? push : nullptr;
}

QList<QAction*> ClickingButtonAccessible::menuEntries(const QAbstractButton* button) {
    QList<QAction*> shown;
    const auto* push = qobject_cast<const QPushButton*>(button);
    if (!push || !push->menu()) return shown;
    for (QAction* action : push->menu()->actions())
        if (!action->isSeparator() && action->isVisible()) shown.append(action);
    return shown;
}

QAccessible::Role ClickingButtonAccessible::role() const {
    if (menuButton()) return QAccessible::ButtonMenu;
    // Asked each time, as Qt does: a button may become checkable after its
    // interface was made.
    const QAbstractButton* b = button();
    if (role_ == QAccessible::Button && b->isCheckable())
        return b->autoExclusive() ? QAccessible::RadioButton : QAccessible::CheckBox;
    return role_;
}

QString ClickingButtonAccessible::text(QAccessible::Text t) const {
    QString text;
    if (t == QAccessible::Name) {
        text = widget()->accessibleName();
        if (text.isEmpty()) text = withoutMnemonicMarks(button()->text());
    }
    return text.isEmpty() ? QAccessibleWidget::text(t) : text;
}

QAccessible::State ClickingButtonAccessible::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    QAbstractButton* b = button();
    if (b->isCheckable()) state.checkable = true;
    if (b->isChecked())
        state.checked = true;
    else if (auto* box = qobject_cast<QCheckBox*>(b); box && box->checkState() == Qt::PartiallyChecked)
        state.checkStateMixed = true;
    if (b->isDown()) state.pressed = true;
    if (auto* push = qobject_cast<QPushButton*>(b)) {
        if (push->isDefault()) state.defaultButton = true;
        if (push->menu()) state.hasPopup = true;
    }
    return state;
}

// Children: the widgets inside the button, as Qt gives them, then the menu's
// entries.
int ClickingButtonAccessible::childCount() const {
    return QAccessibleWidget::childCount() + int(menuEntries(button()).size());
}

QAccessibleInterface* ClickingButtonAccessible::child(int index) const {
    const int inside = QAccessibleWidget::childCount();
    if (index < inside) return QAccessibleWidget::child(index);
    const QList<QAction*> entries = menuEntries(button());
    index -= inside;
    if (index < 0 || index >= entries.size()) return nullptr;
    // Made by the console's factory, which finds the entry's button.
    return QAccessible::queryAccessibleInterface(entries[index]);
}

int ClickingButtonAccessible::indexOfChild(const QAccessibleInterface* child) const {
    if (!child) return -1;
    if (auto* action = qobject_cast<QAction*>(child->object())) {
        const int at = int(menuEntries(button()).indexOf(action));
        return at < 0 ? -1 : QAccessibleWidget::childCount() + at;
    }
    return QAccessibleWidget::indexOfChild(child);
}

QStringList ClickingButtonAccessible::actionNames() const {
    QStringList names;
    if (widget()->isEnabled()) {
        if (menuButton())
            names << showMenuAction() << pressAction();
        else
            names << (button()->isCheckable() ? toggleAction() : pressAction());
    }
    return names + QAccessibleWidget::actionNames();
}

void ClickingButtonAccessible::doAction(const QString& actionName) {
    if (!widget()->isEnabled()) return;
    if (QPushButton* push = menuButton(); push && (actionName == showMenuAction() || actionName == pressAction())) {
        // Queued: the menu may run a loop of its own; the caller has its
        // answer first.
        QMetaObject::invokeMethod(push, &QPushButton::showMenu, Qt::QueuedConnection);
        return;
    }
    // A click, shown pressed for a moment and made after the caller has
    // its answer, so that a button that opens a dialog does not hold it.
    if (actionName == pressAction() || actionName == toggleAction()) {
        button()->animateClick();
        return;
    }
    QAccessibleWidget::doAction(actionName);
}

QStringList ClickingButtonAccessible::keyBindingsForAction(const QString& actionName) const {
    if (actionName == pressAction() || actionName == toggleAction()) {
        const QKeySequence shortcut = button()->shortcut();
        if (!shortcut.isEmpty()) return {shortcut.toString(QKeySequence::NativeText)};
        return {};
    }
    return QAccessibleWidget::keyBindingsForAction(actionName);
}

}  // namespace orvane

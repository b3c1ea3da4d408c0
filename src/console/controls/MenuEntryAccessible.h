#pragma once

#include <QAccessibleActionInterface>
#include <QAccessibleInterface>
#include <QPointer>

class QAction;
class QPushButton;

namespace orvane {

// One entry of a button's menu, as a child of that button for assistive
// tools (see ClickingButtonAccessible): named by its text, checked when it is
// the current choice, and chosen by "press" as a click in the open menu
// would choose it.
class MenuEntryAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    MenuEntryAccessible(QAction* action, QPushButton* button);

    bool isValid() const override;
    QObject* object() const override;
    QWindow* window() const override;
    QAccessibleInterface* focusChild() const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text t) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::MenuItem; }
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString& actionName) override;
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QPointer<QAction> action_;
    QPointer<QPushButton> button_;
};

}  // namespace orvane

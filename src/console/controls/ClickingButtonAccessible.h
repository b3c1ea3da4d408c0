#pragma once

#include <QAccessibleWidget>

class QAbstractButton;
class QAction;
class QPushButton;

namespace orvane {

// How the console's buttons appear to assistive tools. Qt's own buttons
// answer a checkable button's "toggle" by flipping its checked state
// without a click, so a choice whose owner acts on the click (a segment, an
// icon, an alignment) lights up and changes nothing. Here "press" and
// "toggle" both click, as a pointer would; the name, role and states stay
// as Qt gives them.
//
// A push button with a menu also offers its menu's entries as children
// (after any widgets inside it) for as long as it shows, each found by its name and chosen by its action
// (MenuEntryAccessible): a popup menu is not part of the window tree, so
// without this the entries could not be reached. The menu is looked up at
// each question, so a menu set after the button was made counts.
class ClickingButtonAccessible : public QAccessibleWidget {
public:
    ClickingButtonAccessible(QAbstractButton* button, QAccessible::Role role);

    // The menu's entries that a person could choose: not separators, not
    // hidden ones; none without a menu.
    static QList<QAction*> menuEntries(const QAbstractButton* button);

    QAccessible::Role role() const override;
    QString text(QAccessible::Text t) const override;
    QAccessible::State state() const override;
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QStringList actionNames() const override;
    void doAction(const QString& actionName) override;
    QStringList keyBindingsForAction(const QString& actionName) const override;

private:
    QAbstractButton* button() const;
    QPushButton* menuButton() const;  // the button, when it has a menu

    QAccessible::Role role_;
};

}  // namespace orvane

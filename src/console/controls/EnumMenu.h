#pragma once

#include <QComboBox>
#include <QSignalBlocker>

#include "document/EnumStrings.h"

namespace orvane {

// A menu over an enumeration's stored texts, in the enumeration's order,
// each entry carrying its case.
template <typename E>
QComboBox* makeEnumMenu(const QString& accessibleName) {
    auto* menu = new QComboBox;
    menu->setAccessibleName(accessibleName);
    for (E value : allCases<E>()) {
        const auto text = toString(value);
        menu->addItem(QString::fromUtf8(text.data(), qsizetype(text.size())), int(value));
    }
    return menu;
}

template <typename E>
void showEnumChoice(QComboBox* menu, E value) {
    const QSignalBlocker block(menu);
    menu->setCurrentIndex(menu->findData(int(value)));
}

template <typename E>
E enumChoiceAt(const QComboBox* menu, int index) {
    return E(menu->itemData(index).toInt());
}

}  // namespace orvane

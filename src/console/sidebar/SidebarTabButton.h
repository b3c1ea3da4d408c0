#pragma once

#include <QPushButton>

#include "console/sidebar/ConfigTab.h"

namespace orvane {

// A tab of the configuration sidebar: its symbol over its title, or the
// symbol alone in the collapsed strip; the selected tab carries a bar.
class SidebarTabButton : public QPushButton {
    Q_OBJECT

public:
    SidebarTabButton(ConfigTab tab, bool compact, QWidget* parent = nullptr);

    ConfigTab tab() const { return tab_; }
    void setSelected(bool selected);
    bool isSelected() const { return selected_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ConfigTab tab_;
    bool compact_;
    bool selected_ = false;
};

}  // namespace orvane

#include "console/scene_tab/ConfigSection.h"

#include <QLabel>
#include <QVBoxLayout>

#include "console/controls/SidebarStyle.h"

namespace orvane {

ConfigSection::ConfigSection(const QString& title, QWidget* parent) : QWidget(parent) {
    setAccessibleName(title + QStringLiteral(" section"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    title_ = SidebarStyle::label(title, 12, Theme::Weight::bold);
    column->addWidget(title_);
    body_ = new QVBoxLayout;
    body_->setContentsMargins(0, 0, 0, 0);
    body_->setSpacing(8);
    column->addLayout(body_);
}

QString ConfigSection::title() const { return title_->text(); }

}  // namespace orvane

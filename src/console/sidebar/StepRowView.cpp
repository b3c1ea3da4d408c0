#include "console/sidebar/StepRowView.h"

#include <QHBoxLayout>
#include <QLabel>

#include "console/controls/SidebarStyle.h"
#include "console/controls/SymbolButton.h"

namespace orvane {

StepRowView::StepRowView(const ProgressStep& step, QWidget* parent) : QWidget(parent), step_(step) {
    setObjectName(QStringLiteral("stepRow"));
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QStringLiteral("#stepRow { background: rgba(255,255,255,0.05); border-radius: 6px; }"));
    const QString title = QString::fromStdString(step.title);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(8, 4, 4, 4);
    row->setSpacing(4);

    toggle_ = SidebarStyle::iconButton(step.isCompleted ? "checkmark.circle.fill" : "circle",
                                       (step.isCompleted ? QStringLiteral("Mark Not Done: ")
                                                         : QStringLiteral("Mark Done: ")) + title,
                                       step.isCompleted ? Theme::green() : Theme::gray(), 16);
    connect(toggle_, &QPushButton::clicked, this, [this] { emit toggleRequested(step_.id); });
    row->addWidget(toggle_);

    title_ = SidebarStyle::label(title, 12, Theme::Weight::regular,
                                 step.isCompleted ? Theme::gray() : Theme::white());
    QFont font = title_->font();
    font.setStrikeOut(step.isCompleted);
    title_->setFont(font);
    title_->setTextFormat(Qt::PlainText);
    title_->setWordWrap(true);
    row->addWidget(title_, 1);

    up_ = SidebarStyle::iconButton("chevron.up", QStringLiteral("Move Up: ") + title, Theme::white(0.8));
    connect(up_, &QPushButton::clicked, this, [this] { emit moveUpRequested(step_.id); });
    row->addWidget(up_);
    down_ = SidebarStyle::iconButton("chevron.down", QStringLiteral("Move Down: ") + title, Theme::white(0.8));
    connect(down_, &QPushButton::clicked, this, [this] { emit moveDownRequested(step_.id); });
    row->addWidget(down_);
    delete_ = SidebarStyle::iconButton("trash", QStringLiteral("Delete: ") + title, Theme::red());
    connect(delete_, &QPushButton::clicked, this, [this] { emit deleteRequested(step_.id); });
    row->addWidget(delete_);
}

}  // namespace orvane

#include "console/sidebar/AddStepView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "console/controls/SidebarStyle.h"
#include "console/controls/SymbolButton.h"

namespace orvane {

AddStepView::AddStepView(QWidget* parent) : QDialog(parent) {
    setWindowTitle(QStringLiteral("Add Step"));
    setAccessibleName(QStringLiteral("Add Step"));
    setModal(true);
    setMinimumWidth(320);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(20, 16, 20, 16);
    column->setSpacing(10);
    column->addWidget(SidebarStyle::label(QStringLiteral("Add Step"), 16, Theme::Weight::bold));

    auto* label = SidebarStyle::label(QStringLiteral("Step Title"), 12, Theme::Weight::semibold);
    column->addWidget(label);
    title_ = new QLineEdit;
    title_->setPlaceholderText(QStringLiteral("e.g., Presentación"));
    title_->setAccessibleName(QStringLiteral("Step Title"));
    label->setBuddy(title_);
    column->addWidget(title_);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    auto* cancel = new SymbolButton(QStringLiteral("Cancel"), std::string());
    cancel_ = cancel;
    connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
    buttons->addWidget(cancel_);
    auto* add = new SymbolButton(QStringLiteral("Add Step"), "plus.circle.fill");
    SymbolButton::Look look;
    look.background = Theme::purple();
    look.fontSize = 12;
    look.symbolSize = 12;
    look.paddingY = 6;
    look.bold = true;
    add->setLook(look);
    add_ = add;
    add_->setDefault(true);
    add_->setEnabled(false);
    connect(title_, &QLineEdit::textChanged, this,
            [this](const QString& text) { add_->setEnabled(!text.trimmed().isEmpty()); });
    connect(add_, &QPushButton::clicked, this, [this] {
        const QString title = title_->text().trimmed();
        if (title.isEmpty()) return;
        emit stepAdded(title);
        accept();
    });
    buttons->addWidget(add_);
    column->addLayout(buttons);
    title_->setFocus();
}

}  // namespace orvane

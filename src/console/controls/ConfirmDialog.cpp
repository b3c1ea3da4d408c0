#include "console/controls/ConfirmDialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"

namespace orvane {

namespace {

// The dialog's width; its height follows from the wrapped texts.
constexpr int confirmDialogWidth = 360;
constexpr int confirmDialogMargin = 22;
constexpr int confirmDialogSign = 26;

QString confirmButtonStyle(const QString& ground, const QString& hover, const QString& text) {
    return QStringLiteral("QPushButton { background: %1; color: %3; border: none; border-radius: 7px;"
                          " padding: 7px 18px; font-size: 13px; font-weight: 600; }"
                          "QPushButton:hover { background: %2; }"
                          "QPushButton:focus { outline: none; border: 1px solid rgba(255,255,255,0.6); }")
        .arg(ground, hover, text);
}

}  // namespace

ConfirmDialog::ConfirmDialog(const QString& title, const QString& message, const QString& destructiveText,
                             QWidget* parent)
    : QDialog(parent) {
    setWindowTitle(title);
    setAccessibleName(title);
    setAccessibleDescription(message);
    setModal(true);
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(QStringLiteral("confirmDialog"));
    setStyleSheet(QStringLiteral("#confirmDialog { background: #1c2129; }"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(confirmDialogMargin, 20, confirmDialogMargin, 18);
    // Labels of a fixed width report the height their wrapped text needs,
    // and the dialog takes exactly that: nothing is cut at the bottom.
    column->setSizeConstraint(QLayout::SetFixedSize);
    const int textWidth = confirmDialogWidth - 2 * confirmDialogMargin;
    column->setSpacing(10);

    auto* head = new QHBoxLayout;
    head->setSpacing(10);
    auto* sign = new QLabel;
    sign->setPixmap(Symbols::pixmap("exclamationmark.triangle", 22, Theme::orange()));
    sign->setFixedSize(confirmDialogSign, confirmDialogSign);
    sign->setAccessibleName(QStringLiteral("Warning"));
    head->addWidget(sign, 0, Qt::AlignTop);
    // The title wraps rather than being cut, however long the name in it.
    title_ = new QLabel(title);
    title_->setWordWrap(true);
    title_->setFont(Theme::font(15, Theme::Weight::bold));
    title_->setFixedWidth(textWidth - confirmDialogSign - head->spacing());
    title_->setStyleSheet(QStringLiteral("color: white; background: transparent;"));
    head->addWidget(title_, 1);
    column->addLayout(head);

    message_ = new QLabel(message);
    message_->setWordWrap(true);
    message_->setTextFormat(Qt::PlainText);
    message_->setFont(Theme::font(12));
    message_->setFixedWidth(textWidth);
    message_->setStyleSheet(QStringLiteral("color: rgba(255,255,255,0.75); background: transparent;"));
    message_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    column->addWidget(message_);
    column->addSpacing(8);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(10);
    buttons->addStretch();
    cancel_ = new QPushButton(QStringLiteral("Cancel"));
    cancel_->setAccessibleName(QStringLiteral("Cancel"));
    cancel_->setCursor(Qt::PointingHandCursor);
    cancel_->setStyleSheet(
        confirmButtonStyle(QStringLiteral("rgba(255,255,255,0.1)"), QStringLiteral("rgba(255,255,255,0.18)"),
                           QStringLiteral("white")));
    // Return never removes anything by accident: Cancel is the default.
    cancel_->setDefault(true);
    buttons->addWidget(cancel_);
    destructive_ = new QPushButton(destructiveText);
    destructive_->setAccessibleName(destructiveText);
    destructive_->setCursor(Qt::PointingHandCursor);
    destructive_->setAutoDefault(false);
    destructive_->setStyleSheet(
        confirmButtonStyle(QStringLiteral("#d9363e"), QStringLiteral("#ef4a52"), QStringLiteral("white")));
    buttons->addWidget(destructive_);
    column->addLayout(buttons);

    connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
    connect(destructive_, &QPushButton::clicked, this, [this] {
        emit confirmed();
        accept();
    });
    cancel_->setFocus();
}

QString ConfirmDialog::title() const { return title_->text(); }

QString ConfirmDialog::message() const { return message_->text(); }

}  // namespace orvane

#include "slides/editor/MarkdownToolbarView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace orvane {

MarkdownToolbarView::MarkdownToolbarView(QWidget* parent) : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    auto* title = new QLabel(QStringLiteral("Markdown"));
    title->setStyleSheet(QStringLiteral("color: gray; font-size: 11px;"));
    row->addWidget(title);
    for (const MarkdownInsertion& insertion : markdownInsertions()) {
        auto* button = new QToolButton;
        button->setText(QString::fromUtf8(insertion.label));
        button->setToolTip(QString::fromUtf8(insertion.tooltip));
        button->setAccessibleName(QString::fromUtf8(insertion.tooltip));
        button->setAutoRaise(true);
        button->setMinimumWidth(28);
        connect(button, &QToolButton::clicked, this, [this, insertion] { emit insertionRequested(insertion); });
        row->addWidget(button);
    }
    row->addStretch(1);
}

}  // namespace orvane

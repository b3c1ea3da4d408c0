#include "console/version/VersionDetailsView.h"

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "console/controls/SymbolButton.h"
#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"

namespace orvane {

VersionDetailsView::VersionDetailsView(const std::optional<VersionInfo>& info, std::function<void()> copy,
                                       QWidget* parent)
    : QDialog(parent) {
    setWindowTitle(QStringLiteral("Version Information"));
    setModal(true);
    setMinimumWidth(380);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(20, 16, 20, 16);
    column->setSpacing(12);
    auto* head = new QHBoxLayout;
    auto* title = new QLabel(QStringLiteral("Version Information"));
    title->setFont(Theme::font(18, Theme::Weight::bold));
    head->addWidget(title, 1);
    auto* close = new SymbolButton(QStringLiteral("Close"), std::string());
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    head->addWidget(close);
    column->addLayout(head);

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(8);
    int row = 0;
    auto addRow = [&](const QString& name, const QString& value, std::string_view symbol) {
        auto* icon = new QLabel;
        icon->setFixedWidth(20);
        icon->setPixmap(Symbols::pixmap(symbol, 14, Theme::purple()));
        grid->addWidget(icon, row, 0);
        auto* label = new QLabel(name);
        label->setFixedWidth(80);
        label->setFont(Theme::font(13, Theme::Weight::medium));
        grid->addWidget(label, row, 1);
        auto* text = new QLabel(value);
        text->setStyleSheet(QStringLiteral("color: #8e8e93;"));
        text->setTextInteractionFlags(Qt::TextSelectableByMouse);
        text->setAccessibleName(name);
        grid->addWidget(text, row, 2);
        ++row;
    };
    if (info) {
        addRow(QStringLiteral("Version"), info->version, "number.circle");
        addRow(QStringLiteral("Build"), info->build, "hammer.circle");
        addRow(QStringLiteral("Commit"), info->commit, "arrow.branch");
        addRow(QStringLiteral("Type"), info->type, "tag");
        addRow(QStringLiteral("Branch"), info->branch, "point.3.connected.trianglepath.dotted");
        if (info->tag) addRow(QStringLiteral("Tag"), *info->tag, "tag.circle");
        if (!info->timestamp.isEmpty())
            addRow(QStringLiteral("Built"), VersionInfo::formatTimestamp(info->timestamp), "clock.circle");
    }
    column->addLayout(grid);
    auto* copyButton = new SymbolButton(QStringLiteral("Copy Version Info"), "doc.on.doc");
    SymbolButton::Look look;
    look.background = Theme::purple();
    look.fontSize = 12;
    look.symbolSize = 12;
    look.paddingY = 7;
    copyButton->setLook(look);
    connect(copyButton, &QPushButton::clicked, this, [copy] {
        if (copy) copy();
    });
    column->addWidget(copyButton);
}

}  // namespace orvane

#include "console/sheets/CreatePresetView.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "console/controls/SymbolButton.h"
#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"
#include "console/sheets/TemplateCard.h"
#include "document/PresetTemplates.h"

namespace orvane {

namespace {
QWidget* sectionTitle(const QString& text, std::string_view symbol) {
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    auto* icon = new QLabel;
    icon->setPixmap(Symbols::pixmap(symbol, 14, Theme::purple()));
    layout->addWidget(icon);
    auto* label = new QLabel(text);
    label->setFont(Theme::font(14, Theme::Weight::semibold));
    layout->addWidget(label);
    layout->addStretch();
    return row;
}
}  // namespace

CreatePresetView::CreatePresetView(QWidget* parent) : QDialog(parent) {
    setWindowTitle(QStringLiteral("Create New Preset"));
    setModal(true);
    setMinimumSize(560, 520);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 20, 24, 20);
    column->setSpacing(14);

    auto* head = new QHBoxLayout;
    auto* titles = new QVBoxLayout;
    auto* title = new QLabel(QStringLiteral("Create New Preset"));
    title->setFont(Theme::font(22, Theme::Weight::bold));
    titles->addWidget(title);
    auto* subtitle = new QLabel(QStringLiteral("Choose a template to get started"));
    subtitle->setFont(Theme::font(13));
    subtitle->setStyleSheet(QStringLiteral("color: #8e8e93;"));
    titles->addWidget(subtitle);
    head->addLayout(titles, 1);
    auto* close = new SymbolButton(QString(), "xmark.circle.fill");
    SymbolButton::Look closeLook;
    closeLook.foreground = Theme::gray();
    closeLook.background = Qt::transparent;
    closeLook.symbolSize = 20;
    close->setLook(closeLook);
    close->setHelpText(QStringLiteral("Close"));
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    head->addWidget(close, 0, Qt::AlignTop);
    column->addLayout(head);

    column->addWidget(sectionTitle(QStringLiteral("Preset Name"), "textformat"));
    nameField_ = new QLineEdit;
    nameField_->setPlaceholderText(QStringLiteral("e.g., My Streaming Setup"));
    nameField_->setAccessibleName(QStringLiteral("Preset Name"));
    column->addWidget(nameField_);

    column->addWidget(sectionTitle(QStringLiteral("Choose Template"), "square.grid.2x2"));
    auto* grid = new QGridLayout;
    grid->setSpacing(12);
    int i = 0;
    for (PresetTemplate t : allCases<PresetTemplate>()) {
        auto* card = new TemplateCard(t);
        connect(card, &QPushButton::clicked, this, [this, t] { selectTemplate(t); });
        grid->addWidget(card, i / 2, i % 2);
        cards_.push_back(card);
        ++i;
    }
    column->addLayout(grid);
    column->addStretch();

    createButton_ = new SymbolButton(QStringLiteral("Create Preset"), "plus.circle.fill");
    SymbolButton::Look look;
    look.background = Theme::purple();
    look.fontSize = 14;
    look.symbolSize = 14;
    look.radius = 8;
    look.paddingY = 10;
    look.bold = true;
    static_cast<SymbolButton*>(createButton_)->setLook(look);
    createButton_->setEnabled(false);
    createButton_->setDefault(true);
    connect(nameField_, &QLineEdit::textChanged, this,
            [this](const QString& text) { createButton_->setEnabled(!text.isEmpty()); });
    connect(createButton_, &QPushButton::clicked, this, &CreatePresetView::createPreset);
    column->addWidget(createButton_);

    selectTemplate(PresetTemplate::streaming);
    nameField_->setFocus();
}

void CreatePresetView::selectTemplate(PresetTemplate presetTemplate) {
    selectedTemplate_ = presetTemplate;
    if (TemplateCard* card = templateCard(presetTemplate)) card->setChecked(true);
}

TemplateCard* CreatePresetView::templateCard(PresetTemplate presetTemplate) const {
    for (TemplateCard* card : cards_)
        if (card->presetTemplate() == presetTemplate) return card;
    return nullptr;
}

void CreatePresetView::createPreset() {
    if (nameField_->text().isEmpty()) return;
    const Preset preset = orvane::createPreset(nameField_->text().toStdString(), selectedTemplate_);
    emit presetCreated(preset);
    accept();
}

}  // namespace orvane

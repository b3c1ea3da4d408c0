#include "console/sheets/AddSceneView.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "console/controls/SymbolButton.h"
#include "console/controls/Theme.h"
#include "document/PresetTemplates.h"
#include "engine/StreamManager.h"

namespace orvane {

AddSceneView::AddSceneView(StreamManager& streamManager, QWidget* parent)
    : QDialog(parent), streamManager_(streamManager) {
    setWindowTitle(QStringLiteral("Add New Scene"));
    setModal(true);
    setMinimumWidth(380);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(20, 16, 20, 16);
    column->setSpacing(12);

    auto* head = new QHBoxLayout;
    auto* title = new QLabel(QStringLiteral("Add New Scene"));
    title->setFont(Theme::font(18, Theme::Weight::bold));
    head->addWidget(title, 1);
    auto* cancel = new SymbolButton(QStringLiteral("Cancel"), std::string());
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    head->addWidget(cancel);
    column->addLayout(head);

    auto* nameLabel = new QLabel(QStringLiteral("Scene Name"));
    nameLabel->setFont(Theme::font(13, Theme::Weight::semibold));
    column->addWidget(nameLabel);
    nameField_ = new QLineEdit;
    nameField_->setPlaceholderText(QStringLiteral("Enter scene name"));
    nameField_->setAccessibleName(QStringLiteral("Scene Name"));
    nameLabel->setBuddy(nameField_);
    column->addWidget(nameField_);

    auto* iconLabel = new QLabel(QStringLiteral("Icon (Optional)"));
    iconLabel->setFont(Theme::font(13, Theme::Weight::semibold));
    column->addWidget(iconLabel);
    auto* grid = new QGridLayout;
    grid->setSpacing(8);
    int i = 0;
    for (std::string_view icon : availableIcons) {
        auto* button = new SymbolButton(QString(), std::string(icon));
        button->setHelpText(QString::fromUtf8(icon.data(), qsizetype(icon.size())));
        button->setCheckable(true);
        button->setAutoExclusive(true);
        button->setFixedSize(44, 44);
        const std::string name(icon);
        connect(button, &QPushButton::clicked, this, [this, name] { selectIcon(name); });
        grid->addWidget(button, i / 4, i % 4);
        iconButtons_.push_back(button);
        ++i;
    }
    column->addLayout(grid);

    addButton_ = new SymbolButton(QStringLiteral("Add Scene"), "plus.circle.fill");
    SymbolButton::Look look;
    look.background = Theme::purple();
    look.fontSize = 13;
    look.symbolSize = 13;
    look.paddingY = 8;
    look.radius = 8;
    look.bold = true;
    static_cast<SymbolButton*>(addButton_)->setLook(look);
    addButton_->setDefault(true);
    connect(addButton_, &QPushButton::clicked, this, &AddSceneView::addScene);
    column->addWidget(addButton_);

    selectIcon(selectedIcon_);
    nameField_->setFocus();
}

void AddSceneView::selectIcon(const std::string& icon) {
    selectedIcon_ = icon;
    for (std::size_t i = 0; i < iconButtons_.size(); ++i) {
        auto* button = static_cast<SymbolButton*>(iconButtons_[i]);
        const bool on = availableIcons[i] == icon;
        button->setChecked(on);
        SymbolButton::Look look;
        look.foreground = on ? Qt::white : Theme::white(0.7);
        look.background = on ? Theme::purple() : Theme::white(0.08);
        look.symbolSize = 18;
        look.radius = 8;
        button->setLook(look);
    }
}

void AddSceneView::addScene() {
    const StreamingScene scene = makeScene(nameField_->text().toStdString(), selectedIcon_);
    streamManager_.addScene(scene);
    streamManager_.switchToScene(scene);
    emit sceneAdded(scene);
    accept();
}

}  // namespace orvane

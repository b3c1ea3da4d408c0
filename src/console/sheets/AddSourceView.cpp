#include "console/sheets/AddSourceView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "console/controls/SidebarStyle.h"
#include "console/controls/SymbolButton.h"
#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"
#include "console/sheets/SourceItemView.h"
#include "console/sheets/WindowSelectorView.h"
#include "document/Log.h"

namespace orvane {

namespace {

constexpr SourceType addSourceTypes[] = {SourceType::camera, SourceType::screen, SourceType::window,
                                         SourceType::content};

// A row of the type list: symbol, label, and the check mark when chosen.
QPushButton* addSourceTypeRow(SourceType type) {
    auto* row = new QPushButton;
    row->setCheckable(true);
    row->setAutoExclusive(true);
    row->setCursor(Qt::PointingHandCursor);
    row->setAccessibleName(AddSourceView::typeLabel(type));
    row->setMinimumHeight(38);
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(12, 4, 12, 4);
    line->setSpacing(10);
    auto* symbol = SidebarStyle::symbol(SourceItemView::symbolFor(type), 16, Theme::purple());
    symbol->setAttribute(Qt::WA_TransparentForMouseEvents);
    line->addWidget(symbol);
    QLabel* label = SidebarStyle::label(AddSourceView::typeLabel(type), 13);
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    line->addWidget(label, 1);
    auto* check = SidebarStyle::symbol("checkmark.circle.fill", 16, Theme::purple());
    check->setObjectName(QStringLiteral("typeCheck"));
    check->setAttribute(Qt::WA_TransparentForMouseEvents);
    line->addWidget(check);
    row->setStyleSheet(QStringLiteral(
        "QPushButton { background: rgba(255,255,255,0.05); border: 1px solid transparent; border-radius: 8px; }"
        "QPushButton:hover { background: rgba(255,255,255,0.09); }"
        "QPushButton:checked { background: rgba(175,82,222,0.15); border: 1px solid #af52de; }"));
    return row;
}

QPushButton* addSourcePlainButton(const QString& text) {
    auto* button = new QPushButton(text);
    button->setAccessibleName(text);
    button->setCursor(Qt::PointingHandCursor);
    button->setStyleSheet(QStringLiteral(
        "QPushButton { background: rgba(255,255,255,0.1); color: white; border: none; border-radius: 6px;"
        " padding: 5px 12px; font-size: 12px; }"
        "QPushButton:hover { background: rgba(255,255,255,0.18); }"));
    return button;
}

}  // namespace

QString AddSourceView::typeLabel(SourceType type) {
    switch (type) {
        case SourceType::camera: return QStringLiteral("Camera / Webcam");
        case SourceType::screen: return QStringLiteral("Screen Capture");
        case SourceType::window: return QStringLiteral("Window Capture");
        case SourceType::content: return QStringLiteral("Content Source");
    }
    return QString();
}

AddSourceView::AddSourceView(const StreamingScene& scene, CaptureBackend* capture, QWidget* parent)
    : QDialog(parent), sourceCount_(scene.sources.size()), capture_(capture) {
    setWindowTitle(QStringLiteral("Add Source"));
    setModal(true);
    setMinimumWidth(420);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(20, 16, 20, 16);
    column->setSpacing(10);

    auto* head = new QHBoxLayout;
    head->addWidget(SidebarStyle::label(QStringLiteral("Add Source"), 18, Theme::Weight::bold), 1);
    QPushButton* cancel = addSourcePlainButton(QStringLiteral("Cancel"));
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    head->addWidget(cancel);
    column->addLayout(head);

    QLabel* nameLabel = SidebarStyle::label(QStringLiteral("Source Name"), 13, Theme::Weight::semibold);
    column->addWidget(nameLabel);
    name_ = new QLineEdit;
    name_->setPlaceholderText(QStringLiteral("Enter source name"));
    name_->setAccessibleName(QStringLiteral("Source Name"));
    nameLabel->setBuddy(name_);
    connect(name_, &QLineEdit::textChanged, this, &AddSourceView::refresh);
    column->addWidget(name_);

    column->addSpacing(4);
    column->addWidget(SidebarStyle::label(QStringLiteral("Source Type"), 13, Theme::Weight::semibold));
    for (SourceType type : addSourceTypes) {
        QPushButton* row = addSourceTypeRow(type);
        typeRows_[type] = row;
        // A click, the keyboard or assistive technology's toggle alike.
        connect(row, &QAbstractButton::toggled, this, [this, type](bool on) {
            if (on) setSourceType(type);
        });
        column->addWidget(row);
    }

    windowSection_ = new QWidget;
    auto* windowColumn = new QVBoxLayout(windowSection_);
    windowColumn->setContentsMargins(0, 4, 0, 0);
    windowColumn->setSpacing(6);
    windowColumn->addWidget(SidebarStyle::label(QStringLiteral("Selected Window"), 13, Theme::Weight::semibold));
    chooseWindow_ = new QPushButton;
    chooseWindow_->setAccessibleName(QStringLiteral("Select a window"));
    chooseWindow_->setCursor(Qt::PointingHandCursor);
    chooseWindow_->setMinimumHeight(38);
    chooseWindow_->setStyleSheet(QStringLiteral(
        "QPushButton { background: rgba(255,255,255,0.05); border: none; border-radius: 8px; }"
        "QPushButton:hover { background: rgba(255,255,255,0.09); }"));
    auto* chooseLine = new QHBoxLayout(chooseWindow_);
    chooseLine->setContentsMargins(12, 4, 12, 4);
    for (QWidget* part : std::initializer_list<QWidget*>{
             SidebarStyle::symbol("macwindow", 16, Theme::gray()),
             SidebarStyle::label(QStringLiteral("Select a window"), 13, Theme::Weight::regular, Theme::white(0.8))}) {
        part->setAttribute(Qt::WA_TransparentForMouseEvents);
        chooseLine->addWidget(part);
    }
    chooseLine->addStretch();
    QLabel* chevron = SidebarStyle::symbol("chevron.right", 12, Theme::gray());
    chevron->setAttribute(Qt::WA_TransparentForMouseEvents);
    chooseLine->addWidget(chevron);
    connect(chooseWindow_, &QPushButton::clicked, this, [this] { showWindowSelector(); });
    windowColumn->addWidget(chooseWindow_);

    chosenWindow_ = SidebarStyle::card();
    auto* chosenLine = new QHBoxLayout(chosenWindow_);
    chosenLine->setContentsMargins(12, 6, 8, 6);
    chosenLine->addWidget(SidebarStyle::symbol("macwindow", 16, Theme::purple()));
    auto* names = new QVBoxLayout;
    names->setSpacing(0);
    windowTitle_ = SidebarStyle::label(QString(), 13, Theme::Weight::medium);
    windowOwner_ = SidebarStyle::caption(QString(), 11);
    names->addWidget(windowTitle_);
    names->addWidget(windowOwner_);
    chosenLine->addLayout(names, 1);
    changeWindow_ = addSourcePlainButton(QStringLiteral("Change"));
    connect(changeWindow_, &QPushButton::clicked, this, [this] { showWindowSelector(); });
    chosenLine->addWidget(changeWindow_);
    windowColumn->addWidget(chosenWindow_);
    column->addWidget(windowSection_);

    column->addStretch();
    add_ = new SymbolButton(QStringLiteral("Add Source"), "plus.circle.fill");
    SymbolButton::Look look;
    look.background = Theme::purple();
    look.fontSize = 13;
    look.symbolSize = 13;
    look.paddingY = 8;
    look.radius = 8;
    look.bold = true;
    static_cast<SymbolButton*>(add_)->setLook(look);
    add_->setDefault(true);
    connect(add_, &QPushButton::clicked, this, &AddSourceView::addSource);
    column->addWidget(add_);

    setSourceType(sourceType_);
    name_->setFocus();
}

QString AddSourceView::sourceName() const { return name_->text(); }

bool AddSourceView::canAddSource() const {
    if (sourceName().isEmpty()) return false;
    return sourceType_ != SourceType::window || selectedWindow_.has_value();
}

void AddSourceView::setSourceType(SourceType type) {
    sourceType_ = type;
    refresh();
}

void AddSourceView::setSelectedWindow(const CaptureWindow& window) {
    selectedWindow_ = window;
    refresh();
}

WindowSelectorView* AddSourceView::showWindowSelector() {
    std::optional<std::uint32_t> current;
    if (selectedWindow_) current = selectedWindow_->id;
    auto* sheet = new WindowSelectorView(capture_, current, this);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    connect(sheet, &WindowSelectorView::windowChosen, this, &AddSourceView::setSelectedWindow);
    sheet->open();
    return sheet;
}

void AddSourceView::refresh() {
    for (const auto& [type, row] : typeRows_) {
        const QSignalBlocker quiet(row);
        row->setChecked(type == sourceType_);
        if (auto* check = row->findChild<QLabel*>(QStringLiteral("typeCheck"))) check->setVisible(type == sourceType_);
    }
    const bool window = sourceType_ == SourceType::window;
    windowSection_->setVisible(window);
    chooseWindow_->setVisible(window && !selectedWindow_);
    chosenWindow_->setVisible(window && selectedWindow_.has_value());
    if (selectedWindow_) {
        windowTitle_->setText(selectedWindow_->title);
        windowOwner_->setText(selectedWindow_->ownerName);
    }
    add_->setEnabled(canAddSource());
    // A disabled "Add Source" reads as one: its purple is faded.
    SymbolButton::Look look = static_cast<SymbolButton*>(add_)->look();
    look.background = Theme::withAlpha(Theme::purple(), add_->isEnabled() ? 1.0 : 0.3);
    static_cast<SymbolButton*>(add_)->setLook(look);
}

void AddSourceView::addSource() {
    if (!canAddSource()) return;
    SourceConfiguration configuration;
    if (sourceType_ == SourceType::window && selectedWindow_) {
        configuration.windowId = selectedWindow_->id;
        configuration.windowTitle = selectedWindow_->title.toStdString();
        configuration.windowOwner = selectedWindow_->ownerName.toStdString();
    }
    Source source;
    source.type = sourceType_;
    source.name = sourceName().toStdString();
    source.configuration = configuration;
    logLine("➕ Adding source: " + source.name + ", total sources will be: " + std::to_string(sourceCount_ + 1));
    emit sourceAdded(source);
    accept();
}

}  // namespace orvane

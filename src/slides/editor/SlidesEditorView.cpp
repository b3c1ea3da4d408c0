#include "slides/editor/SlidesEditorView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "slides/editor/SlideDeckEdits.h"
#include "slides/editor/SlideEditorContentView.h"
#include "slides/editor/SlideListItemView.h"
#include "slides/editor/SymbolIcon.h"

namespace orvane {

SlidesEditorView::SlidesEditorView(const SlidesResource& deck, SlideImageLoader& loader, QWidget* parent)
    : QDialog(parent), deck_(deck) {
    setWindowTitle(QStringLiteral("Slides Editor"));
    setAccessibleName(windowTitle());
    resize(1200, 700);

    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    auto* head = new QHBoxLayout;
    head->setContentsMargins(16, 10, 10, 6);
    auto* title = new QLabel(QStringLiteral("Slides Editor"));
    title->setStyleSheet(QStringLiteral("font-size: 15px; font-weight: 600;"));
    auto* close = new QToolButton;
    close->setIcon(SymbolIcon::make("xmark.circle.fill", QColor(160, 160, 160), 22));
    close->setIconSize(QSize(22, 22));
    close->setAutoRaise(true);
    close->setToolTip(QStringLiteral("Close"));
    close->setAccessibleName(QStringLiteral("Close"));
    head->addWidget(title);
    head->addStretch(1);
    head->addWidget(close);
    outer->addLayout(head);
    connect(close, &QToolButton::clicked, this, &QDialog::accept);

    auto* body = new QHBoxLayout;
    body->setSpacing(0);
    auto* left = new QWidget;
    left->setFixedWidth(250);
    left->setObjectName(QStringLiteral("slideListColumn"));
    left->setStyleSheet(QStringLiteral("#slideListColumn { background: rgba(255,255,255,10); }"));
    auto* leftColumn = new QVBoxLayout(left);
    auto* listHead = new QHBoxLayout;
    auto* listTitle = new QLabel(QStringLiteral("Slides"));
    listTitle->setStyleSheet(QStringLiteral("font-weight: 600;"));
    auto* add = new QToolButton;
    add->setIcon(SymbolIcon::make("plus.circle.fill", QColor(175, 82, 222), 20));
    add->setAutoRaise(true);
    add->setToolTip(QStringLiteral("Add Slide"));
    add->setAccessibleName(QStringLiteral("Add Slide"));
    listHead->addWidget(listTitle);
    listHead->addStretch(1);
    listHead->addWidget(add);
    leftColumn->addLayout(listHead);
    auto* scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    auto* listHolder = new QWidget;
    list_ = new QVBoxLayout(listHolder);
    list_->setContentsMargins(0, 0, 0, 0);
    list_->setSpacing(2);
    scroll->setWidget(listHolder);
    leftColumn->addWidget(scroll, 1);
    body->addWidget(left);
    connect(add, &QToolButton::clicked, this, &SlidesEditorView::addNewSlide);

    right_ = new QStackedWidget;
    auto* empty = new QWidget;
    auto* emptyColumn = new QVBoxLayout(empty);
    emptyColumn->addStretch(1);
    auto* symbol = new QLabel;
    symbol->setPixmap(SymbolIcon::make("doc.text", QColor(140, 140, 140), 44).pixmap(44));
    symbol->setAlignment(Qt::AlignCenter);
    auto* hint = new QLabel(QStringLiteral("Select a slide to edit"));
    hint->setAlignment(Qt::AlignCenter);
    hint->setStyleSheet(QStringLiteral("color: gray;"));
    createFirst_ = new QPushButton(QStringLiteral("Create First Slide"));
    createFirst_->setAccessibleName(createFirst_->text());
    emptyColumn->addWidget(symbol);
    emptyColumn->addWidget(hint);
    emptyColumn->addWidget(createFirst_, 0, Qt::AlignHCenter);
    emptyColumn->addStretch(1);
    connect(createFirst_, &QPushButton::clicked, this, &SlidesEditorView::addNewSlide);
    content_ = new SlideEditorContentView(loader);
    right_->addWidget(empty);
    right_->addWidget(content_);
    body->addWidget(right_, 1);
    outer->addLayout(body, 1);

    // The editor hands its slide back here, into the deck by id.
    connect(content_, &SlideEditorContentView::slideSynced, this, [this](const Slide& edited) {
        for (Slide& slide : deck_.slides)
            if (slide.id == edited.id) {
                slide = edited;
                slide.order = static_cast<int>(&slide - deck_.slides.data());
            }
        rebuildList();
    });

    if (!deck_.slides.empty()) selected_ = deck_.slides.front().id;
    rebuildList();
    showSelection();
}

void SlidesEditorView::addNewSlide() {
    content_->flushPendingSync();
    selected_ = SlideDeckEdits::addNewSlide(deck_);
    ++listRefreshTrigger_;
    rebuildList();
    showSelection();
}

bool SlidesEditorView::askToDelete() {
    if (confirmDelete_) return confirmDelete_();
    QMessageBox box(QMessageBox::Warning, QStringLiteral("Delete Slide"), QStringLiteral("Remove this slide?"),
                    QMessageBox::NoButton, this);
    box.addButton(QStringLiteral("Cancel"), QMessageBox::RejectRole);
    QPushButton* remove = box.addButton(QStringLiteral("Delete"), QMessageBox::DestructiveRole);
    box.exec();
    return box.clickedButton() == remove;
}

void SlidesEditorView::deleteSlide(const Uuid& slideId) {
    content_->flushPendingSync();
    SlideDeckEdits::deleteSlide(deck_, slideId, selected_);
    ++listRefreshTrigger_;
    rebuildList();
    showSelection();
}

void SlidesEditorView::moveSlide(int from, int to) {
    content_->flushPendingSync();
    SlideDeckEdits::moveSlide(deck_, from, to);
    ++listRefreshTrigger_;
    rebuildList();
}

void SlidesEditorView::selectSlide(const Uuid& slideId) {
    if (selected_ == slideId) return;
    content_->flushPendingSync();
    selected_ = slideId;
    rebuildList();
    showSelection();
}

void SlidesEditorView::rebuildList() {
    while (QLayoutItem* item = list_->takeAt(0)) {
        if (QWidget* widget = item->widget()) widget->deleteLater();
        delete item;
    }
    const int count = static_cast<int>(deck_.slides.size());
    for (int i = 0; i < count; ++i) {
        const Slide& slide = deck_.slides[static_cast<size_t>(i)];
        auto* row = new SlideListItemView(slide, i, selected_ == slide.id, i > 0, i < count - 1);
        const Uuid id = slide.id;
        connect(row, &SlideListItemView::selected, this, [this, id] { selectSlide(id); });
        connect(row, &SlideListItemView::moveUpRequested, this, [this, i] { moveSlide(i, i - 1); });
        connect(row, &SlideListItemView::moveDownRequested, this, [this, i] { moveSlide(i, i + 1); });
        connect(row, &SlideListItemView::deleteRequested, this, [this, id] {
            if (askToDelete()) deleteSlide(id);
        });
        list_->addWidget(row);
    }
    list_->addStretch(1);
}

void SlidesEditorView::showSelection() {
    const auto found = std::find_if(deck_.slides.begin(), deck_.slides.end(),
                                    [&](const Slide& slide) { return selected_ && slide.id == *selected_; });
    createFirst_->setVisible(deck_.slides.empty());
    if (found == deck_.slides.end()) {
        right_->setCurrentIndex(0);
        return;
    }
    content_->edit(deck_, *found);
    right_->setCurrentIndex(1);
}

void SlidesEditorView::done(int result) {
    // Leaving hands the last typing back at once.
    content_->flushPendingSync();
    QDialog::done(result);
}

}  // namespace orvane

#include "slides/editor/SlideEditorContentView.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSlider>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <cmath>

#include "paint/ColorConvert.h"
#include "document/Log.h"
#include "slides/SlideImageLoader.h"
#include "slides/editor/MarkdownToolbarView.h"
#include "slides/editor/SlideDeckEdits.h"
#include "slides/editor/SlidePreviewView.h"
#include "slides/editor/SymbolIcon.h"

namespace orvane {

namespace {

QLabel* sectionTitle(const QString& text) {
    auto* label = new QLabel(text);
    label->setStyleSheet(QStringLiteral("color: gray; font-size: 11px; font-weight: 600;"));
    return label;
}

const QList<QPair<QString, ImagePosition>> kPositions = {
    {QStringLiteral("Top"), ImagePosition::top},       {QStringLiteral("Bottom"), ImagePosition::bottom},
    {QStringLiteral("Left"), ImagePosition::left},     {QStringLiteral("Right"), ImagePosition::right},
    {QStringLiteral("Background"), ImagePosition::background}};
const QList<QPair<QString, ImageSize>> kSizes = {{QStringLiteral("Small"), ImageSize::small},
                                                 {QStringLiteral("Medium"), ImageSize::medium},
                                                 {QStringLiteral("Large"), ImageSize::large},
                                                 {QStringLiteral("Full"), ImageSize::full}};
const QList<QPair<QString, TextAlignment>> kAlignments = {{QStringLiteral("Left"), TextAlignment::leading},
                                                          {QStringLiteral("Center"), TextAlignment::center},
                                                          {QStringLiteral("Right"), TextAlignment::trailing}};

}  // namespace

SlideEditorContentView::SlideEditorContentView(SlideImageLoader& loader, QWidget* parent)
    : QWidget(parent), loader_(loader) {
    syncTimer_.setSingleShot(true);
    syncTimer_.setInterval(syncDelayMs);
    connect(&syncTimer_, &QTimer::timeout, this, &SlideEditorContentView::sync);
    connect(&loader, &SlideImageLoader::imageArrived, this, &SlideEditorContentView::refreshImageSection);
    build();
}

SlideEditorContentView::~SlideEditorContentView() = default;

void SlideEditorContentView::build() {
    auto* split = new QHBoxLayout(this);
    split->setContentsMargins(0, 0, 0, 0);

    auto* editorColumn = new QWidget;
    auto* column = new QVBoxLayout(editorColumn);
    column->setContentsMargins(16, 12, 16, 12);
    column->setSpacing(10);

    auto* head = new QHBoxLayout;
    title_ = new QLineEdit;
    title_->setPlaceholderText(QStringLiteral("Slide Title"));
    title_->setAccessibleName(QStringLiteral("Slide Title"));
    previewToggle_ = new QPushButton(SymbolIcon::make("sidebar.right", Qt::white), QStringLiteral("Hide Preview"));
    previewToggle_->setAccessibleName(QStringLiteral("Hide Preview"));
    head->addWidget(title_, 1);
    head->addWidget(previewToggle_);
    column->addLayout(head);

    auto* toolbar = new MarkdownToolbarView;
    column->addWidget(toolbar);
    text_ = new QPlainTextEdit;
    text_->setAccessibleName(QStringLiteral("Slide text"));
    QFont mono(QStringLiteral("Monospace"));
    mono.setStyleHint(QFont::Monospace);
    text_->setFont(mono);
    column->addWidget(text_, 1);

    auto* settingsScroll = new QScrollArea;
    settingsScroll->setWidgetResizable(true);
    settingsScroll->setFrameShape(QFrame::NoFrame);
    settingsScroll->setWidget(buildSettings());
    settingsScroll->setMaximumHeight(300);
    column->addWidget(settingsScroll);
    split->addWidget(editorColumn, 3);

    preview_ = new SlidePreviewView(loader_);
    split->addWidget(preview_, 2);

    connect(title_, &QLineEdit::textEdited, this, [this](const QString& text) {
        local_.title = text.toStdString();
        scheduleSync();
    });
    connect(text_, &QPlainTextEdit::textChanged, this, [this] {
        if (loading_) return;
        local_.content = text_->toPlainText().toStdString();
        scheduleSync();
    });
    connect(toolbar, &MarkdownToolbarView::insertionRequested, this, [this](const MarkdownInsertion& insertion) {
        // The marks go to the end of the text, wherever the cursor is.
        local_.content = insertion.appendTo(local_.content);
        loading_ = true;
        text_->setPlainText(QString::fromStdString(local_.content));
        loading_ = false;
        scheduleSync();
    });
    connect(previewToggle_, &QPushButton::clicked, this, [this] { setShowsPreview(!showsPreview()); });
}

QWidget* SlideEditorContentView::buildSettings() {
    auto* settings = new QWidget;
    auto* column = new QVBoxLayout(settings);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(sectionTitle(QStringLiteral("SLIDE SETTINGS")));

    auto* sizeRow = new QHBoxLayout;
    sizeRow->addWidget(new QLabel(QStringLiteral("Text Size")));
    textSize_ = new QSlider(Qt::Horizontal);
    textSize_->setRange(5, 20);  // 0.5 to 2.0 in tenths
    textSize_->setAccessibleName(QStringLiteral("Text Size"));
    textSizeValue_ = new QLabel;
    textSizeValue_->setMinimumWidth(44);
    sizeRow->addWidget(textSize_, 1);
    sizeRow->addWidget(textSizeValue_);
    column->addLayout(sizeRow);
    connect(textSize_, &QSlider::valueChanged, this, [this](int tenths) {
        textSizeValue_->setText(QStringLiteral("%1%").arg(tenths * 10));
        if (loading_) return;
        local_.textScale = tenths / 10.0;
        scheduleSync();
    });

    auto* alignRow = new QHBoxLayout;
    alignRow->addWidget(new QLabel(QStringLiteral("Text Alignment")));
    // One of three: the group keeps exactly one checked, and the choice is
    // taken from the toggle, so that a click and an assistive tool's toggle
    // choose alike.
    auto* alignments = new QButtonGroup(this);
    alignments->setExclusive(true);
    for (int i = 0; i < kAlignments.size(); ++i) {
        const QString& label = kAlignments[i].first;
        auto* button = new QPushButton(label);
        button->setCheckable(true);
        button->setAccessibleName(label);
        alignments->addButton(button, i);
        alignment_.append(button);
        alignRow->addWidget(button);
    }
    connect(alignments, &QButtonGroup::idToggled, this, [this](int id, bool checked) {
        if (!checked || loading_ || local_.textAlignment == kAlignments[id].second) return;
        local_.textAlignment = kAlignments[id].second;
        scheduleSync();
    });
    alignRow->addStretch(1);
    column->addLayout(alignRow);

    auto* groundRow = new QHBoxLayout;
    groundRow->addWidget(new QLabel(QStringLiteral("Background")));
    for (const BackgroundPreset& preset : backgroundPresets()) {
        auto* swatch = new QPushButton;
        swatch->setFixedSize(26, 26);
        swatch->setToolTip(QString::fromUtf8(preset.name));
        swatch->setAccessibleName(QString::fromUtf8(preset.name));
        swatch->setStyleSheet(QStringLiteral("QPushButton { background: %1; border: 1px solid rgba(255,255,255,90); "
                                             "border-radius: 13px; }")
                                  .arg(ColorConvert::from(preset.color).name()));
        const CodableColor color = preset.color;
        connect(swatch, &QPushButton::clicked, this, [this, color] {
            local_.backgroundColor = color;
            scheduleSync();
        });
        groundRow->addWidget(swatch);
    }
    groundRow->addStretch(1);
    column->addLayout(groundRow);

    column->addWidget(sectionTitle(QStringLiteral("IMAGE")));
    image_ = new QStackedWidget;
    auto* none = new QWidget;
    auto* noneRow = new QHBoxLayout(none);
    noneRow->setContentsMargins(0, 0, 0, 0);
    auto* fromFile = new QPushButton(SymbolIcon::make("photo.badge.plus", Qt::white), QStringLiteral("From File"));
    fromFile->setAccessibleName(QStringLiteral("From File"));
    auto* fromUrl = new QPushButton(SymbolIcon::make("link", Qt::white), QStringLiteral("From URL"));
    fromUrl->setAccessibleName(QStringLiteral("From URL"));
    noneRow->addWidget(fromFile);
    noneRow->addWidget(fromUrl);
    noneRow->addStretch(1);
    connect(fromFile, &QPushButton::clicked, this, &SlideEditorContentView::chooseImageFile);
    connect(fromUrl, &QPushButton::clicked, this, &SlideEditorContentView::askImageUrl);

    auto* some = new QWidget;
    auto* someRow = new QHBoxLayout(some);
    someRow->setContentsMargins(0, 0, 0, 0);
    imagePicture_ = new QLabel;
    imagePicture_->setFixedSize(120, 68);
    imagePicture_->setAlignment(Qt::AlignCenter);
    imagePicture_->setAccessibleName(QStringLiteral("Slide image"));
    imageError_ = new QLabel(QStringLiteral("Error loading"));
    imageError_->setAlignment(Qt::AlignCenter);
    imageError_->setStyleSheet(QStringLiteral("color: rgb(255, 159, 10); font-size: 11px;"));
    imageError_->hide();
    auto* pictureColumn = new QVBoxLayout;
    pictureColumn->setSpacing(2);
    pictureColumn->addWidget(imagePicture_);
    pictureColumn->addWidget(imageError_);
    pictureColumn->addStretch(1);
    auto* remove = new QPushButton(QStringLiteral("Remove"));
    remove->setAccessibleName(QStringLiteral("Remove"));
    imagePosition_ = new QComboBox;
    imagePosition_->setAccessibleName(QStringLiteral("Position"));
    for (const auto& [label, position] : kPositions) imagePosition_->addItem(label);
    imageSize_ = new QComboBox;
    imageSize_->setAccessibleName(QStringLiteral("Size"));
    for (const auto& [label, size] : kSizes) imageSize_->addItem(label);
    auto* choices = new QVBoxLayout;
    choices->addWidget(new QLabel(QStringLiteral("Position")));
    choices->addWidget(imagePosition_);
    choices->addWidget(new QLabel(QStringLiteral("Size")));
    choices->addWidget(imageSize_);
    someRow->addLayout(pictureColumn);
    someRow->addLayout(choices);
    someRow->addWidget(remove, 0, Qt::AlignTop);
    someRow->addStretch(1);
    connect(remove, &QPushButton::clicked, this, [this] {
        local_.imageUrl.reset();
        refreshImageSection();
        scheduleSync();
    });
    connect(imagePosition_, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (loading_ || index < 0) return;
        local_.imagePosition = kPositions[index].second;
        scheduleSync();
    });
    connect(imageSize_, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (loading_ || index < 0) return;
        local_.imageSize = kSizes[index].second;
        scheduleSync();
    });
    image_->addWidget(none);
    image_->addWidget(some);
    column->addWidget(image_);
    return settings;
}

void SlideEditorContentView::edit(const SlidesResource& deck, const Slide& slide) {
    flushPendingSync();
    deck_ = deck;
    local_ = slide;
    showSlide();
}

void SlideEditorContentView::showSlide() {
    loading_ = true;
    if (title_->text() != QString::fromStdString(local_.title)) title_->setText(QString::fromStdString(local_.title));
    if (text_->toPlainText() != QString::fromStdString(local_.content))
        text_->setPlainText(QString::fromStdString(local_.content));
    textSize_->setValue(static_cast<int>(std::lround(local_.textScale * 10)));
    textSizeValue_->setText(QStringLiteral("%1%").arg(std::lround(local_.textScale * 100)));
    for (int i = 0; i < alignment_.size(); ++i) alignment_[i]->setChecked(kAlignments[i].second == local_.textAlignment);
    for (int i = 0; i < kPositions.size(); ++i)
        if (kPositions[i].second == local_.imagePosition) imagePosition_->setCurrentIndex(i);
    for (int i = 0; i < kSizes.size(); ++i)
        if (kSizes[i].second == local_.imageSize) imageSize_->setCurrentIndex(i);
    loading_ = false;
    refreshImageSection();
    preview_->show(deck_, local_);
}

void SlideEditorContentView::refreshImageSection() {
    const bool hasImage = local_.imageUrl && !local_.imageUrl->empty();
    image_->setCurrentIndex(hasImage ? 1 : 0);
    bool failed = false;
    if (hasImage) {
        const SlideImageLoader::Result result = loader_.load(*local_.imageUrl);
        if (result.state == SlideImageLoader::State::image) {
            imagePicture_->setPixmap(QPixmap::fromImage(result.image.scaled(
                imagePicture_->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation)));
        } else if (result.state == SlideImageLoader::State::loading) {
            imagePicture_->setPixmap({});
            imagePicture_->setText(QStringLiteral("…"));
        } else {
            // The symbol, with the words under it.
            imagePicture_->setPixmap(SymbolIcon::make("exclamationmark.triangle", QColor(255, 159, 10), 20).pixmap(20));
            failed = true;
        }
    }
    imageError_->setVisible(failed);
    imagePicture_->setAccessibleDescription(failed ? imageError_->text() : QString());
    preview_->show(deck_, local_);
}

void SlideEditorContentView::scheduleSync() {
    // Each change restarts the half second, and the preview follows at once.
    syncTimer_.start();
    preview_->show(deck_, local_);
}

void SlideEditorContentView::sync() {
    syncTimer_.stop();
    emit slideSynced(local_);
    logLine("🔄 Synced local changes to binding");
}

void SlideEditorContentView::flushPendingSync() {
    if (syncTimer_.isActive()) sync();
}

bool SlideEditorContentView::showsPreview() const { return preview_->isVisibleTo(this); }

void SlideEditorContentView::setShowsPreview(bool show) {
    preview_->setVisible(show);
    previewToggle_->setText(show ? QStringLiteral("Hide Preview") : QStringLiteral("Show Preview"));
    previewToggle_->setAccessibleName(previewToggle_->text());
}

void SlideEditorContentView::chooseImageFile() {
    const QString path = QFileDialog::getOpenFileName(this, QStringLiteral("Choose Image"), QDir::homePath(),
                                                      QStringLiteral("Images (*.png *.jpg *.jpeg *.gif *.bmp *.webp)"));
    if (path.isEmpty()) return;  // cancelled
    addImageFromFile(path);
}

void SlideEditorContentView::addImageFromFile(const QString& path) {
    if (!QFileInfo(path).isFile()) {
        logLine("Error selecting image: " + path.toStdString() + " is not a readable file");
        return;
    }
    const auto copy = importSlideImage(path.toStdString(), QDir::tempPath().toStdString());
    if (!copy) return;  // logged; the slide keeps its former image
    local_.imageUrl = *copy;
    logLine("📸 Updating slide with image URL");
    logLine("📸 Slide updated, imageUrl: " + *copy);
    // The loader notices a replaced file by its date and size.
    refreshImageSection();
    scheduleSync();
}

void SlideEditorContentView::askImageUrl() {
    // The message, then the labelled field, then "Cancel" and "Add".
    QDialog dialog(this);
    dialog.setWindowTitle(QStringLiteral("Add Image from URL"));
    dialog.setAccessibleName(dialog.windowTitle());
    auto* column = new QVBoxLayout(&dialog);
    auto* message = new QLabel(QStringLiteral("Enter the URL of the image"));
    message->setWordWrap(true);
    column->addWidget(message);
    auto* form = new QFormLayout;
    auto* field = new QLineEdit;
    field->setAccessibleName(QStringLiteral("Image URL"));
    field->setPlaceholderText(QStringLiteral("https://"));
    field->setMinimumWidth(320);
    auto* fieldLabel = new QLabel(QStringLiteral("Image URL"));
    fieldLabel->setBuddy(field);
    form->addRow(fieldLabel, field);
    column->addLayout(form);
    auto* buttons = new QDialogButtonBox;
    QPushButton* cancel = buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole);
    QPushButton* add = buttons->addButton(QStringLiteral("Add"), QDialogButtonBox::AcceptRole);
    cancel->setAccessibleName(cancel->text());
    add->setAccessibleName(add->text());
    add->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    column->addWidget(buttons);
    if (dialog.exec() != QDialog::Accepted) return;
    addImageFromUrl(field->text());
}

void SlideEditorContentView::addImageFromUrl(const QString& url) {
    local_.imageUrl = url.toStdString();
    refreshImageSection();
    scheduleSync();
}

}  // namespace orvane

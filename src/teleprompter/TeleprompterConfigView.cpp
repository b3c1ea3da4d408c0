#include "teleprompter/TeleprompterConfigView.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGraphicsOpacityEffect>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPropertyAnimation>
#include <QPushButton>
#include <QScrollArea>
#include <QSlider>
#include <QTimer>
#include <QVBoxLayout>
#include <cmath>

#include "paint/SymbolPainter.h"
#include "document/Log.h"
#include "engine/StreamManager.h"
#include "teleprompter/ColorWellButton.h"
#include "teleprompter/TeleprompterManager.h"
#include "teleprompter/TeleprompterSettings.h"

namespace orvane {

namespace {

// Sliders are whole-numbered; these map a slider position to its value.
constexpr double kOpacityStep = 0.05;  // 0.1 ... 1.0
constexpr double kSpeedStep = 0.1;     // 0.5 ... 3.0
constexpr double kSizeStep = 50;       // width 400 ... 2000, height 100 ... 800

int toSteps(double value, double step) { return static_cast<int>(std::lround(value / step)); }

QLabel* caption(const QString& text) {
    auto* label = new QLabel(text);
    label->setWordWrap(true);
    label->setStyleSheet(QStringLiteral("color: rgba(255,255,255,150); font-size: 11px;"));
    return label;
}

}  // namespace

TeleprompterConfigView::TeleprompterConfigView(StreamManager& streamManager, const TeleprompterConfig& config,
                                               TeleprompterManager* manager, QWidget* parent)
    : QDialog(parent), streamManager_(&streamManager), manager_(manager), config_(config) {
    setWindowTitle(QStringLiteral("Teleprompter Configuration"));
    setAccessibleName(windowTitle());
    setModal(true);
    resize(520, 720);
    build();
    showConfig();
}

QSlider* TeleprompterConfigView::addSlider(QFormLayout* form, const QString& label, int min, int max,
                                           QLabel** readout) {
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* slider = new QSlider(Qt::Horizontal);
    slider->setRange(min, max);
    slider->setSingleStep(1);
    slider->setPageStep(1);
    slider->setAccessibleName(QString(label).remove(u':'));
    *readout = new QLabel;
    (*readout)->setMinimumWidth(56);
    (*readout)->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    layout->addWidget(slider, 1);
    layout->addWidget(*readout);
    form->addRow(label, row);
    connect(slider, &QSlider::valueChanged, this, [this] {
        if (!loading_) changed();
    });
    return slider;
}

void TeleprompterConfigView::build() {
    auto* outer = new QVBoxLayout(this);
    auto* scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    auto* body = new QWidget;
    auto* column = new QVBoxLayout(body);
    column->setSpacing(16);

    auto* head = new QHBoxLayout;
    auto* title = new QLabel(QStringLiteral("Teleprompter Configuration"));
    QFont titleFont = title->font();
    titleFont.setPointSizeF(16);
    titleFont.setBold(true);
    title->setFont(titleFont);
    enabled_ = new QCheckBox(QStringLiteral("Enabled"));
    head->addWidget(title);
    head->addStretch(1);
    head->addWidget(enabled_);
    column->addLayout(head);

    auto* content = new QGroupBox(QStringLiteral("Content"));
    auto* contentColumn = new QVBoxLayout(content);
    text_ = new QPlainTextEdit;
    text_->setAccessibleName(QStringLiteral("Teleprompter text"));
    QFont textFont = text_->font();
    textFont.setPointSizeF(14);
    text_->setFont(textFont);
    text_->setMinimumHeight(200);
    text_->setStyleSheet(QStringLiteral("QPlainTextEdit { border: 1px solid rgba(128,128,128,77); }"));
    contentColumn->addWidget(text_);
    contentColumn->addWidget(caption(QStringLiteral("Enter the text you want to display in the teleprompter")));
    column->addWidget(content);

    auto* appearance = new QGroupBox(QStringLiteral("Appearance"));
    auto* appearanceForm = new QFormLayout(appearance);
    fontSize_ = addSlider(appearanceForm, QStringLiteral("Font Size:"), 12, 72, &fontSizeValue_);
    opacity_ = addSlider(appearanceForm, QStringLiteral("Opacity:"), 2, 20, &opacityValue_);
    textColor_ = new ColorWellButton(QStringLiteral("Text Color"));
    backgroundColor_ = new ColorWellButton(QStringLiteral("Background Color"));
    appearanceForm->addRow(QStringLiteral("Text Color:"), textColor_);
    appearanceForm->addRow(QStringLiteral("Background Color:"), backgroundColor_);
    column->addWidget(appearance);

    auto* window = new QGroupBox(QStringLiteral("Window Settings"));
    auto* windowForm = new QFormLayout(window);
    alwaysOnTop_ = new QCheckBox(QStringLiteral("Always on Top"));
    hideFromShare_ = new QCheckBox(QStringLiteral("Hide from Screen Share"));
    windowForm->addRow(alwaysOnTop_);
    windowForm->addRow(hideFromShare_);
    windowForm->addRow(caption(QStringLiteral(
        "When enabled, the teleprompter window will not appear in screen recordings or screen sharing")));
    windowForm->addRow(caption(QString::fromLatin1(unsupportedHint)));
    width_ = addSlider(windowForm, QStringLiteral("Width:"), 8, 40, &widthValue_);
    height_ = addSlider(windowForm, QStringLiteral("Height:"), 2, 16, &heightValue_);
    column->addWidget(window);

    auto* scrolling = new QGroupBox(QStringLiteral("Scrolling"));
    auto* scrollingForm = new QFormLayout(scrolling);
    autoScroll_ = new QCheckBox(QStringLiteral("Auto-scroll on Open"));
    scrollingForm->addRow(autoScroll_);
    speed_ = addSlider(scrollingForm, QStringLiteral("Scroll Speed:"), 5, 30, &speedValue_);
    column->addWidget(scrolling);
    column->addStretch(1);
    scroll->setWidget(body);
    outer->addWidget(scroll, 1);

    auto* bottom = new QHBoxLayout;
    auto* close = new QPushButton(QStringLiteral("Close"));
    auto* reset = new QPushButton(QStringLiteral("Reset to Defaults"));
    saved_ = new QLabel(QStringLiteral("Saved!"));
    {
        QPixmap check(16, 16);
        check.fill(Qt::transparent);
        QPainter painter(&check);
        painter.setRenderHint(QPainter::Antialiasing);
        SymbolPainter::draw(painter, "checkmark.circle.fill", QPointF(8, 8), 14, QColor(52, 199, 89));
        painter.end();
        auto* icon = new QLabel;
        icon->setPixmap(check);
        saved_->setText(QStringLiteral("Saved!"));
        saved_->setStyleSheet(QStringLiteral("color: rgb(52,199,89); font-size: 12px;"));
        auto* savedRow = new QWidget;
        savedRow->setObjectName(QStringLiteral("savedConfirmation"));
        auto* savedLayout = new QHBoxLayout(savedRow);
        savedLayout->setContentsMargins(0, 0, 0, 0);
        savedLayout->addWidget(icon);
        savedLayout->addWidget(saved_);
        auto* effect = new QGraphicsOpacityEffect(savedRow);
        effect->setOpacity(0);
        savedRow->setGraphicsEffect(effect);
        bottom->addWidget(close);
        bottom->addWidget(reset);
        bottom->addStretch(1);
        bottom->addWidget(savedRow);
    }
    save_ = new QPushButton(QStringLiteral("Save Changes"));
    save_->setDefault(true);
    save_->setEnabled(false);
    bottom->addWidget(save_);
    outer->addLayout(bottom);

    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(reset, &QPushButton::clicked, this, &TeleprompterConfigView::resetToDefaults);
    connect(save_, &QPushButton::clicked, this, &TeleprompterConfigView::saveConfiguration);
    for (QCheckBox* box : {enabled_, alwaysOnTop_, hideFromShare_, autoScroll_})
        connect(box, &QCheckBox::toggled, this, [this] {
            if (!loading_) changed();
        });
    connect(text_, &QPlainTextEdit::textChanged, this, [this] {
        if (!loading_) changed();
    });
    connect(textColor_, &ColorWellButton::colorPicked, this, [this] { changed(); });
    connect(backgroundColor_, &ColorWellButton::colorPicked, this, [this] { changed(); });
}

void TeleprompterConfigView::showConfig() {
    loading_ = true;
    enabled_->setChecked(config_.enabled);
    if (text_->toPlainText() != QString::fromStdString(config_.text))
        text_->setPlainText(QString::fromStdString(config_.text));
    fontSize_->setValue(static_cast<int>(std::lround(config_.fontSize)));
    opacity_->setValue(toSteps(config_.opacity, kOpacityStep));
    textColor_->setColor(config_.textColor);
    backgroundColor_->setColor(config_.backgroundColor);
    alwaysOnTop_->setChecked(config_.alwaysOnTop);
    hideFromShare_->setChecked(config_.hideFromScreenShare);
    width_->setValue(toSteps(config_.width, kSizeStep));
    height_->setValue(toSteps(config_.height, kSizeStep));
    autoScroll_->setChecked(config_.isScrolling);
    speed_->setValue(toSteps(config_.scrollSpeed, kSpeedStep));
    fontSizeValue_->setText(QStringLiteral("%1pt").arg(std::lround(config_.fontSize)));
    opacityValue_->setText(QStringLiteral("%1%").arg(std::lround(config_.opacity * 100)));
    widthValue_->setText(QStringLiteral("%1px").arg(std::lround(config_.width)));
    heightValue_->setText(QStringLiteral("%1px").arg(std::lround(config_.height)));
    speedValue_->setText(QString::asprintf("%.1fx", config_.scrollSpeed));
    loading_ = false;
}

void TeleprompterConfigView::changed() {
    // The controls write the working copy; read-outs follow.
    config_.enabled = enabled_->isChecked();
    config_.text = text_->toPlainText().toStdString();
    config_.fontSize = fontSize_->value();
    config_.opacity = opacity_->value() * kOpacityStep;
    config_.textColor = textColor_->color();
    config_.backgroundColor = backgroundColor_->color();
    config_.alwaysOnTop = alwaysOnTop_->isChecked();
    config_.hideFromScreenShare = hideFromShare_->isChecked();
    config_.width = width_->value() * kSizeStep;
    config_.height = height_->value() * kSizeStep;
    config_.isScrolling = autoScroll_->isChecked();
    config_.scrollSpeed = speed_->value() * kSpeedStep;
    showConfig();
    hasChanges_ = true;
    save_->setEnabled(true);
}

void TeleprompterConfigView::resetToDefaults() {
    config_ = TeleprompterConfig{};
    showConfig();
    hasChanges_ = true;
    save_->setEnabled(true);
}

void TeleprompterConfigView::saveConfiguration() {
    if (!storeTeleprompterSettings(streamManager_, config_)) return;
    hasChanges_ = false;
    save_->setEnabled(false);
    if (manager_) manager_->updateWindowLevel();
    logLine("✅ Teleprompter configuration saved");

    // "Saved!" fades in, and out again two seconds later.
    showSaveConfirmation_ = true;
    auto* row = findChild<QWidget*>(QStringLiteral("savedConfirmation"));
    auto fade = [row](double to) {
        if (!row) return;
        auto* animation = new QPropertyAnimation(row->graphicsEffect(), "opacity", row);
        animation->setDuration(200);
        animation->setEndValue(to);
        animation->start(QAbstractAnimation::DeleteWhenStopped);
    };
    fade(1.0);
    QTimer::singleShot(2000, this, [this, fade] {
        showSaveConfirmation_ = false;
        fade(0.0);
    });
}

}  // namespace orvane

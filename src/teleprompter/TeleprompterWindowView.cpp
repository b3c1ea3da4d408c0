#include "teleprompter/TeleprompterWindowView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>

#include "paint/ColorConvert.h"
#include "paint/SymbolPainter.h"
#include "document/Log.h"
#include "engine/StreamManager.h"
#include "teleprompter/RoundSymbolButton.h"
#include "teleprompter/ScriptTextView.h"
#include "teleprompter/TeleprompterManager.h"
#include "teleprompter/TeleprompterSettings.h"

namespace orvane {

namespace {

const QColor kCyan(0, 200, 230);
const QColor kGreen(52, 199, 89);
const QColor kRed(255, 69, 58);

QFont scriptFont(double size) {
    QFont font;  // the system font
    font.setPointSizeF(std::max(1.0, size));
    return font;
}

}  // namespace

TeleprompterWindowView::TeleprompterWindowView(TeleprompterManager& manager, QWidget* parent)
    : QWidget(parent), manager_(&manager) {
    setAttribute(Qt::WA_TranslucentBackground);
    setMinimumSize(200, 80);

    pages_ = new QStackedWidget(this);
    scroll_ = new QScrollArea;
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setWidgetResizable(true);
    scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll_->setStyleSheet(QStringLiteral("QScrollArea, QScrollArea > QWidget > QWidget { background: transparent; }"));
    script_ = new ScriptTextView;
    scroll_->setWidget(script_);
    pages_->addWidget(scroll_);
    pages_->addWidget(buildEditingPage());

    controls_ = new QWidget(this);
    auto* row = new QHBoxLayout(controls_);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    save_ = new RoundSymbolButton("checkmark.circle.fill", kGreen, QStringLiteral("Save Changes"));
    cancel_ = new RoundSymbolButton("xmark.circle.fill", kRed, QStringLiteral("Cancel"));
    edit_ = new RoundSymbolButton(
        "pencil.circle.fill", kCyan,
        QStringLiteral("Edit Text in Real-Time - Click to type directly in the teleprompter"));
    playPause_ = new RoundSymbolButton("play.fill", Qt::white, QStringLiteral("Start Scrolling"));
    reset_ = new RoundSymbolButton("arrow.counterclockwise", Qt::white, QStringLiteral("Reset to Top"));
    close_ = new RoundSymbolButton("xmark.circle.fill", Qt::white, QStringLiteral("Close Window"));
    for (auto* button : {save_, cancel_, edit_, playPause_, reset_, close_}) row->addWidget(button);

    connect(save_, &QAbstractButton::clicked, this, [this] {
        saveText();
        showEditing(false);
    });
    connect(cancel_, &QAbstractButton::clicked, this, &TeleprompterWindowView::cancelEditing);
    connect(edit_, &QAbstractButton::clicked, this, &TeleprompterWindowView::beginEditing);
    connect(playPause_, &QAbstractButton::clicked, this, [this] {
        if (!manager_) return;
        if (manager_->isScrolling())
            manager_->stopScrolling();
        else
            manager_->startScrolling();
    });
    connect(reset_, &QAbstractButton::clicked, this, [this] {
        if (!manager_) return;
        manager_->setScrollOffset(0);
        logLine("📜 Teleprompter scroll reset");
    });
    connect(close_, &QAbstractButton::clicked, this, [this] {
        if (manager_) manager_->closeTeleprompterWindow();
    });

    connect(&manager, &TeleprompterManager::scrollOffsetChanged, this, [this](double offset) {
        if (!isEditing_) script_->setOffset(offset);
    });
    connect(&manager, &TeleprompterManager::isScrollingChanged, this, &TeleprompterWindowView::refreshControls);
    if (StreamManager* session = manager.streamManager())
        connect(session, &StreamManager::currentPresetChanged, this, &TeleprompterWindowView::refreshFromDocument);
    connect(editor_, &QPlainTextEdit::textChanged, this, [this] {
        if (isEditing_) editableText_ = editor_->toPlainText();
    });

    script_->setOffset(manager.scrollOffset());
    refreshFromDocument();
    showEditing(false);
}

QWidget* TeleprompterWindowView::buildEditingPage() {
    auto* page = new QWidget;
    page->setAttribute(Qt::WA_TranslucentBackground);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(16, 4, 16, 16);
    column->setSpacing(20);

    auto* header = new QWidget;
    header->setObjectName(QStringLiteral("editingHeader"));
    header->setStyleSheet(QStringLiteral("#editingHeader { background: rgba(0, 200, 230, 51); border-radius: 6px; }"));
    auto* headerRow = new QHBoxLayout(header);
    headerRow->setContentsMargins(12, 8, 12, 8);
    auto* pencil = new QLabel;
    pencil->setFixedSize(18, 18);
    QPixmap pencilPicture(18, 18);
    pencilPicture.fill(Qt::transparent);
    {
        QPainter painter(&pencilPicture);
        painter.setRenderHint(QPainter::Antialiasing);
        SymbolPainter::draw(painter, "pencil.circle.fill", QPointF(9, 9), 16, kCyan);
    }
    pencil->setPixmap(pencilPicture);
    auto* title = new QLabel(QStringLiteral("EDITING MODE - Type your notes here"));
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    title->setStyleSheet(QStringLiteral("color: rgb(0, 200, 230);"));
    auto* hint = new QLabel(QStringLiteral("Click ✓ to save or ✕ to cancel"));
    hint->setStyleSheet(QStringLiteral("color: rgba(255, 255, 255, 153);"));
    headerRow->addWidget(pencil);
    headerRow->addWidget(title);
    headerRow->addStretch(1);
    headerRow->addWidget(hint);
    column->addWidget(header);

    editor_ = new QPlainTextEdit;
    editor_->setAccessibleName(QStringLiteral("Teleprompter script"));
    editor_->setFrameShape(QFrame::NoFrame);
    column->addWidget(editor_, 1);
    return page;
}

double TeleprompterWindowView::textDisplacement() const { return isEditing_ ? 0.0 : script_->offset(); }

void TeleprompterWindowView::refreshFromDocument() {
    const auto settings = teleprompterSettings(manager_ ? manager_->streamManager() : nullptr);
    hasSettings_ = settings.has_value();
    pages_->setVisible(hasSettings_);
    controls_->setVisible(hasSettings_);
    if (!settings) {
        update();
        return;
    }
    QColor ground = ColorConvert::from(settings->backgroundColor);
    ground.setAlphaF(static_cast<float>(std::clamp(ground.alphaF() * settings->opacity, 0.0, 1.0)));
    ground_ = ground;
    const QFont font = scriptFont(settings->fontSize);
    const QColor textColor = ColorConvert::from(settings->textColor);
    script_->setLook(font, textColor);
    editor_->setFont(font);
    editor_->setStyleSheet(QStringLiteral("QPlainTextEdit { background: rgba(255, 255, 255, 13); color: %1; }")
                               .arg(textColor.name(QColor::HexArgb)));
    // The presenter's typing is never overwritten by a change from elsewhere.
    if (!isEditing_) editableText_ = QString::fromStdString(settings->text);
    script_->setScript(editableText_.isEmpty() ? QString::fromUtf8(placeholderText) : editableText_,
                       editableText_.isEmpty());
    update();
}

void TeleprompterWindowView::beginEditing() {
    if (manager_ && manager_->isScrolling()) manager_->stopScrolling();
    editor_->setPlainText(editableText_);  // empty when the placeholder showed
    showEditing(true);
    QTimer::singleShot(100, editor_, [editor = editor_] { editor->setFocus(Qt::OtherFocusReason); });
}

void TeleprompterWindowView::saveText() {
    StreamManager* session = manager_ ? manager_->streamManager() : nullptr;
    auto settings = teleprompterSettings(session);
    if (!settings) return;
    if (isEditing_) editableText_ = editor_->toPlainText();
    settings->text = editableText_.toStdString();
    if (storeTeleprompterSettings(session, *settings)) logLine("✅ Teleprompter text saved");
}

void TeleprompterWindowView::cancelEditing() {
    const auto settings = teleprompterSettings(manager_ ? manager_->streamManager() : nullptr);
    editableText_ = settings ? QString::fromStdString(settings->text) : QString();
    showEditing(false);
}

void TeleprompterWindowView::showEditing(bool editing) {
    isEditing_ = editing;
    pages_->setCurrentIndex(editing ? 1 : 0);
    if (!editing) {
        script_->setScript(editableText_.isEmpty() ? QString::fromUtf8(placeholderText) : editableText_,
                           editableText_.isEmpty());
        // The reading position comes back: the manager kept the offset.
        script_->setOffset(manager_ ? manager_->scrollOffset() : 0.0);
    }
    refreshControls();
}

void TeleprompterWindowView::refreshControls() {
    save_->setVisible(isEditing_);
    cancel_->setVisible(isEditing_);
    for (auto* button : {edit_, playPause_, reset_, close_}) button->setVisible(!isEditing_);
    const bool scrolling = manager_ && manager_->isScrolling();
    playPause_->setSymbol(scrolling ? "pause.fill" : "play.fill", Qt::white,
                          scrolling ? QStringLiteral("Pause Scrolling") : QStringLiteral("Start Scrolling"));
    placeControls();
}

void TeleprompterWindowView::placeControls() {
    controls_->adjustSize();
    controls_->move(width() - controls_->width() - controlsMargin, controlsMargin);
    controls_->raise();
    // The text has its own area under the control row, so no line is ever
    // read through the buttons, neither at rest nor while it scrolls up.
    const QRect textArea = rect().adjusted(0, controlsMargin + controls_->height() + controlsGap, 0, 0);
    if (pages_->geometry() != textArea) {
        pages_->setGeometry(textArea);
        script_->setTrailingSpace(textArea.height());
    }
}

QRect TeleprompterWindowView::textArea() const { return pages_->geometry(); }

void TeleprompterWindowView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    placeControls();
}

void TeleprompterWindowView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (hasSettings_) {
        // The script's own ground; the clear window lets the desktop through.
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(rect(), ground_);
        return;
    }
    painter.fillRect(rect(), Qt::black);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF centre = QRectF(rect()).center();
    SymbolPainter::draw(painter, "text.alignleft", centre - QPointF(0, 40), 48, QColor(255, 255, 255, 128));
    QFont title = font();
    title.setPointSizeF(17);
    title.setBold(true);
    painter.setFont(title);
    painter.setPen(Qt::white);
    painter.drawText(QRectF(0, centre.y() + 2, width(), 28), Qt::AlignCenter,
                     QStringLiteral("No Teleprompter Configuration"));
    QFont body = font();
    body.setPointSizeF(12);
    painter.setFont(body);
    painter.setPen(QColor(255, 255, 255, 179));
    painter.drawText(QRectF(0, centre.y() + 32, width(), 22), Qt::AlignCenter,
                     QStringLiteral("Configure the teleprompter in the preset settings"));
}

}  // namespace orvane

#include "console/stages/CenterContentView.h"

#include <QBoxLayout>
#include <QFrame>
#include <QPainter>
#include <QResizeEvent>

#include "console/controls/Theme.h"
#include "console/stages/PreviewHeader.h"
#include "console/stages/ProgramHeader.h"
#include "console/stages/StreamPreviewView.h"

namespace orvane {

namespace {
QWidget* stageColumn(QWidget* header, QWidget* stage) {
    auto* column = new QWidget;
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(header);
    layout->addWidget(stage, 1);
    return column;
}
}  // namespace

CenterContentView::CenterContentView(StreamManager& streamManager, const FrameSource* frames, QWidget* parent)
    : QWidget(parent) {
    previewHeader_ = new PreviewHeader(streamManager);
    programHeader_ = new ProgramHeader(streamManager);
    preview_ = new StreamPreviewView(StreamPreviewView::Role::preview, streamManager, frames);
    program_ = new StreamPreviewView(StreamPreviewView::Role::program, streamManager, frames);

    stages_ = new QBoxLayout(QBoxLayout::LeftToRight, this);
    stages_->setContentsMargins(0, 0, 0, 0);
    stages_->setSpacing(0);
    stages_->addWidget(stageColumn(previewHeader_, preview_), 1);
    divider_ = new QFrame;
    divider_->setStyleSheet(QStringLiteral("background: rgba(255,255,255,0.1);"));
    stages_->addWidget(divider_);
    stages_->addWidget(stageColumn(programHeader_, program_), 1);
    arrange(width());
}

bool CenterContentView::isStacked() const { return stages_->direction() == QBoxLayout::TopToBottom; }

void CenterContentView::arrange(int width) {
    const bool stacked = width < sideBySideMinimumWidth;
    stages_->setDirection(stacked ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    if (stacked) {
        divider_->setFixedSize(QWIDGETSIZE_MAX, 1);
        divider_->setMinimumWidth(0);
    } else {
        divider_->setFixedWidth(1);
        divider_->setMinimumHeight(0);
        divider_->setMaximumHeight(QWIDGETSIZE_MAX);
    }
}

void CenterContentView::resizeEvent(QResizeEvent* event) {
    arrange(event->size().width());
    QWidget::resizeEvent(event);
}

void CenterContentView::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), Theme::black(0.9));
}

}  // namespace orvane

#include "console/stages/StageHeader.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"

namespace orvane {

StageHeader::StageHeader(const QString& title, bool isLive, QWidget* parent) : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(16, 10, 16, 10);
    // The header follows its stage's width; the program header picks shorter
    // labels rather than widening the stage.
    row->setSizeConstraint(QLayout::SetNoConstraint);
    row->setSpacing(8);
    auto* icon = new QLabel;
    icon->setPixmap(Symbols::pixmap(isLive ? "record.circle" : "eye", 11, isLive ? Theme::red() : Qt::white));
    row->addWidget(icon);
    auto* titleLabel = new QLabel(title);
    titleLabel->setFont(Theme::font(11, Theme::Weight::bold));
    row->addWidget(titleLabel);
    subtitle_ = new QLabel;
    subtitle_->setFont(Theme::font(10));
    subtitle_->setStyleSheet(QStringLiteral("color: #8e8e93;"));
    subtitle_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    subtitle_->setMinimumWidth(20);
    row->addWidget(subtitle_, 1);
    buttons_ = new QHBoxLayout;
    buttons_->setSpacing(6);
    row->addLayout(buttons_);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    // Both headers keep one height, so that the two pictures line up.
    setFixedHeight(40);
}

void StageHeader::setSubtitle(const QString& subtitle) {
    fullSubtitle_ = subtitle;
    subtitle_->setAccessibleName(subtitle);
    elideSubtitle();
}

QString StageHeader::subtitle() const { return fullSubtitle_; }

void StageHeader::elideSubtitle() {
    subtitle_->setText(
        QFontMetrics(subtitle_->font()).elidedText(fullSubtitle_, Qt::ElideRight, std::max(10, subtitle_->width())));
}

void StageHeader::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), Theme::black(0.2));
}

void StageHeader::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    elideSubtitle();
}

}  // namespace orvane

#include "teleprompter/ScriptTextView.h"

#include <QPainter>
#include <QTextOption>
#include <cmath>

namespace orvane {

ScriptTextView::ScriptTextView(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("teleprompterText"));
    setAccessibleName(QStringLiteral("Teleprompter text"));
    setAttribute(Qt::WA_TranslucentBackground);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void ScriptTextView::setScript(const QString& text, bool placeholder) {
    if (text == text_ && placeholder == placeholder_) return;
    text_ = text;
    placeholder_ = placeholder;
    setAccessibleDescription(text);
    relayout();
}

void ScriptTextView::setLook(const QFont& font, const QColor& color) {
    if (font == font_ && color == color_) return;
    font_ = font;
    color_ = color;
    relayout();
}

void ScriptTextView::setOffset(double offset) {
    if (offset == offset_) return;
    offset_ = offset;
    update();  // the only work per tick
}

void ScriptTextView::setTrailingSpace(int height) {
    if (height == trailing_) return;
    trailing_ = height;
    updateGeometry();
}

void ScriptTextView::relayout() {
    layoutWidth_ = -1;
    updateGeometry();
    update();
}

double ScriptTextView::layoutText(int width) const {
    if (layout_ && layoutWidth_ == width) return textHeight_;
    layout_ = std::make_unique<QTextLayout>(text_, font_);
    QTextOption option(Qt::AlignLeading);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout_->setTextOption(option);
    // Paragraph breaks in the script are kept as line breaks.
    QString shown = text_;
    shown.replace(u'\n', QChar::LineSeparator);
    layout_->setText(shown);
    const double lineWidth = std::max(1, width - 2 * padding);
    double y = 0;
    layout_->beginLayout();
    for (QTextLine line = layout_->createLine(); line.isValid(); line = layout_->createLine()) {
        line.setLineWidth(lineWidth);
        line.setPosition(QPointF(0, y));
        y += line.height();
    }
    layout_->endLayout();
    layoutWidth_ = width;
    textHeight_ = y;
    return y;
}

int ScriptTextView::heightForWidth(int width) const {
    return static_cast<int>(std::ceil(layoutText(width))) + 2 * padding + trailing_;
}

QSize ScriptTextView::sizeHint() const { return {400, heightForWidth(400)}; }

void ScriptTextView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layoutText(width());
}

void ScriptTextView::paintEvent(QPaintEvent*) {
    layoutText(width());
    QPainter painter(this);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setPen(color_);
    layout_->draw(&painter, QPointF(padding, textTop()));
}

}  // namespace orvane

#include "console/sheets/TemplateCard.h"

#include <QPainter>
#include <QPainterPath>

#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"
#include "document/PresetTemplates.h"

namespace orvane {

TemplateCard::TemplateCard(PresetTemplate presetTemplate, QWidget* parent)
    : QPushButton(parent), template_(presetTemplate) {
    setCheckable(true);
    setAutoExclusive(true);
    setCursor(Qt::PointingHandCursor);
    setMinimumSize(200, 110);
    setAccessibleName(QString::fromUtf8(toString(presetTemplate).data(), qsizetype(toString(presetTemplate).size())));
    setAccessibleDescription(QString::fromUtf8(cardText(presetTemplate).data(), qsizetype(cardText(presetTemplate).size())));
    connect(this, &QPushButton::toggled, this, qOverload<>(&QWidget::update));
}

std::string_view TemplateCard::symbolFor(PresetTemplate presetTemplate) {
    switch (presetTemplate) {
    case PresetTemplate::streaming: return "video.fill";
    case PresetTemplate::presentation: return "doc.text";
    case PresetTemplate::gaming: return "gamecontroller.fill";
    case PresetTemplate::custom: return "plus.rectangle.on.rectangle";
    }
    return "video.fill";
}

void TemplateCard::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF r = QRectF(rect()).adjusted(1, 1, -1, -1);
    QPainterPath path;
    path.addRoundedRect(r, 10, 10);
    const bool selected = isChecked();
    p.fillPath(path, selected ? Theme::withAlpha(Theme::purple(), 0.18) : Theme::white(0.05));
    p.setPen(QPen(selected ? Theme::purple() : Theme::white(0.1), selected ? 2 : 1));
    p.drawPath(path);

    p.drawPixmap(QPointF(r.left() + 14, r.top() + 14), Symbols::pixmap(symbolFor(template_), 24, Theme::purple()));
    p.setPen(Qt::white);
    p.setFont(Theme::font(15, Theme::Weight::semibold));
    p.drawText(QRectF(r.left() + 14, r.top() + 46, r.width() - 28, 20), Qt::AlignLeft | Qt::AlignVCenter,
               accessibleName());
    p.setPen(Theme::gray());
    p.setFont(Theme::font(12));
    p.drawText(QRectF(r.left() + 14, r.top() + 68, r.width() - 28, 34), Qt::AlignLeft | Qt::TextWordWrap,
               accessibleDescription());
    if (selected) {
        p.drawPixmap(QPointF(r.right() - 84, r.top() + 14), Symbols::pixmap("checkmark.circle.fill", 14, Theme::purple()));
        p.setPen(Theme::purple());
        p.setFont(Theme::font(12, Theme::Weight::medium));
        p.drawText(QRectF(r.right() - 66, r.top() + 12, 56, 18), Qt::AlignLeft | Qt::AlignVCenter,
                   QStringLiteral("Selected"));
    }
}

}  // namespace orvane

#include "console/scene_tab/SourceRowView.h"

#include <QPainter>
#include <QPainterPath>

#include "console/controls/ConfirmDialog.h"
#include "console/controls/SidebarStyle.h"
#include "console/controls/SymbolButton.h"
#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"

namespace orvane {

SourceRowView::SourceRowView(const Source& source, bool isSelected, QWidget* parent)
    : QPushButton(parent), source_(source), isSelected_(isSelected) {
    setAccessibleName(QString::fromStdString(source.name));
    setAccessibleDescription(typeTitle(source.type));
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    setFixedHeight(40);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    trash_ = SidebarStyle::iconButton("trash", QStringLiteral("Delete Source"), Theme::withAlpha(Theme::red(), 0.8),
                                      11);
    trash_->setParent(this);
    trash_->hide();
    connect(trash_, &QPushButton::clicked, this, [this] { confirmDelete(); });
    const Uuid id = source.id;
    connect(this, &QPushButton::clicked, this, [this, id] { emit selectRequested(id); });
}

const char* SourceRowView::symbolFor(SourceType type) {
    switch (type) {
        case SourceType::camera: return "video.fill";
        case SourceType::screen: return "rectangle.on.rectangle";
        case SourceType::window: return "macwindow";
        case SourceType::content: return "doc.fill";
    }
    return "doc.fill";
}

QString SourceRowView::typeTitle(SourceType type) {
    QString text = QString::fromUtf8(toString(type).data(), qsizetype(toString(type).size()));
    if (!text.isEmpty()) text[0] = text[0].toUpper();
    return text;
}

bool SourceRowView::isDeleteButtonVisible() const { return trash_->isVisibleTo(this); }

ConfirmDialog* SourceRowView::confirmDelete() {
    if (confirmation_) return confirmation_;
    confirmation_ = new ConfirmDialog(
        QStringLiteral("Delete Source"),
        QStringLiteral("Remove '%1' from this scene?").arg(QString::fromStdString(source_.name)),
        QStringLiteral("Delete"), window());
    const Uuid id = source_.id;
    // The row may be rebuilt while the alert is up; the alert answers for
    // the source, not for the row.
    QPointer<SourceRowView> self(this);
    connect(confirmation_, &ConfirmDialog::confirmed, confirmation_, [self, id] {
        if (self) emit self->deleteRequested(id);
    });
    confirmation_->open();
    return confirmation_;
}

void SourceRowView::setHovering(bool hovering) {
    isHovering_ = hovering;
    trash_->setVisible(hovering);
    if (hovering) trash_->move(width() - trash_->sizeHint().width() - 6, (height() - trash_->sizeHint().height()) / 2);
    update();
}

void SourceRowView::enterEvent(QEnterEvent* event) {
    setHovering(true);
    QPushButton::enterEvent(event);
}

void SourceRowView::leaveEvent(QEvent* event) {
    setHovering(false);
    QPushButton::leaveEvent(event);
}

void SourceRowView::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF r = QRectF(rect()).adjusted(1, 1, -1, -1);
    QPainterPath path;
    path.addRoundedRect(r, 6, 6);
    if (isSelected_)
        p.fillPath(path, Theme::withAlpha(Theme::purple(), 0.15));
    else if (isHovering_)
        p.fillPath(path, Theme::white(0.05));
    const QColor tint = isSelected_ ? Theme::purple() : Theme::white(0.7);
    p.drawPixmap(QPointF(10, (height() - 14) / 2.0), Symbols::pixmap(symbolFor(source_.type), 14, tint));
    const double textLeft = 32;
    const double textWidth = width() - textLeft - (isHovering_ ? 30 : 8);
    p.setPen(Qt::white);
    p.setFont(Theme::font(11, Theme::Weight::medium));
    p.drawText(QRectF(textLeft, 3, textWidth, 18), Qt::AlignLeft | Qt::AlignVCenter,
               QFontMetricsF(p.font()).elidedText(QString::fromStdString(source_.name), Qt::ElideRight, textWidth));
    p.setPen(Theme::gray());
    p.setFont(Theme::font(9));
    p.drawText(QRectF(textLeft, 20, textWidth, 14), Qt::AlignLeft | Qt::AlignVCenter, typeTitle(source_.type));
}

}  // namespace orvane

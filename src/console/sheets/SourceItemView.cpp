#include "console/sheets/SourceItemView.h"

#include <QPainter>
#include <QPainterPath>

#include "console/controls/ConfirmDialog.h"
#include "console/controls/SidebarStyle.h"
#include "console/controls/SymbolButton.h"
#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"

namespace orvane {

SourceItemView::SourceItemView(const Source& source, QWidget* parent) : QWidget(parent), source_(source) {
    setAccessibleName(QString::fromStdString(source.name));
    setAccessibleDescription(typeTitle(source.type));
    setFocusPolicy(Qt::TabFocus);
    setFixedHeight(48);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    trash_ = SidebarStyle::iconButton("trash", QStringLiteral("Delete Source"), Theme::withAlpha(Theme::red(), 0.8),
                                      14);
    trash_->setParent(this);
    trash_->hide();
    connect(trash_, &QPushButton::clicked, this, [this] { confirmDelete(); });
}

const char* SourceItemView::symbolFor(SourceType type) {
    switch (type) {
        case SourceType::camera: return "video.fill";
        case SourceType::screen: return "rectangle.on.rectangle";
        case SourceType::window: return "macwindow";
        case SourceType::content: return "doc.fill";
    }
    return "doc.fill";
}

QString SourceItemView::typeTitle(SourceType type) {
    const std::string_view raw = toString(type);
    QString text = QString::fromUtf8(raw.data(), qsizetype(raw.size()));
    if (!text.isEmpty()) text[0] = text[0].toUpper();
    return text;
}

QString SourceItemView::deleteMessage(const std::string& name) {
    return QStringLiteral("Are you sure you want to delete '%1'?").arg(QString::fromStdString(name));
}

bool SourceItemView::isDeleteButtonVisible() const { return trash_->isVisibleTo(this); }

ConfirmDialog* SourceItemView::confirmDelete() {
    if (confirmation_) return confirmation_;
    confirmation_ = new ConfirmDialog(QStringLiteral("Delete Source"), deleteMessage(source_.name),
                                      QStringLiteral("Delete"), window());
    const Uuid id = source_.id;
    // The list may be rebuilt while the question is up; the answer is for
    // the source, not for this row.
    QPointer<SourceItemView> self(this);
    connect(confirmation_, &ConfirmDialog::confirmed, confirmation_, [self, id] {
        if (self) emit self->deleteRequested(id);
    });
    confirmation_->open();
    return confirmation_;
}

void SourceItemView::placeTrash() {
    const QSize hint = trash_->sizeHint();
    trash_->setGeometry(width() - hint.width() - 10, (height() - hint.height()) / 2, hint.width(), hint.height());
}

void SourceItemView::setHovering(bool hovering) {
    isHovering_ = hovering;
    trash_->setVisible(hovering || hasFocus() || trash_->hasFocus());
    placeTrash();
    update();
}

void SourceItemView::enterEvent(QEnterEvent* event) {
    setHovering(true);
    QWidget::enterEvent(event);
}

void SourceItemView::leaveEvent(QEvent* event) {
    setHovering(false);
    QWidget::leaveEvent(event);
}

void SourceItemView::focusInEvent(QFocusEvent* event) {
    setHovering(isHovering_);
    QWidget::focusInEvent(event);
}

void SourceItemView::focusOutEvent(QFocusEvent* event) {
    setHovering(isHovering_);
    QWidget::focusOutEvent(event);
}

void SourceItemView::resizeEvent(QResizeEvent* event) {
    placeTrash();
    QWidget::resizeEvent(event);
}

void SourceItemView::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    QPainterPath path;
    path.addRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 8, 8);
    p.fillPath(path, isHovering_ ? Theme::white(0.09) : Theme::white(0.05));
    const double symbolSize = 18;
    p.drawPixmap(QPointF(14, (height() - symbolSize) / 2.0),
                 Symbols::pixmap(symbolFor(source_.type), symbolSize, Theme::purple()));
    const double textLeft = 46;
    const double textWidth = width() - textLeft - 44;
    p.setPen(Qt::white);
    p.setFont(Theme::font(13, Theme::Weight::medium));
    p.drawText(QRectF(textLeft, 6, textWidth, 20), Qt::AlignLeft | Qt::AlignVCenter,
               QFontMetricsF(p.font()).elidedText(QString::fromStdString(source_.name), Qt::ElideRight, textWidth));
    p.setPen(Theme::gray());
    p.setFont(Theme::font(11));
    p.drawText(QRectF(textLeft, 26, textWidth, 16), Qt::AlignLeft | Qt::AlignVCenter, typeTitle(source_.type));
}

}  // namespace orvane

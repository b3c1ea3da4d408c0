#include "console/scene_list/LeftSidebarView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QScrollArea>

#include "console/controls/SymbolButton.h"
#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"
#include "console/scene_list/SceneItemView.h"

namespace orvane {

namespace {

// A scene in the collapsed column: its icon and, up to nine, its number.
class CollapsedSceneButton : public QPushButton {
public:
    CollapsedSceneButton(const StreamingScene& scene, int number, bool selected)
        : scene_(scene), number_(number), selected_(selected) {
        setAccessibleName(QString::fromStdString(scene.name));
        setToolTip(QString::fromStdString(scene.name));
        setFixedSize(38, 38);
        setCursor(Qt::PointingHandCursor);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        p.setPen(Qt::NoPen);
        p.setBrush(selected_ ? Theme::withAlpha(Theme::purple(), 0.8) : Theme::white(underMouse() ? 0.1 : 0.05));
        p.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 8, 8);
        p.drawPixmap(QPointF(11, number_ <= 9 ? 5 : 11), Symbols::pixmap(scene_.icon, 16, Qt::white));
        if (number_ <= 9) {
            p.setPen(Theme::white(0.8));
            p.setFont(Theme::font(9, Theme::Weight::semibold));
            p.drawText(QRectF(0, 23, width(), 12), Qt::AlignCenter, QString::number(number_));
        }
    }

private:
    StreamingScene scene_;
    int number_;
    bool selected_;
};

}  // namespace

LeftSidebarView::LeftSidebarView(QWidget* parent) : QWidget(parent) {
    setAutoFillBackground(true);
    QPalette pal = palette();
    pal.setColor(QPalette::Window, Theme::sidebarGround());
    setPalette(pal);
    setFixedWidth(expandedWidth);

    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);

    // Expanded.
    expanded_ = new QWidget;
    auto* column = new QVBoxLayout(expanded_);
    column->setContentsMargins(8, 10, 8, 8);
    column->setSpacing(6);
    auto* head = new QHBoxLayout;
    head->setContentsMargins(6, 0, 0, 0);
    auto* title = new QLabel(QStringLiteral("SCENES"));
    title->setFont(Theme::font(11, Theme::Weight::bold));
    title->setStyleSheet(QStringLiteral("color: rgba(255,255,255,0.7);"));
    head->addWidget(title);
    head->addStretch();
    auto* add = headButton("plus.circle.fill", QStringLiteral("Add Scene"));
    connect(add, &QPushButton::clicked, this, &LeftSidebarView::addSceneRequested);
    head->addWidget(add);
    auto* collapse = headButton("sidebar.left", QStringLiteral("Collapse Sidebar"));
    connect(collapse, &QPushButton::clicked, this, [this] { setCollapsed(true); });
    head->addWidget(collapse);
    column->addLayout(head);

    auto* scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* listHolder = new QWidget;
    list_ = new QVBoxLayout(listHolder);
    list_->setContentsMargins(0, 0, 0, 0);
    list_->setSpacing(2);
    list_->addStretch();
    scroll->setWidget(listHolder);
    column->addWidget(scroll, 1);
    auto* hint = new QLabel(QStringLiteral("Click to change scene • Use 1-9 keys"));
    hint->setFont(Theme::font(10));
    hint->setWordWrap(true);
    hint->setAlignment(Qt::AlignCenter);
    hint->setStyleSheet(QStringLiteral("color: rgba(255,255,255,0.6);"));
    column->addWidget(hint);
    outer->addWidget(expanded_);

    // Collapsed.
    collapsed_ = new QWidget;
    auto* narrow = new QVBoxLayout(collapsed_);
    narrow->setContentsMargins(6, 10, 6, 8);
    narrow->setSpacing(6);
    auto* expand = headButton("sidebar.left", QStringLiteral("Expand Sidebar"));
    connect(expand, &QPushButton::clicked, this, [this] { setCollapsed(false); });
    narrow->addWidget(expand, 0, Qt::AlignHCenter);
    auto* addNarrow = headButton("plus.circle.fill", QStringLiteral("Add Scene"));
    connect(addNarrow, &QPushButton::clicked, this, &LeftSidebarView::addSceneRequested);
    narrow->addWidget(addNarrow, 0, Qt::AlignHCenter);
    iconList_ = new QVBoxLayout;
    iconList_->setSpacing(4);
    narrow->addLayout(iconList_);
    narrow->addStretch();
    outer->addWidget(collapsed_);
    collapsed_->hide();
}

SymbolButton* LeftSidebarView::headButton(std::string symbol, const QString& help) {
    auto* button = new SymbolButton(QString(), std::move(symbol));
    SymbolButton::Look look;
    look.foreground = symbol == "plus.circle.fill" ? Theme::purple() : Theme::white(0.7);
    look.background = Qt::transparent;
    look.symbolSize = 14;
    look.paddingX = 3;
    look.paddingY = 3;
    button->setLook(look);
    button->setHelpText(help);
    return button;
}

void LeftSidebarView::setScenes(const std::vector<StreamingScene>& scenes, const std::optional<Uuid>& selectedId) {
    scenes_ = scenes;
    selectedId_ = selectedId;
    rebuild();
}

void LeftSidebarView::setLiveSceneId(const std::optional<Uuid>& id) {
    liveSceneId_ = id;
    for (SceneItemView* row : rows_) row->setLive(id && row->scene().id == *id);
}

void LeftSidebarView::setCollapsed(bool collapsed) {
    if (isCollapsed_ == collapsed) return;
    isCollapsed_ = collapsed;
    expanded_->setVisible(!collapsed);
    collapsed_->setVisible(collapsed);
    setFixedWidth(collapsed ? collapsedWidth : expandedWidth);
    emit isCollapsedChanged(collapsed);
}

void LeftSidebarView::rebuild() {
    for (SceneItemView* row : rows_) row->deleteLater();
    rows_.clear();
    while (QLayoutItem* item = iconList_->takeAt(0)) {
        if (item->widget()) item->widget()->deleteLater();
        delete item;
    }
    const bool canDelete = scenes_.size() > 1;
    for (std::size_t i = 0; i < scenes_.size(); ++i) {
        const StreamingScene& scene = scenes_[i];
        const bool selected = selectedId_ && *selectedId_ == scene.id;
        auto* row = new SceneItemView(scene, int(i) + 1, selected, canDelete);
        row->setLive(liveSceneId_ && *liveSceneId_ == scene.id);
        connect(row, &SceneItemView::selectRequested, this, &LeftSidebarView::sceneSelected);
        connect(row, &SceneItemView::deleteRequested, this, &LeftSidebarView::sceneDeleteRequested);
        list_->insertWidget(list_->count() - 1, row);
        rows_.push_back(row);

        auto* icon = new CollapsedSceneButton(scene, int(i) + 1, selected);
        connect(icon, &QPushButton::clicked, this, [this, scene] { emit sceneSelected(scene); });
        iconList_->addWidget(icon, 0, Qt::AlignHCenter);
    }
}

}  // namespace orvane

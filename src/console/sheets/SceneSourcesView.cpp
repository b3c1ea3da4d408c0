#include "console/sheets/SceneSourcesView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QTimer>
#include <QVBoxLayout>

#include "console/controls/SidebarStyle.h"
#include "console/controls/SymbolButton.h"
#include "console/controls/Theme.h"
#include "console/sheets/AddSourceView.h"
#include "console/sheets/SourceItemView.h"
#include "document/Log.h"
#include "engine/StreamManager.h"

namespace orvane {

SceneSourcesView::SceneSourcesView(StreamManager& streamManager, const StreamingScene& scene,
                                   CaptureBackend* capture, QWidget* parent)
    : QDialog(parent), streamManager_(streamManager), capture_(capture), localScene_(scene) {
    const QString heading = QStringLiteral("Manage Sources - ") + QString::fromStdString(scene.name);
    setWindowTitle(heading);
    setModal(true);
    setFixedSize(500, 600);
    setObjectName(QStringLiteral("sceneSourcesView"));
    setStyleSheet(QStringLiteral("#sceneSourcesView { background: #1c2129; }"));

    syncTimer_ = new QTimer(this);
    syncTimer_->setSingleShot(true);
    syncTimer_->setInterval(syncDelayMs);
    connect(syncTimer_, &QTimer::timeout, this, &SceneSourcesView::syncToBinding);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(20, 16, 20, 16);
    column->setSpacing(12);

    auto* head = new QHBoxLayout;
    title_ = SidebarStyle::label(heading, 17, Theme::Weight::bold);
    title_->setWordWrap(true);
    head->addWidget(title_, 1);
    done_ = new SymbolButton(QStringLiteral("Done"), std::string());
    SymbolButton::Look doneLook;
    doneLook.background = Theme::purple();
    doneLook.fontSize = 12;
    doneLook.paddingX = 14;
    doneLook.paddingY = 6;
    doneLook.bold = true;
    static_cast<SymbolButton*>(done_)->setLook(doneLook);
    connect(done_, &QPushButton::clicked, this, &QDialog::accept);
    head->addWidget(done_, 0, Qt::AlignTop);
    column->addLayout(head);
    column->addWidget(SidebarStyle::divider());

    auto* sourcesHead = new QHBoxLayout;
    sourcesHead->addWidget(SidebarStyle::head(QStringLiteral("SOURCES")));
    sourcesHead->addStretch();
    add_ = new SymbolButton(QStringLiteral("Add Source"), "plus.circle.fill");
    SymbolButton::Look addLook;
    addLook.foreground = Theme::purple();
    addLook.background = Theme::withAlpha(Theme::purple(), 0.15);
    addLook.fontSize = 12;
    addLook.symbolSize = 12;
    addLook.paddingY = 5;
    static_cast<SymbolButton*>(add_)->setLook(addLook);
    connect(add_, &QPushButton::clicked, this, [this] { showAddSource(); });
    sourcesHead->addWidget(add_);
    column->addLayout(sourcesHead);

    empty_ = new QWidget;
    auto* emptyColumn = new QVBoxLayout(empty_);
    emptyColumn->setSpacing(6);
    emptyColumn->addStretch();
    emptyColumn->addWidget(SidebarStyle::symbol("rectangle.stack.badge.plus", 40, Theme::gray()), 0, Qt::AlignHCenter);
    emptyColumn->addWidget(SidebarStyle::label(QStringLiteral("No sources added"), 15, Theme::Weight::medium,
                                               Theme::white(0.8)),
                           0, Qt::AlignHCenter);
    emptyColumn->addWidget(SidebarStyle::caption(QStringLiteral("Click 'Add Source' to get started"), 12), 0,
                           Qt::AlignHCenter);
    emptyColumn->addStretch();
    column->addWidget(empty_, 1);

    scroll_ = new QScrollArea;
    scroll_->setWidgetResizable(true);
    scroll_->setFrameShape(QFrame::NoFrame);
    auto* listHolder = new QWidget;
    list_ = new QVBoxLayout(listHolder);
    list_->setContentsMargins(0, 0, 0, 0);
    list_->setSpacing(6);
    list_->addStretch();
    scroll_->setWidget(listHolder);
    column->addWidget(scroll_, 1);

    refreshList();
    done_->setFocus();
}

QString SceneSourcesView::title() const { return title_->text(); }

bool SceneSourcesView::isSyncScheduled() const { return syncTimer_->isActive(); }

void SceneSourcesView::markAsChanged() {
    hasUnsavedChanges_ = true;
    logLine("📝 Scene marked as changed, sources count: " + std::to_string(localScene_.sources.size()));
    // Every change replaces the pending write: one write, after the last.
    syncTimer_->start();
}

void SceneSourcesView::syncToBinding() {
    syncTimer_->stop();
    if (!hasUnsavedChanges_) return;
    const StreamingScene scene = localScene_;
    emit sceneSynced(scene);
    streamManager_.updateScene(scene);
    hasUnsavedChanges_ = false;
    logLine("🔄 Synced scene changes to binding");
}

void SceneSourcesView::addSource(const Source& source) {
    localScene_.sources.push_back(source);
    refreshList();
    markAsChanged();
}

void SceneSourcesView::deleteSource(const Uuid& id) {
    const auto before = localScene_.sources.size();
    std::erase_if(localScene_.sources, [&](const Source& s) { return s.id == id; });
    if (localScene_.sources.size() == before) return;
    refreshList();
    markAsChanged();
}

AddSourceView* SceneSourcesView::showAddSource() {
    auto* sheet = new AddSourceView(localScene_, capture_, this);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    connect(sheet, &AddSourceView::sourceAdded, this, &SceneSourcesView::addSource);
    sheet->open();
    return sheet;
}

void SceneSourcesView::done(int result) {
    // Closing by any way writes what is still waiting.
    syncToBinding();
    QDialog::done(result);
}

void SceneSourcesView::refreshList() {
    for (SourceItemView* item : items_) {
        item->hide();
        item->deleteLater();
    }
    items_.clear();
    const bool any = !localScene_.sources.empty();
    empty_->setVisible(!any);
    scroll_->setVisible(any);
    int at = 0;
    for (const Source& source : localScene_.sources) {
        auto* item = new SourceItemView(source);
        connect(item, &SourceItemView::deleteRequested, this, &SceneSourcesView::deleteSource);
        list_->insertWidget(at++, item);
        items_.push_back(item);
    }
}

}  // namespace orvane

#include "console/scene_tab/SceneSourcesList.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "console/controls/SidebarStyle.h"
#include "console/controls/SymbolButton.h"
#include "console/scene_tab/SourceRowView.h"

namespace orvane {

SceneSourcesList::SceneSourcesList(QWidget* parent) : QWidget(parent) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    auto* headRow = new QHBoxLayout;
    headRow->setSpacing(6);
    headRow->addWidget(SidebarStyle::head(QStringLiteral("SOURCES")));
    headRow->addStretch();
    manage_ = SidebarStyle::iconButton("arrow.up.forward.square", QStringLiteral("Manage Sources"), Theme::white(0.7),
                                       13);
    connect(manage_, &QPushButton::clicked, this, &SceneSourcesList::manageRequested);
    headRow->addWidget(manage_);
    column->addLayout(headRow);

    empty_ = new QWidget;
    auto* emptyColumn = new QVBoxLayout(empty_);
    emptyColumn->setContentsMargins(0, 8, 0, 8);
    emptyColumn->setSpacing(4);
    emptyColumn->addWidget(SidebarStyle::symbol("rectangle.stack.badge.plus", 30, Theme::gray()), 0, Qt::AlignHCenter);
    QLabel* none = SidebarStyle::label(QStringLiteral("No sources in this scene"), 11, Theme::Weight::medium,
                                       Theme::white(0.7));
    emptyColumn->addWidget(none, 0, Qt::AlignHCenter);
    emptyColumn->addWidget(SidebarStyle::caption(QStringLiteral("Add sources below")), 0, Qt::AlignHCenter);
    column->addWidget(empty_);

    list_ = new QVBoxLayout;
    list_->setSpacing(2);
    column->addLayout(list_);
}

void SceneSourcesList::setScene(const std::optional<StreamingScene>& scene) {
    for (SourceRowView* row : rows_) {
        row->hide();
        row->deleteLater();
    }
    rows_.clear();
    const bool hasSources = scene && !scene->sources.empty();
    empty_->setVisible(scene && !hasSources);
    if (!hasSources) return;
    for (const Source& source : scene->sources) {
        const bool selected = scene->selectedSourceId && *scene->selectedSourceId == source.id;
        auto* row = new SourceRowView(source, selected);
        connect(row, &SourceRowView::selectRequested, this, &SceneSourcesList::selectRequested);
        connect(row, &SourceRowView::deleteRequested, this, &SceneSourcesList::deleteRequested);
        list_->addWidget(row);
        rows_.push_back(row);
    }
}

}  // namespace orvane

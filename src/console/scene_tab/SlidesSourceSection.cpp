#include "console/scene_tab/SlidesSourceSection.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "console/controls/SidebarStyle.h"
#include "console/controls/Theme.h"
#include "document/Log.h"
#include "slides/editor/SlidesEditorView.h"

namespace orvane {

namespace {

const Source* selectedSlides(const std::optional<StreamingScene>& scene) {
    if (!scene) return nullptr;
    const Source* source = scene->selectedSource();
    if (!source || source->type != SourceType::content) return nullptr;
    return source->configuration.contentType == ContentType::slides ? source : nullptr;
}

}  // namespace

SlidesSourceSection::SlidesSourceSection(SceneEditor editor, QWidget* parent)
    : QWidget(parent), editor_(std::move(editor)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    column->addWidget(SidebarStyle::head(QStringLiteral("SLIDES")));
    edit_ = new QPushButton;
    edit_->setAccessibleName(QStringLiteral("Edit Slides"));
    edit_->setMinimumHeight(34);
    edit_->setStyleSheet(QStringLiteral("QPushButton { text-align: left; padding: 6px 10px; color: white; "
                                        "background: rgba(255,255,255,0.08); border: none; border-radius: 6px; }"
                                        "QPushButton:hover { background: rgba(255,255,255,0.14); }"));
    column->addWidget(edit_);
    connect(edit_, &QPushButton::clicked, this, &SlidesSourceSection::openEditor);
    setScene(std::nullopt);
}

void SlidesSourceSection::setScene(const std::optional<StreamingScene>& scene) {
    scene_ = scene;
    const Source* source = selectedSlides(scene_);
    setVisible(source != nullptr);
    if (!source) return;
    const size_t count =
        source->configuration.slidesResource ? source->configuration.slidesResource->slides.size() : 0;
    edit_->setText(QStringLiteral("Edit Slides    %1%2").arg(count).arg(count == 1 ? QStringLiteral(" slide")
                                                                                      : QStringLiteral(" slides")));
}

void SlidesSourceSection::openEditor() {
    const Source* source = selectedSlides(scene_);
    if (!source) return;
    const Uuid sourceId = source->id;
    const bool hasDeck = source->configuration.slidesResource.has_value();
    logLine("🔍 Opening slides editor for source: " + source->name);
    logLine(std::string("🔍 Source has slidesResource: ") + (hasDeck ? "true" : "false"));
    logLine("🔍 Slides count: " +
            std::to_string(hasDeck ? source->configuration.slidesResource->slides.size() : 0));

    if (!hasDeck) {
        // Nothing to edit: say so instead of opening an empty editor.
        QDialog error(window());
        error.setWindowTitle(QStringLiteral("Error Loading Slides"));
        auto* column = new QVBoxLayout(&error);
        column->addWidget(SidebarStyle::symbol("exclamationmark.triangle", 40, Theme::orange()), 0, Qt::AlignHCenter);
        column->addWidget(SidebarStyle::label(QStringLiteral("Error Loading Slides"), 15, Theme::Weight::semibold), 0,
                          Qt::AlignHCenter);
        auto* close = new QPushButton(QStringLiteral("Close"));
        connect(close, &QPushButton::clicked, &error, &QDialog::accept);
        column->addWidget(close, 0, Qt::AlignHCenter);
        error.exec();
        return;
    }
    SlidesEditorView sheet(*source->configuration.slidesResource, loader_, window());
    sheet.exec();
    updateSlidesResource(sourceId, sheet.deck());
}

void SlidesSourceSection::updateSlidesResource(const Uuid& sourceId, const SlidesResource& deck) {
    editor_([&](StreamingScene& scene) {
        for (Source& source : scene.sources)
            if (source.id == sourceId) source.configuration.slidesResource = deck;
    });
}

}  // namespace orvane

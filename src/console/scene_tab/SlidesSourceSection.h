#pragma once

#include <QWidget>
#include <optional>

#include "console/scene_tab/SceneEdit.h"
#include "document/Uuid.h"
#include "slides/SlideImageLoader.h"

class QLabel;
class QPushButton;

namespace orvane {

// The scene tab's block for a selected slides source: "SLIDES" and the row
// that opens the slides editor on a copy of the deck. Closing the editor
// writes the deck back into that source.
class SlidesSourceSection : public QWidget {
    Q_OBJECT
public:
    explicit SlidesSourceSection(SceneEditor editor, QWidget* parent = nullptr);

    void setScene(const std::optional<StreamingScene>& scene);
    QPushButton* editButton() const { return edit_; }

public slots:
    void openEditor();

private:
    void updateSlidesResource(const Uuid& sourceId, const SlidesResource& deck);

    SceneEditor editor_;
    std::optional<StreamingScene> scene_;
    SlideImageLoader loader_;  // shared by every editor this block opens
    QPushButton* edit_ = nullptr;
};

}  // namespace orvane

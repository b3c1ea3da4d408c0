#pragma once

#include <QWidget>

#include "document/SlidesResource.h"
#include "slides/SlidesRenderer.h"

namespace orvane {

class SlideImageLoader;

// The live preview of the slide being edited: arranged as the stages draw it
// but read by the editor's own Markdown reader, in a 16:9 box, without a
// page control.
class SlidePreviewView : public QWidget {
    Q_OBJECT
public:
    explicit SlidePreviewView(SlideImageLoader& loader, QWidget* parent = nullptr);

    void show(const SlidesResource& deck, const Slide& slide);
    // The 16:9 box the slide is drawn in.
    QRectF slideBox() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    SlidesRenderer renderer_;
    SlidesResource deck_;
    Slide slide_;
};

}  // namespace orvane

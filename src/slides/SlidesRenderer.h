#pragma once

#include <QPointF>
#include <QRectF>

#include "document/SlidesResource.h"
#include "slides/SlideGeometry.h"

class QPainter;
class QPaintDevice;

namespace orvane {

class SlideImageLoader;

// Paints one page of a deck into a box: the slide's background, its image
// and Markdown text, and the page control under it; the empty state when the
// page does not exist. The page shown is the caller's (each place that shows
// a deck keeps its own); clicks come back through hitTest.
class SlidesRenderer {
public:
    enum class PageButton { none, previous, next };

    // The loader is shared so that fetched images are cached across places;
    // it must outlive the renderer.
    explicit SlidesRenderer(SlideImageLoader& loader);

    struct Painted {
        double reach = 0;      // how far the body can scroll: 0 when it fits
        bool loading = false;  // a picture is on its way: its spinner turns with time
    };

    // `scroll` (points, from the top) moves the slide's body up within its
    // area above the page control, as far as its text and picture reach
    // below it. `now` (seconds) turns the spinner of a picture being
    // fetched, one spoke every eighth of a second.
    Painted paint(QPainter& painter, QRectF box, const SlidesResource& deck, int currentIndex, double scroll = 0,
                  double now = 0);

    // One slide on its background and with the stages' arrangement, but
    // without the page control, its text read by the editor's own reader
    // (MarkdownTextView) at the preview's sizes: the editor's preview.
    void paintPreview(QPainter& painter, QRectF box, const SlidesResource& deck, const Slide& slide);

    // Which page button lies under a point of the box (box coordinates,
    // origin at the box's top left). Buttons take clicks whether or not they
    // would act.
    static PageButton hitTest(QPointF point, QSizeF view, const SlidesResource& deck, int currentIndex,
                              const QPaintDevice* device);

    // The page after pressing a button: previous acts from the second page
    // on, next up to the last; otherwise the page stays.
    static int pageAfter(PageButton button, int currentIndex, int slideCount);

    // The slide on show, or none when the index is out of range.
    static const Slide* slideAt(const SlidesResource& deck, int index);

    static PageControlLayout pageControlLayout(QSizeF view, int currentIndex, int slideCount,
                                               const QPaintDevice* device);

private:
    // Who reads the slide's text: the stage (full dialect, stage sizes, room
    // for the page control) or the editor's preview.
    enum class Reading { stage, editorPreview };

    Painted paintSlide(QPainter& painter, QSizeF view, const SlidesResource& deck, const Slide& slide,
                       Reading reading, double scroll, double now);
    void paintPageControl(QPainter& painter, QSizeF view, int currentIndex, int slideCount);

    SlideImageLoader& loader_;
};

}  // namespace orvane

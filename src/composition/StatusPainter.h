#pragma once

#include <QRectF>
#include <QString>
#include <string_view>

#include "composition/FrameSource.h"
#include "document/DocumentEnums.h"

class QPainter;

namespace orvane {

// The small centred columns shown where a picture is missing: a capture that
// is starting, has failed or is idle; the content placeholder; the empty
// scene.
class StatusPainter {
public:
    // The states of a screen or window source without a frame, centred in
    // `box`. While a capture starts its progress ring turns with `now`
    // (seconds), one spoke every eighth of a second.
    static void paintCaptureState(QPainter& painter, QRectF box, const SourceFrame& frame, SourceType type,
                                  double now = 0);

    // Where the `index`th of `count` states goes when several stacked
    // sources have no picture at once: one band each, top to bottom, so that
    // their messages sit one above the other instead of on top of each other.
    // One state keeps the whole box.
    static QRectF stackedSlot(QRectF box, int index, int count);

    // Spokes of the progress ring per second.
    static constexpr double kSpinnerSteps = 8;

    // Placeholder for content without a renderer (text, image, web).
    static void paintContentPlaceholder(QPainter& painter, QRectF box, const QString& name);

    // A scene without sources.
    static void paintEmptyScene(QPainter& painter, QRectF canvas);

    // A symbol above one or two lines of text, centred in `box`. Sizes in
    // canvas points.
    struct Line {
        QString text;
        double size = 13;
        int weight = 400;
        QColor color;
    };
    static void paintColumn(QPainter& painter, QRectF box, std::string_view symbol, double symbolSize,
                            const QColor& symbolColor, double spacing, std::initializer_list<Line> lines);

    static const char* symbolForSourceType(SourceType type);
};

}  // namespace orvane

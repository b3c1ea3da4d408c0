#include "composition/StatusPainter.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>
#include <vector>

#include "paint/PixelFont.h"
#include "paint/SymbolPainter.h"

namespace orvane {

namespace {

const QColor kGrey(142, 142, 147);

}  // namespace

const char* StatusPainter::symbolForSourceType(SourceType type) {
    switch (type) {
    case SourceType::camera: return "video.fill";
    case SourceType::screen: return "rectangle.on.rectangle";
    case SourceType::window: return "macwindow";
    case SourceType::content: return "doc.fill";
    }
    return "doc.fill";
}

QRectF StatusPainter::stackedSlot(QRectF box, int index, int count) {
    if (count <= 1 || index < 0 || index >= count) return box;
    const double band = box.height() / count;
    return QRectF(box.left(), box.top() + band * index, box.width(), band);
}

void StatusPainter::paintColumn(QPainter& painter, QRectF box, std::string_view symbol, double symbolSize,
                                const QColor& symbolColor, double spacing, std::initializer_list<Line> lines) {
    struct Laid {
        QFont font;
        QRectF bounds;
        const Line* line;
    };
    std::vector<Laid> laid;
    double height = symbolSize;
    for (const Line& line : lines) {
        QFont font = PixelFont::system(line.size, static_cast<QFont::Weight>(line.weight), painter.device());
        const QRectF bounds = PixelFont::metrics(font, painter.device()).boundingRect(box, Qt::AlignHCenter | Qt::TextWordWrap, line.text);
        laid.push_back({font, bounds, &line});
        height += spacing + bounds.height();
    }
    double y = box.center().y() - height / 2;
    if (!symbol.empty())
        SymbolPainter::draw(painter, symbol, QPointF(box.center().x(), y + symbolSize / 2), symbolSize, symbolColor);
    y += symbolSize;
    painter.save();
    for (const Laid& l : laid) {
        y += spacing;
        painter.setFont(l.font);
        painter.setPen(l.line->color);
        painter.drawText(QRectF(box.left(), y, box.width(), l.bounds.height()),
                         Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, l.line->text);
        y += l.bounds.height();
    }
    painter.restore();
}

void StatusPainter::paintCaptureState(QPainter& painter, QRectF box, const SourceFrame& frame, SourceType type,
                                      double now) {
    switch (frame.state) {
    case SourceFrame::State::frame: return;
    case SourceFrame::State::starting: {
        // A progress ring at 1.5 times the usual 20 points; it turns in
        // steps of one spoke, a full turn a second.
        const double ring = 30;
        const double turn = std::isfinite(now) ? std::floor(std::fmod(now * kSpinnerSteps, 8.0)) : 0.0;
        const double textSize = 13;
        const QPointF centre(box.center().x(), box.center().y() - (8 + textSize) / 2);
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        for (int i = 0; i < 8; ++i) {
            QColor c(255, 255, 255, 60 + i * 24);
            painter.setPen(QPen(c, ring * 0.09, Qt::SolidLine, Qt::RoundCap));
            const double a = (i + turn) * 3.14159265358979 / 4;
            const QPointF dir(std::cos(a), std::sin(a));
            painter.drawLine(centre + dir * ring * 0.25, centre + dir * ring * 0.45);
        }
        painter.restore();
        paintColumn(painter, QRectF(box.left(), centre.y() + ring / 2, box.width(), textSize * 2), {}, 0,
                    Qt::transparent, 0, {{QStringLiteral("Starting capture..."), textSize, 400, Qt::white}});
        return;
    }
    case SourceFrame::State::failed:
        paintColumn(painter, box, "exclamationmark.triangle", 40, QColor(255, 149, 0), 8,
                    {{frame.message, 13, 400, Qt::white}});
        return;
    case SourceFrame::State::idle: {
        QColor grey = kGrey;
        grey.setAlphaF(0.5f);
        paintColumn(painter, box, symbolForSourceType(type), 40, grey, 8,
                    {{QStringLiteral("No capture"), 13, 400, kGrey}});
        return;
    }
    }
}

void StatusPainter::paintContentPlaceholder(QPainter& painter, QRectF box, const QString& name) {
    paintColumn(painter, box, "doc.fill", 40, kGrey, 8, {{name, 13, 400, kGrey}});
}

void StatusPainter::paintEmptyScene(QPainter& painter, QRectF canvas) {
    QColor faded = kGrey;
    faded.setAlphaF(0.5f);
    paintColumn(painter, canvas, "rectangle.stack.badge.plus", 50, faded, 16,
                {{QStringLiteral("No sources in this scene"), 14, 500, Qt::white},
                 {QStringLiteral("Add sources from the sidebar"), 12, 400, kGrey}});
}

}  // namespace orvane

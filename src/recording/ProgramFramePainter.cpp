#include "recording/ProgramFramePainter.h"

#include <QPainter>

#include "paint/PixelFont.h"
#include "composition/SceneRenderInputs.h"
#include "paint/SymbolPainter.h"
#include "recording/ProgramSnapshot.h"

namespace orvane {

void ProgramFramePainter::paint(QPainter& painter, QSize canvas, const ProgramSnapshot& snapshot, double now) {
    painter.fillRect(QRect(QPoint(0, 0), canvas), Qt::black);
    if (!snapshot.programScene) {
        paintNoProgram(painter, canvas);
    } else {
        SceneRenderInputs inputs;
        inputs.scene = &*snapshot.programScene;
        inputs.presetBranding = snapshot.branding ? &*snapshot.branding : nullptr;
        inputs.progressBar = snapshot.progressBar ? &*snapshot.progressBar : nullptr;
        inputs.isProgram = true;
        inputs.isBlurModeActive = snapshot.isBlurModeActive;
        inputs.sceneUpdateTimestamp = 0;  // the pop-out window's fixed trigger
        inputs.frames = snapshot.frames.get();
        painter.save();
        renderer_.render(painter, QSizeF(canvas), inputs, now);
        painter.restore();
    }
    if (snapshot.isDrawingModeEnabled) {
        DrawingOverlay overlay;
        overlay.paint(painter, snapshot.drawing, snapshot.drawingSelection);
    }
}

void ProgramFramePainter::paintNoProgram(QPainter& painter, QSize canvas) {
    // A centred column, 16 apart: symbol (60), title (18), subtitle (13).
    const QPaintDevice* device = painter.device();
    const QFont title = PixelFont::system(18, QFont::Medium, device);
    const QFont subtitle = PixelFont::system(13, QFont::Normal, device);
    const double titleHeight = PixelFont::metrics(title, device).height();
    const double subtitleHeight = PixelFont::metrics(subtitle, device).height();
    const double spacing = 16;
    const double total = 60 + spacing + titleHeight + spacing + subtitleHeight;
    double y = (canvas.height() - total) / 2;
    const double width = canvas.width();

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    QColor grey(142, 142, 147);
    QColor halfGrey = grey;
    halfGrey.setAlphaF(0.5);
    SymbolPainter::draw(painter, "video.slash", QPointF(width / 2, y + 30), 60, halfGrey);
    y += 60 + spacing;
    painter.setFont(title);
    painter.setPen(Qt::white);
    painter.drawText(QRectF(0, y, width, titleHeight), Qt::AlignCenter, QStringLiteral("No Program Active"));
    y += titleHeight + spacing;
    painter.setFont(subtitle);
    painter.setPen(grey);
    painter.drawText(QRectF(0, y, width, subtitleHeight), Qt::AlignCenter, QStringLiteral("Virtual Camera Ready"));
    painter.restore();
}

}  // namespace orvane

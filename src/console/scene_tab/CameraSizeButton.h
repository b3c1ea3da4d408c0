#pragma once

#include "console/controls/SelectableTile.h"
#include "document/DocumentEnums.h"

namespace orvane {

// One of the three camera sizes: a frame with a picture in its corner whose
// size grows from small to large, so the three read apart at a glance.
class CameraSizeButton : public SelectableTile {
    Q_OBJECT

public:
    explicit CameraSizeButton(CameraOverlaySize size, QWidget* parent = nullptr);

    CameraOverlaySize size() const { return size_; }
    static QString title(CameraOverlaySize size);
    // The corner picture's width as a share of the frame's.
    static double share(CameraOverlaySize size);

protected:
    void paintFigure(QPainter& painter, const QRectF& area) override;

private:
    CameraOverlaySize size_;
};

}  // namespace orvane

#include "capture/CaptureTarget.h"

namespace orvane {

QString CaptureTarget::key() const {
    return QStringLiteral("%1:%2:%3x%4@%5:cursor=%6,%7,%8x%9")
        .arg(kind == Kind::display ? QStringLiteral("display") : QStringLiteral("window"))
        .arg(id)
        .arg(outputSize.width())
        .arg(outputSize.height())
        .arg(framesPerSecond)
        .arg(cursorRegion.x())
        .arg(cursorRegion.y())
        .arg(cursorRegion.width())
        .arg(cursorRegion.height());
}

}  // namespace orvane

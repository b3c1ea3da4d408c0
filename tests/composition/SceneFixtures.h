#pragma once

#include <QImage>

#include "document/StreamingScene.h"

namespace orvane::test {

Source makeSource(SourceType type, const std::string& name = "source");
StreamingScene solidScene(QColor background, SceneLayout layout = SceneLayout::fullScreen);
QImage solidFrame(QColor color, QSize size = QSize(1920, 1080));

}  // namespace orvane::test

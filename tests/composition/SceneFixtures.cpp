#include "SceneFixtures.h"

namespace orvane::test {

Source makeSource(SourceType type, const std::string& name) {
    Source s;
    s.type = type;
    s.name = name;
    if (type == SourceType::content) s.configuration.contentType = ContentType::text;
    return s;
}

StreamingScene solidScene(QColor background, SceneLayout layout) {
    StreamingScene scene;
    scene.backgroundType = BackgroundType::solid;
    scene.backgroundColor = {background.redF(), background.greenF(), background.blueF(), background.alphaF()};
    scene.layout = layout;
    return scene;
}

QImage solidFrame(QColor color, QSize size) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

}  // namespace orvane::test

#include "document/StreamingScene.h"

namespace orvane {

const Source* StreamingScene::selectedSource() const {
    if (!selectedSourceId) return nullptr;
    for (const auto& source : sources)
        if (source.id == *selectedSourceId) return &source;
    return nullptr;
}

Source* StreamingScene::selectedSource() {
    return const_cast<Source*>(std::as_const(*this).selectedSource());
}

}  // namespace orvane

#include "engine/ProgramCopy.h"

namespace orvane {

StreamingScene makeProgramCopy(const StreamingScene& scene) {
    StreamingScene copy = scene;
    copy.id = Uuid::generate();
    copy.selectedSourceId.reset();
    return copy;
}

}  // namespace orvane

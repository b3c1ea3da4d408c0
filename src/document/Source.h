#pragma once

#include <string>

#include "document/DocumentEnums.h"
#include "document/SourceConfiguration.h"
#include "document/Uuid.h"

namespace orvane {

// One input of a scene. Deliberately has no equality.
struct Source {
    Uuid id = Uuid::generate();
    SourceType type = SourceType::camera;
    std::string name;
    SourceConfiguration configuration;
};

}  // namespace orvane

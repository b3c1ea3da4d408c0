#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "document/CodableColor.h"
#include "document/DocumentEnums.h"
#include "document/Geometry.h"
#include "document/SlidesResource.h"

namespace orvane {

// The one flat settings record of a source, whatever its type. Fields that
// do not apply to a type keep their defaults and are stored all the same.
// Deliberately has no equality.
struct SourceConfiguration {
    Point position{0, 0};
    Size size{300, 200};
    std::optional<std::string> cameraDeviceId;
    std::optional<std::uint32_t> screenId;
    std::optional<std::uint32_t> windowId;
    std::optional<std::string> windowTitle;
    std::optional<std::string> windowOwner;
    std::optional<ContentType> contentType;
    std::optional<SlidesResource> slidesResource;
    bool isBlurred = false;
    double brightness = 1.0;
    double scale = 0.8;
    double horizontalOffset = 0;
    double verticalOffset = 0;
    CodableColor backgroundColor{0, 0, 0, 1};
    bool borderEnabled = false;
    CodableColor borderColor{1, 1, 1, 1};
    double borderWidth = 4;
    double borderGlow = 0;
    double borderRadius = 8;
    bool shadowEnabled = true;
    CodableColor shadowColor{0, 0, 0, 0.8};
    double shadowRadius = 20;
    double shadowX = 0;
    double shadowY = 8;
    CameraShape cameraShape = CameraShape::rectangle;
    CameraOverlayPosition cameraPosition = CameraOverlayPosition::bottomRight;
    CameraOverlaySize cameraSize = CameraOverlaySize::medium;
    bool isOverlay = false;
    bool cameraBorderEnabled = true;
    CodableColor cameraBorderColor{1, 1, 1, 0.8};
    double cameraBorderWidth = 3;
    double cameraBorderGlow = 0;
    double cameraBorderRadius = 8;
    double cameraZoom = 1;
    double cameraWidth = 1;
    double cameraHeight = 1;
    double cameraHorizontalPosition = 0;
    double cameraVerticalPosition = 0;
    double cameraBrightness = 0;  // added to the picture
    double cameraContrast = 1;    // factor
};

}  // namespace orvane

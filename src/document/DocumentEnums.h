#pragma once

// Every enumeration stored in a preset file, with its stored strings letter
// for letter (blanks, capitals, the slash and the arrows are file format).

#include "document/EnumStrings.h"

namespace orvane {

#define ORVANE_ENUM_STRINGS(E, N, ...)                                            \
    template <>                                                                   \
    struct EnumStrings<E> {                                                       \
        static constexpr std::array<std::pair<E, std::string_view>, N> table{{__VA_ARGS__}}; \
    }

enum class SourceType { camera = 1, screen, window, content };
ORVANE_ENUM_STRINGS(SourceType, 4,
    {SourceType::camera, "camera"}, {SourceType::screen, "screen"},
    {SourceType::window, "window"}, {SourceType::content, "content"});

enum class BackgroundType { solid = 1, gradient };
ORVANE_ENUM_STRINGS(BackgroundType, 2,
    {BackgroundType::solid, "solid"}, {BackgroundType::gradient, "gradient"});

enum class GradientDirection {
    topToBottom = 1, bottomToTop, leftToRight, rightToLeft,
    topLeftToBottomRight, topRightToBottomLeft, radial
};
ORVANE_ENUM_STRINGS(GradientDirection, 7,
    {GradientDirection::topToBottom, "Top to Bottom"},
    {GradientDirection::bottomToTop, "Bottom to Top"},
    {GradientDirection::leftToRight, "Left to Right"},
    {GradientDirection::rightToLeft, "Right to Left"},
    {GradientDirection::topLeftToBottomRight, "Diagonal \u2198"},
    {GradientDirection::topRightToBottomLeft, "Diagonal \u2199"},
    {GradientDirection::radial, "Radial"});

enum class SceneLayout {
    fullCamera = 1, fullScreen, splitHorizontal, pipBottomRight, pipBottomLeft,
    pipTopRight, pipTopLeft, cameraLeft, cameraRight
};
ORVANE_ENUM_STRINGS(SceneLayout, 9,
    {SceneLayout::fullCamera, "Full Camera"},
    {SceneLayout::fullScreen, "Full Screen"},
    {SceneLayout::splitHorizontal, "Split 50/50"},
    {SceneLayout::pipBottomRight, "PIP Bottom Right"},
    {SceneLayout::pipBottomLeft, "PIP Bottom Left"},
    {SceneLayout::pipTopRight, "PIP Top Right"},
    {SceneLayout::pipTopLeft, "PIP Top Left"},
    {SceneLayout::cameraLeft, "Camera Left"},
    {SceneLayout::cameraRight, "Camera Right"});

enum class ContentType { text = 1, image, web, slides };
ORVANE_ENUM_STRINGS(ContentType, 4,
    {ContentType::text, "text"}, {ContentType::image, "image"},
    {ContentType::web, "web"}, {ContentType::slides, "slides"});

enum class CameraShape { rectangle = 1, circle, verticalRectangle };
ORVANE_ENUM_STRINGS(CameraShape, 3,
    {CameraShape::rectangle, "rectangle"}, {CameraShape::circle, "circle"},
    {CameraShape::verticalRectangle, "verticalRectangle"});

enum class CameraOverlayPosition { topLeft = 1, topRight, bottomLeft, bottomRight };
ORVANE_ENUM_STRINGS(CameraOverlayPosition, 4,
    {CameraOverlayPosition::topLeft, "topLeft"}, {CameraOverlayPosition::topRight, "topRight"},
    {CameraOverlayPosition::bottomLeft, "bottomLeft"}, {CameraOverlayPosition::bottomRight, "bottomRight"});

enum class CameraOverlaySize { small = 1, medium, large };
ORVANE_ENUM_STRINGS(CameraOverlaySize, 3,
    {CameraOverlaySize::small, "small"}, {CameraOverlaySize::medium, "medium"},
    {CameraOverlaySize::large, "large"});

enum class TransitionType {
    none = 1, fade, crossDissolve, slideLeft, slideRight, slideUp, slideDown, scale, fadeScale
};
ORVANE_ENUM_STRINGS(TransitionType, 9,
    {TransitionType::none, "None"},
    {TransitionType::fade, "Fade"},
    {TransitionType::crossDissolve, "Cross Dissolve"},
    {TransitionType::slideLeft, "Slide Left"},
    {TransitionType::slideRight, "Slide Right"},
    {TransitionType::slideUp, "Slide Up"},
    {TransitionType::slideDown, "Slide Down"},
    {TransitionType::scale, "Scale"},
    {TransitionType::fadeScale, "Fade + Scale"});

enum class BrandingPosition { topLeft = 1, topRight, bottomLeft, bottomRight };
ORVANE_ENUM_STRINGS(BrandingPosition, 4,
    {BrandingPosition::topLeft, "topLeft"}, {BrandingPosition::topRight, "topRight"},
    {BrandingPosition::bottomLeft, "bottomLeft"}, {BrandingPosition::bottomRight, "bottomRight"});

enum class ProgressBarOrientation { horizontal = 1, vertical };
ORVANE_ENUM_STRINGS(ProgressBarOrientation, 2,
    {ProgressBarOrientation::horizontal, "horizontal"}, {ProgressBarOrientation::vertical, "vertical"});

enum class ProgressBarPosition { top = 1, bottom, left, right };
ORVANE_ENUM_STRINGS(ProgressBarPosition, 4,
    {ProgressBarPosition::top, "top"}, {ProgressBarPosition::bottom, "bottom"},
    {ProgressBarPosition::left, "left"}, {ProgressBarPosition::right, "right"});

enum class TeleprompterPosition { top = 1, bottom, left, right, floating };
ORVANE_ENUM_STRINGS(TeleprompterPosition, 5,
    {TeleprompterPosition::top, "top"}, {TeleprompterPosition::bottom, "bottom"},
    {TeleprompterPosition::left, "left"}, {TeleprompterPosition::right, "right"},
    {TeleprompterPosition::floating, "floating"});

enum class TextAlignment { leading = 1, center, trailing };
ORVANE_ENUM_STRINGS(TextAlignment, 3,
    {TextAlignment::leading, "leading"}, {TextAlignment::center, "center"},
    {TextAlignment::trailing, "trailing"});

enum class ImagePosition { top = 1, bottom, left, right, background };
ORVANE_ENUM_STRINGS(ImagePosition, 5,
    {ImagePosition::top, "top"}, {ImagePosition::bottom, "bottom"},
    {ImagePosition::left, "left"}, {ImagePosition::right, "right"},
    {ImagePosition::background, "background"});

enum class ImageSize { small = 1, medium, large, full };
ORVANE_ENUM_STRINGS(ImageSize, 4,
    {ImageSize::small, "small"}, {ImageSize::medium, "medium"},
    {ImageSize::large, "large"}, {ImageSize::full, "full"});

enum class PresetTemplate { streaming = 1, presentation, gaming, custom };
ORVANE_ENUM_STRINGS(PresetTemplate, 4,
    {PresetTemplate::streaming, "Streaming"}, {PresetTemplate::presentation, "Presentation"},
    {PresetTemplate::gaming, "Gaming"}, {PresetTemplate::custom, "Custom"});

#undef ORVANE_ENUM_STRINGS

}  // namespace orvane

#pragma once

// The one strict JSON codec for every record of the document.
//
// Writing: keys in declaration order, optional fields left out when empty,
// points and sizes as two-element arrays, doubles in their shortest form that
// reads back the same, pretty-printed, "/" escaped as "\/".
// Reading: a missing key, a null, a wrong JSON type or an unknown stored
// string fails the whole document with one error naming the first failure by
// its path ("scenes[2].sources[0].configuration.cameraContrast: missing key").
// Unknown keys are ignored. `Slide` alone reads tolerantly.

#include <optional>
#include <string>
#include <string_view>

#include "document/Preset.h"

namespace orvane {

template <typename T>
struct Decoded {
    std::optional<T> value;
    std::string error;  // "path: message" when value is empty

    explicit operator bool() const { return value.has_value(); }
};

std::string encodePreset(const Preset& preset);
Decoded<Preset> decodePreset(std::string_view json);

// Any single record, for tests and for sections handled on their own.
// Defined for Preset, StreamingScene, Source, SourceConfiguration,
// CodableColor, SceneTransitionConfig, BrandingConfig, ProgressBarConfig,
// ProgressStep, TeleprompterConfig, SlidesResource and Slide.
template <typename T>
std::string encodeRecord(const T& record);
template <typename T>
Decoded<T> decodeRecord(std::string_view json);

}  // namespace orvane

#pragma once

// The document codec as it was first written, on top of nlohmann::json: it
// builds an ordered_json tree to write and parses into a json value to read.
// Kept for the tests only, as the reference that the streaming writer and
// the flat reader must agree with byte for byte and verdict for verdict.

#include <string>
#include <string_view>

#include "document/DocumentCodec.h"

namespace orvane::testing {

template <typename T>
std::string referenceEncodeRecord(const T& record);
template <typename T>
Decoded<T> referenceDecodeRecord(std::string_view json);

}  // namespace orvane::testing

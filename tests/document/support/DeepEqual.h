#pragma once

#include "document/Preset.h"

namespace orvane::testing {

// Field-by-field comparison for the records whose own equality looks at the
// id alone (or that have none), so round trips can be checked in full.
bool deepEqual(const SourceConfiguration& a, const SourceConfiguration& b);
bool deepEqual(const Source& a, const Source& b);
bool deepEqual(const SlidesResource& a, const SlidesResource& b);
bool deepEqual(const StreamingScene& a, const StreamingScene& b);
bool deepEqual(const Preset& a, const Preset& b);

}  // namespace orvane::testing

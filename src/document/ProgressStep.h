#pragma once

#include <string>

#include "document/HashCombine.h"
#include "document/Uuid.h"

namespace orvane {

// One step of the progress bar; the overlay sorts steps by `order`.
struct ProgressStep {
    Uuid id = Uuid::generate();
    std::string title;
    bool isCompleted = false;
    int order = 0;

    friend bool operator==(const ProgressStep&, const ProgressStep&) = default;
};

}  // namespace orvane

template <>
struct std::hash<orvane::ProgressStep> {
    std::size_t operator()(const orvane::ProgressStep& s) const noexcept {
        return orvane::hashFields(s.id, s.title, s.isCompleted, s.order);
    }
};

#pragma once

namespace orvane {

// Assigns and tells whether the value changed, so a published property
// emits its change signal only when there is a change.
template <typename T>
bool assignIfChanged(T& field, const T& value) {
    if (field == value) return false;
    field = value;
    return true;
}

}  // namespace orvane

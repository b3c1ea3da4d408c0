#pragma once

namespace orvane {

// Points and sizes of the document, in view points. Stored as two-element
// JSON arrays.
struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

}  // namespace orvane

#pragma once

#include "CoreTypes/Coding/JSONForm.hpp"
#include "CoreTypes/Model/Geometry.hpp"

namespace screenweaver {

/// A point as the two-element array of numbers `[x, y]`; any other count of elements fails.
template <>
struct JSONForm<Point> {
    static void write(JSONWriter& writer, const Point& point);
    static bool read(JSONReader& reader, JSONValue& value, Point& result);
};

}  // namespace screenweaver

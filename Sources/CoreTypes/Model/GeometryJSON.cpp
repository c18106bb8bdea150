#include "CoreTypes/Model/GeometryJSON.hpp"

namespace screenweaver {

void JSONForm<Point>::write(JSONWriter& writer, const Point& point) {
    writer.beginArray();
    writer.number(point.x);
    writer.number(point.y);
    writer.endArray();
}

std::expected<Point, DecodingError> JSONForm<Point>::read(const JSONValue& value) {
    auto elements = coding::array(value);
    if (!elements) {
        return std::unexpected(std::move(elements.error()));
    }
    if (elements->size() != 2) {
        return std::unexpected(
            DecodingError::dataCorrupted("Expected a point as an array of two numbers [x, y]."));
    }
    auto x = JSONForm<double>::read(elements->at(0).value_unsafe());
    if (!x) {
        return std::unexpected(std::move(x.error().prependIndex(0)));
    }
    auto y = JSONForm<double>::read(elements->at(1).value_unsafe());
    if (!y) {
        return std::unexpected(std::move(y.error().prependIndex(1)));
    }
    return Point{*x, *y};
}

}  // namespace screenweaver

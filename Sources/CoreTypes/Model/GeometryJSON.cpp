#include "CoreTypes/Model/GeometryJSON.hpp"

namespace screenweaver {

void JSONForm<Point>::write(JSONWriter& writer, const Point& point) {
    writer.beginArray();
    writer.number(point.x);
    writer.number(point.y);
    writer.endArray();
}

bool JSONForm<Point>::read(JSONReader& reader, JSONValue& value, Point& result) {
    std::size_t count = 0;
    const bool read = reader.readArray(
        value,
        [&](JSONValue& element) {
            if (count >= 2) {
                return reader.skip(element);
            }
            return reader.number(element, count == 0 ? result.x : result.y);
        },
        count);
    if (reader.malformed()) {
        return false;
    }
    // The elements are counted first, whatever they say.
    if (count != 2) {
        return reader.fail(
            DecodingError::dataCorrupted("Expected a point as an array of two numbers [x, y]."));
    }
    return read;
}

}  // namespace screenweaver

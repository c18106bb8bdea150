#include "CoreTypes/Coding/JSONCoding.hpp"

namespace screenweaver::coding {

std::expected<JSONValue, DecodingError> parse(std::string_view json) {
    // One parser per thread keeps its buffers between documents; a decode never parses again
    // while it still reads the value.
    thread_local simdjson::dom::parser parser;
    JSONValue value;
    if (parser.parse(json.data(), json.size()).get(value) != simdjson::SUCCESS) {
        return std::unexpected(DecodingError::dataCorrupted("The given data was not valid JSON."));
    }
    return value;
}

}  // namespace screenweaver::coding

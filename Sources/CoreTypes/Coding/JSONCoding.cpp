#include "CoreTypes/Coding/JSONCoding.hpp"

#include <algorithm>
#include <vector>

namespace screenweaver::coding {

std::expected<JSONValue, DecodingError> parse(std::string_view json) {
    // One parser per thread keeps its buffers between documents; a decode never parses again
    // while it still reads the value.
    thread_local simdjson::dom::parser parser;
    // The parser reads a few bytes past the end of its input: the text is copied into a padded
    // buffer of this thread's, which grows to the largest document and is then reused.
    thread_local std::vector<char> padded;
    const std::size_t paddedSize = json.size() + simdjson::SIMDJSON_PADDING;
    if (padded.size() < paddedSize) {
        padded.resize(paddedSize);
    }
    std::copy(json.begin(), json.end(), padded.begin());
    JSONValue value;
    if (parser.parse(padded.data(), json.size(), false).get(value) != simdjson::SUCCESS) {
        return std::unexpected(DecodingError::dataCorrupted("The given data was not valid JSON."));
    }
    return value;
}

}  // namespace screenweaver::coding

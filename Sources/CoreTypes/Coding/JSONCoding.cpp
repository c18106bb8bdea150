#include "CoreTypes/Coding/JSONCoding.hpp"

#include <simdjson.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

namespace screenweaver::coding {

namespace {

// The parser's first stage and the buffers of this thread, kept between documents: they grow to
// the largest document read and are then reused.
struct ThreadParser {
    std::unique_ptr<simdjson::internal::dom_parser_implementation> parser;
    std::vector<char> text;
    std::vector<char> unescaped;
    // Room for a document of `length` characters.
    bool reserve(std::size_t length) {
        // The first stage needs room for at least a small document.
        const std::size_t capacity = std::max<std::size_t>(length, 4096);
        if (!parser) {
            if (simdjson::get_active_implementation()->create_dom_parser_implementation(
                    capacity, JSONReader::maximumDepth, parser) != simdjson::SUCCESS) {
                parser.reset();
                return false;
            }
        } else if (parser->capacity() < length && parser->set_capacity(capacity) != simdjson::SUCCESS) {
            return false;
        }
        if (text.size() < length + simdjson::SIMDJSON_PADDING) {
            text.resize(length + simdjson::SIMDJSON_PADDING);
            unescaped.resize(length + simdjson::SIMDJSON_PADDING);
        }
        return true;
    }
};

}  // namespace

bool JSONDocument::open(std::string_view json) {
    thread_local ThreadParser thread;
    if (json.empty() || !thread.reserve(json.size())) {
        return reader_.markMalformed();
    }
    // The first stage reads the text where it stands: it reads whole blocks only while a whole block
    // is left, and copies the last part of one itself.
    if (thread.parser->stage1(reinterpret_cast<const std::uint8_t*>(json.data()), json.size(),
                              simdjson::stage1_mode::regular) != simdjson::SUCCESS) {
        return reader_.markMalformed();
    }
    static_assert(simdjson::SIMDJSON_PADDING >= JSONTokens::readableAhead);
    std::memcpy(thread.text.data(), json.data(), json.size());
    // What a longer text left behind must not read as more of this one.
    std::memset(thread.text.data() + json.size(), 0, simdjson::SIMDJSON_PADDING);
    reader_.start(JSONTokens{thread.text.data(), thread.parser->structural_indexes.get(),
                             static_cast<std::uint32_t>(thread.parser->n_structural_indexes),
                             thread.parser.get(), thread.unescaped.data()});
    return true;
}

std::expected<void, DecodingError> JSONDocument::close(bool read) {
    // The one value, and nothing after it.
    if (!reader_.malformed() && !reader_.atEnd()) {
        reader_.markMalformed();
    }
    if (reader_.malformed()) {
        return std::unexpected(DecodingError::dataCorrupted("The given data was not valid JSON."));
    }
    if (!read) {
        return std::unexpected(reader_.takeError());
    }
    return {};
}

}  // namespace screenweaver::coding

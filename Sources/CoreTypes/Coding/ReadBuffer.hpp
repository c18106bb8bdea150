#pragma once

#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

#include "CoreTypes/Coding/JSONReader.hpp"

namespace screenweaver::coding {

/// The elements of one array being read. An array's length is known only at its end, so its
/// elements wait in a buffer of this thread's, one a type, and then move into storage allocated
/// once at their number. Arrays within arrays stack in the same buffer, each from where the one
/// around it stands. The buffer keeps its capacity, so once a thread has read a document, reading
/// another of its size allocates nothing but the value it builds.
template <class Element>
class ReadBuffer {
public:
    ReadBuffer() : elements_(threadBuffer()), base_(elements_.size()) {}
    ReadBuffer(const ReadBuffer&) = delete;
    ReadBuffer& operator=(const ReadBuffer&) = delete;
    ~ReadBuffer() {
        elements_.erase(elements_.begin() + static_cast<std::ptrdiff_t>(base_), elements_.end());
    }

    /// Reads the elements of the array `value` into the buffer, as `JSONReader::readArray` does;
    /// `count` is their number.
    bool read(JSONReader& reader, JSONValue& value, std::size_t& count) {
        return reader.readArray(
            value,
            [&](JSONValue& element) {
                // Read into a value of its own first: an element that holds arrays of its own type
                // would stack them in this buffer while it is read.
                Element next{};
                if (!reader.read(element, next)) {
                    return false;
                }
                push(std::move(next));
                return true;
            },
            count);
    }

    /// Keeps `element`, the next one of the array.
    void push(Element&& element) { elements_.push_back(std::move(element)); }

    /// Moves the elements kept into `sequence`, which is empty, in one allocation.
    template <class Sequence>
    void moveInto(Sequence& sequence) {
        const auto first = elements_.begin() + static_cast<std::ptrdiff_t>(base_);
        sequence.reserve(static_cast<std::size_t>(elements_.end() - first));
        sequence.insert(sequence.end(), std::make_move_iterator(first),
                        std::make_move_iterator(elements_.end()));
    }

private:
    static std::vector<Element>& threadBuffer() {
        thread_local std::vector<Element> elements;
        return elements;
    }

    std::vector<Element>& elements_;
    // Where this array's elements begin.
    std::size_t base_;
};

}  // namespace screenweaver::coding

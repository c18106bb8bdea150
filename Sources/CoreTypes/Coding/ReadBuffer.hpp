#pragma once

#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

#include "CoreTypes/Coding/JSONReader.hpp"

namespace screenweaver::coding {

/// The elements of one array being read. An array's length is known only at its end, so its
/// elements are read straight into a buffer of this thread's, one a type, and then move into
/// storage allocated once at their number. The buffer keeps its capacity, so once a thread has read
/// a document, reading another of its size allocates nothing but the value it builds. An array of
/// a type read within an element of the same type (a tree) gets a buffer of its own: the element
/// being read sits in the thread's buffer, which must not move under it.
template <class Element>
class ReadBuffer {
public:
    ReadBuffer() : elements_(openCount()++ == 0 ? threadBuffer() : own_) {}
    ReadBuffer(const ReadBuffer&) = delete;
    ReadBuffer& operator=(const ReadBuffer&) = delete;
    ~ReadBuffer() {
        elements_.clear();
        --openCount();
    }

    /// Reads the elements of the array `value` into the buffer, as `JSONReader::readArray` does;
    /// `count` is their number.
    bool read(JSONReader& reader, JSONValue& value, std::size_t& count) {
        return reader.readArray(
            value, [&](JSONValue& element) { return reader.read(element, next()); }, count);
    }

    /// A new element at the end, for the next one of the array to be read into.
    Element& next() { return elements_.emplace_back(); }

    /// Moves the elements kept into `sequence`, which is empty, in one allocation.
    template <class Sequence>
    void moveInto(Sequence& sequence) {
        sequence.reserve(elements_.size());
        sequence.insert(sequence.end(), std::make_move_iterator(elements_.begin()),
                        std::make_move_iterator(elements_.end()));
    }

private:
    static std::vector<Element>& threadBuffer() {
        thread_local std::vector<Element> elements;
        return elements;
    }
    // The buffers of this type open on this thread.
    static std::size_t& openCount() {
        thread_local std::size_t count = 0;
        return count;
    }

    std::vector<Element> own_;
    std::vector<Element>& elements_;
};

}  // namespace screenweaver::coding

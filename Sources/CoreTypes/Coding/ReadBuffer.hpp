#pragma once

#include <cstddef>
#include <iterator>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "CoreTypes/Coding/JSONReader.hpp"

namespace screenweaver::coding {

/// An allocator that builds an element given nothing by default-initialising it, so that its
/// members' own initialisers alone give it its value. Value-initialising it, as `emplace_back()`
/// does, first clears the whole element (GCC does it with `rep stos`, whose start-up alone cost
/// about as much as reading a small element), whenever a member's type has a constructor the
/// compiler wrote. Every record read through a `ReadBuffer` initialises each of its members, and a
/// number or a flag is written by its read before anything uses it.
template <class T>
struct DefaultInitialising : std::allocator<T> {
    using value_type = T;
    // Spelled out: a standard library that still gives `std::allocator` a `rebind` would rebind
    // this one to a plain `std::allocator`.
    template <class U>
    struct rebind {
        using other = DefaultInitialising<U>;
    };
    DefaultInitialising() = default;
    template <class U>
    explicit DefaultInitialising(const DefaultInitialising<U>&) noexcept {}

    template <class U, class... Arguments>
    void construct(U* element, Arguments&&... arguments) {
        if constexpr (sizeof...(Arguments) == 0) {
            ::new (static_cast<void*>(element)) U;
        } else {
            ::new (static_cast<void*>(element)) U(std::forward<Arguments>(arguments)...);
        }
    }
};

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

    /// Moves the elements kept into `sequence`, which is empty, in one allocation, each as
    /// `convert` makes it of the element.
    template <class Sequence, class Convert>
    void moveInto(Sequence& sequence, Convert convert) {
        sequence.reserve(elements_.size());
        for (Element& element : elements_) {
            sequence.push_back(convert(std::move(element)));
        }
    }

private:
    using Elements = std::vector<Element, DefaultInitialising<Element>>;

    static Elements& threadBuffer() {
        thread_local Elements elements;
        return elements;
    }
    // The buffers of this type open on this thread.
    static std::size_t& openCount() {
        thread_local std::size_t count = 0;
        return count;
    }

    Elements own_;
    Elements& elements_;
};

}  // namespace screenweaver::coding

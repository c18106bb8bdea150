#pragma once

#include <expected>
#include <optional>
#include <string_view>
#include <type_traits>

#include "CoreTypes/Coding/JSONForm.hpp"

namespace screenweaver {

/// Reads the members of one JSON object into a record, field by field, keeping the first error:
/// once a read fails, the later reads do nothing and `finish` returns that error, its path
/// starting at the failing key. Keys the record does not ask for are ignored.
///
///     KeyedReader reader{value};
///     KeyCombo combo;
///     reader.required("keyCode", combo.keyCode);
///     reader.required("modifiers", combo.modifiers);
///     return reader.finish(combo);
class KeyedReader {
public:
    /// A value that is not an object fails at once (null as value-not-found, anything else as a
    /// type mismatch).
    explicit KeyedReader(const JSONValue& value) {
        auto members = coding::object(value);
        if (members) {
            object_ = *members;
        } else {
            error_ = std::move(members.error());
        }
    }

    /// The member `key`, which must be there and must not be null.
    template <class T>
    void required(std::string_view key, T& field) {
        if (error_) {
            return;
        }
        JSONValue member;
        if (object_.at_key(key).get(member) != simdjson::SUCCESS) {
            error_ = DecodingError::keyNotFound(key);
            return;
        }
        store(key, member, field);
    }

    /// The member `key`; missing or null leaves the field absent.
    template <class T>
    void optional(std::string_view key, std::optional<T>& field) {
        const auto member = present(key);
        if (!member) {
            field.reset();
            return;
        }
        T value{};
        if (store(key, *member, value)) {
            field = std::move(value);
        }
    }

    /// The member `key` when it carries a value; missing or null leaves the field as it was
    /// (a default set before).
    template <class T>
    void ifPresent(std::string_view key, T& field) {
        if (const auto member = present(key)) {
            store(key, *member, field);
        }
    }

    /// The raw member `key`, when the object has it (null included); for fields whose absence and
    /// null mean different things.
    [[nodiscard]] std::optional<JSONValue> member(std::string_view key) const {
        JSONValue value;
        if (error_ || object_.at_key(key).get(value) != simdjson::SUCCESS) {
            return std::nullopt;
        }
        return value;
    }

    /// Reads `value` as the member `key` into `field`; false (keeping the error) if it fails.
    template <class T>
    bool store(std::string_view key, const JSONValue& value, T& field) {
        auto decoded = JSONForm<T>::read(value);
        if (!decoded) {
            error_ = std::move(decoded.error().prependKey(key));
            return false;
        }
        field = std::move(*decoded);
        return true;
    }

    [[nodiscard]] bool failed() const { return error_.has_value(); }

    /// The record read, or the first error.
    template <class T>
    std::expected<std::remove_cvref_t<T>, DecodingError> finish(T&& record) {
        if (error_) {
            return std::unexpected(std::move(*error_));
        }
        return std::forward<T>(record);
    }

private:
    // The member `key` if it is there and not null.
    std::optional<JSONValue> present(std::string_view key) const {
        auto value = member(key);
        if (value && value->is_null()) {
            return std::nullopt;
        }
        return value;
    }

    simdjson::dom::object object_;
    std::optional<DecodingError> error_;
};

}  // namespace screenweaver

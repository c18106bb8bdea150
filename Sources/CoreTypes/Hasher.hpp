#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <type_traits>
#include <vector>

namespace screenweaver {

/// Feeds the fields of a value, in declaration order, into one hash. Every record's `std::hash`
/// goes through it, so equal values hash alike by construction:
/// - an optional feeds a presence marker, then its value when present;
/// - a double feeds negative zero as zero (0.0 and -0.0 are equal, so they must hash alike);
/// - an array feeds its count, then its elements in order;
/// - a set or a map feeds its count, then a sum of its elements' hashes, which does not depend on
///   the order in which the elements happen to be stored;
/// - a time point feeds its count of ticks since the epoch.
class Hasher {
public:
    Hasher& combine(std::uint64_t bits) {
        // The mixing step of splitmix64 over the running state.
        state_ += bits + 0x9E3779B97F4A7C15ULL;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27U)) * 0x94D049BB133111EBULL;
        state_ = z ^ (z >> 31U);
        return *this;
    }

    Hasher& combine(bool value) { return combine(std::uint64_t{value ? 1U : 0U}); }

    template <class Integer>
    requires(std::is_integral_v<Integer> && !std::is_same_v<Integer, bool>) Hasher& combine(Integer value) {
        return combine(static_cast<std::uint64_t>(value));
    }

    Hasher& combine(double value) {
        const double normalized = value == 0.0 ? 0.0 : value;
        return combine(std::hash<double>{}(normalized));
    }

    Hasher& combine(std::string_view text) { return combine(std::hash<std::string_view>{}(text)); }

    template <class T>
    Hasher& combine(const std::optional<T>& value) {
        combine(value.has_value());
        if (value) {
            combine(*value);
        }
        return *this;
    }

    template <class T>
    Hasher& combine(const std::vector<T>& values) {
        combine(values.size());
        for (const auto& value : values) {
            combine(value);
        }
        return *this;
    }

    /// A set: count, then the sum of its elements' hashes.
    template <class Set>
    requires requires {
        typename Set::key_type;
    } &&(!requires { typename Set::mapped_type; })Hasher& combine(const Set& values) {
        std::uint64_t sum = 0;
        for (const auto& value : values) {
            sum += Hasher{}.combine(value).state_;
        }
        return combine(values.size()).combine(sum);
    }

    /// A map: count, then the sum of its entries' hashes.
    template <class Map>
    requires requires { typename Map::mapped_type; }
    Hasher& combine(const Map& entries) {
        std::uint64_t sum = 0;
        for (const auto& [key, value] : entries) {
            sum += Hasher{}.combine(key).combine(value).state_;
        }
        return combine(entries.size()).combine(sum);
    }

    template <class Clock, class Duration>
    Hasher& combine(const std::chrono::time_point<Clock, Duration>& time) {
        return combine(static_cast<std::int64_t>(time.time_since_epoch().count()));
    }

    /// Any other type is fed through its own `std::hash`.
    template <class T>
    requires(!std::is_arithmetic_v<T> && !std::is_convertible_v<const T&, std::string_view> &&
             !requires { typename T::key_type; }) Hasher& combine(const T& value) {
        return combine(static_cast<std::uint64_t>(std::hash<T>{}(value)));
    }

    /// Feeds several fields in order.
    template <class... Fields>
    Hasher& combineAll(const Fields&... fields) {
        (combine(fields), ...);
        return *this;
    }

    [[nodiscard]] std::size_t finalize() const { return static_cast<std::size_t>(state_); }

private:
    std::uint64_t state_ = 0;
};

/// Hashes `fields` in order; the body of most `std::hash` specialisations.
template <class... Fields>
std::size_t hashFields(const Fields&... fields) {
    return Hasher{}.combineAll(fields...).finalize();
}

}  // namespace screenweaver

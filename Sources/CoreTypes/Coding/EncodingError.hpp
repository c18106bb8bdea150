#pragma once

#include <string>

namespace screenweaver {

/// Why a value could not be written as JSON: it holds a number that JSON cannot carry (NaN or an
/// infinity) or a date outside the years 0000 to 9999.
struct EncodingError {
    std::string debugDescription;

    /// The textual form: `invalidValue(debugDescription: "...")`.
    [[nodiscard]] std::string description() const;

    friend bool operator==(const EncodingError&, const EncodingError&) = default;
};

}  // namespace screenweaver

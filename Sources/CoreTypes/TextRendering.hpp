#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace screenweaver::text {

/// A double as the system's messages print it: the shortest digits that read back as the same
/// double, at least one fractional digit for integral values (`60.0`, `480.0`), exponential form
/// above 2^53 or below 1e-4 (`1e+16`, `1.5e-07`), `inf`, `-inf` and `nan`.
std::string describe(double value);

/// A string as it stands inside an error's textual form: in double quotes, with `\`, `"`, NUL,
/// line feed, carriage return and tab escaped by a backslash and every other control character as
/// `\u{1B}`. Everything else, non-ASCII text included, is written as it is.
std::string quoted(std::string_view value);

/// Builds the textual form of one enum case: `name` alone without payload, else
/// `name(label: value, value, ...)`, an empty label standing for an unlabelled value.
///
///     CaseDescription{"migrationFailed"}.integer("from", 3).integer("to", 4).string("reason", "x").str()
///     // migrationFailed(from: 3, to: 4, reason: "x")
class CaseDescription {
public:
    explicit CaseDescription(std::string_view caseName);

    CaseDescription& string(std::string_view label, std::string_view value);
    CaseDescription& integer(std::string_view label, std::int64_t value);
    CaseDescription& unsignedInteger(std::string_view label, std::uint64_t value);
    CaseDescription& boolean(std::string_view label, bool value);
    CaseDescription& real(std::string_view label, double value);
    /// A value already rendered (a UUID's text, another enum's qualified form).
    CaseDescription& rendered(std::string_view label, std::string_view text);

    [[nodiscard]] std::string str() const;

private:
    std::string text_;
    bool hasPayload_ = false;
};

}  // namespace screenweaver::text

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "CoreTypes/Model/Date.hpp"

namespace screenweaver::ISO8601 {

/// `2026-11-21T09:30:00Z`, or `2026-11-21T09:30:00.25Z` when the date has a fraction of a second
/// (microseconds, trailing zeros dropped). Nothing for a date outside the years 0000 to 9999,
/// which the four-digit year cannot hold.
[[nodiscard]] std::optional<std::string> format(const Date& date);

/// The longest text `format` gives: `YYYY-MM-DDTHH:MM:SS.ffffffZ`.
inline constexpr std::size_t longestText = 27;

/// The text of `format`, written to `out`, which has room for `longestText` characters; the number
/// written, 0 for a date outside the years 0000 to 9999.
[[nodiscard]] std::size_t write(const Date& date, char* out);

/// The inverse of `format`: exactly `YYYY-MM-DDTHH:MM:SS`, optionally `.` and one to six digits,
/// then `Z`, with every field in its calendar range. Anything else gives nothing.
[[nodiscard]] std::optional<Date> parse(std::string_view text);

}  // namespace screenweaver::ISO8601

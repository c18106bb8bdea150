#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "CoreTypes/Model/DisplayRef.hpp"

namespace screenweaver::DisplayRefKey {

/// The one-line text form of a reference: "virtual:" and the UUID's upper-case text, or
/// "physical:" and the ColorSync UUID text unchanged.
///
///     string(DisplayRef::physical("1552-4-0"))  // "physical:1552-4-0"
[[nodiscard]] std::string string(const DisplayRef& ref);

/// The reference a key names: the text before the first ":" picks the case (exactly "virtual"
/// or "physical"), the rest is its payload, further colons included. A "virtual:" key whose rest
/// is not a UUID, any other prefix and a text without a colon give nothing.
[[nodiscard]] std::optional<DisplayRef> ref(std::string_view key);

/// The order of the keys' texts, computed without building them: every physical key sorts
/// before every virtual one, physical keys by their text, virtual keys by their UUID (whose
/// upper-case text sorts as its bytes do). Gives written maps and sets a stable order.
[[nodiscard]] bool less(const DisplayRef& lhs, const DisplayRef& rhs);

}  // namespace screenweaver::DisplayRefKey

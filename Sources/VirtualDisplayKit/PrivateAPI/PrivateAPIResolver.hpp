#pragma once

#include <optional>
#include <span>
#include <string_view>
#include <unordered_map>

#include "Platform/ObjCRuntime.hpp"
#include "VirtualDisplayKit/PrivateAPI/ResolvedPrivateAPI.hpp"

/// Finds the private virtual-display classes in the Objective-C runtime and checks that each one's
/// instances answer every selector the builder will send. Nothing here fails loudly: the first
/// problem found is logged and the answer is "nothing".
namespace screenweaver::PrivateAPIResolver {

/// For each class name, its required selectors in the order they are checked. Built once.
[[nodiscard]] const std::unordered_map<std::string_view, std::span<const std::string_view>>&
requiredSelectors();

/// The class registered under `name` when its instances answer all of its required selectors;
/// Nil otherwise, after logging "private class <name> is absent" or "private class <name> lacks
/// <selector>" for the first selector missing. A name outside the four private classes is Nil at
/// once, without a lookup or a log entry.
[[nodiscard]] Class validatedClass(const platform::ObjCRuntime& runtime, std::string_view name);

/// The four classes, looked up in the order descriptor, mode, settings, display and stopping at the
/// first that fails. Without an Objective-C runtime (any system but macOS) there is nothing to find.
[[nodiscard]] std::optional<ResolvedPrivateAPI> resolve(const platform::ObjCRuntimeAPI* runtime);

}  // namespace screenweaver::PrivateAPIResolver

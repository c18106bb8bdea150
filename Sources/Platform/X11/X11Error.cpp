#include "Platform/X11/X11Error.hpp"

#include <array>
#include <fmt/format.h>
#include <string_view>

#include "CoreTypes/Overloaded.hpp"
#include "CoreTypes/TextRendering.hpp"

namespace screenweaver::platform::x11 {
namespace {

// The core protocol's error names, by code; extensions' errors have codes above these.
constexpr std::array<std::string_view, 18> coreErrorNames{
    "",          "BadRequest", "BadValue",    "BadWindow",   "BadPixmap", "BadAtom",
    "BadCursor", "BadFont",    "BadMatch",    "BadDrawable", "BadAccess", "BadAlloc",
    "BadColor",  "BadGC",      "BadIDChoice", "BadName",     "BadLength", "BadImplementation"};

}  // namespace

std::string X11Error::reason() const {
    return std::visit(
        Overloaded{
            [](const ConnectionFailed& error) { return error.reason; },
            [](const ExtensionMissing& error) { return error.reason; },
            [](const RequestFailed& error) {
                if (error.errorCode > 0 && error.errorCode < coreErrorNames.size()) {
                    return fmt::format("{} failed ({}, X error {})", error.request,
                                       coreErrorNames[error.errorCode], error.errorCode);
                }
                return fmt::format("{} failed (X error {})", error.request, error.errorCode);
            },
            [](const RequestRefused& error) {
                return fmt::format("{} refused ({})", error.request, error.status);
            },
            [](const ConnectionLost&) { return std::string{"the connection to the X server was lost"}; },
        },
        value);
}

std::string X11Error::description() const {
    using text::CaseDescription;
    return std::visit(Overloaded{
                          [](const ConnectionFailed& error) {
                              return CaseDescription{"connectionFailed"}.string("reason", error.reason).str();
                          },
                          [](const ExtensionMissing& error) {
                              return CaseDescription{"extensionMissing"}.string("reason", error.reason).str();
                          },
                          [](const RequestFailed& error) {
                              return CaseDescription{"requestFailed"}
                                  .string("request", error.request)
                                  .unsignedInteger("errorCode", error.errorCode)
                                  .str();
                          },
                          [](const RequestRefused& error) {
                              return CaseDescription{"requestRefused"}
                                  .string("request", error.request)
                                  .string("status", error.status)
                                  .str();
                          },
                          [](const ConnectionLost&) { return CaseDescription{"connectionLost"}.str(); },
                      },
                      value);
}

}  // namespace screenweaver::platform::x11

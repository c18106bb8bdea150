#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "Platform/X11/VirtualMonitorName.hpp"

// Any monitor name an X server may hold: whatever parses as one of ours writes back to a name that
// parses to the same parts.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using screenweaver::platform::x11::VirtualMonitorName;
    const auto parts = VirtualMonitorName::parse({reinterpret_cast<const char*>(data), size});
    if (parts && VirtualMonitorName::parse(parts->text()) != parts) {
        std::abort();
    }
    return 0;
}

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "Platform/X11/EDIDIdentity.hpp"

// Any bytes an output may report: an identity only for a headed base block, and then exactly the
// numbers its bytes 8 to 15 hold.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto identity = screenweaver::platform::x11::EDIDIdentity::parse(std::span{data, size});
    if (!identity) {
        return 0;
    }
    const bool headed = size >= 128 && data[0] == 0 && data[7] == 0;
    const auto serial = static_cast<std::uint32_t>(data[12] | (data[13] << 8) | (data[14] << 16)) |
                        (static_cast<std::uint32_t>(data[15]) << 24);
    if (!headed || identity->manufacturerID != ((data[8] << 8) | data[9]) ||
        identity->productCode != (data[10] | (data[11] << 8)) || identity->serialNumber != serial ||
        identity->manufacturer().size() != 3) {
        std::abort();
    }
    return 0;
}

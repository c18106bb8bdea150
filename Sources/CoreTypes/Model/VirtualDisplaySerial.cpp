#include "CoreTypes/Model/VirtualDisplaySerial.hpp"

namespace screenweaver::VirtualDisplaySerial {

std::uint32_t serialNumber(const UUID& id) {
    constexpr std::uint32_t offsetBasis = 0x811C9DC5U;
    constexpr std::uint32_t prime = 0x01000193U;
    std::uint32_t hash = offsetBasis;
    for (const std::uint8_t byte : id.bytes()) {
        hash ^= byte;
        hash *= prime;
    }
    return hash;
}

}  // namespace screenweaver::VirtualDisplaySerial

#pragma once

#include <cstdint>

#include "CoreTypes/UUID.hpp"

namespace screenweaver::VirtualDisplaySerial {

/// The serial number a virtual display is created with: 32-bit FNV-1a over the 16 bytes of its
/// spec's id, in canonical order. It depends on those bytes alone, so the same spec yields the
/// same display identity on every machine and every run.
///
///     serialNumber(UUID{})  // 0x69691905
[[nodiscard]] std::uint32_t serialNumber(const UUID& id);

}  // namespace screenweaver::VirtualDisplaySerial

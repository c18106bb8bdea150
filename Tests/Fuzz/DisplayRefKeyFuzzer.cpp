#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "CoreTypes/Model/DisplayRefKey.hpp"

// Whatever parses as a key must write back to a key that parses to the same reference.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view key{reinterpret_cast<const char*>(data), size};
    const auto ref = screenweaver::DisplayRefKey::ref(key);
    if (ref && screenweaver::DisplayRefKey::ref(screenweaver::DisplayRefKey::string(*ref)) != ref) {
        std::abort();
    }
    return 0;
}

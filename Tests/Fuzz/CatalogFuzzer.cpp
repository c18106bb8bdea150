#include <vector>

#include "CoreTypes/Model/CatalogEntryJSON.hpp"
#include "FuzzRoundTrip.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    screenweaver::fuzzing::decodeAndRoundTrip<std::vector<screenweaver::CatalogEntry>>(data, size);
    return 0;
}

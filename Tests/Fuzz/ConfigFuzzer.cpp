#include "CoreTypes/Model/ConfigJSON.hpp"
#include "FuzzRoundTrip.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    screenweaver::fuzzing::decodeAndRoundTrip<screenweaver::Config>(data, size);
    return 0;
}

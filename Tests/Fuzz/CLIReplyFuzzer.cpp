#include "CoreTypes/Model/CLIReplyJSON.hpp"
#include "FuzzRoundTrip.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    screenweaver::fuzzing::decodeAndRoundTrip<screenweaver::CLIReply>(data, size);
    return 0;
}

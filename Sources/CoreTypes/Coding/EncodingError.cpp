#include "CoreTypes/Coding/EncodingError.hpp"

#include "CoreTypes/TextRendering.hpp"

namespace screenweaver {

std::string EncodingError::description() const {
    return text::CaseDescription{"invalidValue"}.string("debugDescription", debugDescription).str();
}

}  // namespace screenweaver

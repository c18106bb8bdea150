#include "CoreTypes/Model/DynamicRange.hpp"

namespace screenweaver {

std::string_view rawValue(DynamicRange range) {
    switch (range) {
        case DynamicRange::standard:
            return "standard";
        case DynamicRange::high:
            return "high";
        case DynamicRange::reference:
            return "reference";
    }
    return "standard";
}

std::optional<DynamicRange> dynamicRangeFromRawValue(std::string_view raw) {
    for (const DynamicRange range : allDynamicRanges) {
        if (rawValue(range) == raw) {
            return range;
        }
    }
    return std::nullopt;
}

}  // namespace screenweaver

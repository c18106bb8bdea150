#include "CoreTypes/Model/DisplayRef.hpp"

#include "CoreTypes/Hasher.hpp"
#include "CoreTypes/Overloaded.hpp"
#include "CoreTypes/TextRendering.hpp"

namespace screenweaver {

std::string DisplayRef::description() const {
    return std::visit(
        Overloaded{
            [](const Virtual& ref) {
                return text::CaseDescription{"virtual"}.rendered("", ref.id.uuidString()).str();
            },
            [](const Physical& ref) {
                return text::CaseDescription{"physical"}.string("colorSyncUUID", ref.colorSyncUUID).str();
            },
        },
        value);
}

}  // namespace screenweaver

std::size_t std::hash<screenweaver::DisplayRef>::operator()(
    const screenweaver::DisplayRef& ref) const noexcept {
    return std::visit(screenweaver::Overloaded{
                          [](const screenweaver::DisplayRef::Virtual& value) {
                              return screenweaver::hashFields(0, value.id);
                          },
                          [](const screenweaver::DisplayRef::Physical& value) {
                              return screenweaver::hashFields(1, value.colorSyncUUID);
                          },
                      },
                      ref.value);
}

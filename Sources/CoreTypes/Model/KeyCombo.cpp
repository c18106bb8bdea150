#include "CoreTypes/Model/KeyCombo.hpp"

#include "CoreTypes/Hasher.hpp"

std::size_t std::hash<screenweaver::KeyCombo>::operator()(
    const screenweaver::KeyCombo& combo) const noexcept {
    return screenweaver::hashFields(combo.keyCode, combo.modifiers);
}

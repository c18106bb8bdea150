#include "CoreTypes/Model/LayoutPlan.hpp"

#include "CoreTypes/Hasher.hpp"

std::size_t std::hash<screenweaver::LayoutPlan>::operator()(
    const screenweaver::LayoutPlan& plan) const noexcept {
    return screenweaver::hashFields(plan.placements, plan.modeChanges, plan.unmirror);
}

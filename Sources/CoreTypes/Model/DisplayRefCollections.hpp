#pragma once

#include <boost/container/flat_map.hpp>
#include <boost/container/flat_set.hpp>

#include "CoreTypes/Model/DisplayRef.hpp"
#include "CoreTypes/Model/DisplayRefKey.hpp"

namespace screenweaver {

/// Orders references as their key texts sort (`DisplayRefKey::less`): every physical reference
/// before every virtual one. It is also the order in which collections of references are written,
/// so writing one is a walk from front to back.
struct DisplayRefKeyOrder {
    bool operator()(const DisplayRef& lhs, const DisplayRef& rhs) const {
        return DisplayRefKey::less(lhs, rhs);
    }
};

/// A set of display references, kept as one sorted array: the groups hold a handful of
/// references each, which an array finds faster than a hash table and stores in a single block.
/// Equal sets hold their elements in the same order, so equality and hashing never depend on the
/// order of insertion.
using DisplayRefSet = boost::container::flat_set<DisplayRef, DisplayRefKeyOrder>;

/// A map keyed by display references, kept as one sorted array of pairs, as `DisplayRefSet` is.
template <class Value>
using DisplayRefMap = boost::container::flat_map<DisplayRef, Value, DisplayRefKeyOrder>;

}  // namespace screenweaver

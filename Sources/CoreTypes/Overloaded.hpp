#pragma once

namespace screenweaver {

/// Builds one visitor out of several lambdas, one per case: `std::visit(Overloaded{...}, value)`.
template <class... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};

// clang 16 does not yet deduce aggregate template arguments on its own.
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

}  // namespace screenweaver

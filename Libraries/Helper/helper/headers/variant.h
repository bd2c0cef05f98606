#pragma once
// The discriminated union of the library. A Value's storage is one of these, and code tests the
// alternative by its zero-based number, so the numbering of a variant's alternatives is part of
// its design: new alternatives go at the end, existing ones never move.

#include <variant>

namespace Quorvane {

template <class... Alternatives>
using variant = std::variant<Alternatives...>;

}  // namespace Quorvane

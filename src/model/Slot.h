#pragma once

#include <cassert>
#include <cstddef>

namespace corvanta {

/// The place of index `index` in an array of `count`, both counted from 0. Asserts the range.
[[nodiscard]] inline std::size_t SlotOf(int index, [[maybe_unused]] int count) {
    assert(index >= 0 && index < count);
    return static_cast<std::size_t>(index);
}

} // namespace corvanta

#pragma once

#include <array>
#include <cstddef>

namespace corvanta {

/// Entry `index` of a table counted from 0, or an empty entry for an index out of range.
template <typename Entry, std::size_t Count>
[[nodiscard]] constexpr Entry EntryOrEmpty(const std::array<Entry, Count>& table, int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= Count) {
        return Entry{};
    }
    return table[static_cast<std::size_t>(index)];
}

} // namespace corvanta

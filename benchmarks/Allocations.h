#pragma once

#include <cstdint>

namespace corvanta::benchmarks {

/// How many times this thread has asked the heap for memory.
[[nodiscard]] std::int64_t Allocations();

} // namespace corvanta::benchmarks

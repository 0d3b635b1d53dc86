#include "benchmarks/Allocations.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

// The replaced operators have no other place to count in.
thread_local std::int64_t Count = 0; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

} // namespace

void* operator new(std::size_t size) {
    ++Count;
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

namespace corvanta::benchmarks {

std::int64_t Allocations() {
    return Count;
}

} // namespace corvanta::benchmarks

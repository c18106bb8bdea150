#include "AllocationCount.hpp"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

// The counters alive; while there is none, an allocation reads this and nothing more (a counted
// one takes a locked add, as much as a small allocation itself).
std::atomic<int> counters{0};
std::atomic<long> allocations{0};

}  // namespace

screenweaver::benchmarks::AllocationCounter::AllocationCounter() {
    counters.fetch_add(1);
    start_ = allocations.load();
}

screenweaver::benchmarks::AllocationCounter::~AllocationCounter() {
    counters.fetch_sub(1);
}

long screenweaver::benchmarks::AllocationCounter::count() const {
    return allocations.load() - start_;
}

void* operator new(std::size_t size) {
    if (counters.load(std::memory_order_relaxed) != 0) {
        allocations.fetch_add(1, std::memory_order_relaxed);
    }
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc{};
}

// The replacement pair allocates with malloc and frees with free; GCC cannot see that they match
// once the replacement new is inlined.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
#pragma GCC diagnostic pop

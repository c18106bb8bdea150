#pragma once

namespace screenweaver::benchmarks {

/// Counts the process's calls of `operator new` while it lives, on every thread. Outside one,
/// an allocation costs what it costs without the count: the measured loops run uncounted, and the
/// allocations of an operation are counted on a run of their own.
class AllocationCounter {
public:
    AllocationCounter();
    ~AllocationCounter();
    AllocationCounter(const AllocationCounter&) = delete;
    AllocationCounter& operator=(const AllocationCounter&) = delete;

    /// The allocations since this counter began.
    [[nodiscard]] long count() const;

private:
    long start_;
};

}  // namespace screenweaver::benchmarks

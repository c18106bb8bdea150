#pragma once

namespace screenweaver::benchmarks {

/// How many times the process has called `operator new` so far: a benchmark that links
/// AllocationCount.cpp counts every allocation of its loop by the difference of two readings.
long allocationCount();

}  // namespace screenweaver::benchmarks

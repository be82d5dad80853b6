#include "platform/sdk/od_alloc.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

#ifdef _WIN32
#include <malloc.h>
#endif

namespace {

std::atomic<std::uint64_t> allocationCount{0};

struct FailurePlan {
  std::uint64_t successesLeft = 0;
  std::uint64_t failuresLeft = 0;
};
thread_local FailurePlan failurePlan;

bool shouldFail() {
  if (failurePlan.failuresLeft == 0) return false;
  if (failurePlan.successesLeft > 0) {
    --failurePlan.successesLeft;
    return false;
  }
  if (failurePlan.failuresLeft != odrxFailForEver) --failurePlan.failuresLeft;
  return true;
}

bool countAndAdmit() {
  allocationCount.fetch_add(1, std::memory_order_relaxed);
  return !shouldFail();
}

bool isPowerOfTwo(std::size_t value) { return value != 0 && (value & (value - 1)) == 0; }

#ifdef _WIN32
// The C library of Windows keeps aligned blocks apart: free doesn't take them. It puts a pointer and
// the rounding in front of each, and not every version of it sees that their sum overflows.
void* heapAligned(std::size_t size, std::size_t alignment) {
  if (size > std::numeric_limits<std::size_t>::max() - alignment - 2 * sizeof(void*)) return nullptr;
  return _aligned_malloc(size, alignment);
}
void freeHeapAligned(void* memory) { _aligned_free(memory); }
#else
void* heapAligned(std::size_t size, std::size_t alignment) {
  const std::size_t unit = alignment < sizeof(void*) ? sizeof(void*) : alignment;
  if (size > std::numeric_limits<std::size_t>::max() - unit) return nullptr;
  // The standard wants a whole number of units.
  return std::aligned_alloc(unit, (size + unit - 1) / unit * unit);
}
void freeHeapAligned(void* memory) { std::free(memory); }
#endif

}  // namespace

// The C heap itself: memory may be handed to libraries that give it back with free.
void* odrxAlloc(std::size_t size) { return countAndAdmit() ? std::malloc(size == 0 ? 1 : size) : nullptr; }

void odrxFree(void* memory) { std::free(memory); }

void* odrxAllocAligned(std::size_t size, std::size_t alignment) {
  if (!countAndAdmit() || !isPowerOfTwo(alignment)) return nullptr;
  return heapAligned(size == 0 ? 1 : size, alignment);
}

void odrxFreeAligned(void* memory) { freeHeapAligned(memory); }

std::uint64_t odrxAllocationCount() { return allocationCount.load(std::memory_order_relaxed); }

void odrxFailAllocationsAfter(std::uint64_t successes, std::uint64_t failures) { failurePlan = {successes, failures}; }

void odrxStopFailingAllocations() { failurePlan = {}; }

void* odrxAllocObject(std::size_t size) {
  if (void* memory = odrxAlloc(size)) return memory;
  const std::new_handler handler = std::get_new_handler();
  if (!handler) throw std::bad_alloc();
  handler();
  return nullptr;
}

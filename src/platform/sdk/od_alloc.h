// The drawing SDK's allocator.
#pragma once

#include <cstddef>
#include <cstdint>

#include "drawing_sdk_export.h"

extern "C" {

/// Gives `size` bytes (at least one), aligned for any fundamental type, or null when there are none.
/// Calls no new handler and throws nothing. Free with odrxFree.
DRAWING_SDK_EXPORT void* odrxAlloc(std::size_t size);

/// Gives back what odrxAlloc gave; null is allowed.
DRAWING_SDK_EXPORT void odrxFree(void* memory);

/// As odrxAlloc, at an address that `alignment` divides: a power of two, else the result is null.
/// Free with odrxFreeAligned.
DRAWING_SDK_EXPORT void* odrxAllocAligned(std::size_t size, std::size_t alignment);

/// Gives back what odrxAllocAligned gave; null is allowed.
DRAWING_SDK_EXPORT void odrxFreeAligned(void* memory);
}

inline constexpr std::uint64_t odrxFailForEver = ~std::uint64_t{0};

/// Number of calls of odrxAlloc and odrxAllocAligned since the process started, over all threads. For tests and
/// measurements: the difference of two readings tells what a piece of code allocated.
DRAWING_SDK_EXPORT std::uint64_t odrxAllocationCount();

/// Makes odrxAlloc and odrxAllocAligned fail on the calling thread from the `successes`-th call from now on (0: the
/// very next one), `failures` times or until odrxStopFailingAllocations. For tests of exhausted memory.
DRAWING_SDK_EXPORT void odrxFailAllocationsAfter(std::uint64_t successes, std::uint64_t failures = odrxFailForEver);
DRAWING_SDK_EXPORT void odrxStopFailingAllocations();

/// One allocation after the standard new-handler protocol of a single try: when odrxAlloc gives
/// nothing, the new handler in force is called once and the result is null; without a handler
/// std::bad_alloc is thrown.
DRAWING_SDK_EXPORT void* odrxAllocObject(std::size_t size);

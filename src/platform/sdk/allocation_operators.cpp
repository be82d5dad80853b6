// The global allocation operators, replaced by the drawing SDK's allocator.
#include <new>

#include "platform/sdk/od_alloc.h"

namespace {

// The new-handler protocol: as long as there is a handler, it is called and the try repeated; a
// handler that can do no more throws, or takes itself out.
template <class Allocate>
void* allocateWithHandler(Allocate allocate) {
  for (;;) {
    if (void* memory = allocate()) return memory;
    const std::new_handler handler = std::get_new_handler();
    if (!handler) throw std::bad_alloc();
    handler();
  }
}

}  // namespace

void* operator new(std::size_t size) {
  return allocateWithHandler([size] { return odrxAlloc(size); });
}

void* operator new(std::size_t size, std::align_val_t alignment) {
  return allocateWithHandler([=] { return odrxAllocAligned(size, static_cast<std::size_t>(alignment)); });
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  try {
    return ::operator new(size);
  } catch (...) {
    return nullptr;
  }
}

void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
  try {
    return ::operator new(size, alignment);
  } catch (...) {
    return nullptr;
  }
}

void* operator new[](std::size_t size) { return ::operator new(size); }
void* operator new[](std::size_t size, std::align_val_t alignment) { return ::operator new(size, alignment); }
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept { return ::operator new(size, tag); }
void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t& tag) noexcept {
  return ::operator new(size, alignment, tag);
}

void operator delete(void* memory) noexcept { odrxFree(memory); }
void operator delete(void* memory, std::size_t) noexcept { odrxFree(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { odrxFree(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { odrxFreeAligned(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { odrxFreeAligned(memory); }
void operator delete(void* memory, std::align_val_t, const std::nothrow_t&) noexcept { odrxFreeAligned(memory); }

void operator delete[](void* memory) noexcept { odrxFree(memory); }
void operator delete[](void* memory, std::size_t) noexcept { odrxFree(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { odrxFree(memory); }
void operator delete[](void* memory, std::align_val_t) noexcept { odrxFreeAligned(memory); }
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept { odrxFreeAligned(memory); }
void operator delete[](void* memory, std::align_val_t, const std::nothrow_t&) noexcept { odrxFreeAligned(memory); }

// The object that a dynamic library gives for its module.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <new>
#include <string>
#include <utility>

#include "platform/sdk/od_rx_module.h"

/// Completes `Module`, which says what its start and stop do, to the one object of its library:
/// counted, and knowing the library's own instance. `Platform::fileNameOf(handle)` is to give the
/// path of a loaded library as wide text.
///
/// The object is deleted by deleteModule, and by the release that takes its count back to 0; the
/// next createModule then makes a new one.
template <class Module, class Platform>
class OdRxWin32Module : public Module {
 public:
  /// The library's object. The first call makes it, takes the handle over and sets the caller's to
  /// null; while it stands, further calls give it and leave `handle` alone. Without memory the new
  /// handler is called and the result is null; without a handler std::bad_alloc is thrown.
  static OdRxWin32Module* createModule(OdModuleHandle& handle) {
    if (singleton) return singleton;
    void* memory = odrxAllocObject(sizeof(OdRxWin32Module));
    if (!memory) return nullptr;
    singleton = ::new (memory) OdRxWin32Module(std::exchange(handle, nullptr));
    return singleton;
  }

  void addRef() override { references.fetch_add(1, std::memory_order_relaxed); }
  void release() override {
    if (references.fetch_sub(1, std::memory_order_acq_rel) == 1) deleteModule();
  }
  long numRefs() const override { return references.load(std::memory_order_acquire); }

  OdModuleHandle moduleHandle() override { return instance; }

  void deleteModule() override {
    singleton = nullptr;
    delete this;
  }

  /// At most as much of the path as a buffer of 260 characters holds with its closing null.
  OdString moduleFileName() const override {
    constexpr std::size_t bufferLength = 260;
    const std::wstring path = Platform::fileNameOf(instance);
    return OdString(path.substr(0, bufferLength - 1));
  }

  void operator delete(void* memory) { odrxFree(memory); }

 private:
  explicit OdRxWin32Module(OdModuleHandle handle) : instance(handle) {}
  ~OdRxWin32Module() override = default;

  inline static OdRxWin32Module* singleton = nullptr;

  std::atomic<std::int32_t> references{0};
  OdModuleHandle instance;
};

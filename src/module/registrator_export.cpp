#include "module/registrator_export.h"

#include <memory>
#include <new>

#include "platform/sdk/od_alloc.h"
#include "session/multi_registrator.h"

namespace ZOR::reg {

iMultiRegistrator* GetMultiRegistrator() {
  // The memory goes back when the constructor throws.
  std::unique_ptr<void, decltype(&odrxFree)> memory(odrxAllocObject(sizeof(MultiRegistrator)), &odrxFree);
  if (!memory) return nullptr;
  iMultiRegistrator* registrator = ::new (memory.get()) MultiRegistrator();
  static_cast<void>(memory.release());
  return registrator;
}

}  // namespace ZOR::reg

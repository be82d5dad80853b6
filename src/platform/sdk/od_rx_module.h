// The frame of a module of the drawing SDK.
#pragma once

#include <atomic>

#include "platform/sdk/od_alloc.h"
#include "platform/sdk/od_rx_object.h"
#include "platform/sdk/od_string.h"

/// The library's own instance, as its loader knows it.
using OdModuleHandle = void*;

/// A loadable module. The SDK makes its object through the export odrxCreateModuleObject, starts
/// it, and deletes it when the module is unloaded.
class DRAWING_SDK_EXPORT OdRxModule : public OdRxObject {
 public:
  static const OdRxClass* desc();
  const OdRxClass* isA() const override;

  virtual OdModuleHandle moduleHandle() = 0;
  virtual void deleteModule() = 0;
  virtual void initApp() = 0;
  virtual void uninitApp() = 0;
  virtual OdString moduleFileName() const = 0;
};

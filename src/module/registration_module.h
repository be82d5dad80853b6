// The module as the drawing SDK sees it.
#pragma once

#include <string>

#include "platform/sdk/od_rx_win32_module.h"

namespace ZOR::reg {

/// Nothing is set up at the start: the command is there from the loading of the library on, and
/// sessions are made when the host asks for them.
class TSL_RegistrationModule : public OdRxModule {
 public:
  void initApp() override {}
  void uninitApp() override {}

  static std::wstring fileNameOf(OdModuleHandle library);
};

/// The one object of this library.
using RegistrationModuleObject = OdRxWin32Module<TSL_RegistrationModule, TSL_RegistrationModule>;

}  // namespace ZOR::reg

#include "module/registration_module.h"

#include "platform/os/loaded_modules.h"

namespace ZOR::reg {

std::wstring TSL_RegistrationModule::fileNameOf(OdModuleHandle library) {
  return tiepoint::os::moduleFileName(library);
}

}  // namespace ZOR::reg

// What the drawing SDK asks a module for.
#include <cstdint>

#include "module/export.h"
#include "module/registration_module.h"

extern "C" {

/// The version of the drawing SDK that this module is built for.
TSL_REGISTRATION_EXPORT void odrxGetAPIVersion(std::int32_t& major, std::int32_t& minor, std::int32_t& majorBuild,
                                               std::int32_t& minorBuild) {
  major = 21;
  minor = 8;
  majorBuild = 0;
  minorBuild = 0;
}

/// The module's object; takes over the library's handle when it makes it.
TSL_REGISTRATION_EXPORT OdRxModule* odrxCreateModuleObject(OdModuleHandle* handle) {
  return ZOR::reg::RegistrationModuleObject::createModule(*handle);
}
}

#include "module.h"

#include <array>
#include <cstdint>
#include <stdexcept>

namespace foreign {

namespace {

#ifdef _MSC_VER
constexpr const char* sessionExport = "?GetMultiRegistrator@reg@ZOR@@YAPEAViMultiRegistrator@12@XZ";
#else
constexpr const char* sessionExport = "_ZN3ZOR3reg19GetMultiRegistratorEv";
#endif

using VersionFunction = void (*)(std::int32_t&, std::int32_t&, std::int32_t&, std::int32_t&);
using CreateFunction = OdRxModule* (*)(OdModuleHandle*);

template <class Function>
Function required(LibraryHandle library, const char* name) {
  const Export found = exportOf(library, name);
  if (!found) throw std::runtime_error(std::string("the module has no export ") + name);
  return reinterpret_cast<Function>(found);
}

}  // namespace

Module::Module(Host& host_, const std::filesystem::path& file) : host(host_), library(loadLibrary(file)) {
  try {
    start();
  } catch (...) {
    unloadLibrary(library);
    throw;
  }
}

void Module::start() {
  std::array<std::int32_t, 4> version{};
  required<VersionFunction>(library, "odrxGetAPIVersion")(version[0], version[1], version[2], version[3]);
  if (version != std::array<std::int32_t, 4>{21, 8, 0, 0}) throw std::runtime_error("the module has another version");
  getRegistrator = required<ZOR::reg::GetMultiRegistratorFunction>(library, sessionExport);
  OdModuleHandle handle = library;
  object = required<CreateFunction>(library, "odrxCreateModuleObject")(&handle);
  if (!object || handle) throw std::runtime_error("the module didn't take its handle");
  object->addRef();
  object->initApp();
}

Module::~Module() {
  object->uninitApp();
  object->release();
  host.commands.clear();
  unloadLibrary(library);
}

std::unique_ptr<ZOR::reg::iMultiRegistrator> Module::newSession() const {
  return std::unique_ptr<ZOR::reg::iMultiRegistrator>(getRegistrator());
}

}  // namespace foreign

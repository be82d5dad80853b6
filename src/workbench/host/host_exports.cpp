// The doors of the executable: what a module looks up by name in the process's main program. They
// answer with the one host that stands, and with null when there is none.
#include <boost/config.hpp>
#include <cwchar>
#include <string>

#include "platform/host/exports.h"
#include "platform/os/loaded_modules.h"
#include "workbench/host/standing_host.h"

namespace {

using tiepoint::workbench::StandingHost;

tiepoint::os::ModuleHandle mainExecutable() { return tiepoint::os::loadedModule(static_cast<const wchar_t*>(nullptr)); }

std::wstring fileNameOf(const std::wstring& path) {
  const std::size_t separator = path.find_last_of(L"/\\");
  return separator == std::wstring::npos ? path : path.substr(separator + 1);
}

HostApplication* hostApplicationEntryFunction() {
  StandingHost* const host = StandingHost::current();
  return host ? &host->application() : nullptr;
}

void hostRefreshEntryFunction(unsigned char) {
  if (StandingHost* const host = StandingHost::current()) host->refresh();
}

}  // namespace

extern "C" {

BOOST_SYMBOL_EXPORT void* GetMainDllInstance() { return mainExecutable(); }

BOOST_SYMBOL_EXPORT const wchar_t* GetMainDllNameW() {
  static const std::wstring name = fileNameOf(tiepoint::os::moduleFileName(mainExecutable()));
  return name.c_str();
}

BOOST_SYMBOL_EXPORT void* get_host_funcptr(int index) {
  if (!StandingHost::current()) return nullptr;
  switch (index) {
    case hostApplicationEntry: {
      const HostApplicationFunction entry = &hostApplicationEntryFunction;
      return reinterpret_cast<void*>(entry);
    }
    case hostRefreshEntry: {
      const HostRefreshFunction entry = &hostRefreshEntryFunction;
      return reinterpret_cast<void*>(entry);
    }
    default:
      return nullptr;
  }
}

BOOST_SYMBOL_EXPORT void new_ICmdFactory(ICmdFactory** factory) {
  StandingHost* const host = StandingHost::current();
  *factory = host ? host->newCommandFactory() : nullptr;
}

BOOST_SYMBOL_EXPORT HostAppService* GetApp() {
  StandingHost* const host = StandingHost::current();
  return host ? host->newAppService() : nullptr;
}

}  // extern "C"

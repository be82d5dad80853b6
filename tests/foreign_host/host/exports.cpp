#include "exports.h"

#include "host.h"
#include "platform/host/exports.h"

namespace {

using foreign::Host;

HostApplication* applicationEntry() {
  Host& host = Host::instance();
  return host.switchboard.answer("entry 2", [&]() -> HostApplication* { return &host.application(); });
}

void refreshEntry(unsigned char argument) { Host::instance().refresh(argument); }

void* entryOf(int index) {
  if (index == hostApplicationEntry) return reinterpret_cast<void*>(&applicationEntry);
  if (index == hostRefreshEntry) return reinterpret_cast<void*>(&refreshEntry);
  return nullptr;
}

}  // namespace

FOREIGN_HOST_EXPORT void* get_host_funcptr(int index) {
  return Host::instance().switchboard.answer("get_host_funcptr", [&] { return entryOf(index); });
}

FOREIGN_HOST_EXPORT void new_ICmdFactory(ICmdFactory** factory) {
  Host& host = Host::instance();
  *factory = nullptr;
  *factory = host.switchboard.answer("new_ICmdFactory", [&] { return host.commands.newFactory(); });
}

HostAppService* newForeignAppService() {
  Host& host = Host::instance();
  return host.switchboard.answer("GetApp", [&] { return host.hasProfile ? host.profile.newAppService() : nullptr; });
}

#include "host_access/host_objects.h"

#include "host_access/host_function.h"
#include "platform/host/exports.h"

namespace ZOR::reg {
namespace {

/// Handed to the host's refresh at every call.
constexpr unsigned char refreshArgument = 0;

}  // namespace

HostApplication* hostApplication() {
  const auto application = reinterpret_cast<HostApplicationFunction>(hostFunction(hostApplicationEntry));
  return application ? application() : nullptr;
}

HostDocument* activeDocument() {
  HostApplication* application = hostApplication();
  return application ? application->activeDocument() : nullptr;
}

OdDbDatabasePtr activeDatabase() {
  HostDocument* document = activeDocument();
  return document ? document->database() : OdDbDatabasePtr();
}

void refreshViews() {
  if (const auto refresh = reinterpret_cast<HostRefreshFunction>(hostFunction(hostRefreshEntry))) {
    refresh(refreshArgument);
  }
}

}  // namespace ZOR::reg

#include "support/session_host.h"

#include <algorithm>

#include "platform/host/exports.h"
#include "platform/os/loaded_modules.h"

#if defined(_WIN32)
#define TEST_HOST_EXPORT extern "C" __declspec(dllexport)
#else
#define TEST_HOST_EXPORT extern "C" [[gnu::visibility("default")]]
#endif

namespace tiepoint::testing {

namespace {

SessionHost* current = nullptr;

HostApplication* application() { return current; }

void refresh(unsigned char) { ++current->redraws; }

}  // namespace

SessionHost::SessionHost() {
  current = this;
  documents.push_back(std::make_unique<TestDocument>());
}

SessionHost::~SessionHost() { current = nullptr; }

TestDocument& SessionHost::openDocument() {
  documents.push_back(std::make_unique<TestDocument>());
  for (HostApDocManagerReactor* reactor : listeners) reactor->documentAdded(documents.back().get());
  return document();
}

void SessionHost::closeDocument() {
  for (HostApDocManagerReactor* reactor : listeners) reactor->documentToBeRemoved(documents.back().get());
  documents.pop_back();
}

HostDocument* SessionHost::activeDocument() { return documents.empty() ? nullptr : documents.back().get(); }

void SessionHost::addReactor(HostApDocManagerReactor* reactor) { listeners.push_back(reactor); }

void SessionHost::removeReactor(HostApDocManagerReactor* reactor) {
  listeners.erase(std::remove(listeners.begin(), listeners.end(), reactor), listeners.end());
}

}  // namespace tiepoint::testing

TEST_HOST_EXPORT void* GetMainDllInstance() { return tiepoint::os::loadedModule(static_cast<const wchar_t*>(nullptr)); }

TEST_HOST_EXPORT void* get_host_funcptr(int index) {
  if (!tiepoint::testing::current) return nullptr;
  if (index == hostApplicationEntry) return reinterpret_cast<void*>(&tiepoint::testing::application);
  if (index == hostRefreshEntry) return reinterpret_cast<void*>(&tiepoint::testing::refresh);
  return nullptr;
}

TEST_HOST_EXPORT HostAppService* GetApp() {
  return tiepoint::testing::current ? tiepoint::testing::current->profile().newAppService() : nullptr;
}

// A module that a workbench can load in place of the real one. What it exports, and which version
// of the drawing SDK it claims, can be set when it is built.
#include <boost/config.hpp>
#include <cstdint>

#include "platform/host/exports.h"
#include "platform/host/file_dialog.h"
#include "platform/host/message_line.h"
#include "platform/os/loaded_modules.h"
#include "platform/sdk/od_error.h"
#include "platform/sdk/od_rx_module.h"
#include "workbench/fake_module/fake_host_access.h"
#include "workbench/fake_module/fake_registrator.h"

#ifndef FAKE_API_MINOR
#define FAKE_API_MINOR 8
#endif

namespace {

/// What the module object has gone through, oldest first; read by tests through the export below.
char history[64];
std::size_t historyLength = 0;
void note(char event) { history[historyLength++ % (sizeof history - 1)] = event; }

class FakeModule : public OdRxModule {
 public:
  void addRef() override { ++references; }
  void release() override {
    if (--references == 0) note('d');
  }
  OdModuleHandle moduleHandle() override { return nullptr; }
  void deleteModule() override {}
  void initApp() override { note('i'); }
  void uninitApp() override { note('u'); }
  OdString moduleFileName() const override { return {}; }

 private:
  int references = 0;
};

// --- Commands.

/// Says what the dialog answered.
void reportDialog() {
  HostApplication* const host = fakeHostApplication();
  wchar_t buffer[32] = {};
  HostFileDialogRequest request;
  request.buffer = buffer;
  request.bufferLength = 32;
  const HostFileDialogAnswer answer = host->fileDialog()->open(request);
  host->messageLine()->print(L"accepted %d, filter %d, %d paths", answer.accepted, answer.filterIndex,
                             static_cast<int>(answer.paths.size()));
  for (const std::wstring& path : answer.paths) host->messageLine()->print(L"path %s", path.c_str());
}

void storeAndThrow() {
  fakeHostApplication()->messageLine()->print(L"before the fall");
  fakeStoreGroup("kept");
  throw OdError(eNullClass, "the command fell");
}

void printNothing() {}

ICmdFactory* newHostFactory() {
  using namespace tiepoint::os;
  const auto newFactory =
      exportAs<NewCommandFactoryFunction>(loadedModule(static_cast<const wchar_t*>(nullptr)), "new_ICmdFactory");
  ICmdFactory* factory = nullptr;
  if (newFactory) newFactory(&factory);
  return factory;
}

struct CommandRegistration {
  CommandRegistration() {
    ICmdFactory* const factory = newHostFactory();
    if (!factory) return;
    factory->addCommand(L"FAKE", L"FAKE_DIALOG", L"\u0414\u0418\u0410\u041B\u041E\u0413", 4, &reportDialog);
    factory->addCommand(L"FAKE", L"FAKE_THROW", L"FAKE_THROW", 0, &storeAndThrow);
    factory->addCommand(L"FAKE", L"FAKE_SILENT", L"FAKE_SILENT", -1, &printNothing);
    factory->release();
  }
};
const CommandRegistration commandRegistration;

}  // namespace

extern "C" {

BOOST_SYMBOL_EXPORT void odrxGetAPIVersion(std::int32_t& major, std::int32_t& minor, std::int32_t& majorBuild,
                                           std::int32_t& minorBuild) {
  major = 21;
  minor = FAKE_API_MINOR;
  majorBuild = 0;
  minorBuild = 0;
}

BOOST_SYMBOL_EXPORT OdRxModule* odrxCreateModuleObject(OdModuleHandle* handle) {
  static FakeModule module;
  if (handle && *handle) note('c');
  return &module;
}

BOOST_SYMBOL_EXPORT const char* fakeModuleHistory() { return history; }
}

#ifndef FAKE_WITHOUT_SESSION
namespace ZOR::reg {
BOOST_SYMBOL_EXPORT iMultiRegistrator* GetMultiRegistrator();
iMultiRegistrator* GetMultiRegistrator() {
#ifdef FAKE_NULL_SESSION
  return nullptr;
#else
  return newFakeRegistrator();
#endif
}
}  // namespace ZOR::reg
#endif

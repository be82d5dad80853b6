// A main program of a host, which does step by step what its arguments say and prints what comes of
// it. Definitions switch its exports on.
//
//   main=NAME           what its exports tell of the main module: the name of a loaded library, or
//                       "none"
//   load=PATH           loads a library
//   run=NAME            runs the command that was added at the loaded library of that name
//   host-function=N     the entry N of the host's table, and a call of it
//   command-factory     the factory, which is released
//   settings            opens the profile's section and reads it
//   session=NAME        makes a session of the loaded module of that name, and asks for its preset
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "fake_host/exported.h"
#include "fake_host/library.h"
#include "host_access/command_factory_lookup.h"
#include "host_access/host_function.h"
#include "host_access/registration_settings.h"
#include "platform/host/exports.h"
#include "session/i_multi_registrator.h"

namespace {

namespace os = tiepoint::os;

/// ZOR::reg::GetMultiRegistrator as its library names it.
#ifdef _MSC_VER
constexpr const char* registratorExport = "?GetMultiRegistrator@reg@ZOR@@YAPEAViMultiRegistrator@12@XZ";
#else
constexpr const char* registratorExport = "_ZN3ZOR3reg19GetMultiRegistratorEv";
#endif

std::string mainModuleName = "none";

void say(const std::string& text) {
  std::printf("%s\n", text.c_str());
  std::fflush(stdout);
}

void callEntry(int index) {
  void* entry = ZOR::reg::hostFunction(index);
  say(entry ? "an entry" : "no entry");
  if (entry && index == hostApplicationEntry) reinterpret_cast<HostApplicationFunction>(entry)();
  if (entry && index == hostRefreshEntry) reinterpret_cast<HostRefreshFunction>(entry)(0);
}

void takeFactory() {
  ICmdFactory* factory = ZOR::reg::commandFactory();
  say(factory ? "a factory" : "no factory");
  if (factory) factory->release();
}

void readSettings() {
  const ZOR::reg::RegistrationSettings settings;
  say("MaxIterations " + std::to_string(settings.maxIterations()));
}

bool load(const std::string& path) { return tiepoint::testing::loadLibrary(path) != nullptr; }

bool runCommand(const std::string& library) {
  const auto run = os::exportedFunction(os::loadedModule(library.c_str()), "runFakeCommand");
  if (run) run();
  return run != nullptr;
}

bool makeSession(const std::string& module) {
  const auto getRegistrator =
      os::exportAs<ZOR::reg::GetMultiRegistratorFunction>(os::loadedModule(module.c_str()), registratorExport);
  if (!getRegistrator) return false;
  const std::unique_ptr<ZOR::reg::iMultiRegistrator> session(getRegistrator());
  std::uint64_t iterations = 0;
  double criteria = 0.0;
  session->getIterationLimits(iterations, criteria);
  say("preset " + std::to_string(iterations));
  return true;
}

bool doStep(const std::string& name, const std::string& value) {
  if (name == "main") mainModuleName = value;
  if (name == "load") return load(value);
  if (name == "run") return runCommand(value);
  if (name == "session") return makeSession(value);
  if (name == "host-function") callEntry(std::atoi(value.c_str()));
  if (name == "command-factory") takeFactory();
  if (name == "settings") readSettings();
  return true;
}

}  // namespace

#ifdef FAKE_HAS_INSTANCE
FAKE_HOST_EXPORT void* GetMainDllInstance() {
  say("program: GetMainDllInstance");
  return os::loadedModule(mainModuleName.c_str());
}
#endif

#ifdef FAKE_HAS_NAME
FAKE_HOST_EXPORT const wchar_t* GetMainDllNameW() {
  static std::wstring name;
  say("program: GetMainDllNameW");
  name.assign(mainModuleName.begin(), mainModuleName.end());
  return name.c_str();
}
#endif

int main(int argumentCount, char** arguments) {
  for (int i = 1; i < argumentCount; ++i) {
    const std::string argument = arguments[i];
    const std::size_t equals = argument.find('=');
    const std::string value = equals == std::string::npos ? "" : argument.substr(equals + 1);
    if (!doStep(argument.substr(0, equals), value)) {
      say("failed: " + argument);
      return 1;
    }
  }
  return 0;
}

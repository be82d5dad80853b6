// A library of a host, which says what is asked of it. Definitions switch its exports on.
#include <cstdio>
#include <cwchar>
#include <stdexcept>
#include <string>

#include "fake_host/exported.h"
#include "platform/host/document.h"
#include "platform/host/exports.h"
#include "platform/host/transient_service.h"
#include "platform/os/loaded_modules.h"

namespace {

/// One line of what this library is asked, on standard output.
[[maybe_unused]] void say(const std::string& text) {
  std::printf("%s: %s\n", FAKE_NAME, text.c_str());
  std::fflush(stdout);
}

/// The texts here are plain ASCII.
[[maybe_unused]] std::string narrow(const wchar_t* text) {
  std::string result;
  for (; *text; ++text) result += static_cast<char>(*text);
  return result;
}

}  // namespace

#ifdef FAKE_HAS_HOST_FUNCTIONS

namespace {

class TransientService final : public HostTransientService {
 public:
  void addTransient(OdGiDrawable*, int, int, int, int) override {}
  void removeTransient(OdGiDrawable*) override {}
  HostView* activeView() override { return nullptr; }
  void applyView(HostView*, int) override {}
};

/// As much of a document as a session needs that nothing is asked of.
class Document final : public HostDocument {
 public:
  OdDbDatabasePtr database() override { return {}; }
  HostTransientService* transientService() override { return &transients; }
  bool isReady() const override { return true; }

 private:
  TransientService transients;
};

class Application final : public HostApplication {
 public:
  HostDocument* activeDocument() override { return &document; }
  void addReactor(HostApDocManagerReactor*) override {}
  void removeReactor(HostApDocManagerReactor*) override {}
  HostMessageLine* messageLine() override { return nullptr; }
  HostFileDialog* fileDialog() override { return nullptr; }

 private:
  Document document;
};

Application application;

HostApplication* giveApplication() {
  say("application");
  return &application;
}

void refresh(unsigned char argument) { say("refresh(" + std::to_string(argument) + ")"); }

HostCommandBody commandBody = nullptr;

class Factory final : public ICmdFactory {
 public:
  void addCommand(const wchar_t* group, const wchar_t* globalName, const wchar_t* localName, int flags,
                  HostCommandBody body) override {
    say("command " + narrow(group) + "/" + narrow(globalName) + "/" + narrow(localName) + ", flags " +
        std::to_string(flags) + (body ? ", a body" : ", no body"));
    say(globalName == localName ? "both names are the same text" : "the names are two texts");
#ifdef FAKE_FAILS_AT_THE_COMMAND
    throw std::runtime_error("no command");
#endif
    commandBody = body;
  }
  void release() override { say("factory released"); }
};

[[maybe_unused]] Factory factory;

}  // namespace

FAKE_HOST_EXPORT void* get_host_funcptr(int index) {
  say("get_host_funcptr(" + std::to_string(index) + ")");
  if (index == hostApplicationEntry) return reinterpret_cast<void*>(&giveApplication);
  if (index == hostRefreshEntry) return reinterpret_cast<void*>(&refresh);
  return nullptr;
}

FAKE_HOST_EXPORT void new_ICmdFactory(ICmdFactory** result) {
  say("new_ICmdFactory");
#ifdef FAKE_FAILS_AT_THE_FACTORY
  throw std::runtime_error("no factory");
#endif
#ifdef FAKE_GIVES_NO_FACTORY
  *result = nullptr;
#else
  *result = &factory;
#endif
}

/// Runs the command that was added last.
FAKE_HOST_EXPORT void runFakeCommand() {
  if (commandBody) commandBody();
}

#endif

#ifdef FAKE_HAS_INSTANCE_EX

FAKE_HOST_EXPORT void* GetMainDllInstanceEx() {
  say("GetMainDllInstanceEx");
  return tiepoint::os::loadedModule("behind_app");
}

#endif

#if defined(FAKE_HAS_GET_APP) || defined(FAKE_HAS_CREATE_OBJECT)

namespace {

bool isSame(const HostInterfaceId& a, const HostInterfaceId& b) {
  if (a.data1 != b.data1 || a.data2 != b.data2 || a.data3 != b.data3) return false;
  for (int i = 0; i < 8; ++i) {
    if (a.data4[i] != b.data4[i]) return false;
  }
  return true;
}

class Section final : public HostProfileSection {
 public:
  int readValue(const wchar_t* key, CZorVariant& value) override {
    if (std::wcscmp(key, L"MaxIterations") != 0) return 0;
    value.set(FAKE_ITERATIONS);
    return 1;
  }
  void release() override { say("section released"); }
};

class Profile final : public HostProfile {
 public:
  HostProfileSection* openSection(const wchar_t* path, int createWhenMissing) override {
    say("openSection(" + narrow(path) + ", " + std::to_string(createWhenMissing) + ")");
    return &section;
  }
  void release() override { say("profile released"); }

 private:
  Section section;
};

class AppService final : public HostAppService {
 public:
  HostProfile* queryProfile(const HostInterfaceId& interfaceId) override {
    say(isSame(interfaceId, iidHostProfile) ? "queryProfile(profile)" : "queryProfile(another interface)");
    return &profile;
  }
  void release() override { say("application service released"); }

 private:
  Profile profile;
};

AppService service;

}  // namespace

#endif

#ifdef FAKE_HAS_GET_APP

FAKE_HOST_EXPORT HostAppService* GetApp() {
  say("GetApp");
  return &service;
}

#endif

#ifdef FAKE_HAS_CREATE_OBJECT

FAKE_HOST_EXPORT int CreateObjectC(const wchar_t* className, int reserved, const HostInterfaceId& interfaceId,
                                   void** result) {
  say("CreateObjectC(" + narrow(className) + ", " + std::to_string(reserved) +
      (isSame(interfaceId, iidHostAppService) ? ", application service)" : ", another interface)"));
  *result = static_cast<HostAppService*>(&service);
  return 0;
}

#endif

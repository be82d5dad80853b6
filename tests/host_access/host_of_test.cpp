#include "host_access/host_of_test.h"

#include <stdexcept>

#include "fake_host/exported.h"
#include "platform/host/exports.h"
#include "platform/os/loaded_modules.h"

namespace tiepoint::testing {
namespace {

HostApplication* giveApplication() { return HostOfTest::current().application; }

void refresh(unsigned char argument) {
  ++HostOfTest::current().refreshes;
  HostOfTest::current().lastRefreshArgument = argument;
}

void failIf(bool isToFail) {
  if (isToFail) throw std::runtime_error("the host fails");
}

/// Counted before it fails: an object that fails as it is given back is gone all the same.
void countRelease() {
  --HostOfTest::current().livingObjects;
  failIf(HostOfTest::current().failsAtRelease);
}

class Section final : public HostProfileSection {
 public:
  int readValue(const wchar_t* key, CZorVariant& value) override {
    ++HostOfTest::current().reads;
    const auto found = HostOfTest::current().values.find(key);
    if (found == HostOfTest::current().values.end()) return 0;
    value = found->second;
    // Any number but 0 means that there is a value.
    return -1;
  }
  void release() override { countRelease(); }
};

class Profile final : public HostProfile {
 public:
  HostProfileSection* openSection(const wchar_t*, int) override {
    failIf(HostOfTest::current().failsAtOpening);
    if (!HostOfTest::current().hasSection) return nullptr;
    ++HostOfTest::current().livingObjects;
    return &section;
  }
  void release() override { countRelease(); }

 private:
  Section section;
};

class Service final : public HostAppService {
 public:
  HostProfile* queryProfile(const HostInterfaceId&) override {
    failIf(HostOfTest::current().failsAtQuery);
    if (!HostOfTest::current().hasProfile) return nullptr;
    ++HostOfTest::current().livingObjects;
    return &profile;
  }
  void release() override { countRelease(); }

 private:
  Profile profile;
};

Service service;
HostOfTest host;

}  // namespace

HostOfTest& HostOfTest::current() { return host; }

void HostOfTest::renew() { host = HostOfTest(); }

}  // namespace tiepoint::testing

FAKE_HOST_EXPORT void* GetMainDllInstance() { return tiepoint::os::loadedModule(static_cast<const wchar_t*>(nullptr)); }

FAKE_HOST_EXPORT void* get_host_funcptr(int index) {
  const auto& host = tiepoint::testing::HostOfTest::current();
  if (index == 2 && host.hasApplicationEntry) return reinterpret_cast<void*>(&tiepoint::testing::giveApplication);
  if (index == 12 && host.hasRefreshEntry) return reinterpret_cast<void*>(&tiepoint::testing::refresh);
  return nullptr;
}

FAKE_HOST_EXPORT HostAppService* GetApp() {
  if (!tiepoint::testing::HostOfTest::current().hasService) return nullptr;
  ++tiepoint::testing::HostOfTest::current().livingObjects;
  return &tiepoint::testing::service;
}

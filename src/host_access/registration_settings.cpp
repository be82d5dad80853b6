#include "host_access/registration_settings.h"

#include "platform/host/exports.h"
#include "platform/os/loaded_modules.h"

namespace ZOR::reg {
namespace {

namespace os = tiepoint::os;

constexpr const wchar_t* sectionPath = L"PointClouds\\Registration";
constexpr int createWhenMissing = 1;
constexpr const wchar_t* appServiceClass = L"CLSID_APP";

// The only look-ups of the host that are kept: each is done until it finds its function.
GetAppFunction knownGetApp = nullptr;
CreateObjectFunction knownCreateObject = nullptr;

HostAppService* appServiceOfZorCore() {
  if (!knownCreateObject) {
    if (const os::ModuleHandle zorCore = os::loadedModule(L"ZorCore.dll")) {
      knownCreateObject = os::exportAs<CreateObjectFunction>(zorCore, "CreateObjectC");
    }
  }
  if (!knownCreateObject) return nullptr;
  void* service = nullptr;
  knownCreateObject(appServiceClass, 0, iidHostAppService, &service);
  return static_cast<HostAppService*>(service);
}

/// The host's application service, to be released by the caller, or null.
HostAppService* appService() {
  if (knownGetApp) return knownGetApp();
  if (const os::ModuleHandle zorApp = os::loadedModule(L"ZorApp.dll")) {
    knownGetApp = os::exportAs<GetAppFunction>(zorApp, "GetApp");
    if (knownGetApp) return knownGetApp();
  }
  const os::ModuleHandle executable = os::loadedModule(static_cast<const wchar_t*>(nullptr));
  if (const auto mainModule = os::exportAs<GetMainDllInstanceFunction>(executable, "GetMainDllInstance")) {
    // A host that names its main module is asked there and nowhere else.
    const os::ModuleHandle module = mainModule();
    if (module) knownGetApp = os::exportAs<GetAppFunction>(module, "GetApp");
    return knownGetApp ? knownGetApp() : nullptr;
  }
  return appServiceOfZorCore();
}

Held<HostProfile> openProfile() {
  const Held<HostAppService> service(appService());
  return Held<HostProfile>(service ? service->queryProfile(iidHostProfile) : nullptr);
}

Held<HostProfileSection> openSection() {
  const Held<HostProfile> profile = openProfile();
  return Held<HostProfileSection>(profile ? profile->openSection(sectionPath, createWhenMissing) : nullptr);
}

template <class Value>
Value readKey(const Held<HostProfileSection>& section, const wchar_t* key, Value byDefault) {
  CZorVariant value;
  if (!section || !section->readValue(key, value)) return byDefault;
  try {
    return static_cast<Value>(value);
  } catch (const CZorVariantBadCast&) {
    return byDefault;
  }
}

}  // namespace

RegistrationSettings::RegistrationSettings() : section(openSection()) {}

std::int32_t RegistrationSettings::maxIterations() const { return readKey<int>(section, L"MaxIterations", 100); }

double RegistrationSettings::convergenceCriteria() const { return readKey(section, L"ConvergenceCriteria", 0.001); }

std::int32_t RegistrationSettings::sizeLabel() const { return readKey<int>(section, L"SizeLabel", 10); }

std::int32_t RegistrationSettings::heightLabelText() const { return readKey<int>(section, L"HeightLabelText", 10); }

bool RegistrationSettings::isVisibleLabelText() const { return readKey<int>(section, L"IsVisibleLabelText", 1) != 0; }

}  // namespace ZOR::reg

#include "profile.h"

#include <algorithm>
#include <cwchar>
#include <iterator>

namespace foreign {

namespace {

bool isSame(const HostInterfaceId& a, const HostInterfaceId& b) {
  return a.data1 == b.data1 && a.data2 == b.data2 && a.data3 == b.data3 &&
         std::equal(std::begin(a.data4), std::end(a.data4), std::begin(b.data4));
}

template <class Objects>
std::size_t countHeld(const Objects& objects) {
  return static_cast<std::size_t>(
      std::count_if(objects.begin(), objects.end(), [](const auto& object) { return !object.isOver(); }));
}

/// 1 for a key that the profile holds.
int valueOf(const wchar_t* key, CZorVariant& value) {
  if (std::wcscmp(key, L"MaxIterations") == 0) {
    value.set(profileIterations);
  } else if (std::wcscmp(key, L"ConvergenceCriteria") == 0) {
    value.set(profileConvergence);
  } else if (std::wcscmp(key, L"SizeLabel") == 0) {
    value.set(std::wstring(L"6"));
  } else if (std::wcscmp(key, L"IsVisibleLabelText") == 0) {
    value.set(1);
  } else {
    return 0;
  }
  return 1;
}

}  // namespace

int ProfileSection::readValue(const wchar_t* key, CZorVariant& value) {
  return answer("ProfileSection::readValue", [&] { return valueOf(key, value); });
}

void ProfileSection::release() {
  letGo("ProfileSection::release", [this] { end(); });
}

HostProfileSection* Profile::openSection(const wchar_t* path, int createWhenMissing) {
  return answer("Profile::openSection", [&]() -> HostProfileSection* {
    if (std::wcscmp(path, L"PointClouds\\Registration") != 0) board.complain("another section was asked for");
    if (createWhenMissing != 1) board.complain("the section wasn't to be made when missing");
    return objects.newSection();
  });
}

void Profile::release() {
  letGo("Profile::release", [this] { end(); });
}

HostProfile* AppService::queryProfile(const HostInterfaceId& interfaceId) {
  return answer("AppService::queryProfile",
                [&]() -> HostProfile* { return isSame(interfaceId, iidHostProfile) ? objects.newProfile() : nullptr; });
}

void AppService::release() {
  letGo("AppService::release", [this] { end(); });
}

std::size_t ProfileObjects::held() const { return countHeld(services) + countHeld(profiles) + countHeld(sections); }

void ProfileObjects::clear() {
  services.clear();
  profiles.clear();
  sections.clear();
}

}  // namespace foreign

// The host's profile, behind objects that are counted.
#pragma once

#include <cstddef>
#include <deque>

#include "platform/host/profile.h"
#include "switchboard.h"

namespace foreign {

/// What this host's profile holds; none of it is a default of the module.
inline constexpr int profileIterations = 77;
inline constexpr double profileConvergence = 0.0025;

class ProfileSection final : public HostProfileSection, public HostObject {
 public:
  explicit ProfileSection(Switchboard& switchboard) : HostObject(switchboard, "section") {}
  int readValue(const wchar_t* key, CZorVariant& value) override;
  void release() override;
};

class ProfileObjects;

class Profile final : public HostProfile, public HostObject {
 public:
  Profile(Switchboard& switchboard, ProfileObjects& all) : HostObject(switchboard, "profile"), objects(all) {}
  HostProfileSection* openSection(const wchar_t* path, int createWhenMissing) override;
  void release() override;

 private:
  ProfileObjects& objects;
};

class AppService final : public HostAppService, public HostObject {
 public:
  AppService(Switchboard& switchboard, ProfileObjects& all)
      : HostObject(switchboard, "application service"), objects(all) {}
  HostProfile* queryProfile(const HostInterfaceId& interfaceId) override;
  void release() override;

 private:
  ProfileObjects& objects;
};

/// Makes the counted objects and keeps them beyond their release. Each is handed out with one
/// reference, so its release is its end.
class ProfileObjects {
 public:
  explicit ProfileObjects(Switchboard& switchboard) : board(switchboard) {}

  HostAppService* newAppService() { return &services.emplace_back(board, *this); }
  HostProfile* newProfile() { return &profiles.emplace_back(board, *this); }
  HostProfileSection* newSection() { return &sections.emplace_back(board); }

  /// How many somebody still has to release.
  std::size_t held() const;
  std::size_t made() const { return services.size() + profiles.size() + sections.size(); }
  /// Forgets those that were released.
  void clear();

 private:
  Switchboard& board;
  std::deque<AppService> services;
  std::deque<Profile> profiles;
  std::deque<ProfileSection> sections;
};

}  // namespace foreign

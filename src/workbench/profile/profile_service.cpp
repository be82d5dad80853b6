// What the host gives a module of the profile: counted objects, each held by who was given it.
#include <algorithm>
#include <boost/locale/encoding_utf.hpp>
#include <iterator>
#include <utility>

#include "workbench/profile/profile.h"

namespace tiepoint::workbench {
namespace {

/// Nothing for wide text that isn't well-formed: no section and no key bears such a name.
std::optional<std::string> utf8From(const wchar_t* wide) {
  if (!wide) return std::nullopt;
  try {
    return boost::locale::conv::utf_to_utf<char>(wide, boost::locale::conv::stop);
  } catch (const boost::locale::conv::conversion_error&) {
    return std::nullopt;
  }
}

void put(const ProfileValue& value, CZorVariant& variant) {
  if (const int* whole = std::get_if<int>(&value)) variant.set(*whole);
  if (const double* real = std::get_if<double>(&value)) variant.set(*real);
  if (const std::string* text = std::get_if<std::string>(&value)) {
    variant.set(boost::locale::conv::utf_to_utf<wchar_t>(*text));
  }
}

/// One reference that is given out: counted as long as it stands.
class GivenOut {
 public:
  explicit GivenOut(int& counter) : count(counter) { ++count; }
  ~GivenOut() { --count; }
  GivenOut(const GivenOut&) = delete;
  GivenOut& operator=(const GivenOut&) = delete;

  int& counter() { return count; }

 private:
  int& count;
};

class Section final : public HostProfileSection {
 public:
  Section(Profile& owner, int& counter, std::string path) : profile(owner), given(counter), name(std::move(path)) {}

  int readValue(const wchar_t* key, CZorVariant& value) override {
    const std::optional<std::string> keyName = utf8From(key);
    if (!keyName) return 0;
    const std::optional<ProfileValue> found = profile.get(name, *keyName);
    if (!found) return 0;
    put(*found, value);
    return 1;
  }
  void release() override { delete this; }

 private:
  Profile& profile;
  GivenOut given;
  std::string name;
};

class ProfileObject final : public HostProfile {
 public:
  ProfileObject(Profile& owner, int& counter) : profile(owner), given(counter) {}

  HostProfileSection* openSection(const wchar_t* path, int createWhenMissing) override {
    const std::optional<std::string> name = utf8From(path);
    if (!name) return nullptr;
    if (createWhenMissing != 0) profile.addSection(*name);
    if (!profile.hasSection(*name)) return nullptr;
    return new Section(profile, given.counter(), *name);
  }
  void release() override { delete this; }

 private:
  Profile& profile;
  GivenOut given;
};

bool operator==(const HostInterfaceId& a, const HostInterfaceId& b) {
  return a.data1 == b.data1 && a.data2 == b.data2 && a.data3 == b.data3 &&
         std::equal(std::begin(a.data4), std::end(a.data4), std::begin(b.data4));
}

class AppService final : public HostAppService {
 public:
  AppService(Profile& owner, int& counter) : profile(owner), given(counter) {}

  HostProfile* queryProfile(const HostInterfaceId& interfaceId) override {
    return interfaceId == iidHostProfile ? new ProfileObject(profile, given.counter()) : nullptr;
  }
  void release() override { delete this; }

 private:
  Profile& profile;
  GivenOut given;
};

}  // namespace

HostAppService* Profile::newAppService() { return new AppService(*this, givenOut); }

}  // namespace tiepoint::workbench

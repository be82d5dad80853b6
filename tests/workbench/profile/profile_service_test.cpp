#include <gtest/gtest.h>

#include "workbench/profile/profile.h"

using namespace tiepoint::workbench;

namespace {

constexpr const wchar_t* section = L"PointClouds\\Registration";

/// Opens a section as a module does: everything on the way is released.
HostProfileSection* openSection(Profile& profile, const wchar_t* path, int createWhenMissing) {
  HostAppService* service = profile.newAppService();
  HostProfile* found = service->queryProfile(iidHostProfile);
  service->release();
  HostProfileSection* opened = found->openSection(path, createWhenMissing);
  found->release();
  return opened;
}

}  // namespace

TEST(ProfileService, AnswersOnlyTheProfilesInterface) {
  Profile profile;
  HostAppService* service = profile.newAppService();
  EXPECT_EQ(service->queryProfile(iidHostAppService), nullptr);
  HostInterfaceId almost = iidHostProfile;
  almost.data4[7] ^= 1;
  EXPECT_EQ(service->queryProfile(almost), nullptr);
  HostProfile* found = service->queryProfile(iidHostProfile);
  ASSERT_NE(found, nullptr);
  found->release();
  service->release();
}

TEST(ProfileService, MakesAMissingSectionOnlyWhenAskedTo) {
  Profile profile;
  EXPECT_EQ(openSection(profile, section, 0), nullptr);
  EXPECT_FALSE(profile.hasSection(registrationSection));
  HostProfileSection* made = openSection(profile, section, 1);
  ASSERT_NE(made, nullptr);
  made->release();
  HostProfileSection* found = openSection(profile, section, 0);
  ASSERT_NE(found, nullptr);
  found->release();
}

TEST(ProfileService, GivesAWholeNumberARealNumberAndAText) {
  Profile profile;
  profile.set(registrationSection, "MaxIterations", 250);
  profile.set(registrationSection, "ConvergenceCriteria", 0.5);
  profile.set(registrationSection, "SizeLabel", std::string("12"));
  HostProfileSection* opened = openSection(profile, section, 1);
  CZorVariant value;
  EXPECT_NE(opened->readValue(L"MaxIterations", value), 0);
  EXPECT_EQ(static_cast<int>(value), 250);
  EXPECT_NE(opened->readValue(L"ConvergenceCriteria", value), 0);
  EXPECT_EQ(static_cast<double>(value), 0.5);
  EXPECT_NE(opened->readValue(L"SizeLabel", value), 0);
  EXPECT_EQ(static_cast<int>(value), 12);
  opened->release();
}

TEST(ProfileService, LeavesTheVariantOfAKeyThatIsMissing) {
  Profile profile;
  HostProfileSection* opened = openSection(profile, section, 1);
  CZorVariant value;
  value.set(42);
  EXPECT_EQ(opened->readValue(L"SizeLabel", value), 0);
  EXPECT_EQ(opened->readValue(nullptr, value), 0);
  EXPECT_EQ(static_cast<int>(value), 42);
  opened->release();
}

TEST(ProfileService, ReadsTheValueOfTheMomentThroughAnOpenSection) {
  Profile profile;
  HostProfileSection* opened = openSection(profile, section, 1);
  profile.set(registrationSection, "SizeLabel", 15);
  CZorVariant value;
  EXPECT_NE(opened->readValue(L"SizeLabel", value), 0);
  EXPECT_EQ(static_cast<int>(value), 15);
  opened->release();
}

TEST(ProfileService, FindsNamesOutsideAscii) {
  Profile profile;
  profile.set("Раздел", "Ключ", 3);
  HostProfileSection* opened = openSection(profile, L"Раздел", 0);
  ASSERT_NE(opened, nullptr);
  CZorVariant value;
  EXPECT_NE(opened->readValue(L"Ключ", value), 0);
  EXPECT_EQ(static_cast<int>(value), 3);
  opened->release();
}

TEST(ProfileService, HasNoSectionUnderANameThatIsNotWellFormed) {
  Profile profile;
  const wchar_t loneSurrogate[] = {L'a', static_cast<wchar_t>(0xd800), L'b', 0};
  EXPECT_EQ(openSection(profile, loneSurrogate, 1), nullptr);
  EXPECT_EQ(openSection(profile, nullptr, 1), nullptr);
}

TEST(ProfileService, CountsEveryObjectUntilItIsReleased) {
  Profile profile;
  EXPECT_EQ(profile.objectsGivenOut(), 0);
  HostAppService* service = profile.newAppService();
  HostAppService* another = profile.newAppService();
  EXPECT_NE(service, another);
  EXPECT_EQ(profile.objectsGivenOut(), 2);
  HostProfile* found = service->queryProfile(iidHostProfile);
  EXPECT_EQ(profile.objectsGivenOut(), 3);
  HostProfileSection* opened = found->openSection(section, 1);
  EXPECT_EQ(profile.objectsGivenOut(), 4);
  service->release();
  found->release();
  another->release();
  EXPECT_EQ(profile.objectsGivenOut(), 1);
  CZorVariant value;
  EXPECT_EQ(opened->readValue(L"SizeLabel", value), 0);
  opened->release();
  EXPECT_EQ(profile.objectsGivenOut(), 0);
}

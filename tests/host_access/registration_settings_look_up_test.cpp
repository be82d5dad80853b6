#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_host/program.h"

namespace tiepoint::testing {
namespace {

using ::testing::ElementsAre;

const std::string view = "load=" + fakeHostLibrary("view", "mainview");
const std::string named = "load=" + fakeHostLibrary("named", "named_host");
const std::string appWithService = "load=" + fakeHostLibrary("app_with_service", "ZorApp");
const std::string appWithoutExports = "load=" + fakeHostLibrary("app_without_exports", "ZorApp");
const std::string core = "load=" + fakeHostLibrary("core", "ZorCore");

std::vector<std::string> run(const std::string& program, const std::vector<std::string>& steps) {
  const ProgramResult result = runProgram(fakeHostProgram(program), steps);
  EXPECT_EQ(result.exitCode, 0);
  return result.lines;
}

TEST(RegistrationSettingsLookUp, GivesTheDefaultWithoutAnyHost) {
  EXPECT_THAT(run("fake_host_plain", {"settings"}), ElementsAre("MaxIterations 100"));
}

TEST(RegistrationSettingsLookUp, OpensTheSectionAndReleasesWhatItWasGiven) {
  EXPECT_THAT(run("fake_host_plain", {appWithService, "settings"}),
              ElementsAre("ZorApp: GetApp", "ZorApp: queryProfile(profile)", "ZorApp: application service released",
                          "ZorApp: openSection(PointClouds\\Registration, 1)", "ZorApp: profile released",
                          "MaxIterations 11", "ZorApp: section released"));
}

TEST(RegistrationSettingsLookUp, PrefersZorAppToTheModuleThatTheProgramGives) {
  EXPECT_THAT(run("fake_host_instance", {"main=named_host", named, appWithService, core, "settings"}),
              ElementsAre("ZorApp: GetApp", "ZorApp: queryProfile(profile)", "ZorApp: application service released",
                          "ZorApp: openSection(PointClouds\\Registration, 1)", "ZorApp: profile released",
                          "MaxIterations 11", "ZorApp: section released"));
}

TEST(RegistrationSettingsLookUp, AsksTheModuleThatTheProgramGivesWithoutZorApp) {
  EXPECT_THAT(
      run("fake_host_instance", {"main=named_host", named, core, "settings"}),
      ElementsAre("program: GetMainDllInstance", "named_host: GetApp", "named_host: queryProfile(profile)",
                  "named_host: application service released", "named_host: openSection(PointClouds\\Registration, 1)",
                  "named_host: profile released", "MaxIterations 22", "named_host: section released"));
}

TEST(RegistrationSettingsLookUp, AsksTheModuleThatTheProgramGivesWhenZorAppHasNoSuchExport) {
  EXPECT_THAT(
      run("fake_host_instance", {"main=named_host", named, appWithoutExports, core, "settings"}),
      ElementsAre("program: GetMainDllInstance", "named_host: GetApp", "named_host: queryProfile(profile)",
                  "named_host: application service released", "named_host: openSection(PointClouds\\Registration, 1)",
                  "named_host: profile released", "MaxIterations 22", "named_host: section released"));
}

TEST(RegistrationSettingsLookUp, StopsAtAModuleOfTheProgramWithoutTheExport) {
  const std::string bare = "load=" + fakeHostLibrary("named_without_exports", "named_host");
  EXPECT_THAT(run("fake_host_instance", {"main=named_host", bare, core, "settings"}),
              ElementsAre("program: GetMainDllInstance", "MaxIterations 100"));
}

TEST(RegistrationSettingsLookUp, StopsAtAProgramThatGivesNoModule) {
  EXPECT_THAT(run("fake_host_instance", {"main=none", core, "settings"}),
              ElementsAre("program: GetMainDllInstance", "MaxIterations 100"));
}

TEST(RegistrationSettingsLookUp, DoesNotLookAtTheView) {
  EXPECT_THAT(run("fake_host_plain", {view, "settings"}), ElementsAre("MaxIterations 100"));
}

TEST(RegistrationSettingsLookUp, DoesNotLookAtTheNameThatTheProgramGives) {
  EXPECT_THAT(run("fake_host_name", {"main=named_host", named, "settings"}), ElementsAre("MaxIterations 100"));
}

TEST(RegistrationSettingsLookUp, HasZorCoreMakeTheServiceInAProgramWithoutExports) {
  EXPECT_THAT(run("fake_host_plain", {core, "settings"}),
              ElementsAre("ZorCore: CreateObjectC(CLSID_APP, 0, application service)", "ZorCore: queryProfile(profile)",
                          "ZorCore: application service released", "ZorCore: openSection(PointClouds\\Registration, 1)",
                          "ZorCore: profile released", "MaxIterations 33", "ZorCore: section released"));
}

TEST(RegistrationSettingsLookUp, HasZorCoreMakeTheServiceWhenZorAppHasNoSuchExport) {
  EXPECT_THAT(run("fake_host_plain", {appWithoutExports, core, "settings"}),
              ElementsAre("ZorCore: CreateObjectC(CLSID_APP, 0, application service)", "ZorCore: queryProfile(profile)",
                          "ZorCore: application service released", "ZorCore: openSection(PointClouds\\Registration, 1)",
                          "ZorCore: profile released", "MaxIterations 33", "ZorCore: section released"));
}

TEST(RegistrationSettingsLookUp, GivesTheDefaultWhenZorCoreHasNoSuchExport) {
  EXPECT_THAT(run("fake_host_plain", {"load=" + fakeHostLibrary("core_without_exports", "ZorCore"), "settings"}),
              ElementsAre("MaxIterations 100"));
}

TEST(RegistrationSettingsLookUp, KeepsTheServiceThatItFoundFirst) {
  EXPECT_THAT(
      run("fake_host_instance", {"main=named_host", named, "settings", appWithService, "settings"}),
      ElementsAre("program: GetMainDllInstance", "named_host: GetApp", "named_host: queryProfile(profile)",
                  "named_host: application service released", "named_host: openSection(PointClouds\\Registration, 1)",
                  "named_host: profile released", "MaxIterations 22", "named_host: section released",  //
                  "named_host: GetApp", "named_host: queryProfile(profile)", "named_host: application service released",
                  "named_host: openSection(PointClouds\\Registration, 1)", "named_host: profile released",
                  "MaxIterations 22", "named_host: section released"));
}

TEST(RegistrationSettingsLookUp, LooksAgainAsLongAsNothingWasFound) {
  EXPECT_THAT(run("fake_host_plain", {"settings", appWithService, "settings"}),
              ElementsAre("MaxIterations 100", "ZorApp: GetApp", "ZorApp: queryProfile(profile)",
                          "ZorApp: application service released", "ZorApp: openSection(PointClouds\\Registration, 1)",
                          "ZorApp: profile released", "MaxIterations 11", "ZorApp: section released"));
}

TEST(RegistrationSettingsLookUp, PrefersAZorAppThatCameLaterToTheKnownObjectFactory) {
  EXPECT_THAT(run("fake_host_plain", {core, "settings", "settings", appWithService, "settings"}),
              ElementsAre("ZorCore: CreateObjectC(CLSID_APP, 0, application service)", "ZorCore: queryProfile(profile)",
                          "ZorCore: application service released", "ZorCore: openSection(PointClouds\\Registration, 1)",
                          "ZorCore: profile released", "MaxIterations 33", "ZorCore: section released",  //
                          "ZorCore: CreateObjectC(CLSID_APP, 0, application service)", "ZorCore: queryProfile(profile)",
                          "ZorCore: application service released", "ZorCore: openSection(PointClouds\\Registration, 1)",
                          "ZorCore: profile released", "MaxIterations 33", "ZorCore: section released",  //
                          "ZorApp: GetApp", "ZorApp: queryProfile(profile)", "ZorApp: application service released",
                          "ZorApp: openSection(PointClouds\\Registration, 1)", "ZorApp: profile released",
                          "MaxIterations 11", "ZorApp: section released"));
}

}  // namespace
}  // namespace tiepoint::testing

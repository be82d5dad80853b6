#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_host/program.h"

namespace tiepoint::testing {
namespace {

using ::testing::ElementsAre;

const std::string view = "load=" + fakeHostLibrary("view", "mainview");
const std::string named = "load=" + fakeHostLibrary("named", "named_host");
const std::string behind = "load=" + fakeHostLibrary("behind", "behind_app");
const std::string appWithInstance = "load=" + fakeHostLibrary("app_with_instance", "ZorApp");
const std::string appWithoutExports = "load=" + fakeHostLibrary("app_without_exports", "ZorApp");

/// What the steps of a host print; the process must end well.
std::vector<std::string> run(const std::string& program, const std::vector<std::string>& steps) {
  const ProgramResult result = runProgram(fakeHostProgram(program), steps);
  EXPECT_EQ(result.exitCode, 0);
  return result.lines;
}

TEST(HostFunction, IsNullWithoutAnyHost) {
  EXPECT_THAT(run("fake_host_plain", {"host-function=2"}), ElementsAre("no entry"));
}

TEST(HostFunction, ComesFromTheModuleThatTheProgramGives) {
  EXPECT_THAT(run("fake_host_instance", {"main=named_host", named, view, "host-function=2"}),
              ElementsAre("program: GetMainDllInstance", "named_host: get_host_funcptr(2)", "an entry",
                          "named_host: application"));
}

TEST(HostFunction, IsNullWhenTheProgramGivesNoModuleThoughTheViewIsLoaded) {
  EXPECT_THAT(run("fake_host_instance", {"main=none", view, "host-function=2"}),
              ElementsAre("program: GetMainDllInstance", "no entry"));
}

TEST(HostFunction, IsNullWhenTheModuleThatTheProgramGivesLacksTheTable) {
  const std::string bare = "load=" + fakeHostLibrary("named_without_exports", "named_host");
  EXPECT_THAT(run("fake_host_instance", {"main=named_host", bare, view, "host-function=2"}),
              ElementsAre("program: GetMainDllInstance", "no entry"));
}

TEST(HostFunction, ComesFromTheViewInAProgramWithoutExports) {
  EXPECT_THAT(run("fake_host_plain", {view, "host-function=2"}),
              ElementsAre("mainview: get_host_funcptr(2)", "an entry", "mainview: application"));
}

TEST(HostFunction, PaysNoHeedToTheNameThatTheProgramGives) {
  EXPECT_THAT(run("fake_host_name", {"main=named_host", named, view, "host-function=2"}),
              ElementsAre("mainview: get_host_funcptr(2)", "an entry", "mainview: application"));
}

TEST(HostFunction, ComesFromTheViewThoughZorAppIsLoadedBeforeIt) {
  EXPECT_THAT(run("fake_host_plain", {appWithInstance, behind, view, "host-function=2"}),
              ElementsAre("mainview: get_host_funcptr(2)", "an entry", "mainview: application"));
}

TEST(HostFunction, IsNullWhenTheViewLacksTheTableThoughZorAppHasAModule) {
  const std::string bare = "load=" + fakeHostLibrary("view_without_exports", "mainview");
  EXPECT_THAT(run("fake_host_plain", {bare, appWithInstance, behind, "host-function=2"}), ElementsAre("no entry"));
}

TEST(HostFunction, ComesFromTheModuleThatZorAppGives) {
  EXPECT_THAT(run("fake_host_plain", {appWithInstance, behind, "host-function=2"}),
              ElementsAre("ZorApp: GetMainDllInstanceEx", "behind_app: get_host_funcptr(2)", "an entry",
                          "behind_app: application"));
}

TEST(HostFunction, IsNullWhenZorAppGivesNoModule) {
  EXPECT_THAT(run("fake_host_plain", {appWithInstance, "host-function=2"}),
              ElementsAre("ZorApp: GetMainDllInstanceEx", "no entry"));
}

TEST(HostFunction, IsNullWhenZorAppHasNoSuchExport) {
  EXPECT_THAT(run("fake_host_plain", {appWithoutExports, behind, "host-function=2"}), ElementsAre("no entry"));
}

TEST(HostFunction, IsNullWithZorCoreAlone) {
  EXPECT_THAT(run("fake_host_plain", {"load=" + fakeHostLibrary("core", "ZorCore"), "host-function=2"}),
              ElementsAre("no entry"));
}

TEST(HostFunction, HandsTheIndexOn) {
  EXPECT_THAT(run("fake_host_plain", {view, "host-function=12", "host-function=0", "host-function=-1"}),
              ElementsAre("mainview: get_host_funcptr(12)", "an entry", "mainview: refresh(0)",
                          "mainview: get_host_funcptr(0)", "no entry", "mainview: get_host_funcptr(-1)", "no entry"));
}

TEST(HostFunction, IsLookedUpAnewAtEachUse) {
  EXPECT_THAT(
      run("fake_host_plain",
          {"host-function=12", appWithInstance, behind, "host-function=12", view, "host-function=12"}),
      ElementsAre("no entry", "ZorApp: GetMainDllInstanceEx", "behind_app: get_host_funcptr(12)", "an entry",
                  "behind_app: refresh(0)", "mainview: get_host_funcptr(12)", "an entry", "mainview: refresh(0)"));
}

}  // namespace
}  // namespace tiepoint::testing

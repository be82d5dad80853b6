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

std::vector<std::string> run(const std::string& program, const std::vector<std::string>& steps) {
  const ProgramResult result = runProgram(fakeHostProgram(program), steps);
  EXPECT_EQ(result.exitCode, 0);
  return result.lines;
}

TEST(CommandFactory, IsNullWithoutAnyHost) {
  EXPECT_THAT(run("fake_host_plain", {"command-factory"}), ElementsAre("no factory"));
}

TEST(CommandFactory, ComesFromTheLoadedModuleThatTheProgramNames) {
  EXPECT_THAT(run("fake_host_name", {"main=named_host", view, named, "command-factory"}),
              ElementsAre("program: GetMainDllNameW", "named_host: new_ICmdFactory", "a factory",
                          "named_host: factory released"));
}

TEST(CommandFactory, IsNullWhenTheModuleThatTheProgramNamesIsNotLoaded) {
  EXPECT_THAT(run("fake_host_name", {"main=named_host", view, "command-factory"}),
              ElementsAre("program: GetMainDllNameW", "no factory"));
}

TEST(CommandFactory, IsNullWhenTheModuleThatTheProgramNamesMakesNone) {
  const std::string bare = "load=" + fakeHostLibrary("named_without_exports", "named_host");
  EXPECT_THAT(run("fake_host_name", {"main=named_host", view, bare, "command-factory"}),
              ElementsAre("program: GetMainDllNameW", "no factory"));
}

TEST(CommandFactory, ComesFromTheViewInAProgramWithoutExports) {
  EXPECT_THAT(run("fake_host_plain", {view, "command-factory"}),
              ElementsAre("mainview: new_ICmdFactory", "a factory", "mainview: factory released"));
}

TEST(CommandFactory, PaysNoHeedToTheModuleThatTheProgramGives) {
  EXPECT_THAT(run("fake_host_instance", {"main=named_host", named, view, "command-factory"}),
              ElementsAre("mainview: new_ICmdFactory", "a factory", "mainview: factory released"));
}

TEST(CommandFactory, IsNullWhenTheViewMakesNoneThoughZorAppHasAModule) {
  const std::string bare = "load=" + fakeHostLibrary("view_without_exports", "mainview");
  EXPECT_THAT(run("fake_host_plain", {bare, appWithInstance, behind, "command-factory"}), ElementsAre("no factory"));
}

TEST(CommandFactory, IsNullWhenTheHostRefusesOne) {
  EXPECT_THAT(
      run("fake_host_plain", {"load=" + fakeHostLibrary("view_without_factory", "mainview"), "command-factory"}),
      ElementsAre("mainview: new_ICmdFactory", "no factory"));
}

TEST(CommandFactory, ComesFromTheModuleThatZorAppGives) {
  EXPECT_THAT(run("fake_host_plain", {appWithInstance, behind, "command-factory"}),
              ElementsAre("ZorApp: GetMainDllInstanceEx", "behind_app: new_ICmdFactory", "a factory",
                          "behind_app: factory released"));
}

TEST(CommandFactory, IsNullWhenZorAppGivesNoModule) {
  EXPECT_THAT(run("fake_host_plain", {appWithInstance, "command-factory"}),
              ElementsAre("ZorApp: GetMainDllInstanceEx", "no factory"));
}

TEST(CommandFactory, IsNullWhenZorAppHasNoSuchExport) {
  EXPECT_THAT(
      run("fake_host_plain", {"load=" + fakeHostLibrary("app_without_exports", "ZorApp"), behind, "command-factory"}),
      ElementsAre("no factory"));
}

TEST(BothLookUps, EndInTheViewInAProgramWithNeitherExport) {
  EXPECT_THAT(run("fake_host_plain", {view, "host-function=5", "command-factory"}),
              ElementsAre("mainview: get_host_funcptr(5)", "no entry", "mainview: new_ICmdFactory", "a factory",
                          "mainview: factory released"));
}

TEST(BothLookUps, GoTheirOwnWaysInAProgramWithBothExports) {
  EXPECT_THAT(run("fake_host_both", {"main=named_host", named, "host-function=5", "command-factory"}),
              ElementsAre("program: GetMainDllInstance", "named_host: get_host_funcptr(5)", "no entry",
                          "program: GetMainDllNameW", "named_host: new_ICmdFactory", "a factory",
                          "named_host: factory released"));
}

}  // namespace
}  // namespace tiepoint::testing

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_host/program.h"

namespace tiepoint::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string module = std::string("load=") + MODULE_FILE;
const std::string view = "load=" + fakeHostLibrary("view", "mainview");
const std::string viewWithoutExports = "load=" + fakeHostLibrary("view_without_exports", "mainview");
const std::string named = "load=" + fakeHostLibrary("named", "named_host");
const std::string namedWithoutExports = "load=" + fakeHostLibrary("named_without_exports", "named_host");
const std::string behind = "load=" + fakeHostLibrary("behind", "behind_app");
const std::string appWithInstance = "load=" + fakeHostLibrary("app_with_instance", "ZorApp");
const std::string appWithService = "load=" + fakeHostLibrary("app_with_service", "ZorApp");
const std::string appWithoutExports = "load=" + fakeHostLibrary("app_without_exports", "ZorApp");
const std::string core = "load=" + fakeHostLibrary("core", "ZorCore");
const std::string coreWithoutExports = "load=" + fakeHostLibrary("core_without_exports", "ZorCore");

/// What the steps of a host print; the process must end well.
std::vector<std::string> run(const std::string& program, const std::vector<std::string>& steps) {
  const ProgramResult result = runProgram(fakeHostProgram(program), steps);
  EXPECT_EQ(result.exitCode, 0);
  return result.lines;
}

/// What is printed when the module is loaded after the steps.
std::vector<std::string> whileLoading(const std::string& program, std::vector<std::string> steps) {
  steps.push_back(module);
  return run(program, steps);
}

/// The lines by which the module asks its library for a factory and registers its command.
std::vector<std::string> registration(const std::string& library) {
  return {library + ": new_ICmdFactory",
          library + ": command CLOUD_REGISTRATION/TSL_REG_IMPORT_REFS/TSL_REG_IMPORT_REFS, flags 4, a body",
          library + ": both names are the same text", library + ": factory released"};
}

std::vector<std::string> operator+(std::vector<std::string> lines, const std::vector<std::string>& more) {
  lines.insert(lines.end(), more.begin(), more.end());
  return lines;
}

/// The lines by which a running command takes the application object.
std::vector<std::string> commandRun(const std::string& library) {
  return {library + ": get_host_funcptr(2)", library + ": application"};
}

// --- The command is registered while the library is being loaded.

TEST(ModuleBeingLoaded, IsLoadedWithoutACommandWhereThereIsNoHost) {
  EXPECT_THAT(whileLoading("fake_host_plain", {}), IsEmpty());
}

TEST(ModuleBeingLoaded, IsLoadedWithoutACommandWithZorCoreAlone) {
  EXPECT_THAT(whileLoading("fake_host_plain", {core}), IsEmpty());
}

TEST(ModuleBeingLoaded, RegistersItsCommandAtTheLoadedModuleThatTheProgramNames) {
  EXPECT_EQ(whileLoading("fake_host_name", {"main=named_host", view, named}),
            std::vector<std::string>{"program: GetMainDllNameW"} + registration("named_host"));
}

TEST(ModuleBeingLoaded, HasNoCommandWhenTheModuleThatTheProgramNamesIsNotLoaded) {
  EXPECT_THAT(whileLoading("fake_host_name", {"main=named_host", view}), ElementsAre("program: GetMainDllNameW"));
}

TEST(ModuleBeingLoaded, HasNoCommandWhenTheModuleThatTheProgramNamesMakesNoFactory) {
  EXPECT_THAT(whileLoading("fake_host_name", {"main=named_host", view, namedWithoutExports}),
              ElementsAre("program: GetMainDllNameW"));
}

TEST(ModuleBeingLoaded, RegistersItsCommandAtTheViewInAProgramWithoutExports) {
  EXPECT_EQ(whileLoading("fake_host_plain", {appWithInstance, behind, view}), registration("mainview"));
}

TEST(ModuleBeingLoaded, RegistersItsCommandAtTheViewThoughTheProgramGivesAModule) {
  EXPECT_EQ(whileLoading("fake_host_instance", {"main=named_host", named, view}), registration("mainview"));
}

TEST(ModuleBeingLoaded, HasNoCommandWhenTheViewMakesNoFactory) {
  EXPECT_THAT(whileLoading("fake_host_plain", {viewWithoutExports, appWithInstance, behind}), IsEmpty());
}

TEST(ModuleBeingLoaded, HasNoCommandWhenTheHostRefusesAFactory) {
  EXPECT_THAT(whileLoading("fake_host_plain", {"load=" + fakeHostLibrary("view_without_factory", "mainview")}),
              ElementsAre("mainview: new_ICmdFactory"));
}

TEST(ModuleBeingLoaded, HasNoCommandWhenTheFactoryFailsAndGivesTheFactoryBack) {
  EXPECT_EQ(whileLoading("fake_host_plain", {"load=" + fakeHostLibrary("view_failing_at_the_command", "mainview")}),
            registration("mainview"));
}

TEST(ModuleBeingLoaded, HasNoCommandWhenTheHostFailsInsteadOfGivingAFactory) {
  EXPECT_THAT(whileLoading("fake_host_plain", {"load=" + fakeHostLibrary("view_failing_at_the_factory", "mainview")}),
              ElementsAre("mainview: new_ICmdFactory"));
}

TEST(ModuleBeingLoaded, RegistersItsCommandAtTheModuleThatZorAppGives) {
  EXPECT_EQ(whileLoading("fake_host_plain", {appWithInstance, behind}),
            std::vector<std::string>{"ZorApp: GetMainDllInstanceEx"} + registration("behind_app"));
}

TEST(ModuleBeingLoaded, HasNoCommandWhenZorAppGivesNoModule) {
  EXPECT_THAT(whileLoading("fake_host_plain", {appWithInstance}), ElementsAre("ZorApp: GetMainDllInstanceEx"));
}

TEST(ModuleBeingLoaded, HasNoCommandWhenZorAppHasNoSuchExport) {
  EXPECT_THAT(whileLoading("fake_host_plain", {appWithoutExports, behind}), IsEmpty());
}

// --- The running command finds the host's table by the other look-up.

TEST(ModulesCommand, FindsTheHostInTheModuleThatTheProgramGives) {
  EXPECT_EQ(
      run("fake_host_instance", {"main=named_host", named, view, module, "run=mainview"}),
      registration("mainview") + std::vector<std::string>{"program: GetMainDllInstance"} + commandRun("named_host"));
}

TEST(ModulesCommand, FindsNoHostWhenTheProgramGivesNoModuleThoughTheViewIsLoaded) {
  EXPECT_EQ(run("fake_host_instance", {"main=none", view, module, "run=mainview"}),
            registration("mainview") + std::vector<std::string>{"program: GetMainDllInstance"});
}

TEST(ModulesCommand, FindsNoHostWhenTheModuleThatTheProgramGivesLacksTheTable) {
  EXPECT_EQ(run("fake_host_instance", {"main=named_host", namedWithoutExports, view, module, "run=mainview"}),
            registration("mainview") + std::vector<std::string>{"program: GetMainDllInstance"});
}

TEST(ModulesCommand, FindsTheHostInTheViewThoughTheProgramNamesAModule) {
  EXPECT_EQ(run("fake_host_name", {"main=named_host", named, view, module, "run=named_host"}),
            std::vector<std::string>{"program: GetMainDllNameW"} + registration("named_host") + commandRun("mainview"));
}

TEST(ModulesCommand, FindsTheHostInTheViewInAProgramWithoutExports) {
  EXPECT_EQ(run("fake_host_plain", {appWithInstance, behind, view, module, "run=mainview"}),
            registration("mainview") + commandRun("mainview"));
}

TEST(ModulesCommand, FindsTheHostInTheModuleThatZorAppGives) {
  EXPECT_EQ(run("fake_host_plain", {appWithInstance, behind, module, "run=behind_app"}),
            std::vector<std::string>{"ZorApp: GetMainDllInstanceEx"} + registration("behind_app") +
                std::vector<std::string>{"ZorApp: GetMainDllInstanceEx"} + commandRun("behind_app"));
}

TEST(ModulesCommand, FindsNoHostWhereZorAppHasNoSuchExport) {
  EXPECT_EQ(run("fake_host_name", {"main=named_host", named, appWithoutExports, behind, module, "run=named_host"}),
            std::vector<std::string>{"program: GetMainDllNameW"} + registration("named_host"));
}

TEST(ModulesCommand, FindsNoHostWhereZorAppGivesNoModule) {
  EXPECT_EQ(run("fake_host_name", {"main=named_host", named, appWithInstance, module, "run=named_host"}),
            std::vector<std::string>{"program: GetMainDllNameW"} + registration("named_host") +
                std::vector<std::string>{"ZorApp: GetMainDllInstanceEx"});
}

TEST(ModulesCommand, FindsNoHostWhereNoLibraryIsItsOwn) {
  EXPECT_EQ(run("fake_host_name", {"main=named_host", named, core, module, "run=named_host"}),
            std::vector<std::string>{"program: GetMainDllNameW"} + registration("named_host"));
}

TEST(ModulesCommand, FindsNoHostWhenTheViewLacksTheTableThoughZorAppHasAModule) {
  EXPECT_EQ(run("fake_host_name",
                {"main=named_host", named, viewWithoutExports, appWithInstance, behind, module, "run=named_host"}),
            std::vector<std::string>{"program: GetMainDllNameW"} + registration("named_host"));
}

// --- A session of the module reads its presets by a look-up of its own.

/// The preset number of iterations that a session of the module tells in that host.
std::string presetIn(const std::string& program, std::vector<std::string> steps) {
  steps.push_back(module);
  steps.push_back("session=TSL_Registration");
  for (const std::string& line : run(program, steps)) {
    if (line.rfind("preset ", 0) == 0) return line;
  }
  return "no preset";
}

TEST(ModulesSession, HasTheDefaultPresetInAHostWithoutAProfile) {
  EXPECT_EQ(presetIn("fake_host_plain", {view}), "preset 100");
}

TEST(ModulesSession, TakesThePresetFromZorApp) {
  EXPECT_EQ(presetIn("fake_host_plain", {view, appWithService, core}), "preset 11");
}

TEST(ModulesSession, TakesThePresetFromZorAppThoughTheProgramGivesAModule) {
  EXPECT_EQ(presetIn("fake_host_instance", {"main=named_host", named, appWithService}), "preset 11");
}

TEST(ModulesSession, TakesThePresetFromTheModuleThatTheProgramGives) {
  EXPECT_EQ(presetIn("fake_host_instance", {"main=named_host", named, appWithoutExports, core}), "preset 22");
}

TEST(ModulesSession, HasTheDefaultPresetWhenTheModuleThatTheProgramGivesHasNoProfile) {
  EXPECT_EQ(presetIn("fake_host_instance", {"main=mainview", view, core}), "preset 100");
}

TEST(ModulesSession, TakesThePresetFromZorCoreInAProgramWithoutExports) {
  EXPECT_EQ(presetIn("fake_host_plain", {view, appWithoutExports, core}), "preset 33");
}

TEST(ModulesSession, HasTheDefaultPresetWhenZorCoreHasNoSuchExport) {
  EXPECT_EQ(presetIn("fake_host_plain", {view, coreWithoutExports}), "preset 100");
}

}  // namespace
}  // namespace tiepoint::testing

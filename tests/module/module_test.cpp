#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <sstream>
#include <string>
#include <vector>

#include "fake_host/library.h"
#include "fake_host/program.h"
#include "platform/os/loaded_modules.h"
#include "platform/sdk/od_alloc.h"
#include "platform/sdk/od_rx_module.h"
#include "session/i_multi_registrator.h"
#include "support/platform.h"

namespace tiepoint::testing {
namespace {

using ::testing::ElementsAre;

using GetApiVersion = void (*)(int*, int*, int*, int*);
using CreateModuleObject = OdRxModule* (*)(OdModuleHandle*);

int newHandlerCalls = 0;
void countNewHandlerCall() { ++newHandlerCalls; }

/// The built module, loaded for one test.
class Module : public ::testing::Test {
 protected:
  Module() : library(loadLibrary(MODULE_FILE)) {}
  ~Module() override {
    odrxStopFailingAllocations();
    std::set_new_handler(nullptr);
    if (object) object->deleteModule();
    unloadLibrary(library);
  }

  void SetUp() override { ASSERT_NE(library, nullptr); }

  template <class Function>
  Function entry(const char* name) {
    return os::exportAs<Function>(library, name);
  }

  /// Deleted when the test ends.
  OdRxModule* createObject(OdModuleHandle& handle) {
    object = entry<CreateModuleObject>("odrxCreateModuleObject")(&handle);
    return object;
  }

  os::ModuleHandle library;
  OdRxModule* object = nullptr;
};

#ifdef SYMBOL_LISTER
TEST(ModuleFile, ExportsThreeSymbolsAndNoOther) {
  const ProgramResult listing = runProgram(SYMBOL_LISTER, {"-D", "--defined-only", MODULE_FILE});
  ASSERT_EQ(listing.exitCode, 0);
  std::vector<std::string> names;
  for (const std::string& line : listing.lines) {
    std::istringstream fields(line);
    std::string address, kind, name;
    fields >> address >> kind >> name;
    names.push_back(kind.append(" ").append(name));
  }
  std::sort(names.begin(), names.end());
  EXPECT_THAT(names,
              ElementsAre("T _ZN3ZOR3reg19GetMultiRegistratorEv", "T odrxCreateModuleObject", "T odrxGetAPIVersion"));
}
#endif

TEST_F(Module, TellsTheVersionOfTheDrawingSdkThatItIsBuiltFor) {
  int version[4] = {-1, -1, -1, -1};
  entry<GetApiVersion>("odrxGetAPIVersion")(&version[0], &version[1], &version[2], &version[3]);
  EXPECT_THAT(version, ElementsAre(21, 8, 0, 0));
}

TEST_F(Module, TakesTheHandleOverWhenItsObjectIsMade) {
  OdModuleHandle handle = library;
  ASSERT_NE(createObject(handle), nullptr);
  EXPECT_EQ(handle, nullptr);
  EXPECT_EQ(object->moduleHandle(), library);
  EXPECT_EQ(object->numRefs(), 0);
}

TEST_F(Module, GivesTheSameObjectTheSecondTimeAndLeavesTheHandleUntouched) {
  OdModuleHandle first = library;
  OdRxModule* made = createObject(first);
  int anything = 0;
  OdModuleHandle second = &anything;
  EXPECT_EQ(createObject(second), made);
  EXPECT_EQ(second, &anything);
  EXPECT_EQ(made->moduleHandle(), library);
}

TEST_F(Module, MakesANewObjectAfterTheOldOneWasDeleted) {
  OdModuleHandle handle = library;
  createObject(handle)->deleteModule();
  handle = library;
  ASSERT_NE(createObject(handle), nullptr);
  EXPECT_EQ(handle, nullptr);
  EXPECT_EQ(object->numRefs(), 0);
}

TEST_F(Module, CountsReferencesAndGoesWithTheLast) {
  OdModuleHandle handle = library;
  createObject(handle);
  object->addRef();
  object->addRef();
  EXPECT_EQ(object->numRefs(), 2);
  object->release();
  EXPECT_EQ(object->numRefs(), 1);
  object->release();
  // The library knows of no object any more: the next one takes a handle again.
  handle = library;
  createObject(handle);
  EXPECT_EQ(handle, nullptr);
}

TEST_F(Module, AllocatesItsObjectOnceByTheDrawingSdk) {
  OdModuleHandle handle = library;
  const std::uint64_t before = odrxAllocationCount();
  createObject(handle);
  EXPECT_EQ(odrxAllocationCount() - before, 1U);
}

TEST_F(Module, StartsAndStopsWithoutDoingAnything) {
  OdModuleHandle handle = library;
  createObject(handle);
  const std::uint64_t before = odrxAllocationCount();
  object->initApp();
  object->uninitApp();
  EXPECT_EQ(odrxAllocationCount(), before);
  EXPECT_EQ(object->numRefs(), 0);
}

TEST_F(Module, TellsThePathOfItsFile) {
  OdModuleHandle handle = library;
  createObject(handle);
  const std::string expected = nativePath(MODULE_FILE);
  ASSERT_LT(expected.size(), 260U);
  EXPECT_EQ(object->moduleFileName().wideText(), std::wstring(expected.begin(), expected.end()));
}

TEST_F(Module, ThrowsWithoutMemoryAndWithoutANewHandler) {
  OdModuleHandle handle = library;
  odrxFailAllocationsAfter(0);
  EXPECT_THROW(createObject(handle), std::bad_alloc);
  odrxStopFailingAllocations();
  EXPECT_EQ(handle, library);
  EXPECT_NE(createObject(handle), nullptr);
}

TEST_F(Module, GivesNoObjectWithoutMemoryAfterTheNewHandlerWasCalled) {
  OdModuleHandle handle = library;
  newHandlerCalls = 0;
  std::set_new_handler(countNewHandlerCall);
  odrxFailAllocationsAfter(0);
  OdRxModule* made = createObject(handle);
  odrxStopFailingAllocations();
  EXPECT_EQ(made, nullptr);
  EXPECT_EQ(newHandlerCalls, 1);
  EXPECT_EQ(handle, library);
  EXPECT_NE(createObject(handle), nullptr);
  EXPECT_EQ(handle, nullptr);
}

TEST_F(Module, GivesNoSessionWithoutMemoryAfterTheNewHandlerWasCalled) {
  const auto getRegistrator = entry<ZOR::reg::GetMultiRegistratorFunction>("_ZN3ZOR3reg19GetMultiRegistratorEv");
  newHandlerCalls = 0;
  std::set_new_handler(countNewHandlerCall);
  odrxFailAllocationsAfter(0);
  ZOR::reg::iMultiRegistrator* session = getRegistrator();
  odrxStopFailingAllocations();
  EXPECT_EQ(session, nullptr);
  EXPECT_EQ(newHandlerCalls, 1);
}

TEST_F(Module, ThrowsForASessionWithoutMemoryAndWithoutANewHandler) {
  const auto getRegistrator = entry<ZOR::reg::GetMultiRegistratorFunction>("_ZN3ZOR3reg19GetMultiRegistratorEv");
  odrxFailAllocationsAfter(0);
  EXPECT_THROW(getRegistrator(), std::bad_alloc);
  odrxStopFailingAllocations();
}

TEST(ModuleFile, LeavesTheProcessWhenItIsUnloaded) {
  const os::ModuleHandle library = loadLibrary(MODULE_FILE);
  ASSERT_NE(os::loadedModule("TSL_Registration"), nullptr);
  unloadLibrary(library);
  EXPECT_EQ(os::loadedModule("TSL_Registration"), nullptr);
}

}  // namespace
}  // namespace tiepoint::testing

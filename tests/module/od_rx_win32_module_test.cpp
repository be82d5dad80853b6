#include "platform/sdk/od_rx_win32_module.h"

#include <gtest/gtest.h>

#include <string>

#include "support/virtual_table.h"

namespace {

class SmallModule : public OdRxModule {
 public:
  ~SmallModule() override { ++deletions; }
  void initApp() override {}
  void uninitApp() override {}

  static int deletions;
};
int SmallModule::deletions = 0;

struct LongPaths {
  static std::size_t length;
  static std::wstring fileNameOf(OdModuleHandle) { return std::wstring(length, L'n'); }
};
std::size_t LongPaths::length = 0;

using SmallModuleObject = OdRxWin32Module<SmallModule, LongPaths>;

SmallModuleObject* create() {
  OdModuleHandle handle = nullptr;
  return SmallModuleObject::createModule(handle);
}

TEST(OdRxWin32Module, TellsAPathOf259CharactersWhole) {
  LongPaths::length = 259;
  SmallModuleObject* module = create();
  EXPECT_EQ(module->moduleFileName().getLength(), 259);
  module->deleteModule();
}

TEST(OdRxWin32Module, CutsALongerPathToWhatItsBufferHolds) {
  LongPaths::length = 260;
  SmallModuleObject* module = create();
  EXPECT_EQ(module->moduleFileName().getLength(), 259);
  LongPaths::length = 1000;
  EXPECT_EQ(module->moduleFileName().getLength(), 259);
  module->deleteModule();
}

TEST(OdRxWin32Module, IsDeletedOnceByDeleteModule) {
  SmallModule::deletions = 0;
  create()->deleteModule();
  EXPECT_EQ(SmallModule::deletions, 1);
}

TEST(OdRxWin32Module, IsDeletedOnceByTheLastRelease) {
  SmallModule::deletions = 0;
  SmallModuleObject* module = create();
  module->addRef();
  module->release();
  EXPECT_EQ(SmallModule::deletions, 1);
}

TEST(OdRxWin32Module, IsAnObjectOfTheModuleClass) {
  SmallModuleObject* module = create();
  EXPECT_TRUE(module->isKindOf(OdRxModule::desc()));
  module->deleteModule();
}

#ifndef _MSC_VER

TEST(OdRxWin32Module, HasItsFunctionsWhereTheDrawingSdkLooksForThem) {
  using namespace tiepoint::testing;
  using Object = SmallModuleObject;
  EXPECT_TRUE(std::has_virtual_destructor_v<OdRxModule>);
  // Between the count and the handle stand what every object of the SDK can do.
  EXPECT_EQ(placesOf(&Object::addRef, &Object::release, &Object::numRefs), inTurn(5, 3));
  EXPECT_EQ(placesOf(&Object::moduleHandle, &Object::deleteModule, &Object::initApp, &Object::uninitApp,
                     &Object::moduleFileName),
            inTurn(12, 5));
}

#endif

}  // namespace

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "platform/host/exports.h"
#include "platform/os/loaded_modules.h"
#include "workbench/host/workbench.h"

namespace tiepoint::workbench {
namespace {

os::ModuleHandle thisProgram() { return os::loadedModule(static_cast<const wchar_t*>(nullptr)); }

template <class Function>
Function hostExport(const char* name) {
  return os::exportAs<Function>(thisProgram(), name);
}

/// What a caller's variable may hold before it receives a factory.
class EarlierFactory final : public ICmdFactory {
 public:
  void addCommand(const wchar_t*, const wchar_t*, const wchar_t*, int, HostCommandBody) override {}
  void release() override {}
};

ICmdFactory* newFactory() {
  static EarlierFactory earlier;
  ICmdFactory* factory = &earlier;
  hostExport<NewCommandFactoryFunction>("new_ICmdFactory")(&factory);
  return factory;
}

void doNothing() {}

TEST(HostExports, GiveTheHandleOfTheProgramItself) {
  EXPECT_EQ(hostExport<GetMainDllInstanceFunction>("GetMainDllInstance")(), thisProgram());
}

TEST(HostExports, GiveTheFileNameOfTheProgramItself) {
  const std::wstring name = hostExport<GetMainDllNameFunction>("GetMainDllNameW")();
  EXPECT_EQ(name, std::filesystem::path(os::moduleFileName(thisProgram())).filename().wstring());
  EXPECT_EQ(os::loadedModule(name.c_str()), thisProgram());
}

TEST(HostExports, GiveNullWhenNoWorkbenchStands) {
  const auto table = hostExport<GetHostFunctionFunction>("get_host_funcptr");
  EXPECT_EQ(table(hostApplicationEntry), nullptr);
  EXPECT_EQ(table(hostRefreshEntry), nullptr);
  EXPECT_EQ(newFactory(), nullptr);
  EXPECT_EQ(hostExport<GetAppFunction>("GetApp")(), nullptr);
}

TEST(HostExports, HaveTwoEntriesInTheTable) {
  const Workbench workbench({{}, FAKE_MODULE});
  const auto table = hostExport<GetHostFunctionFunction>("get_host_funcptr");
  for (int index = -1; index < 20; ++index) {
    EXPECT_EQ(table(index) != nullptr, index == 2 || index == 12) << index;
  }
}

TEST(HostExports, GiveTheApplicationObjectUnderEntry2) {
  Workbench workbench({{}, FAKE_MODULE});
  const auto table = hostExport<GetHostFunctionFunction>("get_host_funcptr");
  EXPECT_EQ(reinterpret_cast<HostApplicationFunction>(table(2))(), &workbench);
}

TEST(HostExports, CountRefreshesUnderEntry12) {
  const Workbench workbench({{}, FAKE_MODULE});
  const auto table = hostExport<GetHostFunctionFunction>("get_host_funcptr");
  const auto refresh = reinterpret_cast<HostRefreshFunction>(table(12));
  EXPECT_EQ(workbench.redrawCount(), 0u);
  refresh(0);
  refresh(0);
  EXPECT_EQ(workbench.redrawCount(), 2u);
}

TEST(HostExports, KeepAnEntryHarmlessAfterTheWorkbenchIsGone) {
  HostApplicationFunction application = nullptr;
  HostRefreshFunction refresh = nullptr;
  {
    const Workbench workbench({{}, FAKE_MODULE});
    const auto table = hostExport<GetHostFunctionFunction>("get_host_funcptr");
    application = reinterpret_cast<HostApplicationFunction>(table(2));
    refresh = reinterpret_cast<HostRefreshFunction>(table(12));
  }
  EXPECT_EQ(application(), nullptr);
  refresh(0);
}

TEST(HostExports, GiveAFactoryThatRegistersWithTheWorkbench) {
  const Workbench workbench({{}, FAKE_MODULE});
  ICmdFactory* const factory = newFactory();
  ASSERT_NE(factory, nullptr);
  factory->addCommand(L"G", L"NEW", L"NEW", 1, &doNothing);
  factory->release();
  EXPECT_EQ(workbench.commands().back().globalName, L"NEW");
}

TEST(HostExports, GiveAnApplicationServiceThatReadsTheProfile) {
  Workbench workbench({{}, FAKE_MODULE});
  workbench.profile().set(registrationSection, "MaxIterations", 7);
  HostAppService* const service = hostExport<GetAppFunction>("GetApp")();
  ASSERT_NE(service, nullptr);
  HostProfile* const profile = service->queryProfile(iidHostProfile);
  service->release();
  ASSERT_NE(profile, nullptr);
  HostProfileSection* const section = profile->openSection(L"PointClouds\\Registration", 1);
  profile->release();
  ASSERT_NE(section, nullptr);
  CZorVariant value;
  EXPECT_NE(section->readValue(L"MaxIterations", value), 0);
  EXPECT_EQ(static_cast<int>(value), 7);
  section->release();
}

}  // namespace
}  // namespace tiepoint::workbench

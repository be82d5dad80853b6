#include "workbench/host/command_registry.h"

#include <gtest/gtest.h>

#include <string>

namespace tiepoint::workbench {
namespace {

void firstBody() {}
void secondBody() {}

TEST(CommandRegistry, TakesACommandFromItsFactory) {
  CommandRegistry registry;
  ICmdFactory* const factory = registry.newFactory();
  factory->addCommand(L"GROUP", L"GLOBAL", L"LOCAL", 4, &firstBody);
  factory->release();
  ASSERT_EQ(registry.commands().size(), 1u);
  EXPECT_EQ(registry.commands()[0].group, L"GROUP");
  EXPECT_EQ(registry.commands()[0].globalName, L"GLOBAL");
  EXPECT_EQ(registry.commands()[0].localName, L"LOCAL");
  EXPECT_EQ(registry.commands()[0].flags, 4);
  EXPECT_EQ(registry.commands()[0].body, &firstBody);
}

TEST(CommandRegistry, CopiesTheTexts) {
  CommandRegistry registry;
  ICmdFactory* const factory = registry.newFactory();
  std::wstring name = L"BEFORE";
  factory->addCommand(name.c_str(), name.c_str(), name.c_str(), 0, &firstBody);
  name = L"AFTERS";
  factory->release();
  EXPECT_EQ(registry.commands()[0].globalName, L"BEFORE");
}

TEST(CommandRegistry, FindsTheFirstCommandOfAGlobalName) {
  CommandRegistry registry;
  registry.add({L"", L"A", L"X", 0, &firstBody});
  registry.add({L"", L"A", L"Y", 0, &secondBody});
  ASSERT_NE(registry.find(L"A"), nullptr);
  EXPECT_EQ(registry.find(L"A")->body, &firstBody);
}

TEST(CommandRegistry, LooksForTheGlobalNameAloneAndExactly) {
  CommandRegistry registry;
  registry.add({L"", L"A", L"X", 0, &firstBody});
  EXPECT_EQ(registry.find(L"X"), nullptr);
  EXPECT_EQ(registry.find(L"a"), nullptr);
  EXPECT_EQ(registry.find(L""), nullptr);
}

}  // namespace
}  // namespace tiepoint::workbench

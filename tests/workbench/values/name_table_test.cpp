#include "workbench/values/name_table.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "session/name_tables.h"

namespace {

using namespace tiepoint::workbench;

TEST(NameTable, ShowsAnIdThatStandsTwiceUnderItsFirstName) {
  const NameTable table({{4, "first"}, {4, "second"}});
  EXPECT_EQ(*table.nameOf(4), "first");
  EXPECT_EQ(table.nameOf(0), nullptr);
}

TEST(NameTable, TakesANameThatStandsTwiceForItsFirstId) {
  const NameTable table({{4, "T"}, {2, "T"}});
  EXPECT_EQ(table.idOf("T"), 4u);
  EXPECT_EQ(table.idOf("U"), std::nullopt);
}

TEST(NameTable, ShowsTheSecondNameOnceTheFirstIsGone) {
  NameTable table({{4, "first"}, {0, "other"}, {4, "second"}});
  table.eraseFirst(4);
  EXPECT_EQ(*table.nameOf(4), "second");
  EXPECT_EQ(table.entries().size(), 2u);
  table.eraseFirst(9);
  EXPECT_EQ(table.entries().size(), 2u);
}

TEST(NameTable, FillsTheGapsInItsNumbers) {
  NameTable table({{0, "a"}, {2, "b"}});
  EXPECT_EQ(table.freeId(), 1u);
  table.append(1, "c");
  EXPECT_EQ(table.freeId(), 3u);
}

TEST(NameTable, OfNoNamesKnowsNone) {
  const NameTable table;
  EXPECT_EQ(table.nameOf(0), nullptr);
  EXPECT_EQ(table.idOf(""), std::nullopt);
  EXPECT_EQ(table.freeId(), 0u);
}

TEST(NameTable, TellsCaseAndBlanksOfNamesApart) {
  const NameTable table({{0, "t1"}, {1, "T1"}, {2, "T1 "}, {3, ""}});
  EXPECT_EQ(table.idOf("T1"), 1u);
  EXPECT_EQ(table.idOf("T1 "), 2u);
  EXPECT_EQ(table.idOf(""), 3u) << "an empty name is one";
}

TEST(NameTable, KeepsTheOrderOfItsEntries) {
  NameTable table({{7, "b"}, {3, "a"}});
  table.append(1, "c");
  table.eraseFirst(7);
  ASSERT_EQ(table.entries().size(), 2u);
  EXPECT_EQ(table.entries()[0].id, 3u);
  EXPECT_EQ(table.entries()[1].name, "c");
}

TEST(NameTable, FindsTheNamesBehindOneThatIsGone) {
  NameTable table({{0, "a"}, {1, "b"}, {2, "c"}});
  table.eraseFirst(1);
  EXPECT_EQ(*table.nameOf(0), "a");
  EXPECT_EQ(table.nameOf(1), nullptr);
  EXPECT_EQ(*table.nameOf(2), "c");
  EXPECT_EQ(table.freeId(), 1u);
}

TEST(NameTable, ANameThatIsAppendedUnderAnIdThatThereIsIsNotShown) {
  NameTable table({{4, "first"}});
  table.append(4, "second");
  EXPECT_EQ(*table.nameOf(4), "first");
  EXPECT_EQ(table.idOf("second"), 4u);
}

RC_GTEST_PROP(NameTable, LooksNamesUpAsASessionDoes, (const std::vector<std::pair<std::uint8_t, std::uint8_t>>& ids)) {
  NameTable table;
  ZOR::reg::NamedIdList list;
  for (const auto& [id, name] : ids) {
    table.append(id % 16u, std::to_string(name % 16u));
    list.push_back({id % 16u, std::to_string(name % 16u)});
  }
  const ZOR::reg::NamesById nameOf(list);
  const ZOR::reg::IdsByName idOf = ZOR::reg::idsByName(list);
  for (std::uint64_t i = 0; i < 16; ++i) {
    const std::string* name = table.nameOf(i);
    RC_ASSERT((name ? *name : std::string()) == nameOf[i]);
    const auto known = idOf.find(std::to_string(i));
    RC_ASSERT(table.idOf(std::to_string(i)).value_or(99) == (known == idOf.end() ? 99 : known->second));
  }
  RC_ASSERT(table.freeId() == ZOR::reg::smallestFreeId(list));
}

}  // namespace

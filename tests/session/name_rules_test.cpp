#include "session/name_rules.h"

#include <gtest/gtest.h>

namespace {

using ZOR::reg::isGroupName;
using ZOR::reg::isPointName;

struct Row {
  const char* name;
  bool group;
  bool point;
};

TEST(NameRules, DecideByTheTable) {
  const Row rows[] = {
      {"", false, false},    {"S1", true, true},    {"S 1", true, false},  {"S\t1", true, false},
      {"S/1", false, true},  {"S\\1", false, true}, {"S<1", false, true},  {"S>1", false, true},
      {"S*1", false, true},  {"S|1", false, true},  {"S?1", false, true},  {"S:1", false, true},
      {"S\"1", false, true}, {"S.1", false, true},  {"?", false, true},    {"con", false, true},
      {"COM1", false, true}, {"com0", true, true},  {"com10", true, true}, {"console", true, true},
      {"Lpt7", false, true}, {"lpt", true, true},   {"lpt0", true, true},  {"NUL", false, true},
      {"Aux", false, true},  {"pRn", false, true},  {"xcon", true, true},  {"\xC0\xC1", true, true},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(isGroupName(row.name), row.group) << row.name;
    EXPECT_EQ(isPointName(row.name), row.point) << row.name;
  }
}

}  // namespace

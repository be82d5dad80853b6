#include "workbench/values/layouts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace tiepoint::workbench {
namespace {

TEST(Layouts, AreTheRowsOfTheImportDialogsFilterList) {
  EXPECT_EQ(static_cast<int>(Layout::nxyz), 1);
  EXPECT_EQ(static_cast<int>(Layout::xyz), 2);
  EXPECT_EQ(static_cast<int>(Layout::xyzw), 3);
  EXPECT_EQ(static_cast<int>(Layout::nxyzw), 4);
  for (std::size_t row = 0; row < allLayouts.size(); ++row) {
    EXPECT_EQ(static_cast<int>(allLayouts[row].layout), static_cast<int>(row) + 1);
  }
}

TEST(Layouts, HaveANameAndTheFieldsOfALine) {
  EXPECT_STREQ(layoutInfo(Layout::nxyz).name, "NXYZ");
  EXPECT_STREQ(layoutInfo(Layout::nxyz).fields, "name x y z");
  EXPECT_STREQ(layoutInfo(Layout::xyz).name, "XYZ");
  EXPECT_STREQ(layoutInfo(Layout::xyz).fields, "x y z");
  EXPECT_STREQ(layoutInfo(Layout::xyzw).name, "XYZW");
  EXPECT_STREQ(layoutInfo(Layout::xyzw).fields, "x y z weight");
  EXPECT_STREQ(layoutInfo(Layout::nxyzw).name, "NXYZW");
  EXPECT_STREQ(layoutInfo(Layout::nxyzw).fields, "name x y z weight");
}

TEST(Layouts, CountTheFieldsThatTheySay) {
  for (const LayoutInfo& info : allLayouts) {
    std::istringstream fields(info.fields);
    std::size_t count = 0;
    for (std::string field; fields >> field;) ++count;
    EXPECT_EQ(info.fieldCount, count) << info.name;
    EXPECT_EQ(info.hasName, std::string(info.fields).rfind("name", 0) == 0) << info.name;
  }
}

TEST(LayoutByName, IsFoundInAnyCase) {
  EXPECT_EQ(layoutByName("NXYZ"), Layout::nxyz);
  EXPECT_EQ(layoutByName("xyz"), Layout::xyz);
  EXPECT_EQ(layoutByName("xYzW"), Layout::xyzw);
  EXPECT_EQ(layoutByName("nXyZw"), Layout::nxyzw);
}

TEST(LayoutByName, IsNothingForAnyOtherText) {
  for (const std::string text : {"", " ", "XY", "XYZ ", " XYZ", "XYZWN", "1", "nxyz\n", "\xD1\x85yz", "\xFF\xFE"}) {
    EXPECT_FALSE(layoutByName(text)) << text;
  }
  EXPECT_FALSE(layoutByName(std::string("XYZ\0", 4)));
}

}  // namespace
}  // namespace tiepoint::workbench

#include "platform/sdk/od_array.h"

#include <gtest/gtest.h>

#include <string>

TEST(OdArray, IsEmptyAtFirst) {
  const OdArray<int> array;
  EXPECT_TRUE(array.isEmpty());
  EXPECT_TRUE(array.empty());
  EXPECT_EQ(array.size(), 0u);
}

TEST(OdArray, KeepsTheOrderInWhichElementsWereAppended) {
  OdArray<std::string> array;
  array.append("north");
  array.push_back("south");
  EXPECT_EQ(array.length(), 2u);
  EXPECT_EQ(array[0], "north");
  EXPECT_EQ(array[1], "south");
}

TEST(OdArray, CopiesAreIndependent) {
  OdArray<std::string> array;
  array.append("north");
  OdArray<std::string> copy = array;
  copy[0] = "south";
  copy.append("east");
  EXPECT_EQ(array[0], "north");
  EXPECT_EQ(array.size(), 1u);
}

TEST(OdArray, ClearEmptiesIt) {
  OdArray<int> array;
  array.append(1);
  array.clear();
  EXPECT_TRUE(array.isEmpty());
}

#include "workbench/picture/text_fit.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace tiepoint::workbench::picture {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Every character is one wide.
double count(const std::string& text) {
  return static_cast<double>(
      std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

TEST(TextFit, LeavesATextThatFits) { EXPECT_EQ(shortened("station", 7, count), "station"); }

TEST(TextFit, CutsATextAndSaysSo) { EXPECT_EQ(shortened("station", 5, count), "stat…"); }

TEST(TextFit, CutsBetweenCharactersNotBytes) { EXPECT_EQ(shortened("Мишень", 4, count), "Миш…"); }

TEST(TextFit, KeepsTheSignOfCuttingWhenNothingElseFits) { EXPECT_EQ(shortened("station", 0, count), "…"); }

TEST(TextFit, BreaksLinesAtBlanks) {
  EXPECT_THAT(wrapped("a triangle marks  a station", 10, count), ElementsAre("a triangle", "marks a", "station"));
}

TEST(TextFit, ShortensAWordThatIsWiderThanALine) {
  EXPECT_THAT(wrapped("of Stationsnamen", 6, count), ElementsAre("of", "Stati…"));
}

TEST(TextFit, MakesNoLinesOfNoWords) {
  EXPECT_THAT(wrapped("", 10, count), IsEmpty());
  EXPECT_THAT(wrapped("   ", 10, count), IsEmpty());
}

}  // namespace
}  // namespace tiepoint::workbench::picture

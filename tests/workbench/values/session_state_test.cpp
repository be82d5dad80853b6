#include "workbench/values/session_state.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench {
namespace {

SessionGroup groupOf(ZOR::reg::GroupId id, const std::string& name) {
  SessionGroup group;
  group.id = id;
  group.name = name;
  return group;
}

TEST(SessionState, FindsAGroupByItsId) {
  SessionState state;
  state.groups = {groupOf(0, "A"), groupOf(3, "D"), groupOf(8, "I")};
  EXPECT_EQ(state.group(0).name, "A");
  EXPECT_EQ(state.group(3).name, "D");
  EXPECT_EQ(state.group(8).name, "I");
}

TEST(SessionState, HasNoGroupOfAnyOtherId) {
  SessionState state;
  EXPECT_THROW(state.group(0), std::out_of_range);
  state.groups = {groupOf(2, "C"), groupOf(3, "D")};
  EXPECT_THROW(state.group(1), std::out_of_range);
  EXPECT_THROW(state.group(4), std::out_of_range);
  EXPECT_THROW(state.group(std::numeric_limits<ZOR::reg::GroupId>::max()), std::out_of_range);
}

TEST(SessionName, IsTheTextItselfWhereWindows1251HasIt) {
  EXPECT_EQ(sessionName("T1"), "T1");
  EXPECT_EQ(sessionName(""), "");
  EXPECT_EQ(sessionName("\xD0\xA6\xD0\xB5\xD1\x85"), "\xD0\xA6\xD0\xB5\xD1\x85") << "Cyrillic letters";
  EXPECT_EQ(sessionName("\xE2\x84\x96 5"), "\xE2\x84\x96 5") << "the numero sign";
}

TEST(SessionName, KeepsWhatWindows1251Lacks) {
  EXPECT_EQ(sessionName("T\xC3\xBC"
                        "1"),
            "T\xC3\xBC"
            "1")
      << "u with two dots";
  EXPECT_EQ(sessionName("\xE6\xB8\xAC"), "\xE6\xB8\xAC") << "a Chinese character";
}

TEST(SessionName, OfTheDrawingIsShownAsItWasWritten) {
  EXPECT_EQ(sessionNameOfStored(L"T_x00FC_1"),
            "T\xC3\xBC"
            "1");
  EXPECT_EQ(sessionNameOfStored(L"S 1"), "S 1");
}

TEST(SessionName, OfTheDrawingHasAQuestionMarkForWhatWindows1251LacksAndNoStandInCarries) {
  EXPECT_EQ(sessionNameOfStored(L"T\u00FC1"), "T?1");
  EXPECT_EQ(sessionNameOfStored(L"\u6E2C"), "?");
}

TEST(SessionName, RefusesWhatIsNotUtf8) {
  EXPECT_THROW(sessionName("\xFF"), EncodingError);
  EXPECT_THROW(sessionName("T\xD0"), EncodingError) << "cut short";
}

/// Of a point that is eligible but for this weight.
bool isEligibleAt(double weight) {
  ZOR::reg::RefPoint point;
  point.named = true;
  point.weight = weight;
  return isEligible(point);
}

TEST(AnEligiblePoint, WeighsSomething) {
  EXPECT_TRUE(isEligibleAt(1.0));
  EXPECT_TRUE(isEligibleAt(-1.0)) << "as it was read";
  EXPECT_TRUE(isEligibleAt(std::numeric_limits<double>::denorm_min()));
  EXPECT_TRUE(isEligibleAt(std::numeric_limits<double>::infinity()));
  EXPECT_FALSE(isEligibleAt(0.0));
  EXPECT_FALSE(isEligibleAt(-0.0));
  EXPECT_FALSE(isEligibleAt(std::numeric_limits<double>::quiet_NaN()));
}

TEST(AnEligiblePoint, IsSwitchedOnAndHasAName) {
  ZOR::reg::RefPoint point;
  point.weight = 1.0;
  EXPECT_FALSE(isEligible(point)) << "no name";
  point.named = true;
  EXPECT_TRUE(isEligible(point));
  point.included = false;
  EXPECT_FALSE(isEligible(point));
}

TEST(AnEligiblePoint, NeedNotBeActive) {
  ZOR::reg::RefPoint point;
  point.weight = 1.0;
  point.named = true;
  point.active = false;
  EXPECT_TRUE(isEligible(point));
}

}  // namespace
}  // namespace tiepoint::workbench

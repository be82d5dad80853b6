#include "workbench/survey/point_choice.h"

#include <gmock/gmock.h>

#include "workbench/report/refusal_text.h"
#include "workbench/session_states.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;

template <class Action>
std::string refusal(Action action) {
  try {
    action();
  } catch (const Refused& refused) {
    EXPECT_EQ(refusalClass(refused.refusal().kind), RefusalClass::usage);
    return refusalText(refused.refusal());
  }
  return "nothing";
}

/// All ways to read a text.
PointChoice readings(const std::string& text) {
  PointChoice choice{{PointRef{text}}, text};
  for (std::size_t colon = text.find(':'); colon != std::string::npos; colon = text.find(':', colon + 1)) {
    choice.readings.push_back({text.substr(0, colon), text.substr(colon + 1)});
  }
  return choice;
}

class PointChoiceTest : public testing::Test {
 protected:
  PointChoiceTest() {
    builder.group("S1").points({"T1", "T2", "T1"}).group("S2").points({"T1", "a:b"}).group("S2:T1").point("X");
    builder.group("odd:name").point("T9");
  }
  const SessionState& state() const { return builder.state; }

  StateBuilder builder;
};

TEST_F(PointChoiceTest, AGroupAloneMeansAllOfIt) {
  const ChosenPoints choice = chosenPoints(state(), readings("S1"), Field::exclude);
  EXPECT_TRUE(choice.wholeGroup);
  EXPECT_EQ(choice.group, 0u);
  EXPECT_THAT(choice.points, ElementsAre(0, 1, 2));
}

TEST_F(PointChoiceTest, AGroupWithAPointMeansAllPointsOfThatName) {
  const ChosenPoints choice = chosenPoints(state(), readings("S1:T1"), Field::exclude);
  EXPECT_FALSE(choice.wholeGroup);
  EXPECT_THAT(choice.points, ElementsAre(0, 2));
}

TEST_F(PointChoiceTest, ColonsInNamesAreUnderstood) {
  EXPECT_THAT(chosenPoints(state(), readings("S2:a:b"), Field::exclude).points, ElementsAre(4));
  EXPECT_THAT(chosenPoints(state(), readings("odd:name:T9"), Field::exclude).points, ElementsAre(6));
}

TEST_F(PointChoiceTest, AGroupOfTheWholeNameGoesBeforeAPoint) {
  EXPECT_TRUE(chosenPoints(state(), readings("S2:T1"), Field::exclude).wholeGroup);
}

TEST_F(PointChoiceTest, AnUnknownGroupIsAnsweredWithTheNearest) {
  EXPECT_EQ(refusal([&] { chosenGroup(state(), "S3", Field::base); }),
            "--base S3: there is no group \"S3\"; did you mean \"S1\"?");
  EXPECT_EQ(refusal([&] { chosenPoints(state(), readings("reference:T1"), Field::exclude); }),
            "--exclude reference:T1: there is no group \"reference\"; there are: S1, S2, S2:T1, odd:name");
}

TEST_F(PointChoiceTest, AnUnknownPointIsAnsweredWithTheNearest) {
  EXPECT_EQ(refusal([&] { chosenPoints(state(), readings("S1:T3"), Field::exclude); }),
            "--exclude S1:T3: group \"S1\" has no point \"T3\"; did you mean \"T1\"?");
}

TEST_F(PointChoiceTest, AReadingThatIsGivenIsTheOnlyOne) {
  const PointChoice inGroupA{{PointRef{"S2", "a:b"}}, "S2:a:b"};
  EXPECT_THAT(chosenPoints(state(), inGroupA, Field::weight).points, ElementsAre(4));
  const PointChoice elsewhere{{PointRef{"S2:a", "b"}}, "S2:a:b"};
  EXPECT_EQ(refusal([&] { chosenPoints(state(), elsewhere, Field::weight); }).substr(0, 44),
            "weight S2:a:b: there is no group \"S2:a\"; did");
}

/// What a drawing will hold.
class KnownNamesTest : public testing::Test {
 protected:
  KnownNamesTest() {
    names.pointsOf("S1") = {"T1", "T2"};
    names.pointsOf("S2:T1") = {"X"};
  }
  std::string refused(const std::string& text, NamesToCome toCome = NamesToCome::none) const {
    return refusal([&] { requireKnown(names, readings(text), Field::exclude, toCome); });
  }
  KnownNames names;
};

TEST_F(KnownNamesTest, GroupsAndPointsThatThereAreAreFine) {
  for (const char* text : {"S1", "S1:T2", "S2:T1", "S2:T1:X"}) EXPECT_EQ(refused(text), "nothing") << text;
}

TEST_F(KnownNamesTest, OthersAreRefused) {
  EXPECT_EQ(refused("S1:T9"), "--exclude S1:T9: group \"S1\" has no point \"T9\"; did you mean \"T1\"?");
  EXPECT_EQ(refused("S9"), "--exclude S9: there is no group \"S9\"; did you mean \"S1\"?");
}

TEST_F(KnownNamesTest, APointMayYetGetItsNameButAGroupMayNot) {
  EXPECT_EQ(refused("S1:auto7", NamesToCome::some), "nothing");
  EXPECT_EQ(refused("S9:auto7", NamesToCome::some).substr(0, 33), "--exclude S9:auto7: there is no g");
}

}  // namespace
}  // namespace tiepoint::workbench

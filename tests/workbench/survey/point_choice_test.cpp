#include "workbench/survey/point_choice.h"

#include <gmock/gmock.h>

#include "workbench/report/refusal_text.h"
#include "workbench/session_states.h"
#include "workbench/survey/refusal_of.h"

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

TEST_F(PointChoiceTest, WhatIsntThereIsNotFound) {
  EXPECT_FALSE(findPoints(state(), readings("S3")).has_value());
  EXPECT_FALSE(findPoints(state(), readings("S1:T3")).has_value());
  EXPECT_TRUE(findPoints(state(), readings("S1:T2")).has_value());
}

TEST_F(PointChoiceTest, AGroupWithoutPointsIsAWholeGroupAllTheSame) {
  builder.group("bare");
  const ChosenPoints choice = chosenPoints(state(), readings("bare"), Field::exclude);
  EXPECT_TRUE(choice.wholeGroup);
  EXPECT_EQ(choice.group, 4u);
  EXPECT_THAT(choice.points, testing::IsEmpty());
}

TEST_F(PointChoiceTest, NamesMeanWhatASessionShowsOfThem) {
  builder.group("зал").point("?").point("\u00C5");
  EXPECT_EQ(chosenGroup(state(), "зал", Field::base), 4u);
  EXPECT_THAT(chosenPoints(state(), readings("зал:\u00C5"), Field::exclude).points, ElementsAre(8))
      << "a letter that the module's names lack";
}

TEST_F(PointChoiceTest, ARefusalOfAGroupHoldsTheGroupsInTheirOrder) {
  const Refusal refusal = refusalOf([&] { chosenGroup(state(), "s1", Field::base); });
  EXPECT_EQ(refusal.kind, RefusalKind::noSuchGroup);
  EXPECT_EQ(refusal.field, Field::base);
  EXPECT_EQ(refusal.given, "s1") << "names have capitals";
  EXPECT_EQ(refusal.name, "s1");
  EXPECT_THAT(refusal.known, ElementsAre("S1", "S2", "S2:T1", "odd:name"));
}

TEST_F(PointChoiceTest, ARefusalOfAPointHoldsThePointsOfItsGroup) {
  const Refusal refusal = refusalOf([&] { chosenPoints(state(), readings("S2:c"), Field::weight); });
  EXPECT_EQ(refusal.kind, RefusalKind::noSuchPoint);
  EXPECT_EQ(refusal.field, Field::weight);
  EXPECT_EQ(refusal.given, "S2:c");
  EXPECT_EQ(refusal.name, "S2");
  EXPECT_EQ(refusal.point, "c");
  EXPECT_THAT(refusal.known, ElementsAre("T1", "a:b"));
}

TEST_F(PointChoiceTest, OfSeveralReadingsTheFirstWhoseGroupIsKnownIsBlamed) {
  const Refusal known = refusalOf([&] { chosenPoints(state(), readings("S2:T1:Y"), Field::exclude); });
  EXPECT_EQ(known.kind, RefusalKind::noSuchPoint);
  EXPECT_EQ(known.name, "S2");
  EXPECT_EQ(known.point, "T1:Y");
  const Refusal unknown = refusalOf([&] { chosenPoints(state(), readings("S7:T1:Y"), Field::exclude); });
  EXPECT_EQ(unknown.kind, RefusalKind::noSuchGroup);
  EXPECT_EQ(unknown.name, "S7") << "the shortest";
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

TEST_F(KnownNamesTest, ARefusalHoldsTheGivenTextAndWhatThereIs) {
  const Refusal refusal = refusalOf([&] { requireGroup(names, "S9", "S9=cloud.xyz", Field::cloud); });
  EXPECT_EQ(refusal.kind, RefusalKind::noSuchGroup);
  EXPECT_EQ(refusal.field, Field::cloud);
  EXPECT_EQ(refusal.given, "S9=cloud.xyz");
  EXPECT_EQ(refusal.name, "S9");
  EXPECT_THAT(refusal.known, ElementsAre("S1", "S2:T1"));
  EXPECT_NO_THROW(requireGroup(names, "S1", "S1=cloud.xyz", Field::cloud));
}

TEST_F(KnownNamesTest, APointOfAnyReadingIsEnough) {
  names.pointsOf("S2") = {"b"};
  EXPECT_EQ(refused("S2:T1:X"), "nothing") << "of the longer group";
  const Refusal refusal =
      refusalOf([&] { requireKnown(names, readings("S2:T1:Y"), Field::weight, NamesToCome::none); });
  EXPECT_EQ(refusal.name, "S2");
  EXPECT_EQ(refusal.point, "T1:Y");
  EXPECT_THAT(refusal.known, ElementsAre("b"));
}

TEST_F(KnownNamesTest, NamesMeanWhatASessionShowsOfThem) {
  names.pointsOf("\u00C5") = {"\u00E9"};
  EXPECT_EQ(refused("\u00C5:\u00E9"), "nothing");
}

TEST_F(KnownNamesTest, AreInTheOrderOfTheirComing) {
  names.pointsOf("A").push_back("T1");
  names.pointsOf("S1").push_back("T3");
  EXPECT_THAT(names.groups(), ElementsAre("S1", "S2:T1", "A"));
  EXPECT_THAT(*names.find("S1"), ElementsAre("T1", "T2", "T3"));
  EXPECT_EQ(names.find("s1"), nullptr);
}

}  // namespace
}  // namespace tiepoint::workbench

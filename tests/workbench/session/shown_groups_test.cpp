#include "workbench/session/shown_groups.h"

#include <gmock/gmock.h>

#include <limits>

#include "workbench/session/workbench_session.h"
#include "workbench/view/recording_draw.h"

namespace tiepoint::workbench {
namespace {

using namespace ZOR::reg;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;

StationPoints stationOf(const std::string& name, std::size_t points) {
  StationPoints station{name, {}};
  for (std::size_t i = 0; i < points; ++i) {
    station.points.push_back({"T" + std::to_string(i), {static_cast<double>(i * i), static_cast<double>(i), 0.0}});
  }
  return station;
}

/// Groups of one, two and four points.
class GroupsOnShow : public testing::Test {
 protected:
  GroupsOnShow() : session({stationOf("A", 1), stationOf("B", 2), stationOf("C", 4)}) {
    session.driven->addAllGroups();
  }

  ShownGroups shown(const GroupIdSet& hidden = {}) { return shownGroups(session.workbench, session.state(), hidden); }
  /// The colour of every line that the views show.
  std::vector<std::uint16_t> drawnColors() {
    RecordingDraw draw{View()};
    for (const OdGiDrawable* drawable : drawablesOf(session.workbench)) draw.draw(*drawable);
    std::vector<std::uint16_t> colors;
    for (const DrawnLine& line : draw.lines()) colors.push_back(line.color);
    return colors;
  }

  WorkbenchSession session;
};

TEST_F(GroupsOnShow, CountTheirPoints) {
  const ShownGroups groups = shown();
  ASSERT_THAT(groups, ElementsAre(Key(0), Key(1), Key(2)));
  EXPECT_EQ(groups.at(0).points, 1u);
  EXPECT_EQ(groups.at(1).points, 2u);
  EXPECT_EQ(groups.at(2).points, 4u);
}

TEST_F(GroupsOnShow, HaveTheColourOfTheirMarkers) {
  const ShownGroups groups = shown();
  const auto colors = drawnColors();
  ASSERT_EQ(colors.size(), 21u) << "three lines a point";
  EXPECT_NE(groups.at(0).color, groups.at(1).color);
  EXPECT_NE(groups.at(1).color, groups.at(2).color);
  for (std::size_t line = 0; line < colors.size(); ++line) {
    EXPECT_EQ(colors[line], groups.at(line < 3 ? 0 : line < 9 ? 1 : 2).color) << line;
  }
}

TEST_F(GroupsOnShow, KeepTheirColoursWhenAnotherIsHidden) {
  const ShownGroups before = shown();
  session.mirrored->setGroupsVisible({1}, false);
  const ShownGroups groups = shown({1});
  ASSERT_THAT(groups, ElementsAre(Key(0), Key(2)));
  EXPECT_EQ(groups.at(0).color, before.at(0).color);
  EXPECT_EQ(groups.at(2).color, before.at(2).color);
  EXPECT_EQ(groups.at(2).points, 4u);
}

TEST_F(GroupsOnShow, AreNotThoseThatLeftTheSession) {
  session.driven->removeGroups({0});
  EXPECT_THAT(shown(), ElementsAre(Key(1), Key(2)));
}

TEST_F(GroupsOnShow, AreNoneWhereTheMarkersWereTakenAway) {
  session.driven->clearResults();
  EXPECT_THAT(drawnColors(), IsEmpty());
  EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(GroupsOnShow, AreNoneOfASessionThatHasNoPoints) {
  WorkbenchSession& empty = session;
  empty.driven->removeGroups({0, 1, 2});
  EXPECT_THAT(shown(), IsEmpty());
}

/// The half length that is offered for markers of so many points in a picture of that area; 0 for none.
int offeredSize(std::size_t points, double area) {
  WorkbenchSession session({stationOf("A", points)});
  scaleMarkers(session.workbench, area);
  const auto offered = session.workbench.profile().get(registrationSection, "SizeLabel");
  return offered ? std::get<int>(*offered) : 0;
}

constexpr double plainPicture = 960.0 * 640.0;

TEST(ScaledMarkers, AreSmallerTheMorePointsThereAre) {
  EXPECT_EQ(offeredSize(300, plainPicture), 10) << "no larger than the module's own";
  EXPECT_EQ(offeredSize(400, plainPicture), 9);
  EXPECT_EQ(offeredSize(1000, plainPicture), 5);
  EXPECT_EQ(offeredSize(10000, plainPicture), 2) << "no smaller than can be seen";
}

TEST(ScaledMarkers, AreSmallerInASmallerPicture) {
  EXPECT_EQ(offeredSize(400, plainPicture / 2.0), 6);
  EXPECT_EQ(offeredSize(400, 0.0), 2);
}

TEST(ScaledMarkers, AreNoFinerInALargerPicture) { EXPECT_EQ(offeredSize(400, 100.0 * plainPicture), 9); }

TEST(ScaledMarkers, AreNotOfferedForADrawingWithoutPoints) { EXPECT_EQ(offeredSize(0, plainPicture), 0); }

TEST(ScaledMarkers, CountThePointsOfAllGroups) {
  WorkbenchSession session({stationOf("A", 150), stationOf("B", 250)});
  scaleMarkers(session.workbench, plainPicture);
  EXPECT_EQ(std::get<int>(*session.workbench.profile().get(registrationSection, "SizeLabel")), 9);
}

TEST(ScaledMarkers, GiveWayToTheUsersOwnSize) {
  WorkbenchSession session({stationOf("A", 1000)});
  session.workbench.profile().set(registrationSection, "SizeLabel", 40);
  scaleMarkers(session.workbench, plainPicture);
  EXPECT_EQ(std::get<int>(*session.workbench.profile().get(registrationSection, "SizeLabel")), 40);
}

}  // namespace
}  // namespace tiepoint::workbench

#include "workbench/clouds/drawing_clouds.h"

#include <gtest/gtest.h>

#include "platform/pointclouds/point_cloud_definition.h"
#include "platform/sdk/od_db_dictionary.h"

namespace tiepoint::workbench {
namespace {

class DrawingClouds : public testing::Test {
 protected:
  bool add(const std::wstring& name, const std::wstring& source) {
    database->startTransaction();
    const bool added = addCloud(*database, name, source);
    database->endTransaction();
    return added;
  }

  OdDbDictionaryPtr dictionary() {
    return OdDbDictionaryPtr(Cloud::pointCloudDictionary(*database).safeOpenObject(OdDb::kForWrite));
  }

  using Cloud = hostDbPointCloudDefinition;
  const OdDbDatabasePtr database = new OdDbDatabase;
};

TEST_F(DrawingClouds, ADrawingWithoutCloudsListsNone) { EXPECT_TRUE(cloudsOf(*database).empty()); }

TEST_F(DrawingClouds, CloudsComeInTheOrderOfEntry) {
  EXPECT_TRUE(add(L"S2", L"/survey/S2.xyz"));
  EXPECT_TRUE(add(L"S1", L""));
  const auto clouds = cloudsOf(*database);
  ASSERT_EQ(clouds.size(), 2u);
  EXPECT_EQ(clouds[0].name, L"S2");
  EXPECT_EQ(clouds[0].source, L"/survey/S2.xyz");
  EXPECT_EQ(clouds[0].matrix, OdGeMatrix3d());
  EXPECT_EQ(clouds[1].name, L"S1");
}

TEST_F(DrawingClouds, ATakenNameIsRefusedAndTheCloudStays) {
  add(L"S1", L"old.xyz");
  EXPECT_FALSE(add(L"S1", L"new.xyz"));
  ASSERT_EQ(cloudsOf(*database).size(), 1u);
  EXPECT_EQ(cloudsOf(*database)[0].source, L"old.xyz");
}

TEST_F(DrawingClouds, ALookAtThemMakesNoListInTheDrawing) {
  cloudsOf(*database);
  EXPECT_FALSE(Cloud::documentHasPointClouds(*database));
}

TEST_F(DrawingClouds, ATransformationIsToldWhole) {
  add(L"S1", L"S1.xyz");
  OdGeMatrix3d motion;
  motion(0, 3) = 1e7 + 0.1;
  motion(1, 0) = 1.0 / 3.0;
  database->startTransaction();
  hostDbPointCloudDefinitionPtr(dictionary()->getAt(OdString(L"S1")).safeOpenObject(OdDb::kForWrite))
      ->transformBy(motion);
  database->endTransaction();
  EXPECT_EQ(cloudsOf(*database)[0].matrix, motion);
}

TEST_F(DrawingClouds, NamesAndFilesMayLieBeyondAscii) {
  EXPECT_TRUE(add(L"\u0426\u0435\u0445", L"/\u6E2C/\u0426.xyz"));
  const auto clouds = cloudsOf(*database);
  ASSERT_EQ(clouds.size(), 1u);
  EXPECT_EQ(clouds[0].name, L"\u0426\u0435\u0445");
  EXPECT_EQ(clouds[0].source, L"/\u6E2C/\u0426.xyz");
}

TEST_F(DrawingClouds, WhatIsNoCloudIsPassedOver) {
  add(L"S1", L"");
  database->startTransaction();
  dictionary()->setAt(OdString(L"a dictionary"), OdDbDictionaryPtr(OdDbDictionary::desc()->create()).get());
  database->endTransaction();
  ASSERT_EQ(cloudsOf(*database).size(), 1u);
  EXPECT_EQ(cloudsOf(*database)[0].name, L"S1");
}

TEST_F(DrawingClouds, ACloudMayBeAddedAgainOnceItIsGone) {
  add(L"S1", L"old.xyz");
  database->startTransaction();
  dictionary()->remove(OdString(L"S1"));
  database->endTransaction();
  EXPECT_TRUE(add(L"S1", L"new.xyz"));
  EXPECT_EQ(cloudsOf(*database)[0].source, L"new.xyz");
}

/// A motion along x.
OdGeMatrix3d shiftBy(double east) {
  OdGeMatrix3d motion;
  motion(0, 3) = east;
  return motion;
}

TEST_F(DrawingClouds, GoOnBehindWhatHasMovedThemSoFar) {
  add(L"S1", L"");
  add(L"S2", L"");
  OdGeMatrix3d turn;
  turn(0, 0) = turn(1, 1) = 0.0;
  turn(0, 1) = -1.0;
  turn(1, 0) = 1.0;
  database->startTransaction();
  moveClouds(*database, {{L"S2", shiftBy(5)}, {L"S9", shiftBy(7)}});
  moveClouds(*database, {{L"S2", turn}});
  database->endTransaction();
  const auto clouds = cloudsOf(*database);
  EXPECT_EQ(clouds[0].matrix, OdGeMatrix3d());
  EXPECT_EQ(clouds[1].matrix, turn * shiftBy(5)) << "a later motion is applied to what has been moved";
}

TEST_F(DrawingClouds, NoneIsMadeByAMotion) {
  database->startTransaction();
  moveClouds(*database, {{L"S1", shiftBy(5)}});
  database->endTransaction();
  EXPECT_FALSE(Cloud::documentHasPointClouds(*database));
}

}  // namespace
}  // namespace tiepoint::workbench

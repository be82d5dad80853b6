#include "workbench/clouds/drawing_clouds.h"

#include <gtest/gtest.h>

#include "platform/pointclouds/point_cloud_definition.h"

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

}  // namespace
}  // namespace tiepoint::workbench

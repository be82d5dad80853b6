#include "platform/pointclouds/point_cloud_definition.h"

#include <gtest/gtest.h>

#include "platform/sdk/od_db_dictionary.h"
#include "platform/sdk/od_test_objects.h"

namespace {

OdGeMatrix3d moveAlongX(double distance) {
  OdGeMatrix3d matrix;
  matrix(0, 3) = distance;
  return matrix;
}

OdGeMatrix3d quarterTurnAboutZ() {
  OdGeMatrix3d matrix;
  matrix(0, 0) = 0.0;
  matrix(0, 1) = -1.0;
  matrix(1, 0) = 1.0;
  matrix(1, 1) = 0.0;
  return matrix;
}

class PointCloudDefinition : public testing::Test {
 protected:
  hostDbPointCloudDefinitionPtr fileCloud(const wchar_t* name) {
    const OdDbObjectId id = hostDbPointCloudDefinition::createPointCloudDictionary(*database);
    const OdDbDictionaryPtr dictionary = id.safeOpenObject(OdDb::kForWrite);
    hostDbPointCloudDefinitionPtr cloud = hostDbPointCloudDefinition::desc()->create();
    dictionary->setAt(name, cloud.get());
    cloud->setName(name);
    return cloud;
  }

  const OdDbDatabasePtr database{new OdDbDatabase};
};

}  // namespace

TEST_F(PointCloudDefinition, ANewDrawingHasNoClouds) {
  EXPECT_FALSE(hostDbPointCloudDefinition::documentHasPointClouds(*database));
  EXPECT_TRUE(hostDbPointCloudDefinition::pointCloudDictionary(*database).isNull());
}

TEST_F(PointCloudDefinition, TheDictionaryIsMadeOnceAmongTheNamedObjects) {
  const OdDbObjectId made = hostDbPointCloudDefinition::createPointCloudDictionary(*database);
  EXPECT_EQ(hostDbPointCloudDefinition::createPointCloudDictionary(*database), made);
  EXPECT_EQ(hostDbPointCloudDefinition::pointCloudDictionary(*database), made);
  EXPECT_TRUE(hostDbPointCloudDefinition::documentHasPointClouds(*database));
  EXPECT_EQ(openNamedObjects(*database, OdDb::kForRead)->getAt(L"ZOR_POINT_CLOUDS"), made);
}

TEST_F(PointCloudDefinition, ANewCloudIsWhereItsFileSays) {
  const hostDbPointCloudDefinitionPtr cloud = fileCloud(L"north");
  EXPECT_EQ(cloud->getName(), OdString(L"north"));
  EXPECT_TRUE(cloud->getSource().isEmpty());
  EXPECT_EQ(cloud->transformation(), OdGeMatrix3d());
}

TEST_F(PointCloudDefinition, KeepsItsSource) {
  const hostDbPointCloudDefinitionPtr cloud = fileCloud(L"north");
  cloud->setSource(L"scans/north.e57");
  EXPECT_EQ(cloud->getSource(), OdString(L"scans/north.e57"));
}

TEST_F(PointCloudDefinition, EachTransformActsAfterTheOnesBefore) {
  const hostDbPointCloudDefinitionPtr cloud = fileCloud(L"north");
  cloud->transformBy(moveAlongX(5.0));
  cloud->transformBy(quarterTurnAboutZ());
  OdGePoint3d origin;
  EXPECT_EQ(origin.p_transform(cloud->transformation()), OdGePoint3d(0.0, 5.0, 0.0));
}

TEST_F(PointCloudDefinition, TransformingByTheSameMotionTwiceMovesItTwice) {
  const hostDbPointCloudDefinitionPtr cloud = fileCloud(L"north");
  cloud->transformBy(moveAlongX(5.0));
  cloud->transformBy(moveAlongX(5.0));
  EXPECT_EQ(cloud->transformation(), moveAlongX(10.0));
}

TEST_F(PointCloudDefinition, ChangesAreRefusedUnlessItIsOpenForWriting) {
  const hostDbPointCloudDefinitionPtr cloud = fileCloud(L"north");
  cloud->downgradeOpen();
  EXPECT_EQ(codeOf([&] { cloud->transformBy(moveAlongX(5.0)); }), eNotOpenForWrite);
  EXPECT_EQ(codeOf([&] { cloud->setName(L"south"); }), eNotOpenForWrite);
  EXPECT_EQ(codeOf([&] { cloud->setSource(L"south.e57"); }), eNotOpenForWrite);
  EXPECT_EQ(cloud->transformation(), OdGeMatrix3d());
  EXPECT_EQ(cloud->getName(), OdString(L"north"));
}

TEST_F(PointCloudDefinition, AnAbortedTransactionLeavesItAsItWas) {
  const hostDbPointCloudDefinitionPtr cloud = fileCloud(L"north");
  cloud->transformBy(moveAlongX(1.0));
  database->startTransaction();
  cloud->transformBy(moveAlongX(5.0));
  cloud->setName(L"south");
  cloud->setSource(L"south.e57");
  cloud->transformBy(quarterTurnAboutZ());
  database->abortTransaction();
  EXPECT_EQ(cloud->transformation(), moveAlongX(1.0));
  EXPECT_EQ(cloud->getName(), OdString(L"north"));
  EXPECT_TRUE(cloud->getSource().isEmpty());
}

TEST_F(PointCloudDefinition, RestoringNeedsNoTransactionAndNoOpenMode) {
  const hostDbPointCloudDefinitionPtr cloud(new hostDbPointCloudDefinition);
  database->restoreObject(cloud.get(), 30);
  cloud->restore(L"north", L"north.e57", moveAlongX(2.0));
  EXPECT_FALSE(cloud->isWriteEnabled());
  EXPECT_EQ(cloud->getName(), OdString(L"north"));
  EXPECT_EQ(cloud->getSource(), OdString(L"north.e57"));
  EXPECT_EQ(cloud->transformation(), moveAlongX(2.0));
}

TEST_F(PointCloudDefinition, IsOfItsClass) {
  EXPECT_STREQ(fileCloud(L"north")->isA()->name(), L"hostDbPointCloudDefinition");
}

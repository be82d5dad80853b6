#include "platform/pointclouds/points_repository.h"

#include <gtest/gtest.h>

#include "platform/sdk/od_db_dictionary.h"
#include "platform/sdk/od_test_objects.h"

namespace {

using Repository = ZOR::RegistrationObjectPointsRepository;
using RepositoryPtr = ZOR::RegistrationObjectPointsRepositoryPtr;

ZOR::_StoredPoint target(const wchar_t* name, double x) { return {OdString(name), x, x + 1.0, x + 2.0, 0.5}; }

ZOR::StoredPointArray twoTargets() {
  ZOR::StoredPointArray points;
  points.append(target(L"T1", 10.0));
  points.append(target(L"?", 20.0));
  return points;
}

ZOR::StoredPointArray oneTarget() {
  ZOR::StoredPointArray points;
  points.append(target(L"old", 1.0));
  return points;
}

class PointsRepository : public testing::Test {
 protected:
  RepositoryPtr fileRepository(const wchar_t* name) {
    const OdDbObjectId id = Repository::createRegistrationPointsDictionary(*database);
    const OdDbDictionaryPtr dictionary = id.safeOpenObject(OdDb::kForWrite);
    RepositoryPtr repository = Repository::desc()->create();
    dictionary->setAt(name, repository.get());
    return repository;
  }

  const OdDbDatabasePtr database{new OdDbDatabase};
};

}  // namespace

TEST_F(PointsRepository, ANewDrawingHasNoRegistrationPoints) {
  EXPECT_FALSE(Repository::documentHasRegistrationPoints(*database));
  EXPECT_TRUE(Repository::registrationPointsDictionary(*database).isNull());
}

TEST_F(PointsRepository, TheDictionaryIsMadeOnce) {
  const OdDbObjectId made = Repository::createRegistrationPointsDictionary(*database);
  EXPECT_TRUE(made.isValid());
  EXPECT_EQ(Repository::createRegistrationPointsDictionary(*database), made);
  EXPECT_EQ(Repository::registrationPointsDictionary(*database), made);
  EXPECT_TRUE(Repository::documentHasRegistrationPoints(*database));
  EXPECT_EQ(OdDbDictionaryPtr(made.safeOpenObject())->numEntries(), 0u);
}

TEST_F(PointsRepository, TheDictionaryStandsAmongTheNamedObjects) {
  const OdDbObjectId made = Repository::createRegistrationPointsDictionary(*database);
  const OdDbDictionaryPtr namedObjects = openNamedObjects(*database, OdDb::kForRead);
  EXPECT_EQ(namedObjects->getAt(L"ZOR_REGISTRATION_POINTS"), made);
}

TEST_F(PointsRepository, TheDictionaryOfAnAbortedTransactionIsGone) {
  database->startTransaction();
  Repository::createRegistrationPointsDictionary(*database);
  database->abortTransaction();
  EXPECT_FALSE(Repository::documentHasRegistrationPoints(*database));
}

TEST_F(PointsRepository, AnErasedDictionaryIsNone) {
  const OdDbObjectId made = Repository::createRegistrationPointsDictionary(*database);
  database->eraseObject(made);
  EXPECT_FALSE(Repository::documentHasRegistrationPoints(*database));
  EXPECT_TRUE(Repository::registrationPointsDictionary(*database).isNull());
}

TEST_F(PointsRepository, ADrawingForReadingOnlyGivesANullId) {
  database->setReadOnly(true);
  EXPECT_TRUE(Repository::createRegistrationPointsDictionary(*database).isNull());
  EXPECT_FALSE(Repository::documentHasRegistrationPoints(*database));
}

TEST_F(PointsRepository, ADrawingWhoseNamedObjectsSomebodyWritesGivesANullId) {
  const OdDbDictionaryPtr writer = openNamedObjects(*database, OdDb::kForWrite);
  EXPECT_TRUE(Repository::createRegistrationPointsDictionary(*database).isNull());
}

TEST_F(PointsRepository, GivesBackWhatWasStoredInOrder) {
  const RepositoryPtr repository = fileRepository(L"north");
  EXPECT_TRUE(repository->setData(twoTargets()));
  ZOR::StoredPointArray points = oneTarget();
  EXPECT_TRUE(repository->getData(points));
  ASSERT_EQ(points.size(), 2u);
  EXPECT_EQ(points[0].name, OdString(L"T1"));
  EXPECT_EQ(points[0].x, 10.0);
  EXPECT_EQ(points[0].y, 11.0);
  EXPECT_EQ(points[0].z, 12.0);
  EXPECT_EQ(points[0].w, 0.5);
  EXPECT_EQ(points[1].name, OdString(L"?"));
}

TEST_F(PointsRepository, ANewOneIsEmpty) {
  ZOR::StoredPointArray points = oneTarget();
  EXPECT_TRUE(fileRepository(L"north")->getData(points));
  EXPECT_TRUE(points.isEmpty());
}

TEST_F(PointsRepository, SetDataReplacesWhatWasThere) {
  const RepositoryPtr repository = fileRepository(L"north");
  repository->setData(twoTargets());
  repository->setData(oneTarget());
  EXPECT_EQ(repository->storedPoints().size(), 1u);
}

TEST_F(PointsRepository, SetDataTakesItsOwnPoints) {
  const RepositoryPtr repository = fileRepository(L"north");
  repository->setData(twoTargets());
  repository->setData(repository->storedPoints());
  EXPECT_EQ(repository->storedPoints().size(), 2u);
}

TEST_F(PointsRepository, SetDataIsRefusedUnlessItIsOpenForWriting) {
  const RepositoryPtr repository = fileRepository(L"north");
  repository->downgradeOpen();
  EXPECT_EQ(codeOf([&] { repository->setData(twoTargets()); }), eNotOpenForWrite);
  EXPECT_TRUE(repository->storedPoints().isEmpty());
}

TEST_F(PointsRepository, AnErasedOneGivesNoDataAndLeavesTheOutput) {
  const RepositoryPtr repository = fileRepository(L"north");
  repository->setData(twoTargets());
  database->eraseObject(repository->objectId());
  ZOR::StoredPointArray points = oneTarget();
  EXPECT_FALSE(repository->getData(points));
  EXPECT_EQ(points.size(), 1u);
}

TEST_F(PointsRepository, AnAbortedTransactionLeavesThePointsAsTheyWere) {
  const RepositoryPtr repository = fileRepository(L"north");
  repository->setData(oneTarget());
  database->startTransaction();
  repository->setData(twoTargets());
  repository->setData({});
  database->abortTransaction();
  ASSERT_EQ(repository->storedPoints().size(), 1u);
  EXPECT_EQ(repository->storedPoints()[0].name, OdString(L"old"));
}

TEST_F(PointsRepository, RestoringNeedsNoTransactionAndNoOpenMode) {
  const RepositoryPtr repository(new Repository);
  database->restoreObject(repository.get(), 30);
  repository->restoreData(twoTargets());
  RecordingStore store;
  database->setStore(&store);
  EXPECT_EQ(repository->storedPoints().size(), 2u);
}

TEST_F(PointsRepository, IsOfItsClass) {
  const RepositoryPtr repository = fileRepository(L"north");
  EXPECT_STREQ(repository->isA()->name(), L"RegistrationObjectPointsRepository");
  EXPECT_TRUE(repository->isKindOf(OdDbObject::desc()));
}

TEST_F(PointsRepository, TheNamedObjectsAreLoweredAgainWhereSomebodyElseReadsThem) {
  const OdDbDictionaryPtr reader = database->getNamedObjectsDictionaryId().safeOpenObject();
  EXPECT_FALSE(Repository::createRegistrationPointsDictionary(*database).isNull());
  EXPECT_FALSE(reader->isWriteEnabled());
}

TEST_F(PointsRepository, TheNamedObjectsAreLoweredAgainAlsoWhenTheyTakeNoDictionary) {
  const OdDbDictionaryPtr reader = database->getNamedObjectsDictionaryId().safeOpenObject();
  database->setReadOnly(true);
  EXPECT_TRUE(Repository::createRegistrationPointsDictionary(*database).isNull());
  EXPECT_FALSE(reader->isWriteEnabled());
}

#include "platform/sdk/od_db_object.h"

#include <gtest/gtest.h>

#include "platform/sdk/od_test_objects.h"

namespace {

class OdDbObjectModes : public testing::Test {
 protected:
  OdDbObjectModes() {
    const NumberObjectPtr object(new NumberObject(1));
    id = database->addOdDbObject(object.get());
  }

  NumberObjectPtr open(OdDb::OpenMode mode) const { return id.safeOpenObject(mode); }

  OdDbDatabasePtr database{new OdDbDatabase};
  OdDbObjectId id;
};

}  // namespace

TEST(OdDbObject, OneThatIsInNoDatabaseCanBeChangedFreely) {
  const NumberObjectPtr object(new NumberObject(1));
  EXPECT_TRUE(object->isWriteEnabled());
  EXPECT_TRUE(object->objectId().isNull());
  EXPECT_EQ(object->database(), nullptr);
  object->setValue(2);
  EXPECT_EQ(object->value(), 2);
}

TEST(OdDbObject, OpenModesMeanNothingOutsideADatabase) {
  const NumberObjectPtr object(new NumberObject(1));
  object->downgradeOpen();
  object->upgradeOpen();
  object->upgradeOpen();
  object->downgradeOpen();
  object->setValue(2);
  EXPECT_EQ(object->value(), 2);
}

TEST(OdDbObject, ANewOneStaysOpenForWritingWhenADatabaseTakesIt) {
  const OdDbDatabasePtr database(new OdDbDatabase);
  const NumberObjectPtr object(new NumberObject(1));
  const OdDbObjectId id = database->addOdDbObject(object.get());
  EXPECT_EQ(object->objectId(), id);
  EXPECT_EQ(object->database(), database.get());
  EXPECT_EQ(object->numRefs(), 2);
  object->setValue(2);
  EXPECT_EQ(object->value(), 2);
}

TEST_F(OdDbObjectModes, ChangingOneThatIsOpenForReadingIsRefused) {
  const NumberObjectPtr object = open(OdDb::kForRead);
  EXPECT_FALSE(object->isWriteEnabled());
  EXPECT_EQ(codeOf([&] { object->setValue(2); }), eNotOpenForWrite);
  EXPECT_EQ(object->value(), 1);
}

TEST_F(OdDbObjectModes, UpgradeOpenAllowsTheChangeAndDowngradeOpenEndsThat) {
  const NumberObjectPtr object = open(OdDb::kForRead);
  object->upgradeOpen();
  object->setValue(2);
  object->downgradeOpen();
  EXPECT_EQ(codeOf([&] { object->setValue(3); }), eNotOpenForWrite);
  EXPECT_EQ(object->value(), 2);
}

TEST_F(OdDbObjectModes, UpgradeOpenIsRefusedWhileSomebodyWrites) {
  const NumberObjectPtr writer = open(OdDb::kForWrite);
  const NumberObjectPtr reader = open(OdDb::kForRead);
  EXPECT_EQ(codeOf([&] { reader->upgradeOpen(); }), eWasOpenForWrite);
}

TEST_F(OdDbObjectModes, DowngradeOpenIsRefusedWhenNobodyWrites) {
  const NumberObjectPtr reader = open(OdDb::kForRead);
  EXPECT_EQ(codeOf([&] { reader->downgradeOpen(); }), eNotOpenForWrite);
}

TEST_F(OdDbObjectModes, TheLastOutsidePointerClosesIt) {
  { const NumberObjectPtr writer = open(OdDb::kForWrite); }
  const NumberObjectPtr reader = open(OdDb::kForRead);
  EXPECT_FALSE(reader->isWriteEnabled());
}

TEST_F(OdDbObjectModes, OneThatIsClosedIsNotWriteEnabled) {
  { const NumberObjectPtr writer = open(OdDb::kForWrite); }
  EXPECT_FALSE(database->objectAt(id.getHandle())->isWriteEnabled());
}

TEST_F(OdDbObjectModes, ACopyOfThePointerKeepsItOpen) {
  NumberObjectPtr writer = open(OdDb::kForWrite);
  const NumberObjectPtr copy = writer;
  writer = nullptr;
  EXPECT_TRUE(copy->isWriteEnabled());
}

TEST_F(OdDbObjectModes, AnErasedOneIsNeitherRaisedNorChanged) {
  const NumberObjectPtr writer = open(OdDb::kForWrite);
  database->eraseObject(id);
  EXPECT_TRUE(writer->isErased());
  EXPECT_EQ(codeOf([&] { writer->setValue(2); }), eWasErased);
  EXPECT_EQ(codeOf([&] { writer->upgradeOpen(); }), eWasErased);
}

TEST_F(OdDbObjectModes, OneThatIsHeldOutlivesItsDatabaseForReading) {
  const NumberObjectPtr held = open(OdDb::kForWrite);
  database = nullptr;
  EXPECT_EQ(held->numRefs(), 1);
  EXPECT_EQ(held->value(), 1);
  EXPECT_EQ(held->database(), nullptr);
  EXPECT_TRUE(held->objectId().isNull());
  EXPECT_FALSE(held->isWriteEnabled());
  EXPECT_EQ(codeOf([&] { held->setValue(2); }), eNotInDatabase);
  EXPECT_EQ(codeOf([&] { held->upgradeOpen(); }), eNotInDatabase);
  EXPECT_EQ(codeOf([&] { held->downgradeOpen(); }), eNotOpenForWrite);
}

TEST_F(OdDbObjectModes, AnErasedOneThatIsHeldLearnsOfTheDatabasesEnd) {
  const NumberObjectPtr held = open(OdDb::kForRead);
  database->startTransaction();
  database->eraseObject(id);
  database->endTransaction();
  database = nullptr;
  EXPECT_EQ(held->database(), nullptr);
}

#include "platform/sdk/od_db_object_id.h"

#include <gtest/gtest.h>

#include "platform/sdk/od_test_objects.h"

namespace {

class OdDbObjectIdTest : public testing::Test {
 protected:
  OdDbObjectId fileNumber(int value) {
    const NumberObjectPtr object(new NumberObject(value));
    return database->addOdDbObject(object.get());
  }

  const OdDbDatabasePtr database{new OdDbDatabase};
};

}  // namespace

TEST_F(OdDbObjectIdTest, NullIdOpensNothing) {
  const OdDbObjectId id;
  EXPECT_TRUE(id.isNull());
  EXPECT_FALSE(id.isValid());
  EXPECT_EQ(id.getHandle(), 0u);
  EXPECT_TRUE(id.openObject().isNull());
  EXPECT_EQ(codeOf([&] { id.safeOpenObject(); }), eNullObjectId);
}

TEST_F(OdDbObjectIdTest, OpensItsObject) {
  const OdDbObjectId id = fileNumber(7);
  EXPECT_TRUE(id.isValid());
  EXPECT_EQ(id.owningDatabase(), database.get());
  EXPECT_EQ(NumberObjectPtr(id.openObject())->value(), 7);
  EXPECT_EQ(NumberObjectPtr(id.safeOpenObject())->value(), 7);
}

TEST_F(OdDbObjectIdTest, AnErasedObjectIsNotValidAndNotOpened) {
  const OdDbObjectId id = fileNumber(7);
  database->eraseObject(id);
  EXPECT_FALSE(id.isNull());
  EXPECT_FALSE(id.isValid());
  EXPECT_TRUE(id.openObject().isNull());
  EXPECT_EQ(codeOf([&] { id.safeOpenObject(); }), eWasErased);
}

TEST_F(OdDbObjectIdTest, AHandleThatNamesNothingCountsAsErased) {
  const OdDbObjectId id(database.get(), 99);
  EXPECT_FALSE(id.isValid());
  EXPECT_EQ(codeOf([&] { id.safeOpenObject(); }), eWasErased);
}

TEST_F(OdDbObjectIdTest, ASecondWriterIsRefused) {
  const OdDbObjectId id = fileNumber(7);
  const OdDbObjectPtr writer = id.safeOpenObject(OdDb::kForWrite);
  EXPECT_EQ(codeOf([&] { id.safeOpenObject(OdDb::kForWrite); }), eWasOpenForWrite);
  EXPECT_TRUE(id.openObject(OdDb::kForWrite).isNull());
  EXPECT_TRUE(writer->isWriteEnabled());
  EXPECT_EQ(writer->numRefs(), 2);
}

TEST_F(OdDbObjectIdTest, ReadingIsAllowedWhileOneWrites) {
  const OdDbObjectId id = fileNumber(7);
  const OdDbObjectPtr writer = id.safeOpenObject(OdDb::kForWrite);
  EXPECT_FALSE(id.safeOpenObject(OdDb::kForRead).isNull());
  EXPECT_FALSE(id.openObject(OdDb::kForRead).isNull());
}

TEST_F(OdDbObjectIdTest, WritingIsAllowedWhileOthersRead) {
  const OdDbObjectId id = fileNumber(7);
  const OdDbObjectPtr reader = id.safeOpenObject(OdDb::kForRead);
  EXPECT_TRUE(id.safeOpenObject(OdDb::kForWrite)->isWriteEnabled());
}

TEST_F(OdDbObjectIdTest, AnObjectWhoseWriterHasGoneCanBeWrittenAgain) {
  const OdDbObjectId id = fileNumber(7);
  id.safeOpenObject(OdDb::kForWrite);
  EXPECT_FALSE(id.safeOpenObject(OdDb::kForWrite).isNull());
}

TEST_F(OdDbObjectIdTest, AnObjectTakenInByABarePointerCanBeOpenedForWriting) {
  const OdDbObjectId id = database->addOdDbObject(new NumberObject(3));
  EXPECT_TRUE(id.safeOpenObject(OdDb::kForWrite)->isWriteEnabled());
}

TEST_F(OdDbObjectIdTest, NotOpenIsNoModeToOpenIn) {
  const OdDbObjectId id = fileNumber(7);
  EXPECT_TRUE(id.openObject(OdDb::kNotOpen).isNull());
  EXPECT_EQ(codeOf([&] { id.safeOpenObject(OdDb::kNotOpen); }), eNotOpenForRead);
}

TEST_F(OdDbObjectIdTest, IdsAreEqualWhenDatabaseAndHandleAre) {
  const OdDbDatabasePtr other(new OdDbDatabase);
  EXPECT_EQ(OdDbObjectId(database.get(), 5), OdDbObjectId(database.get(), 5));
  EXPECT_NE(OdDbObjectId(database.get(), 5), OdDbObjectId(database.get(), 6));
  EXPECT_NE(OdDbObjectId(database.get(), 5), OdDbObjectId(other.get(), 5));
}

#include "platform/sdk/od_db_database.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <vector>

#include "platform/sdk/od_alloc.h"
#include "platform/sdk/od_test_objects.h"

namespace {

using Handles = std::vector<std::uint64_t>;

constexpr std::uint64_t lastHandle = std::numeric_limits<std::uint64_t>::max();

class OdDbDatabaseTest : public testing::Test {
 protected:
  NumberObjectPtr addNumber(int value) {
    NumberObjectPtr object(new NumberObject(value));
    database->addOdDbObject(object.get());
    return object;
  }
  OdDbDictionaryPtr namedObjects(OdDb::OpenMode mode) const { return openNamedObjects(*database, mode); }

  const OdDbDatabasePtr database{new OdDbDatabase};
};

// A database with a store behind it, and two objects that the store knows under 10 and 20.
class FiledDatabase : public OdDbDatabaseTest {
 protected:
  FiledDatabase() {
    ten = database->restoreObject(new NumberObject(100), 10);
    twenty = database->restoreObject(new NumberObject(200), 20);
    database->setStore(&store);
  }

  NumberObjectPtr write(const OdDbObjectId& id) const { return id.safeOpenObject(OdDb::kForWrite); }
  int valueOf(const OdDbObjectId& id) const { return NumberObjectPtr(id.safeOpenObject())->value(); }

  RecordingStore store;
  OdDbObjectId ten;
  OdDbObjectId twenty;
};

}  // namespace

TEST_F(OdDbDatabaseTest, HasTheDictionaryOfNamedObjectsUnderHandleOne) {
  const OdDbObjectId id = database->getNamedObjectsDictionaryId();
  EXPECT_EQ(id.getHandle(), 1u);
  EXPECT_EQ(namedObjects(OdDb::kForRead)->numEntries(), 0u);
  EXPECT_EQ(database->objectAt(1)->objectId(), id);
}

TEST_F(OdDbDatabaseTest, GivesNewObjectsTheNextHandle) {
  EXPECT_EQ(addNumber(1)->objectId().getHandle(), 2u);
  EXPECT_EQ(addNumber(2)->objectId().getHandle(), 3u);
}

TEST_F(OdDbDatabaseTest, GivesNoHandleTwice) {
  database->startTransaction();
  const std::uint64_t aborted = addNumber(1)->objectId().getHandle();
  database->abortTransaction();
  EXPECT_EQ(aborted, 2u);
  EXPECT_EQ(addNumber(2)->objectId().getHandle(), 3u);
}

TEST_F(OdDbDatabaseTest, AnObjectThatIsInKeepsItsHandle) {
  const NumberObjectPtr object = addNumber(1);
  EXPECT_EQ(database->addOdDbObject(object.get()), object->objectId());
  EXPECT_EQ(object->numRefs(), 2);
}

TEST_F(OdDbDatabaseTest, RefusesNullAndObjectsOfAnotherDatabase) {
  const OdDbDatabasePtr other(new OdDbDatabase);
  const NumberObjectPtr object(new NumberObject(1));
  other->addOdDbObject(object.get());
  EXPECT_EQ(codeOf([&] { database->addOdDbObject(nullptr); }), eInvalidInput);
  EXPECT_EQ(codeOf([&] { database->addOdDbObject(object.get()); }), eInvalidInput);
}

TEST_F(OdDbDatabaseTest, RefusesAnObjectWhoseDatabaseHasBeenClosed) {
  const NumberObjectPtr object(new NumberObject(1));
  {
    const OdDbDatabasePtr other(new OdDbDatabase);
    other->addOdDbObject(object.get());
  }
  EXPECT_EQ(codeOf([&] { database->addOdDbObject(object.get()); }), eNotInDatabase);
  EXPECT_EQ(codeOf([&] { database->restoreObject(object.get(), 5); }), eInvalidInput);
}

TEST_F(OdDbDatabaseTest, WhicheverAllocationFailsAnObjectIsTakenInOrLeftAlone) {
  constexpr std::uint64_t maxAllocations = 100;
  database->startTransaction();
  std::uint64_t failing = 0;
  for (bool wentThrough = false; !wentThrough && failing < maxAllocations; ++failing) {
    const NumberObjectPtr object(new NumberObject(1));
    odrxFailAllocationsAfter(failing);
    try {
      database->addOdDbObject(object.get());
      wentThrough = true;
    } catch (const std::bad_alloc&) {
    }
    odrxStopFailingAllocations();
    ASSERT_EQ(object->numRefs(), wentThrough ? 2 : 1) << failing;
    ASSERT_EQ(object->database(), wentThrough ? database.get() : nullptr) << failing;
    ASSERT_EQ(database->objectAt(2), wentThrough ? object.get() : nullptr) << failing;
  }
  EXPECT_GT(failing, 2u);
  EXPECT_LT(failing, maxAllocations);
}

TEST_F(OdDbDatabaseTest, ObjectAtGivesNullForAFreeHandle) { EXPECT_EQ(database->objectAt(77), nullptr); }

TEST_F(OdDbDatabaseTest, ARestoredObjectIsClosedAndKeepsItsHandle) {
  const NumberObjectPtr object(new NumberObject(5));
  const OdDbObjectId id = database->restoreObject(object.get(), 40);
  EXPECT_EQ(id.getHandle(), 40u);
  EXPECT_FALSE(object->isWriteEnabled());
  EXPECT_EQ(addNumber(6)->objectId().getHandle(), 41u);
}

TEST_F(OdDbDatabaseTest, RestoringRefusesAHandleThatIsTakenOrNone) {
  const NumberObjectPtr object(new NumberObject(5));
  EXPECT_EQ(codeOf([&] { database->restoreObject(object.get(), 1); }), eInvalidInput);
  EXPECT_EQ(codeOf([&] { database->restoreObject(object.get(), 0); }), eInvalidInput);
  EXPECT_EQ(codeOf([&] { database->restoreObject(object.get(), lastHandle); }), eInvalidInput);
  EXPECT_EQ(codeOf([&] { database->restoreObject(nullptr, 2); }), eInvalidInput);
  EXPECT_EQ(object->numRefs(), 1);
}

TEST_F(OdDbDatabaseTest, EraseRefusesWhatItCannotErase) {
  const OdDbDatabasePtr other(new OdDbDatabase);
  const OdDbObjectId id = addNumber(1)->objectId();
  database->eraseObject(id);
  EXPECT_EQ(codeOf([&] { database->eraseObject({}); }), eNullObjectId);
  EXPECT_EQ(codeOf([&] { database->eraseObject(id); }), eWasErased);
  EXPECT_EQ(codeOf([&] { database->eraseObject({other.get(), 2}); }), eInvalidInput);
  EXPECT_EQ(codeOf([&] { database->eraseObject(database->getNamedObjectsDictionaryId()); }), eNotApplicable);
}

TEST_F(OdDbDatabaseTest, WithoutAStoreChangesNeedNoTransaction) {
  const NumberObjectPtr object = addNumber(1);
  object->setValue(2);
  EXPECT_EQ(object->value(), 2);
}

TEST_F(OdDbDatabaseTest, ForReadingOnlyEveryChangeIsRefused) {
  const NumberObjectPtr object = addNumber(1);
  const NumberObjectPtr another(new NumberObject(2));
  database->setReadOnly(true);
  EXPECT_TRUE(database->isReadOnly());
  EXPECT_EQ(codeOf([&] { object->setValue(2); }), eWriteProtected);
  EXPECT_EQ(codeOf([&] { database->addOdDbObject(another.get()); }), eWriteProtected);
  EXPECT_EQ(codeOf([&] { database->eraseObject(object->objectId()); }), eWriteProtected);
  EXPECT_EQ(object->value(), 1);
  database->setReadOnly(false);
  object->setValue(2);
  EXPECT_EQ(object->value(), 2);
}

TEST_F(OdDbDatabaseTest, TransactionsDoNotNest) {
  database->startTransaction();
  EXPECT_TRUE(database->hasActiveTransaction());
  EXPECT_EQ(codeOf([&] { database->startTransaction(); }), eNotApplicable);
  EXPECT_TRUE(database->hasActiveTransaction());
  database->endTransaction();
  EXPECT_FALSE(database->hasActiveTransaction());
}

TEST_F(OdDbDatabaseTest, EndAndAbortNeedATransaction) {
  EXPECT_EQ(codeOf([&] { database->endTransaction(); }), eNoActiveTransaction);
  EXPECT_EQ(codeOf([&] { database->abortTransaction(); }), eNoActiveTransaction);
}

TEST_F(OdDbDatabaseTest, AbortUndoesInReverseOrder) {
  const NumberObjectPtr object = addNumber(1);
  database->startTransaction();
  object->setValue(2);
  object->setValue(3);
  database->abortTransaction();
  EXPECT_EQ(object->value(), 1);
  EXPECT_FALSE(database->hasActiveTransaction());
}

TEST_F(OdDbDatabaseTest, AChangeBeforeTheTransactionIsNotUndone) {
  const NumberObjectPtr object = addNumber(1);
  object->setValue(2);
  database->startTransaction();
  database->abortTransaction();
  EXPECT_EQ(object->value(), 2);
}

TEST_F(OdDbDatabaseTest, AnEndedTransactionIsNotUndoneByTheNext) {
  const NumberObjectPtr object = addNumber(1);
  database->startTransaction();
  object->setValue(2);
  database->endTransaction();
  database->startTransaction();
  database->abortTransaction();
  EXPECT_EQ(object->value(), 2);
}

TEST_F(OdDbDatabaseTest, AnObjectOfAnAbortedTransactionIsInNoDatabaseAgain) {
  database->startTransaction();
  const NumberObjectPtr object = addNumber(1);
  const OdDbObjectId id = object->objectId();
  object->setValue(2);
  database->abortTransaction();
  EXPECT_FALSE(id.isValid());
  EXPECT_EQ(database->objectAt(id.getHandle()), nullptr);
  EXPECT_EQ(object->database(), nullptr);
  EXPECT_EQ(object->numRefs(), 1);
  EXPECT_EQ(object->value(), 1);
  object->setValue(3);
  EXPECT_TRUE(database->addOdDbObject(object.get()).isValid());
}

TEST_F(OdDbDatabaseTest, AbortBringsAnErasedObjectBack) {
  const NumberObjectPtr object = addNumber(1);
  database->startTransaction();
  database->eraseObject(object->objectId());
  database->abortTransaction();
  EXPECT_TRUE(object->objectId().isValid());
}

TEST_F(OdDbDatabaseTest, AbortTakesEntriesBackAndPutsRemovedOnesInTheirPlaces) {
  const OdDbDictionaryPtr dictionary = namedObjects(OdDb::kForWrite);
  const OdDbObjectId first = dictionary->setAt(L"first", new NumberObject(1));
  const OdDbObjectId second = dictionary->setAt(L"second", new NumberObject(2));
  database->startTransaction();
  dictionary->setAt(L"third", new NumberObject(3));
  dictionary->remove(L"first");
  dictionary->setAt(L"second", new NumberObject(4));
  dictionary->setAt(L"first", new NumberObject(5));
  database->abortTransaction();
  const std::vector<OdDbDictionaryEntry> entries = dictionary->entries();
  ASSERT_EQ(entries.size(), 2u);
  EXPECT_EQ(entries[0].name, OdString(L"first"));
  EXPECT_EQ(entries[0].object, first);
  EXPECT_EQ(entries[1].name, OdString(L"second"));
  EXPECT_EQ(entries[1].object, second);
  EXPECT_TRUE(first.isValid());
  EXPECT_TRUE(second.isValid());
  EXPECT_EQ(dictionary->getAt(L"first"), first);
  EXPECT_TRUE(dictionary->getAt(L"third").isNull());
}

TEST_F(FiledDatabase, ChangesNeedATransaction) {
  const NumberObjectPtr object = write(ten);
  const NumberObjectPtr another(new NumberObject(1));
  EXPECT_EQ(codeOf([&] { object->setValue(101); }), eNoActiveTransaction);
  EXPECT_EQ(codeOf([&] { database->addOdDbObject(another.get()); }), eNoActiveTransaction);
  EXPECT_EQ(codeOf([&] { database->eraseObject(ten); }), eNoActiveTransaction);
  EXPECT_EQ(object->value(), 100);
}

TEST_F(FiledDatabase, TheStoreGetsEachChangedObjectOnceInTheOrderOfFirstChange) {
  database->startTransaction();
  write(twenty)->setValue(201);
  write(ten)->setValue(101);
  write(twenty)->setValue(202);
  database->endTransaction();
  ASSERT_EQ(store.calls.size(), 1u);
  EXPECT_EQ(store.calls[0].written, (Handles{20, 10}));
  EXPECT_EQ(store.calls[0].erased, Handles{});
}

TEST_F(FiledDatabase, EachTransactionGivesTheStoreItsOwnChangesOnly) {
  database->startTransaction();
  write(ten)->setValue(101);
  database->endTransaction();
  database->startTransaction();
  write(twenty)->setValue(201);
  database->endTransaction();
  ASSERT_EQ(store.calls.size(), 2u);
  EXPECT_EQ(store.calls[1].written, Handles{20});
}

TEST_F(FiledDatabase, ATransactionWithoutChangesDoesNotCallTheStore) {
  database->startTransaction();
  valueOf(ten);
  write(ten);
  database->endTransaction();
  EXPECT_TRUE(store.calls.empty());
}

TEST_F(FiledDatabase, AnAbortedTransactionDoesNotCallTheStore) {
  database->startTransaction();
  write(ten)->setValue(101);
  database->abortTransaction();
  EXPECT_TRUE(store.calls.empty());
  EXPECT_EQ(valueOf(ten), 100);
}

TEST_F(FiledDatabase, NewObjectsAreWritten) {
  database->startTransaction();
  const std::uint64_t handle = addNumber(5)->objectId().getHandle();
  database->endTransaction();
  ASSERT_EQ(store.calls.size(), 1u);
  EXPECT_EQ(handle, 21u);
  EXPECT_EQ(store.calls[0].written, Handles{21});
}

TEST_F(FiledDatabase, ErasedObjectsAreNamedByTheirHandles) {
  database->startTransaction();
  write(twenty)->setValue(201);
  database->eraseObject(twenty);
  database->endTransaction();
  ASSERT_EQ(store.calls.size(), 1u);
  EXPECT_EQ(store.calls[0].written, Handles{});
  EXPECT_EQ(store.calls[0].erased, Handles{20});
}

TEST_F(FiledDatabase, AnObjectThatCameAndWentConcernsNoStore) {
  database->startTransaction();
  database->eraseObject(addNumber(5)->objectId());
  database->endTransaction();
  EXPECT_TRUE(store.calls.empty());
}

TEST_F(FiledDatabase, AnObjectOfAnEndedTransactionIsKnownToTheStore) {
  database->startTransaction();
  const OdDbObjectId id = addNumber(5)->objectId();
  database->endTransaction();
  database->startTransaction();
  database->eraseObject(id);
  database->endTransaction();
  ASSERT_EQ(store.calls.size(), 2u);
  EXPECT_EQ(store.calls[1].erased, Handles{21});
}

TEST_F(FiledDatabase, AnErasedObjectThatNobodyHoldsLeavesTheMemory) {
  database->startTransaction();
  database->eraseObject(ten);
  EXPECT_NE(database->objectAt(10), nullptr);
  database->endTransaction();
  EXPECT_EQ(database->objectAt(10), nullptr);
  EXPECT_EQ(codeOf([&] { ten.safeOpenObject(); }), eWasErased);
}

TEST_F(FiledDatabase, WhenTheStoreRefusesEverythingIsUndoneAndTheErrorGoesOn) {
  store.refuses = true;
  database->startTransaction();
  write(ten)->setValue(101);
  const NumberObjectPtr made = addNumber(5);
  database->eraseObject(twenty);
  EXPECT_EQ(codeOf([&] { database->endTransaction(); }), eDiskFull);
  EXPECT_FALSE(database->hasActiveTransaction());
  EXPECT_EQ(valueOf(ten), 100);
  EXPECT_EQ(valueOf(twenty), 200);
  EXPECT_EQ(made->database(), nullptr);
}

TEST_F(FiledDatabase, AfterARefusalTheSameChangeGoesThrough) {
  store.refuses = true;
  database->startTransaction();
  write(ten)->setValue(101);
  EXPECT_EQ(codeOf([&] { database->endTransaction(); }), eDiskFull);
  store.refuses = false;
  database->startTransaction();
  write(ten)->setValue(101);
  database->endTransaction();
  ASSERT_EQ(store.calls.size(), 1u);
  EXPECT_EQ(store.calls[0].written, Handles{10});
  EXPECT_EQ(valueOf(ten), 101);
}

TEST_F(FiledDatabase, TheNotesOfADictionaryAreClearedWhenATransactionEndsWell) {
  const OdDbDictionaryPtr dictionary = namedObjects(OdDb::kForWrite);
  database->startTransaction();
  dictionary->setAt(L"a", new NumberObject(1));
  EXPECT_EQ(dictionary->addedEntries().size(), 1u);
  database->endTransaction();
  EXPECT_TRUE(dictionary->addedEntries().empty());
  database->startTransaction();
  dictionary->remove(L"a");
  EXPECT_EQ(dictionary->removedSequences().size(), 1u);
  database->endTransaction();
  EXPECT_TRUE(dictionary->removedSequences().empty());
}

TEST_F(FiledDatabase, TheNotesOfADictionaryAreTakenBackByAnAbort) {
  const OdDbDictionaryPtr dictionary = namedObjects(OdDb::kForWrite);
  database->startTransaction();
  dictionary->setAt(L"a", new NumberObject(1));
  database->endTransaction();
  database->startTransaction();
  dictionary->setAt(L"a", new NumberObject(2));
  dictionary->setAt(L"b", new NumberObject(3));
  dictionary->remove(L"a");
  database->abortTransaction();
  EXPECT_TRUE(dictionary->addedEntries().empty());
  EXPECT_TRUE(dictionary->removedSequences().empty());
}

TEST_F(OdDbDatabaseTest, WhatStandsInItWhenTheStoreComesCountsAsKept) {
  const OdDbDictionaryPtr dictionary = namedObjects(OdDb::kForWrite);
  dictionary->setAt(L"a", new NumberObject(1));
  RecordingStore store;
  database->setStore(&store);
  EXPECT_TRUE(dictionary->addedEntries().empty());
  database->startTransaction();
  database->endTransaction();
  EXPECT_TRUE(store.calls.empty());
}

TEST_F(FiledDatabase, WhicheverAllocationFailsAnAbortLeavesTheDrawingAsItWas) {
  const OdDbDictionaryPtr dictionary = namedObjects(OdDb::kForWrite);
  database->startTransaction();
  const OdDbObjectId kept = dictionary->setAt(L"kept", new NumberObject(1));
  const OdDbObjectId other = dictionary->setAt(L"other", new NumberObject(2));
  database->endTransaction();

  // More than the script below allocates; the loop ends when it goes through.
  constexpr std::uint64_t maxAllocations = 1000;
  std::uint64_t failing = 0;
  for (bool wentThrough = false; !wentThrough && failing < maxAllocations; ++failing) {
    odrxFailAllocationsAfter(failing);
    try {
      database->startTransaction();
      const NumberObjectPtr made(new NumberObject(3));
      dictionary->setAt(L"a new name that no short string can hold", made.get());
      made->setValue(4);
      const NumberObjectPtr replacement(new NumberObject(5));
      dictionary->setAt(L"other", replacement.get());
      dictionary->remove(L"kept");
      wentThrough = true;
    } catch (const std::bad_alloc&) {
    }
    // Still without memory: to take back must need none.
    database->abortTransaction();
    odrxStopFailingAllocations();

    ASSERT_EQ(dictionary->numEntries(), 2u) << failing;
    ASSERT_EQ(dictionary->getAt(L"kept"), kept) << failing;
    ASSERT_EQ(dictionary->getAt(L"other"), other) << failing;
    ASSERT_EQ(valueOf(kept), 1) << failing;
    ASSERT_EQ(valueOf(other), 2) << failing;
    ASSERT_TRUE(dictionary->addedEntries().empty()) << failing;
    ASSERT_TRUE(dictionary->removedSequences().empty()) << failing;
  }
  EXPECT_GT(failing, 10u);
  EXPECT_LT(failing, maxAllocations);
}

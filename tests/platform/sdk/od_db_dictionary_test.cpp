#include "platform/sdk/od_db_dictionary.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "platform/sdk/od_test_objects.h"

namespace {

class OdDbDictionaryTest : public testing::Test {
 protected:
  OdDbDictionaryTest() : dictionary(openNamedObjects(*database, OdDb::kForWrite)) {}

  OdDbObjectId put(const wchar_t* name, int value) {
    const NumberObjectPtr object(new NumberObject(value));
    return dictionary->setAt(name, object.get());
  }

  std::vector<std::wstring> namesInOrder(OdRx::DictIterType type) const {
    std::vector<std::wstring> names;
    for (const OdDbDictionaryIteratorPtr walk = dictionary->newIterator(type); !walk->done(); walk->next()) {
      names.push_back(walk->name().wideText());
    }
    return names;
  }

  const OdDbDatabasePtr database{new OdDbDatabase};
  const OdDbDictionaryPtr dictionary;
};

using Names = std::vector<std::wstring>;
using Sequences = std::vector<std::uint64_t>;

constexpr std::uint64_t lastSequence = std::numeric_limits<std::uint64_t>::max();

}  // namespace

TEST_F(OdDbDictionaryTest, IsEmptyInANewDrawing) {
  EXPECT_EQ(dictionary->numEntries(), 0u);
  EXPECT_TRUE(dictionary->getAt(L"north").isNull());
  EXPECT_TRUE(dictionary->newIterator()->done());
  EXPECT_TRUE(dictionary->entries().empty());
}

TEST_F(OdDbDictionaryTest, SetAtTakesANewObjectIntoTheDatabase) {
  const OdDbObjectId id = put(L"north", 7);
  EXPECT_TRUE(id.isValid());
  EXPECT_EQ(id.owningDatabase(), database.get());
  EXPECT_EQ(dictionary->getAt(L"north"), id);
  EXPECT_EQ(dictionary->numEntries(), 1u);
  EXPECT_EQ(NumberObjectPtr(id.safeOpenObject())->value(), 7);
}

TEST_F(OdDbDictionaryTest, SetAtFilesAnObjectThatTheDatabaseHasAlready) {
  const NumberObjectPtr object(new NumberObject(7));
  const OdDbObjectId id = database->addOdDbObject(object.get());
  EXPECT_EQ(dictionary->setAt(L"north", object.get()), id);
  EXPECT_EQ(dictionary->getAt(L"north"), id);
}

TEST_F(OdDbDictionaryTest, NamesAreComparedCharacterByCharacter) {
  put(L"north", 1);
  EXPECT_TRUE(dictionary->getAt(L"North").isNull());
  EXPECT_TRUE(dictionary->getAt(L"north ").isNull());
}

TEST_F(OdDbDictionaryTest, IsWalkedInTheOrderOfEntryByTypeOne) {
  put(L"b", 1);
  put(L"c", 2);
  put(L"a", 3);
  EXPECT_EQ(OdRx::kDictCollated, 1);
  EXPECT_EQ(namesInOrder(OdRx::kDictCollated), (Names{L"b", L"c", L"a"}));
}

TEST_F(OdDbDictionaryTest, IsWalkedInTheOrderOfNamesByTypeZero) {
  put(L"b", 1);
  put(L"c", 2);
  put(L"a", 3);
  EXPECT_EQ(OdRx::kDictSorted, 0);
  EXPECT_EQ(namesInOrder(OdRx::kDictSorted), (Names{L"a", L"b", L"c"}));
}

TEST_F(OdDbDictionaryTest, AnIteratorKeepsToTheEntriesOfItsStart) {
  put(L"a", 1);
  const OdDbDictionaryIteratorPtr walk = dictionary->newIterator();
  put(L"b", 2);
  EXPECT_FALSE(walk->next());
  EXPECT_TRUE(walk->done());
}

TEST_F(OdDbDictionaryTest, AnIteratorGivesNameIdAndOpenedObject) {
  const OdDbObjectId id = put(L"a", 4);
  const OdDbDictionaryIteratorPtr walk = dictionary->newIterator();
  EXPECT_EQ(walk->name(), OdString(L"a"));
  EXPECT_EQ(walk->objectId(), id);
  EXPECT_EQ(NumberObjectPtr(walk->getObject())->value(), 4);
  EXPECT_TRUE(walk->getObject(OdDb::kForWrite)->isWriteEnabled());
}

TEST_F(OdDbDictionaryTest, AnIteratorGivesNullForAnObjectThatCannotBeOpened) {
  const OdDbObjectId id = put(L"a", 4);
  const OdDbObjectPtr writer = id.safeOpenObject(OdDb::kForWrite);
  EXPECT_TRUE(dictionary->newIterator()->getObject(OdDb::kForWrite).isNull());
}

TEST_F(OdDbDictionaryTest, AnIteratorAtItsEndGivesNothing) {
  const OdDbDictionaryIteratorPtr walk = dictionary->newIterator();
  EXPECT_FALSE(walk->next());
  EXPECT_TRUE(walk->name().isEmpty());
  EXPECT_TRUE(walk->objectId().isNull());
  EXPECT_TRUE(walk->getObject().isNull());
}

TEST_F(OdDbDictionaryTest, ATakenNameGetsTheNewObjectAndKeepsItsPlace) {
  const OdDbObjectId old = put(L"a", 1);
  put(L"b", 2);
  const OdDbObjectId replacement = put(L"a", 3);
  EXPECT_EQ(dictionary->getAt(L"a"), replacement);
  EXPECT_EQ(namesInOrder(OdRx::kDictCollated), (Names{L"a", L"b"}));
  EXPECT_NE(replacement, old);
  EXPECT_FALSE(old.isValid());
}

TEST_F(OdDbDictionaryTest, TheSameObjectUnderItsNameAgainStaysAsItIs) {
  const OdDbObjectId id = put(L"a", 1);
  EXPECT_EQ(dictionary->setAt(L"a", id.safeOpenObject().get()), id);
  EXPECT_TRUE(id.isValid());
  EXPECT_EQ(dictionary->numEntries(), 1u);
}

TEST_F(OdDbDictionaryTest, SetAtIsRefusedUnlessItIsOpenForWriting) {
  const NumberObjectPtr object(new NumberObject(1));
  dictionary->downgradeOpen();
  EXPECT_EQ(codeOf([&] { dictionary->setAt(L"a", object.get()); }), eNotOpenForWrite);
  EXPECT_EQ(dictionary->numEntries(), 0u);
  EXPECT_EQ(object->database(), nullptr);
}

TEST_F(OdDbDictionaryTest, SetAtRefusesNull) {
  EXPECT_EQ(codeOf([&] { dictionary->setAt(L"a", nullptr); }), eInvalidInput);
  EXPECT_EQ(dictionary->numEntries(), 0u);
}

TEST_F(OdDbDictionaryTest, SetAtRefusesNullForATakenNameToo) {
  const OdDbObjectId id = put(L"a", 1);
  EXPECT_EQ(codeOf([&] { dictionary->setAt(L"a", nullptr); }), eInvalidInput);
  EXPECT_EQ(dictionary->getAt(L"a"), id);
}

TEST_F(OdDbDictionaryTest, SetAtRefusesAnObjectOfAnotherDatabase) {
  const OdDbDatabasePtr other(new OdDbDatabase);
  const NumberObjectPtr object(new NumberObject(1));
  other->addOdDbObject(object.get());
  EXPECT_EQ(codeOf([&] { dictionary->setAt(L"a", object.get()); }), eInvalidInput);
  EXPECT_EQ(dictionary->numEntries(), 0u);
  EXPECT_TRUE(dictionary->addedEntries().empty());
}

TEST_F(OdDbDictionaryTest, SetAtRefusesAnErasedObject) {
  const NumberObjectPtr object(new NumberObject(1));
  database->eraseObject(database->addOdDbObject(object.get()));
  EXPECT_EQ(codeOf([&] { dictionary->setAt(L"a", object.get()); }), eWasErased);
}

TEST(OdDbDictionary, OneThatIsInNoDatabaseTakesNoEntries) {
  const OdDbDictionaryPtr dictionary = OdDbDictionary::desc()->create();
  const NumberObjectPtr object(new NumberObject(1));
  EXPECT_EQ(codeOf([&] { dictionary->setAt(L"a", object.get()); }), eNotInDatabase);
}

TEST_F(OdDbDictionaryTest, RemoveTakesTheEntryAwayAndErasesItsObject) {
  const OdDbObjectId id = put(L"a", 1);
  put(L"b", 2);
  EXPECT_TRUE(dictionary->remove(L"a"));
  EXPECT_TRUE(dictionary->getAt(L"a").isNull());
  EXPECT_EQ(namesInOrder(OdRx::kDictCollated), Names{L"b"});
  EXPECT_FALSE(id.isValid());
}

TEST_F(OdDbDictionaryTest, RemoveOfANameThatIsNotThereIsFalse) { EXPECT_FALSE(dictionary->remove(L"a")); }

TEST_F(OdDbDictionaryTest, RemoveIsRefusedUnlessItIsOpenForWriting) {
  const OdDbObjectId id = put(L"a", 1);
  dictionary->downgradeOpen();
  EXPECT_EQ(codeOf([&] { dictionary->remove(L"a"); }), eNotOpenForWrite);
  EXPECT_TRUE(id.isValid());
  EXPECT_EQ(dictionary->numEntries(), 1u);
}

TEST_F(OdDbDictionaryTest, ARemovedNameThatComesBackStandsLast) {
  put(L"a", 1);
  put(L"b", 2);
  dictionary->remove(L"a");
  put(L"a", 3);
  EXPECT_EQ(namesInOrder(OdRx::kDictCollated), (Names{L"b", L"a"}));
  EXPECT_EQ(dictionary->entries()[1].sequence, 3u);
}

TEST_F(OdDbDictionaryTest, NotesWhatWasAddedAndRemovedForAStore) {
  put(L"a", 1);
  put(L"b", 2);
  dictionary->clearChanges();
  EXPECT_TRUE(dictionary->addedEntries().empty());
  const OdDbObjectId id = put(L"c", 3);
  dictionary->remove(L"a");
  ASSERT_EQ(dictionary->addedEntries().size(), 1u);
  EXPECT_EQ(dictionary->addedEntries().at(3).name, OdString(L"c"));
  EXPECT_EQ(dictionary->addedEntries().at(3).object, id);
  EXPECT_EQ(dictionary->removedSequences(), Sequences{1});
}

TEST_F(OdDbDictionaryTest, NotesAReplacedEntryAsAdded) {
  put(L"a", 1);
  dictionary->clearChanges();
  const OdDbObjectId replacement = put(L"a", 2);
  ASSERT_EQ(dictionary->addedEntries().size(), 1u);
  EXPECT_EQ(dictionary->addedEntries().at(1).object, replacement);
  EXPECT_TRUE(dictionary->removedSequences().empty());
}

TEST_F(OdDbDictionaryTest, AnEntryThatCameAndWentIsNotedAsRemovedOnly) {
  put(L"a", 1);
  dictionary->remove(L"a");
  EXPECT_TRUE(dictionary->addedEntries().empty());
  EXPECT_EQ(dictionary->removedSequences(), Sequences{1});
}

TEST_F(OdDbDictionaryTest, AnAbortBringsTheNotesBackThatStoodBefore) {
  const OdDbObjectId a = put(L"a", 1);
  const OdDbObjectId b = put(L"b", 2);
  database->startTransaction();
  put(L"a", 3);
  dictionary->remove(L"b");
  database->abortTransaction();
  ASSERT_EQ(dictionary->addedEntries().size(), 2u);
  EXPECT_EQ(dictionary->addedEntries().at(1).object, a);
  EXPECT_EQ(dictionary->addedEntries().at(2).object, b);
  EXPECT_TRUE(dictionary->removedSequences().empty());
}

TEST_F(OdDbDictionaryTest, ARestoredEntryKeepsItsSequenceAndIsNotNoted) {
  const OdDbObjectId id = database->restoreObject(new NumberObject(5), 40);
  dictionary->downgradeOpen();
  dictionary->restoreEntry({12, L"late", id});
  dictionary->restoreEntry({3, L"early", id});
  EXPECT_EQ(namesInOrder(OdRx::kDictCollated), (Names{L"early", L"late"}));
  EXPECT_EQ(dictionary->getAt(L"late"), id);
  EXPECT_TRUE(dictionary->addedEntries().empty());
  dictionary->upgradeOpen();
  put(L"new", 6);
  EXPECT_EQ(dictionary->entries()[2].sequence, 13u);
}

TEST_F(OdDbDictionaryTest, RestoringRefusesATakenNameOrSequence) {
  dictionary->restoreEntry({5, L"a", {}});
  EXPECT_EQ(codeOf([&] { dictionary->restoreEntry({5, L"b", {}}); }), eInvalidInput);
  EXPECT_EQ(codeOf([&] { dictionary->restoreEntry({6, L"a", {}}); }), eInvalidInput);
  EXPECT_EQ(namesInOrder(OdRx::kDictCollated), Names{L"a"});
}

TEST_F(OdDbDictionaryTest, RestoringRefusesASequenceThatLeavesNoneAfterIt) {
  EXPECT_EQ(codeOf([&] { dictionary->restoreEntry({0, L"a", {}}); }), eInvalidInput);
  EXPECT_EQ(codeOf([&] { dictionary->restoreEntry({lastSequence, L"a", {}}); }), eInvalidInput);
}

#include "workbench/host/transactions.h"

#include <gtest/gtest.h>

#include "platform/sdk/od_db_dictionary.h"

namespace tiepoint::workbench {
namespace {

/// A store that counts what reaches it, and can refuse.
class TestStore : public OdDbStore {
 public:
  void write(const OdDbDatabase&, const OdDbChanges&) override {
    if (refuses) throw OdError(eDiskFull);
    ++writes;
  }

  bool refuses = false;
  int writes = 0;
};

OdDbDatabasePtr newDatabase() { return new OdDbDatabase; }

void enter(const OdDbDatabasePtr& database, const wchar_t* name) {
  const OdDbDictionaryPtr root = database->getNamedObjectsDictionaryId().safeOpenObject(OdDb::kForWrite);
  const OdDbDictionaryPtr entry = OdDbDictionary::desc()->create();
  root->setAt(name, entry.get());
}

std::uint32_t entryCount(const OdDbDatabasePtr& database) {
  const OdDbDictionaryPtr root = database->getNamedObjectsDictionaryId().safeOpenObject();
  return root->numEntries();
}

TEST(Transactions, KeepWhatIsCommittedInEveryDatabase) {
  const OdDbDatabasePtr one = newDatabase();
  const OdDbDatabasePtr two = newDatabase();
  {
    Transactions transactions({one, two});
    enter(one, L"a");
    enter(two, L"b");
    transactions.commit();
  }
  EXPECT_EQ(entryCount(one), 1u);
  EXPECT_EQ(entryCount(two), 1u);
  EXPECT_FALSE(one->hasActiveTransaction());
}

TEST(Transactions, UndoWhatIsNotCommittedInEveryDatabase) {
  const OdDbDatabasePtr one = newDatabase();
  const OdDbDatabasePtr two = newDatabase();
  {
    const Transactions transactions({one, two});
    enter(one, L"a");
    enter(two, L"b");
  }
  EXPECT_EQ(entryCount(one), 0u);
  EXPECT_EQ(entryCount(two), 0u);
  EXPECT_FALSE(two->hasActiveTransaction());
}

TEST(Transactions, UndoAChangeThatTheStoreRefusesAndPassTheErrorOn) {
  TestStore store;
  const OdDbDatabasePtr one = newDatabase();
  const OdDbDatabasePtr two = newDatabase();
  one->setStore(&store);
  store.refuses = true;
  {
    Transactions transactions({one, two});
    enter(one, L"a");
    enter(two, L"b");
    EXPECT_THROW(transactions.commit(), OdError);
  }
  EXPECT_EQ(entryCount(one), 0u);
  EXPECT_EQ(entryCount(two), 0u);
  EXPECT_FALSE(one->hasActiveTransaction());
  EXPECT_FALSE(two->hasActiveTransaction());
}

TEST(Transactions, WriteNothingWhereNothingWasChanged) {
  TestStore store;
  const OdDbDatabasePtr one = newDatabase();
  one->setStore(&store);
  Transactions({one}).commit();
  EXPECT_EQ(store.writes, 0);
}

TEST(Transactions, BeginNoneWhereOneIsRunningAlready) {
  const OdDbDatabasePtr one = newDatabase();
  const OdDbDatabasePtr two = newDatabase();
  two->startTransaction();
  EXPECT_THROW(Transactions({one, two}), OdError);
  EXPECT_FALSE(one->hasActiveTransaction());
}

}  // namespace
}  // namespace tiepoint::workbench

// A drawing on a disk that fails.
#include <gmock/gmock.h>
#include <sqlite3.h>

#include "platform/pointclouds/points_repository.h"
#include "platform/sdk/od_db_dictionary.h"
#include "workbench/drawing/drawing.h"
#include "workbench/drawing/drawing_state.h"
#include "workbench/drawing/refusal.h"
#include "workbench/drawing/test_vfs.h"
#include "workbench/temporary_folder.h"

using namespace tiepoint::workbench;
using testing::StartsWith;

namespace {

/// What became of a transaction on a disk that may fail.
struct Attempt {
  DrawingState before;
  DrawingState changed;
  OdResult result = eOk;
  std::string text;
  bool diskHasFailed = false;
};

class DrawingOnABadDisk : public testing::Test {
 protected:
  /// A drawing with some groups and a cloud, open.
  std::unique_ptr<Drawing> makeDrawing() const {
    auto drawing = Drawing::open(file, true);
    OdDbDatabase& database = *drawing->database();
    inTransaction(database, [&] {
      for (int i = 0; i < 20; ++i) storeGroup(database, std::to_string(i), pointsAlongX(30));
      addCloud(database, L"C", L"c.e57");
    });
    return drawing;
  }

  /// Runs a transaction that touches every table, while the disk fails.
  Attempt attempt(const Drawing& drawing, const FileFailure& failure) {
    OdDbDatabase& database = *drawing.database();
    Attempt made;
    made.before = stateOf(database);
    fileSystem.failFromNowOn(failure);
    database.startTransaction();
    storeGroup(database, L"new", pointsAlongX(200));
    replacePoints(database, L"3", pointsAlongX(7));
    removeGroup(database, L"5");
    moveCloud(database, L"C", shiftAlongX(1.0));
    made.changed = stateOf(database);
    try {
      database.endTransaction();
    } catch (const OdError& error) {
      made.result = error.code();
      made.text = error.what();
    }
    made.diskHasFailed = fileSystem.hasFailed();
    fileSystem.stopFailing();
    return made;
  }

  DrawingState reopened() const { return stateOf(*Drawing::open(file, false)->database()); }

  void removeFiles() const {
    for (const std::string& name : {file, file + "-journal"}) std::filesystem::remove(std::filesystem::u8path(name));
  }

  TestFileSystem fileSystem;
  TemporaryFolder folder;
  std::string file = folder.file("a.tie");
};

class DrawingOnAFailingDisk : public DrawingOnABadDisk, public testing::WithParamInterface<FileFailure> {};
class DrawingOnADoubtfulDisk : public DrawingOnABadDisk, public testing::WithParamInterface<FileFailure> {};

FileFailure once(int resultCode) { return {0, resultCode, false, false}; }
FileFailure fromThenOn(int resultCode) { return {0, resultCode, true, false}; }
FileFailure withEffect(FileFailure failure) {
  failure.takesEffect = true;
  return failure;
}

DrawingState withoutFirstGroup(DrawingState state) {
  state.groups.erase(state.groups.begin());
  return state;
}

}  // namespace

TEST_P(DrawingOnAFailingDisk, AgreesWithItsFileWhicheverOperationFailsAndGoesOnWorking) {
  const OdResult expectedCode = GetParam().resultCode == SQLITE_FULL ? eDiskFull : eFileAccessErr;
  int failedTransactions = 0;
  for (FileFailure failure = GetParam();; ++failure.after) {
    auto drawing = makeDrawing();
    const Attempt made = attempt(*drawing, failure);
    if (made.result != eOk) {
      ++failedTransactions;
      EXPECT_EQ(made.result, expectedCode);
      EXPECT_TRUE(isOneLine(made.text)) << made.text;
      EXPECT_THAT(made.text, StartsWith(file + ": "));
    }
    const DrawingState settled = made.result == eOk ? made.changed : made.before;
    EXPECT_EQ(stateOf(*drawing->database()), settled) << "after " << failure.after;

    inTransaction(*drawing->database(), [&] { removeGroup(*drawing->database(), L"0"); });
    drawing.reset();
    EXPECT_EQ(reopened(), withoutFirstGroup(settled)) << "after " << failure.after;
    removeFiles();
    if (!made.diskHasFailed) break;
  }
  EXPECT_GT(failedTransactions, 10);
}

INSTANTIATE_TEST_SUITE_P(Once, DrawingOnAFailingDisk,
                         testing::Values(once(SQLITE_FULL), once(SQLITE_IOERR_WRITE),
                                         withEffect(once(SQLITE_IOERR_FSYNC))));
INSTANTIATE_TEST_SUITE_P(ForAWhile, DrawingOnAFailingDisk,
                         testing::Values(fromThenOn(SQLITE_FULL), fromThenOn(SQLITE_IOERR_WRITE),
                                         withEffect(fromThenOn(SQLITE_IOERR_FSYNC))));

TEST_P(DrawingOnADoubtfulDisk, TakesARefusedChangeBackThatHasReachedTheFileWhenItIsClosed) {
  int doubts = 0;
  for (FileFailure failure = GetParam();; ++failure.after) {
    auto drawing = makeDrawing();
    const Attempt made = attempt(*drawing, failure);
    if (made.text.find("can't be read back after a disk error") != std::string::npos) ++doubts;
    drawing.reset();
    EXPECT_EQ(reopened(), made.result == eOk ? made.changed : made.before) << "after " << failure.after;
    removeFiles();
    if (!made.diskHasFailed) break;
  }
  EXPECT_GE(doubts, 1);
}

TEST_P(DrawingOnADoubtfulDisk, TakesBackSeveralRefusedChangesInARow) {
  for (FileFailure failure = GetParam();; ++failure.after) {
    auto drawing = makeDrawing();
    OdDbDatabase& database = *drawing->database();
    const Attempt first = attempt(*drawing, failure);
    fileSystem.failFromNowOn(failure);
    OdResult result = eOk;
    database.startTransaction();
    storeGroup(database, L"second", pointsAlongX(3));
    moveCloud(database, L"C", shiftAlongX(8.0));
    try {
      database.endTransaction();
    } catch (const OdError& error) {
      result = error.code();
    }
    fileSystem.stopFailing();
    const DrawingState settled = stateOf(database);
    EXPECT_EQ(settled.groups.back().name == L"second", result == eOk) << "after " << failure.after;
    inTransaction(database, [&] { removeGroup(database, L"0"); });
    drawing.reset();
    EXPECT_EQ(reopened(), withoutFirstGroup(settled)) << "after " << failure.after;
    removeFiles();
    if (!first.diskHasFailed) break;
  }
}

INSTANTIATE_TEST_SUITE_P(ForAWhile, DrawingOnADoubtfulDisk,
                         testing::Values(fromThenOn(SQLITE_IOERR_WRITE), withEffect(fromThenOn(SQLITE_IOERR_FSYNC))));

TEST_F(DrawingOnABadDisk, TakesBackTheRefusedErasureOfAnObject) {
  int doubts = 0;
  for (FileFailure failure = fromThenOn(SQLITE_IOERR_WRITE);; ++failure.after) {
    auto drawing = makeDrawing();
    OdDbDatabase& database = *drawing->database();
    const DrawingState before = stateOf(database);
    const OdDbObjectId groups = ZOR::RegistrationObjectPointsRepository::registrationPointsDictionary(database);
    const OdDbObjectId first = OdDbDictionaryPtr(groups.safeOpenObject())->getAt(L"0");
    fileSystem.failFromNowOn(failure);
    database.startTransaction();
    database.eraseObject(first);
    bool isErased = true;
    try {
      database.endTransaction();
    } catch (const OdError& error) {
      isErased = false;
      if (std::string(error.what()).find("can't be read back") != std::string::npos) ++doubts;
    }
    const bool diskHasFailed = fileSystem.hasFailed();
    fileSystem.stopFailing();
    drawing.reset();
    EXPECT_EQ(reopened(), isErased ? withoutFirstGroup(before) : before) << "after " << failure.after;
    removeFiles();
    if (!diskHasFailed) break;
  }
  EXPECT_GE(doubts, 1);
}

TEST_F(DrawingOnABadDisk, SaysWhatToDoWhenItIsFull) {
  const auto drawing = makeDrawing();
  const Attempt made = attempt(*drawing, fromThenOn(SQLITE_FULL));
  EXPECT_EQ(made.result, eDiskFull);
  EXPECT_EQ(
      made.text,
      file + ": the drawing can't be written, as the disk is full; nothing was stored: free some space and try again");
}

TEST_F(DrawingOnABadDisk, OpensForReadingWhenItIsFull) {
  const DrawingState before = stateOf(*makeDrawing()->database());
  fileSystem.failFromNowOn(fromThenOn(SQLITE_FULL));
  const auto drawing = Drawing::open(file, false);
  EXPECT_TRUE(fileSystem.hasFailed());
  EXPECT_EQ(stateOf(*drawing->database()), before);
  fileSystem.stopFailing();
  inTransaction(*drawing->database(), [&] { removeGroup(*drawing->database(), L"0"); });
  EXPECT_EQ(stateOf(*drawing->database()), withoutFirstGroup(before));
}

TEST_F(DrawingOnABadDisk, LeavesNothingThatOpensAsADrawingWhenItCannotBeMade) {
  int refusals = 0;
  for (FileFailure failure = fromThenOn(SQLITE_FULL);; ++failure.after) {
    fileSystem.failFromNowOn(failure);
    const Refusal refusal = refusalOf(file, true);
    const bool diskHasFailed = fileSystem.hasFailed();
    fileSystem.stopFailing();
    if (refusal.code != eOk) {
      ++refusals;
      EXPECT_EQ(refusal.code, eDiskFull);
      EXPECT_NE(refusalOf(file, false).code, eOk) << "after " << failure.after;
    }
    EXPECT_EQ(refusalOf(file, true).code, eOk) << "after " << failure.after;
    removeFiles();
    if (!diskHasFailed) break;
  }
  EXPECT_GT(refusals, 5);
}

TEST_F(DrawingOnABadDisk, IsAsBeforeOrAsAfterWheneverThePowerIsCut) {
  int timesBefore = 0;
  int timesAfter = 0;
  constexpr unsigned seeds = 3;
  for (unsigned seed = 0; seed < seeds; ++seed) {
    for (FileFailure failure = fromThenOn(SQLITE_IOERR_WRITE);; ++failure.after) {
      auto drawing = makeDrawing();
      const Attempt made = attempt(*drawing, failure);
      // Nothing more reaches the disk.
      fileSystem.failFromNowOn(fromThenOn(SQLITE_IOERR_WRITE));
      drawing.reset();
      fileSystem.stopFailing();
      fileSystem.cutPower(seed);

      const DrawingState found = reopened();
      EXPECT_TRUE(found == made.before || found == made.changed) << "after " << failure.after;
      // What was reported as done stays done.
      EXPECT_TRUE(made.result != eOk || found == made.changed) << "after " << failure.after;
      ++(found == made.before ? timesBefore : timesAfter);
      removeFiles();
      if (!made.diskHasFailed) break;
    }
  }
  EXPECT_GT(timesBefore, 10);
  EXPECT_GE(timesAfter, 1);
}

TEST_F(DrawingOnABadDisk, CanBeMadeAgainWheneverThePowerIsCutWhileItIsMade) {
  constexpr unsigned seeds = 8;
  for (unsigned seed = 0; seed < seeds; ++seed) {
    for (FileFailure failure = fromThenOn(SQLITE_IOERR_WRITE);; ++failure.after) {
      fileSystem.failFromNowOn(failure);
      refusalOf(file, true);
      const bool diskHasFailed = fileSystem.hasFailed();
      fileSystem.stopFailing();
      fileSystem.cutPower(seed);
      const Refusal refusal = refusalOf(file, true);
      EXPECT_EQ(refusal.code, eOk) << "after " << failure.after << ": " << refusal.text;
      EXPECT_EQ(reopened(), DrawingState());
      removeFiles();
      if (!diskHasFailed) break;
    }
  }
}

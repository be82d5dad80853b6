#include "workbench/drawing/drawing.h"

#include <gmock/gmock.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "platform/pointclouds/point_cloud_definition.h"
#include "platform/pointclouds/points_repository.h"
#include "platform/sdk/od_db_dictionary.h"
#include "workbench/drawing/drawing_state.h"
#include "workbench/drawing/test_vfs.h"
#include "workbench/temporary_folder.h"

using namespace tiepoint::workbench;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::Field;
using testing::IsEmpty;

namespace {

class DrawingTest : public testing::Test {
 protected:
  std::unique_ptr<Drawing> open() const { return Drawing::open(file, true); }
  DrawingState reopened() const { return stateOf(*Drawing::open(file, false)->database()); }

  TestFileSystem fileSystem;
  TemporaryFolder folder;
  std::string file = folder.file("a.tie");
};

std::uint64_t bitsOf(double value) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

double doubleOf(std::uint64_t bits) {
  double value = 0.0;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

OdResult codeOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const OdError& error) {
    return error.code();
  }
  return eOk;
}

std::vector<std::wstring> groupNames(const DrawingState& state) {
  std::vector<std::wstring> names;
  for (const GroupState& group : state.groups) names.push_back(group.name);
  return names;
}

/// An object of a class that a drawing file doesn't know.
class StrangeObject : public OdDbObject {};

}  // namespace

TEST_F(DrawingTest, IsMadeEmptyWhereNoFileWas) {
  {
    const auto drawing = open();
    EXPECT_EQ(drawing->path(), file);
    EXPECT_FALSE(drawing->database()->isReadOnly());
    EXPECT_EQ(stateOf(*drawing->database()), DrawingState());
  }
  EXPECT_EQ(reopened(), DrawingState());
  EXPECT_THAT(folder.names(), ElementsAre("a.tie"));
}

TEST_F(DrawingTest, TakesAPathOutsideAscii) {
  const std::string path = folder.file("чертёж ü 点.tie");
  Drawing::open(path, true);
  EXPECT_THAT(folder.names(), ElementsAre("чертёж ü 点.tie"));
  EXPECT_EQ(Drawing::open(path, false)->path(), path);
}

TEST_F(DrawingTest, TakesAnEmptyFileForANewDrawing) {
  writeBytes(file, "");
  inTransaction(*open()->database(), [] {});
  EXPECT_EQ(reopened(), DrawingState());
}

TEST_F(DrawingTest, KeepsGroupsInTheOrderOfEntry) {
  {
    const auto drawing = open();
    inTransaction(*drawing->database(), [&] {
      storeGroup(*drawing->database(), L"S2", pointsAlongX(3));
      storeGroup(*drawing->database(), L"S1", pointsAlongX(2));
    });
    inTransaction(*drawing->database(), [&] { storeGroup(*drawing->database(), L"S0", pointsAlongX(1)); });
  }
  const DrawingState state = reopened();
  EXPECT_THAT(groupNames(state), ElementsAre(L"S2", L"S1", L"S0"));
  EXPECT_EQ(state.groups[0].points.size(), 3u);
  EXPECT_EQ(state.groups[1].points.size(), 2u);
  EXPECT_EQ(state.groups[2].points.size(), 1u);
}

TEST_F(DrawingTest, KeepsPointsInTheirOrderWithNamesThatRepeat) {
  ZOR::StoredPointArray points;
  points.append(pointAt(L"?", 1.0, 2.0, 3.0, 0.5));
  points.append(pointAt(L"T7", 4.0, 5.0, 6.0, 0.25));
  points.append(pointAt(L"?", 7.0, 8.0, 9.0, 1.0));
  {
    const auto drawing = open();
    inTransaction(*drawing->database(), [&] { storeGroup(*drawing->database(), L"S1", points); });
  }
  const std::vector<PointState> kept = reopened().groups.at(0).points;
  ASSERT_EQ(kept.size(), 3u);
  EXPECT_EQ(kept[0], stateOf(pointAt(L"?", 1.0, 2.0, 3.0, 0.5)));
  EXPECT_EQ(kept[1], stateOf(pointAt(L"T7", 4.0, 5.0, 6.0, 0.25)));
  EXPECT_EQ(kept[2], stateOf(pointAt(L"?", 7.0, 8.0, 9.0, 1.0)));
}

TEST_F(DrawingTest, KeepsAGroupWithoutPoints) {
  {
    const auto drawing = open();
    inTransaction(*drawing->database(), [&] { storeGroup(*drawing->database(), L"empty", {}); });
  }
  const DrawingState state = reopened();
  EXPECT_THAT(groupNames(state), ElementsAre(L"empty"));
  EXPECT_THAT(state.groups[0].points, IsEmpty());
}

TEST_F(DrawingTest, KeepsEveryBitOfEveryNumber) {
  const std::vector<double> numbers = {0.0,
                                       -0.0,
                                       std::numeric_limits<double>::quiet_NaN(),
                                       doubleOf(0xfff8000000abcdefU),
                                       std::numeric_limits<double>::infinity(),
                                       -std::numeric_limits<double>::infinity(),
                                       std::numeric_limits<double>::denorm_min(),
                                       -std::numeric_limits<double>::max(),
                                       0.1,
                                       4500000.0,
                                       9007199254740993.0,
                                       -1.0};
  ZOR::StoredPointArray points;
  for (const double number : numbers) points.append(pointAt(L"p", number, number, number, number));
  OdGeMatrix3d matrix;
  for (int i = 0; i < 12; ++i) matrix(i / 4, i % 4) = numbers[static_cast<std::size_t>(i)];
  {
    const auto drawing = open();
    inTransaction(*drawing->database(), [&] {
      storeGroup(*drawing->database(), L"S1", points);
      const hostDbPointCloudDefinitionPtr cloud = hostDbPointCloudDefinition::desc()->create();
      cloud->restore(L"S1", L"", matrix);
      const OdDbDictionaryPtr clouds =
          hostDbPointCloudDefinition::createPointCloudDictionary(*drawing->database()).safeOpenObject(OdDb::kForWrite);
      clouds->setAt(L"S1", cloud.get());
    });
  }
  const DrawingState state = reopened();
  ASSERT_EQ(state.groups.at(0).points.size(), numbers.size());
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    EXPECT_THAT(state.groups[0].points[i].bits, testing::Each(bitsOf(numbers[i])));
    EXPECT_EQ(state.clouds.at(0).bits[i], bitsOf(numbers[i]));
  }
}

TEST_F(DrawingTest, KeepsEveryCharacterOfEveryName) {
  // A character of each length in UTF-8, a null, and surrogates that stand alone.
  const std::wstring name{
      L'a', L'\0', L'\u0416', L'\u20ac', static_cast<wchar_t>(0xd83d), L'b', static_cast<wchar_t>(0xdc00)};
  {
    const auto drawing = open();
    inTransaction(*drawing->database(), [&] {
      ZOR::StoredPointArray points;
      points.append(pointAt(name, 1.0, 2.0, 3.0));
      points.append(pointAt(L"", 1.0, 2.0, 3.0));
      storeGroup(*drawing->database(), name, points);
      storeGroup(*drawing->database(), L"", {});
      storeGroup(*drawing->database(), L"a", {});
      addCloud(*drawing->database(), name, name);
    });
  }
  const DrawingState state = reopened();
  EXPECT_THAT(groupNames(state), ElementsAre(name, L"", L"a"));
  EXPECT_EQ(state.groups[0].points.at(0).name, name);
  EXPECT_EQ(state.groups[0].points.at(1).name, L"");
  EXPECT_EQ(state.clouds.at(0).name, name);
  EXPECT_EQ(state.clouds.at(0).source, name);
}

TEST_F(DrawingTest, KeepsCloudsWithTheirSourcesAndGatheredMotions) {
  {
    const auto drawing = open();
    inTransaction(*drawing->database(), [&] {
      addCloud(*drawing->database(), L"S2", L"scans/S2.e57");
      addCloud(*drawing->database(), L"S1", L"");
    });
    inTransaction(*drawing->database(), [&] { moveCloud(*drawing->database(), L"S2", shiftAlongX(2.0)); });
    inTransaction(*drawing->database(), [&] { moveCloud(*drawing->database(), L"S2", shiftAlongX(0.5)); });
  }
  const DrawingState state = reopened();
  ASSERT_EQ(state.clouds.size(), 2u);
  EXPECT_EQ(state.clouds[0].name, L"S2");
  EXPECT_EQ(state.clouds[0].source, L"scans/S2.e57");
  EXPECT_EQ(state.clouds[0].bits, bitsOf(shiftAlongX(2.5)));
  EXPECT_EQ(state.clouds[1].name, L"S1");
  EXPECT_EQ(state.clouds[1].source, L"");
  EXPECT_EQ(state.clouds[1].bits, bitsOf(OdGeMatrix3d()));
}

TEST_F(DrawingTest, GivesTheNameOfACloudAfterReopening) {
  {
    const auto drawing = open();
    inTransaction(*drawing->database(), [&] { addCloud(*drawing->database(), L"S2", L""); });
  }
  const auto drawing = open();
  const OdDbDictionaryPtr clouds =
      hostDbPointCloudDefinition::pointCloudDictionary(*drawing->database()).safeOpenObject();
  const hostDbPointCloudDefinitionPtr cloud = clouds->getAt(L"S2").safeOpenObject();
  EXPECT_EQ(cloud->getName(), OdString(L"S2"));
}

TEST_F(DrawingTest, TakesARemovedGroupOutOfTheFile) {
  {
    const auto drawing = open();
    inTransaction(*drawing->database(), [&] {
      for (const wchar_t* name : {L"S1", L"S2", L"S3"}) storeGroup(*drawing->database(), name, pointsAlongX(4));
    });
    inTransaction(*drawing->database(), [&] { removeGroup(*drawing->database(), L"S2"); });
  }
  EXPECT_THAT(groupNames(reopened()), ElementsAre(L"S1", L"S3"));
}

TEST_F(DrawingTest, PutsAGroupThatWasRemovedAndStoredAgainAtTheEnd) {
  {
    const auto drawing = open();
    inTransaction(*drawing->database(), [&] {
      storeGroup(*drawing->database(), L"S1", pointsAlongX(1));
      storeGroup(*drawing->database(), L"S2", pointsAlongX(2));
    });
    inTransaction(*drawing->database(), [&] {
      removeGroup(*drawing->database(), L"S1");
      storeGroup(*drawing->database(), L"S1", pointsAlongX(3));
    });
  }
  const DrawingState state = reopened();
  EXPECT_THAT(groupNames(state), ElementsAre(L"S2", L"S1"));
  EXPECT_EQ(state.groups.at(1).points.size(), 3u);
}

TEST_F(DrawingTest, KeepsThePlaceOfAGroupWhoseNameGetsAnotherObject) {
  {
    const auto drawing = open();
    inTransaction(*drawing->database(), [&] {
      storeGroup(*drawing->database(), L"S1", pointsAlongX(1));
      storeGroup(*drawing->database(), L"S2", pointsAlongX(2));
    });
    inTransaction(*drawing->database(), [&] { storeGroup(*drawing->database(), L"S1", pointsAlongX(5)); });
  }
  const DrawingState state = reopened();
  EXPECT_THAT(groupNames(state), ElementsAre(L"S1", L"S2"));
  EXPECT_EQ(state.groups.at(0).points.size(), 5u);
}

TEST_F(DrawingTest, ReplacesAllPointsOfAGroup) {
  {
    const auto drawing = open();
    inTransaction(*drawing->database(), [&] { storeGroup(*drawing->database(), L"S1", pointsAlongX(9)); });
    inTransaction(*drawing->database(), [&] { replacePoints(*drawing->database(), L"S1", pointsAlongX(2)); });
  }
  EXPECT_EQ(reopened().groups.at(0).points.size(), 2u);
}

TEST_F(DrawingTest, DropsTheEntryOfAnObjectThatIsErasedByItself) {
  {
    const auto drawing = open();
    OdDbDatabase& database = *drawing->database();
    inTransaction(database, [&] {
      storeGroup(database, L"S1", pointsAlongX(1));
      storeGroup(database, L"S2", pointsAlongX(2));
    });
    const OdDbObjectId groups = ZOR::RegistrationObjectPointsRepository::registrationPointsDictionary(database);
    const OdDbObjectId last = OdDbDictionaryPtr(groups.safeOpenObject())->getAt(L"S2");
    inTransaction(database, [&] { database.eraseObject(last); });
  }
  {
    const auto drawing = open();
    EXPECT_THAT(groupNames(stateOf(*drawing->database())), ElementsAre(L"S1"));
    // The object takes the handle that the erased one had.
    inTransaction(*drawing->database(), [&] { addCloud(*drawing->database(), L"C", L""); });
  }
  EXPECT_THAT(groupNames(reopened()), ElementsAre(L"S1"));
}

TEST_F(DrawingTest, LeavesTheFileAsItWasWhenATransactionIsAborted) {
  const auto drawing = open();
  inTransaction(*drawing->database(), [&] { storeGroup(*drawing->database(), L"S1", pointsAlongX(1)); });
  const int operations = fileSystem.operationCount();
  drawing->database()->startTransaction();
  storeGroup(*drawing->database(), L"S2", pointsAlongX(1));
  drawing->database()->abortTransaction();
  EXPECT_EQ(fileSystem.operationCount(), operations);
  EXPECT_THAT(groupNames(stateOf(*drawing->database())), ElementsAre(L"S1"));
}

TEST_F(DrawingTest, StoresNothingOfAnAbortedTransactionWithTheNextOne) {
  {
    const auto drawing = open();
    drawing->database()->startTransaction();
    storeGroup(*drawing->database(), L"aborted", pointsAlongX(1));
    drawing->database()->abortTransaction();
    inTransaction(*drawing->database(), [&] { storeGroup(*drawing->database(), L"kept", pointsAlongX(1)); });
  }
  EXPECT_THAT(groupNames(reopened()), ElementsAre(L"kept"));
}

TEST_F(DrawingTest, WritesNothingForATransactionWithoutChanges) {
  const auto drawing = open();
  const int operations = fileSystem.operationCount();
  inTransaction(*drawing->database(), [] {});
  EXPECT_EQ(fileSystem.operationCount(), operations);
}

TEST_F(DrawingTest, CanOnlyBeChangedInATransaction) {
  const auto drawing = open();
  EXPECT_EQ(codeOf([&] { removeGroup(*drawing->database(), L"S1"); }), eNullObjectId);
  inTransaction(*drawing->database(), [&] { storeGroup(*drawing->database(), L"S1", pointsAlongX(1)); });
  EXPECT_EQ(codeOf([&] { removeGroup(*drawing->database(), L"S1"); }), eNoActiveTransaction);
}

TEST_F(DrawingTest, TakesBackAWholeTransactionWithAnObjectThatTheFileHasNoPlaceFor) {
  {
    const auto drawing = open();
    OdDbDatabase& database = *drawing->database();
    inTransaction(database, [&] { storeGroup(database, L"S1", pointsAlongX(1)); });
    database.startTransaction();
    storeGroup(database, L"S2", pointsAlongX(2));
    database.addOdDbObject(new StrangeObject);
    EXPECT_EQ(codeOf([&] { database.endTransaction(); }), eNotApplicable);
    EXPECT_THAT(groupNames(stateOf(database)), ElementsAre(L"S1"));
  }
  EXPECT_THAT(groupNames(reopened()), ElementsAre(L"S1"));
}

TEST_F(DrawingTest, TakesBackAWholeTransactionWithANameBeyondUnicode) {
  if (sizeof(wchar_t) == 2) GTEST_SKIP() << "every wide text is within Unicode here";
  const auto drawing = open();
  drawing->database()->startTransaction();
  storeGroup(*drawing->database(), L"S1", pointsAlongX(1));
  storeGroup(*drawing->database(), OdString(std::wstring{static_cast<wchar_t>(0x110000)}), {});
  EXPECT_EQ(codeOf([&] { drawing->database()->endTransaction(); }), eInvalidInput);
  EXPECT_EQ(stateOf(*drawing->database()), DrawingState());
}

TEST_F(DrawingTest, WritesWhatWasChangedAndNotTheWholeDrawing) {
  constexpr int groupCount = 2000;
  const auto drawing = open();
  OdDbDatabase& database = *drawing->database();
  inTransaction(database, [&] {
    for (int i = 0; i < groupCount; ++i) storeGroup(database, std::to_string(i), pointsAlongX(10));
    addCloud(database, L"C", L"");
  });
  const std::int64_t before = fileSystem.bytesWritten();
  EXPECT_GT(before, 500000);
  inTransaction(database, [&] {
    storeGroup(database, L"one more", pointsAlongX(10));
    moveCloud(database, L"C", shiftAlongX(1.0));
  });
  // A page or two of each table, each written to the journal too.
  EXPECT_LT(fileSystem.bytesWritten() - before, 150000);
}

TEST_F(DrawingTest, AbortsTheTransactionThatRunsWhenItIsClosed) {
  {
    const auto drawing = open();
    drawing->database()->startTransaction();
    storeGroup(*drawing->database(), L"S1", pointsAlongX(1));
  }
  EXPECT_EQ(reopened(), DrawingState());
}

TEST_F(DrawingTest, CanOnlyBeReadByWhoeverHoldsItsDatabaseAfterItIsClosed) {
  auto drawing = open();
  inTransaction(*drawing->database(), [&] { storeGroup(*drawing->database(), L"S1", pointsAlongX(1)); });
  const OdDbDatabasePtr held = drawing->database();
  drawing.reset();
  EXPECT_THAT(groupNames(stateOf(*held)), ElementsAre(L"S1"));
  EXPECT_EQ(codeOf([&] { storeGroup(*held, L"S2", {}); }), eWriteProtected);
  EXPECT_FALSE(held->hasActiveTransaction());
}

TEST(TemporaryDrawing, HasNoPathAndTakesChanges) {
  const auto drawing = Drawing::temporary();
  EXPECT_EQ(drawing->path(), "");
  inTransaction(*drawing->database(), [&] { storeGroup(*drawing->database(), L"S1", pointsAlongX(2)); });
  EXPECT_THAT(groupNames(stateOf(*drawing->database())), ElementsAre(L"S1"));
  drawing->database()->startTransaction();
  storeGroup(*drawing->database(), L"S2", pointsAlongX(2));
  drawing->database()->abortTransaction();
  EXPECT_THAT(groupNames(stateOf(*drawing->database())), ElementsAre(L"S1"));
}

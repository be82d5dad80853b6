#include "workbench/session/stored_groups.h"

#include <gmock/gmock.h>

#include <limits>

#include "platform/sdk/od_db_dictionary.h"
#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Repository = ZOR::RegistrationObjectPointsRepository;

class StoredGroups : public testing::Test {
 protected:
  bool store(const StationPoints& station) {
    database->startTransaction();
    const bool isStored = storeGroup(*database, station);
    database->endTransaction();
    return isStored;
  }
  void remove(const std::vector<std::wstring>& names) {
    database->startTransaction();
    removeGroups(*database, names);
    database->endTransaction();
  }
  std::vector<std::wstring> names() const {
    std::vector<std::wstring> found;
    for (const StoredGroup& group : storedGroups(*database)) found.push_back(group.name);
    return found;
  }

  const OdDbDatabasePtr database = new OdDbDatabase;
};

TEST_F(StoredGroups, OfADrawingWithoutAnyAreNone) { EXPECT_THAT(storedGroups(*database), IsEmpty()); }

TEST_F(StoredGroups, ComeInTheOrderOfEntry) {
  EXPECT_TRUE(store({"S2", {}}));
  EXPECT_TRUE(store({"S10", {}}));
  EXPECT_TRUE(store({"S1", {}}));
  EXPECT_THAT(names(), ElementsAre(L"S2", L"S10", L"S1"));
}

TEST_F(StoredGroups, HoldTheirPointsAsTheyWereMeasured) {
  store({"S1", {{"T1", {1e7 + 0.1, -2.5, 0.0}, 0.25}, {"T1", {4, 5, 6}}}});
  const auto groups = storedGroups(*database);
  ASSERT_EQ(groups.size(), 1u);
  const ZOR::StoredPointArray& points = groups[0].points();
  ASSERT_EQ(points.size(), 2u);
  EXPECT_EQ(points[0].name, OdString(L"T1"));
  EXPECT_EQ(points[0].x, 1e7 + 0.1);
  EXPECT_EQ(points[0].y, -2.5);
  EXPECT_EQ(points[0].z, 0.0);
  EXPECT_EQ(points[0].w, 0.25);
  EXPECT_EQ(points[1].w, 1.0);
}

TEST_F(StoredGroups, CallAPointWithoutANameByAQuestionMark) {
  store({"S1", {{"", {}}, {"?", {}}}});
  const auto groups = storedGroups(*database);
  EXPECT_EQ(groups[0].points()[0].name, OdString(L"?"));
  EXPECT_EQ(groups[0].points()[1].name, OdString(L"?"));
}

TEST_F(StoredGroups, TakeNumbersThatAreNoLengthsAsTheyAre) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  store({"S1", {{"T1", {infinity, -infinity, 0.0}, -3.0}}});
  const auto groups = storedGroups(*database);
  EXPECT_EQ(groups[0].points()[0].x, infinity);
  EXPECT_EQ(groups[0].points()[0].y, -infinity);
  EXPECT_EQ(groups[0].points()[0].w, -3.0);
}

TEST_F(StoredGroups, KeepNamesOfTheCyrillicPage) {
  store({u8"Цех", {{u8"точка", {}}}});
  EXPECT_THAT(names(), ElementsAre(L"\u0426\u0435\u0445"));
  const auto groups = storedGroups(*database);
  EXPECT_EQ(groups[0].points()[0].name.wideText(), L"\u0442\u043E\u0447\u043A\u0430");
}

TEST_F(StoredGroups, RefuseANameThatIsTakenAndStayAsTheyAre) {
  store({"S1", {{"T1", {1, 2, 3}}}});
  EXPECT_FALSE(store({"S1", {{"T2", {4, 5, 6}}, {"T3", {7, 8, 9}}}}));
  ASSERT_THAT(names(), ElementsAre(L"S1"));
  EXPECT_EQ(storedGroups(*database)[0].points().size(), 1u);
}

TEST_F(StoredGroups, HoldNamesBeyondWindows1251UnderStandIns) {
  store({u8"\u6E2C\u91CF 1", {{u8"\u6E2C 1", {}}}});
  EXPECT_THAT(names(), ElementsAre(L"_x6E2C__x91CF_ 1"));
  EXPECT_EQ(storedGroups(*database)[0].points()[0].name, OdString(L"_x6E2C__x0020_1"));
}

TEST_F(StoredGroups, TakeNoNameThatIsntUtf8) {
  database->startTransaction();
  EXPECT_THROW(storeGroup(*database, {"\xFF", {}}), EncodingError);
  EXPECT_THROW(storeGroup(*database, {"S1", {{"T1", {}}, {"\xFF", {}}}}), EncodingError);
  database->endTransaction();
  EXPECT_THAT(names(), IsEmpty()) << "not even the points before it";
}

TEST_F(StoredGroups, GoByName) {
  for (const char* name : {"S1", "S2", "S3"}) store({name, {}});
  remove({L"S3", L"S1"});
  EXPECT_THAT(names(), ElementsAre(L"S2"));
}

TEST_F(StoredGroups, ThatAreNotThereArePassedOver) {
  remove({L"S1"});
  store({"S1", {}});
  remove({L"S7", L"s1 ", L"S1"});
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(StoredGroups, MayBeStoredAgainOnceTheyAreGone) {
  store({"S1", {{"T1", {1, 2, 3}}}});
  remove({L"S1"});
  EXPECT_TRUE(store({"S1", {}}));
  EXPECT_EQ(storedGroups(*database)[0].points().size(), 0u);
}

TEST_F(StoredGroups, PassOverWhatIsNoGroup) {
  store({"S1", {}});
  database->startTransaction();
  const OdDbDictionaryPtr dictionary =
      Repository::registrationPointsDictionary(*database).safeOpenObject(OdDb::kForWrite);
  dictionary->setAt(OdString(L"a dictionary"), OdDbDictionaryPtr(OdDbDictionary::desc()->create()).get());
  database->endTransaction();
  EXPECT_THAT(names(), ElementsAre(L"S1"));
}

}  // namespace
}  // namespace tiepoint::workbench

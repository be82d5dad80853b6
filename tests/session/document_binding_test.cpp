#include <gtest/gtest.h>

#include "platform/sdk/od_db_dictionary.h"
#include "support/session_builder.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

using Groups = std::map<GroupId, std::string>;

/// A registered session: B is moved onto A, the base, by -5 along x.
class Registered {
 public:
  Registered() : session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}}) {
    Outputs out;
    session->setBaseGroups({0}, out.groups, out.points, out.inactiveGroups, out.inactivePoints);
    std::map<RefPointId, double> discrepancies;
    registered = session->registerPairwise(discrepancies);
  }
  Session session;
  bool registered = false;
};

std::vector<std::string> listClouds(Session& session) {
  std::list<NamedId> clouds;
  session->getPointClouds(clouds);
  std::vector<std::string> texts;
  for (const NamedId& cloud : clouds) texts.push_back(std::to_string(cloud.id) + ":" + cloud.name);
  return texts;
}

TEST(DocumentBinding, ADrawingWithoutPointsHasNoGroups) {
  Session session;
  Groups groups{{9, "kept"}};
  EXPECT_FALSE(session->getAvailableGroups(groups));
  EXPECT_EQ(groups, (Groups{{9, "kept"}}));
}

TEST(DocumentBinding, WithoutADocumentNothingIsReadAndKnownGroupsStay) {
  Session session({{"A", triangle("T1", "T2", "T3")}});
  session.host.closeDocument();
  Groups groups{{9, "gone"}};
  EXPECT_TRUE(session->getAvailableGroups(groups));
  EXPECT_EQ(groups, Groups{});
}

TEST(DocumentBinding, GroupsOfTheSessionAreNotOffered) {
  Session session({{"A", triangle("T1", "T2", "T3")}});
  session.document().storeGroup("B", triangle("T1", "T2", "T3"));
  Groups groups;
  EXPECT_TRUE(session->getAvailableGroups(groups));
  EXPECT_EQ(groups, (Groups{{1, "B"}}));
}

TEST(DocumentBinding, ASecondReadingReadsNothingTwice) {
  Session session;
  session.document().storeGroup("A", triangle("T1", "T2", "T3"));
  Groups groups;
  session->getAvailableGroups(groups);
  session->getAvailableGroups(groups);
  EXPECT_EQ(groups, (Groups{{0, "A"}}));
  std::list<RefPoint> added;
  Outputs out;
  session->addGroups({0}, added, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(added.size(), 3u);
}

TEST(DocumentBinding, ARepositoryWithoutPointsGivesNoGroupAndIsTriedAgain) {
  Session session;
  session.document().storeGroup("empty", {});
  session.document().storeGroup("A", triangle("T1", "T2", "T3"));
  Groups groups;
  session->getAvailableGroups(groups);
  EXPECT_EQ(groups, (Groups{{0, "A"}}));

  const OdDbObjectId dictionary =
      ZOR::RegistrationObjectPointsRepository::registrationPointsDictionary(*session.document().database());
  const OdDbObjectId entry = OdDbDictionaryPtr(dictionary.safeOpenObject())->getAt(OdString(L"empty"));
  ZOR::StoredPointArray points;
  points.append({OdString(L"T9"), 1, 2, 3, 1});
  ZOR::RegistrationObjectPointsRepositoryPtr(entry.safeOpenObject(OdDb::kForWrite))->setData(points);
  session->getAvailableGroups(groups);
  EXPECT_EQ(groups, (Groups{{0, "A"}, {1, "empty"}}));
}

TEST(DocumentBinding, AnEntryOfAnotherClassIsPassedOver) {
  Session session;
  const OdDbObjectId id =
      ZOR::RegistrationObjectPointsRepository::createRegistrationPointsDictionary(*session.document().database());
  const OdSmartPtr<hostDbPointCloudDefinition> other(hostDbPointCloudDefinition::desc()->create());
  OdDbDictionaryPtr(id.safeOpenObject(OdDb::kForWrite))->setAt(OdString(L"cloud"), other.get());
  session.document().storeGroup("A", triangle("T1", "T2", "T3"));
  Groups groups;
  session->getAvailableGroups(groups);
  EXPECT_EQ(groups, (Groups{{0, "A"}}));
}

TEST(DocumentBinding, AfterARenameTheOldKeyIsReadAsAFurtherGroup) {
  Session session({{"A", triangle("T1", "T2", "T3")}});
  Outputs out;
  ASSERT_TRUE(session->renameGroup(0, "new", out.points));
  Groups groups;
  EXPECT_TRUE(session->getAvailableGroups(groups));
  EXPECT_EQ(groups, (Groups{{1, "A"}}));
  std::list<RefPoint> added;
  ASSERT_TRUE(session->addGroups({1}, added, out.inactiveGroups, out.inactivePoints));
  ASSERT_EQ(added.size(), 3u);
  EXPECT_EQ(added.front().id, 3u);
  EXPECT_EQ(added.front().groupId, 1u);
  EXPECT_EQ(added.front().commonId, 0u);
}

TEST(DocumentBinding, IdsOfNewNamesGoByTheCountAlsoWhereOneIsInUse) {
  Session session({{"A", triangle("T1", "T2", "T3")}});
  Outputs out;
  GroupId group = 0;
  // T1 with id 0 becomes T9 under id 3, and T1 leaves the table: three names, the ids 1, 2, 3.
  ASSERT_TRUE(session->renamePoint(0, "T9", group, out.inactiveGroups, out.inactivePoints));
  session.document().storeGroup("B", {{"N", 0, 0, 0}});
  Groups groups;
  session->getAvailableGroups(groups);
  EXPECT_EQ(session.commonNames(), (std::vector<std::string>{"1:T2", "2:T3", "3:T9", "3:N"}));
}

TEST(DocumentBinding, AnotherDrawingAddsItsGroupsUnlessTheNameIsKnown) {
  Session session({{"A", triangle("T1", "T2", "T3")}});
  session.host.openDocument();
  session.document().storeGroup("A", triangle("U1", "U2", "U3"));
  session.document().storeGroup("B", triangle("U1", "U2", "U3"));
  Groups groups;
  EXPECT_TRUE(session->getAvailableGroups(groups));
  EXPECT_EQ(groups, (Groups{{1, "B"}}));
}

TEST(DocumentBinding, CloudsAreNumberedByTheirPlace) {
  Session session;
  EXPECT_EQ(listClouds(session), std::vector<std::string>{});
  session.document().addCloud("scan 1");
  session.document().addCloud("A");
  EXPECT_EQ(listClouds(session), (std::vector<std::string>{"0:scan 1", "1:A"}));
}

TEST(DocumentBinding, WithoutCloudsTheListStaysAsItWas) {
  Session session;
  std::list<NamedId> clouds{{4, "kept"}};
  session->getPointClouds(clouds);
  ASSERT_EQ(clouds.size(), 1u);
  EXPECT_EQ(clouds.front().name, "kept");
}

TEST(DocumentBinding, ApplyingNeedsResultsAndListedClouds) {
  Registered job;
  ASSERT_TRUE(job.registered);
  job.session.document().addCloud("B");
  EXPECT_FALSE(job.session->applyTransformations());
  EXPECT_FALSE(job.session->applyTransformToCloud(1, 0));
  listClouds(job.session);
  job.session->clearResults();
  EXPECT_FALSE(job.session->applyTransformations());
  EXPECT_FALSE(job.session->applyTransformToCloud(1, 0));
}

TEST(DocumentBinding, ApplyingMovesTheCloudOfTheGroupsNameAndNoOther) {
  Registered job;
  job.session.document().addCloud("unrelated");
  job.session.document().addCloud("B");
  job.session.document().addCloud("A");
  listClouds(job.session);
  EXPECT_TRUE(job.session->applyTransformations());
  EXPECT_NEAR(job.session.document().cloudMatrix("B")(0, 3), -5.0, 1e-12);
  EXPECT_EQ(job.session.document().cloudMatrix("unrelated"), OdGeMatrix3d());
  // The base has no transformation of its own.
  EXPECT_EQ(job.session.document().cloudMatrix("A"), OdGeMatrix3d());
}

TEST(DocumentBinding, ApplyingTwiceMovesACloudTwice) {
  Registered job;
  job.session.document().addCloud("B");
  listClouds(job.session);
  EXPECT_TRUE(job.session->applyTransformations());
  EXPECT_TRUE(job.session->applyTransformations());
  EXPECT_NEAR(job.session.document().cloudMatrix("B")(0, 3), -10.0, 1e-12);
}

TEST(DocumentBinding, ApplyingSucceedsAlsoWhenNoCloudMatches) {
  Registered job;
  job.session.document().addCloud("unrelated");
  listClouds(job.session);
  EXPECT_TRUE(job.session->applyTransformations());
}

TEST(DocumentBinding, AnyGroupCanBeAppliedToAnyCloudOfTheList) {
  Registered job;
  job.session.document().addCloud("unrelated");
  listClouds(job.session);
  EXPECT_FALSE(job.session->applyTransformToCloud(1, 1));
  EXPECT_FALSE(job.session->applyTransformToCloud(0, 0));
  EXPECT_TRUE(job.session->applyTransformToCloud(1, 0));
  EXPECT_NEAR(job.session.document().cloudMatrix("unrelated")(0, 3), -5.0, 1e-12);
}

TEST(DocumentBinding, AnUnmovedGroupStillTransformsItsCloudByTheIdentity) {
  // The identity changes no number, but the move is one all the same: a cloud that can't be changed
  // refuses it.
  Session session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3")}});
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  session.document().addCloud("A");
  listClouds(session);
  EXPECT_TRUE(session->applyTransformToCloud(0, 0));
  session.document().database()->setReadOnly(true);
  EXPECT_THROW(session->applyTransformToCloud(0, 0), OdError);
}

TEST(DocumentBinding, ARefusedMoveLeavesTheCloudAsItWas) {
  Registered job;
  job.session.document().addCloud("B");
  listClouds(job.session);
  job.session.document().database()->setReadOnly(true);
  for (int attempt = 0; attempt < 2; ++attempt) {
    try {
      job.session->applyTransformations();
      ADD_FAILURE() << "moved a cloud of a drawing that is open for reading only";
    } catch (const OdError& error) {
      EXPECT_EQ(error.code(), eWriteProtected);
    }
  }
  job.session.document().database()->setReadOnly(false);
  EXPECT_TRUE(job.session->applyTransformations());
  EXPECT_NEAR(job.session.document().cloudMatrix("B")(0, 3), -5.0, 1e-12);
}

TEST(DocumentBinding, SomebodyElseWhoIsWritingIsInTheWay) {
  Registered job;
  job.session.document().addCloud("B");
  listClouds(job.session);
  const OdDbObjectId dictionary = hostDbPointCloudDefinition::pointCloudDictionary(*job.session.document().database());
  const OdDbObjectId cloud = OdDbDictionaryPtr(dictionary.safeOpenObject())->getAt(OdString(L"B"));
  {
    const OdDbObjectPtr writer = cloud.safeOpenObject(OdDb::kForWrite);
    EXPECT_THROW(job.session->applyTransformations(), OdError);
    EXPECT_TRUE(writer->isWriteEnabled());
  }
}

TEST(DocumentBinding, MergedTargetsBecomeANewGroupInAscendingOrder) {
  Registered job;
  ASSERT_TRUE(job.session->storeCommonPoints("merged"));
  const std::vector<Target> stored = job.session.document().storedGroup("merged");
  ASSERT_EQ(stored.size(), 3u);
  EXPECT_EQ(stored[0].name, "T1");
  EXPECT_NEAR(stored[0].x, 1.0, 1e-12);
  EXPECT_EQ(stored[2].name, "T3");
  EXPECT_NEAR(stored[2].y, 7.0, 1e-12);
  EXPECT_EQ(stored[2].weight, 1.0);
  Groups groups;
  job.session->getAvailableGroups(groups);
  EXPECT_EQ(groups, (Groups{{2, "merged"}}));
}

TEST(DocumentBinding, StoringUnderATakenNameIsRefusedAndWritesNothing) {
  Registered job;
  EXPECT_FALSE(job.session->storeCommonPoints("A"));
  EXPECT_EQ(job.session.document().storedGroup("A").size(), 3u);
  EXPECT_EQ(job.session.document().storedGroup("A")[1].x, 11.0);
  EXPECT_FALSE(job.session->storeCommonPoints("con"));
  EXPECT_FALSE(job.session->storeCommonPoints(""));
  job.session->clearResults();
  EXPECT_FALSE(job.session->storeCommonPoints("merged"));
}

TEST(DocumentBinding, StoringMakesTheDictionaryOfADrawingThatHasNone) {
  Registered job;
  job.session.host.openDocument();
  EXPECT_TRUE(job.session->storeCommonPoints("A"));
  EXPECT_EQ(job.session.document().storedGroup("A").size(), 3u);
}

TEST(DocumentBinding, StoringWithoutADocumentIsRefused) {
  Registered job;
  job.session.host.closeDocument();
  EXPECT_FALSE(job.session->storeCommonPoints("merged"));
}

/// Puts an object of another class where the dictionary `made` stands in the drawing's root.
void replaceByACloud(OdDbDatabase& database, const OdDbObjectId& made) {
  const OdDbDictionaryPtr root(database.getNamedObjectsDictionaryId().safeOpenObject(OdDb::kForWrite));
  const OdSmartPtr<hostDbPointCloudDefinition> other(hostDbPointCloudDefinition::desc()->create());
  for (const OdDbDictionaryEntry& entry : root->entries()) {
    if (entry.object == made) root->setAt(entry.name, other.get());
  }
}

TEST(DocumentBinding, AnObjectThatIsNoDictionaryStopsReadingAndStoring) {
  Registered job;
  OdDbDatabase& database = *job.session.document().database();
  replaceByACloud(database, ZOR::RegistrationObjectPointsRepository::registrationPointsDictionary(database));
  Groups groups;
  EXPECT_THROW(job.session->getAvailableGroups(groups), OdError_NotThatKindOfClass);
  EXPECT_THROW(job.session->storeCommonPoints("merged"), OdError_NotThatKindOfClass);
}

TEST(DocumentBinding, AnObjectThatIsNoDictionaryStopsTheListingOfClouds) {
  Session session;
  session.document().addCloud("A");
  OdDbDatabase& database = *session.document().database();
  replaceByACloud(database, hostDbPointCloudDefinition::pointCloudDictionary(database));
  std::list<NamedId> clouds{{4, "kept"}};
  EXPECT_THROW(session->getPointClouds(clouds), OdError_NotThatKindOfClass);
  EXPECT_EQ(clouds.size(), 1u);
}

/// Results, and one listed cloud to which they can be applied.
class CloudsOfAnEarlierListing : public ::testing::Test {
 protected:
  CloudsOfAnEarlierListing() {
    job.session.document().addCloud("B");
    listClouds(job.session);
    EXPECT_TRUE(job.session->applyTransformToCloud(1, 0));
  }

  /// A listing that ends early leaves its output alone, and no cloud to apply anything to.
  void expectGoneAfterAListingThatEndsEarly() {
    std::list<NamedId> clouds{{4, "kept"}};
    job.session->getPointClouds(clouds);
    ASSERT_EQ(clouds.size(), 1u);
    EXPECT_EQ(clouds.front().name, "kept");
    expectGone();
  }
  void expectGone() {
    EXPECT_FALSE(job.session->applyTransformToCloud(1, 0));
    EXPECT_FALSE(job.session->applyTransformations());
  }

  Registered job;
  /// The first drawing outlives its document, so that its clouds could still be moved.
  const OdDbDatabasePtr drawing = job.session.document().database();
};

TEST_F(CloudsOfAnEarlierListing, AreGoneWithoutADocument) {
  job.session.host.closeDocument();
  expectGoneAfterAListingThatEndsEarly();
}

TEST_F(CloudsOfAnEarlierListing, AreGoneInADrawingWithoutClouds) {
  job.session.host.openDocument();
  expectGoneAfterAListingThatEndsEarly();
}

TEST_F(CloudsOfAnEarlierListing, AreGoneInADrawingWhoseDictionaryOfCloudsIsEmpty) {
  job.session.host.openDocument();
  ASSERT_FALSE(hostDbPointCloudDefinition::createPointCloudDictionary(*job.session.document().database()).isNull());
  expectGoneAfterAListingThatEndsEarly();
}

TEST_F(CloudsOfAnEarlierListing, AreGoneInADrawingWhereAnotherObjectStandsInThePlaceOfTheDictionary) {
  job.session.host.openDocument();
  OdDbDatabase& database = *job.session.document().database();
  replaceByACloud(database, hostDbPointCloudDefinition::createPointCloudDictionary(database));
  std::list<NamedId> clouds{{4, "kept"}};
  EXPECT_THROW(job.session->getPointClouds(clouds), OdError_NotThatKindOfClass);
  EXPECT_EQ(clouds.size(), 1u);
  expectGone();
}

}  // namespace

#include "workbench/host/workbench.h"

#include <gmock/gmock.h>

#include <boost/filesystem/path.hpp>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/pointclouds/points_repository.h"
#include "platform/sdk/od_db_dictionary.h"
#include "workbench/temporary_folder.h"

namespace tiepoint::workbench {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ZOR::RegistrationObjectPointsRepository;

const Workbench::Options fakeModule{{}, FAKE_MODULE};

/// The names of the groups that a document holds, in the order of entry.
std::vector<std::wstring> groupsOf(Document& document) {
  std::vector<std::wstring> names;
  const OdDbDatabasePtr database = document.database();
  const OdDbObjectId id = RegistrationObjectPointsRepository::registrationPointsDictionary(*database);
  if (id.isNull()) return names;
  const OdDbDictionaryPtr dictionary = id.safeOpenObject();
  for (const OdDbDictionaryEntry& entry : dictionary->entries()) names.push_back(entry.name.wideText());
  return names;
}

void storeGroup(Document& document, const wchar_t* name) {
  const OdDbDatabasePtr database = document.database();
  const OdDbDictionaryPtr dictionary =
      RegistrationObjectPointsRepository::createRegistrationPointsDictionary(*database).safeOpenObject(OdDb::kForWrite);
  const OdSmartPtr<RegistrationObjectPointsRepository> repository =
      RegistrationObjectPointsRepository::desc()->create();
  dictionary->setAt(name, repository.get());
}

TEST(Workbench, KnowsTheModulesVersionAndCommands) {
  const Workbench workbench(fakeModule);
  EXPECT_THAT(workbench.apiVersion(), ElementsAre(21, 8, 0, 0));
  ASSERT_EQ(workbench.commands().size(), 3u);
  EXPECT_EQ(workbench.commands()[0].group, L"FAKE");
  EXPECT_EQ(workbench.commands()[0].globalName, L"FAKE_DIALOG");
  EXPECT_EQ(workbench.commands()[0].localName, L"\u0414\u0418\u0410\u041B\u041E\u0413");
  EXPECT_EQ(workbench.commands()[0].flags, 4);
  EXPECT_EQ(workbench.commands()[2].flags, -1);
}

TEST(Workbench, StandsAlone) {
  const Workbench workbench(fakeModule);
  EXPECT_THROW(Workbench{fakeModule}, std::logic_error);
}

TEST(Workbench, MayStandAgainAfterOneIsGone) {
  for (int i = 0; i < 3; ++i) {
    const Workbench workbench(fakeModule);
    EXPECT_EQ(workbench.commands().size(), 3u) << i;
  }
}

TEST(Workbench, MakesNarrowPathsUtf8) {
  const Workbench workbench(fakeModule);
  EXPECT_EQ(boost::filesystem::path(L"\u0416\U0001F600.txt").string(), "\xD0\x96\xF0\x9F\x98\x80.txt");
  EXPECT_EQ(boost::filesystem::path("\xD0\x96\xF0\x9F\x98\x80.txt").wstring(), L"\u0416\U0001F600.txt");
}

TEST(Workbench, GivesNoSessionWithoutAnActiveDocument) {
  Workbench workbench(fakeModule);
  EXPECT_THROW(workbench.newSession(), NoDocument);
}

TEST(Workbench, GivesIndependentSessions) {
  Workbench workbench(fakeModule);
  workbench.openTemporaryDocument();
  const SessionPtr one = workbench.newSession();
  const SessionPtr two = workbench.newSession();
  one->zoomToGroup(1);
  EXPECT_EQ(one->getResultsReport(), L"zoomToGroup(1)\n");
  EXPECT_EQ(two->getResultsReport(), L"");
}

TEST(Workbench, ShowsTheModuleItsDocumentsMessageLineAndDialog) {
  Workbench workbench(fakeModule);
  EXPECT_EQ(workbench.activeDocument(), nullptr);
  Document& document = workbench.openTemporaryDocument();
  EXPECT_EQ(workbench.activeDocument(), &document);
  EXPECT_NE(workbench.messageLine(), nullptr);
  EXPECT_NE(workbench.fileDialog(), nullptr);
  EXPECT_TRUE(document.isReady());
  EXPECT_EQ(document.transientService(), &document.transient());
}

TEST(Workbench, CreatesADrawingOnlyWhereItMay) {
  const TemporaryFolder folder;
  Workbench workbench(fakeModule);
  EXPECT_THROW(workbench.openDocument(folder.file("hall.tpd"), false), OdError);
  EXPECT_THAT(folder.names(), IsEmpty());
  EXPECT_EQ(workbench.openDocument(folder.file("hall.tpd")).number(), 1);
}

TEST(Workbench, RefusesADrawingThatIsOpenAlready) {
  const TemporaryFolder folder;
  Workbench workbench(fakeModule);
  workbench.openDocument(folder.file("hall.tpd"));
  EXPECT_THROW(workbench.openDocument(folder.file("hall.tpd")), OdError);
  EXPECT_EQ(workbench.documents().size(), 1u);
  EXPECT_EQ(workbench.requireActiveDocument().number(), 1);
}

TEST(Workbench, KeepsWhatAnActionChanged) {
  Workbench workbench(fakeModule);
  Document& document = workbench.openTemporaryDocument();
  workbench.inTransaction([&] { storeGroup(document, L"a"); });
  EXPECT_THAT(groupsOf(document), ElementsAre(L"a"));
}

TEST(Workbench, UndoesWhatAnActionChangedInAnyDocumentBeforeItThrew) {
  Workbench workbench(fakeModule);
  Document& one = workbench.openTemporaryDocument();
  Document& two = workbench.openTemporaryDocument();
  EXPECT_THROW(workbench.inTransaction([&] {
    storeGroup(one, L"a");
    storeGroup(two, L"b");
    throw std::runtime_error("too bad");
  }),
               std::runtime_error);
  EXPECT_THAT(groupsOf(one), IsEmpty());
  EXPECT_THAT(groupsOf(two), IsEmpty());
}

/// A store on a full disk.
class FullStore : public OdDbStore {
 public:
  void write(const OdDbDatabase&, const OdDbChanges&) override { throw OdError(eDiskFull); }
};

OdResult codeOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const OdError& error) {
    return error.code();
  }
  return eOk;
}

TEST(Workbench, UndoesAnActionThatTheFileCannotTake) {
  FullStore store;
  Workbench workbench(fakeModule);
  Document& document = workbench.openTemporaryDocument();
  document.database()->setStore(&store);
  EXPECT_EQ(codeOf([&] { workbench.inTransaction([&] { storeGroup(document, L"a"); }); }), eDiskFull);
  EXPECT_THAT(groupsOf(document), IsEmpty());
}

TEST(Workbench, UndoesACommandThatTheFileCannotTake) {
  FullStore store;
  Workbench workbench(fakeModule);
  Document& document = workbench.openTemporaryDocument();
  document.database()->setStore(&store);
  EXPECT_EQ(codeOf([&] { workbench.runCommand(L"FAKE_THROW", {}); }), eDiskFull);
  EXPECT_THAT(groupsOf(document), IsEmpty());
  EXPECT_FALSE(document.database()->hasActiveTransaction());
}

TEST(Workbench, GivesACommandItsAnswerAndTakesItsMessages) {
  Workbench workbench(fakeModule);
  EXPECT_THAT(workbench.runCommand(L"FAKE_DIALOG", {false, Layout::xyzw, {"a.txt", "\xD0\x96.txt"}}),
              ElementsAre(L"accepted 1, filter 3, 2 paths", L"path a.txt", L"path \u0416.txt"));
}

TEST(Workbench, CancelsTheDialogOfACommand) {
  Workbench workbench(fakeModule);
  EXPECT_THAT(workbench.runCommand(L"FAKE_DIALOG", {true, Layout::xyzw, {"a.txt"}}),
              ElementsAre(L"accepted 0, filter 0, 0 paths"));
}

TEST(Workbench, GivesACommandOnlyItsOwnMessages) {
  Workbench workbench(fakeModule);
  workbench.messageLine()->print(L"earlier");
  EXPECT_THAT(workbench.runCommand(L"FAKE_SILENT", {}), IsEmpty());
}

TEST(Workbench, LeavesNoAnswerForADialogAfterACommand) {
  Workbench workbench(fakeModule);
  workbench.runCommand(L"FAKE_SILENT", {false, Layout::xyz, {"a.txt"}});
  EXPECT_FALSE(workbench.fileDialog()->open({}).accepted);
}

TEST(Workbench, KeepsWhatACommandStoredBeforeItThrew) {
  const TemporaryFolder folder;
  {
    Workbench workbench(fakeModule);
    workbench.openDocument(folder.file("hall.tpd"));
    EXPECT_THROW(workbench.runCommand(L"FAKE_THROW", {}), OdError);
    EXPECT_THAT(workbench.runCommand(L"FAKE_SILENT", {}), IsEmpty());
  }
  Workbench workbench(fakeModule);
  EXPECT_THAT(groupsOf(workbench.openDocument(folder.file("hall.tpd"))), ElementsAre(L"kept"));
}

TEST(Workbench, RefusesACommandThatIsNotRegistered) {
  Workbench workbench(fakeModule);
  EXPECT_THROW(workbench.runCommand(L"FAKE_DIALOGUE", {}), std::invalid_argument);
}

}  // namespace
}  // namespace tiepoint::workbench

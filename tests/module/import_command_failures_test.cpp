// What the command does when the drawing or the memory fails it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>

#include "module/import_host.h"
#include "platform/pointclouds/points_repository.h"
#include "platform/sdk/od_alloc.h"
#include "platform/sdk/od_db_dictionary.h"

namespace tiepoint::testing {
namespace {

using ::testing::AnyOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using ZOR::RegistrationObjectPointsRepository;

class ImportCommandFailure : public ImportTest {
 protected:
  OdDbObjectId makeDictionary() {
    return RegistrationObjectPointsRepository::createRegistrationPointsDictionary(*document.drawing);
  }

  /// Puts an object of another class in the dictionary's place.
  void replaceDictionary() {
    makeDictionary();
    const OdDbDictionaryPtr named = document.drawing->getNamedObjectsDictionaryId().safeOpenObject(OdDb::kForWrite);
    const OdString name = named->entries().front().name;
    const OdRxObjectPtr other = RegistrationObjectPointsRepository::desc()->create();
    named->setAt(name, static_cast<OdDbObject*>(other.get()));
  }
};

TEST_F(ImportCommandFailure, AnObjectOfAnotherClassInTheDictionarysPlaceIsAnError) {
  replaceDictionary();
  EXPECT_THROW(import({files.write(L"a.txt", "P1 1 2 3\n")}), OdError_NotThatKindOfClass);
  EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(ImportCommandFailure, AnObjectOfAnotherClassIsNotLookedAtWithoutAChosenFile) {
  replaceDictionary();
  EXPECT_NO_THROW(import({}));
  EXPECT_THAT(messages(),
              ElementsAre(L"Found 0 files", L"Command complite. 0 groups of reference points loaded in document"));
}

TEST_F(ImportCommandFailure, ADrawingThatTakesNoDictionaryEndsTheCommandInSilence) {
  document.drawing->setReadOnly(true);
  EXPECT_NO_THROW(import({files.write(L"a.txt", "P1 1 2 3\n")}));
  EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(ImportCommandFailure, AnErrorOfTheDrawingLeavesTheCommandWithTheGroupsStoredUpToIt) {
  import({files.write(L"a.txt", "P1 1 2 3\n")});
  messages().clear();
  document.drawing->setReadOnly(true);
  EXPECT_THROW(import({files.path(L"a.txt"), files.write(L"b.txt", "P1 1 2 3\n")}), OdError);
  EXPECT_THAT(messages(), ElementsAre(L"Found 2 files"));
  EXPECT_THAT(groups(), ElementsAre(L"a"));
  EXPECT_EQ(document.drawing->numRefs(), 1);
}

TEST_F(ImportCommandFailure, TheDictionaryAndTheGroupsAreClosedAfterwards) {
  import({files.write(L"a.txt", "P1 1 2 3\n")});
  const OdDbDictionaryPtr dictionary = makeDictionary().safeOpenObject(OdDb::kForWrite);
  EXPECT_TRUE(dictionary->isWriteEnabled());
  EXPECT_TRUE(dictionary->getAt(L"a").safeOpenObject(OdDb::kForWrite)->isWriteEnabled());
}

TEST_F(ImportCommandFailure, TheDictionaryIsOpenForWritingOnlyAroundEachEntry) {
  std::vector<bool> writing;
  line.onPrint = [&] { writing.push_back(makeDictionary().safeOpenObject()->isWriteEnabled()); };
  import({files.write(L"a.txt", "P1 1 2 3\n"), files.path(L"missing.txt"), files.write(L"b.txt", "P1 1 2 3\n")});
  EXPECT_THAT(writing, ElementsAre(false, false, false));
  EXPECT_THAT(groups(), ElementsAre(L"a", L"b"));
}

TEST_F(ImportCommandFailure, TheDictionaryIsLoweredAgainAlsoWhenTheGroupIsRefusedAndSomebodyElseReadsIt) {
  const OdDbDictionaryPtr reader = makeDictionary().safeOpenObject();
  document.drawing->setReadOnly(true);
  EXPECT_THROW(import({files.write(L"a.txt", "P1 1 2 3\n")}), OdError);
  EXPECT_FALSE(reader->isWriteEnabled());
  document.drawing->setReadOnly(false);
  EXPECT_NO_THROW(import({files.path(L"a.txt")}));
  EXPECT_FALSE(reader->isWriteEnabled());
  EXPECT_THAT(groups(), ElementsAre(L"a"));
}

// Wherever memory runs out, the command ends by an exception or in silence, and a group that is
// there has all its points or, where it ran out between the entry and its data, none.
TEST_F(ImportCommandFailure, ExhaustedMemoryAtAnyPlaceLeavesTheDrawingUsable) {
  const std::vector<std::wstring> chosen = {files.write(L"a.txt", "P1 1 2 3\nP2 4 5 6\n"),
                                            files.write(L"b.txt", "P1 1 2 3\nP2 4 5 6\n")};
  bool isThrough = false;
  bool hasSeenAnEntryWithoutData = false;
  for (std::uint64_t successes = 0; !isThrough && successes < 10000; ++successes) {
    document.drawing = OdDbDatabasePtr(new OdDbDatabase);
    messages().clear();
    application.onDialogWanted = [=] { odrxFailAllocationsAfter(successes); };
    try {
      import(chosen);
      isThrough = groups().size() == 2;
    } catch (const std::bad_alloc&) {
    }
    odrxStopFailingAllocations();
    for (const std::wstring& group : groups()) {
      EXPECT_THAT(points(group).size(), AnyOf(0U, 2U)) << successes;
      hasSeenAnEntryWithoutData |= points(group).empty();
    }
    EXPECT_EQ(document.drawing->numRefs(), 1) << successes;
  }
  EXPECT_TRUE(isThrough);
  EXPECT_TRUE(hasSeenAnEntryWithoutData);
}

}  // namespace
}  // namespace tiepoint::testing

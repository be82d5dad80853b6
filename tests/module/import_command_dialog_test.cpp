// What the command asks of the host before it reads a file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "module/import_command.h"
#include "module/import_host.h"
#include "platform/pointclouds/points_repository.h"
#include "platform/sdk/od_alloc.h"

namespace tiepoint::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ImportCommandDialog : public ImportTest {};

TEST_F(ImportCommandDialog, IsAnOpenDialogForSeveralFilesWithALongBuffer) {
  import({});
  EXPECT_EQ(dialog.asked, 1);
  EXPECT_EQ(dialog.lastRequest.title, L"Import reference points");
  EXPECT_EQ(dialog.lastRequest.flags, 0x206U);
  EXPECT_EQ(dialog.lastRequest.bufferLength, 26101U);
  EXPECT_EQ(dialog.lastBuffer, std::wstring(26101, L'\0'));
}

TEST_F(ImportCommandDialog, ListsTheFourLayoutsInTheirOrder) {
  import({});
  ASSERT_EQ(dialog.lastRequest.filters.size(), 4U);
  const wchar_t* labels[] = {L"NXYZ", L"XYZ", L"XYZW", L"NXYZW"};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(dialog.lastRequest.filters[i].label, labels[i]);
    EXPECT_EQ(dialog.lastRequest.filters[i].pattern, L"*.txt");
  }
}

TEST_F(ImportCommandDialog, PrintsNothingWhenItIsCancelled) {
  dialog.answer.accepted = false;
  dialog.answer.paths = {files.write(L"a.txt", "P1 1 2 3\n")};
  dialog.answer.filterIndex = 1;
  ZOR::reg::importReferencePoints();
  EXPECT_EQ(dialog.asked, 1);
  EXPECT_THAT(messages(), IsEmpty());
  EXPECT_THAT(groups(), IsEmpty());
}

TEST_F(ImportCommandDialog, IsNotAskedAgainWithinOneRun) {
  import({files.write(L"a.txt", "P1 1 2 3\n"), files.write(L"b.txt", "P1 1 2 3\n")});
  EXPECT_EQ(dialog.asked, 1);
}

TEST_F(ImportCommandDialog, WithoutAChosenFileTheDrawingGetsNoDictionary) {
  import({});
  EXPECT_THAT(messages(),
              ElementsAre(L"Found 0 files", L"Command complite. 0 groups of reference points loaded in document"));
  EXPECT_TRUE(ZOR::RegistrationObjectPointsRepository::registrationPointsDictionary(*document.drawing).isNull());
}

TEST_F(ImportCommandDialog, WithoutMemoryForItsBufferTheCommandEndsInSilence) {
  application.onDialogWanted = [] { odrxFailAllocationsAfter(0); };
  EXPECT_NO_THROW(import({}));
  odrxStopFailingAllocations();
  EXPECT_EQ(dialog.asked, 0);
  EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(ImportCommandDialog, AFailureBehindTheBufferLeavesTheCommand) {
  application.onDialogWanted = [] { odrxFailAllocationsAfter(1); };
  EXPECT_THROW(import({}), std::bad_alloc);
  odrxStopFailingAllocations();
  EXPECT_EQ(dialog.asked, 0);
}

// --- Hosts that lack something.

class ImportCommandHost : public ImportTest {};

TEST_F(ImportCommandHost, WithoutAnApplicationObjectTheCommandEndsInSilence) {
  setApplication(nullptr);
  import({files.write(L"a.txt", "P1 1 2 3\n")});
  EXPECT_EQ(dialog.asked, 0);
  EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(ImportCommandHost, WithoutADialogTheCommandEndsInSilence) {
  application.dialog = nullptr;
  import({files.write(L"a.txt", "P1 1 2 3\n")});
  EXPECT_THAT(messages(), IsEmpty());
  EXPECT_THAT(groups(), IsEmpty());
}

TEST_F(ImportCommandHost, WithoutAMessageLineTheGroupsAreStored) {
  application.line = nullptr;
  import({files.write(L"a.txt", "P1 1 2 3\n"), files.path(L"missing.txt"), files.write(L"empty.txt", "")});
  EXPECT_THAT(groups(), ElementsAre(L"a"));
}

TEST_F(ImportCommandHost, WithoutADocumentTheCommandEndsInSilence) {
  application.document = nullptr;
  import({files.write(L"a.txt", "P1 1 2 3\n")});
  EXPECT_EQ(dialog.asked, 1);
  EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(ImportCommandHost, WithoutADatabaseTheCommandEndsInSilence) {
  document.drawing = nullptr;
  import({files.write(L"a.txt", "P1 1 2 3\n")});
  EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(ImportCommandHost, WithADocumentThatIsNotReadyTheCommandEndsInSilence) {
  document.ready = false;
  import({files.write(L"a.txt", "P1 1 2 3\n")});
  EXPECT_THAT(messages(), IsEmpty());
  EXPECT_THAT(groups(), IsEmpty());
}

TEST_F(ImportCommandHost, WithoutAReadyDocumentNothingIsPrintedForNoFilesEither) {
  document.ready = false;
  import({});
  document.ready = true;
  document.drawing = nullptr;
  import({});
  application.document = nullptr;
  import({});
  EXPECT_EQ(dialog.asked, 3);
  EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(ImportCommandHost, GetsItsDatabaseBack) {
  import({files.write(L"a.txt", "P1 1 2 3\n")});
  EXPECT_EQ(document.drawing->numRefs(), 1);
}

TEST_F(ImportCommandDialog, AHostThatGoesWhileTheUserChoosesIsNotAskedAgain) {
  dialog.whileOpen = [&] {
    setApplication(nullptr);
    application.document = nullptr;
    application.line = nullptr;
  };
  EXPECT_NO_THROW(import({files.write(L"a.txt", "P1 1 2 3\n")}));
  EXPECT_EQ(dialog.asked, 1);
  EXPECT_THAT(messages(), IsEmpty());
  EXPECT_THAT(groups(), IsEmpty());
}

TEST_F(ImportCommandDialog, TheApplicationOfTheMomentAfterItGetsThePoints) {
  DocumentOfTest laterDocument;
  MessageLineOfTest laterLine;
  ApplicationOfTest later;
  later.document = &laterDocument;
  later.line = &laterLine;
  dialog.whileOpen = [&] { setApplication(&later); };
  import({files.write(L"a.txt", "P1 1 2 3\n")});
  EXPECT_THAT(groups(), IsEmpty());
  EXPECT_THAT(messages(), IsEmpty());
  EXPECT_THAT(laterLine.messages,
              ElementsAre(L"Found 1 files", L"Command complite. 1 groups of reference points loaded in document"));
  EXPECT_TRUE(ZOR::RegistrationObjectPointsRepository::documentHasRegistrationPoints(*laterDocument.drawing));
}

TEST_F(ImportCommandDialog, ADocumentThatIsClosedMeanwhileEndsTheCommandInSilence) {
  dialog.whileOpen = [&] { application.document = nullptr; };
  import({files.write(L"a.txt", "P1 1 2 3\n")});
  EXPECT_THAT(messages(), IsEmpty());
  EXPECT_THAT(groups(), IsEmpty());
}

}  // namespace
}  // namespace tiepoint::testing

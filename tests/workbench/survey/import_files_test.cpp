#include "workbench/survey/import_files.h"

#include <gmock/gmock.h>

#include <cstdio>

#include "workbench/session/stored_groups.h"
#include "workbench/temporary_folder.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Two files, and a drawing in memory to take them in.
class ImportFiles : public testing::Test {
 protected:
  ImportFiles() {
    writeBytes(first, "P1 0 0 0\nP2 1 0 0\nP3 0 1 0\n");
    writeBytes(second, "P1 5 0 0\nP2 6 0 0\n");
    workbench.openTemporaryDocument();
  }

  /// Between the rehearsal and the import something happens to the files.
  template <class Change>
  RefusalKind refusalAfter(Change change) {
    ImportRehearsal rehearsal = rehearseImport(workbench, runs, {}, findings);
    change();
    try {
      carryOutImport(workbench, rehearsal.files, rehearsal.report, findings);
    } catch (const Refused& refused) {
      return refused.refusal().kind;
    }
    return RefusalKind::nothingToRegister;
  }

  std::vector<std::string> groups() { return storedNames(workbench).groups(); }

  TemporaryFolder folder;
  const std::string first = folder.file("first.txt"), second = folder.file("second.txt");
  const std::vector<LayoutFiles> runs{{Layout::nxyz, {first, second}}};
  Workbench workbench{Workbench::Options{"", TSL_REGISTRATION}};
  Findings findings;
};

TEST_F(ImportFiles, AreRehearsedWithoutChangingTheDrawing) {
  const ImportRehearsal rehearsal = rehearseImport(workbench, runs, {}, findings);
  EXPECT_THAT(groups(), IsEmpty());
  ASSERT_EQ(rehearsal.report.files.size(), 2u);
  EXPECT_EQ(rehearsal.report.files[0].points, 3u);
  EXPECT_THAT(*rehearsal.names.find("second"), ElementsAre("P1", "P2"));
}

TEST_F(ImportFiles, AreTakenInAsTheyWereRehearsed) {
  EXPECT_EQ(refusalAfter([] {}), RefusalKind::nothingToRegister) << "no refusal";
  EXPECT_THAT(groups(), ElementsAre("first", "second"));
}

TEST_F(ImportFiles, AreRefusedAsAWholeWhenOneHasGone) {
  EXPECT_EQ(refusalAfter([&] { std::remove(second.c_str()); }), RefusalKind::fileChanged);
  EXPECT_THAT(groups(), IsEmpty());
}

TEST_F(ImportFiles, AreRefusedAsAWholeWhenOneEndsEarlier) {
  EXPECT_EQ(refusalAfter([&] { writeBytes(second, "P1 5 0 0\n"); }), RefusalKind::fileChanged);
  EXPECT_THAT(groups(), IsEmpty());
}

TEST_F(ImportFiles, CanBeTakenOutAgain) {
  ImportRehearsal rehearsal = rehearseImport(workbench, runs, {}, findings);
  carryOutImport(workbench, rehearsal.files, rehearsal.report, findings);
  undoImport(workbench, rehearsal.report);
  EXPECT_THAT(groups(), IsEmpty());
}

}  // namespace
}  // namespace tiepoint::workbench

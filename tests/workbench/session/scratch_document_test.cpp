#include "workbench/session/scratch_document.h"

#include <gmock/gmock.h>

#include <stdexcept>

#include "workbench/session/workbench_session.h"

namespace tiepoint::workbench {
namespace {

using testing::IsEmpty;

class ScratchDocuments : public testing::Test {
 protected:
  std::size_t openDocuments() { return workbench.documents().size(); }
  int activeNumber() { return workbench.requireActiveDocument().number(); }

  Workbench workbench{Workbench::Options{"", TSL_REGISTRATION}};
};

TEST_F(ScratchDocuments, AreActiveAndEmptyWhileTheyStand) {
  const int former = workbench.openTemporaryDocument().number();
  workbench.inTransaction([&] { storeGroup(*workbench.requireActiveDocument().database(), stationAt("A", 0.0)); });
  {
    const ScratchDocument scratch(workbench);
    EXPECT_NE(activeNumber(), former);
    EXPECT_EQ(workbench.requireActiveDocument().database().get(), scratch.database().get());
    EXPECT_THAT(storedGroups(*scratch.database()), IsEmpty());
    EXPECT_EQ(openDocuments(), 2u);
  }
  EXPECT_EQ(activeNumber(), former);
  EXPECT_EQ(openDocuments(), 1u);
}

TEST_F(ScratchDocuments, GiveTheActiveDrawingBackThoughANewerOneIsOpen) {
  const int former = workbench.openTemporaryDocument().number();
  workbench.openTemporaryDocument();
  workbench.activateDocument(former);
  { const ScratchDocument scratch(workbench); }
  EXPECT_EQ(activeNumber(), former);
}

TEST_F(ScratchDocuments, LeaveNoneActiveWhereNoneWas) {
  {
    const ScratchDocument scratch(workbench);
    EXPECT_EQ(openDocuments(), 1u);
    scratch.reactivateFormer();
    EXPECT_EQ(workbench.requireActiveDocument().database().get(), scratch.database().get());
  }
  EXPECT_EQ(workbench.activeDocument(), nullptr);
  EXPECT_EQ(openDocuments(), 0u);
}

TEST_F(ScratchDocuments, StandOnAfterTheyGaveTheFormerDrawingBack) {
  const int former = workbench.openTemporaryDocument().number();
  const ScratchDocument scratch(workbench);
  scratch.reactivateFormer();
  EXPECT_EQ(activeNumber(), former);
  EXPECT_EQ(openDocuments(), 2u);
  EXPECT_THAT(storedGroups(*scratch.database()), IsEmpty());
}

TEST_F(ScratchDocuments, KeepWhatIsStoredInThemOutOfTheFormerDrawing) {
  const OdDbDatabasePtr former = workbench.openTemporaryDocument().database();
  {
    const ScratchDocument scratch(workbench);
    workbench.inTransaction([&] { storeGroup(*scratch.database(), stationAt("A", 0.0)); });
    EXPECT_EQ(storedGroups(*scratch.database()).size(), 1u);
  }
  EXPECT_THAT(storedGroups(*former), IsEmpty());
}

TEST_F(ScratchDocuments, StandInOneAnother) {
  const int former = workbench.openTemporaryDocument().number();
  {
    const ScratchDocument outer(workbench);
    { const ScratchDocument inner(workbench); }
    EXPECT_EQ(workbench.requireActiveDocument().database().get(), outer.database().get());
  }
  EXPECT_EQ(activeNumber(), former);
}

TEST_F(ScratchDocuments, GiveTheFormerDrawingBackWhenAnErrorLeavesThem) {
  const int former = workbench.openTemporaryDocument().number();
  try {
    const ScratchDocument scratch(workbench);
    throw std::runtime_error("in the midst");
  } catch (const std::runtime_error&) {
    EXPECT_EQ(activeNumber(), former);
  }
  EXPECT_EQ(openDocuments(), 1u);
}

}  // namespace
}  // namespace tiepoint::workbench

// What an adjustment is asked for, resolved; register_survey_test and others have the rest.
#include "workbench/survey/resolve.h"

#include <gmock/gmock.h>

#include "workbench/survey/refusal_of.h"
#include "workbench/temporary_folder.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;

/// Two stations in files, an adjustment of them that is asked for, and its files.
class ResolvedAdjustment : public testing::Test {
 protected:
  ResolvedAdjustment() {
    for (const std::string& file : {first, second}) writeBytes(file, "T1 0 0 0\nT2 8 0 0\nT3 0 6 0\n");
    request.files = {{Layout::nxyz, {first, second}}};
    request.method = RegistrationMethod::adjust;
  }

  ResolvedRequest resolved() { return resolve(workbench, request, findings); }
  Refusal refused() {
    return refusalOf([&] { resolved(); });
  }
  /// The group that isn't there, for this field.
  std::string unknownGroup(Field field) {
    const Refusal refusal = refused();
    EXPECT_EQ(refusal.kind, RefusalKind::noSuchGroup);
    EXPECT_EQ(refusal.field, field);
    EXPECT_THAT(refusal.known, ElementsAre("first", "second"));
    return refusal.name;
  }
  std::string write(const std::string& name, const std::string& bytes) {
    writeBytes(folder.file(name), bytes);
    return folder.file(name);
  }

  const TemporaryFolder folder;
  const std::string first = folder.file("first.txt"), second = folder.file("second.txt");
  Workbench workbench{Workbench::Options{"", TSL_REGISTRATION}};
  RegistrationRequest request;
  AdjustmentRequest& adjustment = request.adjustment;
  Findings findings;
};

TEST_F(ResolvedAdjustment, HasTheSigmasOfTheFileBeforeThoseOfTheRequest) {
  adjustment.sigmasFile = write("sigmas.txt", "first 0.5\nfirst T2 2\n");
  adjustment.sigmas = {{{{PointRef{"second"}}, "second"}, 4.0}};
  const std::vector<SigmaChoice> sigmas = resolved().sigmas;
  ASSERT_EQ(sigmas.size(), 3u);
  EXPECT_EQ(sigmas[0].sigma, 0.5);
  EXPECT_EQ(sigmas[1].points.readings[0].point, "T2");
  EXPECT_EQ(sigmas[2].points.readings[0].group, "second");
}

TEST_F(ResolvedAdjustment, HasWhatItsFilesHold) {
  adjustment.controlFile = write("control.txt", "T1 1 2 3\nT9 4 5 6 0.5\n");
  adjustment.carryFile = write("carry.txt", "second 1 2 3\n");
  adjustment.startFile = write("start.json", R"({"groups":[{"name":"elsewhere","registered":true,
      "rotation":[[1,0,0],[0,1,0],[0,0,1]],"translation":[7,0,0]}]})");
  const ResolvedRequest all = resolved();
  ASSERT_EQ(all.control.size(), 2u);
  EXPECT_EQ(all.control[1].name, "T9") << "a target that no station measured is no mistake";
  ASSERT_EQ(all.carry.size(), 1u);
  EXPECT_EQ(all.carry[0].group, "second");
  ASSERT_EQ(all.start.size(), 1u) << "the file may hold the poses of other stations";
  EXPECT_EQ(all.start[0].pose.shift.x(), 7.0);
}

TEST_F(ResolvedAdjustment, KnowsTheGroupsThatItNames) {
  adjustment.levelled = {"third"};
  EXPECT_EQ(unknownGroup(Field::level), "third");
  adjustment = {};
  adjustment.sigmas = {{{{PointRef{"third"}}, "third"}, 1.0}};
  EXPECT_EQ(unknownGroup(Field::sigma), "third");
  adjustment = {};
  adjustment.trace = {{{PointRef{"third", "T1"}}, "third:T1"}};
  EXPECT_EQ(unknownGroup(Field::trace), "third");
}

TEST_F(ResolvedAdjustment, KnowsTheGroupsThatItsFilesName) {
  adjustment.sigmasFile = write("sigmas.txt", "third 0.5\n");
  EXPECT_EQ(unknownGroup(Field::sigma), "third");
  adjustment = {};
  adjustment.carryFile = write("carry.txt", "third 1 2 3\n");
  EXPECT_EQ(unknownGroup(Field::carryFile), "third");
  EXPECT_EQ(refused().given, adjustment.carryFile);
}

TEST_F(ResolvedAdjustment, KnowsThePointsThatItNames) {
  adjustment.sigmas = {{{{PointRef{"first", "T7"}}, "first:T7"}, 1.0}};
  EXPECT_EQ(refused().kind, RefusalKind::noSuchPoint);
  EXPECT_EQ(refused().field, Field::sigma);
  adjustment = {};
  adjustment.trace = {{{PointRef{"first", "T7"}}, "first:T7"}};
  EXPECT_EQ(refused().kind, RefusalKind::noSuchPoint);
  EXPECT_EQ(refused().field, Field::trace);
  adjustment.trace = {{{PointRef{"first", "T2"}}, "first:T2"}};
  EXPECT_NO_THROW(resolved());
}

TEST_F(ResolvedAdjustment, LeavesPointsOpenThatAMatchingMayName) {
  adjustment.trace = {{{PointRef{"first", "T7"}}, "first:T7"}};
  adjustment.sigmas = {{{{PointRef{"first", "T7"}}, "first:T7"}, 1.0}};
  request.naming.how = Naming::automatic;
  EXPECT_NO_THROW(resolved());
}

TEST_F(ResolvedAdjustment, IsntReplacedByItsResults) {
  request.outputs.force = true;
  const std::string file = write("both.txt", "T1 1 2 3\n");
  request.outputs.transforms = file;
  for (std::string* input :
       {&adjustment.sigmasFile, &adjustment.controlFile, &adjustment.startFile, &adjustment.carryFile}) {
    adjustment = {};
    *input = file;
    EXPECT_EQ(refused().kind, RefusalKind::targetIsRead);
  }
}

TEST_F(ResolvedAdjustment, OfABadFileChangesNothing) {
  request.document = folder.file("hall.tpd");
  adjustment.controlFile = write("control.txt", "T1 1 2\n");
  EXPECT_EQ(refused().kind, RefusalKind::controlLine);
  EXPECT_EQ(workbench.activeDocument(), nullptr);
}

}  // namespace
}  // namespace tiepoint::workbench

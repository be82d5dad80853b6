#include "workbench/values/progress.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "workbench/values/refusal.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Writes down what it is told.
class WrittenProgress : public Progress {
 public:
  void begin(Stage stage) override { told.push_back("begin " + std::to_string(static_cast<int>(stage))); }
  void advance(std::uint64_t done, std::uint64_t total) override {
    told.push_back(std::to_string(done) + " of " + std::to_string(total));
  }
  void end() override { told.emplace_back("end"); }
  bool isCancelled() const override { return cancelled; }

  std::vector<std::string> told;
  bool cancelled = false;
};

TEST(StageScope, BeginsItsStageAndEndsItWithTheScope) {
  WrittenProgress progress;
  {
    const StageScope stage(progress, Stage::movingClouds);
    step(progress, 1, 2);
    step(progress, 2, 2);
  }
  EXPECT_THAT(progress.told, ElementsAre("begin 3", "1 of 2", "2 of 2", "end"));
}

TEST(StageScope, EndsItsStageWhenAnErrorLeavesTheScope) {
  WrittenProgress progress;
  try {
    const StageScope stage(progress, Stage::naming);
    throw std::runtime_error("in the midst");
  } catch (const std::runtime_error&) {
    EXPECT_THAT(progress.told, ElementsAre("begin 0", "end"));
  }
}

TEST(Step, OfCancelledWorkIsRefusedAndNotToldOf) {
  WrittenProgress progress;
  progress.cancelled = true;
  try {
    step(progress, 1, 2);
    FAIL();
  } catch (const Refused& refused) {
    EXPECT_EQ(refused.refusal().kind, RefusalKind::cancelled);
    EXPECT_EQ(refused.refusal().field, Field::none);
  }
  EXPECT_THAT(progress.told, IsEmpty());
}

TEST(Step, OfACountThatIsNotKnownIsToldAsItIs) {
  WrittenProgress progress;
  step(progress, 0, 0);
  EXPECT_THAT(progress.told, ElementsAre("0 of 0"));
}

TEST(Step, OfWorkThatNobodyWatchesGoesOn) {
  Progress progress;
  const StageScope stage(progress, Stage::iterating);
  EXPECT_NO_THROW(step(progress, 1, 1));
}

}  // namespace
}  // namespace tiepoint::workbench

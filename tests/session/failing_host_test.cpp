// Every call that a session makes to its host fails once, and every allocation of every step: nothing
// may crash, nobody may be left with a pointer to what is gone, and the next session must work.
#include <gtest/gtest.h>

#include <iostream>
#include <new>

#include "platform/sdk/od_alloc.h"
#include "session/session_scenario.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

const std::string healthy = "registered, all fits, 11 points, 1 shown";

/// What the sweep of one step did.
struct Sweep {
  std::uint64_t failures = 0;
  /// Those that the caller was told of by an error.
  std::uint64_t reported = 0;

  Sweep& operator+=(const Sweep& other) {
    failures += other.failures;
    reported += other.reported;
    return *this;
  }
};

class FailingHost : public ::testing::Test {
 protected:
  FailingHost() {
    folder.write("imported.txt", "P1 1 2 3\nP2 4 5 6\n");
    // What is looked up or built once must not take the first failures away from what comes after it.
    Scene scene(folder);
    runAll(scene, scenario().size());
    EXPECT_EQ(healthOf(scene.host), healthy);
  }

  static void runAll(Scene& scene, std::size_t steps) {
    for (std::size_t i = 0; i < steps; ++i) scenario()[i].run(scene);
  }

  /// The step under a failure that `arm` has prepared and `disarm` takes back. True when an error left it.
  template <class Arm, class Disarm>
  static bool failsWithAnError(Scene& scene, const ScenarioStep& step, Arm arm, Disarm disarm) {
    bool isError = false;
    arm();
    try {
      step.run(scene);
    } catch (const std::exception&) {
      isError = true;
    }
    disarm();
    return isError;
  }

  /// A session that wasn't made has left nobody; one that was has left nobody once it ends. What a host
  /// didn't take back when it was given back is the host's own.
  static void expectNothingLeft(Scene& scene, const std::string& what, std::size_t notTakenBack = 0) {
    if (!scene.session) {
      EXPECT_TRUE(scene.host.reactors().empty()) << what;
      EXPECT_TRUE(scene.host.drawables().empty()) << what;
    }
    scene.session.reset();
    EXPECT_TRUE(scene.host.reactors().empty()) << what;
    EXPECT_TRUE(scene.host.drawables().empty()) << what;
    EXPECT_LE(scene.host.livingObjects(), notTakenBack) << what;
    while (scene.host.documentCount() > 1) scene.host.closeDocument();
    EXPECT_EQ(healthOf(scene.host), healthy) << what;
  }

  static bool isRelease(const std::string& call) { return call.find("release") != std::string::npos; }

  /// The calls of a step when nothing fails.
  std::vector<std::string> callsOf(std::size_t index) const {
    Scene scene(folder);
    runAll(scene, index);
    return scene.host.calls.during([&] { scenario()[index].run(scene); });
  }

  Sweep failEachCall(std::size_t index, Fault fault) const {
    const ScenarioStep& step = scenario()[index];
    const std::vector<std::string> calls = callsOf(index);
    Sweep sweep;
    for (std::size_t n = 1; n <= calls.size(); ++n) {
      Scene scene(folder);
      runAll(scene, index);
      HostCalls& host = scene.host.calls;
      const bool isError = failsWithAnError(
          scene, step, [&] { host.failAt(n, fault); }, [&] { host.stopFailing(); });
      const std::string what = step.name + ", call " + std::to_string(n) + ": " + calls[n - 1];
      EXPECT_TRUE(host.hasFailed()) << what;
      expectNothingLeft(scene, what, isRelease(calls[n - 1]) ? 1 : 0);
      sweep += {1, isError ? 1u : 0u};
    }
    return sweep;
  }

  /// `times`: how often an allocation fails once the first has.
  Sweep failEachAllocation(std::size_t index, std::uint64_t times) const {
    const ScenarioStep& step = scenario()[index];
    Sweep sweep;
    for (std::uint64_t n = 0;; ++n) {
      Scene scene(folder);
      scene.host.calls.spell(false);
      runAll(scene, index);
      const std::uint64_t before = odrxAllocationCount();
      const bool isError = failsWithAnError(
          scene, step, [&] { odrxFailAllocationsAfter(n, times); }, [] { odrxStopFailingAllocations(); });
      // Fewer allocations than were let through: all of them have had their turn.
      if (odrxAllocationCount() - before <= n) return sweep;
      expectNothingLeft(scene, step.name + ", allocation " + std::to_string(n));
      sweep += {1, isError ? 1u : 0u};
    }
  }

  template <class SweepStep>
  static Sweep overAllSteps(SweepStep sweepStep) {
    Sweep total;
    for (std::size_t index = 0; index < scenario().size(); ++index) total += sweepStep(index);
    return total;
  }

  static void print(const char* what, const Sweep& sweep) {
    std::cout << what << " in " << scenario().size() << " steps: " << sweep.failures << " failures, " << sweep.reported
              << " of them left the step as an error\n";
  }

  TemporaryFolder folder;
};

TEST_F(FailingHost, EveryCallThrowsOnce) {
  const Sweep sweep = overAllSteps([this](std::size_t index) { return failEachCall(index, Fault::throws); });
  print("calls that throw", sweep);
  EXPECT_GT(sweep.failures, 190u);
  EXPECT_GT(sweep.reported, 100u);
}

TEST_F(FailingHost, EveryCallGivesNothingOnce) {
  const Sweep sweep = overAllSteps([this](std::size_t index) { return failEachCall(index, Fault::givesNull); });
  print("calls that give nothing", sweep);
  EXPECT_GT(sweep.failures, 190u);
  EXPECT_EQ(sweep.reported, 0u);
}

TEST_F(FailingHost, EveryAllocationFailsOnce) {
  const Sweep sweep = overAllSteps([this](std::size_t index) { return failEachAllocation(index, 1); });
  print("allocations that fail once", sweep);
  EXPECT_GT(sweep.reported, 1000u);
}

TEST_F(FailingHost, NoMemoryIsLeftFromEachAllocationOn) {
  const Sweep sweep = overAllSteps([this](std::size_t index) { return failEachAllocation(index, odrxFailForEver); });
  print("allocations from which on all fail", sweep);
  EXPECT_GT(sweep.reported, 1000u);
}

TEST_F(FailingHost, DrawsWhenTheDrawableComesAndGoesAndAtEachRefresh) {
  Scene scene(folder);
  scene.host.drawsAtOnce = true;
  scene.host.drawsAtRefresh = true;
  runAll(scene, scenario().size());
  ASSERT_GT(scene.host.draws.size(), 20u);
  EXPECT_TRUE(scene.host.draws.front().lines().empty());
  EXPECT_FALSE(scene.host.draws[3].lines().empty());
  expectNothingLeft(scene, "a host that draws at once");
}

TEST_F(FailingHost, DrawsAtEveryCallAndShowsNothingWhileASessionBeginsOrEnds) {
  Scene scene(folder);
  scene.host.drawAtEveryCall();
  const auto linesDrawnBy = [&](const std::function<void()>& action) {
    scene.host.draws.clear();
    action();
    std::size_t lines = 0;
    for (const auto& draw : scene.host.draws) lines += draw.lines().size();
    return lines;
  };
  EXPECT_EQ(linesDrawnBy([&] { scenario().front().run(scene); }), 0u);
  EXPECT_FALSE(scene.host.draws.empty());
  for (std::size_t i = 1; i < 5; ++i) scenario()[i].run(scene);
  EXPECT_GT(linesDrawnBy([&] { scene.session->zoomToAll(); }), 0u);
  EXPECT_EQ(linesDrawnBy([&] { scene.session.reset(); }), 0u);
  EXPECT_FALSE(scene.host.draws.empty());
}

}  // namespace

// A drawing among processes: locks, kills, paths.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <chrono>
#include <random>
#include <thread>

#include "workbench/drawing/child_process.h"
#include "workbench/drawing/drawing.h"
#include "workbench/drawing/drawing_state.h"
#include "workbench/drawing/refusal.h"
#include "workbench/temporary_folder.h"

using namespace tiepoint::workbench;
using testing::ElementsAre;

namespace {

class DrawingAmongProcesses : public testing::Test {
 protected:
  void makeDrawing() const {
    const auto drawing = Drawing::open(file, true);
    inTransaction(*drawing->database(), [&] {
      storeGroup(*drawing->database(), L"S1", pointsAlongX(3));
      addCloud(*drawing->database(), L"C", L"");
    });
  }

  TemporaryFolder folder;
  std::string file = folder.file("a.tie");
};

/// The number of points that the n-th group gets.
int pointCountOf(int n) { return 1 + 37 * (n % 11); }

/// One step of the work that is killed: everything in it belongs together.
void storeNextGroup(OdDbDatabase& database, int n) {
  inTransaction(database, [&] {
    storeGroup(database, "g" + std::to_string(n), pointsAlongX(pointCountOf(n)));
    moveCloud(database, L"C", shiftAlongX(1.0));
  });
}

/// The number of steps that a drawing has been through; -1 when it stands between two.
int stepsOf(const DrawingState& state) {
  const int steps = static_cast<int>(state.groups.size());
  for (int n = 0; n < steps; ++n) {
    const GroupState& group = state.groups[static_cast<std::size_t>(n)];
    if (group.name != OdString("g" + std::to_string(n)).wideText()) return -1;
    if (static_cast<int>(group.points.size()) != pointCountOf(n)) return -1;
  }
  const bool cloudHasFollowed = state.clouds.at(0).bits == bitsOf(shiftAlongX(steps));
  return cloudHasFollowed ? steps : -1;
}

void sleepUpTo(std::mt19937& random, int microseconds) {
  std::this_thread::sleep_for(std::chrono::microseconds(random() % static_cast<unsigned>(microseconds)));
}

}  // namespace

TEST_F(DrawingAmongProcesses, IsLockedForOtherProcesses) {
  makeDrawing();
  Pipe opened;
  ChildProcess child([&] {
    const auto drawing = Drawing::open(file, false);
    opened.send();
    pause();
    return 0;
  });
  opened.receive();
  const auto start = std::chrono::steady_clock::now();
  const Refusal refusal = refusalOf(file, false);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4)) << "it has waited for the other";
  EXPECT_EQ(refusal.code, eFileSharingViolation);
  EXPECT_EQ(refusal.text, file + ": the drawing is open in another process; close it there and try again");
  child.kill();
  EXPECT_EQ(refusalOf(file, false).code, eOk);
}

TEST_F(DrawingAmongProcesses, StaysLockedForOthersAfterASecondOpeningHereWasRefused) {
  makeDrawing();
  std::filesystem::create_symlink(file, folder.path() / "link.tie");
  Pipe refusedHere;
  // Made first: a child of a process that has the drawing open would know of the lock from that.
  ChildProcess child([&] {
    refusedHere.receive();
    return refusalOf(file, false).code == eFileSharingViolation ? 0 : 1;
  });
  const auto drawing = Drawing::open(file, false);
  EXPECT_EQ(refusalOf(file, true).code, eFileSharingViolation);
  EXPECT_EQ(refusalOf(folder.file("link.tie"), true).code, eFileSharingViolation);
  refusedHere.send();
  EXPECT_EQ(child.wait(), 0);
}

TEST_F(DrawingAmongProcesses, IsNeverLeftBetweenTwoStepsByAKill) {
  {
    const auto drawing = Drawing::open(file, true);
    inTransaction(*drawing->database(), [&] { addCloud(*drawing->database(), L"C", L""); });
  }
  constexpr int kills = 40;
  constexpr int longestDelay = 15000;
  std::mt19937 random(20240601);
  int steps = 0;
  for (int round = 0; round < kills; ++round) {
    Pipe done;
    ChildProcess child([&] {
      const auto drawing = Drawing::open(file, false);
      for (int n = steps;; ++n) {
        storeNextGroup(*drawing->database(), n);
        done.send();
      }
      return 0;
    });
    // Killed while it opens, or some steps later.
    const int awaited = static_cast<int>(random() % 4);
    for (int i = 0; i < awaited; ++i) done.receive();
    sleepUpTo(random, longestDelay);
    child.kill();
    const int reported = steps + awaited + done.countToTheEnd();

    const int found = stepsOf(stateOf(*Drawing::open(file, false)->database()));
    ASSERT_TRUE(found == reported || found == reported + 1) << "round " << round << ": " << found << ", " << reported;
    steps = found;
  }
  EXPECT_THAT(folder.names(), ElementsAre("a.tie"));
}

TEST_F(DrawingAmongProcesses, CanBeMadeAgainAfterAKillWhileItIsMade) {
  constexpr int kills = 40;
  constexpr int longestDelay = 20000;
  std::mt19937 random(20240602);
  for (int round = 0; round < kills; ++round) {
    const std::string path = folder.file(std::to_string(round) + ".tie");
    ChildProcess child([&] {
      const auto drawing = Drawing::open(path, true);
      pause();
      return 0;
    });
    sleepUpTo(random, longestDelay);
    child.kill();
    EXPECT_EQ(stateOf(*Drawing::open(path, true)->database()), DrawingState()) << "round " << round;
    EXPECT_EQ(refusalOf(path, false).code, eOk);
  }
}

TEST_F(DrawingAmongProcesses, IsNotAPipe) {
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  const Refusal refusal = refusalOf(file, true);
  EXPECT_EQ(refusal.code, eFileAccessErr);
  EXPECT_EQ(refusal.text, file + ": not an ordinary file; choose another file");
}

TEST_F(DrawingAmongProcesses, MayHaveARelativePathWithAMeaningOfItsOwnToSqlite) {
  EXPECT_TRUE(holdsInChild([&] {
    std::filesystem::current_path(folder.path());
    Drawing::open(":memory:", true);
    Drawing::open("file:x?mode=memory", true);
    return 0;
  }));
  EXPECT_THAT(folder.names(), ElementsAre(":memory:", "file:x?mode=memory"));
}

TEST_F(DrawingAmongProcesses, StaysWhereItIsWhenTheWorkingFolderChanges) {
  EXPECT_TRUE(holdsInChild([&] {
    std::filesystem::current_path(folder.path());
    const auto drawing = Drawing::open("a.tie", true);
    std::filesystem::current_path("/");
    inTransaction(*drawing->database(), [&] { storeGroup(*drawing->database(), L"S1", pointsAlongX(2)); });
    return 0;
  }));
  EXPECT_EQ(stateOf(*Drawing::open(file, false)->database()).groups.size(), 1u);
}

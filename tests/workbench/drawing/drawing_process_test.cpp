// A drawing among processes: locks, kills, permissions, a disk that is really full.
#include <gmock/gmock.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <chrono>
#include <random>
#include <stdexcept>
#include <thread>

#include "workbench/drawing/child_process.h"
#include "workbench/drawing/drawing.h"
#include "workbench/drawing/drawing_state.h"
#include "workbench/drawing/raw_sqlite.h"
#include "workbench/drawing/refusal.h"
#include "workbench/temporary_folder.h"

#ifdef __linux__
#include <sched.h>
#endif

using namespace tiepoint::workbench;
using testing::ElementsAre;
using testing::HasSubstr;

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

/// An account that owns nothing here.
constexpr unsigned nobody = 65534;

/// Gives up the rights of the administrator, whom permissions don't bind. False when that fails.
bool becomeNobody() {
  if (geteuid() != 0) return true;
  return setgid(nobody) == 0 && setuid(nobody) == 0;
}

void setMode(const std::filesystem::path& path, unsigned mode) {
  std::filesystem::permissions(path, std::filesystem::perms{mode});
}

OdResult codeOfChange(const Drawing& drawing) {
  try {
    inTransaction(*drawing.database(), [&] { storeGroup(*drawing.database(), L"new", pointsAlongX(1)); });
  } catch (const OdError& error) {
    if (drawing.database()->hasActiveTransaction()) drawing.database()->abortTransaction();
    return error.code();
  }
  return eOk;
}

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
  EXPECT_EQ(refusal.text, "The drawing '" + file + "' is open elsewhere: close it there and try again");
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

TEST_F(DrawingAmongProcesses, OpensForReadingWhenItsFileIsWriteProtected) {
  makeDrawing();
  setMode(file, 0444);
  const std::string before = readBytes(file);
  const bool isPossible = holdsInChild([&] {
    if (!becomeNobody()) return notPossibleHere;
    const auto drawing = Drawing::open(file, false);
    EXPECT_TRUE(drawing->database()->isReadOnly());
    EXPECT_EQ(stateOf(*drawing->database()).groups.size(), 1u);
    EXPECT_EQ(codeOfChange(*drawing), eWriteProtected);
    // Any number may read.
    EXPECT_EQ(refusalOf(file, true).code, eOk);
    return 0;
  });
  EXPECT_TRUE(readBytes(file) == before);
  if (!isPossible) GTEST_SKIP() << "the administrator's rights can't be given up here";
}

TEST_F(DrawingAmongProcesses, OpensForReadingWhenNoJournalCanBeMadeInItsFolder) {
  makeDrawing();
  setMode(file, 0666);
  setMode(folder.path(), 0555);
  const bool isPossible = holdsInChild([&] {
    if (!becomeNobody()) return notPossibleHere;
    const auto drawing = Drawing::open(file, false);
    EXPECT_TRUE(drawing->database()->isReadOnly());
    EXPECT_EQ(stateOf(*drawing->database()).groups.size(), 1u);
    EXPECT_EQ(codeOfChange(*drawing), eWriteProtected);
    return 0;
  });
  setMode(folder.path(), 0755);
  if (!isPossible) GTEST_SKIP() << "the administrator's rights can't be given up here";
}

TEST_F(DrawingAmongProcesses, IsNotWrittenBySomebodyElseWhileItIsRead) {
  makeDrawing();
  setMode(file, 0444);
  Pipe opened;
  ChildProcess child([&] {
    if (!becomeNobody()) {
      opened.send();
      return notPossibleHere;
    }
    const auto drawing = Drawing::open(file, false);
    opened.send();
    pause();
    return 0;
  });
  opened.receive();
  if (geteuid() != 0) GTEST_SKIP() << "only the administrator may write where others only read";
  EXPECT_EQ(refusalOf(file, false).code, eFileSharingViolation);
}

TEST_F(DrawingAmongProcesses, RefusesAChangeThatWasCutShortAndCannotBeTakenBack) {
  makeDrawing();
  // A process dies with a change in the file that its journal takes back.
  ChildProcess dying([&] {
    RawSqlite raw(file);
    raw.run("PRAGMA cache_size = 1; BEGIN");
    raw.run(
        "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) "
        "INSERT INTO reference_point SELECT 1000, i, hex(randomblob(20)), 0.0, 0.0, 0.0, 0.0 FROM n");
    _exit(0);
    return 0;
  });
  ASSERT_EQ(dying.wait(), 0);
  ASSERT_THAT(folder.names(), ElementsAre("a.tie", "a.tie-journal"));
  setMode(file, 0444);
  setMode(file + "-journal", 0444);
  const std::string before = readBytes(file);
  const bool isPossible = holdsInChild([&] {
    if (!becomeNobody()) return notPossibleHere;
    const Refusal refusal = refusalOf(file, false);
    EXPECT_EQ(refusal.code, eWriteProtected);
    EXPECT_THAT(refusal.text, HasSubstr("was left in the middle of a change"));
    EXPECT_TRUE(isOneLine(refusal.text));
    return 0;
  });
  EXPECT_TRUE(readBytes(file) == before);
  if (!isPossible) GTEST_SKIP() << "the administrator's rights can't be given up here";
  setMode(file, 0644);
  setMode(file + "-journal", 0644);
  EXPECT_EQ(stateOf(*Drawing::open(file, false)->database()).groups.size(), 1u);
}

TEST_F(DrawingAmongProcesses, IsRefusedToWhoMayNotReadIt) {
  makeDrawing();
  setMode(file, 0200);
  const bool isPossible = holdsInChild([&] {
    if (!becomeNobody()) return notPossibleHere;
    const Refusal refusal = refusalOf(file, false);
    EXPECT_EQ(refusal.code, eFileAccessErr);
    EXPECT_THAT(refusal.text, HasSubstr("'" + file + "' can't be read or written"));
    EXPECT_TRUE(isOneLine(refusal.text));
    return 0;
  });
  if (!isPossible) GTEST_SKIP() << "the administrator's rights can't be given up here";
}

TEST_F(DrawingAmongProcesses, IsNotMadeByWhoMayNotWriteInItsFolder) {
  setMode(folder.path(), 0555);
  const bool isPossible = holdsInChild([&] {
    if (!becomeNobody()) return notPossibleHere;
    const Refusal refusal = refusalOf(file, true);
    EXPECT_EQ(refusal.code, eFileAccessErr);
    EXPECT_TRUE(isOneLine(refusal.text));
    return 0;
  });
  setMode(folder.path(), 0755);
  if (!isPossible) GTEST_SKIP() << "the administrator's rights can't be given up here";
  EXPECT_THAT(folder.names(), ElementsAre());
}

TEST_F(DrawingAmongProcesses, IsNotAPipe) {
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  const Refusal refusal = refusalOf(file, true);
  EXPECT_EQ(refusal.code, eFileAccessErr);
  EXPECT_EQ(refusal.text, "'" + file + "' isn't an ordinary file: choose another file");
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

TEST_F(DrawingAmongProcesses, RefusesAChangeBeyondTheSizeThatAFileMayHave) {
  makeDrawing();
  EXPECT_TRUE(holdsInChild([&] {
    const auto drawing = Drawing::open(file, false);
    const DrawingState before = stateOf(*drawing->database());
    signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = rlim_t{64} * 1024;
    setrlimit(RLIMIT_FSIZE, &limit);
    drawing->database()->startTransaction();
    storeGroup(*drawing->database(), L"big", pointsAlongX(20000));
    EXPECT_THROW(drawing->database()->endTransaction(), OdError);
    EXPECT_EQ(stateOf(*drawing->database()), before);
    EXPECT_EQ(codeOfChange(*drawing), eOk);
    return 0;
  }));
  EXPECT_EQ(stateOf(*Drawing::open(file, false)->database()).groups.size(), 2u);
}

#ifdef __linux__
namespace {

/// Mounts a small disk that only this process sees, and that goes with it. False when that isn't
/// allowed.
bool mountSmallDisk(const std::filesystem::path& folder) {
  if (unshare(CLONE_NEWNS) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
  if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) return false;
  return mount("tmpfs", folder.c_str(), "tmpfs", 0, "size=1m") == 0;
}

/// Takes all the room that is left.
void fillDisk(const std::string& file) {
  const std::string block(4096, 'x');
  std::ofstream stream(file, std::ios::binary);
  while (stream.write(block.data(), static_cast<std::streamsize>(block.size())).flush()) continue;
}

}  // namespace

TEST_F(DrawingAmongProcesses, SurvivesADiskThatIsReallyFull) {
  const bool isPossible = holdsInChild([&] {
    if (!mountSmallDisk(folder.path())) return notPossibleHere;
    const std::string filling = folder.file("filling");
    makeDrawing();
    auto drawing = Drawing::open(file, false);
    const DrawingState before = stateOf(*drawing->database());
    fillDisk(filling);

    EXPECT_EQ(codeOfChange(*drawing), eDiskFull);
    EXPECT_EQ(stateOf(*drawing->database()), before);
    drawing.reset();
    drawing = Drawing::open(file, false);
    EXPECT_EQ(stateOf(*drawing->database()), before);
    EXPECT_EQ(codeOfChange(*drawing), eDiskFull);
    EXPECT_EQ(refusalOf(folder.file("b.tie"), true).code, eDiskFull);
    EXPECT_THAT(folder.names(), testing::Not(testing::Contains("b.tie")));

    std::filesystem::remove(filling);
    EXPECT_EQ(codeOfChange(*drawing), eOk);
    drawing.reset();
    EXPECT_EQ(stateOf(*Drawing::open(file, false)->database()).groups.size(), 2u);
    return 0;
  });
  if (!isPossible) GTEST_SKIP() << "no disk can be mounted here";
}

TEST_F(DrawingAmongProcesses, OpensForReadingOnADiskThatIsWriteProtected) {
  const bool isPossible = holdsInChild([&] {
    if (!mountSmallDisk(folder.path())) return notPossibleHere;
    makeDrawing();
    if (mount("none", folder.path().c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) != 0) return notPossibleHere;
    const auto drawing = Drawing::open(file, true);
    EXPECT_TRUE(drawing->database()->isReadOnly());
    EXPECT_EQ(stateOf(*drawing->database()).groups.size(), 1u);
    EXPECT_EQ(codeOfChange(*drawing), eWriteProtected);
    return 0;
  });
  if (!isPossible) GTEST_SKIP() << "no disk can be mounted here";
}
#endif

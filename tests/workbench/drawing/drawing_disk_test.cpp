// A drawing where permissions, limits or a full disk stand against it.
#include <gmock/gmock.h>
#include <sys/mount.h>
#include <sys/resource.h>

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
using testing::StartsWith;

namespace {

class DrawingOnADisk : public testing::Test {
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

}  // namespace

TEST_F(DrawingOnADisk, OpensForReadingWhenItsFileIsWriteProtected) {
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

TEST_F(DrawingOnADisk, OpensForReadingWhenNoJournalCanBeMadeInItsFolder) {
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

TEST_F(DrawingOnADisk, IsNotWrittenBySomebodyElseWhileItIsRead) {
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

TEST_F(DrawingOnADisk, RefusesAChangeThatWasCutShortAndCannotBeTakenBack) {
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
    EXPECT_THAT(refusal.text, HasSubstr("was interrupted in the middle of a change"));
    EXPECT_TRUE(isOneLine(refusal.text));
    return 0;
  });
  EXPECT_TRUE(readBytes(file) == before);
  if (!isPossible) GTEST_SKIP() << "the administrator's rights can't be given up here";
  setMode(file, 0644);
  setMode(file + "-journal", 0644);
  EXPECT_EQ(stateOf(*Drawing::open(file, false)->database()).groups.size(), 1u);
}

TEST_F(DrawingOnADisk, IsRefusedToWhoMayNotReadIt) {
  makeDrawing();
  setMode(file, 0200);
  const bool isPossible = holdsInChild([&] {
    if (!becomeNobody()) return notPossibleHere;
    const Refusal refusal = refusalOf(file, false);
    EXPECT_EQ(refusal.code, eFileAccessErr);
    EXPECT_THAT(refusal.text, StartsWith(file + ": the drawing can't be read or written ("));
    EXPECT_TRUE(isOneLine(refusal.text));
    return 0;
  });
  if (!isPossible) GTEST_SKIP() << "the administrator's rights can't be given up here";
}

TEST_F(DrawingOnADisk, IsNotMadeByWhoMayNotWriteInItsFolder) {
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

TEST_F(DrawingOnADisk, RefusesAChangeBeyondTheSizeThatAFileMayHave) {
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

TEST_F(DrawingOnADisk, SurvivesADiskThatIsReallyFull) {
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

TEST_F(DrawingOnADisk, OpensForReadingOnADiskThatIsWriteProtected) {
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

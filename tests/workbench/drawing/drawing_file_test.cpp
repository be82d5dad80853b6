#include "workbench/drawing/drawing_file.h"

#include <gmock/gmock.h>

#include "workbench/drawing/drawing.h"
#include "workbench/drawing/drawing_state.h"
#include "workbench/drawing/raw_sqlite.h"
#include "workbench/drawing/refusal.h"
#include "workbench/temporary_folder.h"

using namespace tiepoint::workbench;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

/// The application id as the file header of SQLite holds it.
const std::string drawingMark = "tieP";

constexpr std::size_t pageSize = 4096;

class DrawingFileTest : public testing::Test {
 protected:
  /// A drawing with two groups and a cloud.
  void makeDrawing() const {
    const auto drawing = Drawing::open(file, true);
    inTransaction(*drawing->database(), [&] {
      storeGroup(*drawing->database(), L"S1", pointsAlongX(3));
      storeGroup(*drawing->database(), L"S2", pointsAlongX(40));
      addCloud(*drawing->database(), L"S1", L"S1.e57");
    });
  }

  /// Refused with that code and words in one line that names the file, which stays as it was.
  void expectRefusal(OdResult code, const std::string& words) const {
    const std::string before = readBytes(file);
    const auto namesBefore = folder.names();
    for (const bool createWhenMissing : {false, true}) {
      const Refusal refusal = refusalOf(file, createWhenMissing);
      EXPECT_EQ(refusal.code, code) << refusal.text;
      EXPECT_THAT(refusal.text, HasSubstr(words));
      EXPECT_THAT(refusal.text, StartsWith(file + ": "));
      EXPECT_TRUE(isOneLine(refusal.text)) << refusal.text;
    }
    EXPECT_TRUE(readBytes(file) == before) << "the file has changed";
    EXPECT_EQ(folder.names(), namesBefore);
  }

  /// The drawing after a change to its tables is refused as damaged.
  void expectDamageBy(const std::string& sql) const {
    makeDrawing();
    RawSqlite(file).run(sql);
    expectRefusal(eNotADrawing, "is damaged");
    std::filesystem::remove(std::filesystem::u8path(file));
  }

  TemporaryFolder folder;
  std::string file = folder.file("a.tie");
};

}  // namespace

TEST_F(DrawingFileTest, BearsTheMarkAndTheVersionOfADrawing) {
  makeDrawing();
  EXPECT_EQ(readBytes(file).substr(68, 4), drawingMark);
  EXPECT_EQ(RawSqlite(file).value("PRAGMA application_id"), "1953064272");
  EXPECT_EQ(RawSqlite(file).value("PRAGMA user_version"), "1");
  EXPECT_EQ(RawSqlite(file).value("PRAGMA integrity_check"), "ok");
}

TEST_F(DrawingFileTest, CanBeReadWithSqlitesOwnTools) {
  makeDrawing();
  RawSqlite raw(file);
  EXPECT_EQ(raw.value("SELECT p.name || ' ' || p.x || ' ' || p.y || ' ' || p.z || ' ' || p.w "
                      "FROM dictionary_entry e JOIN reference_point p ON p.repository = e.object "
                      "WHERE e.name = 'S1' AND p.position = 2"),
            "3 3.0 0.5 -0.25 1.0");
  EXPECT_EQ(raw.value("SELECT name || ' ' || source || ' ' || m0 || ' ' || m3 FROM cloud"), "S1 S1.e57 1.0 0.0");
  EXPECT_EQ(raw.value("SELECT group_concat(class) FROM (SELECT DISTINCT class FROM object ORDER BY class)"),
            "cloud,dictionary,points");
}

TEST_F(DrawingFileTest, TakesWholeNumbersThatSomebodyHasPutIn) {
  makeDrawing();
  RawSqlite(file).run("UPDATE reference_point SET x = 7 WHERE name = '2'");
  const DrawingState state = stateOf(*Drawing::open(file, false)->database());
  EXPECT_EQ(state.groups.at(0).points.at(1), stateOf(pointAt(L"2", 7.0, 0.5, -0.25)));
}

TEST_F(DrawingFileTest, IsNotMadeUnlessAskedFor) {
  const Refusal refusal = refusalOf(file, false);
  EXPECT_EQ(refusal.code, eFileAccessErr);
  EXPECT_EQ(refusal.text, file + ": there is no such drawing; check the path");
  EXPECT_THAT(folder.names(), IsEmpty());
}

TEST_F(DrawingFileTest, IsNotMadeWhereThereIsNoFolder) {
  const std::string path = folder.file("missing/a.tie");
  const Refusal refusal = refusalOf(path, true);
  EXPECT_EQ(refusal.code, eFileAccessErr);
  EXPECT_THAT(refusal.text,
              StartsWith(path + ": the drawing can't be created, as there is no folder " + folder.file("missing")));
  EXPECT_TRUE(isOneLine(refusal.text));
  EXPECT_THAT(folder.names(), IsEmpty());
}

TEST_F(DrawingFileTest, IsNotAFolder) {
  for (const bool createWhenMissing : {false, true}) {
    const Refusal refusal = refusalOf(folder.path().u8string(), createWhenMissing);
    EXPECT_EQ(refusal.code, eFileAccessErr);
    EXPECT_THAT(refusal.text, StartsWith(folder.path().u8string() + ": this is a folder, not a drawing"));
  }
}

TEST_F(DrawingFileTest, NeedsAPath) {
  EXPECT_EQ(refusalOf("", true).code, eFileAccessErr);
  EXPECT_EQ(refusalOf(file + std::string("\0x", 2), true).code, eFileAccessErr);
  EXPECT_THAT(folder.names(), IsEmpty());
}

TEST_F(DrawingFileTest, IsNotAnEmptyFileUnlessItMayBeMade) {
  writeBytes(file, "");
  const Refusal refusal = refusalOf(file, false);
  EXPECT_EQ(refusal.code, eNotADrawing);
  EXPECT_EQ(readBytes(file), "");
  EXPECT_EQ(refusalOf(file, true).code, eOk);
}

TEST_F(DrawingFileTest, RefusesATextAndLeavesItAlone) {
  writeBytes(file, "T1 1.0 2.0 3.0\nT2 4.0 5.0 6.0\n");
  expectRefusal(eNotADrawing, "not a drawing");
}

TEST_F(DrawingFileTest, RefusesALongFileOfZeros) {
  writeBytes(file, std::string(20000, '\0'));
  expectRefusal(eNotADrawing, "not a drawing");
}

TEST_F(DrawingFileTest, RefusesAFileThatOnlyBeginsLikeADrawing) {
  makeDrawing();
  writeBytes(file, readBytes(file).substr(0, 72));
  expectRefusal(eNotADrawing, "not a drawing");
}

TEST_F(DrawingFileTest, RefusesTheDatabaseOfAnotherProgramAndLeavesItAlone) {
  RawSqlite(file).run("PRAGMA application_id = 252006673; CREATE TABLE photo (name TEXT)");
  expectRefusal(eNotADrawing, "not a drawing");
}

TEST_F(DrawingFileTest, LeavesTheWriteAheadLogOfAnotherProgramAlone) {
  const std::string source = folder.file("source.db");
  {
    RawSqlite raw(source);
    raw.run("PRAGMA journal_mode = WAL; CREATE TABLE photo (name TEXT); INSERT INTO photo VALUES ('a')");
    // As a crash of that program leaves them.
    std::filesystem::copy_file(source, file);
    std::filesystem::copy_file(source + "-wal", file + "-wal");
  }
  const std::string log = readBytes(file + "-wal");
  expectRefusal(eNotADrawing, "not a drawing");
  EXPECT_TRUE(readBytes(file + "-wal") == log);
}

TEST_F(DrawingFileTest, LeavesTheInterruptedChangeOfAnotherProgramAlone) {
  const std::string source = folder.file("source.db");
  {
    RawSqlite raw(source);
    raw.run("CREATE TABLE photo (name TEXT); INSERT INTO photo VALUES ('a'); PRAGMA cache_size = 1; BEGIN");
    raw.run(
        "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) "
        "INSERT INTO photo SELECT hex(randomblob(20)) FROM n");
    std::filesystem::copy_file(source, file);
    std::filesystem::copy_file(source + "-journal", file + "-journal");
  }
  const std::string journal = readBytes(file + "-journal");
  ASSERT_GT(journal.size(), 512u);
  expectRefusal(eNotADrawing, "not a drawing");
  EXPECT_TRUE(readBytes(file + "-journal") == journal);
}

TEST_F(DrawingFileTest, RefusesANewerFormatAndLeavesItAlone) {
  makeDrawing();
  RawSqlite(file).run("PRAGMA user_version = 2");
  expectRefusal(eNewerFormat, "has format 2, and this program supports up to 1");
}

TEST_F(DrawingFileTest, RefusesADrawingWithoutAVersion) {
  expectDamageBy("PRAGMA user_version = 0");
  expectDamageBy("PRAGMA user_version = -1");
}

TEST_F(DrawingFileTest, RefusesADrawingThatWasCutOff) {
  makeDrawing();
  writeBytes(file, readBytes(file).substr(0, 3 * pageSize));
  expectRefusal(eNotADrawing, "is damaged");
}

TEST_F(DrawingFileTest, RefusesADrawingWithAPageOfRubbishUnlessNothingIsLostByIt) {
  makeDrawing();
  const DrawingState state = stateOf(*Drawing::open(file, false)->database());
  const std::string bytes = readBytes(file);
  const std::string damagedFile = folder.file("b.tie");
  int refusals = 0;
  for (std::size_t page = 1; page < bytes.size() / pageSize; ++page) {
    std::string damaged = bytes;
    damaged.replace(page * pageSize, pageSize, std::string(pageSize, '\x55'));
    writeBytes(damagedFile, damaged);
    const Refusal refusal = refusalOf(damagedFile, false);
    if (refusal.code == eOk) {
      // A page that only finds entries more quickly.
      EXPECT_EQ(stateOf(*Drawing::open(damagedFile, false)->database()), state);
    } else {
      EXPECT_EQ(refusal.code, eNotADrawing) << page;
      EXPECT_THAT(refusal.text, HasSubstr("is damaged"));
      ++refusals;
    }
  }
  // The five tables.
  EXPECT_EQ(refusals, 5);
}

TEST_F(DrawingFileTest, RefusesTablesThatAreNotThere) {
  for (const char* table : {"revision", "object", "dictionary_entry", "reference_point", "cloud"}) {
    expectDamageBy(std::string("DROP TABLE ") + table);
  }
}

TEST_F(DrawingFileTest, RefusesContentThatNoDrawingHas) {
  expectDamageBy("DELETE FROM revision");
  expectDamageBy("UPDATE object SET class = 'circle' WHERE class = 'points'");
  expectDamageBy("UPDATE object SET class = 'cloud' WHERE handle = 1");
  expectDamageBy("UPDATE object SET class = 'cloud' WHERE class = 'points'");
  expectDamageBy("UPDATE object SET class = 'points' WHERE class = 'cloud'");
  expectDamageBy("DELETE FROM object WHERE class = 'points'");
  expectDamageBy("DELETE FROM object WHERE class = 'cloud'");
  expectDamageBy("INSERT INTO object VALUES (0, 'points')");
  expectDamageBy("INSERT INTO dictionary_entry VALUES (1, 100, 'x', 999)");
  expectDamageBy("INSERT INTO dictionary_entry VALUES (999, 1, 'x', 1)");
  expectDamageBy("INSERT INTO dictionary_entry VALUES (1, 0, 'x', 1)");
  expectDamageBy("UPDATE reference_point SET x = 'far'");
  expectDamageBy("UPDATE reference_point SET w = x'00'");
  expectDamageBy("UPDATE reference_point SET name = CAST(x'ff' AS TEXT)");
  expectDamageBy("UPDATE cloud SET m15 = ''");
}

TEST_F(DrawingFileTest, RunsNothingThatSomebodyHasPutIn) {
  makeDrawing();
  RawSqlite(file).run("CREATE TRIGGER t AFTER INSERT ON object BEGIN DELETE FROM reference_point; END");
  {
    const auto drawing = Drawing::open(file, false);
    inTransaction(*drawing->database(), [&] { storeGroup(*drawing->database(), L"S3", pointsAlongX(5)); });
  }
  const DrawingState state = stateOf(*Drawing::open(file, false)->database());
  ASSERT_EQ(state.groups.size(), 3u);
  EXPECT_EQ(state.groups[0].points.size(), 3u);
  EXPECT_EQ(state.groups[2].points.size(), 5u);
}

TEST_F(DrawingFileTest, IsReadFromTheWriteAheadLogThatSomebodyHasSetIt) {
  makeDrawing();
  EXPECT_EQ(RawSqlite(file).value("PRAGMA journal_mode = WAL"), "wal");
  EXPECT_EQ(stateOf(*Drawing::open(file, false)->database()).groups.size(), 2u);
  EXPECT_EQ(RawSqlite(file).value("PRAGMA journal_mode"), "delete");
  EXPECT_THAT(folder.names(), ElementsAre("a.tie"));
}

TEST_F(DrawingFileTest, IsLockedUntilTheDrawingGoes) {
  makeDrawing();
  auto drawing = Drawing::open(file, false);
  const Refusal refusal = refusalOf(file, true);
  EXPECT_EQ(refusal.code, eFileSharingViolation);
  EXPECT_EQ(refusal.text, file + ": the drawing is open in another process; close it there and try again");
  EXPECT_EQ(RawSqlite(file).tryRun("SELECT * FROM object"), SQLITE_BUSY);
  inTransaction(*drawing->database(), [&] { storeGroup(*drawing->database(), L"S3", pointsAlongX(5)); });
  EXPECT_EQ(RawSqlite(file).tryRun("SELECT * FROM object"), SQLITE_BUSY);
  drawing.reset();
  EXPECT_EQ(refusalOf(file, false).code, eOk);
  EXPECT_EQ(RawSqlite(file).tryRun("SELECT * FROM object"), SQLITE_OK);
}

TEST_F(DrawingFileTest, IsLockedWhileItHasNoGroupYet) {
  const auto drawing = Drawing::open(file, true);
  EXPECT_EQ(refusalOf(file, true).code, eFileSharingViolation);
}

TEST_F(DrawingFileTest, DoesNotOpenWhileSomebodyReadsOrWritesIt) {
  makeDrawing();
  RawSqlite raw(file);
  raw.run("BEGIN; SELECT * FROM object");
  EXPECT_EQ(refusalOf(file, false).code, eFileSharingViolation);
  raw.run("COMMIT; BEGIN IMMEDIATE");
  EXPECT_EQ(refusalOf(file, false).code, eFileSharingViolation);
  raw.run("COMMIT");
  EXPECT_EQ(refusalOf(file, false).code, eOk);
}

TEST_F(DrawingFileTest, LeavesNothingBesideItWhenItIsClosed) {
  makeDrawing();
  EXPECT_THAT(folder.names(), ElementsAre("a.tie"));
}

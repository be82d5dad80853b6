#include "workbench/report/import_text.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tiepoint::workbench {
namespace {

ImportedFile file(const char* path, const char* group, Layout layout, std::uint64_t lines, std::uint64_t points) {
  ImportedFile made;
  made.path = path;
  made.group = group;
  made.layout = layout;
  made.lines = lines;
  made.points = points;
  return made;
}

TEST(ImportTable, HasALineForEachFile) {
  ImportReport import;
  import.files = {file("S1.txt", "S1", Layout::nxyz, 8, 8), file("far/S2.txt", "S2", Layout::xyzw, 120, 120)};
  EXPECT_EQ(importTable(import),
            "Reference points\n"
            "  file        layout  lines  points  group\n"
            "  S1.txt      NXYZ        8       8  S1\n"
            "  far/S2.txt  XYZW      120     120  S2\n");
}

TEST(ImportTable, SaysWhereTheReadingStopped) {
  ImportReport import;
  import.files = {file("S1.txt", "S1", Layout::nxyz, 8, 2)};
  LineFault fault;
  fault.kind = LineFaultKind::notANumber;
  fault.line = 3;
  fault.found = "ten";
  import.files[0].stop = fault;
  EXPECT_EQ(importTable(import),
            "Reference points\n"
            "  file    layout  lines  points  group\n"
            "  S1.txt  NXYZ        8       2  S1     stopped: line 3 holds \"ten\", which isn't a number\n");
}

TEST(ImportTable, SaysWhichFileWasntTakenIn) {
  ImportReport import;
  import.files = {file("S1.txt", "S1", Layout::nxyz, 8, 8)};
  import.files[0].stored = false;
  EXPECT_EQ(importTable(import),
            "Reference points\n"
            "  file    layout  lines  points  group\n"
            "  S1.txt  NXYZ        8       8  S1     not taken in: the drawing has this group already\n");
}

TEST(ImportTable, SaysHowAFileWasReadThatTheModuleDoesntRead) {
  ImportReport import;
  import.files = {file("S1.txt", "S1", Layout::nxyz, 8, 8), file("S2.csv", "S2", Layout::nxyz, 9, 8)};
  FileReading reading;
  reading.encoding = TextEncoding::windows1252;
  reading.lines.separator = Separator::semicolon;
  reading.lines.decimal = DecimalMark::comma;
  reading.lines.columns.roles = {ColumnRole::name, ColumnRole::x, ColumnRole::y, ColumnRole::z};
  reading.header = {"Punkt", "Rechtswert", "Hochwert", "H\u00F6he"};
  import.files[1].reading = reading;
  EXPECT_EQ(importTable(import),
            "Reference points\n"
            "  file    layout     lines  points  group\n"
            "  S1.txt  NXYZ           8       8  S1\n"
            "  S2.csv  converted      9       8  S2\n"
            "  S2.csv: windows-1252, semicolons, decimal comma; columns name,x,y,z; header \"Punkt\", \"Rechtswert\",\n"
            "    \"Hochwert\", \"H\u00F6he\"\n");
}

TEST(ImportTable, PrintsNoControlCharacterOfAName) {
  ImportReport import;
  import.files = {file("S\x1b[1m.txt", "S\t1", Layout::nxyz, 1, 1)};
  EXPECT_NE(importTable(import).find("  S?[1m.txt  NXYZ        1       1  S?1\n"), std::string::npos);
}

TEST(ImportTable, IsEmptyWithoutFiles) {
  ImportReport import;
  import.messages = {"nothing to do"};
  EXPECT_EQ(importTable(import), "");
}

TEST(ImportText, EndsWithTheCommandsOwnWords) {
  ImportReport import;
  import.files = {file("S1.txt", "S1", Layout::xyz, 3, 3)};
  import.messages = {"Imported 3 points", "done\r"};
  EXPECT_EQ(importText(import),
            "Reference points\n"
            "  file    layout  lines  points  group\n"
            "  S1.txt  XYZ         3       3  S1\n"
            "  Imported 3 points\n"
            "  done?\n");
}

TEST(ImportText, ListsEveryFileHoweverManyThereAre) {
  ImportReport import;
  for (int i = 0; i < 250; ++i) import.files.push_back(file("S.txt", "S", Layout::xyz, 3, 3));
  const std::string text = importText(import);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 252);
}

}  // namespace
}  // namespace tiepoint::workbench

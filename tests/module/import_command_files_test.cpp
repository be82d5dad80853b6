// What becomes of the chosen files.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "module/import_host.h"
#include "support/platform.h"

namespace tiepoint::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ImportCommand : public ImportTest {};

TEST_F(ImportCommand, StoresAFileAsAGroupOfItsPointsInTheirOrder) {
  import({files.write(L"station.txt", "P2 1023.417, 88.2;-4.5e-1\nP1 1 2 3\n? 4 5 6\nP2 7 8 9\n")});
  EXPECT_THAT(groups(), ElementsAre(L"station"));
  EXPECT_THAT(points(L"station"),
              ElementsAre(ImportedPoint{L"P2", 1023.417, 88.2, -0.45, 1.0}, ImportedPoint{L"P1", 1, 2, 3, 1},
                          ImportedPoint{L"?", 4, 5, 6, 1}, ImportedPoint{L"P2", 7, 8, 9, 1}));
  EXPECT_THAT(messages(),
              ElementsAre(L"Found 1 files", L"Command complite. 1 groups of reference points loaded in document"));
}

TEST_F(ImportCommand, ReadsNamesAndCoordinatesByTheFirstRow) {
  import({files.write(L"a.txt", "1 2 3 4\n")}, 1);
  EXPECT_THAT(points(L"a"), ElementsAre(ImportedPoint{L"1", 2, 3, 4, 1}));
}

TEST_F(ImportCommand, ReadsCoordinatesAloneByTheSecondRow) {
  import({files.write(L"a.txt", "100.000 200.000 50.125\n101.000 201.000 51.125\n")}, 2);
  EXPECT_THAT(points(L"a"),
              ElementsAre(ImportedPoint{L"?", 100, 200, 50.125, 1}, ImportedPoint{L"?", 101, 201, 51.125, 1}));
}

TEST_F(ImportCommand, ReadsCoordinatesAndAWeightByTheThirdRow) {
  import({files.write(L"a.txt", "100.000,200.000,50.125,0.75\n")}, 3);
  EXPECT_THAT(points(L"a"), ElementsAre(ImportedPoint{L"?", 100, 200, 50.125, 0.75}));
}

TEST_F(ImportCommand, ReadsNamesAndWeightsByTheFourthRow) {
  import({files.write(L"a.txt", "T1 10.0 20.0 30.0 1\nT2,11.5,21.5,31.5,0.5\n  T3;12;22;32;0.25\n")}, 4);
  EXPECT_THAT(points(L"a"),
              ElementsAre(ImportedPoint{L"T1", 10, 20, 30, 1}, ImportedPoint{L"T2", 11.5, 21.5, 31.5, 0.5},
                          ImportedPoint{L"T3", 12, 22, 32, 0.25}));
}

TEST_F(ImportCommand, ReadsNothingByARowThatTheListDoesNotHave) {
  const std::wstring path = files.write(L"a.txt", "1 2 3 4\n");
  for (const int row : {0, 5, -1}) {
    messages().clear();
    import({path}, row);
    EXPECT_THAT(messages(), ElementsAre(L"Found 1 files", L"Warning: reference points are not found in the file a",
                                        L"Command complite. 0 groups of reference points loaded in document"))
        << row;
  }
  EXPECT_THAT(groups(), IsEmpty());
}

TEST_F(ImportCommand, DropsTheSecondOfTwoFilesOfOneNameInSilence) {
  import({files.write(L"east/a.txt", "P1 1 2 3\n"), files.write(L"west/a.txt", "P2 4 5 6\nP3 7 8 9\n")});
  EXPECT_THAT(groups(), ElementsAre(L"a"));
  EXPECT_THAT(points(L"a"), ElementsAre(ImportedPoint{L"P1", 1, 2, 3, 1}));
  EXPECT_THAT(messages(),
              ElementsAre(L"Found 2 files", L"Command complite. 1 groups of reference points loaded in document"));
}

TEST_F(ImportCommand, NamesTheGroupAfterTheNameUpToItsLastDot) {
  import({files.write(L"scan.01.txt", "P1 1 2 3\n"), files.write(L"a.b", "P1 1 2 3\n"),
          files.write(L"noEnding", "P1 1 2 3\n")});
  EXPECT_THAT(groups(), ElementsAre(L"scan.01", L"a", L"noEnding"));
}

TEST_F(ImportCommand, NamesTheGroupInWideText) {
  const std::wstring station = L"\u0421\u0442\u0430\u043D\u0446\u0438\u044F \u6E2C";
  import({files.write(station + L".txt", "P1 1 2 3\n")});
  EXPECT_THAT(groups(), ElementsAre(station));
}

TEST_F(ImportCommand, AddsNothingTheSecondTime) {
  const std::vector<std::wstring> chosen = {files.write(L"a.txt", "P1 1 2 3\n"), files.write(L"b.txt", "P1 4 5 6\n")};
  import(chosen);
  messages().clear();
  import(chosen);
  EXPECT_THAT(messages(),
              ElementsAre(L"Found 2 files", L"Command complite. 0 groups of reference points loaded in document"));
  EXPECT_THAT(groups(), ElementsAre(L"a", L"b"));
}

TEST_F(ImportCommand, LeavesAGroupThatIsThereAsItIs) {
  const std::wstring path = files.write(L"a.txt", "P1 1 2 3\n");
  import({path});
  files.write(L"a.txt", "P9 9 9 9\n");
  import({path});
  EXPECT_THAT(points(L"a"), ElementsAre(ImportedPoint{L"P1", 1, 2, 3, 1}));
}

TEST_F(ImportCommand, AddsNewFilesBesideOldGroups) {
  import({files.write(L"b.txt", "P1 1 2 3\n")});
  messages().clear();
  import({files.path(L"b.txt"), files.write(L"a.txt", "P1 4 5 6\n")});
  EXPECT_THAT(groups(), ElementsAre(L"b", L"a"));
  EXPECT_THAT(messages(),
              ElementsAre(L"Found 2 files", L"Command complite. 1 groups of reference points loaded in document"));
}

TEST_F(ImportCommand, KeepsTheTwoPointsBeforeABadThirdLineWithoutAWarning) {
  import({files.write(L"a.txt", "P1 1 2 3\nP2 4 5 6\nP3 7 8\nP4 10 11 12\n")});
  EXPECT_THAT(points(L"a"), ElementsAre(ImportedPoint{L"P1", 1, 2, 3, 1}, ImportedPoint{L"P2", 4, 5, 6, 1}));
  EXPECT_THAT(messages(),
              ElementsAre(L"Found 1 files", L"Command complite. 1 groups of reference points loaded in document"));
}

TEST_F(ImportCommand, EndsAFileAtAnEmptyLine) {
  import({files.write(L"a.txt", "P1 1 2 3\n\nP2 4 5 6\n")});
  EXPECT_THAT(points(L"a"), ElementsAre(ImportedPoint{L"P1", 1, 2, 3, 1}));
}

TEST_F(ImportCommand, FindsNoPointsInAFileThatBeginsWithAHeader) {
  import({files.write(L"a.txt", "name x y z\nP1 1 2 3\n")});
  EXPECT_THAT(messages(), ElementsAre(L"Found 1 files", L"Warning: reference points are not found in the file a",
                                      L"Command complite. 0 groups of reference points loaded in document"));
  EXPECT_THAT(groups(), IsEmpty());
}

TEST_F(ImportCommand, FindsNoPointsInAnEmptyFileNorInAFolder) {
  import({files.write(L"hollow.txt", ""), files.makeFolder(L"folder.d")});
  EXPECT_THAT(messages(), ElementsAre(L"Found 2 files", L"Warning: reference points are not found in the file hollow",
                                      onWindows ? L"Warning: don't open file folder"
                                                : L"Warning: reference points are not found in the file folder",
                                      L"Command complite. 0 groups of reference points loaded in document"));
}

TEST_F(ImportCommand, WarnsOfAFileThatCannotBeOpenedByItsStemAndGoesOn) {
  import({files.path(L"no/such.file.txt"), files.write(L"a.txt", "P1 1 2 3\n")});
  EXPECT_THAT(messages(), ElementsAre(L"Found 2 files", L"Warning: don't open file such.file",
                                      L"Command complite. 1 groups of reference points loaded in document"));
  EXPECT_THAT(groups(), ElementsAre(L"a"));
}

#ifndef _WIN32
TEST_F(ImportCommand, CannotOpenAPathWithoutAUtf8Form) {
  const std::wstring halfAPair = L"scan.1" + std::wstring(1, wchar_t{0xD800});
  const std::wstring beyondTheLast = L"scan.1" + std::wstring(1, wchar_t{0x110000});
  // The file that the path would mean without that character.
  files.write(L"scan.1.txt", "P1 1 2 3\n");
  import({files.path(L"") + L"/" + halfAPair + L".txt", files.path(L"") + L"/" + beyondTheLast + L".txt",
          files.write(L"a.txt", "P1 1 2 3\n")});
  EXPECT_THAT(messages(), ElementsAre(L"Found 3 files", L"Warning: don't open file " + halfAPair,
                                      L"Warning: don't open file " + beyondTheLast,
                                      L"Command complite. 1 groups of reference points loaded in document"));
}
#endif

TEST_F(ImportCommand, ReadsTheLastLineWithoutALineFeed) {
  import({files.write(L"a.txt", "P1 1 2 3\nP2 4 5 6")});
  EXPECT_THAT(points(L"a"), ElementsAre(ImportedPoint{L"P1", 1, 2, 3, 1}, ImportedPoint{L"P2", 4, 5, 6, 1}));
}

TEST_F(ImportCommand, ReadsLinesThatEndInACarriageReturn) {
  import({files.write(L"a.txt", "P1 1 2 3\r\nP2 4 5 6\r\n")});
  EXPECT_THAT(points(L"a"), ElementsAre(ImportedPoint{L"P1", 1, 2, 3, 1}, ImportedPoint{L"P2", 4, 5, 6, 1}));
}

TEST_F(ImportCommand, TakesAByteOrderMarkIntoTheFirstName) {
  import({files.write(L"a.txt", "\xEF\xBB\xBFP1 1 2 3\n")});
  EXPECT_THAT(points(L"a"), ElementsAre(ImportedPoint{L"\u043F\u00BB\u0457P1", 1, 2, 3, 1}));
}

TEST_F(ImportCommand, TakesTheBytesOfANameByTheSystemCodePage) {
  import({files.write(L"a.txt", "\xD2\xEE\xF7\xEA\xE0 1 2 3\n")});
  EXPECT_THAT(points(L"a"), ElementsAre(ImportedPoint{L"\u0422\u043E\u0447\u043A\u0430", 1, 2, 3, 1}));
}

TEST_F(ImportCommand, TakesALineOfAnyLength) {
  const std::string name(1000000, 'n');
  import({files.write(L"a.txt", name + " 1 2 3\n")});
  ASSERT_EQ(points(L"a").size(), 1U);
  EXPECT_EQ(points(L"a")[0].name, std::wstring(1000000, L'n'));
}

}  // namespace
}  // namespace tiepoint::testing

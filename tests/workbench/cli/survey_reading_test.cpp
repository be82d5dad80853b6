// Survey files of other forms, as the program takes them in and shows them.
#include <gmock/gmock.h>

#include "workbench/cli/survey_files.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class SurveyReading : public SurveyFiles {
 protected:
  /// What the program says on standard error about such a file, which it refuses.
  std::string refusal(const std::string& bytes, std::vector<std::string> options = {}) {
    write("bad.csv", bytes);
    std::vector<std::string> arguments{"import", "--document", "d", "bad.csv"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const ProcessResult result = run(arguments);
    EXPECT_EQ(result.status, 3);
    EXPECT_FALSE(exists("d"));
    return result.err;
  }

  /// The points of the one group that the file gives.
  json pointsOf(const std::string& bytes, std::vector<std::string> options = {}) {
    write("s.csv", bytes);
    std::vector<std::string> arguments{"import", "--document", "d", "s.csv"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const ProcessResult result = run(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    return runJson({"groups", "--document", "d", "--points"})["groups"][0]["points"];
  }
};

json point(const std::string& name, double x, double y, double z, double w = 1.0) {
  return {{"name", name}, {"x", x}, {"y", y}, {"z", z}, {"w", w}};
}

TEST_F(SurveyReading, AFileWithAHeaderIsRegisteredLikeThePlainOne) {
  write("station.csv",
        "Punkt;Hochwert;Rechtswert;Höhe;Code\r\nP1;200,0;100,0;300;a\r\nP2;200;110;300;b\r\n"
        "P3;210;100;300;c\r\nP4;200;100;310,00;d\r\n");
  const ProcessResult result = run({"register", "--base", "base", "base.txt", "station.csv"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(result.err, IsEmpty());
  EXPECT_THAT(result.out, HasSubstr("  station.csv: UTF-8, semicolons, decimal comma; columns name,y,x,z,-; header "
                                    "\"Punkt\", \"Hochwert\",\n    \"Rechtswert\", \"Höhe\", \"Code\"\n"));
  const json rms = runJson({"register", "--base", "base", "base.txt", "station.csv"})["groups"];
  EXPECT_EQ(rms.size(), 2u);
}

TEST_F(SurveyReading, WhatAFileWasReadAsIsToldToPrograms) {
  write("s.csv", "# a\n\nName,X,Y,Z\nA,1,2,3\nB,1,2,3\nC,1,2,3\n");
  const json file = runJson({"import", "--document", "d", "s.csv"})["files"][0];
  EXPECT_EQ(file["points"], 3);
  EXPECT_EQ(file["lines"], 6);
  EXPECT_EQ(file["reading"], json::parse(R"({"encoding":"ASCII","mark":false,"separator":"comma","decimal":"point",)"
                                         R"("columns":"name,x,y,z","header":["Name","X","Y","Z"],"unit":"m",)"
                                         R"("comments":1,"blankLines":1})"));
}

TEST_F(SurveyReading, AFileOfTheModuleIsLeftToIt) {
  EXPECT_EQ(runJson({"import", "--document", "d", "base.txt"})["files"][0]["reading"], json());
}

TEST_F(SurveyReading, ColumnsAreTakenAsTheUserNamesThem) {
  EXPECT_EQ(pointsOf("1,2,3,4,5\n", {"--columns", "name,n,e,h,-"}), json::array({point("1", 3, 2, 4)}));
}

TEST_F(SurveyReading, ColumnsAndALayoutExcludeEachOther) {
  const ProcessResult result = run({"import", "--document", "d", "base.txt", "--columns", "name,x,y,z", "--xyz", "a"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.err,
            "tiepoint: --columns says what the columns are, and so does a layout; leave one of the two out\n");
}

TEST_F(SurveyReading, MistakesInTheOptionsAreUsage) {
  const struct {
    std::vector<std::string> options;
    const char* complaint;
  } rows[] = {
      {{"--columns", "name,x,y"}, "tiepoint: --columns name,x,y: none of \"name\", \"x\", \"y\" is z or a height\n"},
      {{"--decimal", "dot"}, "tiepoint: --decimal dot: no such mark; choose point or comma\n"},
      {{"--encoding", "koi8"},
       "tiepoint: --encoding koi8: no such encoding; choose utf-8, utf-16le, utf-16be, windows-1251 or windows-1252\n"},
      {{"--input-unit", "cm"},
       "tiepoint: --input-unit cm: no such unit; choose m, mm, ft (0.3048 m) or usft (1200/3937 m)\n"},
  };
  for (const auto& row : rows) {
    std::vector<std::string> arguments{"import", "--document", "d", "base.txt"};
    arguments.insert(arguments.end(), row.options.begin(), row.options.end());
    const ProcessResult result = run(arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, row.complaint);
  }
}

TEST_F(SurveyReading, FeetBecomeMetresInFilesOfTheModuleToo) {
  EXPECT_EQ(pointsOf("A 10 100 1000\n", {"--input-unit", "ft"}), json::array({point("A", 3.048, 30.48, 304.8)}));
}

TEST_F(SurveyReading, APointNumberInFeetIsAName) {
  EXPECT_EQ(pointsOf("1 1000 2000 3000\n", {"--input-unit", "mm"}), json::array({point("1", 1, 2, 3)}));
}

TEST_F(SurveyReading, AUnitOfTheFilesAndAnotherOfTheResultsExcludeEachOther) {
  const ProcessResult result = run({"register", "--input-unit", "ft", "--unit", "mm", "base.txt", "shifted.txt"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.err, "tiepoint: --input-unit ft: the points come out in metres; leave --unit mm out\n");
}

TEST_F(SurveyReading, EveryLineThatCantBeReadIsNamed) {
  EXPECT_EQ(refusal("P1 0 0 0\nP2 10 0\nP3 0 10 0\n\nP4 0 x 10\nP5 1 1 1\n"),
            "tiepoint: bad.csv: 2 lines can't be read: line 2 has 3 fields, expected 4; line 5: \"x\" in column 3 (y) "
            "isn't a number\n");
}

TEST_F(SurveyReading, AmbiguousColumnsAreAskedFor) {
  EXPECT_EQ(
      refusal("# hall\n1 2 3 4\n"),
      "tiepoint: bad.csv: ambiguous: it reads as name,x,y,z divided at blanks, x,y,z,w divided at blanks, x,y,z,- "
      "divided at blanks; say which is meant, such as --columns name,x,y,z\n");
}

TEST_F(SurveyReading, AmbiguousCommasAreAskedFor) {
  EXPECT_EQ(refusal("A 1,234 2,345 3,456\n"),
            "tiepoint: bad.csv: ambiguous: every decimal comma could stand between thousands, as in 1,234; say "
            "--decimal comma if it doesn't\n");
  EXPECT_EQ(pointsOf("A 1,250 2,500 3,750\n", {"--decimal", "comma"}), json::array({point("A", 1.25, 2.5, 3.75)}));
}

TEST_F(SurveyReading, AnAmbiguousEncodingIsAskedForWithAName) {
  EXPECT_EQ(
      refusal("Name,X,Y,Z\n\xD2"
              "1,1,2,3\n"),
      "tiepoint: bad.csv: ambiguous: its names read as windows-1251 (\"Т1\"), windows-1252 (\"Ò1\"); say which is "
      "meant, such as --encoding windows-1251\n");
}

TEST_F(SurveyReading, NamesKeepEveryLetterOfEveryScript) {
  const json points = pointsOf("Name;X;Y;Z\nHöhe 1;1;2;3\n測站, \"7\";1;2;3\nТочка;1;2;3\n\xF0\x9F\x98\x80;1;2;3\n");
  EXPECT_EQ(points, json::array({point("Höhe 1", 1, 2, 3), point("測站, \"7\"", 1, 2, 3), point("Точка", 1, 2, 3),
                                 point("\xF0\x9F\x98\x80", 1, 2, 3)}));
}

TEST_F(SurveyReading, NamesInUtf8ComeRightInFilesOfTheModuleToo) {
  EXPECT_EQ(pointsOf("Пункт 1 2 3\nHöhe 1 2 3\n"), json::array({point("Пункт", 1, 2, 3), point("Höhe", 1, 2, 3)}));
}

TEST_F(SurveyReading, ANameThatLooksLikeAStandInStaysAsItWasWritten) {
  EXPECT_EQ(pointsOf("_x0020_ 1 2 3\n"), json::array({point("_x0020_", 1, 2, 3)}));
}

/// Two stations whose names and groups no code page of the module holds.
class ForeignNames : public SurveyReading {
 protected:
  ForeignNames() {
    write("測站 1.csv", "Name;X;Y;Z\nHöhe 1;0;0;0\n測;10;0;0\nC;0;10;0\nD;0;0;10\n");
    write("測站 2.csv", "Name;X;Y;Z\nHöhe 1;5;0;0\n測;15;0;0\nC;5;10;0\nD;5;0;10\n");
  }

  ProcessResult registered(std::vector<std::string> options) {
    std::vector<std::string> arguments{"register", "測站 1.csv", "測站 2.csv", "--base", "測站 1"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return run(arguments);
  }
};

TEST_F(ForeignNames, AreShownInTheSummary) {
  const ProcessResult result = registered({});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.err, IsEmpty());
  EXPECT_THAT(result.out, HasSubstr("with base 測站 1"));
  EXPECT_THAT(result.out, HasSubstr("Höhe 1"));
  EXPECT_THAT(result.out, Not(HasSubstr("_x")));
}

TEST_F(ForeignNames, ArePrintedForPrograms) {
  const ProcessResult result = registered({"--json", "--quiet", "--exclude", "測站 2:D"});
  EXPECT_EQ(result.status, 0) << result.err;
  const json all = json::parse(result.out);
  EXPECT_THAT(result.out, Not(HasSubstr("_x")));
  EXPECT_EQ(all["points"][0]["name"], "Höhe 1");
}

TEST_F(ForeignNames, StandInTheFilesOfResults) {
  const ProcessResult result = registered({"--matrices", "out", "--transforms", "t.json", "--report", "r.html",
                                           "--common-points", "c.txt", "--matrix-format", "4x4"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_TRUE(exists("out/測站 2.txt"));
  EXPECT_THAT(read("t.json"), HasSubstr("測站 2"));
  EXPECT_THAT(read("r.html"), HasSubstr("Höhe 1"));
  EXPECT_THAT(read("r.html"), Not(HasSubstr("_x")));
  EXPECT_THAT(readText("c.txt"), HasSubstr("\"Höhe 1\" "));
  EXPECT_THAT(readText("c.txt"), HasSubstr("\n測 "));
}

TEST_F(ForeignNames, ComeBackFromTheFileOfCommonPoints) {
  ASSERT_EQ(registered({"--common-points", "c.txt"}).status, 0);
  ASSERT_EQ(run({"import", "--document", "d", "c.txt", "--columns", "name,x,y,z,w"}).status, 0);
  const json points = runJson({"groups", "--document", "d", "--points"})["groups"][0]["points"];
  EXPECT_EQ(points.size(), 4u);
  EXPECT_EQ(points[0]["name"], "Höhe 1");
}

TEST_F(ForeignNames, NameCloudsThatMoveWithTheirGroup) {
  write("cloud.xyz", "0 0 0\n");
  const ProcessResult result = registered({"--cloud", "測站 2=cloud.xyz", "--apply", "--document", "d", "--json"});
  EXPECT_EQ(result.status, 0) << result.err;
  const json cloud = json::parse(result.out)["clouds"][0];
  EXPECT_EQ(cloud["name"], "測站 2");
  EXPECT_EQ(cloud["move"], "moved");
  EXPECT_EQ(runJson({"clouds", "--document", "d"})["clouds"][0]["name"], "測站 2");
}

TEST_F(SurveyReading, AFileWithoutLineEndsIsRefusedAtTheLimit) {
  EXPECT_EQ(refusal(std::string(4u << 20, '1')),
            "tiepoint: bad.csv: line 1 is longer than 1048576 bytes, so this isn't a survey file\n");
  EXPECT_EQ(refusal("A 1 2 3\n" + std::string((1u << 20) + 1, '1')),
            "tiepoint: bad.csv: 1 line can't be read: line 2 is longer than 1048576 bytes, so this isn't a survey "
            "file\n");
}

// The file takes no room on the disk.
TEST_F(SurveyReading, AGigabyteWithoutALineEndIsRefusedAtOnce) {
  write("large.txt", "P1");
  std::filesystem::resize_file(folder.path() / "large.txt", std::uintmax_t{1} << 30);
  const ProcessResult result = run({"import", "--document", "d", "large.txt"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "tiepoint: large.txt: line 1 is longer than 1048576 bytes, so this isn't a survey file\n");
}

}  // namespace

#include "workbench/report/json_parts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tiepoint::workbench {
namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();

OrderedJson parsed(const char* text) { return OrderedJson::parse(text); }

TEST(JsonNumber, ReadsBackTheSame) {
  for (const double value : {0.1, 1.0 / 3.0, 500000.09999999998, -0.0, 5e-324, 1.7976931348623157e308}) {
    EXPECT_EQ(OrderedJson::parse(jsonNumber(value).dump()).get<double>(), value);
  }
}

TEST(JsonNumber, IsATextForWhatJsonLacks) {
  EXPECT_EQ(jsonNumber(std::nan("")), "nan");
  EXPECT_EQ(jsonNumber(infinite), "inf");
  EXPECT_EQ(jsonNumber(-infinite), "-inf");
}

TEST(JsonNumber, IsNullForNothing) {
  EXPECT_TRUE(jsonNumber(std::optional<double>()).is_null());
  EXPECT_EQ(jsonNumber(std::optional<double>(2.5)), 2.5);
}

TEST(JsonPoint, HasThreeNumbers) { EXPECT_EQ(jsonPoint({1, -2.5, infinite}), parsed(R"([1.0, -2.5, "inf"])")); }

TEST(JsonVector, HasThreeNumbersOrIsNull) {
  EXPECT_EQ(jsonVector(Eigen::Vector3d(1, -2.5, infinite)), parsed(R"([1.0, -2.5, "inf"])"));
  EXPECT_EQ(jsonVector(std::optional(Eigen::Vector3d(1, 2, 3))), parsed("[1.0, 2.0, 3.0]"));
  EXPECT_TRUE(jsonVector(std::optional<Eigen::Vector3d>()).is_null());
}

TEST(JsonRows, StandRowByRow) {
  Eigen::Matrix<double, 2, 3> matrix;
  matrix << 1, 2, 3, 4, 5, infinite;
  EXPECT_EQ(jsonRows(matrix), parsed(R"([[1.0, 2.0, 3.0], [4.0, 5.0, "inf"]])"));
}

TEST(JsonMatrix, StandsRowByRow) {
  OdGeMatrix3d matrix;
  matrix(0, 3) = 10.0;
  matrix(1, 0) = -0.5;
  EXPECT_EQ(jsonMatrix(matrix), parsed("[[1.0, 0.0, 0.0, 10.0], [-0.5, 1.0, 0.0, 0.0], [0.0, 0.0, 1.0, 0.0], "
                                       "[0.0, 0.0, 0.0, 1.0]]"));
}

TEST(JsonRms, HasCountMeanRmsAndLargest) {
  EXPECT_EQ(jsonRms(Rms{4, 0.5, 0.75, 0.25}).dump(), R"({"points":4,"mean":0.25,"rms":0.5,"largest":0.75})");
  EXPECT_TRUE(jsonRms(std::nullopt).is_null());
}

TEST(JsonImport, TellsOfEachFile) {
  ImportReport import;
  ImportedFile& file = import.files.emplace_back();
  file.path = "a/S1.txt";
  file.group = "S1";
  file.layout = Layout::xyzw;
  file.lines = 8;
  file.points = 7;
  import.messages = {"Imported"};
  EXPECT_EQ(jsonImport(import).dump(),
            R"({"files":[{"path":"a/S1.txt","layout":"XYZW","group":"S1","lines":8,)"
            R"("points":7,"stored":true,"stoppedAt":null,"reading":null}],"messages":["Imported"]})");
}

TEST(JsonImport, TellsWhereTheReadingStopped) {
  ImportReport import;
  ImportedFile& file = import.files.emplace_back();
  file.stored = false;
  file.stop.emplace();
  file.stop->kind = LineFaultKind::blank;
  file.stop->line = 3;
  const OrderedJson json = jsonImport(import)["files"][0];
  EXPECT_EQ(json["stored"], false);
  EXPECT_EQ(json["stoppedAt"], parsed(R"({"line": 3, "reason": "is blank; take it out"})"));
}

TEST(JsonCloud, TellsWhatBecameOfIt) {
  CloudReport cloud;
  cloud.name = "S1";
  cloud.source = "S1.xyz";
  cloud.move = CloudMove::moved;
  const OrderedJson json = jsonCloud(cloud);
  EXPECT_EQ(json["name"], "S1");
  EXPECT_EQ(json["source"], "S1.xyz");
  EXPECT_EQ(json["matrix"], jsonMatrix(OdGeMatrix3d()));
  EXPECT_TRUE(json["copy"].is_null());
}

TEST(JsonCloud, HasAKeyForEveryMove) {
  CloudReport cloud;
  const auto keyOf = [&](CloudMove move) {
    cloud.move = move;
    return jsonCloud(cloud)["move"];
  };
  EXPECT_EQ(keyOf(CloudMove::moved), "moved");
  EXPECT_EQ(keyOf(CloudMove::notAsked), "not-asked");
  EXPECT_EQ(keyOf(CloudMove::base), "base");
  EXPECT_EQ(keyOf(CloudMove::notRegistered), "not-registered");
  EXPECT_EQ(keyOf(CloudMove::noGroup), "no-group");
}

TEST(JsonCloud, CountsWhatWasCopied) {
  CloudReport cloud;
  cloud.copy = CloudCopy{"moved/S1.xyz", 12, 3};
  EXPECT_EQ(jsonCloud(cloud)["copy"], parsed(R"({"path": "moved/S1.xyz", "points": 12, "otherLines": 3})"));
}

TEST(JsonText, IsIndentedAndEndsWithALineFeed) {
  EXPECT_EQ(jsonText(parsed(R"({"b": [1, 2], "a": null})")), "{\n  \"b\": [\n    1,\n    2\n  ],\n  \"a\": null\n}\n");
}

TEST(JsonText, ReplacesBytesThatArentUtf8) { EXPECT_EQ(jsonText(OrderedJson("T\xFF")), "\"T\xEF\xBF\xBD\"\n"); }

}  // namespace
}  // namespace tiepoint::workbench

// The plant hall, adjusted with its files in one order and in another.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "workbench/cli/adjusted_survey_files.h"

namespace {

using nlohmann::json;

const std::string hall = EXAMPLES_FOLDER "/plant_hall";

/// The last three stations have weights.
bool isWeighted(const std::string& station) { return station > "S5"; }

std::string fileOf(const std::string& station) {
  return hall + (isWeighted(station) ? "/nxyzw/" : "/nxyz/") + station + ".txt";
}

json adjusted(const std::vector<std::string>& stations, std::vector<std::string> more) {
  std::vector<std::string> arguments{"register", "--method", "adjust", "--json", "--quiet"};
  for (const std::string& station : stations) {
    arguments.insert(arguments.end(), {isWeighted(station) ? "--nxyzw" : "--nxyz", fileOf(station)});
  }
  arguments.insert(arguments.end(), more.begin(), more.end());
  const ProcessResult result = runTiepoint(arguments);
  EXPECT_EQ(result.status, 0) << result.err;
  return json::parse(result.out);
}

const std::vector<std::string> inOrder{"S1", "S2", "S3", "S4", "S5", "S6", "S7", "S8"};
const std::vector<std::string> mixed{"S7", "S3", "S8", "S1", "S5", "S2", "S6", "S4"};

/// Of lengths and angles; of larger numbers of the larger one.
constexpr double tolerance = 1e-9;

/// Counts the numbers that it compares. A text, a truth and a null must be the same.
std::size_t expectAlike(const json& a, const json& b, const std::string& where) {
  if (a.is_number_float() && b.is_number_float()) {
    const double first = a, second = b;
    EXPECT_NEAR(first, second, tolerance * std::max({1.0, std::abs(first), std::abs(second)})) << where;
    return 1;
  }
  if (!a.is_structured() || a.size() != b.size() || a.type() != b.type()) {
    EXPECT_EQ(a, b) << where;
    return 0;
  }
  std::size_t count = 0;
  for (const auto& [key, value] : a.items()) {
    const json& other = a.is_array() ? b[std::stoul(key)] : b.at(key);
    count += expectAlike(value, other, std::string(where).append("/").append(key));
  }
  return count;
}

/// The axis of a rotation's uncertainty points to either side.
json withoutSigns(json group) {
  if (group["adjusted"].is_null()) return group;
  for (json& part : group["adjusted"]["rotationAxis"]) part = std::abs(part.get<double>());
  return group;
}

TEST(AdjustedPlantHall, TheOrderOfTheFilesChangesNoFigure) {
  const std::vector<std::string> more{"--base", "S1", "--sigma", "0.001", "--trace", "S4:T13"};
  json a = adjusted(inOrder, more), b = adjusted(mixed, more);
  std::size_t compared = 0;
  for (const json& group : a["groups"]) {
    compared += expectAlike(withoutSigns(group), withoutSigns(named(b["groups"], group["name"])), group["name"]);
  }
  for (const json& point : a["points"]) {
    compared += expectAlike(point, pointOf(b, point["group"], point["name"]), point["name"]);
  }
  for (const json& target : a["commonPoints"]) {
    compared += expectAlike(target, named(b["commonPoints"], target["name"]), target["name"]);
  }
  for (json* const result : {&a, &b}) {
    json& stations = (*result)["adjustment"]["trace"][0]["stations"];
    std::sort(stations.begin(), stations.end(), [](const json& s, const json& t) { return s["name"] < t["name"]; });
    // What rounding leaves of an eigenvalue that is 0.
    json& certificate = (*result)["adjustment"]["certificate"];
    EXPECT_LT(certificate["gap"], tolerance * (*result)["adjustment"]["sumOfSquares"].get<double>());
    certificate.erase("gap");
  }
  compared += expectAlike(a["adjustment"], b["adjustment"], "adjustment");
  EXPECT_GT(compared, 3000u);
}

TEST(AdjustedPlantHall, WithoutABaseTheFirstStationOfTheDrawingGivesTheSystemAndTheTestsAreTheSame) {
  const json a = adjusted(inOrder, {"--sigma", "0.001"}), b = adjusted(mixed, {"--sigma", "0.001"});
  EXPECT_EQ(a["adjustment"]["datum"]["frame"], "S1");
  EXPECT_EQ(b["adjustment"]["datum"]["frame"], "S3") << "files without weights come first";
  EXPECT_TRUE(motionOf(named(b["groups"], "S3")).matrix().isIdentity(0.0));
  std::size_t compared = 0;
  for (const json& point : a["points"]) {
    const json other = pointOf(b, point["group"], point["name"]);
    compared += expectAlike(point["discrepancy"], other["discrepancy"], point["name"]);
    for (const char* key : {"leastRedundancy", "statistic", "p", "rejected", "detectable", "biasToNoise"}) {
      compared += expectAlike(point["adjusted"][key], other["adjusted"][key], point["name"]);
    }
  }
  EXPECT_GT(compared, 400u);
  expectAlike(a["adjustment"]["sumOfSquares"], b["adjustment"]["sumOfSquares"], "sumOfSquares");
  expectAlike(a["adjustment"]["suspect"], b["adjustment"]["suspect"], "suspect");
}

}  // namespace

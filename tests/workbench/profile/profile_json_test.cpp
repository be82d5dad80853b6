#include "workbench/profile/profile_json.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

namespace tiepoint::workbench {
namespace {

/// What is said of a text that is no profile.
std::string complaintOf(const std::string& text) {
  try {
    profileFromJson(text, "p.json");
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "nothing";
}

TEST(ProfileJson, IsIndentedAndInAscendingOrder) {
  const ProfileSections sections{{"b", {{"text", "Т1"}, {"real", 0.5}, {"Whole", 7}}}, {"a", {}}};
  EXPECT_EQ(jsonFromProfile(sections),
            "{\n  \"a\": {},\n  \"b\": {\n    \"Whole\": 7,\n    \"real\": 0.5,\n    \"text\": \"Т1\"\n  }\n}\n");
}

TEST(ProfileJson, OfNoSectionsIsAnEmptyObject) {
  EXPECT_EQ(jsonFromProfile({}), "{}\n");
  EXPECT_TRUE(profileFromJson("{}", "p.json").empty());
}

TEST(ProfileJson, KeepsARealNumberApartFromAWholeOne) {
  EXPECT_EQ(jsonFromProfile({{"s", {{"k", 2.0}}}}), "{\n  \"s\": {\n    \"k\": 2.0\n  }\n}\n");
  EXPECT_EQ(profileFromJson(R"({"s": {"k": 2.0}})", "p.json").at("s").at("k"), ProfileValue(2.0));
  EXPECT_EQ(profileFromJson(R"({"s": {"k": 2}})", "p.json").at("s").at("k"), ProfileValue(2));
}

TEST(ProfileJson, ReadsWholeNumbersOfThirtyTwoBitsAsWhole) {
  const auto read = [](const char* number) {
    return profileFromJson(std::string("{\"s\": {\"k\": ") + number + "}}", "p.json").at("s").at("k");
  };
  EXPECT_EQ(read("2147483647"), ProfileValue(2147483647));
  EXPECT_EQ(read("-2147483648"), ProfileValue(std::numeric_limits<int>::min()));
  EXPECT_EQ(read("2147483648"), ProfileValue(2147483648.0));
  EXPECT_EQ(read("-2147483649"), ProfileValue(-2147483649.0));
  EXPECT_EQ(read("18446744073709551615"), ProfileValue(18446744073709551615.0));
}

TEST(ProfileJson, OfAKeyThatStandsTwiceTheLastCounts) {
  EXPECT_EQ(profileFromJson(R"({"s": {"k": 1, "k": 2}})", "p.json").at("s").at("k"), ProfileValue(2));
}

TEST(ProfileJson, NamesTheLineThatIsWrong) {
  EXPECT_EQ(complaintOf("{\n\"s\": {\n\"k\": 1,,\n}}"), "p.json: not a profile: line 3 isn't JSON");
  EXPECT_EQ(complaintOf(""), "p.json: not a profile: line 1 isn't JSON");
  EXPECT_EQ(complaintOf("{} {}"), "p.json: not a profile: line 1 isn't JSON");
  EXPECT_EQ(complaintOf("{\"s\": {\"k\": \"\xFF\"}}"), "p.json: not a profile: line 1 isn't JSON");
}

TEST(ProfileJson, RefusesWhatHasNoForm) {
  const double infinity = std::numeric_limits<double>::infinity();
  for (const double number : {infinity, -infinity, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_THROW(jsonFromProfile({{"s", {{"k", number}}}}), std::runtime_error) << number;
  }
  EXPECT_THROW(jsonFromProfile({{"s", {{"k", "\xFF"}}}}), std::runtime_error);
  EXPECT_THROW(jsonFromProfile({{"s", {{"\xFF", 1}}}}), std::runtime_error);
  EXPECT_THROW(jsonFromProfile({{"\xFF", {}}}), std::runtime_error);
}

}  // namespace
}  // namespace tiepoint::workbench

#include "workbench/profile/profile.h"

#include <gmock/gmock.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

#include "workbench/profile/profile_json.h"
#include "workbench/temporary_folder.h"

using namespace tiepoint::workbench;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

std::string refusalOf(const std::string& file) {
  try {
    const Profile profile(file);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "no refusal";
}

/// What a profile says of a file with that content.
std::string refusalOfContent(const std::string& content) {
  const TemporaryFolder folder;
  writeBytes(folder.file("p.json"), content);
  return refusalOf(folder.file("p.json"));
}

std::optional<ProfileValue> valueIn(const std::string& number) {
  const TemporaryFolder folder;
  writeBytes(folder.file("p.json"), "{\"s\": {\"k\": " + number + "}}");
  return Profile(folder.file("p.json")).get("s", "k");
}

}  // namespace

TEST(Profile, IsEmptyWithoutAFile) {
  const Profile profile;
  EXPECT_EQ(profile.get(registrationSection, "SizeLabel"), std::nullopt);
  EXPECT_FALSE(profile.hasSection(registrationSection));
}

TEST(Profile, GivesBackWhatWasSetInItsKind) {
  Profile profile;
  profile.set("s", "whole", 7);
  profile.set("s", "real", 7.0);
  profile.set("s", "text", std::string("seven"));
  EXPECT_EQ(profile.get("s", "whole"), ProfileValue(7));
  EXPECT_EQ(profile.get("s", "real"), ProfileValue(7.0));
  EXPECT_EQ(profile.get("s", "text"), ProfileValue(std::string("seven")));
}

TEST(Profile, GivesAnOfferedValueUntilItHasOneOfItsOwn) {
  Profile profile;
  profile.setDefault("s", "k", 3);
  EXPECT_EQ(profile.get("s", "k"), ProfileValue(3));
  profile.set("s", "k", 7);
  EXPECT_EQ(profile.get("s", "k"), ProfileValue(7));
  profile.remove("s", "k");
  EXPECT_EQ(profile.get("s", "k"), ProfileValue(3));
}

TEST(Profile, KeepsAnOfferedValueOutOfItsFile) {
  const TemporaryFolder folder;
  Profile profile(folder.file("p.json"));
  profile.setDefault("s", "k", 3);
  profile.set("t", "k", 7);
  profile.remove("s", "k");
  EXPECT_EQ(Profile(folder.file("p.json")).get("s", "k"), std::nullopt);
}

TEST(Profile, TakesAMissingFileForAnEmptyProfileAndMakesItAtTheFirstSet) {
  const TemporaryFolder folder;
  Profile profile(folder.file("p.json"));
  EXPECT_THAT(folder.names(), ElementsAre());
  profile.set("PointClouds\\Registration", "SizeLabel", 12);
  EXPECT_EQ(readBytes(folder.file("p.json")),
            "{\n  \"PointClouds\\\\Registration\": {\n    \"SizeLabel\": 12\n  }\n}\n");
  EXPECT_THAT(folder.names(), ElementsAre("p.json"));
}

TEST(Profile, IsReadByTheNextOneWithEveryValueInItsKind) {
  const TemporaryFolder folder;
  {
    Profile profile(folder.file("p.json"));
    profile.set("a", "whole", -2147483647 - 1);
    profile.set("a", "real", 3.0);
    profile.set("a", "negative zero", -0.0);
    profile.set("b", "text", std::string("Ж\n\"\\"));
  }
  const Profile profile(folder.file("p.json"));
  EXPECT_EQ(profile.get("a", "whole"), ProfileValue(-2147483647 - 1));
  EXPECT_EQ(profile.get("a", "real"), ProfileValue(3.0));
  EXPECT_TRUE(std::signbit(std::get<double>(*profile.get("a", "negative zero"))));
  EXPECT_EQ(profile.get("b", "text"), ProfileValue(std::string("Ж\n\"\\")));
}

TEST(Profile, ReadsWholeNumbersThatFitAsWholeAndAllOthersAsDoubles) {
  EXPECT_EQ(valueIn("2147483647"), ProfileValue(2147483647));
  EXPECT_EQ(valueIn("-2147483648"), ProfileValue(-2147483647 - 1));
  EXPECT_EQ(valueIn("2147483648"), ProfileValue(2147483648.0));
  EXPECT_EQ(valueIn("-2147483649"), ProfileValue(-2147483649.0));
  EXPECT_EQ(valueIn("18446744073709551615"), ProfileValue(18446744073709551615.0));
  EXPECT_EQ(valueIn("123456789012345678901234567890"), ProfileValue(123456789012345678901234567890.0));
  EXPECT_EQ(valueIn("10.0"), ProfileValue(10.0));
  EXPECT_EQ(valueIn("1e1"), ProfileValue(10.0));
  EXPECT_EQ(valueIn("0.001"), ProfileValue(0.001));
}

TEST(Profile, ReplacesAValueByOneOfAnotherKind) {
  Profile profile;
  profile.set("s", "k", 1);
  profile.set("s", "k", std::string("one"));
  EXPECT_EQ(profile.get("s", "k"), ProfileValue(std::string("one")));
}

TEST(Profile, RemovesAKeyAndLeavesTheOthers) {
  const TemporaryFolder folder;
  Profile profile(folder.file("p.json"));
  profile.set("s", "gone", 1);
  profile.set("s", "stays", 2);
  profile.remove("s", "gone");
  const Profile next(folder.file("p.json"));
  EXPECT_EQ(next.get("s", "gone"), std::nullopt);
  EXPECT_EQ(next.get("s", "stays"), ProfileValue(2));
}

TEST(Profile, WritesNothingForTheRemovalOfAKeyThatIsNotThere) {
  const TemporaryFolder folder;
  Profile profile(folder.file("p.json"));
  profile.remove("s", "k");
  EXPECT_THAT(folder.names(), ElementsAre());
}

TEST(Profile, GetsItsMadeSectionIntoTheFileWithTheNextSet) {
  const TemporaryFolder folder;
  Profile profile(folder.file("p.json"));
  profile.addSection("made");
  EXPECT_THAT(folder.names(), ElementsAre());
  profile.set("other", "k", 1);
  EXPECT_TRUE(Profile(folder.file("p.json")).hasSection("made"));
}

TEST(Profile, KeepsAllValuesWhenTheFileCannotBeWritten) {
  const TemporaryFolder folder;
  writeBytes(folder.file("p.json"), "{\"s\": {\"k\": 1}}");
  Profile profile(folder.file("p.json"));
  std::filesystem::remove(folder.path() / "p.json");
  std::filesystem::create_directories(folder.path() / "p.json" / "in the way");
  EXPECT_THROW(profile.set("s", "k", 2), std::runtime_error);
  EXPECT_THROW(profile.set("s", "another", 2), std::runtime_error);
  EXPECT_THROW(profile.remove("s", "k"), std::runtime_error);
  EXPECT_EQ(profile.get("s", "k"), ProfileValue(1));
  EXPECT_EQ(profile.get("s", "another"), std::nullopt);
}

TEST(Profile, RefusesNumbersThatAreNotFinite) {
  Profile profile;
  EXPECT_THROW(profile.set("s", "k", std::numeric_limits<double>::infinity()), std::runtime_error);
  EXPECT_THROW(profile.set("s", "k", std::numeric_limits<double>::quiet_NaN()), std::runtime_error);
  EXPECT_EQ(profile.get("s", "k"), std::nullopt);
}

TEST(Profile, RefusesBytesThatAreNotUtf8) {
  Profile profile;
  EXPECT_THROW(profile.set("s", "k", std::string("\xff")), std::runtime_error);
  EXPECT_THROW(profile.set("s", "\xc0\x80", 1), std::runtime_error);
  EXPECT_FALSE(profile.hasSection("s"));
}

TEST(Profile, NamesTheFileAndTheLineThatIsNotJson) {
  EXPECT_THAT(refusalOfContent("{\n\"s\": {\n\"k\": ,\n"),
              AllOf(HasSubstr("p.json: not a profile: line 3 isn't JSON"), Not(HasSubstr("\n"))));
  EXPECT_THAT(refusalOfContent(""), HasSubstr("line 1 isn't JSON"));
  EXPECT_THAT(refusalOfContent("{\"s\": {\"k\": \"\xff\"}}"), HasSubstr("line 1 isn't JSON"));
}

TEST(Profile, NamesFileSectionAndKeyOfAValueOfAnotherKind) {
  for (const std::string kind : {"true", "false", "null", "[1]", "{\"a\": 1}"}) {
    EXPECT_THAT(refusalOfContent("{\"A\\\\B\": {\"SizeLabel\": " + kind + "}}"),
                HasSubstr("p.json: not a profile: the value of \"SizeLabel\" in the section \"A\\B\" is neither a "
                          "number nor a string"));
  }
}

TEST(Profile, NamesASectionThatIsNoObject) {
  EXPECT_THAT(refusalOfContent("{\"s\": 1}"), HasSubstr("p.json: not a profile: the section \"s\" isn't an object"));
  EXPECT_THAT(refusalOfContent("[]"), HasSubstr("p.json: not a profile: it isn't an object of sections"));
}

TEST(Profile, NamesAFileWhoseNumberIsTooLargeForADouble) {
  EXPECT_THAT(refusalOfContent("{\"s\": {\"k\": 1e400}}"), HasSubstr("it has a number that is too large"));
}

TEST(Profile, NamesAFolderThatIsTakenForAFile) {
  const TemporaryFolder folder;
  EXPECT_THAT(refusalOf(folder.path().u8string()),
              StartsWith(folder.path().u8string() + ": the profile can't be read; "));
}

RC_GTEST_PROP(ProfileJson, ReadsBackEveryFiniteNumberInItsKind, ()) {
  const auto whole = *rc::gen::arbitrary<int>();
  const auto real = *rc::gen::suchThat(rc::gen::arbitrary<double>(), [](double v) { return std::isfinite(v); });
  const ProfileSections sections{{"s", {{"whole", whole}, {"real", real}}}};
  RC_ASSERT(profileFromJson(jsonFromProfile(sections), "p.json") == sections);
}

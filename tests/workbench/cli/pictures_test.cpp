// tiepoint render, and the picture of tiepoint register.
#include <gmock/gmock.h>

#include "workbench/cli/survey_files.h"
#include "workbench/picture/picture_comparison.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using tiepoint::testing::looksAsExpected;
using tiepoint::testing::Pixels;
using tiepoint::testing::pixelsOf;

constexpr const char* pngStart = "\x89PNG\r\n\x1A\n";

class Pictures : public SurveyFiles {
 protected:
  void makeDrawing() { EXPECT_EQ(run({"import", "--quiet", "--document", "d.tiepoint", "base.txt"}).status, 0); }

  ProcessResult render(std::vector<std::string> more) const {
    more.insert(more.begin(), {"render", "--document", "d.tiepoint"});
    return run(more);
  }
  ProcessResult registered(std::vector<std::string> more) const {
    more.insert(more.begin(), {"register", "--quiet", "--base", "base", "base.txt", "shifted.txt"});
    return run(more);
  }
  /// The one line that a mistake gets.
  static std::string refusal(const ProcessResult& result, int status) {
    EXPECT_EQ(result.status, status);
    EXPECT_THAT(result.out, IsEmpty());
    return result.err;
  }
};

/// How many pixels fulfil the test, left of where the legend may begin.
template <class Test>
int countOf(const Pixels& pixels, Test test) {
  constexpr int legendAtTheEarliest = 400;
  int count = 0;
  for (std::size_t i = 0; i < pixels.values.size(); i += 3) {
    if (static_cast<int>(i / 3) % pixels.width >= legendAtTheEarliest) continue;
    count += test(&pixels.values[i]) ? 1 : 0;
  }
  return count;
}

int redPixels(const Pixels& pixels) {
  return countOf(pixels, [](const unsigned char* rgb) { return rgb[0] > 200 && rgb[1] < 70 && rgb[2] < 70; });
}

/// Of crosses in red and yellow, whichever lie upon the others.
int warmPixels(const Pixels& pixels) {
  return countOf(pixels, [](const unsigned char* rgb) { return rgb[0] > 200 && rgb[2] < 120; });
}

TEST_F(Pictures, AreDrawnInEachFormatInTheSizeThatIsAskedFor) {
  makeDrawing();
  const ProcessResult result = render({"-o", "p.png", "--size", "640x480"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, IsEmpty());
  EXPECT_THAT(result.err, IsEmpty());
  EXPECT_THAT(read("p.png"), StartsWith(pngStart));
  EXPECT_EQ(pixelsOf(read("p.png")).width, 640);
  EXPECT_EQ(pixelsOf(read("p.png")).height, 480);
  EXPECT_EQ(render({"-o", "p.svg"}).status, 0);
  EXPECT_THAT(read("p.svg"), HasSubstr("viewBox=\"0 0 1200 800\""));
  EXPECT_EQ(render({"--output", "p.pdf", "--view", "iso"}).status, 0);
  EXPECT_THAT(read("p.pdf"), StartsWith("%PDF-"));
}

TEST_F(Pictures, ShowAGroupInTheColourThatTheModuleGivesIt) {
  makeDrawing();
  ASSERT_EQ(render({"-o", "p.png", "--size", "640x480"}).status, 0);
  // Crosses of 20 x 20 pixels, whose lines are a little wider than one.
  EXPECT_GT(redPixels(pixelsOf(read("p.png"))), 40);
}

TEST_F(Pictures, OfOneInputAreTheSameByteByByte) {
  makeDrawing();
  for (const std::string ending : {"png", "svg", "pdf"}) {
    ASSERT_EQ(render({"-o", "a." + ending}).status, 0);
    ASSERT_EQ(render({"-o", "b." + ending}).status, 0);
    EXPECT_TRUE(read("a." + ending) == read("b." + ending)) << ending;
    ASSERT_EQ(registered({"--picture", "c." + ending}).status, 0);
    ASSERT_EQ(registered({"--picture", "d." + ending}).status, 0);
    EXPECT_TRUE(read("c." + ending) == read("d." + ending)) << ending;
  }
}

TEST_F(Pictures, AreDrawnOfAnAdjustmentToo) {
  // The stations agree, so that what is red are crosses and no residuals.
  ASSERT_EQ(registered({"--method", "adjust", "--picture", "a.png"}).status, 0);
  EXPECT_THAT(read("a.png"), StartsWith(pngStart));
  EXPECT_GT(redPixels(pixelsOf(read("a.png"))), 40);
  ASSERT_EQ(registered({"--method", "adjust", "--picture", "b.png"}).status, 0);
  EXPECT_TRUE(read("a.png") == read("b.png"));
}

TEST_F(Pictures, OfAnAdjustmentShowNoPointWhereItsFileHasIt) {
  // Two common targets are enough for levelled stations alone.
  const auto drawn = [&](const char* lines, const std::string& picture) {
    write("shifted.txt", lines);
    EXPECT_EQ(registered({"--method", "adjust", "--level", "shifted", "--picture", picture}).status, 0);
    return read(picture);
  };
  const std::string one = drawn("P1 100 200 300\nP2 110 200 300\nQ 105 205 300\n", "a.png");
  const std::string other = drawn("P1 800 -400 64\nP2 810 -400 64\nQ 805 -395 64\n", "b.png");
  EXPECT_THAT(one, StartsWith(pngStart));
  EXPECT_TRUE(one == other);
}

TEST_F(Pictures, OfAnAdjustmentLeaveNothingInTheDrawing) {
  const ProcessResult result =
      registered({"--method", "adjust", "--picture", "p.png", "--document", "d.tiepoint", "--store", "merged"});
  ASSERT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(read("p.png"), StartsWith(pngStart));
  const nlohmann::json groups = runJson({"groups", "--document", "d.tiepoint"})["groups"];
  std::vector<std::string> stored;
  for (const auto& group : groups) stored.push_back(group["name"]);
  EXPECT_THAT(stored, ElementsAre("base", "shifted", "merged"));
}

TEST_F(Pictures, DontChangeTheDrawing) {
  makeDrawing();
  const std::string before = run({"groups", "--points", "--document", "d.tiepoint"}).out;
  ASSERT_EQ(render({"-o", "p.png"}).status, 0);
  EXPECT_EQ(run({"groups", "--points", "--document", "d.tiepoint"}).out, before);
}

TEST_F(Pictures, ReplaceAFileOnlyWhenForced) {
  makeDrawing();
  write("p.png", "mine");
  EXPECT_EQ(refusal(render({"-o", "p.png"}), 3), "tiepoint: --output: p.png: the file exists; --force replaces it\n");
  EXPECT_EQ(refusal(registered({"--picture", "p.png"}), 3),
            "tiepoint: --picture: p.png: the file exists; --force replaces it\n");
  EXPECT_EQ(read("p.png"), "mine");
  EXPECT_EQ(render({"-o", "p.png", "--force"}).status, 0);
  EXPECT_THAT(read("p.png"), StartsWith(pngStart));
}

TEST_F(Pictures, NeverReplaceWhatTheCommandReads) {
  write("d.png", "");
  std::filesystem::remove(std::filesystem::u8path(folder.file("d.png")));
  ASSERT_EQ(run({"import", "--quiet", "--document", "d.png", "base.txt"}).status, 0);
  EXPECT_EQ(refusal(run({"render", "--document", "d.png", "-o", "d.png", "--force"}), 3),
            "tiepoint: --output: d.png: this command reads that file; choose another path\n");
}

TEST_F(Pictures, RefuseMistakesInOneLine) {
  makeDrawing();
  EXPECT_EQ(refusal(render({"-o", "p.gif"}), 2), "tiepoint: --output p.gif: the file must end in .png, .svg or .pdf\n");
  EXPECT_EQ(refusal(render({"-o", "p.png", "--size", "100000x100000"}), 2),
            "tiepoint: --size 100000x100000: must have the form WxH, from 400x300 to 8000x8000 pixels\n");
  EXPECT_EQ(refusal(render({"-o", "p.png", "--view", "back"}), 2),
            "tiepoint: --view back: unknown; choose top, front, side, iso or fit\n");
  EXPECT_EQ(refusal(render({"-o", "p.png", "--unit", "ft"}), 2), "tiepoint: --unit ft: unknown; choose m or mm\n");
  EXPECT_EQ(refusal(render({}), 2), "tiepoint: --output is required; see tiepoint render --help\n");
  EXPECT_EQ(refusal(render({"-o", "nowhere/p.png"}), 3),
            "tiepoint: --output nowhere/p.png: there is no folder nowhere; create it first\n");
  EXPECT_EQ(refusal(registered({"--picture", "p.gif"}), 2),
            "tiepoint: --picture p.gif: the file must end in .png, .svg or .pdf\n");
  EXPECT_EQ(refusal(registered({"--picture-size", "640x480"}), 2), "tiepoint: --picture-size needs --picture FILE\n");
  EXPECT_EQ(refusal(registered({"--picture", "nowhere/p.png"}), 3),
            "tiepoint: --picture nowhere/p.png: there is no folder nowhere; create it first\n");
  EXPECT_FALSE(exists("p.png"));
}

TEST_F(Pictures, NeedADrawingWithPointsThatHaveAPlace) {
  EXPECT_THAT(refusal(render({"-o", "p.png"}), 3), HasSubstr("d.tiepoint"));
  write("cloud.xyz", "1 2 3\n");
  ASSERT_EQ(run({"clouds", "--document", "d.tiepoint", "--add", "base=cloud.xyz"}).status, 0);
  EXPECT_EQ(refusal(render({"-o", "p.png"}), 1),
            "tiepoint: d.tiepoint: the drawing holds no reference points to draw\n");
  write("nowhere.txt", "P1 nan 0 0\n");
  ASSERT_EQ(run({"import", "--quiet", "--document", "d.tiepoint", "nowhere.txt"}).status, 0);
  EXPECT_EQ(refusal(render({"-o", "p.png"}), 1), "tiepoint: no point has a position that can be shown\n");
  EXPECT_FALSE(exists("p.png"));
}

TEST_F(Pictures, ThatCantBeWrittenLeaveNothingBehind) {
  makeDrawing();
  ProcessSetup setup;
  setup.largestFile = 1000;
  const ProcessResult result = run({"render", "--document", "d.tiepoint", "-o", "p.png"}, setup);
  EXPECT_EQ(result.status, 3);
  EXPECT_THAT(result.err, StartsWith("tiepoint: --output: "));
  EXPECT_THAT(result.err, HasSubstr("p.png"));
  EXPECT_THAT(folder.names(), ElementsAre("base.txt", "d.tiepoint", "shifted.txt"));
}

TEST_F(Pictures, AreToldAmongTheResults) {
  const ProcessResult result = run({"register", "base.txt", "shifted.txt", "--picture", "p.png"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, HasSubstr("picture written to p.png\n"));
  EXPECT_EQ(runJson({"register", "base.txt", "shifted.txt", "--picture", "q.png"})["pictureFile"], "q.png");
  EXPECT_TRUE(runJson({"register", "base.txt", "shifted.txt"})["pictureFile"].is_null());
}

TEST_F(Pictures, AreNotDrawnOfWhatCantBeRegistered) {
  write("other.txt", "Q1 0 0 0\nQ2 1 0 0\nQ3 0 1 0\n");
  EXPECT_EQ(run({"register", "--quiet", "base.txt", "other.txt", "--picture", "p.png"}).status, 1);
  EXPECT_FALSE(exists("p.png"));
}

TEST_F(Pictures, LeaveOutGroupsThatAreNotRegistered) {
  // The third group lies far away and shares no name: among the others it would leave a dot of them.
  write("far.txt", "Q1 1e6 0 0\nQ2 1000010 0 0\nQ3 1e6 10 0\n");
  ASSERT_EQ(registered({"--picture", "two.png", "--picture-size", "640x480"}).status, 0);
  ASSERT_EQ(run({"register", "--quiet", "--base", "base", "base.txt", "shifted.txt", "far.txt", "--exclude", "far",
                 "--picture", "three.png", "--picture-size", "640x480"})
                .status,
            0);
  const int expected = warmPixels(pixelsOf(read("two.png")));
  EXPECT_GT(expected, 100);
  EXPECT_EQ(warmPixels(pixelsOf(read("three.png"))), expected);
}

TEST_F(Pictures, ShowTheClusterThatIsKept) {
  write("other.txt", "Q1 0 0 0\nQ2 1 0 0\nQ3 0 1 0\n");
  write("another.txt", "Q1 5 0 0\nQ2 6 0 0\nQ3 5 1 0\n");
  ASSERT_EQ(run({"register", "--quiet", "--keep-cluster", "0", "base.txt", "shifted.txt", "other.txt", "another.txt",
                 "--picture", "p.png", "--picture-size", "640x480"})
                .status,
            0);
  EXPECT_GT(warmPixels(pixelsOf(read("p.png"))), 100);
}

TEST_F(Pictures, ShowPointsThatWereNamedByMatching) {
  // Their places alone, so that the names have to be found.
  write("nameless.txt", "100 200 300\n113 200 300\n100 217 300\n100 200 323\n");
  write("named.txt", "P1 0 0 0\nP2 13 0 0\nP3 0 17 0\nP4 0 0 23\n");
  ASSERT_EQ(run({"register", "--quiet", "--match", "auto", "--base", "named", "named.txt", "--xyz", "nameless.txt",
                 "--picture", "p.png", "--picture-size", "640x480"})
                .status,
            0);
  EXPECT_GT(warmPixels(pixelsOf(read("p.png"))), 100);
}

TEST_F(Pictures, OfManyPointsHaveSmallerMarkersUnlessTheProfileSaysHowLarge) {
  std::string lines;
  for (int i = 0; i < 3000; ++i) {
    lines += "P" + std::to_string(i) + " " + std::to_string(i % 60) + " " + std::to_string(i / 60) + " 0\n";
  }
  write("many.txt", lines);
  write("profile.json", R"({"PointClouds\\Registration": {"SizeLabel": 10, "IsVisibleLabelText": 0}})");
  ASSERT_EQ(run({"import", "--quiet", "--document", "d.tiepoint", "many.txt"}).status, 0);
  const std::string profileBefore = read("profile.json");
  ASSERT_EQ(render({"-o", "small.png", "--size", "640x480"}).status, 0);
  ASSERT_EQ(render({"-o", "large.png", "--size", "640x480", "--profile", "profile.json"}).status, 0);
  EXPECT_GT(redPixels(pixelsOf(read("large.png"))), 2 * redPixels(pixelsOf(read("small.png"))));
  EXPECT_EQ(read("profile.json"), profileBefore);
}

TEST_F(Pictures, OfTheExamplesLookAsTheyDid) {
  const std::string hall = EXAMPLES_FOLDER "/plant_hall/";
  for (const auto& [size, name, factor] :
       {std::tuple{"640x480", "plant_hall_640x480.png", 2}, std::tuple{"1920x1080", "plant_hall_1920x1080.png", 4}}) {
    const ProcessResult result = run({"register",
                                      "--method",
                                      "pairwise",
                                      "--quiet",
                                      "--force",
                                      "--unit",
                                      "m",
                                      "--base",
                                      "S1",
                                      hall + "nxyz/S1.txt",
                                      hall + "nxyz/S2.txt",
                                      hall + "nxyz/S3.txt",
                                      hall + "nxyz/S4.txt",
                                      hall + "nxyz/S5.txt",
                                      "--nxyzw",
                                      hall + "nxyzw/S6.txt",
                                      hall + "nxyzw/S7.txt",
                                      hall + "nxyzw/S8.txt",
                                      "--picture",
                                      "hall.png",
                                      "--picture-view",
                                      "fit",
                                      "--picture-size",
                                      size});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(looksAsExpected(read("hall.png"), name, factor));
  }
  const std::string lidar = EXAMPLES_FOLDER "/lidar18/";
  ASSERT_EQ(
      run({"register", "--method", "pairwise", "--quiet", "--unit", "m", "--base", "reference", lidar + "reference.txt",
           lidar + "unregistered.txt", "--picture", "lidar.png", "--picture-size", "640x480"})
          .status,
      0);
  EXPECT_TRUE(looksAsExpected(read("lidar.png"), "lidar18_640x480.png", 2));
}

}  // namespace

#include "workbench/survey/sigmas_file.h"

#include <gmock/gmock.h>

#include "workbench/survey/refusal_of.h"
#include "workbench/temporary_folder.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;

/// A file of its own for one test.
class SigmasFile : public testing::Test {
 protected:
  std::vector<SigmaChoice> read(const std::string& bytes) {
    writeBytes(path, bytes);
    return readSigmasFile(path);
  }
  /// "GROUP|POINT=SIGMA" of each line.
  std::vector<std::string> sigmas(const std::string& bytes) {
    std::vector<std::string> texts;
    for (const SigmaChoice& choice : read(bytes)) {
      EXPECT_EQ(choice.points.readings.size(), 1u);
      const PointRef& ref = choice.points.readings.front();
      texts.push_back(ref.group + "|" + ref.point.value_or("(all)") + "=" + std::to_string(choice.sigma));
    }
    return texts;
  }
  Refusal refused(const std::string& bytes) {
    return refusalOf([&] { read(bytes); });
  }

  const TemporaryFolder folder;
  const std::string path = folder.file("sigmas.txt");
};

TEST_F(SigmasFile, GivesAGroupOrAPointItsSigma) {
  EXPECT_THAT(sigmas("# mm\nS1 0.5\n\nS1;T1;2 # far\r\nS2, T7, 0.25\n"),
              ElementsAre("S1|(all)=0.500000", "S1|T1=2.000000", "S2|T7=0.250000"));
}

TEST_F(SigmasFile, TakesNamesOfSeveralWordsInQuotationMarks) {
  EXPECT_THAT(sigmas("\"plant hall\" 1\n\"plant hall\" \"T 1\" 2\n\"S#1\" 1\n"),
              ElementsAre("plant hall|(all)=1.000000", "plant hall|T 1=2.000000", "S#1|(all)=1.000000"));
}

TEST_F(SigmasFile, TakesNamesThatReadAsNumbers) { EXPECT_THAT(sigmas("7 8 1\n"), ElementsAre("7|8=1.000000")); }

TEST_F(SigmasFile, SaysWhatWasGiven) {
  const std::vector<SigmaChoice> choices = read("S1 1\nS1 T1 1\n");
  EXPECT_EQ(choices[0].points.given, "S1");
  EXPECT_EQ(choices[1].points.given, "S1:T1");
}

TEST_F(SigmasFile, TakesAnySigmaAboveZero) {
  const std::vector<SigmaChoice> choices = read("S1 1e-9\nS2 1e9\n");
  EXPECT_EQ(choices[0].sigma, 1e-9);
  EXPECT_EQ(choices[1].sigma, 1e9);
}

TEST_F(SigmasFile, RefusesABadLine) {
  for (const char* line : {"S1", "S1 0", "S1 -1", "S1 nan", "S1 inf", "S1 1mm", "S1 T1 0", "S1 T1", "0.5", "S1 0,5",
                           "plant hall T1 1", "\"S1 1", "\"\" 1", "S1 \"\" 1", "S1 T1 1 2"}) {
    const Refusal refusal = refused(std::string("S1 1\n# two\n") + line + "\n");
    EXPECT_EQ(refusal.kind, RefusalKind::sigmasLine) << line;
    EXPECT_EQ(refusal.field, Field::sigmasFile) << line;
    EXPECT_EQ(refusal.given, path) << line;
    EXPECT_EQ(refusal.count, 3u) << line;
  }
}

TEST_F(SigmasFile, ThatIsMissingIsRefused) {
  const Refusal refusal = refusalOf([&] { readSigmasFile(path); });
  EXPECT_EQ(refusal.kind, RefusalKind::fileMissing);
  EXPECT_EQ(refusal.field, Field::sigmasFile);
}

}  // namespace
}  // namespace tiepoint::workbench

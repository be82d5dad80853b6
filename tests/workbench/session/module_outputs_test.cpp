#include "workbench/session/module_outputs.h"

#include <gmock/gmock.h>

#include <boost/filesystem/fstream.hpp>
#include <boost/filesystem/operations.hpp>

#include "workbench/session/workbench_session.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;

namespace fs = boost::filesystem;

/// A session that writes other files than it is asked for, as on a full disk.
class ClumsySession : public MirroredSession {
 public:
  explicit ClumsySession(Workbench& workbench) : MirroredSession(workbench.newSession()) {}

  bool saveCommonPointsFile(std::string name, std::string folder) override {
    usedFolder = folder;
    if (opens) write(fs::path(folder) / (name + ".txt"));
    return opens;
  }
  bool saveAllMatrices(std::string folder, std::uint64_t format) override {
    usedFolder = folder;
    usedFormat = format;
    write(fs::path(folder) / "A.txt");
    return true;
  }
  bool saveReport(std::string path, std::uint64_t format) override {
    usedFolder = fs::path(path).parent_path().string();
    usedFormat = format;
    if (opens) write(path);
    return true;
  }

  bool opens = true;
  std::string bytes;
  std::string usedFolder;
  std::uint64_t usedFormat = 99;

 private:
  void write(const fs::path& path) const { fs::ofstream(path, std::ios::binary) << bytes; }
};

/// Two stations that are registered at the first one.
class ModuleOutputs : public testing::Test {
 protected:
  ModuleOutputs() : session({stationAt("A", 0.0), stationAt("B", 100.0)}), clumsy(session.workbench) {
    session.driven->addAllGroups();
    session.driven->setBase({0});
    session.driven->registerPairwise();
  }

  /// Of what must refuse.
  template <class Make>
  static Refusal refusalOf(Make make) {
    try {
      make();
    } catch (const Refused& refused) {
      return refused.refusal();
    }
    ADD_FAILURE() << "no refusal";
    return {};
  }
  Refusal refusalOfPoints(const std::vector<MergedTarget>& targets) {
    return refusalOf([&] { commonPointsContent(clumsy, "points", "/survey/points.txt", targets); });
  }

  WorkbenchSession session;
  ClumsySession clumsy;
};

/// Carried by the module under its own name.
MergedTarget target(const char* name) { return {name, {}, 1.0, name}; }

const std::vector<MergedTarget> twoTargets{target("T1"), target("T2")};
const std::vector<MergedTarget> fourTargets{target("T1"), target("T2"), target("T3"), target("T4")};

// --- Merged targets.

TEST_F(ModuleOutputs, MergedTargetsAreALineEach) {
  const std::string content = commonPointsContent(*session.mirrored, "points", "points.txt", fourTargets);
  EXPECT_EQ(std::count(content.begin(), content.end(), '\n'), 4);
  EXPECT_EQ(content.rfind("T1", 0), 0u);
  EXPECT_THAT(content, HasSubstr("\nT3"));
}

TEST_F(ModuleOutputs, MergedTargetsAreTakenOverByteForByte) {
  clumsy.bytes = "T1 0 0 0\r\nT\xC3\xBC 1 2 3\n";
  EXPECT_EQ(commonPointsContent(clumsy, "points", "points.txt", twoTargets), clumsy.bytes);
  EXPECT_FALSE(fs::exists(clumsy.usedFolder)) << "nothing stays behind";
}

TEST_F(ModuleOutputs, MergedTargetsMayBearLineFeedsInTheirNames) {
  clumsy.bytes = "T\n1 0 0 0\nT2 0 0 0\n";
  EXPECT_EQ(commonPointsContent(clumsy, "points", "points.txt", {target("T\n1"), target("T2")}), clumsy.bytes);
  EXPECT_EQ(refusalOfPoints(twoTargets).kind, RefusalKind::commonPointsCutShort);
}

TEST_F(ModuleOutputs, MergedTargetsThatLackTheLastLineFeedAreCutShort) {
  clumsy.bytes = "T1 0 0 0\nT2 0 0 0";
  const Refusal refusal = refusalOfPoints(twoTargets);
  EXPECT_EQ(refusal.kind, RefusalKind::commonPointsCutShort);
  EXPECT_EQ(refusal.field, Field::commonPoints);
  EXPECT_EQ(refusal.given, "/survey/points.txt");
  EXPECT_FALSE(fs::exists(clumsy.usedFolder)) << "nothing stays behind";
}

TEST_F(ModuleOutputs, MergedTargetsOfAFileThatIsNotOpenedAreRefused) {
  clumsy.opens = false;
  const Refusal refusal = refusalOfPoints({});
  EXPECT_EQ(refusal.kind, RefusalKind::commonPointsNotOpened);
  EXPECT_EQ(refusal.field, Field::commonPoints);
  EXPECT_EQ(refusal.given, "/survey/points.txt");
}

TEST_F(ModuleOutputs, MergedTargetsOfNoneAreAnEmptyFile) {
  EXPECT_EQ(commonPointsContent(clumsy, "points", "points.txt", {}), "");
}

TEST_F(ModuleOutputs, TheFileOfMergedTargetsMayHaveACyrillicName) {
  const std::string content = commonPointsContent(*session.mirrored, "\xD6\xE5\xF5", "points.txt", fourTargets);
  EXPECT_EQ(std::count(content.begin(), content.end(), '\n'), 4);
}

// --- Matrices.

TEST_F(ModuleOutputs, MatricesAreThoseOfTheGroupsThatHaveOne) {
  const auto matrices = matrixContents(*session.mirrored, MatrixFormat::fourByFour, {"A", "B", "none"});
  ASSERT_EQ(matrices.size(), 3u);
  EXPECT_EQ(matrices.at("A"), "") << "the base";
  EXPECT_EQ(matrices.at("none"), "");
  EXPECT_TRUE(isWholeMatrix(matrices.at("B"))) << matrices.at("B");
}

TEST_F(ModuleOutputs, MatricesAreAskedForInTheirFormat) {
  clumsy.bytes = "half a matr";
  EXPECT_THAT(matrixContents(clumsy, MatrixFormat::trf, {"A"}), ElementsAre(Pair("A", "half a matr")));
  EXPECT_EQ(clumsy.usedFormat, 0u);
  matrixContents(clumsy, MatrixFormat::fourByFour, {});
  EXPECT_EQ(clumsy.usedFormat, 1u);
  EXPECT_FALSE(fs::exists(clumsy.usedFolder));
}

TEST_F(ModuleOutputs, MatricesOfBothFormatsAreWhole) {
  for (const MatrixFormat format : {MatrixFormat::trf, MatrixFormat::fourByFour}) {
    const auto matrices = matrixContents(*session.mirrored, format, {"B"});
    EXPECT_TRUE(isWholeMatrix(matrices.at("B"))) << matrices.at("B");
  }
}

TEST(AWholeMatrix, HasSixLinesToTheirEnds) {
  EXPECT_TRUE(isWholeMatrix("1\n2\n3\n4\n5\n6\n"));
  EXPECT_TRUE(isWholeMatrix("1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n"));
  EXPECT_FALSE(isWholeMatrix(""));
  EXPECT_FALSE(isWholeMatrix("1\n2\n3\n4\n5\n"));
  EXPECT_FALSE(isWholeMatrix("1\n2\n3\n4\n5\n6\n7\n"));
  EXPECT_FALSE(isWholeMatrix("1\n2\n3\n4\n5\n6"));
  EXPECT_FALSE(isWholeMatrix("1\n2\n3\n4\n5\n6\n7")) << "more than six";
}

// --- Reports.

TEST_F(ModuleOutputs, AReportIsOfItsKind) {
  for (const auto& [kind, last] :
       {std::pair{ReportKind::points, LastReport::points}, std::pair{ReportKind::groups, LastReport::groups},
        std::pair{ReportKind::results, LastReport::results}}) {
    const std::string content = reportContent(*session.mirrored, kind, session.state(), "report.html");
    EXPECT_THAT(content, HasSubstr("<html"));
    EXPECT_EQ(session.state().lastReport, last);
  }
}

TEST_F(ModuleOutputs, AReportIsOfAllPointsAndOfAllGroups) {
  const std::string points = reportContent(*session.mirrored, ReportKind::points, session.state(), "report.html");
  for (const char* const name : {"T1", "T2", "T3", "T4"}) EXPECT_THAT(points, HasSubstr(name));
  const std::string groups = reportContent(*session.mirrored, ReportKind::groups, session.state(), "report.html");
  EXPECT_THAT(groups, HasSubstr(">A<"));
  EXPECT_THAT(groups, HasSubstr(">B<"));
}

TEST_F(ModuleOutputs, AReportIsWholeWithItsLastTag) {
  clumsy.bytes = "<html>...</html>\n";
  EXPECT_EQ(reportContent(clumsy, ReportKind::results, clumsy.state(), "r.html"), clumsy.bytes);
  EXPECT_EQ(clumsy.usedFormat, 1u);
  EXPECT_FALSE(fs::exists(clumsy.usedFolder)) << "nothing stays behind";
  clumsy.bytes = "<html>...</html>\r\n";
  EXPECT_EQ(reportContent(clumsy, ReportKind::results, clumsy.state(), "r.html"), clumsy.bytes);
}

TEST_F(ModuleOutputs, AReportThatLacksItsEndIsCutShort) {
  for (const char* const bytes : {"", "<html>", "<html></html>", "</html>\n "}) {
    clumsy.bytes = bytes;
    const Refusal refusal =
        refusalOf([&] { reportContent(clumsy, ReportKind::results, clumsy.state(), "/survey/r.html"); });
    EXPECT_EQ(refusal.kind, RefusalKind::reportCutShort) << bytes;
    EXPECT_EQ(refusal.field, Field::report);
    EXPECT_EQ(refusal.given, "/survey/r.html");
  }
}

TEST_F(ModuleOutputs, AReportThatIsNotWrittenAtAllIsCutShort) {
  clumsy.opens = false;
  EXPECT_EQ(refusalOf([&] { reportContent(clumsy, ReportKind::points, clumsy.state(), "r.html"); }).kind,
            RefusalKind::reportCutShort);
}

}  // namespace
}  // namespace tiepoint::workbench

// What an adjustment puts into a drawing, and shows of itself; and its files beside those of the module.
#include "workbench/survey/adjusted_drawing.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "workbench/report/group_matrices.h"
#include "workbench/session/common_points_text.h"
#include "workbench/session/module_outputs.h"
#include "workbench/survey/delivery.h"
#include "workbench/survey/drawn_stations.h"
#include "workbench/survey/refusal_of.h"
#include "workbench/view/recording_draw.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
using testing::Key;

class AdjustedDrawing : public DrawnStations {
 protected:
  AdjustedDrawing() {
    request.base = {"A"};
    store({hallFrom("A", 0, {"T1", "T2", "T3", "T4"}), turned(hallFrom("B", 100, {"T1", "T2", "T3", "T4"})),
           hallFrom("thin", 50, {"T1", "T2"})});
  }

  /// About the vertical, by a quarter.
  static StationPoints turned(StationPoints station) {
    for (MeasuredPoint& point : station.points)
      point.position = {-point.position.y, point.position.x, point.position.z};
    return station;
  }
  const Registration& registered(RegistrationMethod method) {
    request.method = method;
    survey = registerSurvey(workbench, resolved, findings, progress);
    return survey->registration;
  }
  OdDbDatabasePtr database() { return workbench.requireActiveDocument().database(); }

  ResolvedRequest resolved;
  RegistrationRequest& request = resolved.request;
  Findings findings;
  ToldProgress progress;
  std::unique_ptr<OpenSurvey> survey;
};

TEST_F(AdjustedDrawing, ShowsEachRegisteredGroupWhereItBelongs) {
  registered(RegistrationMethod::adjust);
  const std::string drawn = withRegisteredShown(
      workbench, *survey, [&](const ShownGroups& shown, const std::vector<const OdGiDrawable*>& drawables) {
        EXPECT_THAT(shown, ElementsAre(Key(0), Key(1))) << "by the ids of the drawing, without the thin one";
        EXPECT_EQ(shown.at(1).points, 4u);
        RecordingDraw draw{View()};
        for (const OdGiDrawable* drawable : drawables) draw.draw(*drawable);
        // Three lines a point; those of a target cross where both stations have it.
        EXPECT_EQ(draw.lines().size(), 24u);
        for (std::size_t line = 0; line < 12; ++line) {
          const DrawnLine& ofBase = draw.lines()[line];
          const DrawnLine& ofOther = draw.lines()[12 + line];
          EXPECT_NEAR(ofBase.from.x, ofOther.from.x, 1e-9) << line;
          EXPECT_NEAR(ofBase.from.y, ofOther.from.y, 1e-9) << line;
        }
        return std::string("drawn");
      });
  EXPECT_EQ(drawn, "drawn");
  EXPECT_EQ(storedGroups(*database()).size(), 3u) << "its own drawing is the active one again";
}

TEST_F(AdjustedDrawing, StoresItsTargetsAsAGroup) {
  const std::vector<MergedTarget> targets = registered(RegistrationMethod::adjust).registered()->targets;
  workbench.inTransaction([&] { EXPECT_TRUE(storeAdjustedTargets(*database(), "merged", targets)); });
  const std::vector<StoredGroup> groups = storedGroups(*database());
  ASSERT_EQ(groups.size(), 4u);
  EXPECT_EQ(groups[3].name, L"merged");
  ASSERT_EQ(groups[3].points().length(), 4u);
  EXPECT_NEAR(groups[3].points()[1].x, 8.0, 1e-9);
  EXPECT_EQ(groups[3].points()[1].w, 1.0);
}

TEST_F(AdjustedDrawing, StoresNothingUnderANameThatNoGroupCanHave) {
  const std::vector<MergedTarget> targets = registered(RegistrationMethod::adjust).registered()->targets;
  workbench.inTransaction([&] {
    for (const char* name : {"", "a.b", "a/b", "nul", "COM1", "lpt9", "a:b", "A"}) {
      EXPECT_FALSE(storeAdjustedTargets(*database(), name, targets)) << name;
    }
    EXPECT_TRUE(storeAdjustedTargets(*database(), "com0", targets));
    EXPECT_TRUE(storeAdjustedTargets(*database(), "null", targets));
  });
}

TEST_F(AdjustedDrawing, ANameThatIsForbiddenIsRefused) {
  registered(RegistrationMethod::adjust);
  request.changes.store = "a.b";
  const Refusal refusal = refusalOf([&] { deliver(workbench, *survey, resolved, {}, progress); });
  EXPECT_EQ(refusal.kind, RefusalKind::storeNameForbidden);
}

/// The pairwise result, of which the module writes its own files.
class BesideTheModule : public AdjustedDrawing {
 protected:
  BesideTheModule() { registered(RegistrationMethod::pairwise); }
  MirroredSession& session() { return survey->session().operations(); }
};

TEST_F(BesideTheModule, MatricesOfItsFormatsAreItsOwnByteByByte) {
  const OdGeMatrix3d motion = survey->registration.groups[1].toCommon.value();
  for (const MatrixFormat format : {MatrixFormat::trf, MatrixFormat::fourByFour}) {
    std::string wanted = matrixContents(session(), format, {"B"}).at("B");
    wanted.erase(std::remove(wanted.begin(), wanted.end(), '\r'), wanted.end());
    EXPECT_EQ(moduleMatrixText(format, motion), wanted);
  }
}

TEST_F(BesideTheModule, TheFileOfTargetsIsItsOwnByteByByte) {
  const std::vector<MergedTarget>& targets = survey->registration.registered()->targets;
  std::string wanted = commonPointsContent(session(), "common", "common.txt", targets);
  wanted.erase(std::remove(wanted.begin(), wanted.end(), '\r'), wanted.end());
  EXPECT_EQ(commonPointsText(targets), wanted);
}

}  // namespace
}  // namespace tiepoint::workbench

// Refusals of requests and of data; file_refusal_text_test has those of files.
#include "workbench/report/refusal_text.h"

#include <gtest/gtest.h>

namespace tiepoint::workbench {
namespace {

Refusal refusal(RefusalKind kind, Field field = Field::none, std::string given = {}) {
  Refusal made{kind, field};
  made.given = std::move(given);
  return made;
}

// --- The request as a whole.

TEST(RefusalText, OfAnEmptyPath) {
  EXPECT_EQ(refusalText(refusal(RefusalKind::emptyPath)), "a file name is empty; is a shell variable unset?");
}

TEST(RefusalText, OfNothingToRegister) {
  EXPECT_EQ(refusalText(refusal(RefusalKind::nothingToRegister)),
            "nothing to register; name files of reference points, or a drawing with --document FILE");
}

TEST(RefusalText, OfAnEmptyDrawing) {
  EXPECT_EQ(refusalText(refusal(RefusalKind::drawingEmpty)),
            "the drawing holds no reference points; name files to import");
}

TEST(RefusalText, OfAClusterOfTheIterativeMethod) {
  EXPECT_EQ(
      refusalText(refusal(RefusalKind::keepClusterNeedsPairwise)),
      "--keep-cluster needs --method adjust or pairwise; the iterative method registers all groups: leave some out "
      "with --exclude GROUP");
}

TEST(RefusalText, OfLimitsOfTheProfile) {
  Refusal limits = refusal(RefusalKind::profileLimits);
  limits.count = 0;
  limits.value = 0.001;
  EXPECT_EQ(refusalText(limits),
            "the profile limits the run to 0 iterations and a criterion of 0.001; both must be above 0 "
            "(--max-iterations and --convergence override them)");
}

TEST(RefusalText, OfMovedCloudsThatArentMoved) {
  EXPECT_EQ(refusalText(refusal(RefusalKind::movedNeedsApply)),
            "--moved needs --apply: it writes the clouds that were moved");
}

// --- What there isn't.

TEST(RefusalText, OfAGroupThatThereIsnt) {
  Refusal unknown = refusal(RefusalKind::noSuchGroup, Field::base, "S9");
  unknown.name = "S9";
  unknown.known = {"S1", "S2"};
  EXPECT_EQ(refusalText(unknown), "--base S9: there is no group \"S9\"; did you mean \"S1\"?");
  unknown.known = {"hall", "roof"};
  EXPECT_EQ(refusalText(unknown), "--base S9: there is no group \"S9\"; there are: hall, roof");
}

TEST(RefusalText, OfAPointThatThereIsnt) {
  Refusal unknown = refusal(RefusalKind::noSuchPoint, Field::exclude, "S4:T99");
  unknown.name = "S4";
  unknown.point = "T99";
  unknown.known = {"T9"};
  EXPECT_EQ(refusalText(unknown), "--exclude S4:T99: group \"S4\" has no point \"T99\"; did you mean \"T9\"?");
}

TEST(RefusalText, OfAWeightThatMayStandInAFile) {
  Refusal unknown = refusal(RefusalKind::noSuchPoint, Field::weight, "S4:T99");
  unknown.name = "S4";
  unknown.point = "T99";
  EXPECT_EQ(refusalText(unknown), "weight S4:T99: group \"S4\" has no point \"T99\"");
}

TEST(RefusalText, OfAWeightOutOfItsRange) {
  EXPECT_EQ(refusalText(refusal(RefusalKind::weightOutOfRange, Field::weight, "S4:T1=2")),
            "--weight S4:T1=2: the weight must be a number from 0 to 1");
}

TEST(RefusalText, OfAFieldThatGoesWithAnother) {
  const auto goesWith = [](Field field, Field other) {
    Refusal made = refusal(RefusalKind::goesWith, field);
    made.otherField = other;
    return refusalText(made);
  };
  EXPECT_EQ(goesWith(Field::sideTolerance, Field::naming), "--side-tolerance needs --match triangles or auto");
  EXPECT_EQ(goesWith(Field::minSideDifference, Field::naming), "--min-side-difference needs --match triangles or auto");
  EXPECT_EQ(goesWith(Field::closeness, Field::naming), "--tolerance needs --match distance or auto");
  EXPECT_EQ(goesWith(Field::namingLimit, Field::naming), "--match-limit needs --match auto");
  EXPECT_EQ(goesWith(Field::matrixFormat, Field::matrices), "--matrix-format needs --matrices FOLDER");
  EXPECT_EQ(goesWith(Field::reportKind, Field::report), "--report-kind needs --report FILE");
  EXPECT_EQ(goesWith(Field::maxIterations, Field::method), "--max-iterations needs --method iterative");
  EXPECT_EQ(goesWith(Field::convergence, Field::method), "--convergence needs --method iterative");
  EXPECT_EQ(goesWith(Field::sigma, Field::method), "--sigma needs --method adjust");
  EXPECT_EQ(goesWith(Field::controlFile, Field::method), "--control needs --method adjust");
}

TEST(RefusalText, OfALength) {
  Refusal length = refusal(RefusalKind::notALength, Field::sideTolerance);
  length.value = -0.5;
  EXPECT_EQ(refusalText(length), "--side-tolerance -0.5: must be a length of at least 0, in drawing units");
  length.kind = RefusalKind::notAboveZero;
  length.field = Field::convergence;
  length.value = 0.0;
  EXPECT_EQ(refusalText(length), "--convergence 0: must be a length above 0, in drawing units");
}

TEST(RefusalText, OfASigma) {
  Refusal sigma = refusal(RefusalKind::notAboveZero, Field::sigma);
  sigma.value = -0.5;
  EXPECT_EQ(refusalText(sigma), "--sigma -0.5: must be a length above 0, in drawing units");
  sigma.given = "S1";
  EXPECT_EQ(refusalText(sigma), "--sigma S1=-0.5: must be a length above 0, in drawing units");
  sigma.value = 1e-300;
  EXPECT_EQ(refusalText(sigma), "--sigma S1=1e-300: no standard deviation; it must lie between 1e-15 and 1e+15");
}

TEST(RefusalText, OfASigmaThatMayStandInAFile) {
  Refusal unknown = refusal(RefusalKind::noSuchGroup, Field::sigma, "S9");
  unknown.name = "S9";
  EXPECT_EQ(refusalText(unknown), "sigma S9: there is no group \"S9\"");
}

TEST(RefusalText, OfAShare) {
  Refusal share = refusal(RefusalKind::notAShare, Field::alpha);
  share.value = 1.5;
  EXPECT_EQ(refusalText(share), "--alpha 1.5: must be between 0 and 1");
  share.field = Field::power;
  share.value = 0.0;
  EXPECT_EQ(refusalText(share), "--power 0: must be between 0 and 1");
}

TEST(RefusalText, OfNoIterations) {
  EXPECT_EQ(refusalText(refusal(RefusalKind::notAboveZero, Field::maxIterations)),
            "--max-iterations 0: must be at least 1");
}

TEST(RefusalText, OfAClusterThatThereIsnt) {
  Refusal cluster = refusal(RefusalKind::noSuchCluster, Field::keepCluster, "7");
  cluster.count = 2;
  EXPECT_EQ(refusalText(cluster), "--keep-cluster 7: the clusters are 0 to 2");
  cluster.kind = RefusalKind::noClusters;
  EXPECT_EQ(refusalText(cluster), "--keep-cluster 7: no two groups are connected");
}

TEST(RefusalText, OfTwoFilesOfOneGroup) {
  Refusal twice = refusal(RefusalKind::groupTwice, Field::files, "a/S1.txt");
  twice.other = "b/S1.txt";
  twice.name = "S1";
  EXPECT_EQ(refusalText(twice), "a/S1.txt and b/S1.txt: both become the group \"S1\"; rename one of them");
}

TEST(RefusalText, OfACloudThatIsNamedTwice) {
  EXPECT_EQ(refusalText(refusal(RefusalKind::cloudTwice, Field::cloud, "S1=a.xyz")),
            "--cloud S1=a.xyz: this cloud is given twice");
}

// --- What the data don't allow.

TEST(RefusalText, OfACoordinateThatIsntFinite) {
  Refusal infinite = refusal(RefusalKind::notFinite);
  infinite.name = "S4";
  infinite.point = "T1";
  EXPECT_EQ(refusalText(infinite),
            "point T1 of S4 has a coordinate that isn't a finite number; correct it, or leave the point out with "
            "--exclude S4:T1");
}

TEST(RefusalText, OfATransformationThatIsntRigid) {
  Refusal bent = refusal(RefusalKind::notRigid);
  bent.name = "S4";
  EXPECT_EQ(refusalText(bent), "the transformation of S4 isn't a rigid motion; are its coordinates far too large?");
}

TEST(RefusalText, OfANameToStoreUnder) {
  EXPECT_EQ(refusalText(refusal(RefusalKind::storeNameTaken, Field::store, "all")),
            "--store all: the drawing already has a group of this name; choose another");
  EXPECT_EQ(refusalText(refusal(RefusalKind::storeNameForbidden, Field::store, "a/b")),
            "--store a/b: a group can't have this name (none of <>/\\*|?:\". and no device name)");
}

TEST(RefusalText, OfACloudThatIsThereAlready) {
  Refusal taken = refusal(RefusalKind::cloudTaken);
  taken.name = "S1";
  taken.other = "old.xyz";
  EXPECT_EQ(refusalText(taken), "the drawing already has a cloud S1, from old.xyz");
}

TEST(RefusalText, OfACloudThatWasMovedBefore) {
  Refusal moved = refusal(RefusalKind::cloudMovedBefore);
  moved.name = "S1";
  EXPECT_EQ(refusalText(moved), "cloud S1 was moved before; --force moves it again");
}

TEST(RefusalText, OfWorkThatWasCancelled) { EXPECT_EQ(refusalText(refusal(RefusalKind::cancelled)), "cancelled"); }

TEST(RefusalText, OfAPictureIsTheCause) {
  Refusal picture = refusal(RefusalKind::pictureFailed);
  picture.cause = "this tiepoint was built without pictures";
  EXPECT_EQ(refusalText(picture), "this tiepoint was built without pictures");
}

TEST(RefusalText, CallsTheFieldsWhatTheFaceCallsThem) {
  Refusal unknown = refusal(RefusalKind::noSuchGroup, Field::base, "S9");
  unknown.name = "S9";
  EXPECT_EQ(refusalText(unknown, fieldKey), "base S9: there is no group \"S9\"");
}

TEST(OptionOf, IsTheOptionOfTheField) {
  EXPECT_STREQ(optionOf(Field::none), "");
  EXPECT_STREQ(optionOf(Field::files), "FILE");
  EXPECT_STREQ(optionOf(Field::weightsFile), "--weights");
  EXPECT_STREQ(optionOf(Field::namingLimit), "--match-limit");
  EXPECT_STREQ(optionOf(Field::picture), "--picture");
}

}  // namespace
}  // namespace tiepoint::workbench

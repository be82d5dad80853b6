#include "workbench/values/refusal.h"

#include <gmock/gmock.h>

#include <set>

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;

template <class Kind, class Key>
std::vector<std::string> keysFrom(Kind first, Kind last, Key key) {
  std::vector<std::string> keys;
  for (int kind = static_cast<int>(first); kind <= static_cast<int>(last); ++kind) {
    keys.emplace_back(key(static_cast<Kind>(kind)));
  }
  return keys;
}

std::vector<std::string> keysFrom(RefusalKind first, RefusalKind last) { return keysFrom(first, last, refusalKey); }

/// The kinds of a class, by key, in order.
std::vector<std::string> keysOf(RefusalClass wanted) {
  std::vector<std::string> keys;
  for (int i = 0; i <= static_cast<int>(RefusalKind::cancelled); ++i) {
    const auto kind = static_cast<RefusalKind>(i);
    if (refusalClass(kind) == wanted) keys.emplace_back(refusalKey(kind));
  }
  return keys;
}

TEST(KeysOfRefusals, OfTheRequest) {
  EXPECT_THAT(keysFrom(RefusalKind::emptyPath, RefusalKind::cloudTwice),
              ElementsAre("empty-path", "nothing-to-register", "drawing-empty", "no-such-group", "no-such-point",
                          "weight-out-of-range", "goes-with", "not-a-length", "not-above-zero", "not-a-share",
                          "keep-cluster-needs-pairwise", "profile-limits", "no-such-cluster", "no-clusters",
                          "moved-needs-apply", "input-unit-gives-metres", "input-unit-leaves-clouds", "group-twice",
                          "cloud-twice"));
}

TEST(KeysOfRefusals, OfFilesThatAreRead) {
  EXPECT_THAT(keysFrom(RefusalKind::pathNotUtf8, RefusalKind::cloudFile),
              ElementsAre("path-not-utf8", "file-missing", "file-is-folder", "file-unreadable", "file-not-plain",
                          "file-cut-short", "file-empty", "file-changed", "no-points", "file-ambiguous",
                          "file-not-read", "line-too-long", "points-not-taken", "weights-line", "sigmas-line",
                          "control-line", "control-not-definite", "control-twice", "carry-line", "start-not-read",
                          "cloud-file-missing", "cloud-file"));
}

TEST(KeysOfRefusals, OfFilesThatAreWritten) {
  EXPECT_THAT(keysFrom(RefusalKind::noFolder, RefusalKind::noTemporaryFolder),
              ElementsAre("no-folder", "folder-not-made", "target-is-folder", "target-not-ordinary", "target-is-read",
                          "target-exists", "same-target", "name-not-portable", "group-not-portable", "copies-collide",
                          "not-written", "common-points-not-opened", "common-points-cut-short", "matrix-cut-short",
                          "report-cut-short", "no-temporary-folder"));
}

TEST(KeysOfRefusals, OfWhatTheDataDoNotAllow) {
  EXPECT_THAT(keysFrom(RefusalKind::notFinite, RefusalKind::cancelled),
              ElementsAre("not-finite", "not-rigid", "store-name-taken", "store-name-forbidden", "cloud-taken",
                          "cloud-moved-before", "nothing-to-show", "picture-failed", "cancelled"));
}

TEST(KeysOfRefusals, TellEachKindFromAllOthers) {
  const auto keys = keysFrom(RefusalKind::emptyPath, RefusalKind::cancelled);
  EXPECT_EQ(std::set<std::string>(keys.begin(), keys.end()).size(), keys.size());
}

TEST(ClassesOfRefusals, UsageIsWhatTheRequestCanMend) {
  EXPECT_THAT(
      keysOf(RefusalClass::usage),
      ElementsAre("empty-path", "nothing-to-register", "no-such-group", "no-such-point", "weight-out-of-range",
                  "goes-with", "not-a-length", "not-above-zero", "not-a-share", "keep-cluster-needs-pairwise",
                  "profile-limits", "no-such-cluster", "no-clusters", "moved-needs-apply", "input-unit-gives-metres",
                  "input-unit-leaves-clouds", "group-twice", "cloud-twice", "sigmas-line", "control-line",
                  "control-not-definite", "control-twice", "carry-line", "same-target", "name-not-portable"));
}

TEST(ClassesOfRefusals, RefusedIsWhatTheDataDoNotAllow) {
  EXPECT_THAT(keysOf(RefusalClass::refused),
              ElementsAre("drawing-empty", "not-finite", "not-rigid", "store-name-taken", "store-name-forbidden",
                          "cloud-taken", "cloud-moved-before", "nothing-to-show", "cancelled"));
}

TEST(ClassesOfRefusals, EverythingElseIsAboutFiles) {
  EXPECT_EQ(keysOf(RefusalClass::file).size(), 66u - 25u - 9u);
  EXPECT_EQ(refusalClass(RefusalKind::groupNotPortable), RefusalClass::file) << "the name is the file's";
  EXPECT_EQ(refusalClass(RefusalKind::pictureFailed), RefusalClass::file);
}

TEST(KeysOfFields, AreTheMembersOfARequest) {
  EXPECT_THAT(
      keysFrom(Field::none, Field::picture, fieldKey),
      ElementsAre("", "files", "columns", "decimal", "encoding", "inputUnit", "document", "base", "exclude", "weight",
                  "weightsFile", "naming", "namingLimit", "sideTolerance", "minSideDifference", "closeness", "method",
                  "maxIterations", "convergence", "sigma", "sigmasFile", "controlFile", "level", "startFile",
                  "variance", "alpha", "power", "carryFile", "trace", "keepCluster", "cloud", "apply", "moved", "store",
                  "commonPoints", "matrices", "matrixFormat", "transforms", "report", "reportKind", "picture"));
}

TEST(RefusedError, SaysItsKeyAndCarriesTheDetails) {
  Refusal refusal{RefusalKind::noSuchPoint, Field::exclude, "S1:T9", "S1", "T9"};
  refusal.known = {"T1", "T2"};
  try {
    throw Refused(refusal);
  } catch (const std::exception& error) {
    EXPECT_STREQ(error.what(), "no-such-point");
    const auto& refused = dynamic_cast<const Refused&>(error);
    EXPECT_EQ(refused.refusal().field, Field::exclude);
    EXPECT_EQ(refused.refusal().given, "S1:T9");
    EXPECT_THAT(refused.refusal().known, ElementsAre("T1", "T2"));
    EXPECT_EQ(refused.refusal().otherField, Field::none);
    EXPECT_FALSE(refused.refusal().value);
    EXPECT_FALSE(refused.refusal().fault);
  }
}

}  // namespace
}  // namespace tiepoint::workbench

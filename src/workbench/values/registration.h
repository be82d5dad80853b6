// One registration: what was found, what was left out and why.
#pragma once

#include <Eigen/Core>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/sdk/od_ge_matrix3d.h"
#include "records/tables.h"
#include "workbench/values/adjusted_survey.h"
#include "workbench/values/cloud_report.h"
#include "workbench/values/finding.h"
#include "workbench/values/import_report.h"
#include "workbench/values/iteration_course.h"
#include "workbench/values/link_report.h"
#include "workbench/values/naming_report.h"
#include "workbench/values/point_reason.h"
#include "workbench/values/point_spread.h"
#include "workbench/values/registration_request.h"

namespace tiepoint::workbench {

/// A root mean square over points, the largest of their values, and the mean.
struct Rms {
  std::size_t count = 0;
  double value = 0.0;
  double largest = 0.0;
  double mean = 0.0;
};

/// Lengths in drawing units. What needs a registration is there only when there is one.
struct GroupOutcome {
  ZOR::reg::GroupId id = 0;
  /// UTF-8.
  std::string name;
  bool inBase = false;
  /// How many it has, and how many of them are in use.
  std::size_t points = 0;
  std::size_t active = 0;
  /// From the group's system to the common one; none for a base and for a group that took no part.
  std::optional<OdGeMatrix3d> toCommon;
  std::optional<Rms> discrepancies;
  std::optional<Rms> atBase;
  /// The origin stands among the group's points, so that an instrument may have stood there.
  bool originIsAmongPoints = false;

  /// The same motion, with the identity for a base.
  std::optional<OdGeMatrix3d> motion() const { return !toCommon && inBase ? std::optional(OdGeMatrix3d()) : toCommon; }
};

struct PointOutcome {
  ZOR::reg::RefPointId id = 0;
  /// The group's index among the outcomes.
  std::size_t group = 0;
  /// UTF-8.
  std::string name;
  /// As measured, in the group's system.
  OdGePoint3d position;
  double weight = 1.0;
  bool active = false;
  bool named = false;
  /// Why it takes no part; nothing for an active one.
  std::optional<Reason> reason;
  /// In the common system; nothing for a group without a transformation.
  std::optional<OdGePoint3d> registered;
  /// From the registered point to its merged target, as the session tells it. A point in use that
  /// the session gives none for has 0.0 when it lies on its target; otherwise it took no part in its
  /// group's fit, and has nothing.
  std::optional<double> discrepancy;
  /// The discrepancy along the axes of the common system: the registered point minus its merged target.
  /// Its length is the discrepancy; nothing where there is no discrepancy, or where the target isn't told.
  std::optional<OdGeVector3d> residual;
  /// From the registered point to the base's own measurement of the target.
  std::optional<double> atBase;
};

/// A target, merged from all groups that saw it.
struct MergedTarget {
  /// UTF-8, as it was written.
  std::string name;
  OdGePoint3d position;
  double weight = 0.0;
  /// As the module has it.
  std::string moduleName = {};
  /// Of an adjusted target: how many stations measured it, and the covariance of its position.
  std::optional<std::size_t> sightings = std::nullopt;
  std::optional<Eigen::Matrix3d> covariance = std::nullopt;
};

/// One point that the tests of an adjustment find to be wrong.
struct Outlier {
  /// Its index among the outcomes.
  std::size_t point = 0;
  /// Its discrepancy divided by the median of all; nothing where that is 0.
  std::optional<double> timesMedian = std::nullopt;
  /// Measured less what all other measurements predict, in the common system.
  std::optional<OdGeVector3d> leftOut = std::nullopt;
};

/// What a protocol of the registration states: the discrepancies of all points that have one, and how many
/// stations these points belong to.
struct ProtocolFigures {
  Rms discrepancies;
  std::size_t stations = 0;
};

struct Registered {
  std::optional<Rms> discrepancies;
  std::optional<Rms> atBase;
  /// The index of the point with the largest discrepancy; none where all are the rounding of numbers.
  std::optional<std::size_t> largest;
  std::optional<Outlier> outlier;
  /// None without a discrepancy, and none of iterations that haven't converged: their figures are those of
  /// wherever the run was ended.
  std::optional<ProtocolFigures> protocol;
  PointSpread spread;
  std::vector<MergedTarget> targets;
};

/// The groups aren't connected, or none is left.
struct NotConnected {};
/// A base was asked for, and none of its points is in use.
struct BaseNotShared {};
/// Points without names can't be named so that it is certain.
struct NotNamed {};
/// A motion of some stations stays open; the adjustment tells which.
struct Undetermined {};

/// Paths that were written, UTF-8; empty for what wasn't asked for.
struct WrittenFiles {
  std::string commonPoints;
  std::vector<std::string> matrices;
  std::string transforms;
  std::string report;
  std::string picture;
};

struct Registration {
  /// UTF-8; empty for a drawing in memory.
  std::string document;
  ImportReport import;
  RegistrationMethod method = RegistrationMethod::pairwise;
  /// A base is in use.
  bool usesBase = false;
  std::optional<std::uint64_t> keptCluster;
  /// When points were to be named.
  std::optional<NamingReport> naming;
  /// In ascending id, which is the drawing's order.
  std::vector<GroupOutcome> groups;
  /// In the session's order, group by group.
  std::vector<PointOutcome> points;
  std::variant<NotConnected, BaseNotShared, NotNamed, Undetermined, Registered> outcome;
  /// After the iterative method, unless its report doesn't tell.
  std::optional<IterationCourse> iterations;
  /// Of the method `adjust`.
  std::optional<AdjustedSurvey> adjustment;
  /// What is connected, where not all groups are: the iterative method takes them all the same.
  LinkReport links;
  std::vector<Finding> findings;
  /// What was delivered.
  std::vector<CloudReport> clouds;
  std::string storedGroup;
  WrittenFiles files;

  const Registered* registered() const { return std::get_if<Registered>(&outcome); }
  /// Throws std::out_of_range for an id that isn't there.
  const GroupOutcome& group(ZOR::reg::GroupId id) const;
};

}  // namespace tiepoint::workbench

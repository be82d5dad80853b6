// What a registration is asked for. Paths and names are UTF-8, lengths in drawing units.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "workbench/values/adjustment_request.h"
#include "workbench/values/import_report.h"
#include "workbench/values/point_choice.h"
#include "workbench/values/reading_request.h"

namespace tiepoint::workbench {

enum class RegistrationMethod { pairwise, iterative, adjust };
enum class Naming { none, automatic, triangles, closeness };
enum class MatrixFormat { plain, fourByFour, trf };
enum class ReportKind { results, points, groups };
enum class Unit { unknown, metre, millimetre };

struct WeightChoice {
  PointChoice points;
  /// 0 to 1.
  double weight = 1.0;
};

/// How points without a name are named; usual limits where none is given.
struct NamingRequest {
  Naming how = Naming::none;
  std::optional<double> limit = std::nullopt;
  std::optional<double> sideTolerance = std::nullopt;
  std::optional<double> minSideDifference = std::nullopt;
  std::optional<double> closeness = std::nullopt;
};

struct CloudRequest {
  std::string name;
  std::string path;
};

/// What changes in the drawing beside the groups that are taken in.
struct DrawingChanges {
  std::vector<CloudRequest> clouds = {};
  bool apply = false;
  /// A name for the group of merged targets; empty: none.
  std::string store = {};
};

/// Files of results; an empty path isn't asked for.
struct OutputRequest {
  std::string commonPoints = {};
  /// A folder, as is the next.
  std::string moved = {};
  std::string matrices = {};
  std::optional<MatrixFormat> matrixFormat = std::nullopt;
  std::string transforms = {};
  std::string report = {};
  std::optional<ReportKind> reportKind = std::nullopt;
  std::string picture = {};
  /// The picture's size in pixels: many markers are made smaller for it.
  double pictureArea = 0.0;
  /// Replace files that are there, and move clouds once more.
  bool force = false;
};

struct RegistrationRequest {
  /// One run for each layout, in order.
  std::vector<LayoutFiles> files = {};
  ReadingRequest reading = {};
  /// Empty: a drawing in memory.
  std::string document = {};
  /// Further files that no result may replace, such as the profile.
  std::vector<std::string> alsoRead = {};
  std::vector<std::string> base = {};
  std::vector<PointChoice> exclude = {};
  std::vector<WeightChoice> weights = {};
  /// Lines "GROUP POINT WEIGHT".
  std::string weightsFile = {};
  NamingRequest naming = {};
  RegistrationMethod method = RegistrationMethod::adjust;
  /// Of the iterative method; the profile's when not given.
  std::optional<std::uint64_t> maxIterations = std::nullopt;
  std::optional<double> convergence = std::nullopt;
  /// Of the method `adjust`.
  AdjustmentRequest adjustment = {};
  std::optional<std::uint64_t> keepCluster = std::nullopt;
  Unit unit = Unit::unknown;
  DrawingChanges changes = {};
  OutputRequest outputs = {};
};

}  // namespace tiepoint::workbench

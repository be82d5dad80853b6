// What the user writes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "workbench/values/registration_request.h"

namespace tiepoint::workbench::cli {

/// Every command. Paths are UTF-8; an empty one isn't given.
struct HostOptions {
  std::string document;
  std::string profile;
  std::string module;
};

/// Files, and by which layout they are read.
struct FileOptions {
  /// Those without an option of their own, read by `layout`.
  std::vector<std::string> files;
  /// NXYZ when not given.
  std::string layout;
  std::vector<std::string> nxyz;
  std::vector<std::string> xyz;
  std::vector<std::string> xyzw;
  std::vector<std::string> nxyzw;
  /// How files are read that aren't in a layout of the module's. An empty text isn't given.
  std::string columns;
  std::string decimal;
  std::string encoding;
  std::string inputUnit;
};

/// A picture of the points. An empty text isn't given.
struct PictureOptions {
  std::string file;
  /// "1200x800" when not given.
  std::string size;
  /// "top" when not given.
  std::string view;
};

/// Of the method `adjust`. An empty text isn't given.
struct AdjustOptions {
  /// "S" or "GROUP=S".
  std::vector<std::string> sigma;
  std::string sigmasFile;
  std::string controlFile;
  /// Groups, or "all".
  std::vector<std::string> level;
  std::string startFile;
  std::string variance;
  std::optional<double> alpha;
  std::optional<double> power;
  std::string carryFile;
  /// "GROUP:POINT".
  std::vector<std::string> trace;
};

struct RegisterOptions {
  HostOptions host;
  FileOptions files;
  std::vector<std::string> base;
  std::vector<std::string> exclude;
  std::vector<std::string> weight;
  std::string weightsFile;
  /// "auto", "triangles" or "distance"; empty for none.
  std::string match;
  /// Of the matching, drawing units; usual ones when not given.
  std::optional<double> sideTolerance;
  std::optional<double> minSideDifference;
  std::optional<double> tolerance;
  std::optional<double> matchLimit;
  std::string method = "adjust";
  /// Of the iterative method; the session's when not given.
  std::optional<std::uint64_t> maxIterations;
  std::optional<double> convergence;
  AdjustOptions adjust;
  std::optional<std::uint64_t> keepCluster;
  std::vector<std::string> clouds;
  bool apply = false;
  std::string moved;
  std::string store;
  std::string commonPoints;
  std::string matrices;
  /// "plain" when not given.
  std::string matrixFormat;
  std::string transforms;
  std::string report;
  /// "results" when not given.
  std::string reportKind;
  PictureOptions picture;
  bool force = false;
  std::string unit;
  /// Tables of any length in full.
  bool allPoints = false;
  /// Discrepancies along the axes, too.
  bool axes = false;
  bool json = false;
  bool quiet = false;
};

struct ImportOptions {
  HostOptions host;
  FileOptions files;
  bool json = false;
  bool quiet = false;
};

struct GroupsOptions {
  HostOptions host;
  bool points = false;
  bool json = false;
};

struct CloudsOptions {
  HostOptions host;
  std::vector<std::string> add;
  std::string moved;
  bool force = false;
  bool json = false;
};

struct RenderOptions {
  HostOptions host;
  PictureOptions picture;
  std::string unit;
  bool force = false;
};

struct RpcOptions {
  HostOptions host;
};

}  // namespace tiepoint::workbench::cli

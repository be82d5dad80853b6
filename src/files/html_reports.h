// The three HTML documents.
#pragma once

#include <cstdint>
#include <string>

#include "records/tables.h"

namespace ZOR::reg {

/// What the documents show: the present state of a session.
struct ReportSource {
  const RefPointList& sessionPoints;
  const NamedIdList& groupNames;
  const NamedIdList& commonNames;
  const GroupTransforms& groupTransforms;
  const CommonPoints& commonPoints;
  const PointDiscrepancies& pointDiscrepancies;
  /// 0 to 5; any other reads as "Unknown".
  int registrationMethod;
  std::uint64_t actualIterations;
  std::uint64_t maxIterations;
  double actualDiscrepancy;
  double convergenceCriteria;
};

// Each document is one line, in the order of tags that the host's dialog expects; names are read
// as windows-1251 and nothing is escaped.

/// A table of the given points, before and after registration.
std::wstring pointsReport(const ReportSource& source, const RefPointIdSet& points);
/// A table of the given groups with the names of their points.
std::wstring groupsReport(const ReportSource& source, const GroupIdSet& groups);
/// The method, the merged targets, and the transformation of each group.
std::wstring resultsReport(const ReportSource& source);

}  // namespace ZOR::reg

#include "workbench/report/outputs.h"

#include "workbench/io/line_ends.h"
#include "workbench/io/text_encoding.h"
#include "workbench/report/adjustment_report.h"
#include "workbench/report/group_matrices.h"

namespace tiepoint::workbench {

namespace {

std::string matrixText(MatrixFormat format, const OdGeMatrix3d& motion) {
  return format == MatrixFormat::plain ? plainMatrixText(motion) : withSystemLineEnds(moduleMatrixText(format, motion));
}

/// The module writes its formats of what it has solved itself, and has no transformation of a base.
void addMatrices(const Registration& registration, const OutputRequest& wanted, std::vector<OutputFile>& files) {
  const MatrixFormat format = wanted.matrixFormat.value_or(MatrixFormat::plain);
  const bool isPlain = format == MatrixFormat::plain;
  if (!isPlain && !registration.adjustment) return;
  for (const GroupOutcome& group : registration.groups) {
    const auto motion = isPlain ? group.motion() : group.toCommon;
    if (!motion) continue;
    files.push_back({{Field::matrices, joinedPath(wanted.matrices, group.name + ".txt")},
                     [motion, format] { return matrixText(format, *motion); }});
  }
}

}  // namespace

std::vector<OutputFile> outputs(const Registration& registration, const OutputRequest& wanted, Unit unit,
                                std::function<std::string()> picture) {
  std::vector<OutputFile> files;
  if (!registration.registered()) return files;
  if (!wanted.matrices.empty()) addMatrices(registration, wanted, files);
  if (!wanted.report.empty() && registration.adjustment) {
    const ReportKind kind = wanted.reportKind.value_or(ReportKind::results);
    files.push_back({{Field::report, wanted.report}, [&registration, kind, unit] {
                       return withSystemLineEnds(adjustmentReport(registration, kind, unit));
                     }});
  }
  if (!wanted.transforms.empty()) {
    files.push_back(
        {{Field::transforms, wanted.transforms}, [&registration, unit] { return transformsJson(registration, unit); }});
  }
  if (!wanted.picture.empty()) files.push_back({{Field::picture, wanted.picture}, std::move(picture)});
  return files;
}

}  // namespace tiepoint::workbench

#include "workbench/report/outputs.h"

#include "workbench/io/text_encoding.h"
#include "workbench/report/group_matrices.h"

namespace tiepoint::workbench {

std::vector<OutputFile> outputs(const Registration& registration, const OutputRequest& wanted, Unit unit,
                                std::function<std::string()> picture) {
  std::vector<OutputFile> files;
  if (!registration.registered()) return files;
  const bool isPlain = wanted.matrixFormat.value_or(MatrixFormat::plain) == MatrixFormat::plain;
  if (!wanted.matrices.empty() && isPlain) {
    for (const GroupOutcome& group : registration.groups) {
      const auto motion = group.motion();
      if (!motion) continue;
      files.push_back({{Field::matrices, joinedPath(wanted.matrices, group.name + ".txt")},
                       [motion] { return plainMatrixText(*motion); }});
    }
  }
  if (!wanted.transforms.empty()) {
    files.push_back(
        {{Field::transforms, wanted.transforms}, [&registration, unit] { return transformsJson(registration, unit); }});
  }
  if (!wanted.picture.empty()) files.push_back({{Field::picture, wanted.picture}, std::move(picture)});
  return files;
}

}  // namespace tiepoint::workbench

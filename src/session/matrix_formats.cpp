#include "session/matrix_formats.h"

#include "files/polyworks_formats.h"

namespace ZOR::reg {

MatrixFormats::MatrixFormats(const GroupTransforms* results) : transforms(results) {
  add(std::make_unique<PW_TRF_TransMatFileFormat>());
  add(std::make_unique<PW_4x4_TransMatFileFormat>());
}

GroupIdSet MatrixFormats::groupsToWrite() const {
  GroupIdSet groups;
  for (const auto& entry : *transforms) groups.insert(groups.end(), entry.first);
  return groups;
}

std::map<std::uint64_t, std::string> MatrixFormats::descriptions() const {
  std::map<std::uint64_t, std::string> texts;
  for (const auto& [id, format] : formats) texts.emplace(id, format->description());
  return texts;
}

bool MatrixFormats::formatMatrixById(const RigidTransform& transform, std::uint64_t id, std::string& text) const {
  const auto format = formats.find(id);
  if (format == formats.end()) return false;
  text = format->second->formatMatrix(transform);
  return true;
}

void MatrixFormats::add(std::unique_ptr<iTransMatFileFormat> format) { formats.emplace(nextId++, std::move(format)); }

}  // namespace ZOR::reg

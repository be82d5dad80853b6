#include "workbench/drawing/drawing_state.h"

#include <cstring>
#include <ostream>
#include <tuple>

#include "platform/pointclouds/point_cloud_definition.h"
#include "platform/pointclouds/points_repository.h"
#include "platform/sdk/od_db_dictionary.h"

using ZOR::RegistrationObjectPointsRepository;
using ZOR::RegistrationObjectPointsRepositoryPtr;

namespace {

std::uint64_t bitsOf(double value) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

template <class Visit>
void forEachEntry(const OdDbObjectId& dictionaryId, Visit visit) {
  if (dictionaryId.isNull()) return;
  const OdDbDictionaryPtr dictionary = dictionaryId.safeOpenObject();
  for (const auto entries = dictionary->newIterator(); !entries->done(); entries->next()) visit(*entries);
}

OdDbDictionaryPtr groupsForWriting(OdDbDatabase& database) {
  return RegistrationObjectPointsRepository::createRegistrationPointsDictionary(database).safeOpenObject(
      OdDb::kForWrite);
}

OdDbDictionaryPtr cloudsForWriting(OdDbDatabase& database) {
  return hostDbPointCloudDefinition::createPointCloudDictionary(database).safeOpenObject(OdDb::kForWrite);
}

std::string narrow(const std::wstring& text) { return OdString(text).narrow(); }

}  // namespace

bool operator==(const PointState& a, const PointState& b) { return a.name == b.name && a.bits == b.bits; }
bool operator==(const GroupState& a, const GroupState& b) { return a.name == b.name && a.points == b.points; }
bool operator==(const CloudState& a, const CloudState& b) {
  return std::tie(a.name, a.source, a.bits) == std::tie(b.name, b.source, b.bits);
}
bool operator==(const DrawingState& a, const DrawingState& b) { return a.groups == b.groups && a.clouds == b.clouds; }

std::ostream& operator<<(std::ostream& stream, const DrawingState& state) {
  for (const GroupState& group : state.groups) {
    stream << "group '" << narrow(group.name) << "':";
    for (const PointState& point : group.points) {
      stream << " " << narrow(point.name) << std::hex;
      for (const std::uint64_t bits : point.bits) stream << " " << bits;
      stream << std::dec << ";";
    }
    stream << "\n";
  }
  for (const CloudState& cloud : state.clouds) {
    stream << "cloud '" << narrow(cloud.name) << "' from '" << narrow(cloud.source) << "'" << std::hex;
    for (const std::uint64_t bits : cloud.bits) stream << " " << bits;
    stream << std::dec << "\n";
  }
  return stream;
}

PointState stateOf(const ZOR::_StoredPoint& point) {
  return {point.name.wideText(), {bitsOf(point.x), bitsOf(point.y), bitsOf(point.z), bitsOf(point.w)}};
}

std::array<std::uint64_t, 16> bitsOf(const OdGeMatrix3d& matrix) {
  std::array<std::uint64_t, 16> bits{};
  for (int i = 0; i < 16; ++i) bits[static_cast<std::size_t>(i)] = bitsOf(matrix(i / 4, i % 4));
  return bits;
}

DrawingState stateOf(const OdDbDatabase& database) {
  DrawingState state;
  forEachEntry(RegistrationObjectPointsRepository::registrationPointsDictionary(database), [&](const auto& entry) {
    const RegistrationObjectPointsRepositoryPtr repository = entry.getObject();
    state.groups.push_back({entry.name().wideText(), {}});
    for (const auto& point : repository->storedPoints()) state.groups.back().points.push_back(stateOf(point));
  });
  forEachEntry(hostDbPointCloudDefinition::pointCloudDictionary(database), [&](const auto& entry) {
    const hostDbPointCloudDefinitionPtr cloud = entry.getObject();
    state.clouds.push_back({entry.name().wideText(), cloud->getSource().wideText(), bitsOf(cloud->transformation())});
  });
  return state;
}

ZOR::_StoredPoint pointAt(const OdString& name, double x, double y, double z, double w) { return {name, x, y, z, w}; }

ZOR::StoredPointArray pointsAlongX(int count) {
  ZOR::StoredPointArray points;
  for (int i = 1; i <= count; ++i) points.append(pointAt(OdString(std::to_string(i)), i, 0.5, -0.25));
  return points;
}

OdGeMatrix3d shiftAlongX(double distance) {
  OdGeMatrix3d shift;
  shift(0, 3) = distance;
  return shift;
}

void storeGroup(OdDbDatabase& database, const OdString& name, const ZOR::StoredPointArray& points) {
  const RegistrationObjectPointsRepositoryPtr repository = RegistrationObjectPointsRepository::desc()->create();
  repository->setData(points);
  groupsForWriting(database)->setAt(name, repository.get());
}

void replacePoints(OdDbDatabase& database, const OdString& name, const ZOR::StoredPointArray& points) {
  const RegistrationObjectPointsRepositoryPtr repository =
      groupsForWriting(database)->getAt(name).safeOpenObject(OdDb::kForWrite);
  repository->setData(points);
}

bool removeGroup(OdDbDatabase& database, const OdString& name) { return groupsForWriting(database)->remove(name); }

void addCloud(OdDbDatabase& database, const OdString& name, const OdString& source) {
  const hostDbPointCloudDefinitionPtr cloud = hostDbPointCloudDefinition::desc()->create();
  cloud->setName(name);
  cloud->setSource(source);
  cloudsForWriting(database)->setAt(name, cloud.get());
}

void moveCloud(OdDbDatabase& database, const OdString& name, const OdGeMatrix3d& motion) {
  const hostDbPointCloudDefinitionPtr cloud = cloudsForWriting(database)->getAt(name).safeOpenObject(OdDb::kForWrite);
  cloud->transformBy(motion);
}

bool removeCloud(OdDbDatabase& database, const OdString& name) { return cloudsForWriting(database)->remove(name); }

#include "platform/pointclouds/point_cloud_definition.h"

#include <memory>
#include <utility>

#include "platform/pointclouds/named_dictionary.h"

namespace {

constexpr const wchar_t* dictionaryName = L"ZOR_POINT_CLOUDS";

OdRxObject* makeDefinition() { return new hostDbPointCloudDefinition; }

}  // namespace

const OdRxClass* hostDbPointCloudDefinition::desc() {
  static const OdRxClass descriptor(L"hostDbPointCloudDefinition", OdDbObject::desc(), makeDefinition);
  return &descriptor;
}

const OdRxClass* hostDbPointCloudDefinition::isA() const { return desc(); }

bool hostDbPointCloudDefinition::documentHasPointClouds(const OdDbDatabase& database) {
  return !pointCloudDictionary(database).isNull();
}

OdDbObjectId hostDbPointCloudDefinition::pointCloudDictionary(const OdDbDatabase& database) {
  return ZOR::namedDictionary(database, dictionaryName);
}

OdDbObjectId hostDbPointCloudDefinition::createPointCloudDictionary(OdDbDatabase& database) {
  return ZOR::createNamedDictionary(database, dictionaryName);
}

void hostDbPointCloudDefinition::setName(const OdString& newName) { change(name, newName); }

void hostDbPointCloudDefinition::setSource(const OdString& newSource) { change(source, newSource); }

void hostDbPointCloudDefinition::transformBy(const OdGeMatrix3d& motion) { change(matrix, motion * matrix); }

void hostDbPointCloudDefinition::restore(const OdString& keptName, const OdString& keptSource,
                                         const OdGeMatrix3d& keptMatrix) {
  name = keptName;
  source = keptSource;
  matrix = keptMatrix;
}

template <class Value>
void hostDbPointCloudDefinition::change(Value& member, const Value& newValue) {
  assertWriteEnabled();
  const auto other = std::make_shared<Value>(newValue);
  // The exchange can't fail, so whoever takes it back finds it made.
  onUndo([&member, other] { std::swap(member, *other); });
  std::swap(member, *other);
}

#include "platform/pointclouds/points_repository.h"

#include <memory>
#include <utility>

#include "platform/pointclouds/named_dictionary.h"

namespace ZOR {

namespace {

constexpr const wchar_t* dictionaryName = L"ZOR_REGISTRATION_POINTS";

OdRxObject* makeRepository() { return new RegistrationObjectPointsRepository; }

}  // namespace

const OdRxClass* RegistrationObjectPointsRepository::desc() {
  static const OdRxClass descriptor(L"RegistrationObjectPointsRepository", OdDbObject::desc(), makeRepository);
  return &descriptor;
}

const OdRxClass* RegistrationObjectPointsRepository::isA() const { return desc(); }

bool RegistrationObjectPointsRepository::documentHasRegistrationPoints(const OdDbDatabase& database) {
  return !registrationPointsDictionary(database).isNull();
}

OdDbObjectId RegistrationObjectPointsRepository::registrationPointsDictionary(const OdDbDatabase& database) {
  return namedDictionary(database, dictionaryName);
}

OdDbObjectId RegistrationObjectPointsRepository::createRegistrationPointsDictionary(OdDbDatabase& database) {
  return createNamedDictionary(database, dictionaryName);
}

bool RegistrationObjectPointsRepository::getData(StoredPointArray& target) const {
  if (isErased()) return false;
  target = points;
  return true;
}

bool RegistrationObjectPointsRepository::setData(const StoredPointArray& newPoints) {
  assertWriteEnabled();
  const auto other = std::make_shared<StoredPointArray>(newPoints);
  // The exchange can't fail, so whoever takes it back finds it made.
  onUndo([this, other] { std::swap(points, *other); });
  std::swap(points, *other);
  return true;
}

void RegistrationObjectPointsRepository::restoreData(StoredPointArray kept) { points = std::move(kept); }

}  // namespace ZOR

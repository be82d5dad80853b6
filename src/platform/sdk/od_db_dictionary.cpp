#include "platform/sdk/od_db_dictionary.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

#include "platform/sdk/od_db_database.h"

namespace {

constexpr std::uint64_t lastSequence = std::numeric_limits<std::uint64_t>::max();

// An element of a map, made apart from it: what can throw is behind when the map itself changes.
template <class Map>
typename Map::node_type makeNode(const typename Map::key_type& key, const typename Map::mapped_type& value) {
  Map single;
  return single.extract(single.emplace(key, value).first);
}

OdRxObject* makeDictionary() { return new OdDbDictionary; }

}  // namespace

OdDbDictionaryIterator::OdDbDictionaryIterator(std::vector<OdDbDictionaryEntry> entriesToVisit)
    : entries(std::move(entriesToVisit)) {}

bool OdDbDictionaryIterator::done() const { return position >= entries.size(); }

bool OdDbDictionaryIterator::next() {
  if (!done()) ++position;
  return !done();
}

OdString OdDbDictionaryIterator::name() const { return done() ? OdString() : entries[position].name; }

OdDbObjectId OdDbDictionaryIterator::objectId() const { return done() ? OdDbObjectId() : entries[position].object; }

OdDbObjectPtr OdDbDictionaryIterator::getObject(OdDb::OpenMode mode) const { return objectId().openObject(mode); }

const OdRxClass* OdDbDictionary::desc() {
  static const OdRxClass descriptor(L"OdDbDictionary", OdDbObject::desc(), makeDictionary);
  return &descriptor;
}

const OdRxClass* OdDbDictionary::isA() const { return desc(); }

std::uint32_t OdDbDictionary::numEntries() const { return static_cast<std::uint32_t>(bySequence.size()); }

OdDbDictionaryIteratorPtr OdDbDictionary::newIterator(OdRx::DictIterType type) const {
  std::vector<OdDbDictionaryEntry> toVisit = entries();
  if (type == OdRx::kDictSorted) {
    std::sort(toVisit.begin(), toVisit.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
  }
  return new OdDbDictionaryIterator(std::move(toVisit));
}

OdDbObjectId OdDbDictionary::getAt(const OdString& name) const {
  const auto place = byName.find(name);
  return place == byName.end() ? OdDbObjectId() : bySequence.at(place->second).object;
}

OdDbObjectId OdDbDictionary::setAt(const OdString& name, OdDbObject* object) {
  if (!object) throw OdError(eInvalidInput);
  assertWriteEnabled();
  if (!database()) throw OdError(eNotInDatabase);
  const auto place = byName.find(name);
  return place == byName.end() ? addEntry(name, object) : replaceEntry(bySequence.at(place->second), object);
}

OdDbObjectId OdDbDictionary::addEntry(const OdString& name, OdDbObject* object) {
  const std::uint64_t sequence = nextSequence;
  const OdDbDictionaryEntry entry{sequence, name, {}};
  auto entryNode = makeNode<Entries>(sequence, entry);
  auto noteNode = makeNode<Entries>(sequence, entry);
  auto nameNode = makeNode<Names>(name, sequence);
  onUndo([this, sequence] { forgetEntry(sequence); });
  const OdDbObjectId id = database()->addOdDbObject(object);

  entryNode.mapped().object = id;
  noteNode.mapped().object = id;
  bySequence.insert(std::move(entryNode));
  byName.insert(std::move(nameNode));
  added.insert(std::move(noteNode));
  ++nextSequence;
  return id;
}

OdDbObjectId OdDbDictionary::replaceEntry(OdDbDictionaryEntry& entry, OdDbObject* object) {
  const OdDbObjectId previous = entry.object;
  if (object->objectId() == previous) return previous;
  const bool wasNoted = added.count(entry.sequence) != 0;
  auto noteNode = makeNode<Entries>(entry.sequence, entry);
  onUndo([this, &entry, previous, wasNoted] {
    entry.object = previous;
    if (!wasNoted) {
      added.erase(entry.sequence);
    } else if (const auto note = added.find(entry.sequence); note != added.end()) {
      note->second.object = previous;
    }
  });
  const OdDbObjectId id = database()->addOdDbObject(object);
  if (previous.isValid()) database()->eraseObject(previous);

  entry.object = id;
  added.insert(std::move(noteNode)).position->second.object = id;
  return id;
}

bool OdDbDictionary::remove(const OdString& name) {
  const auto place = byName.find(name);
  if (place == byName.end()) return false;
  assertWriteEnabled();
  const std::uint64_t sequence = place->second;

  const auto kept = std::make_shared<RemovedEntry>();
  onUndo([this, kept, sequence] { putBack(*kept, sequence); });
  removed.push_back(sequence);
  const OdDbObjectId object = bySequence.at(sequence).object;
  if (object.isValid()) database()->eraseObject(object);

  kept->entry = bySequence.extract(sequence);
  kept->name = byName.extract(place);
  kept->note = added.extract(sequence);
  return true;
}

void OdDbDictionary::putBack(RemovedEntry& kept, std::uint64_t sequence) {
  bySequence.insert(std::move(kept.entry));
  byName.insert(std::move(kept.name));
  added.insert(std::move(kept.note));
  const auto note = std::find(removed.rbegin(), removed.rend(), sequence);
  if (note != removed.rend()) removed.erase(std::next(note).base());
}

std::vector<OdDbDictionaryEntry> OdDbDictionary::entries() const {
  std::vector<OdDbDictionaryEntry> result;
  result.reserve(bySequence.size());
  for (const auto& [sequence, entry] : bySequence) result.push_back(entry);
  return result;
}

void OdDbDictionary::restoreEntry(const OdDbDictionaryEntry& entry) {
  const std::uint64_t sequence = entry.sequence;
  if (sequence == 0 || sequence == lastSequence) throw OdError(eInvalidInput);
  if (bySequence.count(sequence) != 0 || byName.count(entry.name) != 0) throw OdError(eInvalidInput);
  auto entryNode = makeNode<Entries>(sequence, entry);
  byName.emplace(entry.name, sequence);
  bySequence.insert(std::move(entryNode));
  nextSequence = std::max(nextSequence, sequence + 1);
}

void OdDbDictionary::clearChanges() {
  added.clear();
  removed.clear();
}

void OdDbDictionary::forgetEntry(std::uint64_t sequence) {
  const auto place = bySequence.find(sequence);
  if (place == bySequence.end()) return;
  byName.erase(place->second.name);
  bySequence.erase(place);
  added.erase(sequence);
}

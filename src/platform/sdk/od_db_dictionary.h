// A dictionary of a database: objects under names.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "platform/sdk/od_db_object.h"
#include "platform/sdk/od_string.h"

/// One entry. `sequence` grows with each entry that is made, and is never used twice in one
/// dictionary: it gives the order of entry.
struct OdDbDictionaryEntry {
  std::uint64_t sequence = 0;
  OdString name;
  OdDbObjectId object;
};

/// Walks over the entries as they stood when the iterator was made.
class DRAWING_SDK_EXPORT OdDbDictionaryIterator : public OdRxObjectImpl<OdRxObject> {
 public:
  explicit OdDbDictionaryIterator(std::vector<OdDbDictionaryEntry> entries);
  bool done() const;
  bool next();
  OdString name() const;
  OdDbObjectId objectId() const;
  /// The entry's object, opened; null when it can't be opened in that mode.
  OdDbObjectPtr getObject(OdDb::OpenMode mode = OdDb::kForRead) const;

 private:
  std::vector<OdDbDictionaryEntry> entries;
  std::size_t position = 0;
};
using OdDbDictionaryIteratorPtr = OdSmartPtr<OdDbDictionaryIterator>;

/// Iterator types: in the order of the names, or in the order of entry.
namespace OdRx {
enum DictIterType { kDictSorted = 0, kDictCollated = 1 };
}

class DRAWING_SDK_EXPORT OdDbDictionary : public OdDbObject {
 public:
  static const OdRxClass* desc();
  const OdRxClass* isA() const override;

  std::uint32_t numEntries() const;
  OdDbDictionaryIteratorPtr newIterator(OdRx::DictIterType type = OdRx::kDictCollated) const;
  /// The id under `name`, null when there is none. Names are compared character by character.
  OdDbObjectId getAt(const OdString& name) const;
  /// Puts the object under `name`, taking it into the database when it is new. The dictionary must
  /// be open for writing, else OdError(eNotOpenForWrite). A name that is taken gets the new object
  /// and keeps its place; the object that stood there is erased. Throws OdError(eInvalidInput) for
  /// null, (eNotInDatabase) when the dictionary itself is in no database.
  OdDbObjectId setAt(const OdString& name, OdDbObject* object);
  /// Takes the entry away and erases its object. False when there is no such name.
  bool remove(const OdString& name);

  /// The entries in the order of entry.
  std::vector<OdDbDictionaryEntry> entries() const;
  /// For loading: the entry as a store kept it; nothing is noted. Throws OdError(eInvalidInput) for
  /// a name or a sequence that is taken, and for a sequence that is 0 or the last there is.
  void restoreEntry(const OdDbDictionaryEntry& entry);

  /// For stores: what was added (or replaced) and removed since the last call of clearChanges, so
  /// that filing costs what was changed. An entry that was added and then removed stands among the
  /// removed ones only. The database clears them when a transaction has ended well.
  const std::map<std::uint64_t, OdDbDictionaryEntry>& addedEntries() const { return added; }
  const std::vector<std::uint64_t>& removedSequences() const { return removed; }
  void clearChanges();

 private:
  using Entries = std::map<std::uint64_t, OdDbDictionaryEntry>;
  using Names = std::map<OdString, std::uint64_t>;

  /// The very elements that a removal took out, so that putting them back needs no memory.
  struct RemovedEntry {
    Entries::node_type entry;
    Names::node_type name;
    Entries::node_type note;
  };

  OdDbObjectId addEntry(const OdString& name, OdDbObject* object);
  OdDbObjectId replaceEntry(OdDbDictionaryEntry& entry, OdDbObject* object);
  void forgetEntry(std::uint64_t sequence);
  void putBack(RemovedEntry& kept, std::uint64_t sequence);

  Entries bySequence;
  Names byName;
  std::uint64_t nextSequence = 1;
  Entries added;
  std::vector<std::uint64_t> removed;
};
using OdDbDictionaryPtr = OdSmartPtr<OdDbDictionary>;

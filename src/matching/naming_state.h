// Who is called what while correspondences are applied.
#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <set>

#include "records/tables.h"

namespace ZOR::reg {

/// What a matcher decided. A label means nothing outside one run; points of one new name carry the
/// same one.
struct NamingChanges {
  /// The point takes a name that exists.
  std::map<RefPointId, CommonPointId> existingAssignments;
  /// The point takes a name that is still to be made.
  std::map<RefPointId, std::uint64_t> newAssignments;

  bool isEmpty() const { return existingAssignments.empty() && newAssignments.empty(); }
  void clear();
};

/// A working copy of the points' names. Names from outside the matching are binding; names that an
/// earlier matching gave may be revised; points without a name take a name or a new label. Every
/// point stands in exactly one of the three kinds.
class NamingState {
 public:
  explicit NamingState(const RefPointList& points);

  /// Merges one set of points that must be the same target. False, with nothing changed, when two
  /// of them lie in one group or bear two binding names.
  ///
  /// A binding name takes an automatic one over everywhere, with all the points that bear it. Of
  /// several automatic names the smallest stands, for the members alone: other points keep theirs.
  ///
  /// A member that isn't among the points counts as one of group 0 and gets no name.
  bool uniteCorrespondence(const std::list<RefPointId>& members);

  /// The smallest label from 0 that no automatic name has and that wasn't made in this run. Binding
  /// names aren't looked at: new labels are told apart by what was made, not by their number.
  std::uint64_t nextLabel() const;

  /// The points whose name isn't what it was at the beginning.
  void collectChanges(NamingChanges& changes) const;

 private:
  using Labels = std::set<std::uint64_t>;

  /// The members of one set by their kind.
  struct Kinds {
    std::set<CommonPointId> bindingNames;
    Labels labels;
    std::list<RefPointId> labelled;
    std::list<RefPointId> unnamed;
  };

  Kinds kindsOf(const std::list<RefPointId>& members) const;
  bool lieInDifferentGroups(const std::list<RefPointId>& members);
  void giveLabel(RefPointId point, std::uint64_t label);
  void giveManualName(RefPointId point, CommonPointId name);
  void replaceLabel(std::uint64_t label, CommonPointId name);

  std::map<RefPointId, CommonPointId> manualNames;
  std::map<RefPointId, std::uint64_t> autoNames;
  std::map<RefPointId, CommonPointId> manualBefore;
  std::map<RefPointId, std::uint64_t> autoBefore;
  std::set<RefPointId> unnamedPoints;
  Labels newLabels;
  std::map<RefPointId, GroupId> pointGroups;
  /// autoNames the other way round, without empty entries.
  std::map<std::uint64_t, std::set<RefPointId>> pointsOfLabel;
  /// No label below this is free.
  mutable std::uint64_t lowestFree = 0;
};

}  // namespace ZOR::reg

// The names of points under correspondences, by the rules as they are told.
#pragma once

#include <list>
#include <map>
#include <set>

#include "matching/naming_state.h"

namespace tiepoint::testing {

/// With nothing but the maps of points. An unknown member counts as a point of group 0.
struct PlainNaming {
  std::map<ZOR::reg::RefPointId, std::uint64_t> manual, automatic, manualBefore, automaticBefore;
  std::set<ZOR::reg::RefPointId> unnamed;
  std::set<std::uint64_t> made;
  std::map<ZOR::reg::RefPointId, ZOR::reg::GroupId> groups;

  explicit PlainNaming(const ZOR::reg::RefPointList& points) {
    for (const ZOR::reg::RefPoint& p : points) {
      groups[p.id] = p.groupId;
      if (!p.named) {
        unnamed.insert(p.id);
      } else {
        (p.autoNamed ? automatic : manual)[p.id] = p.commonId;
      }
    }
    manualBefore = manual;
    automaticBefore = automatic;
  }

  std::uint64_t next() const {
    std::set<std::uint64_t> used = made;
    for (const auto& entry : automatic) used.insert(entry.second);
    std::uint64_t label = 0;
    while (used.count(label) != 0) ++label;
    return label;
  }

  bool unite(const std::list<ZOR::reg::RefPointId>& members) {
    std::set<ZOR::reg::GroupId> memberGroups;
    std::set<std::uint64_t> names, labels;
    std::set<ZOR::reg::RefPointId> free, labelled;
    for (ZOR::reg::RefPointId p : members) {
      memberGroups.insert(groups[p]);
      if (manual.count(p) != 0) names.insert(manual.at(p));
      if (automatic.count(p) != 0) {
        labels.insert(automatic.at(p));
        labelled.insert(p);
      }
      if (unnamed.count(p) != 0) free.insert(p);
    }
    if (memberGroups.size() < members.size() || names.size() >= 2) return false;
    if (free.empty() && labelled.empty()) return true;
    if (!names.empty()) {
      for (std::uint64_t label : labels) {
        for (auto entry = automatic.begin(); entry != automatic.end();) {
          if (entry->second != label) {
            ++entry;
            continue;
          }
          manual[entry->first] = *names.begin();
          entry = automatic.erase(entry);
        }
      }
      for (ZOR::reg::RefPointId p : free) {
        unnamed.erase(p);
        manual[p] = *names.begin();
      }
      return true;
    }
    if (labelled.empty()) {
      labels.insert(next());
      made.insert(*labels.begin());
    }
    for (ZOR::reg::RefPointId p : labelled) automatic[p] = *labels.begin();
    for (ZOR::reg::RefPointId p : free) {
      unnamed.erase(p);
      automatic[p] = *labels.begin();
    }
    return true;
  }

  ZOR::reg::NamingChanges changes() const {
    ZOR::reg::NamingChanges result;
    for (const auto& [p, name] : manual) {
      if (manualBefore.count(p) == 0 || manualBefore.at(p) != name) result.existingAssignments[p] = name;
    }
    for (const auto& [p, label] : automatic) {
      if (automaticBefore.count(p) != 0 && automaticBefore.at(p) == label) continue;
      (made.count(label) != 0 ? result.newAssignments : result.existingAssignments).emplace(p, label);
    }
    return result;
  }
};

}  // namespace tiepoint::testing
